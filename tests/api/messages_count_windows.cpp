#include <zot/messages.h>

#include <gtest/gtest.h>

#include "api/loaded_library.h"

namespace {

TEST(Load, RegistersThreeTimes) {
    const LoadedLibrary library(QUILL_LIBRARY);
    // ZOTMessagesInit::m_cnt; it goes away together with the library.
    const auto* const count = library.Find<const std::atomic<long>*>("_ZN15ZOTMessagesInit5m_cntE");
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(*count, 3);
}

}  // namespace
