// Runs the conformance cases of html5lib against the parser's tokenizer and tree construction.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "report.h"
#include "tokenizer_cases.h"
#include "tree_cases.h"

namespace {

namespace fs = std::filesystem;

constexpr int kWrongUsage = 2;
constexpr int kNoCases = 77;  // CTest takes it for a skipped test

constexpr const char* kUsage =
    "html5lib_runner [--failures N] [DIR]\n"
    "  DIR           the cases: tokenizer/*.test and tree-construction/*.dat; else HTML5LIB_TESTS names it\n"
    "  --failures N  print at most N of the failed cases (20)\n";

struct Arguments {
    fs::path directory;
    unsigned failures = 20;
    bool valid = true;
};

Arguments Parse(int count, char** arguments) {
    Arguments parsed;
    const char* const variable = std::getenv("HTML5LIB_TESTS");
    parsed.directory =
        variable != nullptr && *variable != '\0' ? variable : QUILL_SHARED_DIR "/html5lib-tests";
    bool named = false;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--failures" && i + 1 < count) {
            parsed.failures = static_cast<unsigned>(std::strtoul(arguments[++i], nullptr, 10));
        } else if (argument.starts_with('-') || named) {
            parsed.valid = false;
        } else {
            parsed.directory = argument;
            named = true;
        }
    }
    return parsed;
}

// The files of the folder with that extension, by name.
std::vector<fs::path> FilesOf(const fs::path& folder, const char* extension) {
    std::vector<fs::path> files;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        if (entry.path().extension() == extension) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

int RunAll(const Arguments& arguments) {
    const std::vector<fs::path> tokenizer = FilesOf(arguments.directory / "tokenizer", ".test");
    const std::vector<fs::path> trees = FilesOf(arguments.directory / "tree-construction", ".dat");
    if (tokenizer.empty() && trees.empty()) {
        std::fprintf(stderr, "html5lib_runner: no cases in %s: skipped\n",
                     arguments.directory.string().c_str());
        return kNoCases;
    }
    html5lib::Report report(arguments.failures);
    bool readable = true;
    const auto run = [&](const fs::path& file, auto runCases) {
        if (runCases(file, report)) return;
        std::fprintf(stderr, "html5lib_runner: cannot read %s\n", file.string().c_str());
        readable = false;
    };
    for (const fs::path& file : tokenizer) run(file, html5lib::RunTokenizerCases);
    for (const fs::path& file : trees) run(file, html5lib::RunTreeCases);
    const int code = report.Close();
    return readable ? code : 1;
}

}  // namespace

int main(int count, char** arguments) {
    const Arguments parsed = Parse(count, arguments);
    if (!parsed.valid) {
        std::fputs(kUsage, stderr);
        return kWrongUsage;
    }
    return RunAll(parsed);
}
