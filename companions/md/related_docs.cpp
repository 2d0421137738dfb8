// The documents that a document refers to, as its References stream names them.
#include <memory>

#include "companions/md/document/references.h"
#include "companions/md/file_facts.h"
#include "platform/native_path.h"
#include "platform/wtext.h"

namespace {

// The folder of a path with its backslash; empty without one.
WText FolderOf(const WCHAR* path) {
    return WText(path, static_cast<std::size_t>(PathFindFileNameW(path) - path));
}

// Where the document is now: beside the one that refers to it, or where it was at the last saving.
// Empty when it is at neither place. A full path that isn't whole could mean any place.
WText Locate(const WText& folder, const mddoc::DocumentReference& reference) {
    if (!reference.relativePath.empty()) {
        const WText relative = FullWidePath(folder + reference.relativePath);
        if (!relative.empty() && IsPlainFile(relative)) return relative;
    }
    if (IsAbsoluteWidePath(reference.fullPath)) {
        const WText full = FullWidePath(reference.fullPath);
        if (!full.empty() && IsPlainFile(full)) return full;
    }
    return {};
}

}  // namespace

HRESULT MDxFileNameNode::GetRelatedDocs(MDxFileNameNode** docs, unsigned, int, IQxLecternServer*) {
    *docs = nullptr;
    missingDocs_.clear();
    mddoc::DocumentProperties document;
    HRESULT status = document.Open(NativePathFromWide(fileName_));
    if (status < 0) return status;
    std::vector<mddoc::DocumentReference> references;
    status = mddoc::ReadReferences(document, references);
    if (status < 0) return status;
    const WText folder = FolderOf(fileName_.c_str());
    for (const mddoc::DocumentReference& reference : references) {
        const WText path = Locate(folder, reference);
        if (!path.empty()) {
            auto node = std::make_unique<MDxFileNameNode>(path.c_str(), -1, inApp_);
            if (node->AddFileNodeUnique(docs)) (void)node.release();
        } else if (!reference.relativePath.empty()) {
            const WText expected = FullWidePath(folder + reference.relativePath);
            missingDocs_.emplace_back(expected.c_str());
        } else {
            missingDocs_.emplace_back(reference.fullPath.c_str());
        }
    }
    return S_OK;
}
