#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace QuillTool {

// What --help says before the options and after them.
extern const char* const kHelpDescription;
extern const char* const kHelpFooter;

// Lists the options with the names of their values alone. What goes together and which values there are,
// stands in the descriptions.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

private:
    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
};

}  // namespace QuillTool
