// The selection on content trees that the input chooses: ranks, winners and text must be those of the plain
// rules, and the tree must come out of it with the holders that it had.

#include "select_winners.h"

#include <map>
#include <string>
#include <vector>
#include <quill/text_extractor.h>
#include <zot/memory_buffer.h>

#include "choices.h"
#include "content_tree.h"
#include "fuzz_target.h"
#include "ranking/plain_selection.h"
#include "ranking/random_tree.h"

namespace {

using namespace QuillNS;

std::vector<double> RequireRanks(const ContentTree& tree, const KStatistics& totals,
                                 const ZOT::SmartPtr<KRankParameters>& parameters) {
    std::vector<double> ranks;
    for (const auto& [name, table] : tree.Tables()) {
        ranks.push_back(Plain::Rank(*table, totals, *parameters));
        Require(table->Rank(totals, parameters) == ranks.back(), "ranks are those of the plain rules");
    }
    return ranks;
}

void RequireWinners(const ContentTree& tree, const KStatistics& totals,
                    const ZOT::SmartPtr<KRankParameters>& parameters) {
    ZOT::RefCount<TableSet> winners(new TableSet);
    SelectWinners(tree.Root(), totals, parameters, winners);
    Require(*winners == Plain::SelectWinners(tree.Root(), totals, *parameters),
            "winners are those of the plain rules");
}

void RequireText(const ContentTree& tree, std::vector<double>& tuning) {
    ZOTFile::MemoryBuffer out(64);
    QuillTextExtractor extractor(tree.Root(), false, &tuning);
    const unsigned int words = extractor.CountWords();
    extractor.GetText(&out);
    std::u16string text;
    out.SeekG(0, ZOT::kFromBegin);
    out.Copy(text, ZOT::kWholeStream);
    Require(text == Plain::Text(tree.Root(), tuning), "the text is that of the plain rules");
    Require(extractor.CountWords() == words, "writing does not change what is admitted");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Choose choose = Choices(data, size);
    const ContentTree tree(RandomTree(choose));
    KStatistics totals;
    tree.Gather(totals);
    const ZOT::SmartPtr<KRankParameters> parameters(new KRankParameters, true);
    const std::vector<double> ranks = RequireRanks(tree, totals, parameters);
    std::vector<double> tuning = RandomTuning(choose, ranks);
    parameters->Init(tuning[0], tuning[1], tuning[2], tuning[3]);
    RequireWinners(tree, totals, parameters);
    RequireText(tree, tuning);
    for (const auto& [name, table] : tree.Tables()) {
        Require(table->NbRef() == 2,
                "no reference is left behind");  // its item (the tree for the root) and its name
    }
    return 0;
}
