// Dropped files, the memory they travel in, and the look-up of running objects.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/contract/contract.h"

namespace {

class Owner : public IUnknown {
public:
    virtual ~Owner() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppv) override {
        return *ppv = nullptr, E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }

    ULONG references = 1;
};

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
    EXPECT_EQ(2u, DragQueryFileW(drop, 0xFFFFFFFFu, nullptr, 0));
    const struct {
        const char* label;
        UINT index;
        UINT cch;
        UINT result;
        const WCHAR* text;
    } kRows[] = {{"second", 1, 20, 13, TEXT("Z:\\second.hpa")},
                 {"exact", 0, 9, 8, TEXT("Z:\\a.hpa")},
                 {"one short", 0, 8, 7, TEXT("Z:\\a.hp")},
                 {"no room", 0, 0, 8, nullptr}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        GuardedBuffer buffer(row.cch);
        EXPECT_EQ(row.result, DragQueryFileW(drop, row.index, buffer.data(), row.cch));
        if (row.text != nullptr) {
            EXPECT_EQ(row.text, buffer.Text());
        }
        EXPECT_TRUE(buffer.IsGuardWhole());
    }
    GuardedBuffer untouched(20);
    EXPECT_EQ(0u, DragQueryFileW(drop, 2, untouched.data(), 20));
    EXPECT_TRUE(untouched.IsUntouched()) << "behind the last one";
    EXPECT_EQ(13u, DragQueryFileW(drop, 1, nullptr, 0)) << "the length alone";
    STGMEDIUM medium{};
    medium.tymed = TYMED_HGLOBAL;
    medium.hGlobal = drop;
    ReleaseStgMedium(&medium);
}

TEST(DroppedFiles, TheOwnerOfAMediumFreesIt) {
    Owner owner;
    char memory[4] = "abc";
    STGMEDIUM medium{};
    medium.tymed = TYMED_HGLOBAL;
    medium.hGlobal = memory;
    medium.pUnkForRelease = &owner;
    ReleaseStgMedium(&medium);
    EXPECT_EQ(0u, owner.references);
    EXPECT_STREQ("abc", memory);
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
