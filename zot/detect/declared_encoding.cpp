// https://html.spec.whatwg.org/multipage/parsing.html#prescan-a-byte-stream-to-determine-its-encoding, in the
// order and the words of the standard. Wherever it runs out of bytes the prescan ends.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <zot/detect.h>

#include "late_declared_encoding.h"

namespace ZOT {

namespace {

constexpr std::size_t kPrescanBytes = 1024;
constexpr std::size_t kLatePrescanBytes = 256 * 1024;
constexpr std::string_view kSpaces = "\t\n\f\r ";
constexpr std::string_view kSpacesOrSlash = "\t\n\f\r /";
constexpr std::string_view kSpacesOrEnd = "\t\n\f\r >";

constexpr char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}
constexpr bool IsLetter(char c) {
    return Lower(c) >= 'a' && Lower(c) <= 'z';
}

bool StartsWith(std::string_view text, std::string_view lowerPrefix) {
    return text.size() >= lowerPrefix.size() &&
           std::equal(lowerPrefix.begin(), lowerPrefix.end(), text.begin(),
                      [](char a, char b) { return a == Lower(b); });
}

std::string_view From(std::string_view text, std::size_t position) {
    return text.substr(std::min(position, text.size()));
}

CHARSET FromLabel(std::string_view label) {
    CHARSET charset = kCharsetNone;
    CharsetFromLabel(label, charset);
    return charset;
}

bool IsUtf16(CHARSET charset) {
    return charset == kCharsetUtf16Be || charset == kCharsetUtf16Le;
}

// https://html.spec.whatwg.org/multipage/urls-and-fetching.html#extracting-character-encodings-from-meta-elements
CHARSET EncodingOfContent(std::string_view content) {
    constexpr std::string_view kCharset = "charset";
    for (std::size_t at = 0;;) {
        at = content.find(kCharset, at);  // attribute values are lower case by now
        if (at == std::string_view::npos) return kCharsetNone;
        at = content.find_first_not_of(kSpaces, at + kCharset.size());
        if (at == std::string_view::npos) return kCharsetNone;
        if (content[at] == '=') {
            content = From(content, at + 1);
            break;
        }
    }
    content = From(content, content.find_first_not_of(kSpaces));
    if (content.empty()) return kCharsetNone;
    if (content[0] != '"' && content[0] != '\'')
        return FromLabel(content.substr(0, content.find_first_of("\t\n\f\r ;")));
    const std::size_t end = content.find(content[0], 1);
    return end == std::string_view::npos ? kCharsetNone : FromLabel(content.substr(1, end - 1));
}

// https://html.spec.whatwg.org/multipage/parsing.html#xml-declaration-encoding ("get an XML encoding")
CHARSET XmlEncoding(std::string_view page) {
    constexpr std::string_view kEncoding = "encoding";
    if (!page.starts_with("<?xml")) return kCharsetNone;
    const std::string_view declaration = page.substr(0, page.find('>'));
    if (declaration.size() == page.size()) return kCharsetNone;
    const auto skipSpace = [&declaration](std::size_t at) {
        while (at < declaration.size() && static_cast<unsigned char>(declaration[at]) <= 0x20) ++at;
        return From(declaration, at);
    };
    const std::size_t name = declaration.find(kEncoding);
    if (name == std::string_view::npos) return kCharsetNone;
    std::string_view rest = skipSpace(name + kEncoding.size());
    if (!rest.starts_with('=')) return kCharsetNone;
    rest = skipSpace(declaration.size() - rest.size() + 1);
    if (!rest.starts_with('"') && !rest.starts_with('\'')) return kCharsetNone;
    const std::size_t end = rest.find(rest[0], 1);
    if (end == std::string_view::npos) return kCharsetNone;
    const std::string_view label = rest.substr(1, end - 1);
    if (std::ranges::any_of(label, [](char c) { return static_cast<unsigned char>(c) <= 0x20; }))
        return kCharsetNone;
    const CHARSET charset = FromLabel(label);
    return IsUtf16(charset) ? kCharsetUtf8 : charset;
}

class Prescan {
public:
    explicit Prescan(std::string_view page) : page_(page) {}

    CHARSET Run() {
        using namespace std::string_view_literals;
        if (page_.starts_with("<\0?\0x\0"sv)) return kCharsetUtf16Le;
        if (page_.starts_with("\0<\0?\0x"sv)) return kCharsetUtf16Be;
        for (; !Ended(); ++at_) {
            SkipTo("<");
            const CHARSET found = Step();
            if (found != kCharsetNone) return found;
        }
        return XmlEncoding(page_.substr(0, kPrescanBytes));
    }

private:
    struct Attribute {
        std::string name;
        std::string value;
    };

    bool Ended() const { return at_ >= page_.size(); }
    std::string_view Rest() const { return From(page_, at_); }
    bool AtOneOf(std::string_view bytes) const {
        return !Ended() && bytes.find(page_[at_]) != std::string_view::npos;
    }
    void SkipTo(std::string_view bytes) { at_ = std::min(page_.find_first_of(bytes, at_), page_.size()); }
    void Skip(std::string_view bytes) { at_ = std::min(page_.find_first_not_of(bytes, at_), page_.size()); }

    // What begins at the position: skips it and leaves the position on its last byte.
    CHARSET Step() {
        const std::string_view rest = Rest();
        if (rest.starts_with("<!--")) {
            at_ = std::min(page_.find("-->", at_ + 2), page_.size()) + 2;  // "<!-->" is a whole comment
        } else if (StartsWith(rest, "<meta") && rest.size() > 5 &&
                   kSpacesOrSlash.find(rest[5]) != std::string_view::npos) {
            at_ += 5;
            return Meta();
        } else if (IsTag(rest)) {
            SkipTo(kSpacesOrEnd);
            Attribute ignored;
            while (NextAttribute(ignored)) {
            }
        } else if (rest.starts_with("<!") || rest.starts_with("</") || rest.starts_with("<?")) {
            SkipTo(">");
        }
        return kCharsetNone;
    }

    static bool IsTag(std::string_view rest) {
        if (!rest.starts_with('<')) return false;
        rest.remove_prefix(rest.starts_with("</") ? 2 : 1);
        return !rest.empty() && IsLetter(rest[0]);
    }

    CHARSET Meta() {
        bool httpEquivSeen = false;
        bool contentSeen = false;
        bool charsetSeen = false;
        bool gotPragma = false;
        bool needPragma = false;
        CHARSET charset = kCharsetNone;
        Attribute attribute;
        while (NextAttribute(attribute)) {
            // Of attributes with the same name the first one counts.
            if (attribute.name == "http-equiv" && !std::exchange(httpEquivSeen, true)) {
                gotPragma = attribute.value == "content-type";
            } else if (attribute.name == "content" && !std::exchange(contentSeen, true)) {
                const CHARSET found = EncodingOfContent(attribute.value);
                if (found == kCharsetNone || charsetSeen) continue;
                charset = found;
                needPragma = true;
            } else if (attribute.name == "charset" && !std::exchange(charsetSeen, true)) {
                charset = FromLabel(attribute.value);
                needPragma = false;
            }
        }
        if (Ended() || (needPragma && !gotPragma)) return kCharsetNone;
        if (IsUtf16(charset)) return kCharsetUtf8;
        return charset == kCharsetUserDefined ? kCharsetWindows1252 : charset;
    }

    // https://html.spec.whatwg.org/multipage/parsing.html#concept-get-attributes-when-sniffing. False at the
    // end of the tag, and where the bytes run out.
    bool NextAttribute(Attribute& attribute) {
        attribute = Attribute();
        Skip(kSpacesOrSlash);
        if (Ended() || page_[at_] == '>') return false;
        for (;; ++at_) {
            if (Ended()) return false;
            if (page_[at_] == '=' && !attribute.name.empty()) break;
            if (AtOneOf("/>")) return true;
            if (AtOneOf(kSpaces)) {
                Skip(kSpaces);
                if (Ended()) return false;
                if (page_[at_] != '=') return true;
                break;
            }
            attribute.name.push_back(Lower(page_[at_]));
        }
        ++at_;
        return Value(attribute.value);
    }

    bool Value(std::string& value) {
        Skip(kSpaces);
        if (Ended()) return false;
        const char quote = page_[at_];
        if (quote == '"' || quote == '\'') {
            for (++at_; !Ended(); ++at_) {
                if (page_[at_] == quote) {
                    ++at_;
                    return true;
                }
                value.push_back(Lower(page_[at_]));
            }
            return false;
        }
        for (; !Ended(); ++at_) {
            if (AtOneOf(kSpacesOrEnd)) return true;
            value.push_back(Lower(page_[at_]));
        }
        return false;
    }

    std::string_view page_;
    std::size_t at_ = 0;
};

}  // namespace

CHARSET DeclaredEncoding(const unsigned char* bytes, std::size_t count) {
    if (count == 0) return kCharsetNone;
    return Prescan({reinterpret_cast<const char*>(bytes), std::min(count, kPrescanBytes)}).Run();
}

CHARSET LateDeclaredEncoding(const unsigned char* bytes, std::size_t count) {
    return Prescan({reinterpret_cast<const char*>(bytes), std::min(count, kLatePrescanBytes)}).Run();
}

}  // namespace ZOT
