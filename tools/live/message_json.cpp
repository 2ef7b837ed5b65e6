#include "message_json.h"

#include <cstdlib>
#include <string_view>

namespace QuillLive {

namespace {

constexpr std::size_t kEscape = 6;  // \u and four digits

// The unit that an escape like \uD800 at `position` stands for; -1 when there is none.
long UnitAt(const std::string& text, std::size_t position) {
    if (position + kEscape > text.size() || text[position] != '\\' || text[position + 1] != 'u') return -1;
    return std::strtol(text.substr(position + 2, kEscape - 2).c_str(), nullptr, 16);
}

bool IsHigh(long unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLow(long unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

void ReplaceLoneSurrogates(std::string& text) {
    for (std::size_t i = text.find('\\'); i != std::string::npos; i = text.find('\\', i)) {
        const long unit = UnitAt(text, i);
        if (unit < 0) {
            i += 2;  // another escape
        } else if (IsHigh(unit) && IsLow(UnitAt(text, i + kEscape))) {
            i += 2 * kEscape;
        } else {
            if (IsHigh(unit) || IsLow(unit)) text.replace(i, kEscape, "\\uFFFD");
            i += kEscape;
        }
    }
}

}  // namespace

Json ParseMessage(std::string message) {
    Json parsed = Json::parse(message, nullptr, false);
    if (!parsed.is_discarded()) return parsed;
    ReplaceLoneSurrogates(message);
    return Json::parse(message, nullptr, false);
}

const Json& Member(const Json& object, const char* name) {
    static const Json kNone;
    const auto found = object.find(name);  // the end for what is no object
    return found == object.end() ? kNone : *found;
}

std::string Text(const Json& object, const char* name) {
    const Json& member = Member(object, name);
    return member.is_string() ? member.get<std::string>() : std::string();
}

bool Flag(const Json& object, const char* name) {
    const Json& member = Member(object, name);
    return member.is_boolean() && member.get<bool>();
}

}  // namespace QuillLive
