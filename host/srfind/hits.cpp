#include "host/srfind/hits.h"

#include <algorithm>

#include "criteria/criteria_node.h"
#include "found/row_order.h"
#include "host/srfind/json.h"
#include "platform/native_path.h"

namespace {

// By eCritTest.
constexpr const char* kTests[] = {
    "",
    "fixed",
    "property",
    "component adaptive",
    "component enabled",
    "component grounded",
    "component visible",
    "degrees of freedom",
    "component colour",
    "mate owner",
    "part type",
    "assembly type",
    "parts list structure",
    "component note",
    "component suppressed",
    "component name",
    "component transparent",
    "component fully constrained",
    "constraint name",
    "constraint suppressed",
    "constraint value",
    "constraint type",
    "constraint health",
    "constraint note",
    "constraint reference",
    "weld name",
    "weld type",
    "weld note",
    "weld part status",
    "weld references",
    "feature name",
    "feature suppressed",
    "feature type",
    "feature note",
    "feature participant",
    "sketch parameter name",
};
static_assert(std::size(kTests) == static_cast<std::size_t>(eCritTest::FasSketchParamName) + 1);

std::vector<MDxCritNode>& RecordsOf(const MDxFileNameNode* hit) {
    return const_cast<MDxFileNameNode*>(hit)->GetOccCritList();
}

// The members of one record that mean something for its test, as JSON.
std::string RecordJson(const MDxCritNode& record) {
    const auto test = static_cast<std::size_t>(record.Test());
    std::string text = record.Join() == eJoinOr ? "{\"join\":\"or\"" : "{\"join\":\"and\"";
    if (record.HaveCrit()) {
        text += ",\"test\":" + JsonString(kTests[test]) +
                ",\"condition\":" + std::to_string(record.Condition()) +
                ",\"matchCase\":" + (record.MatchCase() ? "true" : "false") +
                ",\"text\":" + JsonString(wtext::ToUtf8(record.Text())) +
                ",\"number\":" + std::to_string(record.Number());
        if (record.Test() == eCritTest::Properties) {
            text += ",\"property\":" + std::to_string(record.PropertyNumber()) +
                    ",\"category\":" + std::to_string(record.PropertyCategory()) +
                    ",\"name\":" + JsonString(wtext::ToUtf8(record.CustomName()));
        }
    }
    return text + (record.HaveCrit() ? ",\"flag\":" : ",\"holds\":") +
           (record.Flag() ? "true}" : "false}");
}

std::string RecordsJson(const MDxFileNameNode* hit) {
    std::string text = "[";
    for (const MDxCritNode& record : RecordsOf(hit))
        text += (text.size() > 1 ? "," : "") + RecordJson(record);
    return text + "]";
}

std::string RecordsLines(const MDxFileNameNode* hit) {
    std::string text;
    for (const MDxCritNode& record : RecordsOf(hit))
        text += "\t" + RecordJson(record) + "\n";
    return text;
}

}  // namespace

void SortHits(std::vector<const MDxFileNameNode*>& hits, eSort sort) {
    if (sort == eSort::None) return;
    // As a click on the heading of the list would.
    const LPARAM column = sort == eSort::ByFolder ? 1 : 0;
    const auto row = [](const MDxFileNameNode* hit) {
        return reinterpret_cast<LPARAM>(hit->GetFileName());
    };
    std::stable_sort(hits.begin(), hits.end(),
                     [&](const MDxFileNameNode* a, const MDxFileNameNode* b) {
                         return CompareRows(row(a), row(b), column) < 0;
                     });
}

std::string HitText(const MDxFileNameNode& hit, const Options& options) {
    const WCHAR* path = hit.GetFileName();
    if (options.json) return HitAsJson(path, options.records ? RecordsJson(&hit) : "") + "\n";
    std::string text = DisplayPath(path);
    text += options.print0 ? '\0' : '\n';
    if (options.records) text += RecordsLines(&hit);
    return text;
}

void UndecidedCount::Take(const MDxFileNameNode& hit) {
    ++hits_;
    const auto& records = RecordsOf(&hit);
    counts_.resize(std::max(counts_.size(), records.size()));
    for (std::size_t i = 0; i < records.size(); ++i)
        counts_[i] += records[i].HaveCrit() ? 1 : 0;
}

std::string UndecidedCount::Text(const Options& options) const {
    std::string text;
    const std::size_t opened = counts_.size() - std::min(counts_.size(), options.criteria.size());
    for (std::size_t i = 0; i < counts_.size(); ++i) {
        if (counts_[i] == 0) continue;
        text += "srfind: " +
                (i < opened ? "criterion " + std::to_string(i + 1) + " of the saved search"
                            : "'" + options.criteria[i - opened].text + "'") +
                " can't be decided by the file for " + std::to_string(counts_[i]) + " of the " +
                std::to_string(hits_) + " hit(s): they count as if it held\n";
    }
    return text;
}

std::string SkippedText(const SRxSkippedCritNode* chain) {
    std::string text;
    for (; chain != nullptr; chain = chain->next) {
        text += chain->joinType == static_cast<unsigned>(JOIN_OR) ? "left to the caller: or "
                                                                  : "left to the caller: and ";
        switch (chain->kind) {
            case eSkippedKind::Plain:
                text += "a criterion\n";
                break;
            case eSkippedKind::FileType:
                text += "file type " + std::to_string(chain->fileTypeCode) + "\n";
                break;
            case eSkippedKind::YesNo:
                text += chain->flag ? "interference checked: yes\n" : "interference checked: no\n";
                break;
        }
    }
    return text.empty() ? "nothing is left to the caller\n" : text;
}
