// Native build: a window as an object, and the table of all windows. A handle is a number that is
// never given twice, so that a stale one is told from a live one.
#pragma once

#include <memory>
#include <vector>

#include "platform/win.h"
#include "platform/windows/system_names.h"
#include "platform/wtext.h"

namespace platform {

// What the dialog's keyboard takes a control for.
enum class eRole { other, pushButton, defaultButton, radioButton };

class Window {
public:
    virtual ~Window() = default;
    // The class's answer to a message; here what every window does with its text.
    virtual LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam);
    // Called once, behind the window's entry into the tree: the place for children of its own.
    virtual void OnCreated() {}
    virtual bool IsDialog() const { return false; }
    virtual eRole Role() const { return eRole::other; }
    virtual void MakeDefault(bool) {}  // of a push button

    bool Has(DWORD bits) const { return (style & bits) == bits; }
    bool IsChild() const { return Has(WS_CHILD); }
    // Sends WM_COMMAND with this control's number to the parent.
    void NotifyParent(WORD code) const;

    HWND handle = nullptr;
    HWND parent = nullptr;  // of a popup: the owner
    INT_PTR id = 0;
    DWORD style = 0;
    DWORD helpId = 0;
    RECT place = {};  // in the parent's client area; of a popup on the screen
    WText text;
    LPARAM icons[2] = {};        // small and big; the window doesn't own them
    std::vector<HWND> children;  // in the order of their making; without owned popups
};

// Copies a text out as WM_GETTEXT does: at most cch units with the terminator.
LRESULT CopyWindowText(const WText& text, WPARAM cch, LPARAM buffer);

// Null when there is no such window.
std::shared_ptr<Window> FindWindowObject(HWND handle);
// As FindWindowObject; sets the last error when there is none.
std::shared_ptr<Window> RequireWindow(HWND handle);

struct WindowPlan {
    WTextView className;
    LPCWSTR text;
    DWORD style;
    int x, y, width, height;
    HWND parent;
    INT_PTR id;
};
// Null and the last error for an unknown class.
std::shared_ptr<Window> MakeWindow(const WindowPlan& plan);
// Gives a window of any kind its handle and its place in the tree.
void EnterTree(const std::shared_ptr<Window>& window, const WindowPlan& plan);

// `window` or one of its parents is `ancestor`.
bool IsWithin(HWND window, HWND ancestor);
// The children of the dialog that are in one group with the control.
std::vector<HWND> GroupOf(HWND dialog, HWND control);
// The numbers of a dialog (DWLP_...).
LONG_PTR GetDialogNumber(Window& dialog, int index);
LONG_PTR SetDialogNumber(Window& dialog, int index, LONG_PTR value);

// The queue's and the focus's share of a window's end.
void ForgetMessagesOf(HWND window);
void ForgetFocusOf(HWND window);

// The control classes, each in the file of its name.
std::shared_ptr<Window> MakeButton();
std::shared_ptr<Window> MakeEdit();
std::shared_ptr<Window> MakeComboBox();
std::shared_ptr<Window> MakeListBox();
std::shared_ptr<Window> MakeListView();
std::shared_ptr<Window> MakeStatusBar();
std::shared_ptr<Window> MakeDateField();

}  // namespace platform
