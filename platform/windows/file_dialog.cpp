// Native build: the dialog for a file to open or to save. A window with the caller's hook within
// stands while the desk is asked; every check of an answer is made that the flags call for.
#include "platform/native_path.h"
#include "platform/windows/common_dialogs_api.h"
#include "platform/windows/desk_native.h"
#include "platform/windows/dialog.h"

namespace platform {

namespace {

constexpr DWORD kKnownFlags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                              OFN_ENABLEHOOK | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST |
                              OFN_NOREADONLYRETURN | OFN_EXPLORER;

thread_local DWORD lastError = 0;

INT_PTR CALLBACK AnswerNothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

// The caller's hook: a dialog within the dialog.
class HookDialog : public Dialog {
public:
    explicit HookDialog(LPOFNHOOKPROC hook) : Dialog(AnswerNothing, true), hook_(hook) {}
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override {
        const auto answer = static_cast<LRESULT>(hook_(handle, message, wParam, lParam));
        if (message == WM_INITDIALOG) return answer;
        if (answer != 0) return 0;
        return Window::Receive(message, wParam, lParam);
    }

private:
    LPOFNHOOKPROC hook_;
};

WText FilterNames(LPCWSTR filter) {
    WText names;
    while (filter != nullptr && *filter != 0) {
        const WTextView name(filter);
        const WTextView pattern(filter + name.size() + 1);
        names += WText(name) + TEXT("|");
        filter = pattern.data() + pattern.size() + 1;
    }
    return names;
}

WText FolderOf(WText path) {
    PathRemoveFileSpecW(path.data());
    path.resize(WTextView(path.c_str()).size());
    return path;
}

class FileDialog {
public:
    FileDialog(OPENFILENAMEW& request, bool saving);
    ~FileDialog() {
        if (IsWindow(window_)) DestroyWindow(window_);
    }
    FileDialog(const FileDialog&) = delete;
    FileDialog& operator=(const FileDialog&) = delete;
    bool Run(Desk& desk);

private:
    void OpenHook();
    WText WholePath(const WText& answer) const;
    bool Accepts(const WText& path) const;
    bool Store(const WText& path) const;

    OPENFILENAMEW& request_;
    bool saving_;
    DisabledOwner owner_;
    WText title_;
    WText folder_;
    HWND window_ = nullptr;
};

// Without the point that it may have in front; empty for none.
LPCWSTR DefaultExtension(const OPENFILENAMEW& request) {
    if (request.lpstrDefExt == nullptr) return TEXT("");
    return request.lpstrDefExt + (*request.lpstrDefExt == '.' ? 1 : 0);
}

FileDialog::FileDialog(OPENFILENAMEW& request, bool saving)
    : request_(request), saving_(saving), owner_(request.hwndOwner) {
    title_ = request.lpstrTitle != nullptr ? request.lpstrTitle
             : saving                      ? TEXT("Save As")
                                           : TEXT("Open");
    const LPCWSTR initial = request.lpstrInitialDir;
    folder_ =
        initial != nullptr && PathIsDirectoryW(initial) ? WText(initial) : CurrentWideFolder();
    const auto window = std::make_shared<Dialog>(AnswerNothing, true);
    EnterTree(window, {TEXT(""), title_.c_str(), WS_POPUP | WS_CAPTION | WS_VISIBLE, 0, 0, 500, 300,
                       request.hwndOwner, 0});
    window_ = window->handle;
}

void FileDialog::OpenHook() {
    if ((request_.Flags & OFN_ENABLEHOOK) == 0) return;
    const auto hook = std::make_shared<HookDialog>(request_.lpfnHook);
    EnterTree(hook, {TEXT(""), nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, window_, 0});
    SendMessageW(hook->handle, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(&request_));
    OFNOTIFYW notice{};
    notice.hdr = {window_, 0, CDN_INITDONE};
    notice.lpOFN = &request_;
    SendMessageW(hook->handle, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
}

// With the default extension, where it has none.
WText FileDialog::WholePath(const WText& answer) const {
    const bool isWhole = answer.size() > 1 && (answer[1] == ':' || answer[0] == '\\');
    WText given = answer;
    if (!isWhole) {
        given = folder_;
        if (given.back() != '\\') given += TEXT("\\");
        given += answer;
    }
    WText path = FullWidePath(given);
    if (path.empty()) return {};
    const LPCWSTR extension = DefaultExtension(request_);
    if (*extension != 0 && *PathFindExtensionW(path.c_str()) == 0 &&
        !PathIsDirectoryW(path.c_str())) {
        path += TEXT(".");
        path += extension;
    }
    return path;
}

bool FileDialog::Accepts(const WText& path) const {
    const bool exists = PathFileExistsW(path.c_str()) != FALSE;
    const auto complain = [&](LPCWSTR text) {
        MessageBoxW(window_, (path + TEXT("\n") + text).c_str(), title_.c_str(),
                    MB_OK | MB_ICONWARNING);
        return false;
    };
    if ((request_.Flags & (OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST)) != 0 &&
        !PathIsDirectoryW(FolderOf(path).c_str())) {
        return complain(TEXT("There is no such folder."));
    }
    if (!saving_ && (request_.Flags & OFN_FILEMUSTEXIST) != 0 && !exists) {
        return complain(TEXT("There is no such file."));
    }
    if (saving_ && exists && (request_.Flags & OFN_OVERWRITEPROMPT) != 0 &&
        MessageBoxW(window_, (path + TEXT("\nReplace this file?")).c_str(), title_.c_str(),
                    MB_YESNO | MB_ICONWARNING) != IDYES) {
        return false;
    }
    return true;
}

bool FileDialog::Store(const WText& path) const {
    if (path.size() >= request_.nMaxFile) {
        lastError = FNERR_BUFFERTOOSMALL;
        if (request_.nMaxFile > 0) request_.lpstrFile[0] = static_cast<WCHAR>(path.size() + 1);
        return false;
    }
    path.copy(request_.lpstrFile, path.size());
    request_.lpstrFile[path.size()] = 0;
    if ((request_.Flags & OFN_NOCHANGEDIR) == 0) SetCurrentDirectoryW(FolderOf(path).c_str());
    return true;
}

bool FileDialog::Run(Desk& desk) {
    OpenHook();
    for (bool again = false;; again = true) {
        const WText answer =
            desk.AnswerFileQuestion({title_, FilterNames(request_.lpstrFilter), folder_, again});
        if (answer.empty()) return false;
        const WText path = WholePath(answer);
        if (path.empty()) continue;
        if (PathIsDirectoryW(path.c_str())) {
            folder_ = path;
            continue;
        }
        if (Accepts(path)) return Store(path);
    }
}

BOOL RunFileDialog(OPENFILENAMEW* request, bool saving) {
    lastError = 0;
    Desk* desk = CurrentDesk();
    const bool wantsHook = (request->Flags & OFN_ENABLEHOOK) != 0;
    if (desk == nullptr || request->lStructSize != sizeof(OPENFILENAMEW) ||
        (request->Flags & ~kKnownFlags) != 0 || request->lpstrFile == nullptr ||
        wantsHook != (request->lpfnHook != nullptr) || request->lpstrFileTitle != nullptr ||
        request->lpstrCustomFilter != nullptr || request->lpTemplateName != nullptr) {
        SetLastError(ERROR_NOT_SUPPORTED);
        lastError = CDERR_INITIALIZATION;
        return FALSE;
    }
    return FileDialog(*request, saving).Run(*desk);
}

}  // namespace

}  // namespace platform

BOOL GetOpenFileNameW(LPOPENFILENAMEW request) {
    return platform::RunFileDialog(request, false);
}

BOOL GetSaveFileNameW(LPOPENFILENAMEW request) {
    return platform::RunFileDialog(request, true);
}

DWORD CommDlgExtendedError() {
    return platform::lastError;
}
