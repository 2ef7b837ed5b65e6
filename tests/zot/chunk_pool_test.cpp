// What the pool holds on to, where it is its own (zot/memory/chunks).

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include <unistd.h>
#include <zot/memory.h>

#include "call_memory.h"

namespace {

std::size_t ResidentBytes() {
    std::size_t total = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

TEST(ChunkPool, GivesBackWhatACallKept) {
    constexpr std::size_t kLarge = 50'000'000;
    const std::size_t before = ResidentBytes();
    {
        const ZOTMem::CallMemory call;
        void* const memory = ZOT::PoolAllocate(kLarge);
        std::memset(memory, 1, kLarge);
        ZOT::PoolFree(memory);
        EXPECT_GE(ResidentBytes(), before + kLarge - 1'000'000);
    }
    EXPECT_LE(ResidentBytes(), before + 33'000'000);
}

}  // namespace
