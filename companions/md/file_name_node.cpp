// The chain operations of a file node. Facts of the file are in file_facts.cpp.
#include "outside/md_file_name_node.h"

#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "companions/md/file_facts.h"

// What is known of the chain that begins with the node that owns this: its first nodes, in order,
// and the names of the first of those. A node stands in one index at most. A change of its link, or
// its end, cuts the index there, so that what is left always describes the chain.
struct MDxFileNameNode::ChainIndex {
    explicit ChainIndex(MDxFileNameNode& head) { Take(head); }
    ~ChainIndex() { CutAt(0); }
    ChainIndex(const ChainIndex&) = delete;
    ChainIndex& operator=(const ChainIndex&) = delete;

    MDxFileNameNode& Last() const { return *members.back(); }
    // Takes the node behind the last member in; false at the end of the chain.
    bool Extend() {
        if (Last().next_ == nullptr) return false;
        Take(*Last().next_);
        return true;
    }
    void Take(MDxFileNameNode& node) {
        if (node.memberOf_ != nullptr) node.memberOf_->CutAt(node.position_);
        members.push_back(&node);
        node.memberOf_ = this;
        node.position_ = members.size() - 1;
    }
    // Forgets the member at `position` and all behind it.
    void CutAt(std::size_t position) {
        while (members.size() > position) {
            MDxFileNameNode& node = Last();
            if (named == members.size()) {
                --named;
                const auto first = names.find(node.fileName_);
                if (first != names.end() && first->second == &node) names.erase(first);
            }
            node.memberOf_ = nullptr;
            members.pop_back();
        }
    }
    // Names the next member; false when the whole chain is named.
    bool NameNext() {
        if (named == members.size() && !Extend()) return false;
        MDxFileNameNode* node = members[named++];
        names.emplace(node->fileName_, node);
        return true;
    }

    std::vector<MDxFileNameNode*> members;  // never empty but at its end
    std::size_t named = 0;
    std::unordered_map<std::basic_string_view<WCHAR>, MDxFileNameNode*> names;  // the first of each
};

MDxFileNameNode::MDxFileNameNode(const WCHAR* fileName, int type, bool inApp)
    : fileName_(fileName), type_(type), inApp_(inApp) {}

MDxFileNameNode::MDxFileNameNode(const MDxFileNameNode* other)
    : relatedFlags(other->relatedFlags),
      docStatus(other->docStatus == other->readDocStatus_ ? -1 : other->docStatus),
      fileName_(other->fileName_),
      type_(other->type_),
      inApp_(other->inApp_),
      records_(other->records_) {}

MDxFileNameNode::~MDxFileNameNode() {
    if (memberOf_ != nullptr) memberOf_->CutAt(position_);
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
    if (memberOf_ != nullptr) memberOf_->CutAt(position_ + 1);
    next_ = next;
}

MDxFileNameNode::ChainIndex& MDxFileNameNode::Index() {
    // An index that was cut at its head has no member left to begin with.
    if (index_ == nullptr || index_->members.empty()) index_ = std::make_unique<ChainIndex>(*this);
    return *index_;
}

void MDxFileNameNode::AddFileNode(MDxFileNameNode** head) {
    if (*head == nullptr) {
        *head = this;
        return;
    }
    ChainIndex& index = (*head)->Index();
    while (index.Extend())
        continue;
    MDxFileNameNode& last = index.Last();
    index.Take(*this);  // without memory nothing is linked
    last.next_ = this;
}

bool MDxFileNameNode::AddFileNodeUnique(MDxFileNameNode** head) {
    if (*head != nullptr) {
        ChainIndex& index = (*head)->Index();
        while (index.NameNext())
            continue;
        if (index.names.count(fileName_) != 0) return false;
    }
    AddFileNode(head);
    return true;
}

bool MDxFileNameNode::FindInListToHere(MDxFileNameNode& head) {
    ChainIndex& index = head.Index();
    // The first node of a name stands in front of every other; so far as the chain is named.
    for (;;) {
        const auto first = index.names.find(fileName_);
        if (first != index.names.end()) return first->second != this;
        if (!index.NameNext()) return false;  // not on this chain
    }
}
