// Native build: FormatMessageW for a format text with inserts.
#include "platform/text/text_api.h"
#include "platform/wtext.h"

namespace {

constexpr int kMostInserts = 99;

class MessageWriter {
public:
    MessageWriter(LPCWSTR format, const LPCWSTR* inserts) : at_(format), inserts_(inserts) {}

    // ERROR_SUCCESS, or why the format can't be followed.
    DWORD Write() {
        while (*at_ != 0) {
            const WCHAR c = *at_++;
            if (c == '\r' || c == '\n') {
                if (c == '\r' && *at_ == '\n') ++at_;
                text_ += TEXT("\r\n");
            } else if (c != '%') {
                text_ += c;
            } else if (*at_ == '0') {
                break;  // %0 ends the text
            } else if (const DWORD error = WriteEscape(); error != ERROR_SUCCESS) {
                return error;
            }
        }
        return ERROR_SUCCESS;
    }

    const WText& text() const { return text_; }

private:
    DWORD WriteEscape() {
        const WCHAR c = *at_;
        if (c == 0) return ERROR_INVALID_PARAMETER;
        if (c >= '1' && c <= '9') return WriteInsert();
        ++at_;
        switch (c) {
            case 'n':
                text_ += TEXT("\r\n");
                break;
            case 'r':
                text_ += TEXT('\r');
                break;
            case 't':
                text_ += TEXT('\t');
                break;
            default:
                text_ += c;
        }
        return ERROR_SUCCESS;
    }

    DWORD WriteInsert() {
        int number = *at_++ - '0';
        if (*at_ >= '0' && *at_ <= '9') number = number * 10 + (*at_++ - '0');
        if (*at_ == '!') {
            const WTextView rest(at_);
            const WTextView forms[] = {TEXT("!s!"), TEXT("!ls!")};
            std::size_t length = 0;
            for (const WTextView form : forms) {
                if (rest.substr(0, form.size()) == form) length = form.size();
            }
            if (length == 0) {
                return rest.find('!', 1) == WTextView::npos ? ERROR_INVALID_PARAMETER
                                                            : ERROR_NOT_SUPPORTED;
            }
            at_ += length;
        }
        static_assert(kMostInserts == 99, "a number has two digits");
        if (inserts_ == nullptr) return ERROR_INVALID_PARAMETER;
        const LPCWSTR insert = inserts_[number - 1];
        text_ += insert == nullptr ? WTextView(TEXT("(null)")) : WTextView(insert);
        return ERROR_SUCCESS;
    }

    LPCWSTR at_;
    const LPCWSTR* inserts_;
    WText text_;
};

DWORD FailWith(DWORD error) {
    SetLastError(error);
    return 0;
}

}  // namespace

DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD, DWORD, LPWSTR buffer, DWORD cchBuffer,
                     va_list* arguments) {
    if (flags != (FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY)) {
        return FailWith(ERROR_INVALID_FLAGS);
    }
    if (source == nullptr || buffer == nullptr) return FailWith(ERROR_INVALID_PARAMETER);
    MessageWriter writer(static_cast<LPCWSTR>(source), reinterpret_cast<const LPCWSTR*>(arguments));
    if (const DWORD error = writer.Write(); error != ERROR_SUCCESS) return FailWith(error);
    const WText& text = writer.text();
    if (text.size() >= cchBuffer) return FailWith(ERROR_INSUFFICIENT_BUFFER);
    text.copy(buffer, text.size());
    buffer[text.size()] = 0;
    if (text.empty()) return FailWith(ERROR_NO_WORK_DONE);
    return static_cast<DWORD>(text.size());
}
