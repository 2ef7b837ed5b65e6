#include "random_tree.h"

#include <iterator>
#include <utility>

namespace QuillNS {

namespace {

constexpr unsigned int kMostTables = 60;
constexpr unsigned int kMostLevels = 12;

class Writer {
public:
    Writer(const Choose& choose, bool plain) : choose_(choose), plain_(plain) {}

    void Table(unsigned int level) {
        if (!plain_) text.append("T").append(std::to_string(tables_));
        ++tables_;
        text += '{';
        const unsigned int rows = choose_(3);
        const unsigned int cols = 1 + choose_(3);
        for (unsigned int row = 0; row <= rows; ++row) {
            if (row != 0) text += " ;";
            for (unsigned int col = 0; col < cols; ++col) Slot(level);
        }
        if (!plain_ && choose_(8) == 0) Cell(" ^", level);
        if (!plain_ && choose_(8) == 0) Cell(" $", level);
        text += " }";
    }

    std::string text;

private:
    void Slot(unsigned int level) {
        if (choose_(5) == 0) {
            text += " .";
        } else {
            Cell(" ", level);
        }
    }

    void Cell(const char* start, unsigned int level) {
        text += start;
        Counts();
        text += '(';
        for (unsigned int items = choose_(4); items != 0; --items) Item(level);
        text += ')';
    }

    // Never more words in links than words: no cell of a page has that.
    void Counts() {
        static const unsigned int kWords[] = {0, 1, 2, 3, 10, 10, 25, 100, 100, 1000, 4294967290u};
        const unsigned int words = kWords[choose_(std::size(kWords))];
        const unsigned int shares[] = {0, 0, 0, words / 10, words / 2, words - words / 10, words, words};
        text.append(std::to_string(words))
            .append("/")
            .append(std::to_string(shares[choose_(std::size(shares))]));
    }

    void Item(unsigned int level) {
        static const char* const kTexts[] = {"'a'", "'b\n'", "''", "'c\n\n'", "_"};
        if (level < kMostLevels && tables_ < kMostTables && choose_(2) == 0) {
            Table(level + 1);
        } else {
            text += kTexts[choose_(std::size(kTexts))];
        }
    }

    const Choose& choose_;
    const bool plain_;
    unsigned int tables_ = 0;
};

}  // namespace

std::string RandomTree(const Choose& choose) {
    Writer writer(choose, false);
    writer.Table(0);
    return std::move(writer.text);
}

std::string RandomPlainTree(const Choose& choose) {
    Writer writer(choose, true);
    writer.Table(0);
    return std::move(writer.text);
}

std::vector<double> RandomTuning(const Choose& choose, const std::vector<double>& ranks) {
    static const double kThresholds[] = {0.0, 0.05, 0.2, 0.3, 0.453539, 0.5, 0.596276, 0.9, 1.0};
    std::vector<double> tuning(9);
    for (double& value : tuning) {
        const unsigned int choice = choose(2 * std::size(kThresholds));
        value = choice < std::size(kThresholds) || ranks.empty()
                    ? kThresholds[choice % std::size(kThresholds)]
                    : ranks[choose(static_cast<unsigned int>(ranks.size()))];
    }
    return tuning;
}

}  // namespace QuillNS
