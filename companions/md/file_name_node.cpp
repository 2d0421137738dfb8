// The chain operations of a file node. Facts of the file are in file_facts.cpp.
#include "outside/md_file_name_node.h"

#include <string_view>
#include <unordered_map>
#include <utility>

#include "companions/md/file_facts.h"

namespace {

// Every change that can take a node out of a chain: a link that is replaced, a linked node that is
// destroyed. Hanging a node on at the end takes none out. There is one thread.
unsigned long linkChanges = 0;
// The node whose link the last change replaced; null when it destroyed a node.
const MDxFileNameNode* lastRelinked = nullptr;

void NoteChange(const MDxFileNameNode* relinked) {
    ++linkChanges;
    lastRelinked = relinked;
}

}  // namespace

// What is known of the chain that begins with the node that owns this. Its pointers hold only while
// no link has changed since; then it is worked out anew.
struct MDxFileNameNode::ChainIndex {
    unsigned long changes = linkChanges;
    MDxFileNameNode* tail = nullptr;       // the end when it was last looked for
    MDxFileNameNode* lastNamed = nullptr;  // `names` has all from the head to this node
    std::unordered_map<std::basic_string_view<WCHAR>, MDxFileNameNode*> names;  // the first of each

    // Names the node behind the last named one; null at the end of the chain.
    MDxFileNameNode* NameNext(MDxFileNameNode& head) {
        MDxFileNameNode* node = lastNamed == nullptr ? &head : lastNamed->next_;
        if (node != nullptr) {
            names.emplace(node->fileName_, node);
            lastNamed = node;
        }
        return node;
    }

    // The one change was right behind the named range, as when a walk hangs new nodes behind the
    // node that it has reached: the names stand, the end doesn't.
    bool NamesStand() const {
        return linkChanges == changes + 1 && lastNamed != nullptr && lastRelinked != nullptr &&
               (lastRelinked == lastNamed || lastRelinked == lastNamed->next_);
    }
};

MDxFileNameNode::MDxFileNameNode(const WCHAR* fileName, int type, bool inApp)
    : fileName_(fileName), type_(type), inApp_(inApp) {}

MDxFileNameNode::MDxFileNameNode(const MDxFileNameNode* other)
    : relatedFlags(other->relatedFlags),
      docStatus(other->docStatus),
      fileName_(other->fileName_),
      type_(other->type_),
      inApp_(other->inApp_),
      contentLibType_(other->contentLibType_),
      subType_(other->subType_),
      records_(other->records_) {}

MDxFileNameNode::~MDxFileNameNode() {
    if (linked_) NoteChange(nullptr);
    MDxFileNameNode* node = std::exchange(next_, nullptr);
    while (node != nullptr) {
        if (node->references_ > 1) {
            // Someone else holds it: it lives on, with its tail.
            --node->references_;
            return;
        }
        MDxFileNameNode* following = std::exchange(node->next_, nullptr);
        delete node;
        node = following;
    }
}

void MDxFileNameNode::SetNextNode(MDxFileNameNode* next) {
    if (next == next_) return;
    if (next_ != nullptr) NoteChange(this);
    next_ = next;
    linked_ = true;
    if (next != nullptr) next->linked_ = true;
}

MDxFileNameNode::ChainIndex& MDxFileNameNode::IndexAsHead() {
    if (index_ == nullptr) index_ = std::make_unique<ChainIndex>();
    if (index_->changes == linkChanges) return *index_;
    if (index_->NamesStand()) {
        index_->tail = nullptr;
        index_->changes = linkChanges;
    } else {
        *index_ = ChainIndex{};
    }
    return *index_;
}

void MDxFileNameNode::AddFileNode(MDxFileNameNode** head) {
    if (*head == nullptr) {
        *head = this;
        return;
    }
    ChainIndex& index = (*head)->IndexAsHead();
    if (index.tail == nullptr) index.tail = *head;
    while (index.tail->next_ != nullptr)
        index.tail = index.tail->next_;
    index.tail->SetNextNode(this);
    index.tail = this;
}

bool MDxFileNameNode::AddFileNodeUnique(MDxFileNameNode** head) {
    if (*head != nullptr) {
        ChainIndex& index = (*head)->IndexAsHead();
        while (index.NameNext(**head) != nullptr)
            continue;
        if (index.names.count(fileName_) != 0) return false;
    }
    AddFileNode(head);
    return true;
}

bool MDxFileNameNode::FindInListToHere(MDxFileNameNode& head) {
    ChainIndex& index = head.IndexAsHead();
    // The first node of a name stands in front of every other; so far as the chain is named.
    for (;;) {
        const auto first = index.names.find(fileName_);
        if (first != index.names.end()) return first->second != this;
        if (index.NameNext(head) == nullptr) return false;  // not on this chain
    }
}
