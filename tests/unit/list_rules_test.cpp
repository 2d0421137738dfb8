// How criteria enter the list, leave it and read as rows.
#include <gtest/gtest.h>

#include <memory>
#include <string>
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
    {'T', PROP_TEXT_19140},
    {'P', PROP_TEXT_19127},
    {'Q', PROP_TEXT_19120},
    {'N', PROP_CURRENCY_19180},
    {'F', PROP_FILE_TYPE},
    {'A', PROP_FILE_NAME},
    {'S', PROP_DESIGN_STATE},
    {'D', PROP_DATE_19126},
    {'L', PROP_TEXT_19122},
    {'B', PROP_DOC_STATUS},
    {'l', PROP_CONTROL_PERSON_19147},
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

// Notes which message came, by its letter, and gives the answers in their order: y, n.
class AnsweringDesk : public Desk {
public:
    virtual ~AnsweringDesk() = default;
    int AnswerMessageBox(const MessageBoxQuestion& question) override {
        constexpr Letter kMessages[] = {{'o', MSG_ASK_JOIN_OR},
                                        {'r', MSG_ASK_REPLACE},
                                        {'t', MSG_TYPE_CLASH},
                                        {'s', MSG_BAD_DESIGN_STATE}};
        for (const Letter& row : kMessages) {
            const WText text = ResourceText(SrResReturnHandle(), static_cast<UINT>(row.id));
            if (question.text == text) asked += row.letter;
        }
        if ((question.type & MB_YESNO) == 0) return IDOK;
        if (answers.empty()) return ADD_FAILURE() << "no answer is left", IDNO;
        const bool yes = answers[0] == 'y';
        answers.erase(0, 1);
        return yes ? IDYES : IDNO;
    }

    std::string answers;
    std::string asked;
};

std::string ListOf(const SRxFindDialog& dialog) {
    std::string list;
    for (const SRxCriteriaNode* n = dialog.criteriaHead; n != nullptr; n = n->nextCriterion) {
        list += list.empty() ? "" : " ";
        list += n->joinType == JOIN_OR ? '|' : '&';
        list += n->propertyStringId < 0 ? 'C' : LetterOf(kProperties, n->propertyStringId);
        list += LetterOf(kConditions, n->conditionId) + wtext::ToUtf8(n->value);
    }
    return list;
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
        AnsweringDesk desk;
        const DeskScope scope(desk);
        SRxFindDialog dialog(SrResReturnHandle(), nullptr, nullptr, nullptr, nullptr);
        for (const std::string& word : Words(row.before))
            EXPECT_TRUE(dialog.AddNode(Node(word).release(), true, nullptr, nullptr));
        const eFileTypeSearch types[] = {dialog.fileSearchType, dialog.propSearchType};
        EXPECT_EQ("", desk.asked);
        desk.answers = row.answers;
        auto node = Node(row.node);
        int index = -7;
        bool replaced = !row.replaced;
        const bool result = dialog.AddNode(node.get(), false, &index, &replaced);
        if (result) {
            (void)node.release();
        } else {
            EXPECT_EQ(types[0], dialog.fileSearchType);
            EXPECT_EQ(types[1], dialog.propSearchType);
        }
        EXPECT_EQ(row.result, result);
        EXPECT_EQ(row.after, ListOf(dialog));
        EXPECT_EQ(row.asked, desk.asked);
        EXPECT_EQ("", desk.answers) << "an answer was left over";
        EXPECT_EQ(row.replaced, replaced);
        EXPECT_TRUE(!result || row.index == index) << index;
    }
}

TEST(ListRules, AppendingAsksNothing) {
    AnsweringDesk desk;
    const DeskScope scope(desk);
    SRxFindDialog dialog(SrResReturnHandle(), nullptr, nullptr, nullptr, nullptr);
    int index = 0;
    for (const char* text : {"&P^a", "&P^a", "&N<5", "|P=x"})
        EXPECT_TRUE(dialog.AddNode(Node(text).release(), true, &index, nullptr));
    EXPECT_EQ(3, index);
    EXPECT_EQ("&P^a &P^a &N<5 |P=x", ListOf(dialog));
    const auto refused = Node("&Fo");
    EXPECT_FALSE(dialog.AddNode(refused.get(), true, nullptr, nullptr));
    EXPECT_EQ("t", desk.asked);
    EXPECT_TRUE(dialog.AddNode(nullptr, false, &index, nullptr)) << "nothing to add";
    EXPECT_EQ(0, index);
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
        SRxFindDialog dialog(SrResReturnHandle(), nullptr, nullptr, nullptr, nullptr);
        for (const std::string& word : Words(row.list))
            EXPECT_TRUE(dialog.AddNode(Node(word).release(), true, nullptr, nullptr));
        EXPECT_EQ(row.files, dialog.fileSearchType);
        EXPECT_EQ(row.properties, dialog.propSearchType);
    }
}

TEST(ListRules, DeletingOneNode) {
    SRxFindDialog dialog(SrResReturnHandle(), nullptr, nullptr, nullptr, nullptr);
    for (const char* text : {"&P^a", "|P^b", "&Q^c"})
        EXPECT_TRUE(dialog.AddNode(Node(text).release(), true, nullptr, nullptr));
    EXPECT_TRUE(dialog.DeleteNode(nullptr));
    SRxCriteriaNode* middle = dialog.criteriaHead->nextCriterion;
    EXPECT_TRUE(dialog.DeleteNode(&middle));
    EXPECT_EQ(nullptr, middle);
    EXPECT_EQ("&P^a &Q^c", ListOf(dialog));
    const auto stranger = Node("&P^a");
    SRxCriteriaNode* pointer = stranger.get();
    EXPECT_TRUE(dialog.DeleteNode(&pointer));
    EXPECT_EQ(stranger.get(), pointer) << "not of this list";
    for (int left = 2; left > 0; --left) {
        SRxCriteriaNode* first = dialog.criteriaHead;
        dialog.DeleteNode(&first);
    }
    EXPECT_EQ("", ListOf(dialog));
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
        return SRxCriteriaNode(PROP_DATE_19126, condition, JOIN_AND, value);
    };
    EXPECT_EQ("Date created falls on 3/7/2024", row(date(COND_ON_DATE, TEXT("2024 3 7"))));
    EXPECT_EQ("Date created falls on ", row(date(COND_ON_DATE, TEXT(""))));
    EXPECT_EQ("Author App User ",
              row(SRxCriteriaNode(PROP_PERSON_19133, COND_IS_APP_USER, JOIN_AND, nullptr)));
    EXPECT_EQ("Author login ",
              row(SRxCriteriaNode(PROP_PERSON_19133, COND_IS_LOGIN_USER, JOIN_AND, nullptr)));
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
