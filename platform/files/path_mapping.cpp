#include "platform/files/path_mapping.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace platform {

namespace {

constexpr WCHAR kByteBase = 0xF000;

constexpr bool IsForbidden(unsigned char byte) {
    switch (byte) {
        case '\\':
        case ':':
        case '*':
        case '?':
        case '"':
        case '<':
        case '>':
        case '|':
            return true;
        default:
            return false;
    }
}

// For each byte whether it is itself as a character of a name.
constexpr std::array<bool, 256> kPlain = [] {
    std::array<bool, 256> plain{};
    for (unsigned char byte = 0; byte < 0x80; ++byte)
        plain[byte] = !IsForbidden(byte);
    return plain;
}();

bool IsMappedUnit(WCHAR unit) {
    return unit > kByteBase && unit <= kByteBase + 0xFF;
}

void AppendMapped(WText& out, std::string_view bytes) {
    for (const char c : bytes) {
        out += static_cast<WCHAR>(kByteBase + static_cast<unsigned char>(c));
    }
}

// The length of the UTF-8 character at the front of `bytes`, at most 4; 1 for a stray byte.
std::size_t CharacterLength(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const std::size_t length = lead < 0x80             ? 1u
                               : (lead & 0xE0) == 0xC0 ? 2u
                               : (lead & 0xF0) == 0xE0 ? 3u
                               : (lead & 0xF8) == 0xF0 ? 4u
                                                       : 1u;
    return length <= bytes.size() ? length : 1;
}

void AppendNonAscii(WText& out, std::string_view character) {
    bool valid = false;
    const WText units = wtext::FromUtf8(character, &valid);
    if (!valid || (units.size() == 1 && IsMappedUnit(units[0]))) {
        AppendMapped(out, valid ? character : character.substr(0, 1));
    } else {
        out += units;
    }
}

}  // namespace

void AppendNameFromBytes(WText& out, std::string_view bytes) {
    // Most names are plain ASCII: widen them in one go.
    std::size_t plain = 0;
    while (plain < bytes.size() && kPlain[static_cast<unsigned char>(bytes[plain])])
        ++plain;
    // Not append: with units of another size it would make a text of its own first.
    const std::size_t before = out.size();
    out.resize(before + plain);
    std::copy_n(bytes.begin(), plain, out.begin() + static_cast<std::ptrdiff_t>(before));
    bytes.remove_prefix(plain);
    while (!bytes.empty()) {
        const auto lead = static_cast<unsigned char>(bytes[0]);
        std::size_t length = 1;
        if (lead < 0x80) {
            out += static_cast<WCHAR>(IsForbidden(lead) ? kByteBase + lead : lead);
        } else {
            length = CharacterLength(bytes);
            bool valid = false;
            (void)wtext::FromUtf8(bytes.substr(0, length), &valid);
            if (!valid) length = 1;
            AppendNonAscii(out, bytes.substr(0, length));
        }
        bytes.remove_prefix(length);
    }
}

void AppendNameToBytes(std::string& out, WTextView name) {
    // Most names are plain ASCII, which needs no text in between.
    std::size_t plain = 0;
    for (; plain < name.size() && name[plain] < 0x80; ++plain)
        out += static_cast<char>(name[plain]);
    name.remove_prefix(plain);
    while (!name.empty()) {
        if (IsMappedUnit(name[0])) {
            out += static_cast<char>(name[0] - kByteBase);
            name.remove_prefix(1);
            continue;
        }
        std::size_t run = 1;
        while (run < name.size() && !IsMappedUnit(name[run]))
            ++run;
        out += wtext::ToUtf8(name.substr(0, run));
        name.remove_prefix(run);
    }
}

WText PathFromBytes(std::string_view path) {
    WText out;
    if (!path.empty() && path[0] == '/') out = TEXT("Z:");
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        AppendNameFromBytes(out, path.substr(0, slash));
        if (slash == std::string_view::npos) break;
        out += static_cast<WCHAR>('\\');
        path.remove_prefix(slash + 1);
    }
    return out;
}

bool PathToBytes(WTextView path, std::string& out) {
    out.clear();
    out.reserve(path.size() + path.size() / 2);
    if (path.find(WCHAR{0}) != WTextView::npos) {
        SetLastError(ERROR_INVALID_NAME);
        return false;
    }
    if (path.size() >= 2 && path[1] == ':') {
        if (path[0] != 'Z' && path[0] != 'z') {
            SetLastError(ERROR_PATH_NOT_FOUND);
            return false;
        }
        path.remove_prefix(2);
    } else if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1])) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return false;
    }
    while (!path.empty()) {
        std::size_t end = 0;
        while (end < path.size() && !IsSeparator(path[end]))
            ++end;
        AppendNameToBytes(out, path.substr(0, end));
        if (end == path.size()) break;
        out += '/';
        path.remove_prefix(end + 1);
    }
    return true;
}

unsigned ErrorFromErrno(int error) {
    switch (error) {
        case ENOENT:
            return ERROR_FILE_NOT_FOUND;
        case ENOTDIR:
            return ERROR_PATH_NOT_FOUND;
        case EACCES:
        case EPERM:
        case EROFS:
            return ERROR_ACCESS_DENIED;
        case EMFILE:
        case ENFILE:
            return ERROR_TOO_MANY_OPEN_FILES;
        case ENOMEM:
            return ERROR_NOT_ENOUGH_MEMORY;
        case ENAMETOOLONG:
            return ERROR_FILENAME_EXCED_RANGE;
        case ENOSPC:
        case EDQUOT:
            return ERROR_DISK_FULL;
        case EEXIST:
            return ERROR_ALREADY_EXISTS;
        default:
            return ERROR_GEN_FAILURE;
    }
}

}  // namespace platform
