#include "outlines.h"

#include <algorithm>
#include <cstdio>

#include "element_index.h"
#include "start_tag.h"

namespace QuillTool {

namespace {

using QuillNS::KCell;
using QuillNS::KStatistics;
using QuillNS::KTable;

// Ranks of 0 to 1 and more in steps of a tenth, for the colours.
constexpr int kHeats = 10;

// In front of the rules for each heat.
constexpr const char* kStyle = R"(
[data-quill-table] { outline: 2px dashed gray !important; outline-offset: -2px !important; }
[data-quill-table="winner"] { outline-style: solid !important; outline-width: 3px !important; }
[data-quill-cell] { outline: 1px dotted gray; outline-offset: -4px; }
[data-quill-cell="refused"] { background: repeating-linear-gradient(45deg,
    rgba(220, 0, 0, .12), rgba(220, 0, 0, .12) 6px, transparent 6px, transparent 14px) !important; }
[data-quill-unread] { outline: 2px dotted gray !important; outline-offset: -2px !important;
    background: repeating-linear-gradient(45deg, rgba(0, 0, 0, .08), rgba(0, 0, 0, .08) 3px,
    transparent 3px, transparent 10px) !important; }
[data-quill-label]::before { content: attr(data-quill-label) !important; display: block !important;
    position: static !important; float: none !important; visibility: visible !important;
    width: auto !important; height: auto !important; margin: 0 !important; padding: 1px 4px !important;
    font: bold 11px/1.3 sans-serif !important; text-align: left !important; text-indent: 0 !important;
    text-transform: none !important; letter-spacing: normal !important; white-space: normal !important;
    color: black !important; background: #eee !important; opacity: 1 !important; }
table[data-quill-label]::before { display: table-caption !important; caption-side: top !important; }
html::before { display: block !important; white-space: pre-line !important; padding: 8px !important;
    font: 13px/1.5 sans-serif !important; text-align: left !important; color: black !important;
    background: #eee !important; border-bottom: 2px solid gray !important; }
)";

constexpr const char* kDot = " \xC2\xB7 ";

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

std::string Words(unsigned int words, unsigned int linked) {
    std::string text = std::to_string(words) + (words == 1 ? " word" : " words");
    return linked == 0 ? text : text + ", " + std::to_string(linked) + " in links";
}

class Outliner {
public:
    Outliner(const ZOTParser::HtmlDocTree& tree, const Choice& choice, std::string_view page,
             PageEdits& edits)
        : tree_(tree),
          choice_(choice),
          page_(page),
          edits_(edits),
          index_(tree, choice),
          parameters_(Parameters(choice)) {
        choice.root->Statistics(totals_, QuillNS::kAllLevels);
    }

    std::string Draw() {
        for (const auto& table : index_.Tables()) DrawTable(table);
        DrawClutter();
        return "<style>" + std::string(kStyle) + HeatRules() + "html::before { content: \"" + Summary() +
               "\" !important; }</style>";
    }

private:
    // A link page is not ranked; its ranks are shown all the same.
    static ZOT::SmartPtr<QuillNS::KRankParameters> Parameters(const Choice& choice) {
        const auto* const ranked = dynamic_cast<const QuillNS::QuillRankedStrategy*>(choice.strategy.Get());
        if (ranked != nullptr) return ranked->Parameters();
        return {new QuillNS::KRankParameters, true};
    }

    void DrawTable(const ZOT::SmartPtr<KTable>& table) {
        const double rank = table->Rank(totals_, parameters_);
        const bool wins = choice_.strategy->IsGoodTable(table);
        best_ = std::max(best_, rank);
        std::string attributes = TableAttributes(rank, wins);
        KStatistics own;
        table->Statistics(own, 0);
        std::string label = "rank " + Number(rank) + kDot + (wins ? "winner" : "not chosen") + kDot +
                            Words(own.Words(), own.WordsInLinksAndImages());
        for (const auto& cell : *table) {
            if (wins && cell && cell->Words() != 0) DrawCell(cell, attributes, label);
        }
        if (table == choice_.root) outside_ = label;
        const Node* const element = index_.ElementOf(*table);
        // A wrapper that lost tells nothing; one that won lets in what is nested in it.
        const bool tells = wins || own.Words() != 0;
        if (element != nullptr) SetAttributes(*element, attributes + (tells ? Label(label) : ""));
    }

    // What the block reading leaves unread although it shows.
    void DrawClutter() {
        WalkNodes(tree_.Entries(), nullptr, [&](const Node& node, const Node*) {
            const bool is_clutter = node.Keyword() == ZOTParser::kKeywordClutter && node.SourceLength() != 0;
            if (is_clutter) SetAttributes(node, " data-quill-unread" + Label("clutter, not read"));
        });
    }

    // A cell without a tag of its own is told of with its table: a block is both at once.
    void DrawCell(const ZOT::SmartPtr<KCell>& cell, std::string& table_attributes, std::string& table_label) {
        const bool good = choice_.strategy->IsGoodCell(cell);
        if (good) words_ += cell->Words();
        const std::string attribute = std::string(" data-quill-cell=\"") + (good ? "good\"" : "refused\"");
        const Node* const element = index_.ElementOf(*cell);
        if (element != nullptr && element->SourceLength() != 0) {
            SetAttributes(*element, attribute + Label((good ? "cell: " : "cell refused: ") +
                                                      Words(cell->Words(), cell->WordsInLinksAndImages())));
        } else {
            table_attributes += attribute;
            if (!good) table_label += std::string(kDot) + "cell refused";
        }
    }

    static std::string TableAttributes(double rank, bool wins) {
        const int heat = std::clamp(static_cast<int>(rank * kHeats), 0, kHeats);
        return std::string(" data-quill-table=\"") + (wins ? "winner" : "loser") + "\" data-quill-heat=\"" +
               std::to_string(heat) + '"';
    }

    static std::string Label(const std::string& text) { return " data-quill-label=\"" + text + '"'; }

    // Of two attributes with one name the first one counts.
    void SetAttributes(const Node& element, const std::string& attributes) {
        edits_.Insert(element.SourcePosition() + 1 + NameInTag(element, page_).size(), attributes);
    }

    // From red to green.
    static std::string HeatRules() {
        std::string rules;
        for (int heat = 0; heat <= kHeats; ++heat) {
            rules += "[data-quill-heat=\"" + std::to_string(heat) + "\"] { outline-color: hsl(" +
                     std::to_string(12 * heat) + ", 90%, 40%) !important; }\n";
        }
        return rules;
    }

    std::string Summary() const {
        if (choice_.type == QuillNS::LinkPage) {
            return "quill: a page of links. Such a page is not ranked, all of its " +
                   std::to_string(totals_.Words()) + " words are chosen.";
        }
        const double cutoff =
            std::max(parameters_->LowThreshold(), best_ - parameters_->HiThreshold() * best_);
        return "quill: a content page. " + std::to_string(words_) + " of its " +
               std::to_string(totals_.Words()) + " words are chosen.\\A A table wins with a rank of " +
               Number(cutoff) + " or more (the best has " + Number(best_) + "), within a winner with " +
               Number(parameters_->WinnerLowThreshold()) +
               " or more. Of a winner's cells those are chosen that have more than a share of " +
               Number(parameters_->CellLowScore()) +
               " of their words outside links.\\A Outside all tables: " + outside_ + '.';
    }

    const ZOTParser::HtmlDocTree& tree_;
    const Choice& choice_;
    const std::string_view page_;
    PageEdits& edits_;
    const ElementIndex index_;
    const ZOT::SmartPtr<QuillNS::KRankParameters> parameters_;
    KStatistics totals_;
    double best_ = 0;      // of all ranks
    std::string outside_;  // label of the root
    unsigned int words_ = 0;
};

}  // namespace

std::string DrawOutlines(const ZOTParser::HtmlDocTree& tree, const Choice& choice, std::string_view page,
                         PageEdits& edits) {
    return Outliner(tree, choice, page, edits).Draw();
}

}  // namespace QuillTool
