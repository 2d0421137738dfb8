// Native build: date fields. A new one holds today's date, or none where it may hold none.
#include <algorithm>
#include <ctime>

#include "platform/text/calendar.h"
#include "platform/windows/window_object.h"

namespace platform {

namespace {

class DateField : public Window {
public:
    void OnCreated() override;
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    BOOL Set(WPARAM kind, const SYSTEMTIME* time);
    void PressKey(WPARAM key);
    void Turn(int by);
    void TellChange() const;

    enum class ePart { month, day, year };  // in the order of the short date
    static constexpr int kParts = 3;

    SYSTEMTIME time_ = {};
    bool isNone_ = false;
    ePart part_ = ePart::month;  // that the arrows turn
};

void DateField::OnCreated() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    time_ = {static_cast<WORD>(local.tm_year + 1900), static_cast<WORD>(local.tm_mon + 1),
             static_cast<WORD>(local.tm_wday),        static_cast<WORD>(local.tm_mday),
             static_cast<WORD>(local.tm_hour),        static_cast<WORD>(local.tm_min),
             static_cast<WORD>(local.tm_sec),         0};
    isNone_ = Has(DTS_SHOWNONE);
}

BOOL DateField::Set(WPARAM kind, const SYSTEMTIME* time) {
    if (kind == GDT_NONE) {
        if (!Has(DTS_SHOWNONE)) return FALSE;
        isNone_ = true;
        return TRUE;
    }
    FILETIME checked{};
    if (kind != GDT_VALID || time == nullptr || !SystemTimeToFileTime(time, &checked)) return FALSE;
    // The day of the week follows from the date.
    if (!FileTimeToSystemTime(&checked, &time_)) return FALSE;
    isNone_ = false;
    return TRUE;
}

void DateField::TellChange() const {
    NMDATETIMECHANGE change{};
    change.nmhdr = {handle, static_cast<UINT_PTR>(id), DTN_DATETIMECHANGE};
    change.dwFlags = static_cast<DWORD>(isNone_ ? GDT_NONE : GDT_VALID);
    if (!isNone_) change.st = time_;
    SendMessageW(parent, WM_NOTIFY, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&change));
}

// A month and a day go round; a day that the month hasn't becomes its last.
void DateField::Turn(int by) {
    SYSTEMTIME turned = time_;
    const auto goRound = [by](WORD value, WORD last) {
        return static_cast<WORD>((value - 1 + by + last) % last + 1);
    };
    if (part_ == ePart::month) turned.wMonth = goRound(turned.wMonth, 12);
    if (part_ == ePart::year) turned.wYear = static_cast<WORD>(turned.wYear + by);
    WORD last = 31;
    while (!IsDate(turned.wYear, turned.wMonth, last))
        --last;
    if (part_ == ePart::day) turned.wDay = goRound(turned.wDay, last);
    turned.wDay = std::min(turned.wDay, last);
    if (Set(static_cast<WPARAM>(GDT_VALID), &turned)) TellChange();
}

void DateField::PressKey(WPARAM key) {
    if (key == VK_SPACE && Has(DTS_SHOWNONE)) {
        isNone_ = !isNone_;
        TellChange();
        return;
    }
    if (isNone_) return;
    const int part = static_cast<int>(part_);
    if (key == VK_RIGHT) part_ = static_cast<ePart>((part + 1) % kParts);
    if (key == VK_LEFT) part_ = static_cast<ePart>((part + kParts - 1) % kParts);
    if (key == VK_UP) Turn(1);
    if (key == VK_DOWN) Turn(-1);
}

LRESULT DateField::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case DTM_GETSYSTEMTIME:
            if (lParam == 0) return GDT_NONE;
            if (isNone_) return GDT_NONE;
            *reinterpret_cast<SYSTEMTIME*>(lParam) = time_;
            return GDT_VALID;
        case DTM_SETSYSTEMTIME:
            return Set(wParam, reinterpret_cast<const SYSTEMTIME*>(lParam));
        case WM_KEYDOWN:
            PressKey(wParam);
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | DLGC_WANTCHARS;
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeDateField() {
    return std::make_shared<DateField>();
}

}  // namespace platform
