// Listens to the search of a found dialog: from its timer message on, what the search gives to the
// dialog comes by here.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "found/found_dialog.h"

class SearchTap final : public SRxSearchSink {
public:
    SearchTap() {
        current_ = this;
        hook_ = SetWindowsHookExW(WH_GETMESSAGE, Attach, nullptr, GetCurrentThreadId());
    }
    ~SearchTap() {
        UnhookWindowsHookEx(hook_);
        current_ = nullptr;
    }
    SearchTap(const SearchTap&) = delete;
    SearchTap& operator=(const SearchTap&) = delete;

    void Begin(SRxSearchRun& run) override { behind_->Begin(run); }
    bool End(SRxSearchRun& run, bool result) override {
        run.sink = behind_;
        return behind_->End(run, result);
    }
    bool OnProgress(SRxSearchRun& run, const WCHAR* path) override {
        return behind_->OnProgress(run, path);
    }
    void OnHit(SRxSearchRun& run, const WCHAR* folder, const WCHAR* name, MDxFileNameNode& node,
               int& insertIndex) override {
        behind_->OnHit(run, folder, name, node, insertIndex);
        hits.push_back(node.GetFileName());
        unseen.push_back(list_->rowsUnseen);
    }
    void OnFolderFailed(const WCHAR* folder) override { behind_->OnFolderFailed(folder); }
    void OnFileInUse(const WCHAR* file) override { behind_->OnFileInUse(file); }
    void OnFileFailed(SRxSearchRun& run, const WCHAR* file, HRESULT status) override {
        behind_->OnFileFailed(run, file, status);
    }
    void OnFile(SRxSearchRun&) override {
        ++files;
        if (onFile) onFile(*list_);
    }

    std::size_t files = 0;
    std::vector<WText> hits;
    std::vector<bool> unseen;  // behind each hit: whether a row waits to be painted
    std::function<void(SRxFoundList&)> onFile;  // before each is tested

private:
    static LRESULT CALLBACK Attach(int code, WPARAM wParam, LPARAM lParam) {
        const MSG& message = *reinterpret_cast<const MSG*>(lParam);
        const bool starts = code >= 0 && wParam == PM_REMOVE && message.message == WM_TIMER &&
                            message.wParam == kFoundTimer;
        auto* list =
            starts ? reinterpret_cast<SRxFoundList*>(GetWindowLongPtrW(message.hwnd, DWLP_USER))
                   : nullptr;
        // A timer message in mid-search starts nothing.
        if (list != nullptr && list->stage == eFoundStage::Prepared) {
            current_->list_ = list;
            current_->behind_ = list->run.sink;
            list->run.sink = current_;
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline SearchTap* current_ = nullptr;
    HHOOK hook_ = nullptr;
    SRxFoundList* list_ = nullptr;
    SRxSearchSink* behind_ = nullptr;
};
