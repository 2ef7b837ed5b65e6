#include "run.h"

#include <exception>
#include <utility>

#include <ole/automation.h>
#include <quill/exports.h>

#include "browser.h"
#include "browser_path.h"
#include "connection.h"
#include "console.h"
#include "exit_code.h"
#include "html_document.h"
#include "live_page.h"
#include "options.h"
#include "page_reader.h"
#include "platform.h"
#include "standard_output.h"
#include "stop_signals.h"
#include "utf8.h"
#include "whole_lines.h"

namespace QuillLive {

namespace {

using QuillTool::Console;
using QuillTool::StandardOutput;

// Takes the page from the browser, and its text from the library. Steps return whether the next one can
// follow.
class Job {
public:
    Job(const Options& options, const StopSignals& signals) : options_(options), signals_(signals) {}

    // False when something went wrong, which standard error then tells.
    bool Run() { return FindProgram() && Load() && Extract() && Print(); }

private:
    bool FindProgram() {
        program_ = options_.browser.empty() ? FindBrowser() : options_.browser;
        if (program_.empty()) {
            return Fail("browser",
                        "none found (chromium, chromium-browser, google-chrome); --browser names one");
        }
        return IsProgram(program_) || Fail(program_, "no program that can be run");
    }

    // The browser is needed no longer than this.
    bool Load() {
        Browser browser;
        const std::string problem = browser.Start(program_, signals_);
        if (!problem.empty()) return Fail("browser", problem);
        Connection connection(browser.Commands(), browser.Answers(), signals_);
        LivePage page(connection);
        const std::string no_page = page.Open();
        if (!no_page.empty()) {
            browser.End();
            return Fail(program_, no_page + '\n' + browser.LastMessages());
        }
        const std::string not_loaded = page.Load(options_.url, options_.patience, complete_);
        if (!not_loaded.empty()) return Fail(options_.url, not_loaded);
        if (!PageReader(connection, page, options_.source).Read(document_)) {
            return Fail(options_.url, "the browser did not let the page be read");
        }
        if (!complete_) console_.Note(options_.url, "still busy at the timeout; read as it stands");
        return true;
    }

    bool Extract() {
        IHTMLDocument2* const document = NewHtmlDocument(document_);
        if (document == nullptr) return Fail(options_.url, "not enough memory");
        VARIANT text;
        VariantInit(&text);
        const HRESULT result = GetBeautifiedText(document, &text);
        document->Release();
        const bool good = result == S_OK && text.vt == VT_BSTR &&
                          QuillTool::ToUtf8({text.bstrVal, SysStringLen(text.bstrVal)}, text_);
        VariantClear(&text);
        if (good) return true;
        return Fail(options_.url,
                    result == E_CHARSET_UNDETECTED ? "in an unknown character set" : "not enough memory");
    }

    bool Print() {
        StandardOutput output;
        output.Write(options_.json ? AsJson() : QuillTool::WholeLines(std::move(text_)));
        output.Flush();
        return output.Problem().empty() || Fail("standard output", output.Problem());
    }

    std::string AsJson() {
        nlohmann::ordered_json object;
        object["url"] = document_.url;
        object["complete"] = complete_;
        object["text"] = std::move(text_);
        return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
    }

    bool Fail(const std::string& name, const std::string& reason) {
        if (StopSignals::Raised() == 0) console_.Error(name, reason);
        return false;
    }

    const Options& options_;
    const StopSignals& signals_;
    Console console_{"quill-live"};
    std::string program_;
    LiveDocument document_;
    bool complete_ = true;  // whether the page had come to rest
    std::string text_;
};

}  // namespace

int Main(std::vector<std::string> arguments) {
    QuillTool::PrepareStandardStreams();
    Options options;
    if (const std::optional<int> code = ParseOptions(std::move(arguments), options)) return *code;
    const StopSignals signals;
    bool good = false;
    try {
        good = Job(options, signals).Run();
    } catch (const std::exception&) {
        Console("quill-live").Error(options.url, "not enough memory");
    }
    signals.PassOn();
    return good ? QuillTool::kExitWell : QuillTool::kExitFailed;
}

}  // namespace QuillLive
