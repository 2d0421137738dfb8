// Native build: date fields. A new one holds today's date, or none where it may hold none.
#include <ctime>

#include "platform/windows/window_object.h"

namespace platform {

namespace {

class DateField : public Window {
public:
    void OnCreated() override;
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    BOOL Set(WPARAM kind, const SYSTEMTIME* time);

    SYSTEMTIME time_ = {};
    bool isNone_ = false;
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

LRESULT DateField::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case DTM_GETSYSTEMTIME:
            if (lParam == 0) return GDT_NONE;
            if (isNone_) return GDT_NONE;
            *reinterpret_cast<SYSTEMTIME*>(lParam) = time_;
            return GDT_VALID;
        case DTM_SETSYSTEMTIME:
            return Set(wParam, reinterpret_cast<const SYSTEMTIME*>(lParam));
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
