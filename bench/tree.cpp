// Makes a tree of empty files whose names are those of a design office: bench_tree FOLDER FILES.
// The same tree for the same count, with some 68 files a folder.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr const char* kWords[] = {"bracket", "plate", "shaft",  "housing", "cover",
                                  "bolt",    "nut",   "gear",   "frame",   "flange",
                                  "valve",   "pump",  "spring", "motor",   "bush"};
constexpr const char* kExtensions[] = {".hpa", ".hsb", ".hdg", ".txt", ".doc", ".step"};
constexpr unsigned kFilesInFolder = 68;
constexpr unsigned kFoldersInFolder = 8;

}  // namespace

int main(int count, char** values) {
    if (count != 3) {
        std::fprintf(stderr, "usage: bench_tree FOLDER FILES\n");
        return 2;
    }
    const unsigned files = static_cast<unsigned>(std::atoi(values[2]));
    std::vector<std::string> folders = {values[1]};
    if (mkdir(values[1], 0777) != 0) {
        std::perror(values[1]);
        return 3;
    }
    unsigned random = 1;
    const auto next = [&random] { return (random = random * 1664525u + 1013904223u) >> 16; };
    for (unsigned i = 1; i < files / kFilesInFolder; ++i) {
        folders.push_back(folders[(i - 1) / kFoldersInFolder] + "/" + kWords[next() % 15] +
                          std::to_string(i));
        if (mkdir(folders.back().c_str(), 0777) != 0) {
            std::perror(folders.back().c_str());
            return 3;
        }
    }
    for (unsigned i = 0; i < files; ++i) {
        const std::string path = folders[i % folders.size()] + "/" + kWords[next() % 15] + "-" +
                                 std::to_string(i) + kExtensions[next() % 6];
        const int descriptor = open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0666);
        if (descriptor < 0) {
            std::perror(path.c_str());
            return 3;
        }
        close(descriptor);
    }
    return 0;
}
