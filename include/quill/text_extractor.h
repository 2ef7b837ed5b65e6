#pragma once

#include <vector>
#include <quill/document_type.h>
#include <quill/rank_parameters.h>
#include <quill/visitor.h>
#include <zot/smart_ptr.h>
#include <zot/stream.h>

namespace QuillNS {

class QuillRankedStrategy;
class RankedTree;
class WinnerSelection;
class Winners;

// Writes the main content of a content tree as UTF-16 text, low byte first.
//
// The constructor chooses what is written: it ranks every table (KTable::Rank) and lets win
//   - the top tables, whose rank is at least LowThreshold and at most HiThreshold (a fraction of the best
//     rank) below the best,
//   - the tables nested in a top table, at any depth, whose rank is at least WinnerLowThreshold.
// Cells with too many link words are left out (CellLowScore). When the words so admitted are fewer than the
// fallback ratio times all words of the tree, it chooses once more with a second set of thresholds. Tables
// nested in a caption or a summary never win.
//
// The tree must not change while the extractor lives; it holds the root. One walk at a time, on the caller's
// thread. When memory runs out in the constructor, nothing is admitted.
class QUILL_API QuillTextExtractor : public QuillVisitor {
public:
    // `root` is not null. `linkPage` admits everything without any ranking. `tuning`, which may be null,
    // replaces the built-in numbers by its first nine values (it must have them):
    //   0 to 3  first set: LowThreshold, HiThreshold, CellLowScore, WinnerLowThreshold
    //   4 to 7  second set, in the same order
    //   8       fallback ratio, 0 to 1
    QuillTextExtractor(const ZOT::SmartPtr<KTable>& root, bool linkPage, std::vector<double>* tuning);
    QuillTextExtractor(const QuillTextExtractor&) = delete;  // made for one tree and one caller
    QuillTextExtractor& operator=(const QuillTextExtractor&) = delete;
    ~QuillTextExtractor() override;

    // Appends the admitted text to `out`, which is not null, at its write position; moves its read position.
    // Text items are written as they are, one after the other. Each admitted table, and each admitted cell
    // without items, stands between line feeds, which are never doubled and never the first thing in an empty
    // stream.
    void GetText(ZOT::BinaryStreamBuf* out);

    // The words of the admitted cells of admitted tables.
    unsigned int CountWords();

protected:
    // Give both sets their built-in thresholds, and `fallbackRatio` its built-in value.
    void InitParameters(const ZOT::SmartPtr<KRankParameters>& first,
                        const ZOT::SmartPtr<KRankParameters>& second, double& fallbackRatio) const;

    void VisitTableInfix(const ZOT::SmartPtr<KTable>& table) override;
    void VisitTablePostfix(const ZOT::SmartPtr<KTable>& table) override;
    void VisitCellInfix(const ZOT::SmartPtr<KCell>& cell) override;
    void VisitCellText(const ZOT::SmartPtr<KCellItem>& item) override;
    void VisitCellPostfix(const ZOT::SmartPtr<KCell>& cell) override;

private:
    enum Mode : unsigned int { kIdle = 0, kCounting = 1, kWriting = 2 };

    friend void ExtractText(const ZOT::SmartPtr<KTable>& root, ZOT::BinaryStreamBuf* out, DocumentType* type);

    // Makes the strategy that admits winners, of which it may take what it needs.
    using Admit = QuillRankedStrategy* (*)(const ZOT::SmartPtr<KRankParameters>&, Winners&);

    // For one walk, whose strategy nobody else sees. `tree` is that of `root`.
    QuillTextExtractor(const ZOT::SmartPtr<KTable>& root, const RankedTree& tree);

    void AdmitEverything();
    void AdmitMainContent(const RankedTree& tree, const std::vector<double>* tuning, Admit admit);
    unsigned int AdmitWinners(const WinnerSelection& selection,
                              const ZOT::SmartPtr<KRankParameters>& parameters, Admit admit);
    void EnsureLineBreak();

    ZOT::SmartPtr<KTable> root_;
    Mode mode_ = kIdle;
    unsigned int words_ = 0;               // sum of the running or last count
    ZOT::BinaryStreamBuf* out_ = nullptr;  // while text is written
};

// From a content tree to text: tells what kind of page it is and appends its text to `out`, as
// QuillTextExtractor does with the built-in numbers; a link page is written whole. None of the arguments is
// null. When memory runs out less text, or none, is written.
QUILL_API void ExtractText(const ZOT::SmartPtr<KTable>& root, ZOT::BinaryStreamBuf* out, DocumentType* type);

}  // namespace QuillNS
