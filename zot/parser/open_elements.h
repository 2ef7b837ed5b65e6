#pragma once

#include <cstring>

#include "node_store.h"

namespace ZOTParser {

// Elements nested deeper than this become siblings at this depth, as in browsers.
constexpr unsigned int kMaxDepth = 512;

// Bits of OpenElement::flags besides those of TagFlag.
enum OpenFlag : std::uint16_t {
    kHtmlIntegrationPoint = 1 << 11,
    kMathMlTextIntegrationPoint = 1 << 12,
};

struct OpenElement {
    NodeIndex node;
    Tag tag;
    Namespace ns;
    std::uint16_t flags;  // TagFlag and OpenFlag

    bool Is(Tag other) const noexcept { return tag == other && (flags & kForeign) == 0; }
};

// https://html.spec.whatwg.org/multipage/parsing.html#the-stack-of-open-elements
//
// Index 0 is the html element, once there is one. It holds at most kMaxDepth elements. A count of open
// elements for every tag answers most questions about scopes without a walk.
class OpenElements {
public:
    bool Empty() const noexcept { return size_ == 0; }
    bool Full() const noexcept { return size_ == kMaxDepth; }
    unsigned int Size() const noexcept { return size_; }
    OpenElement& operator[](unsigned int index) noexcept { return items_[index]; }
    const OpenElement& operator[](unsigned int index) const noexcept { return items_[index]; }
    const OpenElement& Current() const noexcept { return items_[size_ - 1]; }

    // Open elements with this name in the HTML namespace (any, for kUnknown).
    bool Has(Tag tag) const noexcept { return open_[static_cast<unsigned int>(tag)] != 0; }
    unsigned int ForeignCount() const noexcept { return foreign_; }

    // True after a formatting element was closed, until cleared: the last entry of the list of active
    // formatting elements may then not be open any more.
    bool FormattingClosed() const noexcept { return formattingClosed_; }
    void ClearFormattingClosed() noexcept { formattingClosed_ = false; }

    // The stack is not full.
    void Push(const OpenElement& element) noexcept {
        items_[size_++] = element;
        Count(element, 1);
    }
    void Pop() noexcept {
        const OpenElement& element = items_[--size_];
        Count(element, -1);
        formattingClosed_ |= (element.flags & kFormatting) != 0;
    }
    // Pops a formatting element that has left the list of active formatting elements.
    void PopInactive() noexcept { Count(items_[--size_], -1); }
    // Pops down to `size` elements.
    void PopTo(unsigned int size) noexcept {
        while (size_ > size) Pop();
    }
    void Insert(unsigned int index, const OpenElement& element) noexcept;
    void RemoveAt(unsigned int index) noexcept;
    void Replace(unsigned int index, const OpenElement& element) noexcept;

    static constexpr unsigned int kNotFound = ~0u;
    unsigned int IndexOf(NodeIndex node) const noexcept;
    // The topmost element with that name.
    unsigned int LastIndexOf(Tag tag) const noexcept;

    // "Has an element in scope", with the flags that end the scope.
    bool InScope(Tag tag, std::uint16_t boundary = kScope) const noexcept {
        return Has(tag) && FindInScope(tag, boundary) != kNotFound;
    }
    bool InListItemScope(Tag tag) const noexcept { return InScope(tag, kScope | kListItemScope); }
    bool InButtonScope(Tag tag) const noexcept { return InScope(tag, kScope | kButtonScope); }
    bool InTableScope(Tag tag) const noexcept { return InScope(tag, kTableScope); }
    bool HeadingInScope() const noexcept;

    // Pops until an element with that name has been popped; nothing when none is open.
    void PopUntil(Tag tag) noexcept {
        const unsigned int index = Has(tag) ? LastIndexOf(tag) : kNotFound;
        if (index != kNotFound && index != 0) PopTo(index);
    }

private:
    void Count(const OpenElement& element, int by) noexcept {
        if ((element.flags & kForeign) != 0) [[unlikely]] {
            foreign_ = static_cast<unsigned int>(static_cast<int>(foreign_) + by);
            return;
        }
        std::uint16_t& count = open_[static_cast<unsigned int>(element.tag)];
        count = static_cast<std::uint16_t>(count + by);
    }
    unsigned int FindInScope(Tag tag, std::uint16_t boundary) const noexcept;

    unsigned int size_ = 0;
    unsigned int foreign_ = 0;
    bool formattingClosed_ = false;
    std::uint16_t open_[kTagCount] = {};
    OpenElement items_[kMaxDepth];
};

}  // namespace ZOTParser
