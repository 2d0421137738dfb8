// Native build: the dialog for a folder, the list of ids that it gives, and the allocator of that.
#include <cstdlib>
#include <cstring>

#include "platform/native_path.h"
#include "platform/windows/common_dialogs_api.h"
#include "platform/windows/desk_native.h"
#include "platform/windows/dialog.h"

// One id, its length in bytes first, and a length of 0 behind it. The id is the path.
struct ITEMIDLIST {
    WORD bytes;
    WCHAR path[1];
};

namespace platform {

namespace {

class Allocator final : public IMalloc {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppv) override {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    void STDMETHODCALLTYPE Free(void* block) override { std::free(block); }
};

Allocator& TheAllocator() {
    static Allocator allocator;
    return allocator;
}

// Null when out of memory, and for a path that an id can't hold.
LPITEMIDLIST MakeList(const WText& path) {
    const std::size_t bytes = sizeof(WORD) + (path.size() + 1) * sizeof(WCHAR);
    if (bytes > 0xFFFF) return nullptr;
    auto* list = static_cast<std::byte*>(std::calloc(1, bytes + sizeof(WORD)));
    if (list == nullptr) return nullptr;
    const auto length = static_cast<WORD>(bytes);
    std::memcpy(list, &length, sizeof length);
    std::memcpy(list + sizeof(WORD), path.c_str(), (path.size() + 1) * sizeof(WCHAR));
    return reinterpret_cast<LPITEMIDLIST>(list);
}

INT_PTR CALLBACK AnswerNothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

class FolderDialog : public Dialog {
public:
    explicit FolderDialog(const BROWSEINFOW& request)
        : Dialog(AnswerNothing, true), request_(request) {}
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case BFFM_SETSELECTIONW:
                // A list of ids, with a false wParam, is given by nobody.
                return wParam != FALSE && lParam != 0 && Select(reinterpret_cast<LPCWSTR>(lParam));
            case BFFM_ENABLEOK:
                EnableWindow(GetDlgItem(handle, IDOK), lParam != 0);
                return 0;
            default:
                return Dialog::Receive(message, wParam, lParam);
        }
    }
    void OnCreated() override {
        MakeWindow({TEXT("Button"), TEXT("OK"), WS_CHILD | WS_VISIBLE | BS_DEFPUSHBUTTON, 0, 270,
                    80, 23, handle, IDOK});
    }
    LPITEMIDLIST Run(Desk& desk);

private:
    void CallBack(UINT message, LPARAM lParam) const {
        if (request_.lpfn != nullptr) request_.lpfn(handle, message, lParam, request_.lParam);
    }
    bool Select(const WText& folder);

    const BROWSEINFOW& request_;
    WText selected_;
};

bool FolderDialog::Select(const WText& folder) {
    if (!PathIsDirectoryW(folder.c_str())) return false;
    WText path = FullWidePath(folder);
    // The root of a drive alone ends in a backslash.
    if (path.size() > 3 && path.back() == '\\') path.pop_back();
    selected_ = path;
    const LPITEMIDLIST list = MakeList(selected_);
    CallBack(BFFM_SELCHANGED, reinterpret_cast<LPARAM>(list));
    std::free(list);
    return true;
}

LPITEMIDLIST FolderDialog::Run(Desk& desk) {
    CallBack(BFFM_INITIALIZED, 0);
    for (bool again = false;; again = true) {
        const WText answer = desk.AnswerFolderQuestion(
            {request_.lpszTitle != nullptr ? request_.lpszTitle : TEXT(""), selected_, again});
        if (answer.empty()) return nullptr;
        if (!Select(answer) || !IsWindowEnabled(GetDlgItem(handle, IDOK))) continue;
        if (request_.pszDisplayName != nullptr) {
            CopyWindowText(PathFindFileNameW(selected_.c_str()), MAX_PATH,
                           reinterpret_cast<LPARAM>(request_.pszDisplayName));
        }
        return MakeList(selected_);
    }
}

}  // namespace

}  // namespace platform

HRESULT SHGetMalloc(IMalloc** allocator) {
    *allocator = &platform::TheAllocator();
    return S_OK;
}

BOOL SHGetPathFromIDListW(LPCITEMIDLIST list, LPWSTR path) {
    if (path == nullptr) return FALSE;
    *path = 0;
    if (list == nullptr || list->bytes == 0) return FALSE;
    const WTextView folder(list->path);
    if (folder.size() >= MAX_PATH) return FALSE;
    folder.copy(path, folder.size());
    path[folder.size()] = 0;
    return TRUE;
}

LPITEMIDLIST SHBrowseForFolderW(BROWSEINFOW* request) {
    Desk* desk = platform::CurrentDesk();
    if (desk == nullptr || request == nullptr || request->pidlRoot != nullptr ||
        request->ulFlags != (BIF_EDITBOX | BIF_NEWDIALOGSTYLE)) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    const platform::DisabledOwner owner(request->hwndOwner);
    const auto dialog = std::make_shared<platform::FolderDialog>(*request);
    platform::EnterTree(dialog, {TEXT(""), nullptr, WS_POPUP | WS_CAPTION | WS_VISIBLE, 0, 0, 300,
                                 300, request->hwndOwner, 0});
    dialog->OnCreated();
    const LPITEMIDLIST list = dialog->Run(*desk);
    if (IsWindow(dialog->handle)) DestroyWindow(dialog->handle);
    return list;
}
