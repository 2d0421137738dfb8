// The file behind the native registry: its form, damage, several processes and a full disk. Each
// case runs in child processes, since a process reads the file's place once.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include "outside/blx_registry.h"
#include "platform/processes.h"
#include "platform/wtext.h"

namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

std::string ReadFile(const fs::path& path) {
    std::ostringstream out;
    out << std::ifstream(path).rdbuf();
    return out.str();
}

void WriteFile(const fs::path& path, const std::string& text) {
    std::ofstream(path) << text;
}

// In a child: makes the key and puts a number into it. The result is that of closing.
DWORD PutNumber(const WText& path, DWORD number) {
    HKEY key = nullptr;
    DWORD error = BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, path.c_str(), &key);
    if (error == ERROR_SUCCESS) error = BLxPref_Reg::Write(key, TEXT("n"), number);
    return error == ERROR_SUCCESS ? BLxPref_Reg::CloseKey(key) : error;
}

// The number in a key, -1 when there is none.
long long GetNumber(const WText& path) {
    HKEY key = nullptr;
    if (BLxPref_Reg::OpenKey(HKEY_CURRENT_USER, path.c_str(), &key, KEY_READ) != 0) return -1;
    LONG number = 0;
    const DWORD error = BLxPref_Reg::Read(key, TEXT("n"), &number);
    BLxPref_Reg::CloseKey(key);
    return error == ERROR_SUCCESS ? number : -1;
}

class RegistryFileTest : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "registryXXXXXX").string();
        ASSERT_NE(nullptr, mkdtemp(pattern.data()));
        folder_ = pattern;
        file_ = folder_ / "registry.reg";
    }

    void TearDown() override { fs::remove_all(folder_); }

    // Starts `body` in a child that uses the test's file; its result is the child's exit status.
    pid_t Start(const std::function<int()>& body) const {
        const pid_t child = fork();
        if (child != 0) return child;
        setenv("SR_REGISTRY", file_.c_str(), 1);
        const int errors = open((folder_ / "errors").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        dup2(errors, STDERR_FILENO);
        _exit(body());
    }

    static int Wait(pid_t child) {
        int status = 0;
        EXPECT_EQ(child, waitpid(child, &status, 0));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    int Run(const std::function<int()>& body) const { return Wait(Start(body)); }

    // The files beside the registry, its lock left out.
    std::size_t CountFiles() const {
        std::size_t count = 0;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            const std::string name = entry.path().filename();
            count += name != "errors" && name != "registry.reg.lock";
        }
        return count;
    }

    fs::path folder_;
    fs::path file_;
};

TEST_F(RegistryFileTest, FixedForm) {
    file_ = folder_ / "new" / "folder" / "registry.reg";
    EXPECT_EQ(0, Run([] {
                  HKEY key = nullptr;
                  if (BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, TEXT("Software\\A \u00E4]"), &key))
                      return 1;
                  const WCHAR text[] = {'C', ':', '\\', '"', 0xE4, 0};
                  const WCHAR line[] = {'a', '\n', 0};
                  BYTE bytes[30] = {0xFF, 1};
                  const struct {
                      LPCWSTR name;
                      DWORD type;
                      const void* data;
                      DWORD cb;
                  } kValues[] = {{nullptr, REG_SZ, text, sizeof text},
                                 {TEXT("Number"), REG_DWORD, bytes, 4},
                                 {TEXT("bytes="), REG_BINARY, bytes, sizeof bytes},
                                 {TEXT("line\\"), REG_SZ, line, sizeof line},
                                 {TEXT("none"), 7, nullptr, 0}};
                  for (const auto& value : kValues) {
                      if (BLxPref_Reg::Write(key, value.name, value.type, value.data, value.cb))
                          return 2;
                  }
                  return static_cast<int>(BLxPref_Reg::CloseKey(key));
              }));
    EXPECT_EQ(
        "Windows Registry Editor Version 5.00\n"
        "\n[HKEY_CURRENT_USER]\n"
        "\n[HKEY_CURRENT_USER\\Software]\n"
        "\n[HKEY_CURRENT_USER\\Software\\A \xC3\xA4]]\n"
        "@=\"C:\\\\\\\"\xC3\xA4\"\n"
        "\"bytes=\"=hex:ff,01,00,00,00,00,00,00,00,00,00,00,00,00,00,00,00,00,00,00,\\\n"
        "  00,00,00,00,00,00,00,00,00,00\n"
        "\"line\\\\\"=hex(1):61,00,0a,00,00,00\n"
        "\"none\"=hex(7):\n"
        "\"Number\"=dword:000001ff\n",
        ReadFile(file_));
    const std::string before = ReadFile(file_);
    // What was read is written again as it was.
    EXPECT_EQ(0, Run([] { return static_cast<int>(PutNumber(TEXT("Z"), 1)); }));
    EXPECT_EQ(before + "\n[HKEY_CURRENT_USER\\Z]\n\"n\"=dword:00000001\n", ReadFile(file_));
}

TEST_F(RegistryFileTest, ReadsWhatEditorsWrite) {
    const std::string text =
        "Windows Registry Editor Version 5.00\r\n\r\n; a comment\r\n"
        "[HKEY_CURRENT_USER\\a\\B]\r\n\"N\"=dword:2A\r\n\r\n[HKEY_CURRENT_USER\\b\u00EFn]\r\n"
        "\"n\"=hex(4):07,\\\r\n  00, 00,\\\r\n  00\r\n";
    std::string wide = "\xFF\xFE";
    for (const WCHAR unit : wtext::FromUtf8(text)) {
        wide += static_cast<char>(unit & 0xFF);
        wide += static_cast<char>(unit >> 8);
    }
    for (const std::string& form : {"\xEF\xBB\xBF" + text, text, wide}) {
        WriteFile(file_, form);
        EXPECT_EQ(0, Run([] {
                      if (GetNumber(TEXT("A\\b")) != 42) return 1;
                      if (GetNumber(TEXT("b\u00EFn")) != 7) return 2;
                      return static_cast<int>(PutNumber(TEXT("c"), 1));
                  }));
        EXPECT_EQ("", ReadFile(folder_ / "errors"));
    }
    EXPECT_EQ(1u, CountFiles());
}

TEST_F(RegistryFileTest, DamageIsKeptBeside) {
    const std::string header = "Windows Registry Editor Version 5.00\n";
    const std::string good = "[HKEY_CURRENT_USER\\good]\n\"n\"=dword:00000005\n";
    struct Row {
        const char* label;
        std::string text;
        int line;
    };
    const Row rows[] = {
        {"other header", "REGEDIT\n" + good, 1},
        {"no header", good, 1},
        {"cut in a text", header + good + "\"t\"=\"abc", 4},
        {"no UTF-8", header + good + "\"t\"=\"\xFF\"\n", 4},
        {"another root", header + "[HKEY_USERS\\x]\n\"n\"=dword:1\n" + good, 2},
        {"deletion", header + "[-HKEY_CURRENT_USER\\x]\n" + good, 2},
        {"long name", header + "[HKEY_CURRENT_USER\\" + std::string(256, 'x') + "]\n" + good, 2},
        {"NUL bytes", header + std::string(100, '\0') + "\n" + good, 2},
        {"empty file", "", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        TearDown();
        SetUp();
        WriteFile(file_, row.text);
        const bool damaged = row.line > 0;
        const bool hasGood = !row.text.empty();
        for (int n = 1; n <= 2; ++n) {
            WriteFile(file_, row.text);
            EXPECT_EQ(0, Run([&] {
                          if (GetNumber(TEXT("good")) != (hasGood ? 5 : -1)) return 1;
                          return static_cast<int>(PutNumber(TEXT("new"), 6));
                      }));
            EXPECT_EQ(0, Run([&] {
                          if (GetNumber(TEXT("new")) != 6) return 1;
                          return GetNumber(TEXT("good")) == (hasGood ? 5 : -1) ? 0 : 2;
                      }));
            const fs::path copy = file_.string() + ".damaged-" + std::to_string(n);
            EXPECT_EQ(damaged, fs::exists(copy));
            if (damaged) {
                EXPECT_EQ(row.text, ReadFile(copy));
            }
        }
        const std::string place = file_.string() + ":" + std::to_string(row.line) + ":";
        EXPECT_EQ(damaged, ReadFile(folder_ / "errors").find(place) != std::string::npos)
            << ReadFile(folder_ / "errors");
    }
}

TEST_F(RegistryFileTest, TwoWritersKeepEachOthersKeys) {
    constexpr int kKeys = 60;
    const auto write = [](int first) {
        for (int i = 0; i < kKeys; ++i) {
            const WText path = TEXT("k\\") + wtext::FromNumber(first + i);
            if (PutNumber(path, static_cast<DWORD>(first + i)) != ERROR_SUCCESS) return 1;
        }
        return 0;
    };
    const pid_t one = Start([&] { return write(0); });
    const pid_t two = Start([&] { return write(1000); });
    EXPECT_EQ(0, Wait(one));
    EXPECT_EQ(0, Wait(two));
    EXPECT_EQ(0, Run([] {
                  for (int i = 0; i < kKeys; ++i) {
                      for (const int key : {i, 1000 + i}) {
                          if (GetNumber(TEXT("k\\") + wtext::FromNumber(key)) != key) return 1;
                      }
                  }
                  return 0;
              }));
}

TEST_F(RegistryFileTest, OpenHandlesSeeTheOtherProcess) {
    EXPECT_EQ(0, Run([this] {
                  HKEY key = nullptr;
                  if (PutNumber(TEXT("k"), 1) != ERROR_SUCCESS) return 1;
                  if (BLxPref_Reg::OpenKey(HKEY_CURRENT_USER, TEXT("k"), &key)) return 2;
                  const auto other = [](DWORD number) {
                      return number == 0 ? static_cast<int>(BLxPref_Reg::DeleteKeyAndDescendants(
                                               HKEY_CURRENT_USER, TEXT("k")))
                                         : static_cast<int>(PutNumber(TEXT("k"), number));
                  };
                  for (const DWORD number : {2u, 3u}) {
                      if (Wait(Start([&] { return other(number); })) != 0) return 3;
                      if (GetNumber(TEXT("k")) != number) return 4;
                  }
                  if (Wait(Start([&] { return other(0); })) != 0) return 5;
                  LONG number = 0;
                  return BLxPref_Reg::Read(key, TEXT("n"), &number) == ERROR_KEY_DELETED ? 0 : 6;
              }));
}

TEST_F(RegistryFileTest, AFullDiskLeavesTheOldFile) {
    ASSERT_EQ(0, Run([] { return static_cast<int>(PutNumber(TEXT("old"), 1)); }));
    EXPECT_EQ(0, Run([] {
                  signal(SIGXFSZ, SIG_IGN);
                  struct rlimit limit = {};
                  getrlimit(RLIMIT_FSIZE, &limit);
                  const rlim_t whole = limit.rlim_cur;
                  limit.rlim_cur = 100;
                  setrlimit(RLIMIT_FSIZE, &limit);
                  if (PutNumber(TEXT("new"), 2) != ERROR_DISK_FULL) return 1;
                  if (BLxPref_Reg::DeleteKey(HKEY_CURRENT_USER, TEXT("old")) != ERROR_DISK_FULL)
                      return 2;
                  if (GetNumber(TEXT("old")) != 1 || GetNumber(TEXT("new")) != 2) return 3;
                  // With room again the next close writes what is pending.
                  limit.rlim_cur = whole;
                  setrlimit(RLIMIT_FSIZE, &limit);
                  return PutNumber(TEXT("later"), 3) == ERROR_SUCCESS ? 0 : 4;
              }));
    EXPECT_EQ(0, Run([] { return GetNumber(TEXT("old")) + GetNumber(TEXT("new")) == 3 ? 0 : 1; }));
    EXPECT_EQ(1u, CountFiles());
}

TEST_F(RegistryFileTest, PlacesThatRefuse) {
    ASSERT_EQ(0, Run([] { return static_cast<int>(PutNumber(TEXT("old"), 1)); }));
    const std::string before = ReadFile(file_);
    ASSERT_EQ(0, chmod(file_.c_str(), 0644));
    ASSERT_EQ(0, chmod(folder_.c_str(), 0555));
    EXPECT_EQ(0, Run([this] {
                  if (geteuid() == 0 && setuid(kNobody) != 0) return 1;
                  // The place has to be closed for real.
                  if (open((folder_ / "probe").c_str(), O_WRONLY | O_CREAT, 0600) >= 0) return 2;
                  if (GetNumber(TEXT("old")) != 1) return 3;
                  return PutNumber(TEXT("new"), 2) == ERROR_ACCESS_DENIED ? 0 : 4;
              }));
    EXPECT_EQ(before, ReadFile(file_));
    ASSERT_EQ(0, chmod(folder_.c_str(), 0755));
}

// What is no plain file is neither taken for an empty registry nor replaced; a link leads to one.
TEST_F(RegistryFileTest, WhatStandsInThePlace) {
    const auto put = [](DWORD error) { return [=] { return PutNumber(TEXT("a"), 2) != error; }; };
    const fs::path folder = folder_ / "folder";
    const fs::path pipe = folder_ / "pipe";
    ASSERT_TRUE(fs::create_directory(folder));
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    fs::create_symlink("pipe", folder_ / "to pipe");
    for (const char* name : {"folder", "pipe", "to pipe"}) {
        file_ = folder_ / name;
        EXPECT_EQ(0, Run(put(ERROR_REGISTRY_IO_FAILED))) << name;
        EXPECT_EQ(0, Run([] { return static_cast<int>(ProcessLock("Lock").IsHeld()); })) << name;
        EXPECT_NE(std::string::npos,
                  ReadFile(folder_ / "errors").find(file_.string() + ": the registry can't be"));
        EXPECT_EQ(3u, CountFiles()) << name << ": no lock beside it";
    }
    EXPECT_TRUE(fs::is_directory(folder) && fs::is_fifo(pipe));
    // Two links, the second to a file that isn't there yet.
    fs::create_symlink(folder_ / "link", folder_ / "to link");
    fs::create_symlink("folder/target", folder_ / "link");
    file_ = folder_ / "to link";
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(0, Run(put(ERROR_SUCCESS)));
    EXPECT_TRUE(fs::is_symlink(file_) && fs::is_symlink(folder_ / "link"));
    EXPECT_TRUE(fs::is_regular_file(folder / "target"));
}

// A lock that another holds isn't waited for any longer, and is named.
TEST_F(RegistryFileTest, ALockThatIsHeld) {
    for (const bool registry : {false, true}) {
        const std::string path = file_.string() + (registry ? ".lock" : ".Lock.lock");
        const int held = open(path.c_str(), O_RDWR | O_CREAT, 0600);
        ASSERT_EQ(0, flock(held, LOCK_EX));
        EXPECT_EQ(0, Run([&] {
                      const LockWait once(0);
                      if (ProcessLock("Lock").IsHeld() != registry) return 1;
                      const DWORD error = PutNumber(TEXT("a"), 2);
                      if (error != (registry ? ERROR_LOCK_VIOLATION : ERROR_SUCCESS)) return 2;
                      return wtext::ToUtf8(once.GivenUp()) == path ? 0 : 3;
                  }));
        close(held);
    }
}

}  // namespace
