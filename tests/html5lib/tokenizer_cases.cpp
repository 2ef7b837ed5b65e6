#include "tokenizer_cases.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "doctype.h"
#include "text.h"
#include "tokenizer.h"

namespace html5lib {
namespace {

using Json = nlohmann::json;
using ZOTParser::TextKind;
using ZOTParser::Token;
using ZOTParser::TokenizerState;
using ZOTParser::TokenKind;

std::optional<TokenizerState> StateOf(std::string_view name) {
    if (name == "Data state") return TokenizerState::kData;
    if (name == "RCDATA state") return TokenizerState::kRcdata;
    if (name == "RAWTEXT state") return TokenizerState::kRawtext;
    if (name == "Script data state") return TokenizerState::kScriptData;
    if (name == "PLAINTEXT state") return TokenizerState::kPlaintext;
    if (name == "CDATA section state") return TokenizerState::kCdataSection;
    return std::nullopt;
}

// `text` with its \uNNNN escapes resolved.
std::string UnescapedText(std::string_view text) {
    std::u16string units;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 6 <= text.size() && text[i + 1] == 'u') {
            units += static_cast<char16_t>(std::stoul(std::string(text.substr(i + 2, 4)), nullptr, 16));
            i += 5;
        } else {
            units += static_cast<char16_t>(text[i]);  // such cases are ASCII
        }
    }
    return ToUtf8(units);
}

// All strings of a value, object keys too, with their escapes resolved.
Json Unescaped(const Json& value) {
    if (value.is_string()) return UnescapedText(value.get_ref<const std::string&>());
    if (!value.is_structured()) return value;
    Json result = value.is_array() ? Json::array() : Json::object();
    for (const auto& [key, item] : value.items()) {
        if (value.is_array()) {
            result.push_back(Unescaped(item));
        } else {
            result[UnescapedText(key)] = Unescaped(item);
        }
    }
    return result;
}

// The tokens of a text in the notation of the cases.
class TokenList {
public:
    TokenList(std::string_view input, TokenizerState state, const std::string& lastStartTag)
        : source_(input), size_(input.size()), state_(state) {
        source_.resize(size_ + ZOTParser::kSourcePadding);
        ZOTParser::Tokenizer tokenizer(source_.data(), End());
        tokenizer.SetState(state);
        tokenizer.SetLastStartTag(lastStartTag);
        Token token;
        while (tokenizer.Next(token)) Add(token);
    }

    const Json& Tokens() const { return tokens_; }

private:
    const char* End() const { return source_.data() + size_; }

    void Add(const Token& token) {
        switch (token.kind) {
            case TokenKind::kText: return AddText(token);
            case TokenKind::kNone: return;
            case TokenKind::kStartTag: return AddStartTag(token);
            case TokenKind::kEndTag: tokens_.push_back({"EndTag", DecodedName(token.content.View())}); return;
            case TokenKind::kComment:
                tokens_.push_back({"Comment", Decoded(token.content.View(), TextKind::kRaw)});
                return;
            case TokenKind::kDoctype: return AddDoctype(token);
        }
    }

    void AddText(const Token& token) {
        const std::string text = Text(token);
        if (text.empty()) return;
        if (!tokens_.empty() && tokens_.back()[0] == "Character") {
            tokens_.back()[1].get_ref<std::string&>() += text;
        } else {
            tokens_.push_back({"Character", text});
        }
    }

    // In data and CDATA sections the tokenizer passes NUL on, and what becomes of it is up to tree
    // construction.
    std::string Text(const Token& token) const {
        std::string_view rest = token.content.View();
        if (token.textKind != TextKind::kData && state_ != TokenizerState::kCdataSection) {
            return Decoded(rest, token.textKind);
        }
        std::string text;
        for (std::size_t nul; (nul = rest.find('\0')) != rest.npos; rest.remove_prefix(nul + 1)) {
            text += Decoded(rest.substr(0, nul), token.textKind) + '\0';
        }
        return text + Decoded(rest, token.textKind);
    }

    void AddStartTag(const Token& token) {
        Json attributes = Json::object();
        ZOTParser::AttributeReader reader(token.content.last, End());
        ZOTParser::Attribute attribute;
        while (reader.Next(attribute)) {
            // The first of several with one name counts.
            attributes.emplace(DecodedName(attribute.name.View()), DecodedValue(attribute.value.View()));
        }
        tokens_.push_back({"StartTag", DecodedName(token.content.View()), attributes});
        if (token.selfClosing) tokens_.back().push_back(true);
    }

    void AddDoctype(const Token& token) {
        const bool closed = token.content.last < End() && *token.content.last == '>';
        const ZOTParser::Doctype doctype = ZOTParser::ReadDoctype(token.content, closed);
        const auto part = [](bool has, ZOTParser::Span span) {
            return has ? Json(Decoded(span.View(), TextKind::kRaw)) : Json();
        };
        const Json name = doctype.hasName ? Json(DecodedName(doctype.name.View())) : Json();
        tokens_.push_back({"DOCTYPE", name, part(doctype.hasPublicId, doctype.publicId),
                           part(doctype.hasSystemId, doctype.systemId), !doctype.forceQuirks});
    }

    std::string source_;
    std::size_t size_;
    TokenizerState state_;
    Json tokens_ = Json::array();
};

// One token per line.
std::string Dump(const Json& tokens) {
    std::string dump;
    for (const Json& token : tokens)
        dump += token.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    return dump;
}

void RunCase(const std::string& file, const Json& test, Report& report) {
    const bool escaped = test.value("doubleEscaped", false);
    const Json input = escaped ? Unescaped(test["input"]) : test["input"];
    const Json output = escaped ? Unescaped(test["output"]) : test["output"];
    const std::string lastStartTag = test.value("lastStartTag", "");
    for (const Json& name : test.value("initialStates", Json::array({"Data state"}))) {
        const std::string stateName = name.get<std::string>();
        const std::string caseName = file + ": " + test.value("description", "") + " [" + stateName + "]";
        const std::string& page = input.get_ref<const std::string&>();
        const std::optional<TokenizerState> state = StateOf(stateName);
        const std::string actual =
            state ? Dump(TokenList(page, *state, lastStartTag).Tokens()) : "unknown state " + stateName;
        report.Compare(caseName, page, Dump(output), actual);
    }
}

}  // namespace

bool RunTokenizerCases(const std::filesystem::path& file, Report& report) {
    std::ifstream stream(file, std::ios::binary);
    const Json content = Json::parse(stream, nullptr, false);
    if (!content.is_object() || !content.contains("tests")) return false;
    for (const Json& test : content["tests"]) RunCase(file.filename().string(), test, report);
    return true;
}

}  // namespace html5lib
