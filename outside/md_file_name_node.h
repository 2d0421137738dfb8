// Md.dll: a node of a chain of files, with the facts of its file and the occurrence records that a
// search left on it.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "outside/blx_string.h"
#include "outside/md_crit_node.h"
#include "outside/md_server.h"

struct tagBUILDINFO {
    DWORD major;
    DWORD minor;
    DWORD build;
    DWORD flags;
};

// The numbers of the kinds of document.
enum eDocumentKind {
    eKindAssembly = 0,
    eKindPart = 5,
    eKindDrawing = 10,
    eKindForeignDrawing = 11,  // of another program: told by its extension alone
    eKindPresentation = 15,
    eKindDesignElement = 20,
    eKindNone = 40,  // no document of the product
    eKindWire = 43,
    eKindForeignWire = 44
};

// A node owns what follows it: destroying it destroys the chain behind it, but for a node that
// others hold too (two references or more), which only loses one and stays with its tail. Identity
// on a chain is the exact full name. Appending, unique appending, FindInListToHere over a whole
// chain and destruction take constant time a node; none recurses.
class MD_API MDxFileNameNode {
public:
    // `type` -1: not known yet. No reference is held on the new node.
    MDxFileNameNode(const WCHAR* fileName, int type, bool inApp);
    // Name, type, flags and records of `other`, and a docStatus that its caller set; nothing that
    // was read of the file. The copy stands alone.
    explicit MDxFileNameNode(const MDxFileNameNode* other);
    virtual ~MDxFileNameNode();
    MDxFileNameNode(const MDxFileNameNode&) = delete;
    MDxFileNameNode& operator=(const MDxFileNameNode&) = delete;

    ULONG AddRef() { return ++references_; }
    // Takes one off and returns what is left; destroying at 0 is the caller's.
    ULONG Release() { return references_ > 0 ? --references_ : 0; }
    ULONG GetReferenceCount() const { return references_; }

    const WCHAR* GetFileName() const { return fileName_.c_str(); }
    std::size_t GetFileNameLength() const { return fileName_.size(); }
    MDxFileNameNode* GetNextNode() const { return next_; }
    // What followed before is let go, not destroyed.
    void SetNextNode(MDxFileNameNode* next);

    // Hangs this node, with what follows it, at the end of the chain; sets `*head` when it is null.
    void AddFileNode(MDxFileNameNode** head);
    // Only when no node of this name stands on the chain; false leaves all as it was.
    [[nodiscard]] bool AddFileNodeUnique(MDxFileNameNode** head);
    // This node's name stands in the chain from `head` up to this node, which doesn't count.
    bool FindInListToHere(MDxFileNameNode& head);

    bool InApp() const { return inApp_; }
    // An eDocumentKind or another number of the library: by the extension, else by the root class.
    int GetFileType();
    // By the extension alone; eKindNone for an unknown one.
    int KindByExtension() const;
    // The root class is one of the product's for the kind of file. Both arguments are null.
    bool IsMirelFile(void* reserved1, void* reserved2);
    // Of the last look at the file's root class: negative when the file could not be opened or its
    // root could not be read, so that nothing is known of its kind.
    HRESULT LookStatus() const;
    // What was read of the file is let go; a docStatus that the caller set stays. Besides, the root
    // class is read again whenever the file was saved anew.
    void ForgetFacts();
    // 1,024 bytes a kilobyte; false when the file can't be looked at.
    [[nodiscard]] bool GetFileSizeKB(double& size);
    const GUID& SubType() const { return subType_; }
    // 1 or more: a document of a parts library. 0 until MDxGetFileSubtype or when it is none.
    LONG ContentLibType() const { return contentLibType_; }
    // Fills `docStatus` when the document has one; negative on failure, which leaves it as it was.
    HRESULT GetDocTypeProps(IQxLecternServer* server, tagBUILDINFO* info, void* reserved);

    // New nodes for the documents that this one refers to and that are there, or null; negative on
    // failure. `flags` is 15 and `depth` 0: the direct references of every kind.
    HRESULT GetRelatedDocs(MDxFileNameNode** docs, unsigned flags, int depth,
                           IQxLecternServer* server);
    // The running application answers, from the documents as they are open in it.
    HRESULT GetRelatedDocs(Application& application, MDxFileNameNode** docs, unsigned flags,
                           int depth);
    // The documents that the last GetRelatedDocs didn't find where it refers to them.
    const std::vector<BLxWString>& MissingRelatedDocs() const { return missingDocs_; }

    bool HaveOccCriteria() const { return !records_.empty(); }
    std::vector<MDxCritNode>& GetOccCritList() { return records_; }
    void AddOccCriteria(const MDxCritNode& record) { records_.push_back(record); }

    unsigned relatedFlags = 1;  // bit 0: the file may have related documents
    LONG docStatus = -1;        // -1 unknown, 0, 1
    bool isPlainFile = false;   // its folder's listing said so: its kind needs no look of its own

private:
    struct ChainIndex;
    struct Facts;
    friend MD_API HRESULT MDxGetFileSubtype(MDxFileNameNode& node);
    friend class MDxProperties;

    ChainIndex& Index();
    const GUID& RootClass();

    BLxWString fileName_;
    MDxFileNameNode* next_ = nullptr;
    ULONG references_ = 0;
    int type_;
    bool inApp_;
    LONG contentLibType_ = 0;
    GUID subType_{};
    LONG readDocStatus_ = -1;  // what GetDocTypeProps filled in
    std::vector<MDxCritNode> records_;
    std::vector<BLxWString> missingDocs_;
    std::unique_ptr<ChainIndex> index_;  // of the chain that begins with this node
    ChainIndex* memberOf_ = nullptr;     // the index that has this node, and where
    std::size_t position_ = 0;
    std::unique_ptr<Facts> facts_;
};

// Fills SubType and ContentLibType of the node; negative when the file or one of them can't be
// read.
MD_API HRESULT MDxGetFileSubtype(MDxFileNameNode& node);
