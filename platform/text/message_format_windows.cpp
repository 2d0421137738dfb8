#include "platform/message_format.h"

namespace {

constexpr std::size_t kFirstSize = 512;
constexpr std::size_t kMostUnits = 0x8000;  // FormatMessageW writes at most 64 KB

}  // namespace

WText FormatInserts(LPCWSTR format, std::initializer_list<LPCWSTR> inserts) {
    WText text;
    for (std::size_t size = kFirstSize; size <= kMostUnits; size *= 2) {
        text.resize(size);
        // The call only reads the array, which it takes under the type of an argument list.
        void* array = const_cast<LPCWSTR*>(inserts.begin());
        const DWORD written =
            FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY, format, 0, 0,
                           text.data(), static_cast<DWORD>(size), static_cast<va_list*>(array));
        text.resize(written);
        if (written != 0 || GetLastError() != ERROR_INSUFFICIENT_BUFFER) break;
    }
    return text;
}
