// The hits of a search as a chain for the caller: no window, no progress.
#include <memory>

#include "found/found_list.h"
#include "module/message_kinds.h"
#include "outside/md_messages.h"
#include "resource/string_ids.h"

void SRxHitChainSink::Begin(SRxSearchRun&) {
    earlierCursor_ = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
}

bool SRxHitChainSink::End(SRxSearchRun& run, bool result) {
    const bool none = *list_.selectionSlot == nullptr && !run.skippedCriterionSeen;
    if (none && !list_.dialog->IsClosing()) {
        DisplayMessageId(list_.dialog->Resources(), MSG_NO_HITS, MB_OK, eKindInformation,
                         kHelpFoundList, list_.dialog->Window());
    }
    SetCursor(earlierCursor_);
    run.stopRequested = false;
    return list_.dialog->SearchComplete(result);
}

void SRxHitChainSink::OnHit(SRxSearchRun&, const WCHAR*, const WCHAR*, MDxFileNameNode& node,
                            int&) {
    auto copy = std::make_unique<MDxFileNameNode>(&node);
    if (copy->AddFileNodeUnique(list_.selectionSlot)) (void)copy.release();
}

void SRxHitChainSink::OnFolderFailed(const WCHAR* folder) {
    if (list_.dialog->IsClosing()) return;
    DisplayMessageFileName(list_.dialog->Resources(), folder, MSG_PATH_NOT_FOUND, kHelpFind,
                           nullptr, MB_OK);
}

void SRxHitChainSink::OnFileInUse(const WCHAR* file) {
    if (list_.dialog->IsClosing()) return;
    DisplayMessageFileName(list_.dialog->Resources(), file, MSG_FILE_LOCKED, kHelpFoundList,
                           nullptr, MB_OK);
}

void SRxHitChainSink::OnFileFailed(SRxSearchRun& run, const WCHAR* file, HRESULT) {
    if (list_.dialog->IsClosing() || run.failureMessageShown) return;
    DisplayMessageFileName(list_.dialog->Resources(), file, MSG_FILE_FAILED, kHelpFoundList,
                           nullptr, MB_OK);
    run.failureMessageShown = true;
}
