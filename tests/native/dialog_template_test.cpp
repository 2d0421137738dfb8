// Dialog templates read from their bytes: all of it is needed.
#include "platform/windows/dialog_template.h"

#include <gtest/gtest.h>

namespace {

// A dialog without a font: an edit field with four bytes of data, and a control with a class's
// name.
const std::vector<WORD> kTemplate = {
    1,  0xFFFF, 77,     0,    0,   0, 0x0080, 0x80C8, 2,      1,      2,      200, 100, 0xFFFF,
    5,  0,      'F',    0,    5,   0, 0,      0,      0x0080, 0x5001, 3,      4,   30,  14,
    10, 0,      0xFFFF, 0x81, 'b', 0, 4,      0xBBBB, 0xBBBB, 0xAAAA, 0,      0,   0,   0,
    0,  0x5000, 5,      6,    7,   8, 11,     0,      'S',    0,      0xFFFF, 9,   0};

TEST(DialogTemplates, NothingMayBeMissing) {
    const auto read = [](std::size_t length) {
        return platform::ReadDialogTemplate(std::as_bytes(std::span(kTemplate)).first(length));
    };
    const std::size_t whole = 2 * kTemplate.size();
    ASSERT_TRUE(read(whole));
    EXPECT_EQ(77u, read(whole)->helpId);
    ASSERT_EQ(2u, read(whole)->items.size());
    EXPECT_EQ(TEXT("Edit"), read(whole)->items[0].className);
    EXPECT_EQ(TEXT("b"), read(whole)->items[0].text);
    EXPECT_EQ(11u, read(whole)->items[1].id);
    for (std::size_t length = 0; length < whole; ++length)
        EXPECT_FALSE(read(length)) << length;
}

}  // namespace
