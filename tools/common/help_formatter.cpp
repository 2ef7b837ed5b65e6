#include "help_formatter.h"

#include <utility>

namespace QuillTool {

HelpFormatter::HelpFormatter(std::string usage) : usage_(std::move(usage)) {
    constexpr std::size_t kOptionColumn = 20;
    column_width(kOptionColumn);
}

std::string HelpFormatter::make_usage(const CLI::App*, std::string) const {
    return "\nUsage: " + usage_ + '\n';
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
    const std::string value = option->get_type_name();
    return value.empty() ? value : ' ' + value;
}

}  // namespace QuillTool
