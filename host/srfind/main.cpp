// srfind: a search from the command line. It makes the dialog object and the controls that a search
// reads, runs the engine, and prints the hits that come back on the slot.
#include <algorithm>
#include <vector>

#include "host/srfind/criterion_text.h"
#include "host/srfind/dialog_controls.h"
#include "host/srfind/json.h"
#include "host/srfind/options.h"
#include "host/srfind/report.h"
#include "platform/host/host_files.h"
#include "platform/number_text.h"
#include "search/search.h"
#include "search/value_comparison.h"
#include "shell/module_state.h"

namespace {

constexpr const char* kVersion = "srfind 1.0.0\n";

enum eExit { kHits = 0, kNone = 1, kWrongUse = 2, kUnreadable = 3, kStopped = 130 };

int Refuse(const std::string& fault) {
    WriteError("srfind: " + fault + "\nTry srfind --help.\n");
    return kWrongUse;
}

// Criteria stand in the order typed, so that the joins mean what was typed.
bool AddCriteria(SRxFindDialog& dialog, const Options& options, std::string& fault) {
    const CriterionParser parser(dialog.resourceInstance);
    SRxCriteriaNode** end = &dialog.criteriaHead;
    for (const CriterionOption& option : options.criteria) {
        auto node = parser.Parse(option.text, option.isOr ? JOIN_OR : JOIN_AND, fault);
        if (node == nullptr) return false;
        if (node->IsFileTypeCriterion()) {
            dialog.fileSearchType = dialog.GetFileSearchType(*node);
        } else {
            dialog.SetPropSearchType(*node);
        }
        *end = node.release();
        end = &(*end)->nextCriterion;
    }
    return true;
}

// The chain of files that a list names; null for an empty list. The caller owns it.
bool ReadFileList(const Options& options, SearchReport& report, MDxFileNameNode*& chain,
                  std::string& fault) {
    std::string bytes;
    if (!ReadHostFile(options.filesFrom, bytes)) {
        fault = "the list of files could not be read";
        return false;
    }
    std::size_t lineNumber = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        const std::string_view line(bytes.data() + at, end - at);
        at = end + 1;
        ++lineNumber;
        if (line.empty()) continue;
        if (line.find('\0') != std::string_view::npos) {
            fault = "line " + std::to_string(lineNumber) + " of the list of files holds a null";
            return false;
        }
        const WText path = AbsoluteWidePath(NativePathFromLine(line));
        if (path.empty() || !PathFileExistsW(path.c_str())) {
            report.OnUnusable(path.empty() ? wtext::FromUtf8(line).c_str() : path.c_str(),
                              "is not there");
            continue;
        }
        if (PathIsDirectoryW(path.c_str())) {
            report.OnUnusable(path.c_str(), "is a folder, not a file");
            continue;
        }
        auto* node = new MDxFileNameNode(path.c_str(), -1, false);
        node->AddFileNode(&chain);
    }
    return true;
}

int CompareTexts(WTextView a, WTextView b) {
    return CompareStringW(LOCALE_USER_DEFAULT, kFoldText, a.data(), static_cast<int>(a.size()),
                          b.data(), static_cast<int>(b.size())) -
           CSTR_EQUAL;
}

void SortHits(std::vector<const MDxFileNameNode*>& hits, eSort sort) {
    struct Parts {
        WTextView folder;
        WTextView name;
    };
    const auto split = [](const MDxFileNameNode* node) {
        const WCHAR* path = node->GetFileName();
        const WCHAR* name = PathFindFileNameW(path);
        return Parts{WTextView(path, static_cast<std::size_t>(name - path)), name};
    };
    if (sort == eSort::None) return;
    std::stable_sort(hits.begin(), hits.end(),
                     [&](const MDxFileNameNode* a, const MDxFileNameNode* b) {
                         const Parts partsA = split(a);
                         const Parts partsB = split(b);
                         if (sort == eSort::Folder) {
                             const int order = CompareTexts(partsA.folder, partsB.folder);
                             if (order != 0) return order < 0;
                         }
                         return CompareTexts(partsA.name, partsB.name) < 0;
                     });
}

// Tells of criteria that the hits carry on unanswered, so that nobody takes them for decided.
void PrintUndecided(const std::vector<const MDxFileNameNode*>& hits, const Options& options) {
    std::vector<std::size_t> counts(options.criteria.size());
    for (const MDxFileNameNode* hit : hits) {
        const auto& records = const_cast<MDxFileNameNode*>(hit)->GetOccCritList();
        for (std::size_t i = 0; i < records.size() && i < counts.size(); ++i) {
            if (records[i].HaveCrit()) ++counts[i];
        }
    }
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts[i] == 0) continue;
        WriteError("srfind: '" + options.criteria[i].text + "' can't be decided by the file for " +
                   std::to_string(counts[i]) + " of the " + std::to_string(hits.size()) +
                   " hit(s): they count as if it held\n");
    }
}

int Report(const SearchReport& report, MDxFileNameNode* chain, const Options& options) {
    std::vector<const MDxFileNameNode*> hits;
    for (; chain != nullptr; chain = chain->GetNextNode())
        hits.push_back(chain);
    SortHits(hits, options.sort);
    std::string out;
    for (const MDxFileNameNode* hit : hits) {
        const WCHAR* path = hit->GetFileName();
        out += options.json ? HitAsJson(path) : DisplayPath(path);
        out += options.print0 ? '\0' : '\n';
    }
    WriteOutput(out);
    PrintUndecided(hits, options);
    report.PrintPassedOver();
    if (options.stats) report.PrintStats(hits.size());
    if (WasInterrupted()) {
        WriteError("srfind: stopped; the hits found so far were printed\n");
        return kStopped;
    }
    if (report.SomethingUnreadable()) return kUnreadable;
    return hits.empty() ? kNone : kHits;
}

int Search(const Options& options) {
    const HINSTANCE resources = SrResReturnHandle();
    MDxFileNameNode* slot = nullptr;
    SRxFindDialog dialog(resources, &slot, nullptr, nullptr, nullptr);
    SearchReport report(resources);
    const DeskScope desk(report);
    DialogControls controls;
    if (controls.Window() == nullptr) {
        WriteError("srfind: the controls of the dialog could not be made\n");
        return kUnreadable;
    }
    std::string fault;
    dialog.observer = &report;
    dialog.dialogWindow = controls.Window();
    dialog.Initialize();
    if (!AddCriteria(dialog, options, fault)) return Refuse(fault);
    if (options.haveFilesFrom) {
        if (!ReadFileList(options, report, slot, fault)) {
            delete slot;
            return Refuse(fault);
        }
        dialog.SetOnlyAssem(true);
    } else {
        const WText path = AbsoluteWidePath(options.lookIn.path);
        if (path.empty() || !PathIsDirectoryW(path.c_str())) {
            return Refuse("\"" + options.lookIn.text + "\" is no folder that can be looked in");
        }
        controls.SetLookIn(path);
    }
    controls.Check(IDC_LOOK_SUBFOLDERS, options.subfolders);
    controls.Check(IDC_MATCH_CASE, options.matchCase);
    // The chain to search comes in on the slot, and the hits go out on it.
    MDxFileNameNode* const input = slot;
    int status = 0;
    {
        SRxFoundList list(dialog, &slot);
        dialog.searching = true;
        RunSearch(list);
        status = Report(report, slot, options);
    }
    if (slot != input) delete slot;
    delete input;
    return status;
}

}  // namespace

int ProgramMain(const std::vector<HostArgument>& arguments) {
    Options options;
    std::string fault;
    if (!ParseOptions(arguments, options, fault)) return Refuse(fault);
    if (options.help) {
        WriteOutput(UsageText());
        return kHits;
    }
    if (options.version) {
        WriteOutput(kVersion);
        return kHits;
    }
    if (SrResReturnHandle() == nullptr) {
        WriteError(
            "srfind: the resource library SrRes.dll, which belongs beside the libraries, "
            "could not be loaded\n");
        return kUnreadable;
    }
    if (options.listCriteria) {
        WriteOutput(CriterionParser(SrResReturnHandle()).Catalogue());
        return kHits;
    }
    SetUserLocale();
    NoteInterrupts();
    return Search(options);
}
