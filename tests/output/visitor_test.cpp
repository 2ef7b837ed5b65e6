#include <gtest/gtest.h>
#include <quill/visitor.h>

#include "content_tree.h"

namespace QuillNS {
namespace {

std::string Position(const ZOT::SmartPtr<KCell>& cell) {
    return std::to_string(cell->Col()) + std::to_string(cell->Row());
}

// Rejects the tables whose names are listed, the cells with 13 words, and the texts that begin with '!'.
// Records what it is asked.
class Picky : public QuillVisitorStrategy {
public:
    Picky(const ContentTree& tree, const char* rejected) : tree_(tree), rejected_(rejected) {}

    bool IsGoodTable(const ZOT::SmartPtr<KTable>& table) override {
        const std::string name = tree_.Names(std::vector<ZOT::SmartPtr<KTable>>{table});
        return rejected_.find(name) == std::string::npos;
    }
    bool IsGoodCell(const ZOT::SmartPtr<KCell>& cell) override {
        ++cellsAsked;
        return cell->Words() != 13;
    }
    bool IsGoodCellItem(const ZOT::SmartPtr<KCellItem>& item) override {
        ++itemsAsked;
        return item->Text().substr(0, 1) != u"!";
    }

    int cellsAsked = 0;
    int itemsAsked = 0;

private:
    const ContentTree& tree_;
    std::string rejected_;
};

// Writes down the hooks as they come: <R 10[ text ]10 R> for table R with the cell in column 1 and row 0.
class Recorder : public QuillVisitor {
public:
    explicit Recorder(const ContentTree& tree) : tree_(tree) {}
    Recorder(const ContentTree& tree, const ZOT::SmartPtr<QuillVisitorStrategy>& strategy)
        : QuillVisitor(strategy), tree_(tree) {}

    std::string Walk() {
        log_.clear();
        ParseTree(tree_.Root());
        return log_;
    }
    std::string Walk(const ZOT::SmartPtr<QuillVisitorStrategy>& strategy) {
        log_.clear();
        ParseTree(tree_.Root(), strategy);
        return log_;
    }
    using QuillVisitor::Strategy;

protected:
    void VisitTableInfix(const ZOT::SmartPtr<KTable>& table) override { Note("<", Name(table)); }
    void VisitTablePostfix(const ZOT::SmartPtr<KTable>& table) override { Note(Name(table), ">"); }
    void VisitCellInfix(const ZOT::SmartPtr<KCell>& cell) override { Note(Position(cell), "["); }
    void VisitCellText(const ZOT::SmartPtr<KCellItem>& item) override { Note("", Narrow(item->Text())); }
    void VisitCellPostfix(const ZOT::SmartPtr<KCell>& cell) override { Note("]", Position(cell)); }

private:
    std::string Name(const ZOT::SmartPtr<KTable>& table) {
        return tree_.Names(std::vector<ZOT::SmartPtr<KTable>>{table});
    }
    void Note(std::string_view event, std::string_view more) {
        if (!log_.empty()) log_ += ' ';
        log_.append(event).append(more);
    }

    const ContentTree& tree_;
    std::string log_;
};

TEST(Visitor, CallsTheHooksInOrder) {
    struct Case {
        const char *tree, *rejected, *log;
    };
    const Case cases[] = {
        {"R{}", "", "<R R>"},
        {"R{ () }", "", "<R 00[ ]00 R>"},
        {"R{ ^('caption') $('summary') ('a') . ; ('c') ('d') }", "",
         "<R 00[ a ]00 01[ c ]01 11[ d ]11 00[ caption ]00 00[ summary ]00 R>"},
        {"R{ ('a' _ A{ ('b') } 'c') }", "", "<R 00[ a <A 00[ b ]00 A> c ]00 R>"},
        // A table's goodness does not pass down, in either direction.
        {"R{ ('a' A{ ('b' B{ ('c') }) }) ^('d' C{ ('e') }) }", "R B", "<A 00[ b ]00 A> <C 00[ e ]00 C>"},
        {"R{ ('a' A{ ('b') }) }", "A", "<R 00[ a ]00 R>"},
        // A rejected cell hides its own text alone.
        {"R{ 13('a' A{ ('b') }) 1('c') }", "", "<R <A 00[ b ]00 A> 10[ c ]10 R>"},
        {"R{ ('!a' 'b' '!c') }", "", "<R 00[ b ]00 R>"},
    };
    for (const Case& c : cases) {
        const ContentTree tree(c.tree);
        const ZOT::SmartPtr<QuillVisitorStrategy> strategy(new Picky(tree, c.rejected), true);
        EXPECT_EQ(Recorder(tree, strategy).Walk(), c.log) << c.tree;
    }
}

TEST(Visitor, AsksAboutEveryCellButOnlyAboutTextThatCounts) {
    const ContentTree tree("R{ ('a') 13('b') . ('c' _ A{ ('d') ^('e') }) ; () }");
    Picky* const picky = new Picky(tree, "A");
    const ZOT::SmartPtr<QuillVisitorStrategy> strategy(picky, true);
    EXPECT_EQ(Recorder(tree, strategy).Walk(), "<R 00[ a ]00 30[ c ]30 01[ ]01 R>");
    EXPECT_EQ(picky->cellsAsked, 6);
    EXPECT_EQ(picky->itemsAsked, 2);
}

TEST(Visitor, TextHidesTheTableOfTheSameItemWhereItIsAdmitted) {
    const ContentTree tree("R{ ('a') }");
    const ContentTree nested("A{ ('b') }");
    (*(*tree.Root()->Begin())->Begin())->Table(nested.Root());
    const ZOT::SmartPtr<QuillVisitorStrategy> all(new QuillVisitorStrategy, true);
    const ZOT::SmartPtr<QuillVisitorStrategy> notRoot(new Picky(tree, "R"), true);
    EXPECT_EQ(Recorder(tree, all).Walk(), "<R 00[ a ]00 R>");
    EXPECT_EQ(Recorder(tree, notRoot).Walk(), "<? 00[ b ]00 ?>");
}

TEST(Visitor, KeepsTheStrategyOfItsLastWalk) {
    const ContentTree tree("R{ ('a') }");
    const ZOT::SmartPtr<QuillVisitorStrategy> all(new QuillVisitorStrategy, true);
    const ZOT::SmartPtr<QuillVisitorStrategy> none(new Picky(tree, "R"), true);
    {
        Recorder recorder(tree);
        EXPECT_EQ(recorder.Walk(), "");
        EXPECT_EQ(recorder.Walk(all), "<R 00[ a ]00 R>");
        EXPECT_EQ(recorder.Strategy(), all);
        recorder.Strategy(none);
        EXPECT_EQ(recorder.Walk(), "");
        EXPECT_EQ(all->NbRef(), 1);
    }
    EXPECT_EQ(none->NbRef(), 1);
}

TEST(Visitor, CopiesShareTheStrategyAndStartWithoutHolders) {
    const ContentTree tree("R{ ('a') }");
    const ZOT::SmartPtr<QuillVisitorStrategy> all(new QuillVisitorStrategy, true);
    const ZOT::SmartPtr<Recorder> recorder(new Recorder(tree, all), true);
    Recorder copy(*recorder);
    EXPECT_EQ(copy.NbRef(), 0);
    EXPECT_EQ(all->NbRef(), 3);
    EXPECT_EQ(copy.Walk(), recorder->Walk());
    EXPECT_EQ(QuillVisitorStrategy(*all).NbRef(), 0);
}

TEST(Visitor, LeavesNoReferencesBehind) {
    const ContentTree tree("R{ ('a' A{ ('b') }) }");
    Recorder(tree, ZOT::SmartPtr<QuillVisitorStrategy>(new QuillVisitorStrategy, true)).Walk();
    EXPECT_EQ(tree.Table("A")->NbRef(), 2);
    EXPECT_EQ((*tree.Root()->Begin())->NbRef(), 1);
    EXPECT_EQ((*(*tree.Root()->Begin())->Begin())->NbRef(), 1);
}

}  // namespace
}  // namespace QuillNS
