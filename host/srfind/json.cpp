#include "host/srfind/json.h"

#include "platform/native_path.h"

namespace {

constexpr char kHex[] = "0123456789abcdef";

}  // namespace

std::string JsonString(const std::string& bytes) {
    std::string out = "\"";
    for (const char c : wtext::ToUtf8(wtext::FromUtf8(bytes))) {
        const auto unit = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (unit < 0x20 || unit == 0x7F) {
            out += "\\u00";
            out += kHex[unit >> 4];
            out += kHex[unit & 0xF];
        } else {
            out += c;
        }
    }
    return out + '"';
}

std::string HitAsJson(const WCHAR* path, const std::string& records) {
    const WCHAR* name = PathFindFileNameW(path);
    const std::string shown = DisplayPath(path);
    bool exact = false;
    (void)wtext::FromUtf8(shown, &exact);
    const WTextView folder(path, static_cast<std::size_t>(name - path));
    std::string out = "{\"path\":" + JsonString(shown) +
                      ",\"folder\":" + JsonString(DisplayPath(folder)) +
                      ",\"name\":" + JsonString(DisplayPath(name));
    out += exact ? ",\"exact\":true" : ",\"exact\":false,\"bytes\":\"";
    if (!exact) {
        for (const char c : shown) {
            out += kHex[static_cast<unsigned char>(c) >> 4];
            out += kHex[static_cast<unsigned char>(c) & 0xF];
        }
        out += '"';
    }
    if (!records.empty()) out += ",\"records\":" + records;
    return out + "}";
}
