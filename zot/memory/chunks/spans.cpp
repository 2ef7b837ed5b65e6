#include "spans.h"

#include <algorithm>
#include <new>

namespace ZOTMem {

void* KeptSpans::TakeChunk() {
    if (chunks_ != nullptr) {
        Free* const chunk = chunks_;
        chunks_ = chunk->next;
        bytes_ -= kChunkBytes;
        return chunk;
    }
    if (void* const kept = TakeBestFit(kChunkBytes)) return kept;
    void* const batch = MapSpan(batch_);
    if (batch == nullptr) return MapSpan(kChunkBytes);
    Keep(static_cast<char*>(batch) + kChunkBytes, batch_ - kChunkBytes);
    batch_ = std::min(2 * batch_, kLargestBatch);
    return batch;
}

void* KeptSpans::Take(std::size_t bytes) {
    if (bytes == kChunkBytes) return TakeChunk();
    if (void* const kept = TakeBestFit(bytes)) return kept;
    return MapSpan(bytes);
}

void KeptSpans::Give(void* span, std::size_t bytes) {
    if (bytes > kKeepBytes) return UnmapSpan(span, bytes);
    if (bytes_ + bytes > kKeepBytes) GiveBack();
    Keep(span, bytes);
}

void KeptSpans::Keep(void* span, std::size_t bytes) {
    Free*& list = bytes == kChunkBytes ? chunks_ : larger_;
    list = ::new (span) Free{list, bytes};
    bytes_ += bytes;
}

// The link to the smallest span of more than one chunk that has room for `bytes`; a link to null when none
// has.
KeptSpans::Free** KeptSpans::BestFit(std::size_t bytes) {
    Free** at = &larger_;
    Free** best = nullptr;
    for (; *at != nullptr; at = &(*at)->next) {
        const std::size_t size = (*at)->bytes;
        if (size >= bytes && (best == nullptr || size < (*best)->bytes)) best = at;
    }
    return best == nullptr ? at : best;
}

// What is left of a span stays kept.
void* KeptSpans::TakeBestFit(std::size_t bytes) {
    Free** const link = BestFit(bytes);
    Free* const span = *link;
    if (span == nullptr) return nullptr;
    *link = span->next;
    bytes_ -= span->bytes;
    if (span->bytes != bytes) Keep(reinterpret_cast<char*>(span) + bytes, span->bytes - bytes);
    return span;
}

// Neighbours go back together: what was made together was mostly freed in the order of its addresses.
void KeptSpans::GiveBack() {
    char* first = nullptr;
    char* last = nullptr;
    for (Free* list : {chunks_, larger_}) {
        while (list != nullptr) {
            char* const at = reinterpret_cast<char*>(list);
            const std::size_t bytes = list->bytes;
            list = list->next;
            if (at + bytes == first) {
                first = at;
            } else if (at == last) {
                last = at + bytes;
            } else {
                if (first != nullptr) UnmapSpan(first, static_cast<std::size_t>(last - first));
                first = at;
                last = at + bytes;
            }
        }
    }
    if (first != nullptr) UnmapSpan(first, static_cast<std::size_t>(last - first));
    *this = KeptSpans();
}

}  // namespace ZOTMem
