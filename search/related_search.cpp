#include "module/running_application.h"
#include "search/search.h"
#include "search/search_observer.h"

namespace {

constexpr unsigned kEveryReference = 15;

// Inside the application the running application answers, else the documents themselves.
HRESULT AskForRelatedDocs(SRxFoundList& list, MDxFileNameNode& node, MDxFileNameNode** docs) {
    if (!node.InApp()) return node.GetRelatedDocs(docs, kEveryReference, 0, list.server);
    Application* application = nullptr;
    HRESULT status = FindRunningApplication(&application);
    if (application == nullptr) return FAILED(status) ? status : E_NOINTERFACE;
    status = node.GetRelatedDocs(*application, docs, kEveryReference, 0);
    application->Release();
    return status;
}

// Hangs the documents that the node refers to right behind it: depth first. A document that can't
// be asked has none.
void AddRelatedDocs(SRxFoundList& list, MDxFileNameNode* node) {
    constexpr unsigned kMayHaveReferences = 1;
    if ((node->relatedFlags & kMayHaveReferences) == 0) return;
    MDxFileNameNode* docs = nullptr;
    const HRESULT status = AskForRelatedDocs(list, *node, &docs);
    if (SRxSearchObserver* const observer = list.dialog->observer) {
        if (status < 0) observer->OnReferencesFailed(node->GetFileName(), status);
        for (const BLxWString& missing : node->MissingRelatedDocs())
            observer->OnReferenceMissing(node->GetFileName(), missing.c_str());
    }
    if (status < 0 || docs == nullptr) return;
    if (MDxFileNameNode* rest = node->GetNextNode()) rest->AddFileNode(&docs);
    node->SetNextNode(docs);
}

}  // namespace

bool SearchRelatedDocs(SRxFoundList& list, bool needProperties) {
    if (list.server == nullptr) list.server = list.dialog->GetServer(nullptr, nullptr, 0);
    const BLxWString text = ReadControlText(list.dialog->dialogWindow, IDC_PATH_LIST);
    ShowProgress(list, text.c_str());
    if (text.empty()) return true;
    RememberRecentFiles(list, text.c_str());
    list.rootNode = new MDxFileNameNode(text.c_str(), -1, list.dialog->InApp());
    int tick = 0;
    int insertIndex = 0;
    BLxWString folder;
    for (MDxFileNameNode* current = list.rootNode; current != nullptr && !list.stopRequested;
         current = current->GetNextNode()) {
        if (++tick > 10) {
            ShowProgress(list, text.c_str());
            tick = 0;
        }
        const WCHAR* name = SplitFullName(current->GetFileName(), folder);
        TestFile(list, folder.c_str(), name, current, needProperties, insertIndex);
        // A document that came by before was asked then: references in a circle come to an end.
        if (!current->FindInListToHere(*list.rootNode)) AddRelatedDocs(list, current);
    }
    return true;
}
