#include <utility>

#include "module/file_chain.h"
#include "module/running_application.h"
#include "platform/native_path.h"
#include "search/file_faults.h"
#include "search/search.h"
#include "search/search_sink.h"

namespace {

constexpr unsigned kEveryReference = 15;

// Inside the application the running application answers, else the documents themselves.
HRESULT AskForRelatedDocs(SRxSearchRun& run, MDxFileNameNode& node, MDxFileNameNode** docs) {
    if (!node.InApp()) return node.GetRelatedDocs(docs, kEveryReference, 0, run.server);
    Application* application = nullptr;
    HRESULT status = FindRunningApplication(&application);
    if (application == nullptr) return FAILED(status) ? status : E_NOINTERFACE;
    status = node.GetRelatedDocs(*application, docs, kEveryReference, 0);
    application->Release();
    return status;
}

// Hangs the documents that the node refers to right behind it: depth first. A document that can't
// be asked has none.
void AddRelatedDocs(SRxSearchRun& run, MDxFileNameNode* node) {
    constexpr unsigned kMayHaveReferences = 1;
    if ((node->relatedFlags & kMayHaveReferences) == 0) return;
    ChainOwner docs;
    const HRESULT status = AskForRelatedDocs(run, *node, &docs.head);
    if (status < 0) run.sink->OnReferencesFailed(node->GetFileName(), status);
    for (const BLxWString& missing : node->MissingRelatedDocs())
        run.sink->OnReferenceMissing(node->GetFileName(), missing.c_str());
    if (status < 0 || docs.head == nullptr) return;
    if (MDxFileNameNode* rest = node->GetNextNode()) rest->AddFileNode(&docs.head);
    node->SetNextNode(std::exchange(docs.head, nullptr));
}

}  // namespace

bool SearchRelatedDocs(SRxSearchRun& run, bool needProperties) {
    if (run.server == nullptr) run.server = run.source->Server();
    const BLxWString text = run.source->LookIn();
    ShowProgress(run, text.c_str());
    if (text.empty()) return true;
    RememberRecentFiles(run, text.c_str());
    // References name their documents by whole paths, and so each document has one name. What the
    // application has open needn't be a file yet.
    WText start = FullWidePath(WText(text));
    if (start.empty()) start = text;
    if (!run.query.inApp && !IsPlainFile(start)) {
        run.sink->OnReferencesFailed(start.c_str(), STG_E_FILENOTFOUND);
        return true;
    }
    run.rootNode = new MDxFileNameNode(start.c_str(), -1, run.query.inApp);
    int tick = 0;
    int insertIndex = 0;
    BLxWString folder;
    for (MDxFileNameNode* current = run.rootNode; current != nullptr && !run.stopRequested;
         current = current->GetNextNode()) {
        // A document that came by before is through: references in a circle come to an end.
        if (current->FindInListToHere(*run.rootNode)) continue;
        if (++tick > 10) {
            ShowProgress(run, start.c_str());
            tick = 0;
        }
        ForFile(run, current->GetFileName(), [&] {
            const WCHAR* name = SplitFullName(current->GetFileName(), folder);
            TestFile(run, folder.c_str(), name, current, needProperties, insertIndex);
            AddRelatedDocs(run, current);
        });
    }
    return true;
}
