// How criteria enter the list, leave it and read as rows.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dialog/find_dialog.h"
#include "module/module_state.h"
#include "platform/desk.h"
#include "platform/resource_text.h"

namespace {

// Criteria in a few letters: the join (& |), the property, the condition, the value.
struct Letter {
    char letter;
    LONG id;
};
constexpr Letter kProperties[] = {
    {'T', kTitle},         {'P', kProject},        {'Q', kMaterial},         {'N', kEstimatedCost},
    {'F', PROP_FILE_TYPE}, {'A', PROP_FILE_NAME},  {'S', PROP_DESIGN_STATE}, {'D', kDateCreated},
    {'L', kPartNumber},    {'B', PROP_DOC_STATUS}, {'l', kLastSavedBy},
};
constexpr Letter kConditions[] = {
    {'=', COND_EQUALS},      {'!', COND_DIFFERS},         {'^', COND_BEGINS_WITH},
    {'<', COND_LESS_THAN},   {'>', COND_GREATER_THAN},    {'#', COND_NUM_EQUALS},
    {'~', COND_NUM_DIFFERS}, {'/', COND_NOT_ON_DATE},     {'y', COND_IS_YES},
    {'n', COND_IS_NO},       {'*', COND_ANY_VALUE},       {'m', FILETYPE_MODELS},
    {'p', FILETYPE_PARTS},   {'o', FILETYPE_OFFICE},      {'i', FILETYPE_IMPORT},
    {'h', FILETYPE_HTML},    {'d', FILETYPE_DESIGN_DOCS},
};

template <std::size_t size>
LONG IdOf(const Letter (&table)[size], char letter) {
    for (const Letter& row : table) {
        if (row.letter == letter) return row.id;
    }
    ADD_FAILURE() << "no letter " << letter;
    return 0;
}

template <std::size_t size>
char LetterOf(const Letter (&table)[size], LONG id) {
    for (const Letter& row : table) {
        if (row.id == id) return row.letter;
    }
    return '?';
}

// "C" is a custom property whose name is the value's first letter.
std::unique_ptr<SRxCriteriaNode> Node(const std::string& text) {
    const LONG join = text[0] == '&' ? JOIN_AND : JOIN_OR;
    const LONG condition = IdOf(kConditions, text[2]);
    const WText value = wtext::FromUtf8(text.substr(3));
    if (text[1] == 'C') {
        return std::make_unique<SRxCriteriaNode>(value.substr(0, 1).c_str(), condition, join,
                                                 value.c_str());
    }
    return std::make_unique<SRxCriteriaNode>(IdOf(kProperties, text[1]), condition, join,
                                             value.c_str());
}

std::vector<std::string> Words(const std::string& text) {
    std::vector<std::string> words;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        words.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return words;
}

// Notes which message came, by its letter, and gives the answers in their order: y, n; Y for a yes
// after the list was begun anew.
class Asker final : public SRxListAsker {
public:
    bool Ask(UINT question) override {
        Say(question);
        if (answers.empty()) return ADD_FAILURE() << "no answer is left", false;
        const bool yes = answers[0] != 'n';
        if (answers[0] == 'Y') delete std::exchange(list->head, nullptr);
        answers.erase(0, 1);
        return yes;
    }
    void Say(UINT message) override {
        constexpr Letter kMessages[] = {{'o', MSG_ASK_JOIN_OR},
                                        {'r', MSG_ASK_REPLACE},
                                        {'t', MSG_TYPE_CLASH},
                                        {'s', MSG_BAD_DESIGN_STATE}};
        asked += LetterOf(kMessages, static_cast<LONG>(message));
    }

    SRxCriteriaList* list = nullptr;
    std::string answers;
    std::string asked;
};

std::string ListOf(const SRxCriteriaList& criteria) {
    std::string list;
    for (const SRxCriteriaNode* n = criteria.head; n != nullptr; n = n->nextCriterion) {
        list += list.empty() ? "" : " ";
        list += n->joinType == JOIN_OR ? '|' : '&';
        list += n->propertyStringId < 0 ? 'C' : LetterOf(kProperties, n->propertyStringId);
        list += LetterOf(kConditions, n->conditionId) + wtext::ToUtf8(n->value);
    }
    return list;
}

// At the end, without a question.
bool Append(SRxCriteriaList& criteria, const std::string& text, Asker& asker, int& index) {
    auto node = Node(text);
    bool replaced = false;
    if (!AddNode(criteria.Ref(), node.get(), true, asker, index, replaced)) return false;
    (void)node.release();
    return true;
}

TEST(ListRules, Adding) {
    struct Row {
        const char* before;
        const char* node;
        const char* answers;
        const char* after;
        const char* asked;  // o join, r replace, t types clash, s no design state
        bool result;
        int index;
        bool replaced;
    };
    const Row rows[] = {
        // the first one enters whatever it says
        {"", "|So", "", "|So", "", true, 0, false},
        {"", "&So", "", "&So", "", true, 0, false},
        // others go to the end, or behind the last of their property
        {"&P^a", "&Q^b", "", "&P^a &Q^b", "", true, 1, false},
        {"&P^a &Q^b", "|P=c", "", "&P^a |P=c &Q^b", "", true, 1, false},
        {"&P^a |P^b &Q^c &P^d", "|P=c", "", "&P^a |P^b |P=c &Q^c &P^d", "", true, 2, false},
        // one test of one property, whatever the letters' case
        {"&P^a &Q^b", "&Q^B", "y", "&P^a &Q^B", "r", true, 1, true},
        {"&P^a &Q^b", "&Q^B", "n", "&P^a &Q^b", "r", false, 1, false},
        {"&P^a", "|P^A", "y", "|P^A", "r", true, 0, true},
        // And on a property that is there: asked, and refused where it could hardly hold
        {"&N<5", "&N>1", "", "&N<5 &N>1", "", true, 1, false},
        {"&N<5", "&N#1", "n", "&N<5", "o", false, 0, false},
        {"&N<5", "&N#1", "y", "&N<5 |N#1", "o", true, 1, false},
        {"&N#5", "&N<1", "n", "&N#5", "o", false, 0, false},
        {"&P^a", "&P^b", "n", "&P^a", "o", false, 0, false},
        {"&P^a", "&P^b", "y", "&P^a |P^b", "o", true, 1, false},
        {"&P^a", "&P*", "n", "&P^a &P*", "o", true, 1, false},
        {"&P!a", "&P!b", "", "&P!a &P!b", "", true, 1, false},
        {"&N~1", "&N~2", "", "&N~1 &N~2", "", true, 1, false},
        {"&D/1", "&D/2", "", "&D/1 &D/2", "", true, 1, false},
        {"&N<5", "&N<6", "", "&N<5", "", false, 0, false},
        {"&By", "&Bn", "y", "&By |Bn", "o", true, 1, false},
        {"&Fp", "&Fm", "n", "&Fp", "o", false, 0, false},
        {"&Fp", "&Fm", "y", "&Fp |Fm", "o", true, 1, false},
        // asked once in a walk; agreed to Or, an equal one goes even after a no
        {"&P^a |P^b", "&P^c", "y", "&P^a |P^b |P^c", "o", true, 2, false},
        {"&P^a |P*", "&P^b", "n", "&P^a |P*", "o", false, 0, false},
        {"&P^a |P^b", "&P^B", "yn", "&P^a |P^B", "or", true, 1, true},
        {"&P* |P^b", "&P^B", "nn", "&P* |P^b", "or", false, 1, false},
        // begun anew meanwhile
        {"&P^a &Q^b", "&Q^B", "Y", "", "r", false, 0, false},
        {"&P^a &Q^b", "&Q^c", "Y", "", "o", false, 0, false},
        // numbers of two categories are one property
        {"&L^a &Q^b", "|l^c", "", "&L^a |l^c &Q^b", "", true, 1, false},
        // classes of files
        {"&Fo", "&Q^a", "", "&Fo", "t", false, 0, false},
        {"&Fo", "&T^a", "", "&Fo &T^a", "", true, 1, false},
        {"&Fi", "&T^a", "", "&Fi", "t", false, 0, false},
        {"&Fo", "&A^a", "", "&Fo", "t", false, 0, false},
        {"&Q^a", "&Fo", "", "&Q^a", "t", false, 0, false},
        {"&T^a", "&Fo", "", "&T^a &Fo", "", true, 1, false},
        {"&T^a", "&Fi", "", "&T^a", "t", false, 0, false},
        {"&Fh", "&Q^a", "", "&Fh &Q^a", "", true, 1, false},
        {"&Fd", "&Q^a", "", "&Fd &Q^a", "", true, 1, false},
        // a design state, checked though the type clashes
        {"&P^a", "&S#9", "", "&P^a", "s", false, 0, false},
        {"&P^a", "&S#2", "", "&P^a &S#2", "", true, 1, false},
        {"&Fo", "&S#9", "", "&Fo", "ts", false, 0, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.before) + " + " + row.node + " " + row.answers);
        Asker asker;
        SRxCriteriaList list;
        int index = 0;
        for (const std::string& word : Words(row.before))
            EXPECT_TRUE(Append(list, word, asker, index));
        const eFileTypeSearch types[] = {list.fileSearchType, list.propSearchType};
        EXPECT_EQ("", asker.asked);
        asker.answers = row.answers;
        asker.list = &list;
        auto node = Node(row.node);
        bool replaced = !row.replaced;
        const bool result = AddNode(list.Ref(), node.get(), false, asker, index, replaced);
        if (result) {
            (void)node.release();
        } else {
            EXPECT_EQ(types[0], list.fileSearchType);
            EXPECT_EQ(types[1], list.propSearchType);
        }
        EXPECT_EQ(row.result, result);
        EXPECT_EQ(row.after, ListOf(list));
        EXPECT_EQ(row.asked, asker.asked);
        EXPECT_EQ("", asker.answers) << "an answer was left over";
        EXPECT_EQ(row.replaced, replaced);
        EXPECT_TRUE(!result || row.index == index) << index;
    }
}

TEST(ListRules, AppendingAsksNothing) {
    Asker asker;
    SRxCriteriaList list;
    int index = 0;
    for (const char* text : {"&P^a", "&P^a", "&N<5", "|P=x"})
        EXPECT_TRUE(Append(list, text, asker, index));
    EXPECT_EQ(3, index);
    EXPECT_EQ("&P^a &P^a &N<5 |P=x", ListOf(list));
    EXPECT_FALSE(Append(list, "&Fo", asker, index));
    EXPECT_EQ("t", asker.asked);
    bool replaced = true;
    EXPECT_TRUE(AddNode(list.Ref(), nullptr, false, asker, index, replaced)) << "nothing to add";
    EXPECT_EQ(0, index);
    EXPECT_FALSE(replaced);
}

// The classes narrow and widen with what enters, in whatever order.
TEST(ListRules, ClassesOfTheList) {
    const struct {
        const char* list;
        eFileTypeSearch files;
        eFileTypeSearch properties;
    } kRows[] = {
        {"&Fd", FILE_SEARCH_ANY, FILE_SEARCH_ANY},
        {"&Fp &T^a", FILE_SEARCH_MODELS, FILE_SEARCH_OFFICE},
        {"&Fo &T^a", FILE_SEARCH_OFFICE, FILE_SEARCH_OFFICE},
        {"&Fo |Fp", FILE_SEARCH_OFFICE, FILE_SEARCH_ANY},
        {"&Fi", FILE_SEARCH_IMPORT, FILE_SEARCH_ANY},
        {"&Fh &A^a", FILE_SEARCH_ANY, FILE_SEARCH_IMPORT},
        {"&A^a &T^a", FILE_SEARCH_ANY, FILE_SEARCH_OFFICE},
        {"&T^a &Q^a &T^b", FILE_SEARCH_ANY, FILE_SEARCH_MODELS},
        {"&C^x &A^b", FILE_SEARCH_ANY, FILE_SEARCH_MODELS},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.list);
        Asker asker;
        SRxCriteriaList list;
        int index = 0;
        for (const std::string& word : Words(row.list))
            EXPECT_TRUE(Append(list, word, asker, index));
        EXPECT_EQ(row.files, list.fileSearchType);
        EXPECT_EQ(row.properties, list.propSearchType);
    }
}

TEST(ListRules, DeletingOneNode) {
    Asker asker;
    SRxCriteriaList list;
    int index = 0;
    for (const char* text : {"&P^a", "|P^b", "&Q^c"})
        EXPECT_TRUE(Append(list, text, asker, index));
    SRxCriteriaNode* middle = list.head->nextCriterion;
    DeleteNode(list.head, middle);
    EXPECT_EQ(nullptr, middle);
    EXPECT_EQ("&P^a &Q^c", ListOf(list));
    const auto stranger = Node("&P^a");
    SRxCriteriaNode* pointer = stranger.get();
    DeleteNode(list.head, pointer);
    EXPECT_EQ(stranger.get(), pointer) << "not of this list";
    for (int left = 2; left > 0; --left) {
        SRxCriteriaNode* first = list.head;
        DeleteNode(list.head, first);
    }
    EXPECT_EQ("", ListOf(list));
}

TEST(ListRules, RowsRead) {
    SRxFindDialog dialog(SrResReturnHandle(), nullptr, nullptr, nullptr, nullptr);
    (void)wtext::CopyWhole(dialog.appUserName, kLabelLength, TEXT("App User"));
    (void)wtext::CopyWhole(dialog.loginUserName, kLabelLength, TEXT("login"));
    const auto row = [&dialog](const SRxCriteriaNode& node) {
        WCHAR text[kComposedLength];
        EXPECT_TRUE(dialog.BuildCriteriaString(&node, text, kComposedLength));
        return wtext::ToUtf8(text);
    };
    EXPECT_EQ("Title begins with 10 % of %1", row(*Node("&T^10 % of %1")));
    EXPECT_EQ("or Title equals ", row(*Node("|T=")));
    const auto date = [](LONG condition, const WCHAR* value) {
        return SRxCriteriaNode(kDateCreated, condition, JOIN_AND, value);
    };
    EXPECT_EQ("Date created falls on 3/7/2024", row(date(COND_ON_DATE, TEXT("2024 3 7"))));
    EXPECT_EQ("Date created falls on ", row(date(COND_ON_DATE, TEXT(""))));
    EXPECT_EQ("Author App User ",
              row(SRxCriteriaNode(kAuthor, COND_IS_APP_USER, JOIN_AND, nullptr)));
    EXPECT_EQ("Author login ",
              row(SRxCriteriaNode(kAuthor, COND_IS_LOGIN_USER, JOIN_AND, nullptr)));
    // A long name is whole, up to the end of the row.
    const WText name(300, 'n');
    const SRxCriteriaNode custom(name.c_str(), COND_EQUALS, JOIN_AND, TEXT("v"));
    EXPECT_EQ(std::string(300, 'n') + " equals v", row(custom));
    WCHAR small[5];
    EXPECT_TRUE(dialog.BuildCriteriaString(&custom, small, 5));
    EXPECT_EQ("nnnn", wtext::ToUtf8(small));
    EXPECT_FALSE(dialog.BuildCriteriaString(&custom, nullptr, 5));
}

}  // namespace
