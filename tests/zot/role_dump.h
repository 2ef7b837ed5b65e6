#pragma once

#include "zot/parsed_page.h"

inline std::string RoleName(unsigned int keyword) {
    using namespace ZOTParser;
    switch (keyword) {
        case kKeywordInline: return "inline";
        case kKeywordHead: return "head";
        case kKeywordSkipped: return "skipped";
        case kKeywordHeading: return "heading";
        case kKeywordFoot: return "foot";
        case kKeywordList: return "list";
        case kKeywordBlock: return "block";
        case kKeywordClutter: return "clutter";
        case kKeywordRow: return "row";
        case kKeywordListItem: return "item";
        case kKeywordHeaderCell: return "header";
        case kKeywordParagraph: return "paragraph";
        case kKeywordRule: return "rule";
        case kKeywordCell: return "cell";
        case kKeywordBreak: return "break";
        case kKeywordAnchor: return "anchor";
        case kKeywordLegend: return "legend";
        case kKeywordBody: return "body";
        case kKeywordDefinition: return "definition";
        case kKeywordAddress: return "address";
        case kKeywordForm: return "form";
        case kKeywordQuote: return "quote";
        case kKeywordTable: return "table";
        case kKeywordPreformatted: return "pre";
    }
    return "unknown " + std::to_string(keyword);
}

// The text of an ASCII page.
inline std::string TextOf(const ParsedPage::Node& node) {
    std::u16string text = u"old";
    node.GetText(text);
    return std::string(text.begin(), text.end());
}

// One line: the role, '*' for a link, the children in parentheses; texts in quotes.
inline std::string Dump(ParsedPage::Children nodes) {
    std::string line;
    for (auto node = nodes.begin(); node != nodes.end(); ++node) {
        if (!line.empty()) line += ' ';
        if (node->Keyword() == ZOTParser::kKeywordText) {
            line += '"' + TextOf(*node.operator->()) + '"';
            continue;
        }
        line += RoleName(node->Keyword());
        if (node->IsLink()) line += '*';
        if (node->HasChildren()) line += '(' + Dump(node->Children()) + ')';
    }
    return line;
}
