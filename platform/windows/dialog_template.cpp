#include "platform/windows/dialog_template.h"

#include <cstring>

#include "platform/windows/system_names.h"

namespace platform {

namespace {

constexpr WORD kOrdinal = 0xFFFF;
constexpr WORD kExtendedVersion = 1;
constexpr WORD kFirstClassAtom = 0x80;

// Reads on from field to field; once something is missing, everything after it is.
class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) : bytes_(bytes) {}

    template <typename Number>
    Number Take() {
        Number number{};
        if (bytes_.size() - at_ < sizeof number) {
            Fail();
            return {};
        }
        std::memcpy(&number, bytes_.data() + at_, sizeof number);
        at_ += sizeof number;
        return number;
    }
    WText TakeText() {
        WText text;
        while (const auto unit = Take<WORD>())
            text += static_cast<WCHAR>(unit);
        return text;
    }
    // A text, or a number that stands in the place of one.
    WText TakeTextOrNumber(WORD& number) {
        number = 0;
        const std::size_t start = at_;
        if (Take<WORD>() == kOrdinal) {
            number = Take<WORD>();
            return {};
        }
        if (failed_) return {};
        at_ = start;
        return TakeText();
    }
    void Skip(std::size_t count) {
        if (bytes_.size() - at_ < count) {
            Fail();
        } else {
            at_ += count;
        }
    }
    void Align() { Skip((4 - at_ % 4) % 4); }
    bool Failed() const { return failed_; }

private:
    void Fail() {
        failed_ = true;
        at_ = bytes_.size();
    }

    std::span<const std::byte> bytes_;
    std::size_t at_ = 0;
    bool failed_ = false;
};

// The number that stands for a class in a template.
WText ClassOfNumber(WORD number) {
    static constexpr const WCHAR* kNames[] = {TEXT("Button"),  TEXT("Edit"),      TEXT("Static"),
                                              TEXT("ListBox"), TEXT("ScrollBar"), TEXT("ComboBox")};
    const std::size_t at = static_cast<std::size_t>(number) - kFirstClassAtom;
    return number >= kFirstClassAtom && at < std::size(kNames) ? kNames[at] : TEXT("");
}

DialogItemTemplate TakeItem(Reader& reader) {
    DialogItemTemplate item{};
    WORD number = 0;
    reader.Align();
    item.helpId = reader.Take<DWORD>();
    reader.Skip(sizeof(DWORD));  // the extended style
    item.style = reader.Take<DWORD>();
    item.x = reader.Take<SHORT>();
    item.y = reader.Take<SHORT>();
    item.width = reader.Take<SHORT>();
    item.height = reader.Take<SHORT>();
    item.id = reader.Take<DWORD>();
    item.className = reader.TakeTextOrNumber(number);
    if (number != 0) item.className = ClassOfNumber(number);
    item.text = reader.TakeTextOrNumber(number);
    reader.Skip(reader.Take<WORD>());  // data of the control's own
    return item;
}

}  // namespace

std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> bytes) {
    Reader reader(bytes);
    DialogTemplate dialog{};
    WORD number = 0;
    if (reader.Take<WORD>() != kExtendedVersion || reader.Take<WORD>() != kOrdinal) {
        return std::nullopt;
    }
    dialog.helpId = reader.Take<DWORD>();
    reader.Skip(sizeof(DWORD));  // the extended style
    dialog.style = reader.Take<DWORD>();
    const auto count = reader.Take<WORD>();
    dialog.x = reader.Take<SHORT>();
    dialog.y = reader.Take<SHORT>();
    dialog.width = reader.Take<SHORT>();
    dialog.height = reader.Take<SHORT>();
    (void)reader.TakeTextOrNumber(number);  // the menu
    dialog.hasClass = !reader.TakeTextOrNumber(number).empty() || number != 0;
    dialog.title = reader.TakeText();
    if ((dialog.style & DS_SETFONT) != 0) {
        reader.Skip(3 * sizeof(WORD));  // size, weight, slant and character set
        (void)reader.TakeText();
    }
    for (WORD i = 0; i < count && !reader.Failed(); ++i)
        dialog.items.push_back(TakeItem(reader));
    if (reader.Failed()) return std::nullopt;
    return dialog;
}

}  // namespace platform
