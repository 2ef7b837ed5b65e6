#include "spans.h"

#include <algorithm>
#include <new>
#include <utility>

namespace ZOTMem {

void* KeptSpans::TakeChunk() {
    for (List* const list : {&surplus_, &chunks_}) {
        if (list->first != nullptr) return list->Pop(&list->first);
    }
    if (rest_ == rest_end_ && !TakeBatch()) return nullptr;
    return std::exchange(rest_, rest_ + kChunkBytes);
}

bool KeptSpans::TakeBatch() {
    std::size_t bytes = std::clamp(mapped_ / 4 / kChunkBytes * kChunkBytes, kLeastBatch, kLargestBatch);
    if (idle_.first != nullptr) {
        bytes = std::min(idle_.first->bytes, kLargestBatch);
        rest_ = static_cast<char*>(idle_.Cut(&idle_.first, bytes));
    } else {
        rest_ = static_cast<char*>(MapSpan(bytes));
        if (rest_ != nullptr) mapped_ += bytes;
    }
    rest_end_ = rest_ == nullptr ? nullptr : rest_ + bytes;
    return rest_ != nullptr;
}

void* KeptSpans::Take(std::size_t& bytes) {
    if (Free** const link = larger_.BestFit(bytes); *link != nullptr) {
        bytes = (*link)->bytes;
        return larger_.Pop(link);
    }
    if (idle_.first == nullptr) return MapSpan(bytes);
    const std::size_t pages = (bytes + kHugePage - 1) / kHugePage * kHugePage;
    if (Free** const link = idle_.Least(pages); *link != nullptr) {
        bytes = pages;
        return idle_.Cut(link, pages);
    }
    GiveBackIdle();
    return MapSpan(bytes);
}

bool KeptSpans::TakeAt(void* place, std::size_t bytes) {
    if (bytes % kHugePage != 0) return false;
    for (Free** link = &idle_.first; *link != nullptr; link = &(*link)->next) {
        if (*link != place) continue;
        if ((*link)->bytes < bytes) return false;
        idle_.Cut(link, bytes);
        return true;
    }
    return false;
}

void KeptSpans::GiveChunk(void* chunk) {
    if (chunks_.bytes < kChunksBytes) return chunks_.Push(chunk, kChunkBytes);
    surplus_.Push(chunk, kChunkBytes);
    if (surplus_.bytes == kSurplusBytes) surplus_.GiveBack();
}

// Spans that no page takes any more go with those that it takes, now and then.
void KeptSpans::Give(void* span, std::size_t bytes) {
    if (bytes >= kLeastHugeSpan) {
        idle_.Push(span, bytes);
    } else {
        if (larger_.bytes + bytes > kLargerBytes) larger_.GiveBack();
        larger_.Push(span, bytes);
    }
    if (calls_ == 0) Trim();
}

void KeptSpans::Trim() {
    while (idle_.first != nullptr && idle_.bytes + larger_.bytes > kLargerBytes) {
        const std::size_t bytes = idle_.first->bytes;
        UnmapSpan(idle_.Pop(&idle_.first), bytes);
    }
}

void KeptSpans::GiveBack() {
    for (List* const list : {&chunks_, &surplus_, &larger_, &idle_}) list->GiveBack();
    if (rest_ != rest_end_) UnmapSpan(rest_, static_cast<std::size_t>(rest_end_ - rest_));
    mapped_ = 0;
    rest_ = rest_end_ = nullptr;
}

void KeptSpans::List::Push(void* span, std::size_t size) {
    first = ::new (span) Free{first, size};
    bytes += size;
}

void* KeptSpans::List::Pop(Free** link) {
    Free* const span = *link;
    *link = span->next;
    bytes -= span->bytes;
    return span;
}

// Takes the front of a span that has at least `size`, and leaves the rest in its place.
void* KeptSpans::List::Cut(Free** link, std::size_t size) {
    Free* const span = *link;
    if (span->bytes == size) return Pop(link);
    *link = ::new (reinterpret_cast<char*>(span) + size) Free{span->next, span->bytes - size};
    bytes -= size;
    return span;
}

// The link to the smallest span that has room for `size` and is smaller than `below`; a link to null when
// there is none.
KeptSpans::Free** KeptSpans::List::Least(std::size_t size, std::size_t below) {
    Free** at = &first;
    Free** best = nullptr;
    for (; *at != nullptr; at = &(*at)->next) {
        if ((*at)->bytes < size || (*at)->bytes >= below) continue;
        best = at;
        below = (*at)->bytes;
    }
    return best == nullptr ? at : best;
}

// Neighbours together: a tree is freed in the order of its addresses, mostly.
void KeptSpans::List::GiveBack() {
    char* begin = nullptr;
    char* end = nullptr;
    while (first != nullptr) {
        char* const at = reinterpret_cast<char*>(first);
        const std::size_t size = first->bytes;
        first = first->next;
        if (at + size == begin) {
            begin = at;
        } else if (at == end) {
            end += size;
        } else {
            if (begin != end) UnmapSpan(begin, static_cast<std::size_t>(end - begin));
            begin = at;
            end = at + size;
        }
    }
    if (begin != end) UnmapSpan(begin, static_cast<std::size_t>(end - begin));
    bytes = 0;
}

}  // namespace ZOTMem
