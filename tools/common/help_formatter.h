#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace QuillTool {

// Lists the options with the names of their values alone. What goes together and which values there are,
// stands in the descriptions.
class HelpFormatter : public CLI::Formatter {
public:
    // `usage` is the command line in short.
    explicit HelpFormatter(std::string usage);

private:
    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_option_opts(const CLI::Option* option) const override;

    std::string usage_;
};

}  // namespace QuillTool
