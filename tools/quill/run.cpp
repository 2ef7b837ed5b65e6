#include "run.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <utility>

#include "console.h"
#include "exit_code.h"
#include "extractor.h"
#include "inputs.h"
#include "options.h"
#include "output_folder.h"
#include "output_names.h"
#include "page_bytes.h"
#include "page_format.h"
#include "page_queue.h"
#include "platform.h"
#include "standard_output.h"

namespace QuillTool {

namespace {

constexpr const char* kNoMemory = "not enough memory";

// A bar is of use from this many pages on.
constexpr std::size_t kPagesForBar = 10;

bool IsMarked(Show show) {
    return show == Show::kHighlight || show == Show::kExplain;
}

// A marked page must not take the place of the page that it was made from.
const char* FileEnding(Show show) {
    return IsMarked(show) ? ".marked.html" : show == Show::kJson ? ".json" : ".txt";
}

// Reads the pages and writes what is asked for, to standard output or into a folder.
class Job {
public:
    explicit Job(const Options& options)
        : options_(options),
          inputs_(FindInputs(options.inputs, console_)),
          extractor_(options.layout, options.charset),
          folder_(options.output_folder) {}

    int Run() {
        if (IsMarked(options_.show) && inputs_.size() > 1 && !ToFolder()) {
            console_.Error("--output", "is needed for marked pages when there are several");
            return kExitWrongUsage;
        }
        if (!PrepareOutput()) return kExitFailed;
        if (inputs_.size() > kPagesForBar && IsTerminal(stderr) && (ToFolder() || !IsTerminal(stdout))) {
            console_.AllowBar();
        }
        RunPages(
            inputs_.size(), options_.jobs, [this](std::size_t index) { return Make(index); },
            [this](std::size_t index, PageOutput& page) { return Take(index, page); });
        output_.Flush();
        if (!output_.Problem().empty()) console_.Error("standard output", output_.Problem());
        return console_.HadErrors() ? kExitFailed : kExitWell;
    }

private:
    bool ToFolder() const { return !options_.output_folder.empty(); }

    bool PrepareOutput() {
        if (!ToFolder()) return true;
        files_ = OutputNames(inputs_, FileEnding(options_.show));
        const std::string problem = folder_.Prepare();
        if (!problem.empty()) console_.Error(options_.output_folder, problem);
        return problem.empty();
    }

    // On any thread. A page that the memory does not hold must not take the others with it.
    PageOutput Make(std::size_t index) const {
        PageOutput page;
        try {
            page.problem = MakeText(inputs_[index], page.text);
            if (ToFolder() && page.problem.empty()) {
                page.problem = folder_.Write(files_[index], page.text);
                page.text.clear();
            }
        } catch (const std::exception&) {
            page.problem = kNoMemory;
        }
        return page;
    }

    std::string MakeText(const Input& input, std::string& text) const {
        std::string bytes;
        std::string problem = ReadPage(input, bytes);
        if (problem.empty() && !MakeOutput(input, bytes, text)) problem = kNoMemory;
        return problem;
    }

    // False when memory runs out.
    bool MakeOutput(const Input& input, const std::string& bytes, std::string& text) const {
        if (IsMarked(options_.show)) {
            const bool explain = options_.show == Show::kExplain;
            return extractor_.Mark(bytes, explain ? Marking::kExplain : Marking::kHighlight, text);
        }
        const bool json = options_.show == Show::kJson;
        PageText page;
        const bool done = json ? extractor_.ExtractAll(bytes, page)
                               : extractor_.Extract(bytes, options_.show == Show::kDocumentText, page);
        if (done)
            text = FormatPage(json || inputs_.size() > 1 ? input.name : "", std::move(page), options_.show);
        return done;
    }

    // On the calling thread, page by page. False when nobody reads on.
    bool Take(std::size_t index, PageOutput& page) {
        if (!page.problem.empty()) console_.Error(inputs_[index].name, page.problem);
        const bool wanted = WriteOut(page.text);
        console_.Progress(index + 1, inputs_.size());
        return wanted;
    }

    // One blank line stands between two texts.
    bool WriteOut(const std::string& text) {
        if (text.empty()) return true;
        const bool texts = options_.show == Show::kText || options_.show == Show::kDocumentText;
        const bool second = std::exchange(wrote_text_, true);
        return (!texts || !second || output_.Write("\n")) && output_.Write(text);
    }

    const Options& options_;
    Console console_{"quill"};
    const std::vector<Input> inputs_;
    const Extractor extractor_;
    OutputFolder folder_;
    std::vector<std::filesystem::path> files_;  // of the inputs, below the folder
    StandardOutput output_;
    bool wrote_text_ = false;
};

}  // namespace

int Main(std::vector<std::string> arguments) {
    PrepareStandardStreams();
    Options options;
    if (const std::optional<int> code = ParseOptions(std::move(arguments), options)) return *code;
    return Job(options).Run();
}

}  // namespace QuillTool
