#include "found/found_row_index.h"

#include "criteria/text_equality.h"

namespace {

// Equal for texts that compare as equal. Where the system has no key the text itself must do.
std::string KeyOf(const WCHAR* text) {
    const auto map = [text](char* key, std::size_t size) {
        return static_cast<std::size_t>(LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | kFoldText,
                                                     text, -1, reinterpret_cast<LPWSTR>(key),
                                                     static_cast<int>(size)));
    };
    char usual[1024];
    if (const std::size_t size = map(usual, sizeof(usual)); size != 0) return {usual, size};
    std::string key(map(nullptr, 0), 0);
    key.resize(key.empty() ? 0 : map(key.data(), key.size()));
    return key.empty() ? wtext::ToUtf8(text) : key;
}

}  // namespace

const WCHAR** FoundRowIndex::PlaceOf(const WCHAR* folder, const WCHAR* name) {
    if (rows_ == nullptr || folder_ != folder) {
        Rows* const rows = &folders_.try_emplace(KeyOf(folder)).first->second;
        folder_ = folder;
        rows_ = rows;
    }
    return &rows_->try_emplace(KeyOf(name), nullptr).first->second;
}
