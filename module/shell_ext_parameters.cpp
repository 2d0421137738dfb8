#include "module/shell_ext_parameters.h"

#include <algorithm>
#include <new>
#include <utility>

SRxSkippedCritNode::~SRxSkippedCritNode() {
    for (SRxSkippedCritNode* link = std::exchange(next, nullptr); link != nullptr;) {
        delete std::exchange(link, std::exchange(link->next, nullptr));
    }
}

SRxShellExtParameters::SRxShellExtParameters() = default;

SRxShellExtParameters::SRxShellExtParameters(const SRxShellExtParameters& other) {
    CopyFrom(other);
}

SRxShellExtParameters::SRxShellExtParameters(const char* text) {
    Assign(text);
}

SRxShellExtParameters::~SRxShellExtParameters() {
    Destroy();
}

SRxShellExtParameters& SRxShellExtParameters::operator=(const SRxShellExtParameters& other) {
    CopyFrom(other);
    return *this;
}

bool SRxShellExtParameters::operator!() const {
    return !valid;
}

SRxShellExtParameters::operator const char*() const {
    return valid ? reinterpret_cast<const char*>(block) : nullptr;
}

void SRxShellExtParameters::Assign(const char* text) {
    // The new reference first: the text may be this carrier's own block.
    auto* shared = reinterpret_cast<SRxShellExtParameterBlock*>(const_cast<char*>(text));
    if (shared != nullptr) ++shared->refCount;
    Destroy();
    block = shared;
    valid = shared != nullptr;
}

void SRxShellExtParameters::CopyFrom(const SRxShellExtParameters& other) {
    if (&other != this) Assign(other);
}

bool SRxShellExtParameters::IsValid() const {
    return valid;
}

void SRxShellExtParameters::Clean() {
    if (!valid) return;
    delete std::exchange(block->skippedCriteria, nullptr);
    block->haveServer = false;
    block->colors.clear();
}

bool SRxShellExtParameters::Destroy() {
    if (!valid) return false;
    const bool last = --block->refCount == 0;
    if (last) delete block;
    Initialize();
    return last;
}

bool SRxShellExtParameters::Create() {
    if (valid) return true;
    block = new (std::nothrow) SRxShellExtParameterBlock;
    valid = block != nullptr;
    return valid;
}

void SRxShellExtParameters::Initialize() {
    block = nullptr;
    valid = false;
}

bool SRxShellExtParameters::AddColor(const BLxWString& name, bool atFront) {
    if (!Create()) return false;
    block->colors.insert(atFront ? block->colors.begin() : block->colors.end(), name);
    return true;
}

void SRxShellExtParameters::EraseColors() {
    if (valid) block->colors.clear();
}

void SRxShellExtParameters::SortColors() {
    if (valid) std::sort(block->colors.begin(), block->colors.end());
}

std::size_t SRxShellExtParameters::GetColorCount() const {
    return valid ? block->colors.size() : 0;
}

const BLxWString* SRxShellExtParameters::GetColor(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= GetColorCount()) return nullptr;
    return &block->colors[static_cast<std::size_t>(index)];
}

bool SRxShellExtParameters::HaveColors() const {
    return GetColorCount() != 0;
}

bool SRxShellExtParameters::SetServer(IQxLecternServer* server) {
    if (!Create()) return false;
    block->server = server;
    block->haveServer = true;
    return true;
}

IQxLecternServer* SRxShellExtParameters::GetServer() const {
    return HaveServer() ? block->server : nullptr;
}

bool SRxShellExtParameters::HaveServer() const {
    return valid && block->haveServer;
}

bool SRxShellExtParameters::SetCritForSkipped(SRxSkippedCritNode* head) {
    if (!Create()) return false;
    delete std::exchange(block->skippedCriteria, head);
    return true;
}

SRxSkippedCritNode* SRxShellExtParameters::GetCritForSkipped() const {
    return valid ? block->skippedCriteria : nullptr;
}

bool SRxShellExtParameters::HaveCritForSkipped() const {
    return GetCritForSkipped() != nullptr;
}
