// Native build: the texts of messages, as FormatMessageW fills them in.
#include "platform/message_format.h"

namespace {

class MessageWriter {
public:
    MessageWriter(LPCWSTR format, std::initializer_list<LPCWSTR> inserts)
        : at_(format), inserts_(inserts) {}

    // False when the format can't be followed.
    bool Write() {
        while (*at_ != 0) {
            const WCHAR c = *at_++;
            if (c == '\r' || c == '\n') {
                if (c == '\r' && *at_ == '\n') ++at_;
                text_ += TEXT("\r\n");
            } else if (c != '%') {
                text_ += c;
            } else if (*at_ == '0') {
                break;  // %0 ends the text
            } else if (!WriteEscape()) {
                return false;
            }
        }
        return true;
    }

    const WText& text() const { return text_; }

private:
    bool WriteEscape() {
        const WCHAR c = *at_;
        if (c == 0) return false;
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
        return true;
    }

    bool WriteInsert() {
        int number = *at_++ - '0';
        if (*at_ >= '0' && *at_ <= '9') number = number * 10 + (*at_++ - '0');
        // Nobody gives an insert a form of its own.
        if (*at_ == '!' || static_cast<std::size_t>(number) > inserts_.size()) return false;
        const LPCWSTR insert = inserts_.begin()[number - 1];
        text_ += insert == nullptr ? WTextView(TEXT("(null)")) : WTextView(insert);
        return true;
    }

    LPCWSTR at_;
    std::initializer_list<LPCWSTR> inserts_;
    WText text_;
};

}  // namespace

WText FormatInserts(LPCWSTR format, std::initializer_list<LPCWSTR> inserts) {
    MessageWriter writer(format, inserts);
    return writer.Write() ? writer.text() : WText();
}
