#pragma once

#include "node_store.h"

namespace ZOTParser {

// https://html.spec.whatwg.org/multipage/parsing.html#the-list-of-active-formatting-elements
//
// Entries, oldest first; a marker is an entry without a node. Besides the three equal elements that the
// standard keeps, the list holds at most kMostEntries: a page that opens more loses its oldest formatting,
// not its text.
class ActiveFormatting {
public:
    struct Entry {
        NodeIndex node;  // kNoNode: a marker
        Tag tag;
        std::uint32_t attributes = 0;  // their hash, whatever their order; 0: not computed yet
    };
    static constexpr unsigned int kMostEntries = 512;
    static constexpr unsigned int kNotFound = ~0u;

    explicit ActiveFormatting(const NodeStore& nodes) noexcept : nodes_(nodes) {}

    bool Empty() const noexcept { return size_ == 0; }
    unsigned int Size() const noexcept { return size_; }
    Entry& operator[](unsigned int index) noexcept { return entries_[index]; }
    const Entry& Last() const noexcept { return entries_[size_ - 1]; }

    void PushMarker() noexcept { Add(Entry{kNoNode, Tag::kUnknown}); }
    // With the "Noah's Ark clause".
    void Push(NodeIndex node, Tag tag) noexcept;
    // "Clear the list of active formatting elements up to the last marker."
    void ClearToMarker() noexcept;

    void Insert(unsigned int index, const Entry& entry) noexcept;
    void RemoveAt(unsigned int index) noexcept;
    void RemoveLast() noexcept { --size_; }
    void Remove(NodeIndex node) noexcept;
    unsigned int IndexOf(NodeIndex node) const noexcept;
    // The last entry of that name behind the last marker.
    unsigned int FindBehindMarker(Tag tag) const noexcept;

private:
    void Add(const Entry& entry) noexcept;
    bool SameElement(Entry& a, Entry& b) const noexcept;
    std::uint32_t AttributesOf(Entry& entry) const noexcept;

    const NodeStore& nodes_;
    unsigned int size_ = 0;
    Entry entries_[kMostEntries];
};

}  // namespace ZOTParser
