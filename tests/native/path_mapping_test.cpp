// File names of any bytes, in the form of Windows and back: nothing is lost and no two meet.
#include "platform/files/path_mapping.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "platform/win.h"

namespace {

WText ToWide(std::string_view bytes) {
    WText wide;
    platform::AppendNameFromBytes(wide, bytes);
    return wide;
}

std::string ToBytes(WTextView wide) {
    std::string bytes;
    platform::AppendNameToBytes(bytes, wide);
    return bytes;
}

TEST(PathMapping, FixedForms) {
    struct Row {
        const char* label;
        std::string bytes;
        WText wide;
    };
    const Row rows[] = {
        {"plain", "bolt.hpa", TEXT("bolt.hpa")},
        {"umlaut",
         "Gr\xC3\xB6\xC3\x9F"
         "e",
         TEXT("Gr\u00F6\u00DFe")},
        {"outside the first plane", "\xF0\x9F\x93\x90", TEXT("\U0001F4D0")},
        {"forbidden by Windows", "a:b*?\"<>|\\c",
         TEXT("a\uF03Ab\uF02A\uF03F\uF022\uF03C\uF03E\uF07C\uF05Cc")},
        {"cut short", "a\xC3", TEXT("a\uF0C3")},
        {"cut short in the middle", "\xE5\xB0z", TEXT("\uF0E5\uF0B0z")},
        {"too long a form", "\xC0\xAF", TEXT("\uF0C0\uF0AF")},
        {"a surrogate in UTF-8", "\xED\xA0\x80", TEXT("\uF0ED\uF0A0\uF080")},
        {"beyond Unicode", "\xF4\x90\x80\x80", TEXT("\uF0F4\uF090\uF080\uF080")},
        {"the mapped range itself", "\xEF\x80\xBA", TEXT("\uF0EF\uF080\uF0BA")},
        {"before and behind the range", "\xEF\x80\x80\xEF\x84\x80", TEXT("\uF000\uF100")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(row.wide, ToWide(row.bytes));
        EXPECT_EQ(row.bytes, ToBytes(row.wide));
    }
}

// Names from bytes that are likely to meet: leads, continuations, forbidden characters, and the
// bytes of the mapped range itself.
TEST(PathMapping, RandomNamesNeverMeet) {
    const std::string alphabet =
        "a:*\\?\x80\xBA\xBF\xC3\xE5\xED\xA0\xEF\x80\x81\x82\x83\xF0\x9F\xF4\x90\xFF";
    std::mt19937 random(20);
    std::map<WText, std::string> known;
    for (int i = 0; i < 100000; ++i) {
        std::string name;
        const std::size_t length = 1 + random() % 6;
        while (name.size() < length)
            name += alphabet[random() % alphabet.size()];
        const auto [place, isNew] = known.emplace(ToWide(name), name);
        ASSERT_EQ(name, place->second);
        if (isNew) {
            ASSERT_EQ(name, ToBytes(place->first));
        }
    }
    EXPECT_LT(10000u, known.size());
}

TEST(PathMapping, Paths) {
    struct Row {
        std::string bytes;
        LPCWSTR wide;
    };
    const Row rows[] = {
        {"/", TEXT("Z:\\")},          {"/a/b", TEXT("Z:\\a\\b")},
        {"a/b/", TEXT("a\\b\\")},     {"/a:b/c\\d", TEXT("Z:\\a\uF03Ab\\c\uF05Cd")},
        {"Z:/x", TEXT("Z\uF03A\\x")}, {"//a", TEXT("Z:\\\\a")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(row.wide, platform::PathFromBytes(row.bytes));
        std::string bytes = "garbage";
        EXPECT_TRUE(platform::PathToBytes(row.wide, bytes));
        EXPECT_EQ(row.bytes, bytes);
    }
}

TEST(PathMapping, PathsThatThereAreNot) {
    struct Row {
        WText wide;
        DWORD error;
    };
    const Row rows[] = {{TEXT("C:\\x"), ERROR_PATH_NOT_FOUND},
                        {TEXT("\\\\server\\share"), ERROR_PATH_NOT_FOUND},
                        {WText(TEXT("a\0b"), 3), ERROR_INVALID_NAME}};
    for (const Row& row : rows) {
        std::string bytes = "garbage";
        SetLastError(0);
        EXPECT_FALSE(platform::PathToBytes(row.wide, bytes));
        EXPECT_EQ(row.error, GetLastError());
        EXPECT_EQ("", bytes);
    }
}

}  // namespace
