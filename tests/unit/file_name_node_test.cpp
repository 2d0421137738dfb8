// Chains of file nodes: what each operation does to the chain, and what it costs on a long one.
#include "outside/md_file_name_node.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "platform/wtext.h"
#include "tests/unit/fake_application.h"

namespace {

std::size_t destroyed = 0;

class CountedNode : public MDxFileNameNode {
public:
    explicit CountedNode(const WCHAR* name) : MDxFileNameNode(name, -1, false) {}
    ~CountedNode() override { ++destroyed; }
};

MDxFileNameNode* Make(const std::string& name) {
    return new CountedNode(wtext::FromUtf8(name).c_str());
}

// One node for each letter.
MDxFileNameNode* MakeChain(const std::string& letters) {
    MDxFileNameNode* head = nullptr;
    for (const char letter : letters)
        Make({letter})->AddFileNode(&head);
    return head;
}

std::string Names(const MDxFileNameNode* node) {
    std::string names;
    for (; node != nullptr; node = node->GetNextNode())
        names += wtext::ToUtf8(node->GetFileName());
    return names;
}

MDxFileNameNode* At(MDxFileNameNode* head, std::size_t index) {
    while (index-- > 0)
        head = head->GetNextNode();
    return head;
}

// Right behind the node, in front of what stood there.
void Splice(MDxFileNameNode* node, MDxFileNameNode* fresh) {
    if (MDxFileNameNode* rest = node->GetNextNode()) rest->AddFileNode(&fresh);
    node->SetNextNode(fresh);
}

TEST(FileNameNode, CopyStandsAlone) {
    MDxFileNameNode* head = MakeChain("ab");
    head->AddOccCriteria(MDxCritNode());
    head->docStatus = 1;
    head->AddRef();
    MDxFileNameNode copy(head);
    EXPECT_EQ("a", Names(&copy));
    EXPECT_EQ(0u, copy.GetReferenceCount());
    EXPECT_EQ(1, copy.docStatus);
    EXPECT_EQ(1u, copy.GetOccCritList().size());
    delete head;
}

TEST(FileNameNode, DestructionStopsAtSharedNodes) {
    // References to the third of five, and how many nodes go.
    for (const auto& [references, gone] : {std::pair{0u, 5u}, {1u, 5u}, {2u, 2u}, {3u, 2u}}) {
        MDxFileNameNode* head = MakeChain("abcde");
        MDxFileNameNode* const third = At(head, 2);
        for (unsigned i = 0; i < references; ++i)
            third->AddRef();
        destroyed = 0;
        delete head;
        EXPECT_EQ(gone, destroyed);
        if (gone == 5) continue;
        EXPECT_EQ(references - 1, third->GetReferenceCount());
        EXPECT_EQ("cde", Names(third));
        delete third;
    }
}

// Random operations on a few chains beside plain lists of names.
class ChainModel {
public:
    explicit ChainModel(unsigned seed) : random_(seed) {}
    ~ChainModel() {
        for (const Chain& chain : chains_)
            delete chain.head;
    }

    void Step(std::size_t& found, std::size_t& refused) {
        Chain& chain = chains_[Below(3)];
        Chain& other = chains_[Below(3)];
        const std::size_t at = Below(chain.names.size() + 1);
        const char name = "abcdefghijkABCDEFGHIJK"[Below(22)];  // the exact name counts
        const std::size_t choice = Below(20);
        if (choice < 5) {
            chain.names += name;
            Make({name})->AddFileNode(&chain.head);
        } else if (choice < 10) {
            MDxFileNameNode* node = Make({name});
            const bool isNew = chain.names.find(name) == std::string::npos;
            ASSERT_EQ(isNew, node->AddFileNodeUnique(&chain.head)) << chain.names << " + " << name;
            if (isNew) {
                chain.names += name;
            } else {
                delete node;
                ++refused;
            }
        } else if (choice < 13 && &chain != &other && other.head != nullptr) {
            other.head->AddFileNode(&chain.head);
            chain.names += std::exchange(other, {}).names;
        } else if (choice < 16 && other.head == nullptr && at < chain.names.size()) {
            // What is cut off is let go and lives on as a chain of its own.
            MDxFileNameNode* const last = At(chain.head, at);
            other = {last->GetNextNode(), chain.names.substr(at + 1)};
            last->SetNextNode(nullptr);
            chain.names.resize(at + 1);
        } else if (choice < 19 && at < chain.names.size()) {
            Splice(At(chain.head, at), MakeChain({name, 'z'}));
            chain.names.insert(at + 1, {name, 'z'});
        } else if (Below(10) == 0) {
            delete std::exchange(chain, {}).head;
        }
        ASSERT_EQ(chain.names, Names(chain.head));
        for (int i = 0; i < 3 && !chain.names.empty(); ++i) {
            const std::size_t here = Below(chain.names.size());
            const bool stands = chain.names.find(chain.names[here]) < here;
            ASSERT_EQ(stands, At(chain.head, here)->FindInListToHere(*chain.head))
                << chain.names << " at " << here;
            found += stands ? 1 : 0;
        }
    }

private:
    struct Chain {
        MDxFileNameNode* head = nullptr;
        std::string names;
    };

    std::size_t Below(std::size_t bound) { return random_() % bound; }

    std::mt19937 random_;
    Chain chains_[3];
};

TEST(FileNameNode, RandomOperationsBesidePlainLists) {
    std::size_t found = 0;
    std::size_t refused = 0;
    for (unsigned seed = 0; seed < 60 && !HasFatalFailure(); ++seed) {
        ChainModel model(seed);
        for (int step = 0; step < 300 && !HasFatalFailure(); ++step)
            model.Step(found, refused);
    }
    EXPECT_LT(1000u, found);
    EXPECT_LT(500u, refused);
}

std::string Number(std::size_t number) {
    return "C:\\library\\" + std::to_string(number);
}

MDxFileNameNode* AppendedUniquely(std::size_t count) {
    MDxFileNameNode* head = nullptr;
    for (std::size_t i = 0; i < count; ++i) {
        if (!Make(Number(i))->AddFileNodeUnique(&head)) ADD_FAILURE() << i;
    }
    return head;
}

// A walk that hangs three nodes behind each node which stands there for the first time; the names
// come back in a cycle.
MDxFileNameNode* Walked(std::size_t count) {
    MDxFileNameNode* head = Make(Number(0));
    std::size_t made = 1;
    std::size_t seen = 0;
    for (MDxFileNameNode* node = head; node != nullptr; node = node->GetNextNode()) {
        if (node->FindInListToHere(*head)) {
            ++seen;
            continue;
        }
        MDxFileNameNode* fresh = nullptr;
        for (int i = 0; i < 3 && made < count; ++i, ++made)
            Make(Number(made % (count * 2 / 3)))->AddFileNode(&fresh);
        if (fresh != nullptr) Splice(node, fresh);
    }
    EXPECT_EQ(count, made);
    EXPECT_LT(count / 4, seen);
    return head;
}

// So many nodes that a walk of the chain for each would not end within the limit of a test, which
// is what fails then; and no stack for each.
TEST(FileNameNode, LongChains) {
    constexpr std::size_t kCount = 1000000;
    for (const auto make : {AppendedUniquely, Walked}) {
        MDxFileNameNode* const head = make(kCount);
        destroyed = 0;
        delete head;
        EXPECT_EQ(kCount, destroyed);
    }
}

TEST(FileNameNode, TheApplicationNamesRelatedDocuments) {
    FakeApplication application;
    const struct {
        const WCHAR* name;
        const WCHAR* related;
    } kRows[] = {{TEXT("Z:\\a\\one.hpa"), TEXT("Z:\\a\\two.hpa")},
                 {TEXT("Z:\\a\\two.hpa"), nullptr}};
    for (const auto& row : kRows) {
        MDxFileNameNode node(row.name, -1, true);
        MDxFileNameNode* docs = &node;
        EXPECT_EQ(S_OK, node.GetRelatedDocs(application, &docs, 15, 0));
        ASSERT_EQ(row.related != nullptr, docs != nullptr);
        if (docs == nullptr) continue;
        EXPECT_EQ(WText(row.related), docs->GetFileName());
        EXPECT_TRUE(docs->InApp());
        EXPECT_EQ(nullptr, docs->GetNextNode());
        delete docs;
        docs = &node;
        EXPECT_GT(0, node.GetRelatedDocs(application, &docs, 1, 0)) << "refused";
        EXPECT_EQ(nullptr, docs);
    }
    EXPECT_EQ(1u, application.references);
}

}  // namespace
