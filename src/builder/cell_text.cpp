#include "cell_text.h"

#include <algorithm>

#include <quill/word_count.h>
#include <zot/text.h>

#include "trim.h"

namespace QuillNS {
namespace {

constexpr char16_t kLineFeed = u'\n';

// The text that the cell ends with, null when it ends with a table or holds nothing yet.
std::u16string* LastText(const KCell& cell) {
    if (cell.IsEmpty()) return nullptr;
    KCellItem& last = **cell.Back();
    return last.IsText() ? &last.Text() : nullptr;
}

void TrimStart(std::u16string& text) {
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), ZOT::IsWhiteSpace));
}

// Whether a cleaned text only keeps apart what stands on its two sides.
bool OnlySeparates(const std::u16string& clean) {
    return clean.empty() || (clean.size() == 1 && ZOT::IsWhiteSpace(clean[0]));
}

// Of two texts that meet, one gives up its white space when the other breaks the line there.
void Join(std::u16string* before, std::u16string& clean) {
    if (before == nullptr || before->empty() || before->back() == kLineFeed) {
        TrimStart(clean);
    } else if (clean.front() == kLineFeed) {
        TrimEnd(*before);
    }
}

}  // namespace

void CellText::AddText(const std::u16string& raw, unsigned int position, unsigned int length,
                       ZOT::SmartPtr<KCell>& cell, bool inAnchor) {
    ZOT::BeautifyString(raw, clean_, false, true);
    if (OnlySeparates(clean_)) return SeparateWords(cell);
    Join(LastText(*cell), clean_);
    AppendItem(position, length, *cell, inAnchor);
}

void CellText::AddPreformattedText(const std::u16string& raw, unsigned int position, unsigned int length,
                                   ZOT::SmartPtr<KCell>& cell, bool inAnchor) {
    clean_.clear();
    std::size_t begin = 0;  // of what is not yet copied
    for (std::size_t at = raw.find(u"\r\n"); at != std::u16string::npos; at = raw.find(u"\r\n", begin)) {
        clean_.append(raw, begin, at - begin);
        begin = at + 1;
    }
    clean_.append(raw, begin);
    AppendItem(position, length, *cell, inAnchor);
}

void CellText::AppendItem(unsigned int position, unsigned int length, KCell& cell, bool inAnchor) {
    const ZOT::SmartPtr<KCellItem> item = cell.AddCellItem();
    if (item) item->AppendText(clean_, position, length);
    if (!item || !item->IsText()) {
        outOfMemory_ = true;
        return;
    }
    const unsigned int words = CountWords(clean_);
    cell.AddWords(words);
    if (inAnchor) cell.AddWordsInLinksAndImages(words);
}

void SeparateWords(ZOT::SmartPtr<KCell>& cell) {
    std::u16string* const before = LastText(*cell);
    if (before == nullptr || before->empty() || ZOT::IsWhiteSpace(before->back())) return;
    before->push_back(u' ');
}

void BreakLine(ZOT::SmartPtr<KCell>& cell) {
    std::u16string* const text = LastText(*cell);
    if (text == nullptr || text->empty()) return;
    const std::size_t size = text->size();
    const bool hasTwo = size >= 2 && (*text)[size - 1] == kLineFeed && (*text)[size - 2] == kLineFeed;
    if (!hasTwo) text->push_back(kLineFeed);
}

}  // namespace QuillNS
