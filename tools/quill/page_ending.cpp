#include "page_ending.h"

namespace QuillTool {

namespace {

constexpr std::string_view kPageEndings[] = {".html", ".htm", ".xhtml"};
constexpr std::string_view kPackedEnding = ".gz";

}  // namespace

std::string Lowered(std::string_view text) {
    std::string lowered(text);
    for (char& c : lowered) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lowered;
}

std::string_view WithoutPageEnding(std::string_view name) {
    const std::string lowered = Lowered(name);
    std::string_view rest = lowered;
    if (rest.ends_with(kPackedEnding)) rest.remove_suffix(kPackedEnding.size());
    for (std::string_view ending : kPageEndings) {
        if (rest.ends_with(ending) && rest.size() > ending.size())
            return name.substr(0, rest.size() - ending.size());
    }
    return name;
}

bool IsPageName(std::string_view name) {
    return WithoutPageEnding(name).size() != name.size();
}

}  // namespace QuillTool
