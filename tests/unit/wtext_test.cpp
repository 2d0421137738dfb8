#include "platform/wtext.h"

#include <gtest/gtest.h>

namespace {

TEST(WText, Utf8RoundTripAndBadInput) {
    struct Row {
        const char* label;
        std::string bytes;
        WText text;
        bool valid;
    };
    const WCHAR pair[] = {0xD83D, 0xDE00, 0};
    const WCHAR bad[] = {'a', 0xFFFD, 'b', 0};
    const WCHAR twoBad[] = {0xFFFD, 0xFFFD, 0};
    const WCHAR threeBad[] = {0xFFFD, 0xFFFD, 0xFFFD, 0};
    const Row rows[] = {
        {"ascii", "part", TEXT("part"), true},
        {"surrogate pair", "\xF0\x9F\x98\x80", pair, true},
        {"stray byte",
         "a\xFF"
         "b",
         bad, false},
        {"overlong slash", "\xC0\xAF", twoBad, false},
        {"encoded surrogate", "\xED\xA0\x80", threeBad, false},
        {"cut short", "a\xE2\x82", WText(TEXT("a")) + twoBad, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        bool valid = !row.valid;
        EXPECT_EQ(row.text, wtext::FromUtf8(row.bytes, &valid));
        EXPECT_EQ(row.valid, valid);
        if (row.valid) {
            EXPECT_EQ(row.bytes, wtext::ToUtf8(row.text));
        }
    }
    const WCHAR lone[] = {'x', 0xDC00, 'y', 0xD800, 0};
    EXPECT_EQ("x\xEF\xBF\xBDy\xEF\xBF\xBD", wtext::ToUtf8(lone));
}

TEST(WText, CopyWholeNeverCuts) {
    WCHAR buffer[5] = {'?', '?', '?', '?', '!'};
    EXPECT_TRUE(wtext::CopyWhole(buffer, 4, TEXT("abc")));
    EXPECT_EQ(WText(TEXT("abc")), buffer);
    EXPECT_FALSE(wtext::CopyWhole(buffer, 4, TEXT("abcd")));
    EXPECT_EQ(WText(), buffer);
    EXPECT_EQ('!', buffer[4]);
    EXPECT_FALSE(wtext::CopyWhole(buffer, 0, TEXT("")));
}

TEST(WText, FormatFillsInOrder) {
    EXPECT_EQ(WText(TEXT("3 of b, 100%")),
              wtext::Format(TEXT("%d of %s, 100%"), {TEXT("3"), TEXT("b")}));
    EXPECT_EQ(WText(TEXT("%s stays")), wtext::Format(TEXT("%s stays"), {TEXT("%s")}));
    EXPECT_EQ(WText(TEXT("none: ")), wtext::Format(TEXT("none: %ld"), {}));
}

}  // namespace
