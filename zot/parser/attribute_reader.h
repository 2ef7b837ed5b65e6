#pragma once

#include <cstdint>
#include <string_view>

#include "byte_scan.h"

namespace ZOTParser {

// A piece of the source, [first, last).
struct Span {
    const char* first = nullptr;
    const char* last = nullptr;

    std::size_t Size() const noexcept { return static_cast<std::size_t>(last - first); }
    std::string_view View() const noexcept { return {first, Size()}; }
};

struct Attribute {
    Span name;   // in the letter case of the page
    Span value;  // not decoded; empty when the attribute has none
};

// Attributes that tree construction or a node's role depend on, as bits: a tag has one of that name
// (kDescribesItself: or of one much like it).
enum AttributeBit : std::uint8_t {
    kHasHref = 1 << 0,
    kHasType = 1 << 1,
    kDescribesItself =
        1 << 2,  // hidden, aria-hidden, role or style: what may keep an element from being content
};

// Reads the attributes of a tag from the source: what the tokenizer does to find the tag's end, and what
// anybody does later who wants an attribute, since none is stored. Duplicates are reported; the first one
// counts. https://html.spec.whatwg.org/multipage/parsing.html#before-attribute-name-state and the states
// after it
class AttributeReader {
public:
    // `at` stands behind the tag's name; `end` is the end of the source.
    AttributeReader(const char* at, const char* end) noexcept : at_(at), end_(end) {}

    // False behind the last attribute: then Position() stands behind the tag's '>', or AtEnd() says that the
    // source ended inside the tag.
    bool Next(Attribute& attribute) noexcept {
        if (!FindName()) return false;
        attribute.name.first = at_;
        // A '=' in the first place belongs to the name.
        at_ = FindAttributeNameEnd(at_ + 1, end_);
        attribute.name.last = at_;
        attribute.value = Span{at_, at_};
        if (at_ < end_ && *at_ != '=') at_ = SkipHtmlSpace(at_, end_);
        if (at_ >= end_) return Stop(true);
        return *at_ != '=' || ReadValue(attribute.value);
    }

    const char* Position() const noexcept { return at_; }
    bool SelfClosing() const noexcept { return selfClosing_; }
    bool AtEnd() const noexcept { return atEnd_; }

private:
    // Before and after attribute name, self-closing start tag.
    bool FindName() noexcept {
        for (;; ++at_) {
            if (at_ >= end_) return Stop(true);
            const char c = *at_;
            if (c > '>') return true;  // nearly every name begins so
            if (IsHtmlSpace(c)) continue;
            if (c == '>') {
                ++at_;
                return false;
            }
            if (c != '/') return true;
            selfClosing_ = at_ + 1 < end_ && at_[1] == '>';
        }
    }

    bool ReadValue(Span& value) noexcept {
        at_ = SkipHtmlSpace(at_ + 1, end_);
        if (at_ >= end_) return Stop(true);
        const char quote = *at_;
        if (quote == '"') return ReadQuoted(value, '"');
        if (quote == '\'') return ReadQuoted(value, '\'');
        value.first = at_;
        value.last = at_ = FindUnquotedValueEnd(at_, end_);
        return at_ < end_ || Stop(true);
    }

    bool ReadQuoted(Span& value, char quote) noexcept {
        value.first = at_ + 1;
        value.last = FindByte(at_ + 1, end_, quote);
        if (value.last >= end_) return Stop(true);
        at_ = value.last + 1;
        return true;
    }

    bool Stop(bool atEnd) noexcept {
        at_ = end_;
        atEnd_ = atEnd;
        return false;
    }

    const char* at_;
    const char* end_;
    bool selfClosing_ = false;
    bool atEnd_ = false;
};

}  // namespace ZOTParser
