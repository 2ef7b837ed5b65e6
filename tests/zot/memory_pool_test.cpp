#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

#include <zot/memory.h>

#include "call_memory.h"

namespace {

using ZOTMem::MemoryPool;

struct Block {
    unsigned char* bytes;
    unsigned int size;
    unsigned char fill;
};

Block NewBlock(unsigned int size, unsigned char fill) {
    auto* const bytes = static_cast<unsigned char*>(MemoryPool::New(size));
    EXPECT_NE(bytes, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % alignof(std::max_align_t), 0u);
    std::memset(bytes, fill, size);
    return {bytes, size, fill};
}

void DeleteBlock(const Block& block) {
    for (unsigned int i = 0; i < block.size; ++i) ASSERT_EQ(block.bytes[i], block.fill);
    MemoryPool::Delete(block.bytes);
}

// News and deletes in random order; `blocks` is what is alive.
void Churn(std::vector<Block>& blocks, unsigned int seed, int rounds) {
    std::minstd_rand random(seed + 1);
    for (int i = 0; i < rounds; ++i) {
        if (blocks.empty() || random() % 100 < 52) {
            const auto size =
                static_cast<unsigned int>(random() % 50 == 0 ? 1 + random() % 100000 : 1 + random() % 300);
            blocks.push_back(NewBlock(size, static_cast<unsigned char>(random())));
        } else {
            std::swap(blocks[random() % blocks.size()], blocks.back());
            DeleteBlock(blocks.back());
            blocks.pop_back();
        }
    }
}

TEST(MemoryPool, GivesAlignedBlocksThatDoNotOverlap) {
    std::vector<Block> blocks;
    Churn(blocks, 1, 50000);
    for (const Block& block : blocks) DeleteBlock(block);
    MemoryPool::Delete(nullptr);
}

TEST(MemoryPool, HasNothingForZeroBytes) {
    EXPECT_EQ(MemoryPool::New(0), nullptr);
}

// From a few bytes to more than a thread keeps, and down again; on a thread that keeps nothing yet and on one
// that does.
TEST(MemoryPool, ReallocatedMemoryKeepsItsBytes) {
    for (int round = 0; round < 2; ++round) {
        std::size_t size = 1;
        auto* bytes = static_cast<unsigned char*>(ZOT::PoolReallocate(nullptr, 0, size));
        bytes[0] = 0;
        while (size < 40'000'000) {
            const std::size_t larger = size + size / 2 + 7;
            bytes = static_cast<unsigned char*>(ZOT::PoolReallocate(bytes, size, larger));
            ASSERT_NE(bytes, nullptr);
            for (std::size_t i = size; i < larger; ++i) bytes[i] = static_cast<unsigned char>(i % 251);
            size = larger;
        }
        for (; size > 10; size /= 10) {
            for (std::size_t i = 0; i < size; i += 97) ASSERT_EQ(bytes[i], i % 251) << size;
            bytes = static_cast<unsigned char*>(ZOT::PoolReallocate(bytes, size / 10, size / 10));
        }
        ZOT::PoolFree(bytes);
    }
}

// Large memory of a call is cut up, grown in place and taken again, whatever it was before.
TEST(MemoryPool, KeepsLargeMemoryApartInACall) {
    constexpr std::size_t kStep = 61'440;  // at least one byte in every chunk is looked at
    struct Large {
        unsigned char* bytes;
        std::size_t size;
        unsigned char fill;

        void Fill(std::size_t from) {
            for (std::size_t i = from; i < size; i += kStep) bytes[i] = fill;
            bytes[size - 1] = fill;
        }
        void Check() const {
            for (std::size_t i = 0; i < size; i += kStep) ASSERT_EQ(bytes[i], fill);
            ASSERT_EQ(bytes[size - 1], fill);
        }
    };
    std::minstd_rand random(5);
    std::vector<Large> all;
    for (int call = 0; call < 4; ++call) {
        const ZOTMem::CallMemory outer;
        const ZOTMem::CallMemory inner;
        std::vector<Block> small;
        for (int i = 0; i < 300; ++i) {
            const std::size_t size = std::size_t{20'000} << random() % 11;
            const auto fill = static_cast<unsigned char>(random());
            const std::size_t at = all.empty() ? 0 : random() % all.size();
            if (random() % 3 == 0 && all.size() < 12) {
                all.push_back({static_cast<unsigned char*>(ZOT::PoolAllocate(size)), size, fill});
                ASSERT_NE(all.back().bytes, nullptr);
                all.back().Fill(0);
            } else if (!all.empty() && random() % 2 == 0) {
                Large& grown = all[at];
                const std::size_t used = grown.size / kStep * kStep;
                grown.size = used + size;
                grown.bytes = static_cast<unsigned char*>(ZOT::PoolReallocate(grown.bytes, used, grown.size));
                ASSERT_NE(grown.bytes, nullptr);
                grown.Fill(used);
            } else if (!all.empty()) {
                all[at].Check();
                ZOT::PoolFree(all[at].bytes);
                all.erase(all.begin() + static_cast<std::ptrdiff_t>(at));
            }
            Churn(small, static_cast<unsigned int>(i), 200);
        }
        for (const Large& large : all) large.Check();
        for (const Block& block : small) DeleteBlock(block);
    }
    for (const Large& large : all) ZOT::PoolFree(large.bytes);
}

TEST(MemoryPoolThread, BlocksMayBeFreedOnAnotherThread) {
    std::vector<Block> blocks;
    for (unsigned int round = 0; round < 6; ++round) {
        std::thread([&] { Churn(blocks, round, 20000); }).join();
        std::vector<Block> others;
        std::thread other([&] { Churn(others, 100 + round, 20000); });
        Churn(blocks, 200 + round, 20000);
        other.join();
        blocks.insert(blocks.end(), others.begin(), others.end());
    }
    for (const Block& block : blocks) DeleteBlock(block);
}

// Enough to give back more than a thread keeps, over and over.
TEST(MemoryPoolThread, SurvivesTidesOfOneSize) {
    for (int tide = 0; tide < 3; ++tide) {
        std::vector<Block> blocks;
        for (int i = 0; i < 60000; ++i) blocks.push_back(NewBlock(48, static_cast<unsigned char>(i)));
        std::thread([&] {
            for (std::size_t i = 0; i < blocks.size(); i += 2) DeleteBlock(blocks[i]);
        }).join();
        for (std::size_t i = 1; i < blocks.size(); i += 2) DeleteBlock(blocks[i]);
    }
}

struct FreedAtThreadEnd {
    ~FreedAtThreadEnd() { MemoryPool::Delete(memory); }
    void* memory = nullptr;
};

TEST(MemoryPoolThread, ServesDestructorsOfAThreadThatEnds) {
    std::thread([] {
        static thread_local FreedAtThreadEnd late;
        late.memory = MemoryPool::New(40);
        MemoryPool::Delete(MemoryPool::New(40));
    }).join();
}

}  // namespace
