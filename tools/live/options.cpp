#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <utility>

#include "exit_code.h"
#include "help_formatter.h"

namespace QuillLive {

namespace {

constexpr const char* kUsage = "quill-live [OPTIONS] URL";

constexpr const char* kDescription =
    "Prints the readable main content of a page as UTF-8 text, as a browser shows it: with what its scripts\n"
    "write, and with the documents of its frames. Needs Chromium or a relative of it.";

constexpr const char* kFooter = R"(
A page is read when it is loaded and the network has been idle for half a second; one that is still busy
at the timeout is read as it then stands, and standard error says so. --json prints one object: url,
complete, text.

The browser runs headless, with an empty profile that is removed afterwards. It is ended whatever happens.
Run by root it has no sandbox (--no-sandbox): it refuses to run otherwise.

Examples:
  quill-live https://example.org/
  quill-live --wait 2000 --json https://example.org/
  quill-live file:///home/me/page.html

Exit codes:
  0  all went well
  1  no browser was found, or the page could not be loaded, or the output not be written
  2  wrong usage)";

constexpr long kDefaultTimeout = 30'000;   // milliseconds
constexpr long kLongestTime = 86'400'000;  // milliseconds

}  // namespace

std::optional<int> ParseOptions(std::vector<std::string> arguments, Options& options) {
    CLI::App app(kDescription, "quill-live");
    long timeout = kDefaultTimeout;
    long wait = 0;
    app.formatter(std::make_shared<QuillTool::HelpFormatter>(kUsage));
    app.footer(kFooter);
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_option("URL", options.url, "The page")
        ->required()
        ->multi_option_policy(CLI::MultiOptionPolicy::Throw)
        ->group("");
    app.add_flag("--source", options.source, "Read what the server sent, before scripts changed it");
    app.add_option("--wait", wait, "Read the page MS milliseconds after it began to come, idle or not")
        ->type_name("MS")
        ->check(CLI::Range(0L, kLongestTime).description(""));
    app.add_option("--timeout", timeout,
                   "How long to wait at most for an answer, and for the network to be idle "
                   "(default: 30000)")
        ->type_name("MS")
        ->check(CLI::Range(1L, kLongestTime).description(""));
    app.add_option("--browser", options.browser,
                   "The browser (default: chromium, chromium-browser or google-chrome)")
        ->type_name("PATH");
    app.add_flag("--json", options.json, "Print one JSON object");
    app.set_help_flag("-h,--help", "Print this help");
    app.set_version_flag("-V,--version", "quill-live " QUILL_VERSION, "Print the version");
    try {
        std::reverse(arguments.begin(), arguments.end());  // CLI11 wants the last one first
        app.parse(std::move(arguments));
        if (options.url.find(':') == std::string::npos) {
            throw CLI::ValidationError("URL", "needs a scheme, such as https://");
        }
        if (app.count("--browser") != 0 && options.browser.empty()) {
            throw CLI::ValidationError("--browser", "the path is empty");
        }
    } catch (const CLI::ParseError& stop) {
        return app.exit(stop) == 0 ? QuillTool::kExitWell : QuillTool::kExitWrongUsage;
    }
    options.patience.timeout = std::chrono::milliseconds(timeout);
    if (app.count("--wait") != 0) options.patience.wait = std::chrono::milliseconds(wait);
    return std::nullopt;
}

}  // namespace QuillLive
