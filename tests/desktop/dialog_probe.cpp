// Looks into the dialogs of another process from outside, for the desktop story: waits until a fact
// holds, and tells what stands there when it doesn't.
//
//   dialog_probe wait TITLE FACT...    one of: gone, front, focus=ID, on=ID, off=ID, checked=ID,
//                                      text=ID=TEXT, has=ID=TEXT, rows=ID=NUMBER, default=ID
//   dialog_probe show TITLE            prints the texts of the dialog's controls
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host/program_main.h"
#include "platform/win.h"

namespace {

constexpr DWORD kBetweenLooksMs = 20;
constexpr DWORD kLongestMs = 20000;

WText TextOf(HWND window) {
    WText text(2000, 0);
    const auto cch = static_cast<WPARAM>(text.size());
    text.resize(static_cast<std::size_t>(
        SendMessageW(window, WM_GETTEXT, cch, reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::string ClassOf(HWND window) {
    WCHAR name[64] = {};
    GetClassNameW(window, name, 64);
    return wtext::ToUtf8(name);
}

HWND FocusOf(HWND dialog) {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    const DWORD thread = GetWindowThreadProcessId(dialog, nullptr);
    return GetGUIThreadInfo(thread, &info) ? info.hwndFocus : nullptr;
}

LRESULT RowsOf(HWND control) {
    const std::string name = ClassOf(control);
    return SendMessageW(control,
                        name == "ListBox"    ? LB_GETCOUNT
                        : name == "ComboBox" ? CB_GETCOUNT
                                             : LVM_GETITEMCOUNT,
                        0, 0);
}

// A fact is NAME=ID or NAME=ID=TEXT.
bool Holds(HWND dialog, const std::string& fact) {
    if (fact == "gone") return dialog == nullptr;
    if (dialog == nullptr) return false;
    if (fact == "front") return GetForegroundWindow() == dialog;
    const std::size_t first = fact.find('=');
    if (first == std::string::npos) return false;
    const std::size_t second = fact.find('=', first + 1);
    const std::string name = fact.substr(0, first);
    const int id = std::stoi(fact.substr(first + 1));
    const std::string wanted = second == std::string::npos ? "" : fact.substr(second + 1);
    const HWND control = GetDlgItem(dialog, id);
    if (name == "focus") {
        const HWND focus = FocusOf(dialog);
        return focus != nullptr && (focus == control || IsChild(control, focus));
    }
    if (name == "on") return IsWindowEnabled(control) != FALSE;
    if (name == "off") return control != nullptr && !IsWindowEnabled(control);
    if (name == "checked") return SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
    if (name == "text") return wtext::ToUtf8(TextOf(control)) == wanted;
    if (name == "has") return wtext::ToUtf8(TextOf(control)).find(wanted) != std::string::npos;
    if (name == "rows") return RowsOf(control) == std::stol(wanted);
    return name == "default" && LOWORD(SendMessageW(dialog, DM_GETDEFID, 0, 0)) == id;
}

void Show(HWND dialog) {
    const HWND focus = dialog != nullptr ? FocusOf(dialog) : nullptr;
    for (HWND control = dialog != nullptr ? GetWindow(dialog, GW_CHILD) : nullptr;
         control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
        const std::string kind = ClassOf(control);
        std::string line = std::to_string(GetDlgCtrlID(control)) + " " + kind + " \"" +
                           wtext::ToUtf8(TextOf(control)) + "\"";
        if (kind == "ListBox" || kind == "ComboBox" || kind == "SysListView32") {
            line += " rows=" + std::to_string(RowsOf(control));
        }
        if (!IsWindowVisible(control)) line += " hidden";
        if (!IsWindowEnabled(control)) line += " off";
        if (control == focus || (focus != nullptr && IsChild(control, focus))) line += " focus";
        WriteOutput(line + "\n");
    }
}

}  // namespace

int ProgramMain(const std::vector<HostArgument>& arguments) {
    if (arguments.size() < 2) {
        WriteError("usage: dialog_probe wait|show TITLE [FACT...]\n");
        return 2;
    }
    const WText title = wtext::FromUtf8(arguments[1].text);
    const auto dialog = [&] {
        const HWND window = FindWindowW(nullptr, title.c_str());
        return window != nullptr && IsWindowVisible(window) ? window : nullptr;
    };
    if (arguments[0].text == "show") {
        Show(dialog());
        return 0;
    }
    std::string open;
    const DWORD start = GetTickCount();
    do {
        open.clear();
        for (std::size_t at = 2; at < arguments.size(); ++at) {
            if (!Holds(dialog(), arguments[at].text)) open += " " + arguments[at].text;
        }
        if (open.empty()) return 0;
        Sleep(kBetweenLooksMs);
    } while (GetTickCount() - start < kLongestMs);
    WriteError("it doesn't come in \"" + arguments[1].text + "\":" + open + "\n");
    Show(dialog());
    return 1;
}
