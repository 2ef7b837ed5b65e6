// What the pool holds on to, where it is its own (zot/memory/chunks).

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <thread>
#include <vector>

#include <unistd.h>
#include <zot/memory.h>

#include "call_memory.h"

namespace {

constexpr std::size_t kMegabyte = 1'000'000;
constexpr std::size_t kMebibyte = 1 << 20;
constexpr std::size_t kKept = 33 * kMegabyte;  // by a thread, at most
constexpr std::size_t kSlack = 8 * kMegabyte;  // the system counts pages late

// Of the process, in bytes.
struct Memory {
    Memory() {
        std::ifstream("/proc/self/statm") >> mapped >> resident;
        mapped *= static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        resident *= static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    }
    std::size_t mapped = 0;
    std::size_t resident = 0;
};

char* Filled(std::size_t size) {
    auto* const memory = static_cast<char*>(ZOT::PoolAllocate(size));
    EXPECT_NE(memory, nullptr);
    std::memset(memory, 1, size);
    return memory;
}

char* Grown(char* memory, std::size_t from, std::size_t size) {
    memory = static_cast<char*>(ZOT::PoolReallocate(memory, from, size));
    EXPECT_NE(memory, nullptr);
    std::memset(memory + from, 1, size - from);
    return memory;
}

// On a thread that keeps nothing yet.
template <class Work>
void OnNewThread(Work work) {
    std::thread(work).join();
}

TEST(ChunkPool, KeepsLargeMemoryUntilTheCallEnds) {
    OnNewThread([] {
        const Memory before;
        {
            const ZOTMem::CallMemory call;
            char* const first = Filled(50 * kMegabyte);
            ZOT::PoolFree(first);
            char* const second = Filled(50 * kMegabyte);
            EXPECT_EQ(first, second);
            ZOT::PoolFree(second);
        }
        EXPECT_LE(Memory().resident, before.resident + kKept);
    });
}

TEST(ChunkPool, HoldsNoIdleMemoryOnTopOfWhatGrows) {
    OnNewThread([] {
        const ZOTMem::CallMemory call;
        const Memory before;
        std::vector<char*> pieces;
        for (int i = 0; i < 20; ++i) pieces.push_back(Filled(9 * kMegabyte));
        for (char* const piece : pieces) ZOT::PoolFree(piece);
        std::size_t size = kMegabyte;
        char* memory = Filled(size);
        for (; size < 160 * kMegabyte; size += size / 4) memory = Grown(memory, size, size + size / 4);
        EXPECT_LE(Memory().resident, before.resident + size + kKept + kSlack);
        ZOT::PoolFree(memory);
    });
}

// What grew into the free memory behind it may stand in two mappings, which cannot be moved as one.
TEST(ChunkPool, LosesNoAddressesWhereMemoryCannotBeMoved) {
    OnNewThread([] {
        struct Piece {
            char* bytes;
            std::size_t span;  // whole huge pages
        };
        const Memory before;
        for (int round = 0; round < 20; ++round) {
            const ZOTMem::CallMemory call;
            std::vector<Piece> pieces;
            for (std::size_t i = 0; i < 6; ++i) {
                pieces.push_back({Filled(9 * kMebibyte), 10 * kMebibyte});
                if (i % 2 != 0)
                    pieces.back() = {Grown(pieces.back().bytes, 9 * kMebibyte, 19 * kMebibyte),
                                     20 * kMebibyte};
            }
            // The one with another behind it, which is given back.
            const auto isFollowed = [&pieces](const Piece& piece) {
                return std::any_of(pieces.begin(), pieces.end(), [&piece](const Piece& other) {
                    return other.bytes == piece.bytes + piece.span;
                });
            };
            const auto first = std::find_if(pieces.begin(), pieces.end(), isFollowed);
            if (first == pieces.end()) continue;
            const Piece piece = *first;
            for (const Piece& other : pieces) {
                if (other.bytes != piece.bytes) ZOT::PoolFree(other.bytes);
            }
            char* grown = Grown(piece.bytes, piece.span - kMebibyte, piece.span + 5 * kMebibyte);
            EXPECT_EQ(grown, piece.bytes);
            grown = Grown(grown, piece.span + 5 * kMebibyte, 300 * kMebibyte);
            ZOT::PoolFree(grown);
        }
        EXPECT_LE(Memory().mapped, before.mapped + kKept + kSlack);
    });
}

TEST(ChunkPool, GivesBackWhatAThreadOnlyFreed) {
    const Memory before;
    for (int thread = 0; thread < 10; ++thread) {
        std::vector<char*> pieces;
        for (int i = 0; i < 100; ++i) pieces.push_back(Filled(kMegabyte / 10));
        for (int i = 0; i < 5000; ++i) pieces.push_back(Filled(2000));
        OnNewThread([&pieces] {
            for (char* const piece : pieces) ZOT::PoolFree(piece);
        });
    }
    EXPECT_LE(Memory().resident, before.resident + kKept + kSlack);
}

}  // namespace
