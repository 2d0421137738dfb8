// Random lists over one tree of documents of every state, judged a second time by a few lines of
// their own: what is a hit, and which files are told of. The same searches on both builds.
#include <algorithm>
#include <optional>
#include <random>
#include <set>

#include "outside/md_document_classes.h"
#include "platform/host/hold.h"
#include "tests/unit/search_fixture.h"

namespace {

enum class eState { Sound, Text, Cut, Held };
enum class eAnswer { Value, Absent, Unreadable };

struct Fact {
    eAnswer answer = eAnswer::Absent;
    int value = 0;
};

struct Sample {
    std::string name;
    std::string extension;
    eState state = eState::Sound;
    bool genuine = true;
    Fact title, material, checkedBy, cost, needsUpdate, flag, paint;

    bool IsVerified() const { return IsModel() || extension == ".hdg"; }
    bool IsModel() const { return extension == ".hpa" || extension == ".hsb"; }
    bool IsKnown() const { return state == eState::Sound || state == eState::Text; }
};

constexpr const char* kWords[] = {"bolt", "nut", "long bolt"};
constexpr const char* kExtensions[] = {".hpa", ".hsb", ".cvd", ".txt", ".hdg", ".xyz"};

// The result, or nothing where the document can't say.
using Truth = std::function<std::optional<bool>(const Sample&)>;

struct Question {
    std::string text;
    bool isOr = false;
    bool isType = false;
    bool isProperty = false;
    bool isCustom = false;
    Truth truth = {};
    Truth decided = {};  // of a custom property, where it decides about the file
};

// `ofAbsent`: the result for a document that doesn't have the value.
Truth About(Fact Sample::*fact, bool ofAbsent, const std::function<bool(int)>& ofValue) {
    return [=](const Sample& document) -> std::optional<bool> {
        const Fact& it = document.*fact;
        if (it.answer == eAnswer::Unreadable) return {};
        return it.answer == eAnswer::Absent ? ofAbsent : ofValue(it.value);
    };
}

class RandomSearch : public SearchTest {
protected:
    int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

    Fact MakeFact() {
        return {Below(6) == 0 ? eAnswer::Unreadable
                              : (Below(3) == 0 ? eAnswer::Absent : eAnswer::Value),
                Below(3)};
    }

    void MakeDocument(int number) {
        Sample it;
        it.extension = kExtensions[number % 6];
        it.name = std::to_string(number % 3) + "/" + static_cast<char>('a' + number % 7) +
                  std::to_string(number) + it.extension;
        it.state = static_cast<eState>(std::max(0, Below(7) - 3));
        it.genuine = Below(4) != 0;
        for (Fact Sample::*fact :
             {&Sample::title, &Sample::material, &Sample::checkedBy, &Sample::cost,
              &Sample::needsUpdate, &Sample::flag, &Sample::paint}) {
            it.*fact = MakeFact();
        }
        // Both stand in one set, which a damaged value spoils.
        const bool spoilt = it.flag.answer == eAnswer::Unreadable;
        if (spoilt || it.paint.answer == eAnswer::Unreadable) {
            it.paint.answer = spoilt ? eAnswer::Unreadable : eAnswer::Absent;
        }
        const auto texts = [](std::uint32_t id, Fact fact) {
            return [=](PropertySectionWriter& set) {
                if (fact.answer == eAnswer::Value) {
                    set.AddText(id, wtext::FromUtf8(kWords[fact.value]));
                } else if (fact.answer == eAnswer::Unreadable) {
                    set.AddTexts(id, {TEXT("bolt"), TEXT("nut")});
                }
            };
        };
        const auto product = [&](PropertySectionWriter& set) {
            texts(17, it.material)(set);
            texts(10, it.checkedBy)(set);
            if (it.cost.answer == eAnswer::Value) {
                set.AddCurrency(36, it.cost.value * 10000);
            } else if (it.cost.answer == eAnswer::Unreadable) {
                set.AddReal(36, 1.0);
            }
            if (it.needsUpdate.answer == eAnswer::Value) {
                set.AddNumber(1103, it.needsUpdate.value);
            } else {
                texts(1103, it.needsUpdate)(set);
            }
        };
        const auto user = [&](PropertySectionWriter& set) {
            if (it.flag.answer != eAnswer::Absent) set.AddYesNo(2, it.flag.value != 0);
            if (it.flag.answer == eAnswer::Unreadable) set.AddYesNo(2, true);
            set.AddName(2, TEXT("Flag"));
            if (it.paint.answer == eAnswer::Value) texts(3, it.paint)(set);
            set.AddName(3, TEXT("Paint"));
        };
        // A part under an extension that nobody knows.
        const std::string made = it.extension == ".xyz" ? "made.hpa" : it.name;
        SearchTest::Document(made, product, user, texts(2, it.title));
        if (!it.genuine) Replace(made, ClassBytes(it.extension), std::string(16, '\7'));
        if (made != it.name) std::filesystem::rename(folder_ / made, folder_ / it.name);
        if (it.state == eState::Cut) std::filesystem::resize_file(folder_ / it.name, 100);
        if (it.state == eState::Text) {
            WriteFile(it.name, {'t', 'e', 'x', 't'});
            for (Fact Sample::*fact :
                 {&Sample::title, &Sample::material, &Sample::checkedBy, &Sample::cost,
                  &Sample::needsUpdate, &Sample::flag, &Sample::paint}) {
                it.*fact = {};
            }
        }
        if (it.state == eState::Held) {
            held_.push_back(std::make_unique<HeldFile>(NativePathFromWide(Wide(it.name))));
            ASSERT_TRUE(held_.back()->IsHeld());
        }
        documents_.push_back(it);
    }

    Question MakeQuestion() {
        const int value = Below(3);
        const std::string word = kWords[value];
        const auto contains = [word](int have) {
            return std::string(kWords[have]).find(word) != std::string::npos;
        };
        const auto ofTypes = [](std::string text, std::set<std::string> types) {
            Question question{"File type is " + text};
            question.isType = true;
            question.truth = [types](const Sample& it) -> std::optional<bool> {
                return types.empty() || types.count(it.extension) != 0;
            };
            return question;
        };
        const auto ofProperty = [](std::string text, Truth truth) {
            Question question{std::move(text)};
            question.isProperty = true;
            question.truth = std::move(truth);
            return question;
        };
        const auto isWord = [value](int have) { return have == value; };
        const auto isNoWord = [value](int have) { return have != value; };
        const auto always = [](int) { return true; };
        const auto never = [](int) { return false; };
        switch (Below(15)) {
            case 0:
                return ofTypes("Parts", {".hpa"});
            case 1:
                return ofTypes("Models (parts and assemblies)", {".hpa", ".hsb"});
            case 2:
                return ofTypes("Drawings", {".hdg", ".cvd"});
            case 3:
                return ofTypes("All files", {});
            case 4:
            case 5: {
                const char letter = static_cast<char>('a' + Below(7));
                Question question{std::string("File name begins with ") + letter};
                question.truth = [letter](const Sample& it) -> std::optional<bool> {
                    return it.name[2] == letter;
                };
                return question;
            }
            case 6:
                return ofProperty("Title contains " + word, About(&Sample::title, false, contains));
            case 7:
                return ofProperty("Title differs from " + word,
                                  About(&Sample::title, true, isNoWord));
            case 8:
                return ofProperty("Material equals " + word,
                                  About(&Sample::material, false, isWord));
            case 9:
                return Below(2) != 0 ? ofProperty("Checked by is empty",
                                                  About(&Sample::checkedBy, true, never))
                                     : ofProperty("Checked by has a value",
                                                  About(&Sample::checkedBy, false, always));
            case 10:
                return ofProperty("Estimated cost is equal to " + std::to_string(value),
                                  About(&Sample::cost, value == 0, isWord));
            case 11: {
                // Only a document that the library knows can need an update.
                const bool yes = Below(2) != 0;
                const Truth asked =
                    About(&Sample::needsUpdate, !yes, [yes](int v) { return (v != 0) == yes; });
                return ofProperty(std::string("Needs update is set to ") + (yes ? "yes" : "no"),
                                  [asked](const Sample& it) -> std::optional<bool> {
                                      const bool known = it.IsVerified() ||
                                                         it.extension == ".cvd" ||
                                                         (it.extension == ".xyz" && it.genuine &&
                                                          it.state == eState::Sound);
                                      return known ? asked(it) : false;
                                  });
            }
            case 12: {
                Question question =
                    ofProperty("\"Flag\" is set to yes",
                               About(&Sample::flag, true, [](int have) { return have != 0; }));
                question.isCustom = true;
                question.decided = About(&Sample::flag, false, [](int have) { return have != 0; });
                return question;
            }
            default: {
                const bool differs = Below(2) != 0;
                Question question = ofProperty(
                    std::string("\"Paint\" ") + (differs ? "differs from " : "equals ") + word,
                    About(&Sample::paint, true, always));
                question.isCustom = true;
                question.decided = About(&Sample::paint, false,
                                         [=](int have) { return (have == value) != differs; });
                return question;
            }
        }
    }

    static std::string ClassBytes(const std::string& extension) {
        const GUID id = extension == ".hsb"   ? kAssemblyClass
                        : extension == ".hdg" ? kDrawingClass
                                              : kPartClass;
        return {reinterpret_cast<const char*>(&id), sizeof id};
    }

    bool IsInClass(const Sample& it) const {
        const bool model = it.IsModel();
        const bool office = it.extension == ".txt";
        switch (criteria_.propSearchType) {
            case FILE_SEARCH_MODELS:
                return model;
            case FILE_SEARCH_OFFICE:
                return model || office;
            case FILE_SEARCH_IMPORT:
                return model || office || it.extension == ".cvd";
            case FILE_SEARCH_ANY:
                return true;
        }
        return true;
    }

    // Whether the document is a hit, and whether it is told of.
    std::pair<bool, bool> Judge(const Sample& it, const std::vector<Question>& list) const {
        const bool asks = std::any_of(list.begin(), list.end(),
                                      [](const Question& each) { return each.isProperty; });
        std::vector<std::vector<const Question*>> groups;
        for (const Question& each : list) {
            if (!each.isOr) groups.emplace_back();
            groups.back().push_back(&each);
        }
        bool typesDecide = false;
        for (const auto& group : groups) {
            const auto is = [](const Question* each) { return each->isType; };
            const auto fits = [&it](const Question* each) { return *each->truth(it); };
            if (!std::all_of(group.begin(), group.end(), is)) continue;
            typesDecide = true;
            if (asks && !std::any_of(group.begin(), group.end(), fits)) return {false, false};
        }
        const bool passedOver = asks && !typesDecide && !IsInClass(it);
        const bool isRead = asks && !passedOver;
        const bool fails = !it.IsKnown() || (it.IsVerified() && it.state == eState::Text);
        bool hit = true;
        bool told = isRead && fails;
        for (const auto& group : groups) {
            bool any = false;
            for (const Question* each : group) {
                const bool decides = each->isCustom && query_.decidesCustom;
                std::optional<bool> truth = decides ? each->decided(it) : each->truth(it);
                if (each->isType && *truth && it.IsVerified()) {
                    if (isRead && fails) {
                        truth = false;
                    } else if (!it.IsKnown()) {
                        told = true;
                    } else {
                        truth = it.state == eState::Sound && it.genuine;
                    }
                } else if (each->isProperty && (!isRead || fails)) {
                    truth = each->isCustom && !decides;
                } else if (!truth) {
                    told = true;
                    truth = each->isCustom && !decides;
                }
                any = any || *truth;
            }
            hit = hit && any;
        }
        return {hit, told};
    }

    std::mt19937 random_{11};
    std::vector<Sample> documents_;
    std::vector<std::unique_ptr<HeldFile>> held_;
};

TEST_F(RandomSearch, FindsAndTellsWhatTheModelDoes) {
    for (int i = 0; i < 60; ++i)
        MakeDocument(i);
    std::size_t hits = 0;
    std::size_t told = 0;
    for (int round = 0; round < 400 && !HasFailure(); ++round) {
        ClearCriteria();
        query_.decidesCustom = round % 2 != 0;
        std::vector<Question> list;
        std::string trace;
        for (int i = 0, count = 1 + Below(4); i < count; ++i) {
            list.push_back(MakeQuestion());
            list.back().isOr = i > 0 && Below(2) != 0;
            const std::string text = (list.back().isOr ? "or: " : "") + list.back().text;
            Criterion(text);
            trace += text + "; ";
        }
        SCOPED_TRACE(trace);
        std::vector<std::string> wanted;
        std::set<std::string> wantedTold;
        for (const Sample& it : documents_) {
            const auto [isHit, isTold] = Judge(it, list);
            if (isHit) wanted.push_back(it.name);
            if (isTold) wantedTold.insert(it.name);
        }
        EXPECT_EQ(Sorted(wanted), Sorted(RunFolders()));
        std::set<std::string> have;
        for (const auto& [file, status] : statuses_) {
            if (status < 0) have.insert(file);
        }
        EXPECT_EQ(wantedTold, have);
        hits += wanted.size();
        told += wantedTold.size();
    }
    EXPECT_LT(2000u, hits);
    EXPECT_LT(1000u, told);
}

}  // namespace
