// Chains of files whose nodes hold references.
#pragma once

#include <utility>

#include "outside/md_file_name_node.h"

// Gives up one reference on a chain (may be null) and frees it with the last. The pointer is null
// afterwards.
inline void ReleaseChain(MDxFileNameNode*& chain) {
    MDxFileNameNode* const head = std::exchange(chain, nullptr);
    if (head != nullptr && head->Release() == 0) delete head;
}

// A chain of nodes on its way.
struct ChainOwner {
    ChainOwner() = default;
    ~ChainOwner() { delete head; }
    ChainOwner(const ChainOwner&) = delete;
    ChainOwner& operator=(const ChainOwner&) = delete;

    MDxFileNameNode* head = nullptr;
};
