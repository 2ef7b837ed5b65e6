#include <zot/messages.h>

#include <gtest/gtest.h>

#include "api/loaded_library.h"

// The program's own counter comes before the library's, so that it can still be read when the library is
// gone.
std::atomic<long> ZOTMessagesInit::m_cnt{0};

namespace {

TEST(Load, RegistrationsEndWithTheLibrary) {
    {
        const LoadedLibrary library(QUILL_LIBRARY);
        EXPECT_EQ(ZOTMessagesInit::m_cnt, 3);
    }
    EXPECT_EQ(ZOTMessagesInit::m_cnt, 0);
}

}  // namespace
