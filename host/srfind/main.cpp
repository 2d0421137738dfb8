// srfind: a search from the command line. It opens the find dialog, works it as a person would, and
// prints the hits as they come. A list of files is searched without the found dialog: its hits come
// back on the slot.
#include <chrono>
#include <memory>
#include <vector>

#include "host/srfind/criterion_text.h"
#include "host/srfind/find_session.h"
#include "host/srfind/hits.h"
#include "host/srfind/options.h"
#include "host/srfind/report.h"
#include "host/srfind/shown_dialog.h"
#include "module/module_state.h"
#include "platform/host/host_files.h"
#include "platform/native_layer.h"
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

// A yes or no for a question about a saved search, which --yes answers.
bool Agrees(const Options& options, SearchReport& report, UINT question, const WText& name) {
    const WText text = wtext::Format(ResourceText(SrResReturnHandle(), question), {name});
    if (options.yes) return true;
    report.Tell(wtext::ToUtf8(text) + " Give --yes to agree.");
    return false;
}

// Criteria stand in the order typed, so that the joins mean what was typed.
bool AddCriteria(SRxFindDialog& dialog, const Options& options, std::string& fault) {
    const CriterionParser parser(dialog.resourceInstance);
    for (const CriterionOption& option : options.criteria) {
        auto node = parser.Parse(option.text, option.isOr ? JOIN_OR : JOIN_AND, fault);
        if (node == nullptr) return false;
        if (!dialog.AppendCriterion(std::move(node))) {
            fault = "the criterion \"" + option.text + "\" was refused";
            return false;
        }
    }
    return true;
}

bool OpenSearch(SRxFindDialog& dialog, const std::string& name, std::string& fault) {
    const WText wide = wtext::FromUtf8(name);
    if (!HasSavedSearch(wide.c_str())) {
        fault = "there is no saved search \"" + name + "\"";
        return false;
    }
    // What is refused or damaged is told by the dialog itself.
    if (dialog.ReadSearch(wide.c_str())) return true;
    fault = "a criterion of the saved search \"" + name + "\" was refused";
    return false;
}

bool SaveSearch(SRxFindDialog& dialog, const Options& options, SearchReport& report,
                std::string& fault) {
    const WText name = wtext::FromUtf8(options.saveSearch.text);
    const std::size_t most = MostUnitsOfSearchName();
    if (name.size() > most) {
        fault =
            wtext::ToUtf8(wtext::Format(ResourceText(dialog.resourceInstance, MSG_NAME_TOO_LONG),
                                        {wtext::FromNumber(static_cast<long long>(most))}));
        return false;
    }
    const bool known = HasSavedSearch(name.c_str());
    if (known && !Agrees(options, report, MSG_ASK_OVERWRITE, name)) {
        fault = "nothing was saved";
        return false;
    }
    fault = "the search was not saved whole";
    return dialog.WriteSearch(name.c_str(), false);
}

int DeleteSearch(const Options& options, SearchReport& report) {
    const WText name = wtext::FromUtf8(options.deleteSearch.text);
    if (!HasSavedSearch(name.c_str())) {
        return Refuse("there is no saved search \"" + options.deleteSearch.text + "\"");
    }
    if (!Agrees(options, report, MSG_ASK_DELETE, name)) return kWrongUse;
    std::vector<WText> finished;
    const bool deleted = DeleteSavedSearch(name.c_str(), finished);
    for (const WText& each : finished)
        report.Tell(wtext::ToUtf8(
            wtext::Format(ResourceText(SrResReturnHandle(), MSG_SAVE_RECOVERED), {each})));
    if (deleted) return kHits;
    report.Tell("the saved search \"" + options.deleteSearch.text + "\" could not be deleted");
    return kUnreadable;
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

// Prints hits as they come, or at the end when they are to be sorted.
class HitPrinter {
public:
    explicit HitPrinter(const Options& options) : options_(options) {}

    void Take(const MDxFileNameNode& hit) {
        ++count_;
        undecided_.Take(hit);
        if (options_.sort != eSort::None) {
            kept_.push_back(std::make_unique<MDxFileNameNode>(&hit));
            return;
        }
        WriteOutput(HitText(hit, options_));
        // The first at once; then so that many hits don't become as many writes.
        const auto now = std::chrono::steady_clock::now();
        if (count_ > 1 && now - flushed_ < kBetweenFlushes) return;
        flushed_ = now;
        FlushOutput();
    }
    void Finish() {
        std::vector<const MDxFileNameNode*> hits;
        for (const auto& hit : kept_)
            hits.push_back(hit.get());
        SortHits(hits, options_.sort);
        for (const MDxFileNameNode* hit : hits)
            WriteOutput(HitText(*hit, options_));
        WriteError(undecided_.Text(options_));
    }
    std::size_t Count() const { return count_; }

private:
    static constexpr std::chrono::milliseconds kBetweenFlushes{50};

    const Options& options_;
    std::size_t count_ = 0;
    UndecidedCount undecided_;
    std::vector<std::unique_ptr<MDxFileNameNode>> kept_;
    std::chrono::steady_clock::time_point flushed_{};
};

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

// What a search goes over. All paths are made absolute before the dialog opens, since its box with
// the place to look in changes the current folder.
struct Place {
    WText lookIn;
    WText exportTo;
    MDxFileNameNode* files = nullptr;  // the chain to search; the hits come back in its place
};

bool ReadPlace(const Options& options, SearchReport& report, Place& place, std::string& fault) {
    if (options.haveExport) place.exportTo = AbsoluteWidePath(options.exportTo);
    if (options.haveFilesFrom) return ReadFileList(options, report, place.files, fault);
    if (!options.haveLookIn) return true;
    const WText path = AbsoluteWidePath(options.lookIn.path);
    const bool folder = !path.empty() && PathIsDirectoryW(path.c_str());
    const bool usable =
        options.related ? !path.empty() && !folder && PathFileExistsW(path.c_str()) : folder;
    if (!usable) {
        fault = "\"" + options.lookIn.text + "\" is no " +
                (options.related ? "document to start with" : "folder that can be looked in");
        return false;
    }
    place.lookIn = path;
    return true;
}

void Press(const SRxFindDialog& dialog, int button) {
    SendMessageW(GetDlgItem(dialog.dialogWindow, button), BM_CLICK, 0, 0);
}

void SetPlace(const Options& options, const Place& place, const SRxFindDialog& dialog) {
    if (!options.haveLookIn) return;
    if (options.related) Press(dialog, IDC_LOOK_RELATED);
    if (options.subfolders) Press(dialog, IDC_LOOK_SUBFOLDERS);
    SetDlgItemTextW(dialog.dialogWindow, IDC_PATH_LIST, place.lookIn.c_str());
}

WText StatusText(HWND found) {
    const HWND bar = GetDlgItem(found, IDC_FOUND_STATUS);
    const LRESULT length = LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, 0, 0));
    WText text(static_cast<std::size_t>(length) + 1, 0);
    SendMessageW(bar, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

// What a person does with the found dialog once the search has ended.
bool ExportHits(const Options& options, const Place& place, SearchReport& report, HWND found) {
    report.ExpectExport(place.exportTo, options.yes);
    SendMessageW(GetDlgItem(found, IDC_FOUND_SAVE), BM_CLICK, 0, 0);
    if (report.Exported()) return true;
    report.Tell("the list of hits was not written");
    return false;
}

int RunFind(const Options& options, Place& place, FindSession& session, SearchReport& report) {
    HitPrinter printer(options);
    report.SetOnHit([&printer](const MDxFileNameNode& hit) { printer.Take(hit); });
    if (!session.Find()) {
        report.Tell("the search could not be started");
        return kUnreadable;
    }
    if (options.haveFilesFrom) {
        for (const MDxFileNameNode* hit = place.files; hit != nullptr; hit = hit->GetNextNode())
            printer.Take(*hit);
    } else if (printer.Count() == 0 && !WasInterrupted()) {
        report.Tell(wtext::ToUtf8(StatusText(session.Found())));
    }
    int status = Finish(report, printer, options);
    if (options.skipped) WriteError(SkippedText(session.Dialog().params.GetCritForSkipped()));
    if (options.haveExport && !ExportHits(options, place, report, session.Found()) &&
        status != kStopped) {
        status = kUnreadable;
    }
    return status;
}

// The criteria, opened and typed.
bool FillList(const Options& options, SRxFindDialog& dialog, std::string& fault) {
    if (options.openSearch.given && !OpenSearch(dialog, options.openSearch.text, fault)) {
        return false;
    }
    if (options.matchCase) {
        SendDlgItemMessageW(dialog.dialogWindow, IDC_MATCH_CASE, BM_SETCHECK, BST_CHECKED, 0);
    }
    return AddCriteria(dialog, options, fault);
}

// Opens the dialog and does what the options ask for.
int Work(const Options& options, Place& place, FindSession& session, SearchReport& report) {
    if (!session.Open(options.haveFilesFrom)) {
        WriteError("srfind: the find dialog could not be opened\n");
        return kUnreadable;
    }
    SRxFindDialog& dialog = session.Dialog();
    std::string fault;
    session.ClearList();
    if (!FillList(options, dialog, fault)) return Refuse(fault);
    if (options.saveSearch.given && !SaveSearch(dialog, options, report, fault)) {
        return Refuse(fault);
    }
    if (!options.Searches()) return kHits;
    SetPlace(options, place, dialog);
    return RunFind(options, place, session, report);
}

// The dialog for a person. Criteria from the command line stand in its list when it opens.
int RunDialog(const Options& options, SearchReport& report) {
    if (IsNativeLayer())
        return Refuse("--dialog needs a desktop, which the native build does not have");
    Place place;
    std::string fault;
    if (!ReadPlace(options, report, place, fault)) return Refuse(fault);
    const auto prepare = [&](SRxFindDialog& dialog) {
        if (!FillList(options, dialog, fault)) report.Tell(fault);
        SetPlace(options, place, dialog);
    };
    MDxFileNameNode* picks = nullptr;
    if (!ShowFindDialog(options.modeless, prepare, &picks)) {
        WriteError("srfind: the find dialog could not be opened\n");
        return kUnreadable;
    }
    const int status = picks != nullptr ? kHits : kNone;
    for (const MDxFileNameNode* pick = picks; pick != nullptr; pick = pick->GetNextNode())
        WriteOutput(HitText(*pick, options));
    if (picks != nullptr && picks->Release() == 0) delete picks;
    return status;
}

int Search(const Options& options) {
    SearchReport report(SrResReturnHandle());
    if (options.listSearches) {
        for (const WText& name : SavedSearchNames())
            WriteOutput(wtext::ToUtf8(name) + "\n");
        return kHits;
    }
    if (options.deleteSearch.given) return DeleteSearch(options, report);
    if (options.dialog) return RunDialog(options, report);
    Place place;
    std::string fault;
    int status = kWrongUse;
    MDxFileNameNode* input = nullptr;
    if (ReadPlace(options, report, place, fault)) {
        input = place.files;
        FindSession session(report, &place.files);
        status = Work(options, place, session, report);
    } else {
        Refuse(fault);
    }
    if (place.files != input) delete place.files;
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
