// Carries a caller's private data through an interface that has only text fields. All carriers of
// one call share a counted block; the pointer that travels is the address of that block. In: the
// reading server and the colour names. Out: the criteria that a search left to the caller.
#pragma once

#include <cstddef>
#include <vector>

#include "module/module_api.h"
#include "outside/blx_string.h"
#include "outside/md_server.h"

enum class eSkippedKind : unsigned { Plain = 0, FileType = 1, YesNo = 2 };

// One reduced criterion. Destroying a link destroys all links behind it.
struct SRxSkippedCritNode {
    SRxSkippedCritNode(unsigned join, eSkippedKind what) : joinType(join), kind(what) {}
    ~SRxSkippedCritNode();
    SRxSkippedCritNode(const SRxSkippedCritNode&) = delete;
    SRxSkippedCritNode& operator=(const SRxSkippedCritNode&) = delete;

    SRxSkippedCritNode* next = nullptr;
    unsigned joinType;
    eSkippedKind kind;
    union {
        unsigned fileTypeCode = 0;  // FileType
        bool flag;                  // YesNo; the other bytes are zero
    };
};

struct SRxShellExtParameterBlock;

class SR_API SRxShellExtParameters {
public:
    SRxShellExtParameters();
    SRxShellExtParameters(const SRxShellExtParameters& other);
    // `text` is null or the value of another carrier, which stays alive during the call.
    explicit SRxShellExtParameters(const char* text);
    virtual ~SRxShellExtParameters();
    SRxShellExtParameters& operator=(const SRxShellExtParameters& other);

    bool operator!() const;
    operator const char*() const;

    void Assign(const char* text);
    // Of itself: changes nothing.
    void CopyFrom(const SRxShellExtParameters& other);
    bool IsValid() const;
    // Empties the shared block for all its carriers; the block stays.
    void Clean();
    // Gives up this carrier's reference; true when it was the last one.
    bool Destroy();

    // False when there is no memory for the block.
    bool AddColor(const BLxWString& name, bool atFront);
    void EraseColors();
    void SortColors();
    std::size_t GetColorCount() const;
    // Null out of range; holds until the colours change.
    const BLxWString* GetColor(int index) const;
    bool HaveColors() const;
    // No reference is taken: the caller keeps the server alive.
    bool SetServer(IQxLecternServer* server);
    IQxLecternServer* GetServer() const;
    bool HaveServer() const;
    // The block owns the chain from now on, also an empty one; false leaves it with the caller.
    bool SetCritForSkipped(SRxSkippedCritNode* head);
    SRxSkippedCritNode* GetCritForSkipped() const;
    bool HaveCritForSkipped() const;

protected:
    bool Create();
    void Initialize();

private:
    SRxShellExtParameterBlock* block = nullptr;
    bool valid = false;
};

struct SRxShellExtParameterBlock {
    unsigned refCount = 1;
    std::vector<BLxWString> colors;
    bool haveServer = false;
    IQxLecternServer* server = nullptr;
    SRxSkippedCritNode* skippedCriteria = nullptr;

    ~SRxShellExtParameterBlock() { delete skippedCriteria; }
};
