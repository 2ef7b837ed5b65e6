#include "active_formatting.h"

#include <cstring>

#include "tokenizer.h"

namespace ZOTParser {
namespace {

constexpr unsigned int kComparedAttributes = 16;

// The attributes of a start tag, each name once. Tags with more than kComparedAttributes are equal to no
// other.
struct AttributeSet {
    Attribute items[kComparedAttributes];
    unsigned int size = 0;
    bool complete = true;

    AttributeSet(const NodeStore& nodes, NodeIndex node) {
        nodes.VisitAttributes(nodes[node], [this](const Attribute& attribute) { return Add(attribute); });
    }

    bool Add(const Attribute& attribute) noexcept {
        if (Find(attribute.name) != nullptr) return true;
        complete = size < kComparedAttributes;
        if (complete) items[size++] = attribute;
        return complete;
    }

    const Attribute* Find(Span name) const noexcept {
        for (unsigned int i = 0; i < size; ++i) {
            if (SameIgnoringCase(items[i].name, name)) return &items[i];
        }
        return nullptr;
    }
};

// Never 0.
std::uint32_t HashOf(const AttributeSet& set) noexcept {
    std::uint32_t sum = 0;
    for (unsigned int i = 0; i < set.size; ++i) {
        std::uint32_t hash = 2166136261u;  // FNV-1a
        for (const char c : set.items[i].name.View())
            hash = (hash ^ static_cast<unsigned char>(c | 0x20)) * 16777619u;
        for (const char c : set.items[i].value.View())
            hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
        sum += hash;
    }
    return sum | 1;
}

bool operator==(const AttributeSet& a, const AttributeSet& b) noexcept {
    if (!a.complete || !b.complete || a.size != b.size) return false;
    for (unsigned int i = 0; i < a.size; ++i) {
        const Attribute* const other = b.Find(a.items[i].name);
        if (other == nullptr || other->value.View() != a.items[i].value.View()) return false;
    }
    return true;
}

}  // namespace

void ActiveFormatting::Push(NodeIndex node, Tag tag) noexcept {
    Entry entry{node, tag};
    unsigned int same = 0;
    unsigned int earliest = 0;
    for (unsigned int index = size_; index-- > 0 && entries_[index].node != kNoNode;) {
        if (entries_[index].tag == tag && SameElement(entries_[index], entry)) {
            ++same;
            earliest = index;
        }
    }
    if (same >= 3) RemoveAt(earliest);
    Add(entry);
}

void ActiveFormatting::Add(const Entry& entry) noexcept {
    if (size_ == kMostEntries) RemoveAt(0);
    entries_[size_++] = entry;
}

bool ActiveFormatting::SameElement(Entry& a, Entry& b) const noexcept {
    return AttributesOf(a) == AttributesOf(b) && AttributeSet(nodes_, a.node) == AttributeSet(nodes_, b.node);
}

// Most elements are never compared: nothing is computed before it is needed.
std::uint32_t ActiveFormatting::AttributesOf(Entry& entry) const noexcept {
    if (entry.attributes == 0) entry.attributes = HashOf(AttributeSet(nodes_, entry.node));
    return entry.attributes;
}

void ActiveFormatting::ClearToMarker() noexcept {
    while (size_ != 0 && entries_[--size_].node != kNoNode) {
    }
}

void ActiveFormatting::Insert(unsigned int index, const Entry& entry) noexcept {
    if (size_ == kMostEntries) {
        RemoveAt(0);
        if (index != 0) --index;
    }
    std::memmove(entries_ + index + 1, entries_ + index, (size_ - index) * sizeof(Entry));
    entries_[index] = entry;
    ++size_;
}

void ActiveFormatting::RemoveAt(unsigned int index) noexcept {
    --size_;
    std::memmove(entries_ + index, entries_ + index + 1, (size_ - index) * sizeof(Entry));
}

void ActiveFormatting::Remove(NodeIndex node) noexcept {
    const unsigned int index = IndexOf(node);
    if (index != kNotFound) RemoveAt(index);
}

unsigned int ActiveFormatting::IndexOf(NodeIndex node) const noexcept {
    for (unsigned int index = size_; index-- > 0;) {
        if (entries_[index].node == node) return index;
    }
    return kNotFound;
}

unsigned int ActiveFormatting::FindBehindMarker(Tag tag) const noexcept {
    for (unsigned int index = size_; index-- > 0 && entries_[index].node != kNoNode;) {
        if (entries_[index].tag == tag) return index;
    }
    return kNotFound;
}

}  // namespace ZOTParser
