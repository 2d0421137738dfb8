// Files that another opener keeps to itself or has locked in part, and long paths.
#include "companions/md/document/file_bytes.h"

#include <gtest/gtest.h>

#include "platform/host/hold.h"
#include "tests/unit/document_support.h"

namespace {

using mddoc::FileBytes;

HANDLE OpenSharing(const NativePath& path, DWORD sharing) {
    return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, sharing, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

TEST(FileBytes, OtherOpeners) {
    const TempFolder folder;
    const NativePath path = folder.Write("shared", FileContents(1000, 1));
    FileBytes file;
    char buffer[100];
    {
        const HeldFile alone(path);
        ASSERT_TRUE(alone.IsHeld());
        EXPECT_FALSE(HeldFile(path).IsHeld());
        EXPECT_EQ(STG_E_SHAREVIOLATION, file.Open(path));
    }
    const HANDLE other = OpenSharing(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_NE(INVALID_HANDLE_VALUE, other);
    ASSERT_EQ(S_OK, file.Open(path));
    OVERLAPPED place = {};
    place.Offset = 100;
    ASSERT_TRUE(LockFileEx(other, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &place));
    EXPECT_EQ(S_OK, file.ReadAt(0, buffer, sizeof buffer));
    // Wine keeps a list of such locks and doesn't enforce them.
    const HANDLE probe = OpenSharing(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
    DWORD got = 0;
    place.Offset = 100;
    const bool isEnforced = !ReadFile(probe, buffer, 1, &got, &place);
    CloseHandle(probe);
    EXPECT_EQ(isEnforced ? STG_E_LOCKVIOLATION : S_OK, file.ReadAt(100, buffer, sizeof buffer));
    CloseHandle(other);
    EXPECT_EQ(S_OK, file.ReadAt(100, buffer, sizeof buffer));
    EXPECT_EQ(STG_E_READFAULT, file.ReadAt(1000, buffer, 1));
}

TEST(FileBytes, PathsOfAnyLength) {
    const TempFolder folder;
    const NativePath prefix = TEXT("\\\\?\\");
    for (const std::size_t length : {240u, 247u, 248u, 259u, 260u, 400u}) {
        SCOPED_TRACE(length);
        NativePath place = folder.Path().native();
        while (length - place.size() > 150) {
            place += TEXT("\\") + NativePath(100, TEXT('d'));
            CreateDirectoryW((prefix + place).c_str(), nullptr);
        }
        place += TEXT("\\") + NativePath(length - place.size() - 1, TEXT('f'));
        const HANDLE made = CreateFileW((prefix + place).c_str(), GENERIC_WRITE, 0, nullptr,
                                        CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, made);
        CloseHandle(made);
        FileBytes file;
        ASSERT_EQ(length, place.size());
        EXPECT_EQ(S_OK, file.Open(place));
        EXPECT_EQ(S_OK, file.Open(prefix + place));
        file.Close();
        EXPECT_TRUE(DeleteFileW((prefix + place).c_str()));
    }
    const NativePath longFolder =
        prefix + folder.Path().native() + TEXT("\\") + NativePath(100, TEXT('d'));
    for (NativePath place = longFolder + TEXT("\\") + NativePath(100, TEXT('d'));
         place.size() >= longFolder.size(); place.resize(place.size() - 101)) {
        RemoveDirectoryW(place.c_str());
    }
}

}  // namespace
