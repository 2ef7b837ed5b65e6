#include <algorithm>
#include <new>
#include <quill/ranked_strategy.h>
#include <quill/statistics.h>
#include <quill/text_extractor.h>

#include "select_winners.h"

namespace QuillNS {

namespace {

// A link page has a share of words outside links of at most kLinkPageTextShare, and at most
// kLinkPageWordsPerLink such words for each link.
constexpr double kLinkPageTextShare = 0.0732258;
constexpr double kLinkPageWordsPerLink = 22.7742;

constexpr double kFallbackRatio = 0.635552;

constexpr unsigned char kLineBreak[] = {0x0A, 0x00};  // a line feed as the stream holds it

double Quotient(unsigned int dividend, unsigned int divisor) {
    return divisor == 0 ? 0.0 : static_cast<double>(dividend) / static_cast<double>(divisor);
}

bool IsLinkPage(const KStatistics& totals) {
    const unsigned int text = totals.Words() - totals.WordsInLinksAndImages();
    return Quotient(text, totals.Words()) <= kLinkPageTextShare &&
           Quotient(text, totals.Links()) <= kLinkPageWordsPerLink;
}

// The strategy of a walk that nobody else sees, over a plain tree (RankedTree::IsPlain): no set of winners.
class WinnersStrategy final : public QuillRankedStrategy {
public:
    WinnersStrategy(const ZOT::SmartPtr<KRankParameters>& parameters, Winners& winners)
        : QuillRankedStrategy(parameters, ZOT::RefCount<TableSet>()) {
        winners_.Swap(winners);
    }

    bool IsGoodTable(const ZOT::SmartPtr<KTable>& table) override { return winners_.Has(table.Get()); }

private:
    Winners winners_;
};

QuillRankedStrategy* AdmitList(const ZOT::SmartPtr<KRankParameters>& parameters, Winners& winners) {
    return new WinnersStrategy(parameters, winners);
}

QuillRankedStrategy* AdmitSet(const ZOT::SmartPtr<KRankParameters>& parameters, Winners& winners) {
    const ZOT::RefCount<TableSet> set(new (std::nothrow) TableSet);
    if (!set) return nullptr;
    winners.InsertInto(*set);
    return new QuillRankedStrategy(parameters, set);
}

}  // namespace

void ExtractText(const ZOT::SmartPtr<KTable>& root, ZOT::BinaryStreamBuf* out, DocumentType* type) {
    const RankedTree tree(*root);
    const bool linkPage = IsLinkPage(tree.Totals());
    *type = linkPage ? LinkPage : ContentPage;
    if (linkPage) return QuillTextExtractor(root, true, nullptr).GetText(out);
    QuillTextExtractor(root, tree).GetText(out);
}

QuillTextExtractor::QuillTextExtractor(const ZOT::SmartPtr<KTable>& root, bool linkPage,
                                       std::vector<double>* tuning)
    : root_(root) {
    if (linkPage) {
        AdmitEverything();
        return;
    }
    AdmitMainContent(RankedTree(*root), tuning, AdmitSet);
}

QuillTextExtractor::QuillTextExtractor(const ZOT::SmartPtr<KTable>& root, const RankedTree& tree)
    : root_(root) {
    AdmitMainContent(tree, nullptr, tree.IsPlain() ? AdmitList : AdmitSet);
}

QuillTextExtractor::~QuillTextExtractor() = default;

void QuillTextExtractor::AdmitEverything() {
    Strategy(ZOT::SmartPtr<QuillVisitorStrategy>(new QuillVisitorStrategy, true));
}

// Both parameter sets have the same weights, so the tables are ranked once for both.
void QuillTextExtractor::AdmitMainContent(const RankedTree& tree, const std::vector<double>* tuning,
                                          Admit admit) {
    const ZOT::SmartPtr<KRankParameters> first(new KRankParameters, true);
    const ZOT::SmartPtr<KRankParameters> second(new KRankParameters, true);
    if (!first || !second) return;
    double fallbackRatio;
    if (tuning == nullptr) {
        InitParameters(first, second, fallbackRatio);
    } else {
        const double* const value = tuning->data();
        first->Init(value[0], value[1], value[2], value[3]);
        second->Init(value[4], value[5], value[6], value[7]);
        fallbackRatio = value[8];
    }

    const WinnerSelection selection(tree, tree.Totals(), *first);
    unsigned int words = AdmitWinners(selection, first, admit);
    if (!tree.IsPlain()) words = CountWords();
    const double leastWords = static_cast<double>(tree.Totals().Words()) * fallbackRatio;
    if (Strategy() && leastWords > static_cast<double>(words)) AdmitWinners(selection, second, admit);
}

void QuillTextExtractor::InitParameters(const ZOT::SmartPtr<KRankParameters>& first,
                                        const ZOT::SmartPtr<KRankParameters>& second,
                                        double& fallbackRatio) const {
    first->Init(0.212131, 0.596276, 0.436295, 0.453539);
    second->Init(0.515806, 0.560831, 0.202551, 0.568495);
    fallbackRatio = kFallbackRatio;
}

// Returns the words that are admitted in the grids of the winners. Without memory for them nothing is
// admitted, and there is no strategy.
unsigned int QuillTextExtractor::AdmitWinners(const WinnerSelection& selection,
                                              const ZOT::SmartPtr<KRankParameters>& parameters, Admit admit) {
    Winners winners;
    const unsigned int words = selection.Select(*parameters, winners);
    Strategy(ZOT::SmartPtr<QuillVisitorStrategy>(admit(parameters, winners), true));
    return Strategy() ? words : 0;
}

void QuillTextExtractor::GetText(ZOT::BinaryStreamBuf* out) {
    mode_ = kWriting;
    out_ = out;
    ParseTree(root_);
    mode_ = kIdle;
    out_ = nullptr;
}

unsigned int QuillTextExtractor::CountWords() {
    mode_ = kCounting;
    words_ = 0;
    ParseTree(root_);
    mode_ = kIdle;
    return words_;
}

void QuillTextExtractor::VisitTableInfix(const ZOT::SmartPtr<KTable>&) {
    if (mode_ == kWriting) EnsureLineBreak();
}

void QuillTextExtractor::VisitTablePostfix(const ZOT::SmartPtr<KTable>&) {
    if (mode_ == kWriting) EnsureLineBreak();
}

void QuillTextExtractor::VisitCellInfix(const ZOT::SmartPtr<KCell>& cell) {
    if (mode_ == kCounting) words_ += cell->Words();
    if (mode_ == kWriting && cell->IsEmpty()) EnsureLineBreak();
}

void QuillTextExtractor::VisitCellText(const ZOT::SmartPtr<KCellItem>& item) {
    if (mode_ == kWriting) ZOT::Copy(*out_, item->TextView(), ZOT::kWholeStream);
}

void QuillTextExtractor::VisitCellPostfix(const ZOT::SmartPtr<KCell>&) {}

// Reads back the last whole unit of the stream, whoever wrote it. A stream of one byte has none.
void QuillTextExtractor::EnsureLineBreak() {
    const unsigned int size = out_->vSize();
    if (size == 0) return;
    const unsigned int last = (size / 2 - 1) * 2;
    unsigned char unit[sizeof kLineBreak] = {};
    if (last < size && out_->SeekG(static_cast<int>(last), ZOT::kFromBegin)) out_->Get(unit, sizeof unit);
    if (!std::equal(unit, unit + sizeof unit, kLineBreak)) out_->vPut(kLineBreak, sizeof kLineBreak);
}

}  // namespace QuillNS
