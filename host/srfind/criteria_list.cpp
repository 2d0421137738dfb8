#include "host/srfind/criteria_list.h"

#include "criteria/modes.h"
#include "host/srfind/criterion_text.h"
#include "module/module_state.h"
#include "platform/processes.h"
#include "platform/resource_text.h"
#include "store/stored_criteria.h"

namespace {

std::string ResourceLine(UINT id, WTextView argument = {}) {
    return wtext::ToUtf8(wtext::Format(ResourceText(SrResReturnHandle(), id), {argument}));
}

// Prints what the rules of the list say; a question is never agreed to.
class LineAsker final : public SRxListAsker {
public:
    explicit LineAsker(SearchReport& report) : report_(report) {}
    bool Ask(UINT question) override {
        Say(question);
        return false;
    }
    void Say(UINT message) override { report_.Tell(ResourceLine(message)); }

private:
    SearchReport& report_;
};

bool Append(LineCriteria& criteria, std::unique_ptr<SRxCriteriaNode> node, SearchReport& report) {
    LineAsker asker(report);
    int index = 0;
    bool replaced = false;
    if (!AddNode(criteria.list.Ref(), node.get(), true, asker, index, replaced)) return false;
    (void)node.release();
    return true;
}

void ReportFinished(const std::vector<WText>& names, SearchReport& report) {
    for (const WText& name : names)
        report.Tell(ResourceLine(MSG_SAVE_RECOVERED, name));
}

bool OpenSearch(const Options& options, SearchReport& report, LineCriteria& criteria,
                std::string& fault) {
    const std::string& shown = options.openSearch.text;
    const WText name = wtext::FromUtf8(shown);
    // A save that was cut short may be the search that is asked for.
    ReportFinished(FinishCutSaves(), report);
    StoredSearch search;
    const eStoredRead read =
        HasSavedSearch(name.c_str()) ? ReadSavedSearch(name.c_str(), search) : eStoredRead::Absent;
    if (read == eStoredRead::Absent) {
        fault = "there is no saved search \"" + shown + "\"";
        return false;
    }
    criteria.matchCase = search.matchCase != 0;
    criteria.lookFor = search.lookFor;
    bool skipped = false;
    const bool taken = TakeStored(search, options.haveFilesFrom, skipped,
                                  [&](std::unique_ptr<SRxCriteriaNode> node) {
                                      if (node == nullptr) throw std::bad_alloc();
                                      return Append(criteria, std::move(node), report);
                                  });
    if (skipped) report.Tell(ResourceLine(MSG_CRITERIA_SKIPPED));
    if (read == eStoredRead::Incomplete) report.Tell(ResourceLine(MSG_OPEN_INCOMPLETE, name));
    if (!taken) fault = "a criterion of the saved search \"" + shown + "\" was refused";
    return taken;
}

void ReportHeldLock(const LockWait& wait, SearchReport& report) {
    if (!wait.GivenUp().empty()) report.Tell(ResourceLine(MSG_LOCK_HELD, wait.GivenUp()));
}

// A yes or no for a question about a saved search, which --yes answers.
bool Agrees(const Options& options, SearchReport& report, UINT question, const WText& name) {
    if (options.yes) return true;
    report.Tell(ResourceLine(question, name) + " Give --yes to agree.");
    return false;
}

}  // namespace

bool FillCriteria(const Options& options, SearchReport& report, LineCriteria& criteria,
                  std::string& fault) {
    if (options.openSearch.given && !OpenSearch(options, report, criteria, fault)) return false;
    criteria.matchCase = criteria.matchCase || options.matchCase;
    const CriterionParser parser(SrResReturnHandle());
    for (const CriterionOption& option : options.criteria) {
        auto node = parser.Parse(option.text, option.isOr ? JOIN_OR : JOIN_AND, fault);
        if (node == nullptr) return false;
        if (!Append(criteria, std::move(node), report)) {
            fault = "the criterion \"" + option.text + "\" was refused";
            return false;
        }
    }
    return true;
}

eSaved SaveCriteria(const Options& options, const LineCriteria& criteria, SearchReport& report,
                    std::string& fault) {
    const WText name = wtext::FromUtf8(options.saveSearch.text);
    const std::size_t most = MostUnitsOfSearchName();
    if (name.size() > most) {
        fault = ResourceLine(MSG_NAME_TOO_LONG, wtext::FromNumber(static_cast<long long>(most)));
        return eSaved::Refused;
    }
    if (!NamesASearch(name)) {
        fault = ResourceLine(MSG_NAME_BACKSLASH);
        return eSaved::Refused;
    }
    const bool known = HasSavedSearch(name.c_str());
    if (known && !Agrees(options, report, MSG_ASK_OVERWRITE, name)) {
        fault = "nothing was saved";
        return eSaved::Refused;
    }
    if (criteria.list.head == nullptr) {
        fault = "there are no criteria to save";
        return eSaved::Refused;
    }
    StoredSearch search;
    search.matchCase = criteria.matchCase ? 1 : 0;
    search.lookFor = criteria.lookFor;
    search.environment = static_cast<LONG>(eAccessShellNoWindow);
    search.criteria = ToStored(criteria.list.head);
    std::vector<WText> finished;
    const LockWait wait(kMostLockWait);
    const eStoredWrite result = WriteSavedSearch(name.c_str(), search, finished);
    ReportFinished(finished, report);
    switch (result) {
        case eStoredWrite::Whole:
            return eSaved::Saved;
        case eStoredWrite::CutShort:
            report.Tell(ResourceLine(MSG_SAVE_CUT_SHORT));
            break;
        case eStoredWrite::NoKey:
        case eStoredWrite::KeptOld:
            report.Tell(ResourceLine(MSG_SAVE_FAILED, name));
            ReportHeldLock(wait, report);
            break;
        case eStoredWrite::SetAside:
            report.Tell(ResourceLine(MSG_SAVE_SET_ASIDE, name));
            break;
    }
    return eSaved::Failed;
}

eDeleted DeleteSearch(const Options& options, SearchReport& report) {
    const WText name = wtext::FromUtf8(options.deleteSearch.text);
    if (!HasSavedSearch(name.c_str())) return eDeleted::NotThere;
    if (!Agrees(options, report, MSG_ASK_DELETE, name)) return eDeleted::NotAgreed;
    std::vector<WText> finished;
    const LockWait wait(kMostLockWait);
    const bool deleted = DeleteSavedSearch(name.c_str(), finished);
    ReportFinished(finished, report);
    ReportHeldLock(wait, report);
    return deleted ? eDeleted::Deleted : eDeleted::Failed;
}
