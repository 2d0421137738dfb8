#include <memory>
#include <utility>

#include "module/file_chain.h"
#include "module/text_lengths.h"
#include "outside/blx_directory_search.h"
#include "platform/native_path.h"
#include "search/file_faults.h"
#include "search/search.h"
#include "search/search_sink.h"
#include "search/unsearched_folders.h"

namespace {

// With the wildcard, without the terminator.
constexpr std::size_t kMaxPattern = 260;

// The pattern that lists `path`; its length without the star is that of the folder's prefix.
BLxWString PatternOf(const WCHAR* path) {
    BLxWString pattern = path;
    const WCHAR last = pattern.empty() ? WCHAR{0} : pattern.back();
    if (last == '*') return pattern;
    if (last != '\\') pattern += static_cast<WCHAR>('\\');
    pattern += static_cast<WCHAR>('*');
    return pattern;
}

// Tests the files of one folder that is being listed, and gathers its subfolders.
class FolderWalk {
public:
    // `newFolders` null: subfolders aren't asked for.
    FolderWalk(SRxSearchRun& run, const BLxWString& prefix, MDxFileNameNode** newFolders,
               bool needProperties, int& insertIndex)
        : run_(run),
          prefix_(prefix),
          fullName_(prefix),
          newFolders_(newFolders),
          needProperties_(needProperties),
          insertIndex_(insertIndex) {
        fullName_.reserve(prefix.size() + kPathLength);
    }

    void Take(const BLxWString& entry, bool isDirectory, bool isPlainFile) {
        if (!inFolder_) {
            // A tested file's own folder is the current one. A pump may change it, so it is set
            // again after one.
            SetCurrentDirectoryW(prefix_.c_str());
            inFolder_ = true;
        }
        fullName_.resize(prefix_.size());
        fullName_ += entry;
        if (!isDirectory) {
            const auto said = [this] {
                return run_.sharingMessageShown + run_.failureMessageShown;
            };
            const int before = said();
            ForFile(run_, fullName_.c_str(), [&] {
                MDxFileNameNode node(fullName_.c_str(), -1, run_.query.inApp);
                node.isPlainFile = isPlainFile;
                TestFile(run_, prefix_.c_str(), entry.c_str(), &node, needProperties_,
                         insertIndex_);
            });
            // A message box pumps as well.
            if (said() != before) inFolder_ = false;
        } else if (newFolders_ != nullptr && !IsUnsearchedFolder(entry)) {
            TakeFolder();
        }
        if (++tick_ > 10) {
            bool pumped = false;
            ShowProgress(run_, prefix_.c_str(), &pumped);
            if (pumped) inFolder_ = false;
            tick_ = 0;
        }
    }

private:
    void TakeFolder() {
        try {
            auto folder =
                std::make_unique<MDxFileNameNode>(fullName_.c_str(), -1, run_.query.inApp);
            folder->AddFileNode(newFolders_);
            (void)folder.release();
        } catch (...) {
            run_.sink->OnFolderFailed(fullName_.c_str());
        }
    }

    SRxSearchRun& run_;
    const BLxWString& prefix_;
    BLxWString fullName_;
    MDxFileNameNode** newFolders_;
    bool needProperties_;
    int& insertIndex_;
    bool inFolder_ = false;
    int tick_ = 0;
};

// A folder that was walked is not looked at again: memory holds those that wait, and the root.
MDxFileNameNode* DropVisited(SRxSearchRun& run, MDxFileNameNode& visited) {
    MDxFileNameNode* next = visited.GetNextNode();
    if (&visited == run.rootNode) return next;
    visited.SetNextNode(nullptr);
    run.rootNode->SetNextNode(next);
    delete &visited;
    return next;
}

}  // namespace

bool WalkDirectory(SRxSearchRun& run, const WCHAR* path, LONG subfolders, bool needProperties,
                   int& insertIndex, MDxFileNameNode** newFolders) {
    if (newFolders != nullptr) *newFolders = nullptr;
    if (path == nullptr) return false;
    const BLxWString pattern = PatternOf(path);
    if (pattern.size() > kMaxPattern) {
        run.sink->OnFolderFailed(pattern.c_str());
        return false;
    }
    DirectorySearch search(pattern.c_str(), false);
    // The place itself may be a link. A folder below was none when it was found.
    const bool isPlace = run.rootNode == nullptr || WTextView(run.rootNode->GetFileName()) == path;
    if (!isPlace) search.RefuseLink();
    const BLxWString prefix(pattern, 0, pattern.size() - 1);
    FolderWalk walk(run, prefix, subfolders > 0 ? newFolders : nullptr, needProperties,
                    insertIndex);
    const BLxWString* entry = &search.Start();
    const bool listed = !search.Done();
    search.SetSkipDots(true);
    for (; !search.Done(); entry = &search.Next()) {
        if (!search.IsDot()) {
            walk.Take(*entry, search.IsDirectory(), search.IsPlainFile());
        }
    }
    // A listing that broke off has given what it could; the rest of the folder is missing.
    if (!listed || search.Failed()) run.sink->OnFolderFailed(prefix.c_str());
    return listed;
}

bool SearchFolders(SRxSearchRun& run, LONG subfolders, bool needProperties) {
    const BLxWString text = run.source->LookIn();
    if (text.empty()) return false;
    if (text.size() >= kPathLength) {
        // Cutting it would search another folder.
        run.sink->OnFolderFailed(text.c_str());
        return false;
    }
    RememberRecentPath(run, text.c_str());
    // The current folder changes on the way, so a path from it is made whole at the start.
    const WText root = IsAbsoluteWidePath(text) ? WText(text) : FullWidePath(WText(text));
    if (root.empty()) {
        // The current folder is gone; an empty path would be the root of all.
        run.sink->OnFolderFailed(text.c_str());
        return false;
    }
    run.rootNode = new MDxFileNameNode(root.c_str(), -1, run.query.inApp);
    bool result = true;
    int insertIndex = 0;
    for (MDxFileNameNode* current = run.rootNode; !run.stopRequested && current != nullptr;) {
        ChainOwner newFolders;
        try {
            run.sink->OnFolder(run, current->GetFileName());
            if (!ShowProgress(run, current->GetFileName())) break;
            result = WalkDirectory(run, current->GetFileName(), subfolders, needProperties,
                                   insertIndex, &newFolders.head);
        } catch (...) {
            // The subfolders that were found before are searched all the same.
            run.sink->OnFolderFailed(current->GetFileName());
            result = false;
        }
        if (newFolders.head != nullptr) {
            // Right behind the present folder, in front of what waits already: depth first.
            if (MDxFileNameNode* rest = current->GetNextNode()) rest->AddFileNode(&newFolders.head);
            current->SetNextNode(std::exchange(newFolders.head, nullptr));
        }
        current = DropVisited(run, *current);
    }
    const BLxWString after = run.source->LookIn();
    SetCurrentDirectoryW(after == text ? root.c_str() : after.c_str());
    return result;
}
