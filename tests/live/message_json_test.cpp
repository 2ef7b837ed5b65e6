#include "message_json.h"

#include <gtest/gtest.h>

namespace QuillLive {
namespace {

TEST(MessageJson, SurrogatesThatStandAloneAreReplaced) {
    struct Case {
        const char* json;
        const char* text;  // UTF-8
    };
    const Case cases[] = {
        {R"("a\ud800b")", "a\uFFFDb"},
        {R"("\udc00\ud800")", "\uFFFD\uFFFD"},
        {R"("\ud83c\udf0a\ud83c")", "\U0001F30A\uFFFD"},
        {R"("\ud800\ud83c\udf0a")", "\uFFFD\U0001F30A"},
        {R"("\\ud800 \ud800")", "\\ud800 \uFFFD"},
        {R"("\ud800\n\ud800A")", "\uFFFD\n\uFFFDA"},
    };
    for (const Case& c : cases) EXPECT_EQ(ParseMessage(c.json), Json(c.text)) << c.json;
}

TEST(MessageJson, WhatIsNoJsonIsDiscarded) {
    for (const char* const text : {"", "{", "\"\\ud8", "\"\\", "\"\xFF\""}) {
        EXPECT_TRUE(ParseMessage(text).is_discarded()) << text;
    }
}

TEST(MessageJson, MembersThatAreMissingStandForNone) {
    for (const Json& object :
         {Json(), Json(1), Json::array({1}), Json{{"other", 1}}, Json(Json::value_t::discarded)}) {
        EXPECT_TRUE(Member(object, "name").is_null());
        EXPECT_EQ(Text(object, "name"), "");
        EXPECT_FALSE(Flag(object, "name"));
    }
    EXPECT_EQ(Text(Json{{"name", 1}}, "name"), "");
    EXPECT_FALSE(Flag(Json{{"name", 1}}, "name"));
}

}  // namespace
}  // namespace QuillLive
