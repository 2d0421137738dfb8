// Native build: date fields. A new one holds today's date.
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
};

void DateField::OnCreated() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    time_ = {static_cast<WORD>(local.tm_year + 1900), static_cast<WORD>(local.tm_mon + 1),
             static_cast<WORD>(local.tm_wday),        static_cast<WORD>(local.tm_mday),
             static_cast<WORD>(local.tm_hour),        static_cast<WORD>(local.tm_min),
             static_cast<WORD>(local.tm_sec),         0};
}

BOOL DateField::Set(WPARAM kind, const SYSTEMTIME* time) {
    FILETIME checked{};
    if (kind != GDT_VALID || time == nullptr || !SystemTimeToFileTime(time, &checked)) return FALSE;
    // The day of the week follows from the date.
    return FileTimeToSystemTime(&checked, &time_);
}

LRESULT DateField::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case DTM_GETSYSTEMTIME:
            if (lParam != 0) *reinterpret_cast<SYSTEMTIME*>(lParam) = time_;
            return GDT_VALID;
        case DTM_SETSYSTEMTIME:
            return Set(wParam, reinterpret_cast<const SYSTEMTIME*>(lParam));
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeDateField() {
    return std::make_shared<DateField>();
}

}  // namespace platform
