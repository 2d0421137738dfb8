#include "outside/blx_directory_search.h"

#include "platform/files/directory_listing.h"

struct DirectorySearch::State {
    WText pattern;
    DirectoryListing listing;
    DirectoryListing::Entry entry{};
    BLxWString name;
    bool supported;
    bool current = false;
    bool skipDots = false;
    bool followsLink = true;

    void Advance();
};

void DirectorySearch::State::Advance() {
    do {
        current = listing.Next(entry);
    } while (current && (entry.isFolderLink || (skipDots && entry.isDot)));
    name.assign(current ? entry.name.data() : TEXT(""), current ? entry.name.size() : 0);
}

DirectorySearch::DirectorySearch(const WCHAR* pattern, bool recursive)
    : state_(std::make_unique<State>()) {
    state_->pattern = pattern;
    state_->supported = !recursive;
}

DirectorySearch::~DirectorySearch() = default;

void DirectorySearch::RefuseLink() {
    state_->followsLink = false;
}

const BLxWString& DirectorySearch::Start() {
    state_->current = false;
    state_->name.clear();
    if (state_->supported && state_->listing.Open(state_->pattern.c_str(), state_->followsLink)) {
        state_->Advance();
    }
    return state_->name;
}

const BLxWString& DirectorySearch::Next() {
    if (state_->current) state_->Advance();
    return state_->name;
}

bool DirectorySearch::Done() const {
    return !state_->current;
}

bool DirectorySearch::Failed() const {
    return state_->listing.Failed();
}

bool DirectorySearch::IsDirectory() const {
    return state_->current && state_->entry.isDirectory;
}

bool DirectorySearch::IsDot() const {
    return state_->current && state_->entry.isDot;
}

bool DirectorySearch::IsPlainFile() const {
    return state_->current && state_->entry.isPlainFile;
}

void DirectorySearch::SetSkipDots(bool skip) {
    state_->skipDots = skip;
}
