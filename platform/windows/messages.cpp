// Native build: sent and posted messages, timers, and the hook that sees what the queue gives out.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <thread>
#include <utility>

#include "platform/live_windows.h"
#include "platform/registry/registry_file.h"
#include "platform/windows/window_object.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr UINT kShortestPeriodMs = 10;

struct Timer {
    HWND window;
    UINT_PTR id;
    std::chrono::milliseconds period;
    Clock::time_point due;
    TIMERPROC procedure;
};

struct Hook {
    HHOOK handle;
    HOOKPROC procedure;
};

std::deque<MSG> posted;
std::optional<int> quitCode;
std::vector<Timer> timers;
std::vector<Hook> hooks;  // the newest last, so that the handles rise
HHOOK running = nullptr;  // the hook that is being called

DWORD TickCount() {
    return static_cast<DWORD>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch())
            .count());
}

bool IsInRange(UINT message, UINT first, UINT last) {
    return (first == 0 && last == 0) || (message >= first && message <= last);
}

bool IsAsked(const MSG& message, HWND window, UINT first, UINT last) {
    return (window == nullptr || platform::IsWithin(message.hwnd, window)) &&
           IsInRange(message.message, first, last);
}

// The order is that of Windows: what was posted, the wish to quit, timers.
bool Take(MSG& message, HWND window, UINT first, UINT last, bool remove) {
    const auto found = std::find_if(posted.begin(), posted.end(), [&](const MSG& one) {
        return IsAsked(one, window, first, last);
    });
    if (found != posted.end()) {
        message = *found;
        if (remove) posted.erase(found);
        return true;
    }
    if (quitCode) {
        message = {nullptr, WM_QUIT, static_cast<WPARAM>(*quitCode), 0, TickCount(), {0, 0}};
        if (remove) quitCode.reset();
        return true;
    }
    for (Timer& timer : timers) {
        message = {timer.window, WM_TIMER, timer.id, reinterpret_cast<LPARAM>(timer.procedure),
                   TickCount(),  {0, 0}};
        if (timer.due > Clock::now() || !IsAsked(message, window, first, last)) continue;
        if (remove) {
            timer.due = Clock::now() + timer.period;
            // The next one in turn comes first when several are due.
            std::rotate(&timer, &timer + 1, timers.data() + timers.size());
        }
        return true;
    }
    return false;
}

// The newest hook that is older than `than`, the newest of all for null: it may end itself, or
// another, while it is called.
LRESULT CallHookOlderThan(HHOOK than, int code, WPARAM wParam, LPARAM lParam) {
    const auto older = std::find_if(hooks.rbegin(), hooks.rend(), [&](const Hook& one) {
        return than == nullptr || std::less<HHOOK>()(one.handle, than);
    });
    if (older == hooks.rend()) return 0;
    const HOOKPROC procedure = older->procedure;
    const HHOOK caller = std::exchange(running, older->handle);
    const LRESULT result = procedure(code, wParam, lParam);
    running = caller;
    return result;
}

void CallHooks(MSG& message, bool removed) {
    CallHookOlderThan(nullptr, HC_ACTION, removed ? PM_REMOVE : PM_NOREMOVE,
                      reinterpret_cast<LPARAM>(&message));
}

std::vector<Timer>::iterator FindTimer(HWND window, UINT_PTR id) {
    return std::find_if(timers.begin(), timers.end(), [&](const Timer& timer) {
        return timer.window == window && timer.id == id;
    });
}

}  // namespace

void platform::ForgetMessagesOf(HWND window) {
    std::erase_if(posted, [&](const MSG& message) { return message.hwnd == window; });
    std::erase_if(timers, [&](const Timer& timer) { return timer.window == window; });
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = platform::RequireWindow(window);
    return found != nullptr ? found->Receive(message, wParam, lParam) : 0;
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window != nullptr && platform::RequireWindow(window) == nullptr) return FALSE;
    posted.push_back({window, message, wParam, lParam, TickCount(), {0, 0}});
    return TRUE;
}

void PostQuitMessage(int exitCode) {
    quitCode = exitCode;
}

BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT flags) {
    if (flags != PM_NOREMOVE && flags != PM_REMOVE) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    if (window != nullptr && platform::RequireWindow(window) == nullptr) return FALSE;
    MSG taken{};
    if (!Take(taken, window, first, last, flags == PM_REMOVE)) return FALSE;
    *message = taken;
    CallHooks(*message, flags == PM_REMOVE);
    return TRUE;
}

BOOL GetMessageW(MSG* message, HWND window, UINT first, UINT last) {
    if (window != nullptr && platform::RequireWindow(window) == nullptr) return -1;
    while (!PeekMessageW(message, window, first, last, PM_REMOVE)) {
        auto next = Clock::time_point::max();
        for (const Timer& timer : timers) {
            const MSG coming = {timer.window, WM_TIMER, timer.id, 0, 0, {0, 0}};
            if (IsAsked(coming, window, first, last)) next = std::min(next, timer.due);
        }
        if (next == Clock::time_point::max()) {
            SetLastError(ERROR_NO_MORE_ITEMS);
            return -1;
        }
        std::this_thread::sleep_until(next);
    }
    return message->message != WM_QUIT;
}

BOOL TranslateMessage(const MSG* message) {
    return message->message == WM_KEYDOWN;
}

LRESULT DispatchMessageW(const MSG* message) {
    if (message->message == WM_TIMER && message->lParam != 0) {
        reinterpret_cast<TIMERPROC>(message->lParam)(message->hwnd, WM_TIMER, message->wParam,
                                                     TickCount());
        return 0;
    }
    if (message->hwnd == nullptr) return 0;
    return SendMessageW(message->hwnd, message->message, message->wParam, message->lParam);
}

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT ms, TIMERPROC procedure) {
    static UINT_PTR lastId = 0x7000;
    if (window != nullptr && platform::RequireWindow(window) == nullptr) return 0;
    const auto known = FindTimer(window, id);
    if (known != timers.end()) {
        timers.erase(known);
    } else if (window == nullptr) {
        id = ++lastId;
    }
    const std::chrono::milliseconds period(std::max(ms, kShortestPeriodMs));
    timers.push_back({window, id, period, Clock::now() + period, procedure});
    return id != 0 ? id : 1;
}

BOOL KillTimer(HWND window, UINT_PTR id) {
    const auto known = FindTimer(window, id);
    if (known == timers.end()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    timers.erase(known);
    return TRUE;
}

DWORD GetCurrentThreadId() {
    return static_cast<DWORD>(gettid());
}

HHOOK SetWindowsHookExW(int kind, HOOKPROC procedure, HINSTANCE, DWORD thread) {
    static ULONG_PTR lastHandle = 0x100;
    if (kind != WH_GETMESSAGE || procedure == nullptr || thread != GetCurrentThreadId()) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    hooks.push_back({reinterpret_cast<HHOOK>(++lastHandle), procedure});
    return hooks.back().handle;
}

BOOL UnhookWindowsHookEx(HHOOK hook) {
    if (std::erase_if(hooks, [&](const Hook& one) { return one.handle == hook; }) > 0) return TRUE;
    SetLastError(ERROR_INVALID_HOOK_HANDLE);
    return FALSE;
}

// As on Windows the place in the chain is that of the hook that is running; the handle tells
// nothing.
LRESULT CallNextHookEx(HHOOK, int code, WPARAM wParam, LPARAM lParam) {
    return running != nullptr ? CallHookOlderThan(running, code, wParam, lParam) : 0;
}

int CountOpenHandles() {
    return static_cast<int>(timers.size() + hooks.size()) + openKeyCount;
}
