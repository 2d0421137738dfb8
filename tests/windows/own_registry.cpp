// Windows build: each test program has a registry of its own below the user's, since programs that
// run side by side would change each other's saved searches and last places.
#include <gtest/gtest.h>

#include <string>

#include "platform/win.h"

namespace {

class OwnRegistry : public testing::Environment {
public:
    void SetUp() override {
        path_ = L"Software\\SrTests\\" + std::to_wstring(GetCurrentProcessId());
        RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());  // of one that ended early
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0,
                                                 KEY_ALL_ACCESS, nullptr, &key, nullptr));
        ASSERT_EQ(ERROR_SUCCESS, RegOverridePredefKey(HKEY_CURRENT_USER, key));
        RegCloseKey(key);
    }
    void TearDown() override {
        EXPECT_EQ(ERROR_SUCCESS, RegOverridePredefKey(HKEY_CURRENT_USER, nullptr));
        EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str()));
    }

private:
    std::wstring path_;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new OwnRegistry);

}  // namespace
