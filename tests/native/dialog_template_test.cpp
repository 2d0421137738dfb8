// Dialog templates read from their bytes: what a sound one holds.
#include "platform/windows/dialog_template.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

// The template of a dialog with a menu number, a font, an edit field by its number with two bytes
// of data, and a control by its name whose text is a number.
std::vector<WORD> SoundTemplate() {
    std::vector<WORD> words = {1, 0xFFFF, 77, 0, 0, 0, 0x00C0, 0x80C8, 2, 1, 2, 200, 100};
    const auto text = [&words](LPCWSTR units) {
        do {
            words.push_back(static_cast<WORD>(*units));
        } while (*units++ != 0);
    };
    const auto more = [&words](std::vector<WORD> added) {
        words.insert(words.end(), added.begin(), added.end());
    };
    const auto align = [&words] {
        if (words.size() % 2 != 0) words.push_back(0xAAAA);
    };
    more({0xFFFF, 5, 0});
    text(TEXT("Find"));
    more({8, 400, 0x100});
    text(TEXT("Font"));
    align();
    more({5, 0, 0, 0, 0x0080, 0x5001, 3, 4, 30, 14, 10, 0, 0xFFFF, 0x81});
    text(TEXT("bolt"));
    more({2, 0xBBBB});
    align();
    more({0, 0, 0, 0, 0, 0x5000, 0xFFFF, 6, 7, 8, 11, 0});
    text(TEXT("SysListView32"));
    more({0xFFFF, 9, 0});
    return words;
}

std::optional<platform::DialogTemplate> Read(const std::vector<WORD>& words, std::size_t length) {
    // A block of its own, so that a sanitizer sees the byte behind it.
    const auto block = std::make_unique<std::byte[]>(length);
    std::memcpy(block.get(), words.data(), length);
    return platform::ReadDialogTemplate({block.get(), length});
}

TEST(DialogTemplates, Sound) {
    const auto words = SoundTemplate();
    const auto read = Read(words, 2 * words.size());
    ASSERT_TRUE(read);
    EXPECT_EQ(77u, read->helpId);
    EXPECT_EQ(0x80C800C0u, read->style);
    EXPECT_EQ((std::vector<int>{1, 2, 200, 100}),
              (std::vector<int>{read->x, read->y, read->width, read->height}));
    EXPECT_FALSE(read->hasClass);
    EXPECT_EQ(TEXT("Find"), read->title);
    ASSERT_EQ(2u, read->items.size());
    const auto& first = read->items[0];
    EXPECT_EQ(5u, first.helpId);
    EXPECT_EQ(0x50010080u, first.style);
    EXPECT_EQ(10u, first.id);
    EXPECT_EQ(TEXT("Edit"), first.className);
    EXPECT_EQ(TEXT("bolt"), first.text);
    const auto& second = read->items[1];
    EXPECT_EQ(-1, second.x);
    EXPECT_EQ(11u, second.id);
    EXPECT_EQ(TEXT("SysListView32"), second.className);
    EXPECT_EQ(TEXT(""), second.text);
}

}  // namespace
