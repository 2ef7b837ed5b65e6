#include "open_elements.h"

namespace ZOTParser {

void OpenElements::Insert(unsigned int index, const OpenElement& element) noexcept {
    std::memmove(items_ + index + 1, items_ + index, (size_ - index) * sizeof(OpenElement));
    items_[index] = element;
    ++size_;
    Count(element, 1);
}

void OpenElements::RemoveAt(unsigned int index) noexcept {
    Count(items_[index], -1);
    formattingClosed_ |= (items_[index].flags & kFormatting) != 0;
    --size_;
    std::memmove(items_ + index, items_ + index + 1, (size_ - index) * sizeof(OpenElement));
}

void OpenElements::Replace(unsigned int index, const OpenElement& element) noexcept {
    Count(items_[index], -1);
    items_[index] = element;
    Count(element, 1);
}

unsigned int OpenElements::IndexOf(NodeIndex node) const noexcept {
    for (unsigned int index = size_; index-- > 0;) {
        if (items_[index].node == node) return index;
    }
    return kNotFound;
}

unsigned int OpenElements::LastIndexOf(Tag tag) const noexcept {
    for (unsigned int index = size_; index-- > 0;) {
        if (items_[index].Is(tag)) return index;
    }
    return kNotFound;
}

unsigned int OpenElements::FindInScope(Tag tag, std::uint16_t boundary) const noexcept {
    for (unsigned int index = size_; index-- > 0;) {
        if (items_[index].Is(tag)) return index;
        if ((items_[index].flags & boundary) != 0) break;
    }
    return kNotFound;
}

bool OpenElements::HeadingInScope() const noexcept {
    for (unsigned int index = size_; index-- > 0;) {
        if ((items_[index].flags & kHeading) != 0) return true;
        if ((items_[index].flags & kScope) != 0) break;
    }
    return false;
}

}  // namespace ZOTParser
