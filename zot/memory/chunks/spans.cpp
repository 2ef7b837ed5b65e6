#include "spans.h"

#include <algorithm>
#include <new>
#include <utility>

namespace ZOTMem {

void* KeptSpans::TakeChunk() {
    for (List* const list : {&surplus_, &chunks_}) {
        if (list->first != nullptr) return list->Pop(&list->first);
    }
    if (rest_ == rest_end_) {
        const std::size_t batch =
            std::clamp(mapped_ / 4 / kChunkBytes * kChunkBytes, kLeastBatch, kLargestBatch);
        rest_ = rest_end_ = static_cast<char*>(MapSpan(batch));
        if (rest_ == nullptr) return nullptr;
        rest_end_ += batch;
        mapped_ += batch;
    }
    return std::exchange(rest_, rest_ + kChunkBytes);
}

void* KeptSpans::Take(std::size_t& bytes) {
    Free** const link = larger_.BestFit(bytes);
    if (*link == nullptr) return MapSpan(bytes);
    bytes = (*link)->bytes;
    return larger_.Pop(link);
}

void KeptSpans::GiveChunk(void* chunk) {
    if (chunks_.bytes < kChunksBytes) return chunks_.Push(chunk, kChunkBytes);
    surplus_.Push(chunk, kChunkBytes);
    if (surplus_.bytes == kSurplusBytes) surplus_.GiveBack();
}

// Spans that no page takes any more go with those that it takes, now and then.
void KeptSpans::Give(void* span, std::size_t bytes) {
    if (bytes > kLargerBytes) return UnmapSpan(span, bytes);
    if (larger_.bytes + bytes > kLargerBytes) larger_.GiveBack();
    larger_.Push(span, bytes);
}

void KeptSpans::GiveBack() {
    for (List* const list : {&chunks_, &surplus_, &larger_}) list->GiveBack();
    if (rest_ != rest_end_) UnmapSpan(rest_, static_cast<std::size_t>(rest_end_ - rest_));
    *this = KeptSpans();
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

// The link to the smallest span that has room for `size` and not half as much again; a link to null when
// there is none.
KeptSpans::Free** KeptSpans::List::BestFit(std::size_t size) {
    Free** at = &first;
    Free** best = nullptr;
    std::size_t below = size + size / 2 + 1;
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
