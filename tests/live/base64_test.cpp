#include "base64.h"

#include <gtest/gtest.h>

namespace QuillLive {
namespace {

TEST(Base64, IsDecodedAsFarAsItGoes) {
    struct Case {
        const char* text;
        const char* bytes;
    };
    const Case cases[] = {
        {"", ""},           {"Zg==", "f"},    {"Zm8=", "fo"},           {"Zm9v", "foo"},
        {"Zm9vYg", "foob"}, {"w7zDvw", "üÿ"}, {"+/+/", "\xFB\xFF\xBF"}, {"Zm9v!Zm9v", "foo"},
        {"Z", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(DecodeBase64(c.text), c.bytes) << c.text;
}

}  // namespace
}  // namespace QuillLive
