// Dropped files, the memory they travel in, and the look-up of running objects.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/contract/contract.h"

namespace {

HDROP MakeDrop(WTextView names) {
    const HGLOBAL memory = GlobalAlloc(GPTR, sizeof(DROPFILES) + names.size() * sizeof(WCHAR));
    DROPFILES head{};
    head.pFiles = sizeof head;
    head.fWide = TRUE;
    std::memcpy(memory, &head, sizeof head);
    std::memcpy(static_cast<char*>(memory) + sizeof head, names.data(),
                names.size() * sizeof(WCHAR));
    return static_cast<HDROP>(memory);
}

TEST(DroppedFiles, Names) {
    const WCHAR names[] = TEXT("Z:\\a.hpa\0Z:\\second.hpa\0");  // and the terminator of the literal
    const HDROP drop = MakeDrop({names, sizeof names / sizeof(WCHAR)});
    const struct {
        const char* label;
        UINT index;
        UINT cch;
        UINT result;
        const WCHAR* text;
    } kRows[] = {{"second", 1, 20, 13, TEXT("Z:\\second.hpa")},
                 {"exact", 0, 9, 8, TEXT("Z:\\a.hpa")},
                 {"one short", 0, 8, 7, TEXT("Z:\\a.hp")}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        GuardedBuffer buffer(row.cch);
        EXPECT_EQ(row.result, DragQueryFileW(drop, row.index, buffer.data(), row.cch));
        EXPECT_EQ(row.text, buffer.Text());
        EXPECT_TRUE(buffer.IsGuardWhole());
    }
    STGMEDIUM medium{};
    medium.tymed = TYMED_HGLOBAL;
    medium.hGlobal = drop;
    ReleaseStgMedium(&medium);
}

TEST(RunningObjects, OneThatIsNotThere) {
    CLSID id = Poison<CLSID>();
    EXPECT_EQ(CO_E_CLASSSTRING, CLSIDFromProgID(TEXT("Nobody.HasThis"), &id));
    EXPECT_EQ(IID_NULL, id);
    IUnknown* object = nullptr;
    const CLSID unknown = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    EXPECT_TRUE(FAILED(GetActiveObject(unknown, nullptr, &object)));
    EXPECT_EQ(nullptr, object);
}

}  // namespace
