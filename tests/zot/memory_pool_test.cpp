#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

#include <zot/memory.h>

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
