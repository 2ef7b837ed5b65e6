#pragma once

#include <string_view>

#include "attribute_reader.h"
#include "byte_scan.h"
#include "tag.h"
#include "text_decoder.h"

namespace ZOTParser {

enum class TokenKind : std::uint8_t { kText, kStartTag, kEndTag, kComment, kDoctype, kNone };

// The tokenizer's states as far as anybody outside chooses them.
enum class TokenizerState : std::uint8_t { kData, kRcdata, kRawtext, kScriptData, kPlaintext, kCdataSection };

// One token, as spans of the source. Nothing is decoded: text goes through AppendDecodedText with its kind,
// attributes are read on demand with AttributeReader.
struct Token {
    TokenKind kind = TokenKind::kText;
    TextKind textKind = TextKind::kData;
    Tag tag = Tag::kUnknown;
    bool selfClosing = false;
    std::uint8_t attributes = 0;  // AttributeBit
    Span span;                    // the whole token
    Span content;  // text: its characters; tag: its name; comment: its data; doctype: behind the keyword
};

// Splits a UTF-8 text into tokens.
// https://html.spec.whatwg.org/multipage/parsing.html#tokenization
//
// Where the standard has a state for each character, this looks for the next byte that matters and takes all
// before it as one span. kSourcePadding readable bytes follow the text. A run of characters may come in
// several text tokens.
//
// One thing differs: a title that never ends, on a page whose body does, would be all of the page. It ends at
// the first markup inside it.
class Tokenizer {
public:
    Tokenizer() noexcept = default;
    Tokenizer(const char* first, const char* last) noexcept : at_(first), end_(last) {}

    void Open(const char* first, const char* last) noexcept {
        at_ = first;
        end_ = last;
    }

    // The next token; false at the end of the source. A tag that the source ends in is no token.
    bool Next(Token& token) noexcept {
        while (at_ < end_) {
            token.kind = TokenKind::kNone;
            if (!Step(token)) return false;
            if (token.kind != TokenKind::kNone) return true;
        }
        return false;
    }

    void SetState(TokenizerState state) noexcept { state_ = state; }
    // The name, in lower case, of the start tag whose end tag ends RCDATA, RAWTEXT and script data. The
    // characters must stay where they are.
    void SetLastStartTag(std::string_view name) noexcept { lastStartTag_ = name; }
    // Whether the adjusted current node is foreign, so that "<![CDATA[" opens a CDATA section.
    void AllowCdata(bool allow) noexcept { allowCdata_ = allow; }

private:
    // Takes the next piece of the source, which need not be a token; false when the source ends inside a tag.
    bool Step(Token& token) noexcept {
        if (state_ != TokenizerState::kData) [[unlikely]] {
            return StepInState(token);
        }
        return *at_ == '<' ? Markup(token) : DataText(token, at_);
    }

    bool DataText(Token& token, const char* scanFrom) noexcept {
        return Text(token, FindMarkup(scanFrom), TextKind::kData);
    }

    const char* FindMarkup(const char* at) const noexcept {
        at = FindByte(at, end_, '<');
        while (at + 1 < end_ && !OpensMarkup(at[1])) at = FindByte(at + 1, end_, '<');
        return at + 1 < end_ ? at : end_;  // a '<' as the last character is text
    }

    bool Text(Token& token, const char* last, TextKind kind) noexcept {
        token.kind = TokenKind::kText;
        token.textKind = kind;
        token.span = token.content = Span{at_, last};
        at_ = last;
        return true;
    }

    static bool OpensMarkup(char c) noexcept { return IsLetter(c) || c == '/' || c == '!' || c == '?'; }

    bool Markup(Token& token) noexcept {
        const char c = at_ + 1 < end_ ? at_[1] : '\0';
        if (IsLetter(c)) return TagToken(token, TokenKind::kStartTag, at_ + 1);
        if (c == '/') return EndTagOpen(token);
        if (c == '!') return MarkupDeclaration(token);
        if (c == '?') return BogusComment(token, at_ + 1);
        return DataText(token, at_ + 1);
    }

    bool TagToken(Token& token, TokenKind kind, const char* name) noexcept {
        token.kind = kind;
        token.selfClosing = false;
        token.attributes = 0;
        token.span.first = at_;
        token.content.first = name;
        const char* const last = FindTagNameEnd(name + 1, end_);
        token.content.last = last;
        token.tag = InternTag(name, token.content.Size());
        if (last < end_ && *last == '>') [[likely]] {
            at_ = token.span.last = last + 1;
            return true;
        }
        return Attributes(token);
    }

    bool Attributes(Token& token) noexcept;
    bool EndTagOpen(Token& token) noexcept;
    bool MarkupDeclaration(Token& token) noexcept;
    bool Comment(Token& token) noexcept;
    bool BogusComment(Token& token, const char* data) noexcept;
    bool CommentToken(Token& token, Span data, const char* next) noexcept;

    bool StepInState(Token& token) noexcept;
    bool RawText(Token& token, TextKind kind) noexcept;
    bool EndlessTitle(Token& token) noexcept;
    bool CdataSection(Token& token) noexcept;
    const char* FindScriptEnd() const noexcept;
    const char* FindEndTag(const char* at, std::string_view name) const noexcept;
    bool IsEndTag(const char* at, std::string_view name) const noexcept;

    const char* at_ = nullptr;
    const char* end_ = nullptr;
    std::string_view lastStartTag_;
    TokenizerState state_ = TokenizerState::kData;
    bool allowCdata_ = false;
    bool titlesHaveNoEnd_ = false;
};

// Whether `at` begins with `word` (lower case) in any letter case, followed by white space, '/' or '>'.
bool StartsWithTagName(const char* at, const char* end, std::string_view word) noexcept;

// Whether [at, end) begins with `word`; `word` is in lower case, the source in any.
bool StartsWithIgnoringCase(const char* at, const char* end, std::string_view word) noexcept;

// Whether `text` is `word`; `word` is in lower case, the text in any.
inline bool IsIgnoringCase(Span text, std::string_view word) noexcept {
    return text.Size() == word.size() && StartsWithIgnoringCase(text.first, text.last, word);
}

// Whether two names are equal in any letter case of the ASCII letters.
bool SameIgnoringCase(Span a, Span b) noexcept;

}  // namespace ZOTParser
