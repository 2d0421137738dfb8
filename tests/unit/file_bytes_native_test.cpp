// Locks of other processes, and places that are no plain files.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "companions/md/document/document_properties.h"
#include "companions/md/document/file_bytes.h"
#include "host/srsample/compound_writer.h"
#include "tests/native/file_holder.h"
#include "tests/unit/document_support.h"

namespace {

using mddoc::FileBytes;

TEST(FileBytes, LocksOfOtherProcesses) {
    struct Row {
        const char* label;
        std::function<bool(int)> hold;
        HRESULT open;
        HRESULT first;   // reading bytes 0 to 99
        HRESULT second;  // reading bytes 100 to 199
    };
    constexpr HRESULT kLocked = STG_E_LOCKVIOLATION;
    const Row rows[] = {
        {"nothing", [](int) { return true; }, S_OK, S_OK, S_OK},
        {"exclusive flock", [](int f) { return flock(f, LOCK_EX) == 0; }, STG_E_SHAREVIOLATION,
         S_OK, S_OK},
        {"shared flock", [](int f) { return flock(f, LOCK_SH) == 0; }, S_OK, S_OK, S_OK},
        {"write lock", [](int f) { return Lock(f, F_WRLCK, 0, 0); }, S_OK, kLocked, kLocked},
        {"read lock", [](int f) { return Lock(f, F_RDLCK, 0, 0); }, S_OK, S_OK, S_OK},
        {"first byte", [](int f) { return Lock(f, F_WRLCK, 0, 1); }, S_OK, kLocked, S_OK},
        {"byte 100", [](int f) { return Lock(f, F_WRLCK, 100, 1); }, S_OK, S_OK, kLocked},
        {"behind the end", [](int f) { return Lock(f, F_WRLCK, 5000, 0); }, S_OK, S_OK, S_OK},
    };
    const TempFolder folder;
    const std::string path = folder.Write("locked", FileContents(1000, 1));
    char buffer[100];
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        const Holder holder(path, row.hold);
        ASSERT_TRUE(holder.IsHeld());
        FileBytes file;
        ASSERT_EQ(row.open, file.Open(path));
        if (row.open != S_OK) continue;
        EXPECT_EQ(row.first, file.ReadAt(0, buffer, sizeof buffer));
        EXPECT_EQ(row.second, file.ReadAt(100, buffer, sizeof buffer));
        // Nothing of ours may be in another's way.
        const Holder other(path, [](int f) { return flock(f, LOCK_EX | LOCK_NB) == 0; });
        EXPECT_EQ(std::string(row.label) != "shared flock", other.IsHeld());
    }
}

TEST(FileBytes, LockedDocumentIsNoForeignFile) {
    const TempFolder folder;
    const std::string path = folder.Write("document", CompoundWriter().Build());
    const Holder holder(path, [](int f) { return Lock(f, F_WRLCK, 0, 0); });
    ASSERT_TRUE(holder.IsHeld());
    mddoc::DocumentProperties document;
    EXPECT_EQ(STG_E_LOCKVIOLATION, document.Open(path));
    EXPECT_EQ(STG_E_LOCKVIOLATION, document.SetStatus(mddoc::eSetKind::Summary));
}

TEST(FileBytes, PlacesThatAreNoPlainFiles) {
    const TempFolder folder;
    const std::string pipeName = (folder.Path() / "pipe").native();
    ASSERT_EQ(0, mkfifo(pipeName.c_str(), 0600));
    const std::string plain = folder.Write("plain", {1, 2, 3});
    const std::string longName = folder.Path().native() + "/" + std::string(300, 'x');
    FileBytes file;
    EXPECT_EQ(STG_E_ACCESSDENIED, file.Open(pipeName));
    std::uint64_t bytes = 0;
    EXPECT_FALSE(FileSize(AbsoluteWidePath(pipeName), bytes));
    EXPECT_EQ(STG_E_ACCESSDENIED, file.Open("/dev/null"));
    EXPECT_EQ(STG_E_PATHNOTFOUND, file.Open(plain + "/below"));
    EXPECT_EQ(STG_E_PATHNOTFOUND, file.Open(longName));
    ASSERT_EQ(S_OK, file.Open(plain));
    std::filesystem::resize_file(plain, 1);
    char buffer[3];
    EXPECT_EQ(STG_E_READFAULT, file.ReadAt(0, buffer, 3));
    EXPECT_EQ(S_OK, file.ReadAt(0, buffer, 1));
    EXPECT_EQ(STG_E_READFAULT, file.ReadAt(~std::uint64_t{0}, buffer, 1));
}

TEST(FileBytes, DescriptorsAndPermission) {
    const TempFolder folder;
    const std::string path = folder.Write("closed", {1});
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
    std::filesystem::permissions(path, std::filesystem::perms::none);
    const pid_t child = fork();
    if (child == 0) {
        FileBytes file;
        struct rlimit none = {};
        struct rlimit usual = {};
        getrlimit(RLIMIT_NOFILE, &usual);
        none.rlim_max = usual.rlim_max;
        setrlimit(RLIMIT_NOFILE, &none);
        const bool full = file.Open(path) == STG_E_TOOMANYOPENFILES;
        setrlimit(RLIMIT_NOFILE, &usual);
        // Nothing is closed to root.
        if (geteuid() == 0 && seteuid(65534) != 0) _exit(2);
        _exit(full && file.Open(path) == STG_E_ACCESSDENIED ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(0, status);
}

}  // namespace
