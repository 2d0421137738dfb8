#include "platform/registry/registry_text.h"

#include <charconv>
#include <cstring>

#include "platform/registry/registry_api.h"
#include "platform/wtext.h"

namespace {

constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00";
constexpr std::string_view kRootName = "HKEY_CURRENT_USER";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kMostLineLength = 76;

bool TakePrefix(std::string_view& text, std::string_view prefix) {
    if (text.substr(0, prefix.size()) != prefix) return false;
    text.remove_prefix(prefix.size());
    return true;
}

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// A quoted text at the front with its escapes taken back.
bool TakeQuoted(std::string_view& text, WText& out) {
    if (!TakePrefix(text, "\"")) return false;
    std::string bytes;
    while (!text.empty()) {
        char c = text.front();
        text.remove_prefix(1);
        if (c == '"') {
            bool valid = false;
            out = wtext::FromUtf8(bytes, &valid);
            return valid;
        }
        if (c == '\\') {
            if (text.empty() || (text.front() != '\\' && text.front() != '"')) return false;
            c = text.front();
            text.remove_prefix(1);
        }
        bytes += c;
    }
    return false;
}

// A number in hexadecimal at the front.
template <typename Number>
bool TakeHex(std::string_view& text, Number& number) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, 16);
    if (error != std::errc()) return false;
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return true;
}

bool ParseBytes(std::string_view text, std::vector<BYTE>& data) {
    text = TrimBlanks(text);
    while (!text.empty()) {
        BYTE byte = 0;
        if (!TakeHex(text, byte)) return false;
        data.push_back(byte);
        text = TrimBlanks(text);
        if (text.empty()) return true;
        if (!TakePrefix(text, ",")) return false;
        text = TrimBlanks(text);
        if (text.empty()) return false;
    }
    return true;
}

std::vector<BYTE> TextBytes(const WText& text) {
    std::vector<BYTE> data((text.size() + 1) * sizeof(WCHAR));
    std::memcpy(data.data(), text.c_str(), data.size());
    return data;
}

// What stands behind the equals sign.
bool ParseData(std::string_view text, RegistryValue& value) {
    if (text.substr(0, 1) == "\"") {
        WText content;
        if (!TakeQuoted(text, content) || !TrimBlanks(text).empty()) return false;
        value.type = REG_SZ;
        value.data = TextBytes(content);
        return true;
    }
    if (TakePrefix(text, "dword:")) {
        DWORD number = 0;
        if (!TakeHex(text, number) || !text.empty()) return false;
        value.type = REG_DWORD;
        value.data.resize(sizeof number);
        std::memcpy(value.data.data(), &number, sizeof number);
        return true;
    }
    if (TakePrefix(text, "hex:")) {
        value.type = REG_BINARY;
        return ParseBytes(text, value.data);
    }
    return TakePrefix(text, "hex(") && TakeHex(text, value.type) && TakePrefix(text, "):") &&
           ParseBytes(text, value.data);
}

class RegistryReader {
public:
    explicit RegistryReader(std::string_view text) : rest_(text) {}

    RegistryParse Read() {
        TakePrefix(rest_, kByteOrderMark);
        // An empty file is an empty registry: nothing can be lost from it.
        const std::string_view whole = rest_;
        if (!rest_.empty() && NextLine() != kHeader) {
            ReportBad();
            // The first key may stand in the header's place.
            if (whole.front() == '[') {
                rest_ = whole;
                line_ = 0;
            }
        }
        while (!rest_.empty()) {
            const std::string_view line = NextLine();
            firstLine_ = line_;
            if (line.empty() || line.front() == ';') continue;
            if (!(line.front() == '[' ? ReadKey(line) : ReadValue(line))) ReportBad();
        }
        return std::move(result_);
    }

private:
    std::string_view NextLine() {
        const std::size_t end = rest_.find('\n');
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        ++line_;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        return TrimBlanks(line);
    }

    void ReportBad() {
        if (result_.badLines++ == 0) result_.firstBadLine = firstLine_;
    }

    bool ReadKey(std::string_view line) {
        key_ = nullptr;
        if (line.back() != ']') return false;
        line = line.substr(1, line.size() - 2);
        if (!TakePrefix(line, kRootName)) return false;
        bool valid = false;
        WText names = wtext::FromUtf8(line, &valid);
        if (!valid) return false;
        RegistryPath path;
        while (!names.empty()) {
            const std::size_t end = names.find('\\', 1);
            const WText name = names.substr(1, end == WText::npos ? end : end - 1);
            const bool known = names.front() == '\\' && !name.empty() &&
                               name.size() <= kMostKeyUnits && IsStorableName(name);
            if (!known || path.size() == kMostKeyLevels) return false;
            path.push_back(name);
            names.erase(0, end);
        }
        key_ = &MakeKey(result_.root, path);
        return true;
    }

    bool ReadValue(std::string_view line) {
        RegistryValue value;
        const bool named = TakePrefix(line, "@") || TakeQuoted(line, value.name);
        const bool isSound = named && TakePrefix(line, "=");
        // Bytes go on behind a backslash. A line that is no value is joined as well, so that it
        // counts once.
        std::string joined(line);
        while (line.substr(0, 1) != "\"" && !joined.empty() && joined.back() == '\\') {
            if (rest_.empty()) return false;
            joined.pop_back();
            joined += NextLine();
        }
        if (!isSound || value.name.size() > kMostValueNameUnits || !IsStorableName(value.name) ||
            !ParseData(joined, value) || key_ == nullptr) {
            return false;
        }
        key_->values[FoldName(value.name)] = value;
        return true;
    }

    std::string_view rest_;
    std::size_t line_ = 0;
    std::size_t firstLine_ = 1;
    RegistryKey* key_ = nullptr;  // null behind a key line that can't be read
    RegistryParse result_;
};

void AppendQuoted(std::string& out, const WText& text) {
    out += '"';
    for (const char c : wtext::ToUtf8(text)) {
        if (c == '"' || c == '\\') out += '\\';
        out += c;
    }
    out += '"';
}

void AppendHex(std::string& out, std::uint32_t number, int digits) {
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
        out += "0123456789abcdef"[(number >> shift) & 0xF];
    }
}

// The text of a value when a quoted line can hold it to the byte.
bool IsLineText(const RegistryValue& value, WText& text) {
    const std::size_t units = value.data.size() / sizeof(WCHAR);
    if (value.type != REG_SZ || units == 0 || value.data.size() % sizeof(WCHAR) != 0) return false;
    text.resize(units);
    std::memcpy(text.data(), value.data.data(), value.data.size());
    if (text.back() != 0) return false;
    text.pop_back();
    return IsStorableName(text);
}

void AppendBytes(std::string& out, const RegistryValue& value, std::size_t lineLength) {
    out += "hex";
    if (value.type != REG_BINARY) {
        char digits[8] = {};
        const auto end = std::to_chars(digits, digits + sizeof digits, value.type, 16).ptr;
        out.append("(").append(digits, end).append(")");
    }
    out += ':';
    lineLength += 8;
    for (std::size_t i = 0; i < value.data.size(); ++i) {
        if (i != 0) {
            out += ',';
            lineLength += 3;
            if (lineLength > kMostLineLength) {
                out += "\\\n  ";
                lineLength = 2;
            }
        }
        AppendHex(out, value.data[i], 2);
    }
}

void AppendValue(std::string& out, const RegistryValue& value) {
    const std::size_t start = out.size();
    if (value.name.empty()) {
        out += '@';
    } else {
        AppendQuoted(out, value.name);
    }
    out += '=';
    WText text;
    if (IsLineText(value, text)) {
        AppendQuoted(out, text);
    } else if (value.type == REG_DWORD && value.data.size() == sizeof(DWORD)) {
        DWORD number = 0;
        std::memcpy(&number, value.data.data(), sizeof number);
        out += "dword:";
        AppendHex(out, number, 8);
    } else {
        AppendBytes(out, value, out.size() - start);
    }
    out += '\n';
}

void AppendKey(std::string& out, const RegistryKey& key, const std::string& path) {
    out.append("\n[").append(path).append("]\n");
    for (const auto& [folded, value] : key.values)
        AppendValue(out, value);
    for (const auto& [folded, child] : key.keys) {
        AppendKey(out, *child, path + '\\' + wtext::ToUtf8(child->name));
    }
}

}  // namespace

RegistryParse ParseRegistry(std::string_view text) {
    // As Windows exports it: UTF-16, little-endian, behind a byte order mark.
    if (!text.starts_with("\xFF\xFE")) return RegistryReader(text).Read();
    WText units;
    for (std::size_t at = 2; at + 1 < text.size(); at += 2) {
        units += static_cast<WCHAR>(static_cast<unsigned char>(text[at]) |
                                    static_cast<unsigned char>(text[at + 1]) << 8);
    }
    return RegistryReader(wtext::ToUtf8(units)).Read();
}

std::string WriteRegistry(const RegistryKey& root) {
    std::string out(kHeader);
    out += '\n';
    AppendKey(out, root, std::string(kRootName));
    return out;
}
