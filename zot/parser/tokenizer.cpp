#include "tokenizer.h"

#include <bit>
#include <cstring>

namespace ZOTParser {
namespace {

constexpr std::string_view kTitle = "title";

bool StartsWith(const char* at, const char* end, std::string_view word) noexcept {
    return static_cast<std::size_t>(end - at) >= word.size() &&
           std::memcmp(at, word.data(), word.size()) == 0;
}

// The first four bytes of a word, in lower case where they are letters, as the number that memory makes of
// them.
constexpr std::uint32_t InLowerCase(std::uint32_t head) noexcept {
    return head | 0x20202020u;
}
constexpr std::uint32_t HeadOf(std::string_view word) noexcept {
    const char head[] = {word[0], word[1], word[2], word[3]};
    return InLowerCase(std::bit_cast<std::uint32_t>(head));
}
std::uint32_t HeadAt(const char* word) noexcept {
    std::uint32_t head;
    std::memcpy(&head, word, sizeof head);
    return InLowerCase(head);
}

// A shorter style hides nothing.
constexpr std::size_t kShortestHiding = std::string_view("display:none").size();

// A letter is what it is after its case is taken away, so the names of four letters are told apart exactly;
// of the longer ones the head and the length do, since whoever asks looks at the attribute itself.
std::uint8_t BitOf(const Attribute& attribute) noexcept {
    const Span name = attribute.name;
    const std::size_t size = name.Size();
    if (size < 4) return 0;
    const auto bitIf = [size](std::size_t length, AttributeBit bit) {
        return size == length ? std::uint8_t{bit} : std::uint8_t{0};
    };
    switch (HeadAt(name.first)) {
        case HeadOf("href"): return bitIf(4, kHasHref);
        case HeadOf("type"): return bitIf(4, kHasType);
        case HeadOf("role"): return bitIf(4, kDescribesItself);
        case HeadOf("style"):
            return attribute.value.Size() < kShortestHiding ? std::uint8_t{0} : bitIf(5, kDescribesItself);
        case HeadOf("hidden"): return bitIf(6, kDescribesItself);
        case HeadOf("aria-hidden"): return bitIf(11, kDescribesItself);
        default: return 0;
    }
}

}  // namespace

bool StartsWithIgnoringCase(const char* at, const char* end, std::string_view word) noexcept {
    if (static_cast<std::size_t>(end - at) < word.size()) return false;
    for (const char c : word) {
        if (LowerCase(*at++) != c) return false;
    }
    return true;
}

bool SameIgnoringCase(Span a, Span b) noexcept {
    if (a.Size() != b.Size()) return false;
    for (std::size_t i = 0; i < a.Size(); ++i) {
        if (LowerCase(a.first[i]) != LowerCase(b.first[i])) return false;
    }
    return true;
}

bool StartsWithTagName(const char* at, const char* end, std::string_view word) noexcept {
    if (!StartsWithIgnoringCase(at, end, word)) return false;
    at += word.size();
    return at < end && (*at == '>' || *at == '/' || IsHtmlSpace(*at));
}

bool Tokenizer::Attributes(Token& token) noexcept {
    AttributeReader reader(token.content.last, end_);
    Attribute attribute;
    unsigned int attributes = 0;
    while (reader.Next(attribute)) attributes |= BitOf(attribute);
    token.attributes = static_cast<std::uint8_t>(attributes);
    at_ = reader.Position();
    token.span.last = at_;
    token.selfClosing = reader.SelfClosing();
    return !reader.AtEnd();
}

bool Tokenizer::EndTagOpen(Token& token) noexcept {
    const char* const name = at_ + 2;
    if (name >= end_) return Text(token, end_, TextKind::kData);
    if (IsLetter(*name)) return TagToken(token, TokenKind::kEndTag, name);
    if (*name != '>') return BogusComment(token, name);
    at_ = name + 1;  // "</>" is nothing
    return true;
}

bool Tokenizer::MarkupDeclaration(Token& token) noexcept {
    const char* const at = at_ + 2;
    if (StartsWith(at, end_, "--")) return Comment(token);
    if (StartsWithIgnoringCase(at, end_, "doctype")) {
        BogusComment(token, at + 7);  // a doctype ends like a bogus comment, inside its quotes too
        token.kind = TokenKind::kDoctype;
        return true;
    }
    if (allowCdata_ && StartsWith(at, end_, "[CDATA[")) {
        at_ = at + 7;
        state_ = TokenizerState::kCdataSection;
        return true;
    }
    return BogusComment(token, at);
}

bool Tokenizer::Comment(Token& token) noexcept {
    const char* const data = at_ + 4;
    if (StartsWith(data, end_, ">")) return CommentToken(token, Span{data, data}, data + 1);
    if (StartsWith(data, end_, "->")) return CommentToken(token, Span{data, data}, data + 2);
    for (const char* at = FindByte(data, end_, '>'); at < end_; at = FindByte(at + 1, end_, '>')) {
        if (at - data >= 2 && at[-1] == '-' && at[-2] == '-')
            return CommentToken(token, Span{data, at - 2}, at + 1);
        if (at - data >= 3 && at[-1] == '!' && at[-2] == '-' && at[-3] == '-') {
            return CommentToken(token, Span{data, at - 3}, at + 1);
        }
    }
    // The source ends in the comment; what could have begun its end is not part of it.
    const char* last = end_;
    if (last - data >= 3 && last[-1] == '!' && last[-2] == '-' && last[-3] == '-') {
        last -= 3;
    } else {
        for (int dashes = 0; dashes < 2 && last > data && last[-1] == '-'; ++dashes) --last;
    }
    return CommentToken(token, Span{data, last}, end_);
}

bool Tokenizer::BogusComment(Token& token, const char* data) noexcept {
    const char* const last = FindByte(data, end_, '>');
    return CommentToken(token, Span{data, last}, last < end_ ? last + 1 : end_);
}

bool Tokenizer::CommentToken(Token& token, Span data, const char* next) noexcept {
    token.kind = TokenKind::kComment;
    token.content = data;
    token.span = Span{at_, next};
    at_ = next;
    return true;
}

bool Tokenizer::StepInState(Token& token) noexcept {
    switch (state_) {
        case TokenizerState::kData: break;  // not here
        case TokenizerState::kRcdata: return RawText(token, TextKind::kReplaceNul);
        case TokenizerState::kRawtext:
        case TokenizerState::kScriptData: return RawText(token, TextKind::kRaw);
        case TokenizerState::kPlaintext: return Text(token, end_, TextKind::kRaw);
        case TokenizerState::kCdataSection: return CdataSection(token);
    }
    return true;
}

// RCDATA, RAWTEXT and script data: text up to the end tag, then the end tag and the data state.
bool Tokenizer::RawText(Token& token, TextKind kind) noexcept {
    if (titlesHaveNoEnd_ && lastStartTag_ == kTitle) return EndlessTitle(token);
    const char* const last =
        state_ == TokenizerState::kScriptData ? FindScriptEnd() : FindEndTag(at_, lastStartTag_);
    if (last == end_ && lastStartTag_ == kTitle && FindEndTag(at_, "body") != end_) {
        titlesHaveNoEnd_ = true;
        return EndlessTitle(token);
    }
    if (last != at_) return Text(token, last, kind);
    state_ = TokenizerState::kData;
    return TagToken(token, TokenKind::kEndTag, at_ + 2);
}

// Text up to whatever looks like markup, then an end tag that the page does not spell out.
bool Tokenizer::EndlessTitle(Token& token) noexcept {
    const char* const last = FindMarkup(at_);
    if (last != at_) return Text(token, last, TextKind::kReplaceNul);
    state_ = TokenizerState::kData;
    token.kind = TokenKind::kEndTag;
    token.tag = Tag::kTitle;
    token.selfClosing = false;
    token.attributes = 0;
    token.span = token.content = Span{at_, at_};
    return true;
}

bool Tokenizer::CdataSection(Token& token) noexcept {
    state_ = TokenizerState::kData;
    const char* last = at_;
    for (;; ++last) {
        last = FindByte(last, end_, ']');
        if (last >= end_ || StartsWith(last, end_, "]]>")) break;
    }
    const char* const next = last < end_ ? last + 3 : end_;
    if (last != at_) Text(token, last, TextKind::kRaw);
    at_ = next;
    return true;
}

bool Tokenizer::IsEndTag(const char* at, std::string_view name) const noexcept {
    return !name.empty() && at + 1 < end_ && at[1] == '/' && StartsWithTagName(at + 2, end_, name);
}

const char* Tokenizer::FindEndTag(const char* at, std::string_view name) const noexcept {
    for (at = FindByte(at, end_, '<'); at < end_ && !IsEndTag(at, name);) at = FindByte(at + 1, end_, '<');
    return at;
}

// A script that opens a comment is escaped until the comment closes; a <script> inside is double escaped and
// keeps its own end tag. https://html.spec.whatwg.org/multipage/parsing.html#script-data-escaped-state and
// the states after it
const char* Tokenizer::FindScriptEnd() const noexcept {
    enum { kPlain, kEscaped, kDoubleEscaped } escape = kPlain;
    const char* at = at_;
    const char* dashes = at_;  // "-->" counts from here on: behind the "<!" that escaped
    while (at < end_) {
        const char* const lessThan = FindByte(at, end_, '<');
        if (escape != kPlain) {
            const char* close = FindByte(at, lessThan, '>');
            while (close < lessThan && !(close - dashes >= 2 && close[-1] == '-' && close[-2] == '-')) {
                close = FindByte(close + 1, lessThan, '>');
            }
            if (close < lessThan) escape = kPlain;
        }
        if (lessThan >= end_) break;
        at = lessThan + 1;
        if (escape == kDoubleEscaped) {
            if (at < end_ && *at == '/' && StartsWithTagName(at + 1, end_, "script")) escape = kEscaped;
        } else if (IsEndTag(lessThan, lastStartTag_)) {
            return lessThan;
        } else if (escape == kEscaped) {
            if (StartsWithTagName(at, end_, "script")) escape = kDoubleEscaped;
        } else if (StartsWith(at, end_, "!--")) {
            escape = kEscaped;
            dashes = at + 1;
        }
    }
    return end_;
}

}  // namespace ZOTParser
