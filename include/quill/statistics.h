#pragma once

#include <zot/counted.h>

namespace QuillNS {

// Counts gathered over a part of a content tree by KTable::Statistics and KCell::Statistics, which add to
// what it already holds.
//
// Counters are unsigned 32-bit numbers that wrap modulo 2^32, in additions and subtractions alike. One thread
// at a time may change an object. It may stand on the stack or behind a ZOT::SmartPtr.
class QUILL_API KStatistics : public ZOT::PoolObject {
public:
    KStatistics() noexcept = default;
    KStatistics(const KStatistics&) =
        delete;  // gather again instead: a copy of running sums is stale at once
    KStatistics& operator=(const KStatistics&) = delete;
    ~KStatistics() = default;

    // All counters 0 again. Holders keep it.
    void Clear() noexcept {
        words_ = wordsInLinksAndImages_ = links_ = images_ = tables_ = cells_ = 0;
        maxWordsPerCell_ = 0.0;
    }

    // Words of the cells gathered, and how many of them lie in links and images.
    unsigned int Words() const noexcept { return words_; }
    unsigned int WordsInLinksAndImages() const noexcept { return wordsInLinksAndImages_; }
    unsigned int Links() const noexcept { return links_; }
    unsigned int Images() const noexcept { return images_; }
    // Nested tables that the cells gathered hold.
    unsigned int Tables() const noexcept { return tables_; }
    // Cells gathered; KTable::Statistics gathers those that have items.
    unsigned int Cells() const noexcept { return cells_; }
    // The largest KTable::WordsPerCell of the tables gathered; 0.0 when none is larger.
    double MaxWordsPerCell() const noexcept { return maxWordsPerCell_; }

    void AddWords(unsigned int count) noexcept { words_ += count; }
    void AddWordsInLinksAndImages(unsigned int count) noexcept { wordsInLinksAndImages_ += count; }
    void AddLinks(unsigned int count) noexcept { links_ += count; }
    void AddImages(unsigned int count) noexcept { images_ += count; }
    void AddTables(unsigned int count) noexcept { tables_ += count; }
    void AddCells(unsigned int count) noexcept { cells_ += count; }

    void SubWords(unsigned int count) noexcept { words_ -= count; }
    void SubWordsInLinksAndImages(unsigned int count) noexcept { wordsInLinksAndImages_ -= count; }
    void SubLinks(unsigned int count) noexcept { links_ -= count; }
    void SubImages(unsigned int count) noexcept { images_ -= count; }
    void SubTables(unsigned int count) noexcept { tables_ -= count; }
    void SubCells(unsigned int count) noexcept { cells_ -= count; }

    // Overwrites the ratio, whatever it was.
    void MaxWordsPerCell(double ratio) noexcept { maxWordsPerCell_ = ratio; }

    // Holders; one more; one fewer, and the last one destroys the object. The new count is returned.
    long NbRef() const noexcept { return holders_.Get(); }
    long AddRef() const noexcept { return holders_.Add(); }
    long Release() const noexcept {
        const long left = holders_.Sub();
        if (left == 0) delete this;
        return left;
    }

private:
    mutable ZOT::SPRefCounter holders_;
    unsigned int words_ = 0;
    unsigned int wordsInLinksAndImages_ = 0;
    unsigned int links_ = 0;
    unsigned int images_ = 0;
    unsigned int tables_ = 0;
    unsigned int cells_ = 0;
    double maxWordsPerCell_ = 0.0;
};

// The depth for KTable::Statistics and KCell::Statistics that gathers all nested tables.
constexpr unsigned int kAllLevels = 0xFFFFFFFFu;

}  // namespace QuillNS
