#include "cell_text.h"

#include <algorithm>

#include <quill/word_count.h>
#include <zot/text.h>

namespace QuillNS {
namespace {

constexpr char16_t kLineFeed = u'\n';

// The item that the cell ends with when it holds text that is not empty, else null.
KCellItem* LastText(const KCell& cell) {
    if (cell.IsEmpty()) return nullptr;
    KCellItem& last = **cell.Back();
    return last.IsText() && !last.TextView().empty() ? &last : nullptr;
}

std::u16string_view WithoutWhiteSpaceInFront(std::u16string_view text) {
    text.remove_prefix(static_cast<std::size_t>(
        std::find_if_not(text.begin(), text.end(), ZOT::IsWhiteSpace) - text.begin()));
    return text;
}

// Whether a cleaned text only keeps apart what stands on its two sides.
bool OnlySeparates(std::u16string_view clean) {
    return clean.empty() || (clean.size() == 1 && ZOT::IsWhiteSpace(clean[0]));
}

// Of two texts that meet, one gives up its white space when the other breaks the line there.
std::u16string_view Join(KCellItem* before, std::u16string_view clean) {
    if (before == nullptr || before->TextView().back() == kLineFeed) return WithoutWhiteSpaceInFront(clean);
    if (clean.front() == kLineFeed) before->TrimText();
    return clean;
}

}  // namespace

void CellText::AddText(std::span<char16_t> raw, unsigned int position, unsigned int length,
                       ZOT::SmartPtr<KCell>& cell, bool inAnchor) {
    const std::u16string_view clean(raw.data(), ZOT::BeautifyInPlace(raw.data(), raw.size(), false, true));
    if (OnlySeparates(clean)) return SeparateWords(cell);
    AppendItem(Join(LastText(*cell), clean), position, length, *cell, inAnchor);
}

void CellText::AddPreformattedText(std::span<char16_t> raw, unsigned int position, unsigned int length,
                                   ZOT::SmartPtr<KCell>& cell, bool inAnchor) {
    char16_t* to = raw.data();
    for (std::size_t at = 0; at != raw.size(); ++at) {
        const bool beforeLineFeed = at + 1 != raw.size() && raw[at + 1] == kLineFeed;
        if (raw[at] != u'\r' || !beforeLineFeed) *to++ = raw[at];
    }
    AppendItem({raw.data(), static_cast<std::size_t>(to - raw.data())}, position, length, *cell, inAnchor);
}

void CellText::AppendItem(std::u16string_view clean, unsigned int position, unsigned int length, KCell& cell,
                          bool inAnchor) {
    const ZOT::SmartPtr<KCellItem> item = cell.AddCellItem();
    if (item) item->AppendText(clean, position, length);
    if (!item || !item->IsText()) {
        outOfMemory_ = true;
        return;
    }
    const unsigned int words = CountWords(clean);
    cell.AddWords(words);
    if (inAnchor) cell.AddWordsInLinksAndImages(words);
}

void SeparateWords(ZOT::SmartPtr<KCell>& cell) {
    KCellItem* const before = LastText(*cell);
    if (before != nullptr && !ZOT::IsWhiteSpace(before->TextView().back())) before->AppendText(u" ", 0, 0);
}

void BreakLine(ZOT::SmartPtr<KCell>& cell) {
    KCellItem* const last = LastText(*cell);
    if (last != nullptr && !last->TextView().ends_with(u"\n\n")) last->AppendText(u"\n", 0, 0);
}

}  // namespace QuillNS
