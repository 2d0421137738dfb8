// Each test program has an empty registry of its own, in memory where that can be: waiting for a
// disk would take nearly all of the time.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace {

class OwnRegistry : public testing::Environment {
public:
    void SetUp() override {
        const bool hasMemory = access("/dev/shm", W_OK) == 0;
        std::string folder = hasMemory ? "/dev/shm" : std::filesystem::temp_directory_path();
        folder += "/sr-registry-XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(folder.data()));
        folder_ = folder;
        setenv("SR_REGISTRY", (folder_ / "registry.reg").c_str(), 1);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

private:
    std::filesystem::path folder_;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new OwnRegistry);

}  // namespace
