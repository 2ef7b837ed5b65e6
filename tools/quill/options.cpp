#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <thread>

#include "charset_name.h"
#include "exit_code.h"
#include "help.h"
#include "help_formatter.h"
#include "inputs.h"

namespace QuillTool {

namespace {

constexpr unsigned int kMaxJobs = 256;

// Hands CLI11 the options and their places.
class CommandLine {
public:
    explicit CommandLine(Options& options) : options_(options), app_(kHelpDescription, "quill") {
        app_.formatter(std::make_shared<HelpFormatter>(kHelpUsage));
        app_.footer(kHelpFooter);
        app_.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
        app_.allow_extras();
        AddOutputs();
        AddReading();
        app_.set_help_flag("-h,--help", "Print this help");
        app_.set_version_flag("-V,--version", "quill " QUILL_VERSION, "Print the version");
    }

    std::optional<int> Parse(std::vector<std::string> arguments) {
        const auto mark = std::find(arguments.begin(), arguments.end(), "--");
        try {
            // CLI11 wants the last one first.
            app_.parse(std::vector<std::string>(std::make_reverse_iterator(mark), arguments.rend()));
            TakeInputs();
            std::copy(mark == arguments.end() ? mark : mark + 1, arguments.end(),
                      std::back_inserter(options_.inputs));
            Conclude();
        } catch (const CLI::ParseError& stop) {
            return app_.exit(stop) == 0 ? kExitWell : kExitWrongUsage;
        }
        return std::nullopt;
    }

private:
    // The inputs are what CLI11 does not know: as an option they could not be called "[a]", a list to CLI11.
    void TakeInputs() {
        for (std::string& argument : app_.remaining()) {
            if (argument.starts_with('-') && argument != kStandardInput) throw CLI::ExtrasError({argument});
            options_.inputs.push_back(std::move(argument));
        }
    }

    void AddOutputs() {
        CLI::Option* const json = app_.add_flag("--json", json_, "Print one JSON object per page and line");
        CLI::Option* const all =
            app_.add_flag("--document-text", document_text_, "Print all text of the page, clutter included");
        CLI::Option* const type =
            app_.add_flag("--type", type_, "Print the kind of page instead of its text: content or links");
        CLI::Option* const highlight = app_.add_flag(
            "--highlight", highlight_, "Print the page itself, its main content marked, see below");
        CLI::Option* const explain =
            app_.add_flag("--explain", explain_, "The same, with its tables outlined and their ranks");
        app_.add_option("-o,--output", options_.output_folder, "Write one file per page into this folder")
            ->type_name("DIR")
            ->excludes(type);
        all->excludes(type);
        json->excludes(type);
        for (CLI::Option* const marked : {highlight, explain})
            marked->excludes(all)->excludes(json)->excludes(type);
        highlight->excludes(explain);
    }

    void AddReading() {
        app_.add_option("--layout", layout_, "How to read the page: auto (the default), tables, blocks")
            ->type_name("NAME")
            ->check(CLI::IsMember({"auto", "tables", "blocks"}).description(""));
        app_.add_option("--charset", charset_, "The character set of the pages, see below")
            ->type_name("NAME");
        app_.add_option("-j,--jobs", options_.jobs,
                        "Pages to read at the same time (default: all processors)")
            ->type_name("N")
            ->check(CLI::Range(1u, kMaxJobs).description(""));
    }

    // What follows from the options together.
    void Conclude() {
        if (options_.inputs.empty()) options_.inputs.push_back(kStandardInput);
        if (std::count(options_.inputs.begin(), options_.inputs.end(), kStandardInput) > 1) {
            throw CLI::ValidationError("-", "standard input can be read only once");
        }
        if (app_.count("--charset") != 0 && !CharsetFromName(charset_, options_.charset)) {
            throw CLI::ValidationError("--charset", "no character set is called \"" + charset_ + "\"");
        }
        if (app_.count("--output") != 0 && options_.output_folder.empty()) {
            throw CLI::ValidationError("--output", "the name of the folder is empty");
        }
        if (layout_ == "tables") options_.layout = Layout::kTables;
        if (layout_ == "blocks") options_.layout = Layout::kBlocks;
        if (json_) {
            options_.show = Show::kJson;
        } else if (document_text_) {
            options_.show = Show::kDocumentText;
        } else if (type_) {
            options_.show = Show::kType;
        } else if (highlight_) {
            options_.show = Show::kHighlight;
        } else if (explain_) {
            options_.show = Show::kExplain;
        }
    }

    Options& options_;
    CLI::App app_;
    bool json_ = false;
    bool document_text_ = false;
    bool type_ = false;
    bool highlight_ = false;
    bool explain_ = false;
    std::string layout_ = "auto";
    std::string charset_;
};

}  // namespace

std::optional<int> ParseOptions(std::vector<std::string> arguments, Options& options) {
    options.jobs = std::clamp(std::thread::hardware_concurrency(), 1u, kMaxJobs);
    return CommandLine(options).Parse(std::move(arguments));
}

}  // namespace QuillTool
