#include "tree_cases.h"

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "tree_dump.h"

namespace html5lib {
namespace {

struct TreeCase {
    std::string data;
    std::string context;  // of a fragment; empty for a document
    std::string document;
    bool scripting = false;
};

// Takes the text up to `mark` from `rest`, and the mark with it.
std::string_view TakeUpTo(std::string_view mark, std::string_view& rest) {
    const std::size_t at = rest.find(mark);
    const std::string_view taken = rest.substr(0, at);
    rest.remove_prefix(at == rest.npos ? rest.size() : at + mark.size());
    return taken;
}

std::string_view WithoutLastNewline(std::string_view text) {
    if (text.ends_with('\n')) text.remove_suffix(1);
    return text;
}

// `text` begins behind "#data\n" and reaches to the end of the tree.
TreeCase ParseCase(std::string_view text) {
    TreeCase parsed;
    parsed.data = WithoutLastNewline(TakeUpTo("#errors", text));
    // Between the errors and the tree stand further sections, each with its name on a line.
    std::string_view middle = TakeUpTo("\n#document\n", text);
    bool isContext = false;
    while (!middle.empty()) {
        const std::string_view line = TakeUpTo("\n", middle);
        if (isContext) parsed.context = line;
        isContext = line == "#document-fragment";
        if (line == "#script-on") parsed.scripting = true;
    }
    parsed.document = WithoutLastNewline(text);
    return parsed;
}

}  // namespace

bool RunTreeCases(const std::filesystem::path& file, Report& report) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return false;
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    std::string_view rest = content;
    TakeUpTo("#data\n", rest);
    for (unsigned number = 1; !rest.empty(); ++number) {
        const TreeCase parsed = ParseCase(TakeUpTo("\n\n#data\n", rest));
        if (parsed.scripting) {
            report.Skip();
            continue;
        }
        const std::string tree =
            parsed.context.empty() ? DumpDocument(parsed.data) : DumpFragment(parsed.data, parsed.context);
        report.Compare(file.filename().string() + ", case " + std::to_string(number),
                       parsed.context.empty() ? parsed.data : "in <" + parsed.context + ">: " + parsed.data,
                       parsed.document, std::string(WithoutLastNewline(tree)));
    }
    return true;
}

}  // namespace html5lib
