#include <zot/parser.h>

#include "tag.h"

namespace ZOTParser {
namespace {

using enum Tag;

struct Role {
    unsigned int keyword;
    std::initializer_list<Tag> tags;
};

// The table reading: what a page lays out with table elements.
constexpr Role kTableRoles[] = {
    {kKeywordTable, {kTable}},
    {kKeywordRow, {kTr}},
    {kKeywordCell, {kTd}},
    {kKeywordHeaderCell, {kTh}},
    {kKeywordBody, {kTbody}},
    {kKeywordHead, {kThead}},
    {kKeywordFoot, {kTfoot}},
    {kKeywordPreformatted, {kPre, kListing, kXmp, kPlaintext}},
    {kKeywordBreak, {kBr}},
    {kKeywordAnchor, {kA}},
    {kKeywordParagraph, {kP}},
    {kKeywordHeading, {kH1, kH2, kH3, kH4, kH5, kH6}},
    {kKeywordQuote, {kBlockquote}},
    {kKeywordList, {kUl, kOl, kDl, kMenu, kDir}},
    {kKeywordBlock,
     {kDiv, kSection, kArticle, kMain, kAside, kNav, kHeader, kFooter, kHgroup, kSearch, kDetails, kDialog,
      kFigure, kFigcaption}},
    {kKeywordListItem, {kLi}},
    {kKeywordDefinition, {kDt, kDd}},
    {kKeywordAddress, {kAddress, kCenter}},
    {kKeywordForm, {kForm, kFieldset}},
    {kKeywordRule, {kHr}},
    {kKeywordLegend, {kLegend, kSummary}},
    {kKeywordSkipped,
     {kScript, kStyle,    kHead,     kTitle,  kNoscript, kNoframes, kNoembed, kTemplate, kSelect, kTextarea,
      kOption, kOptgroup, kDatalist, kButton, kObject,   kEmbed,    kApplet,  kIframe,   kSvg,    kAudio,
      kVideo,  kCanvas,   kFrameset, kFrame,  kMeta,     kLink,     kBase,    kInput}},
};

}  // namespace

static_assert(kTagCount <= HtmlKeywordTable::kTags, "every tag has its word");

HtmlKeywordTable::HtmlKeywordTable(PrtType type) : type_(type) {
    for (unsigned int& word : words_) word = kKeywordInline;
    for (const Role& role : kTableRoles) {
        for (const Tag tag : role.tags) words_[static_cast<unsigned int>(tag)] = role.keyword;
    }
    for (const Tag tag : {kA, kArea}) words_[static_cast<unsigned int>(tag)] |= kLinkFlag;
}

}  // namespace ZOTParser
