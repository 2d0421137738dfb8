// srsample DIR [--documents N] [--seed S] [--hold]: writes a library of design documents, and some
// that are damaged, into an empty or new folder; the same bytes for the same numbers. With --hold
// it then keeps some of the documents to itself until it is told to end.
#include <charconv>
#include <filesystem>
#include <fstream>

#include "host/srsample/sample_damage.h"
#include "host/srsample/sample_library.h"
#include "platform/host/hold.h"
#include "platform/host/program_main.h"

namespace {

namespace fs = std::filesystem;

enum eExit { kWritten = 0, kWrongUse = 2, kFailed = 3 };

constexpr std::uint32_t kDefaultDocuments = 200;
constexpr std::uint32_t kMostDocuments = 1000000;
constexpr std::uint64_t kDefaultSeed = 1;
constexpr std::size_t kMostHeld = 5;
constexpr std::uint32_t kHoldEvery = 7;  // so that they are of several kinds
constexpr const char* kUsage =
    "Usage: srsample DIR [--documents N] [--seed S] [--hold]\n"
    "Writes N (200) documents and some damaged ones into DIR, which is new or empty.\n"
    "--hold keeps some of them locked until a line, the end of input or Ctrl-C comes.";

struct Options {
    const HostArgument* folder = nullptr;
    std::uint32_t documents = kDefaultDocuments;
    std::uint64_t seed = kDefaultSeed;
    bool hold = false;
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
        } else if (text == "--hold") {
            options.hold = true;
        } else if (text.starts_with("-")) {
            return "There is no option " + text + ".";
        } else if (options.folder != nullptr) {
            return "Only one folder can be given.";
        } else {
            options.folder = &arguments[i];
        }
    }
    if (options.folder == nullptr) return "A folder is missing.";
    return options.hold && options.documents == 0 ? "--hold needs documents." : "";
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

// A library on its way to the disk.
class Writer {
public:
    Writer(const fs::path& folder, const Options& options) : folder_(folder), options_(options) {}

    // False when a file can't be written; it is told.
    [[nodiscard]] bool WriteDocuments() {
        SampleLibrary library(options_.documents, options_.seed);
        SampleDocument document;
        std::uint32_t compounds = 0;
        while (library.MakeNext(document)) {
            if (!Write(document.path, BuildDocument(document))) return false;
            if (document.IsCompound() && compounds++ % kHoldEvery == 0 &&
                toHold_.size() < kMostHeld) {
                toHold_.push_back(PathIn(folder_, document.path));
            }
        }
        WriteOutput("Wrote " + std::to_string(options_.documents) + " documents, " +
                    std::to_string(written_ / 1024) + " KB, into " + options_.folder->text +
                    " (seed " + std::to_string(options_.seed) + ").\n");
        return true;
    }

    [[nodiscard]] bool WriteDamaged() {
        WriteOutput("Wrote besides, damaged on purpose:\n");
        for (const DamagedSample& sample : MakeDamagedSamples(options_.seed)) {
            if (!Write(sample.path, sample.bytes)) return false;
            WriteOutput("  " + Shown(PathIn({}, sample.path)) + ": " + sample.what + "\n");
        }
        return true;
    }

    const std::vector<fs::path>& ToHold() const { return toHold_; }

private:
    bool Write(WTextView path, const std::vector<std::uint8_t>& bytes) {
        const fs::path file = PathIn(folder_, path);
        std::error_code ignored;  // writing fails then
        fs::create_directories(file.parent_path(), ignored);
        if (!WriteFile(file, bytes)) {
            Fail(kFailed, Shown(file) + " could not be written.");
            return false;
        }
        written_ += bytes.size();
        return true;
    }

    const fs::path folder_;
    const Options& options_;
    std::uint64_t written_ = 0;
    std::vector<fs::path> toHold_;
};

int Hold(const std::vector<fs::path>& paths) {
    EndRequest end;
    std::vector<HeldFile> held;
    WriteOutput("Keeps locked until a line, the end of input or Ctrl-C comes:\n");
    for (const fs::path& path : paths) {
        held.emplace_back(path.native());
        if (!held.back().IsHeld()) return Fail(kFailed, Shown(path) + " could not be locked.");
        WriteOutput("  " + Shown(path) + "\n");
    }
    FlushOutput();
    end.Wait();
    WriteOutput("Locked no longer.\n");
    return kWritten;
}

}  // namespace

int ProgramMain(const std::vector<HostArgument>& arguments) {
    Options options;
    const std::string fault = ParseOptions(arguments, options);
    if (!fault.empty()) return Fail(kWrongUse, fault + "\n" + kUsage);
    const fs::path folder(options.folder->path);
    std::error_code error;
    const bool exists = fs::exists(folder, error);
    if (exists && !(fs::is_directory(folder, error) && fs::is_empty(folder, error))) {
        return Fail(kWrongUse, options.folder->text + " exists and is not an empty folder.");
    }
    Writer writer(folder, options);
    if (!writer.WriteDocuments() || !writer.WriteDamaged()) return kFailed;
    return options.hold ? Hold(writer.ToHold()) : kWritten;
}
