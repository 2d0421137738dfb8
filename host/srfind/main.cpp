// srfind: a search from the command line. It opens the find dialog, works it as a person would, and
// prints the hits as they come. A list of files is searched without the found dialog: its hits come
// back on the slot.
#include <new>
#include <vector>

#include "found/hit_list_file.h"
#include "host/srfind/criteria_list.h"
#include "host/srfind/criterion_text.h"
#include "host/srfind/hit_printer.h"
#include "host/srfind/line_source.h"
#include "host/srfind/report.h"
#include "host/srfind/shown_dialog.h"
#include "module/file_chain.h"
#include "module/module_state.h"
#include "platform/host/host_files.h"
#include "platform/native_path.h"
#include "platform/number_text.h"
#include "platform/resource_text.h"
#include "search/search.h"
#include "store/saved_search.h"

namespace {

constexpr const char* kVersion = "srfind 1.0.0\n";

enum eExit { kHits = 0, kNone = 1, kWrongUse = 2, kUnreadable = 3, kStopped = 130 };

int Refuse(const std::string& fault) {
    WriteError("srfind: " + fault + "\nTry srfind --help.\n");
    return kWrongUse;
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

int Finish(const SearchReport& report, HitPrinter& printer, const Options& options) {
    printer.Finish();
    report.PrintPassedOver();
    if (options.stats) report.PrintStats(printer.Count());
    if (WasInterrupted()) {
        WriteError("srfind: stopped; the hits found so far were printed\n");
        return kStopped;
    }
    if (report.SomethingUnreadable()) return kUnreadable;
    return printer.Count() == 0 ? kNone : kHits;
}

bool ReadPlace(const Options& options, SearchReport& report, LinePlace& place, std::string& fault) {
    if (options.haveExport) place.exportTo = AbsoluteWidePath(options.exportTo);
    if (options.haveFilesFrom) return ReadFileList(options, report, place.files, fault);
    if (!options.haveLookIn) return true;
    const WText path = AbsoluteWidePath(options.lookIn.path);
    const bool folder = !path.empty() && PathIsDirectoryW(path.c_str());
    const bool usable = options.related ? !path.empty() && IsPlainFile(path) : folder;
    if (!usable) {
        fault = "\"" + options.lookIn.text + "\" is no " +
                (options.related ? "document to start with" : "folder that can be looked in");
        return false;
    }
    place.lookIn = path;
    return true;
}

// Writes the list of hits; false with the reason on stderr.
bool ExportHits(const Options& options, const WText& file, const std::vector<WText>& hits,
                SearchReport& report) {
    WText path = file;
    if (*PathFindExtensionW(path.c_str()) == 0) path += TEXT(".txt");
    const bool refuses = PathFileExistsW(path.c_str()) && !options.yes;
    if (refuses) {
        report.Tell(DisplayPath(path) + " is there already. Give --yes to replace it.");
    } else {
        const eHitListWrite result =
            WriteHitList(path, SrResReturnHandle(), static_cast<int>(hits.size()),
                         [&hits](int row) { return hits[static_cast<std::size_t>(row)]; });
        if (result == eHitListWrite::Written) return true;
        const WText text = ResourceText(SrResReturnHandle(), MSG_EXPORT_FAILED);
        report.Tell(wtext::ToUtf8(wtext::Format(text, {wtext::FromUtf8(DisplayPath(path))})));
    }
    report.Tell("the list of hits was not written");
    return false;
}

int RunFind(const Options& options, const LinePlace& place, const LineCriteria& criteria,
            SearchReport& report) {
    HitPrinter printer(options);
    report.SetOnHit([&printer](const MDxFileNameNode& hit) { printer.Take(hit); });
    LineSource source(options, place, criteria);
    SRxSearchRun run(source, report);
    // The block that the criteria left to the caller come back in.
    (void)run.params.SetCritForSkipped(nullptr);
    try {
        (void)RunSearch(run);
    } catch (...) {
        report.OnIncomplete();
    }
    if (printer.Count() == 0 && !WasInterrupted() && !report.IsIncomplete()) {
        const bool files = options.haveFilesFrom;
        const UINT text = files ? MSG_NO_HITS : STR_NOTHING_FOUND;
        if (!files || !run.skippedCriterionSeen) {
            report.Tell(wtext::ToUtf8(ResourceText(SrResReturnHandle(), text)));
        }
    }
    int status = Finish(report, printer, options);
    if (options.skipped) WriteError(SkippedText(run.params.GetCritForSkipped()));
    if (options.haveExport && !ExportHits(options, place.exportTo, printer.Paths(), report) &&
        status != kStopped) {
        status = kUnreadable;
    }
    return status;
}

// The dialog for a person. Criteria from the command line are in its list when it opens.
int RunDialog(const Options& options, SearchReport& report) {
    if (!CanShowFindDialog()) {
        return Refuse("--dialog needs a desktop, which the native build does not have");
    }
    LinePlace place;
    std::string fault;
    if (!ReadPlace(options, report, place, fault)) return Refuse(fault);
    MDxFileNameNode* picks = nullptr;
    if (!ShowFindDialog(options, place.lookIn, report, &picks)) {
        WriteError("srfind: the find dialog could not be opened\n");
        return kUnreadable;
    }
    const int status = picks != nullptr ? kHits : kNone;
    for (const MDxFileNameNode* pick = picks; pick != nullptr; pick = pick->GetNextNode())
        WriteOutput(HitText(*pick, options));
    ReleaseChain(picks);
    return status;
}

int RunDelete(const Options& options, SearchReport& report) {
    switch (DeleteSearch(options, report)) {
        case eDeleted::Deleted:
            return kHits;
        case eDeleted::NotThere:
            return Refuse("there is no saved search \"" + options.deleteSearch.text + "\"");
        case eDeleted::NotAgreed:
            return kWrongUse;
        case eDeleted::Failed:
            break;
    }
    report.Tell("the saved search \"" + options.deleteSearch.text + "\" could not be deleted");
    return kUnreadable;
}

int Search(const Options& options) {
    SearchReport report(SrResReturnHandle());
    if (options.listSearches) {
        for (const WText& name : SavedSearchNames())
            WriteOutput(wtext::ToUtf8(name) + "\n");
        return kHits;
    }
    if (options.deleteSearch.given) return RunDelete(options, report);
    if (options.dialog) return RunDialog(options, report);
    LinePlace place;
    LineCriteria criteria;
    std::string fault;
    if (!ReadPlace(options, report, place, fault)) return Refuse(fault);
    if (!FillCriteria(options, report, criteria, fault)) return Refuse(fault);
    if (options.saveSearch.given) {
        switch (SaveCriteria(options, criteria, report, fault)) {
            case eSaved::Saved:
                break;
            case eSaved::Refused:
                return Refuse(fault);
            case eSaved::Failed:
                return kUnreadable;
        }
    }
    return options.Searches() ? RunFind(options, place, criteria, report) : kHits;
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
