// srsample DIR [--documents N] [--seed S]: writes a library of design documents into an empty or
// new folder, the same bytes for the same numbers.
#include <charconv>
#include <filesystem>
#include <fstream>

#include "host/srsample/sample_library.h"
#include "platform/host/program_main.h"

namespace {

namespace fs = std::filesystem;

enum eExit { kWritten = 0, kWrongUse = 2, kFailed = 3 };

constexpr std::uint32_t kDefaultDocuments = 200;
constexpr std::uint32_t kMostDocuments = 1000000;
constexpr std::uint64_t kDefaultSeed = 1;

struct Options {
    const HostArgument* folder = nullptr;
    std::uint32_t documents = kDefaultDocuments;
    std::uint64_t seed = kDefaultSeed;
};

template <typename Number>
bool ParseNumber(const std::string& text, Number most, Number& number) {
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number <= most;
}

// The text of what is wrong, empty when nothing is.
std::string ParseOptions(const std::vector<HostArgument>& arguments, Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& text = arguments[i].text;
        if (text == "--documents" || text == "--seed") {
            const bool isSeed = text == "--seed";
            const std::string value = i + 1 < arguments.size() ? arguments[i + 1].text : "";
            const bool isNumber = isSeed ? ParseNumber(value, ~std::uint64_t{0}, options.seed)
                                         : ParseNumber(value, kMostDocuments, options.documents);
            if (!isNumber) {
                return text + " needs a number" + (isSeed ? "." : " up to 1000000.");
            }
            ++i;
        } else if (text.starts_with("--")) {
            return "There is no option " + text + ".";
        } else if (options.folder != nullptr) {
            return "Only one folder can be given.";
        } else {
            options.folder = &arguments[i];
        }
    }
    return options.folder == nullptr ? "A folder is missing." : "";
}

bool WriteFile(const fs::path& path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

// The parts of a document's path below the library's folder.
fs::path PathIn(const fs::path& folder, WTextView path) {
    fs::path result = folder;
    while (!path.empty()) {
        const std::size_t length = std::min(path.find(TEXT('\\')), path.size());
        const std::string part = wtext::ToUtf8(path.substr(0, length));
        result /= fs::path(std::u8string(part.begin(), part.end()));
        path.remove_prefix(std::min(length + 1, path.size()));
    }
    return result;
}

std::string Shown(const fs::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

int Fail(int status, const std::string& message) {
    WriteError("srsample: " + message + "\n");
    return status;
}

}  // namespace

int ProgramMain(const std::vector<HostArgument>& arguments) {
    Options options;
    const std::string fault = ParseOptions(arguments, options);
    if (!fault.empty()) {
        return Fail(kWrongUse, fault + "\nUsage: srsample DIR [--documents N] [--seed S]");
    }
    const fs::path folder(options.folder->path);
    std::error_code error;
    const bool exists = fs::exists(folder, error);
    if (exists && !(fs::is_directory(folder, error) && fs::is_empty(folder, error))) {
        return Fail(kWrongUse, options.folder->text + " exists and is not an empty folder.");
    }
    SampleLibrary library(options.documents, options.seed);
    SampleDocument document;
    std::uint64_t written = 0;
    while (library.MakeNext(document)) {
        const fs::path path = PathIn(folder, document.path);
        fs::create_directories(path.parent_path(), error);
        const std::vector<std::uint8_t> bytes = BuildDocument(document);
        if (!WriteFile(path, bytes)) {
            return Fail(kFailed, Shown(path) + " could not be written.");
        }
        written += bytes.size();
    }
    fs::create_directories(folder, error);
    if (error) return Fail(kFailed, options.folder->text + " could not be made.");
    WriteOutput("Wrote " + std::to_string(options.documents) + " documents, " +
                std::to_string(written / 1024) + " KB, into " + options.folder->text + " (seed " +
                std::to_string(options.seed) + ").\n");
    return kWritten;
}
