// srfind: a search from the command line. It makes the dialog object and the controls that a search
// reads, starts the search as a person would, and prints the hits as they come. A list of files is
// searched without the found dialog: its hits come back on the slot.
#include <chrono>
#include <memory>
#include <vector>

#include "host/srfind/criterion_text.h"
#include "host/srfind/dialog_controls.h"
#include "host/srfind/hits.h"
#include "host/srfind/options.h"
#include "host/srfind/report.h"
#include "platform/host/host_files.h"
#include "platform/native_path.h"
#include "platform/number_text.h"
#include "platform/resource_text.h"
#include "search/search.h"
#include "shell/module_state.h"
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
        if (!dialog.AddNode(node.get(), true, nullptr, nullptr)) {
            fault = "the criterion \"" + option.text + "\" was refused";
            return false;
        }
        (void)node.release();
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
    const std::size_t told = report.ToldCount();
    dialog.WriteSearch(name.c_str(), false);
    fault = "the search was not saved whole";
    return report.ToldCount() == told;
}

int DeleteSearch(const Options& options, SearchReport& report) {
    const WText name = wtext::FromUtf8(options.deleteSearch.text);
    if (!HasSavedSearch(name.c_str())) {
        return Refuse("there is no saved search \"" + options.deleteSearch.text + "\"");
    }
    if (!Agrees(options, report, MSG_ASK_DELETE, name)) return kWrongUse;
    if (DeleteSavedSearch(name.c_str())) return kHits;
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

// The place to look in, or the chain of files on `slot`.
bool SetPlace(const Options& options, SRxFindDialog& dialog, DialogControls& controls,
              SearchReport& report, MDxFileNameNode*& slot, std::string& fault) {
    if (options.haveFilesFrom) {
        dialog.SetOnlyAssem(true);
        return ReadFileList(options, report, slot, fault);
    }
    const WText path = AbsoluteWidePath(options.lookIn.path);
    const bool folder = !path.empty() && PathIsDirectoryW(path.c_str());
    const bool usable =
        options.related ? !path.empty() && !folder && PathFileExistsW(path.c_str()) : folder;
    if (!usable) {
        fault = "\"" + options.lookIn.text + "\" is no " +
                (options.related ? "document to start with" : "folder that can be looked in");
        return false;
    }
    controls.SetLookIn(path);
    controls.Check(IDC_LOOK_RELATED, options.related);
    controls.Check(IDC_LOOK_SUBFOLDERS, options.subfolders);
    return true;
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
bool ExportHits(const Options& options, SearchReport& report, HWND found) {
    const WText path = AbsoluteWidePath(options.exportTo);
    report.ExpectExport(path, options.yes);
    SendMessageW(GetDlgItem(found, IDC_FOUND_SAVE), BM_CLICK, 0, 0);
    if (report.Exported()) return true;
    report.Tell("the list of hits was not written");
    return false;
}

int SearchInDialog(const Options& options, SRxFindDialog& dialog, SearchReport& report) {
    HitPrinter printer(options);
    report.SetOnHit([&printer](const MDxFileNameNode& hit) { printer.Take(hit); });
    SRxShellExtParameters params;
    (void)params.SetCritForSkipped(nullptr);  // so that there is a block to share
    dialog.SetParams(params);
    if (!dialog.OnCommandSearchNow() || dialog.searches.empty()) {
        report.Tell("the search could not be started");
        return kUnreadable;
    }
    const HWND found = dialog.searches.back()->window;
    MSG message;
    while (dialog.searching && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (printer.Count() == 0 && !WasInterrupted()) report.Tell(wtext::ToUtf8(StatusText(found)));
    int status = Finish(report, printer, options);
    if (options.skipped) WriteError(SkippedText(params.GetCritForSkipped()));
    if (options.haveExport && !ExportHits(options, report, found) && status != kStopped) {
        status = kUnreadable;
    }
    SendMessageW(found, WM_COMMAND, IDCANCEL, 0);
    return status;
}

int SearchFiles(const Options& options, SRxFindDialog& dialog, SearchReport& report,
                MDxFileNameNode*& slot) {
    MDxFileNameNode* const input = slot;
    HitPrinter printer(options);
    int status = 0;
    {
        SRxFoundList list(dialog, &slot);
        dialog.searching = true;
        RunSearch(list);
        for (const MDxFileNameNode* hit = slot; hit != nullptr; hit = hit->GetNextNode())
            printer.Take(*hit);
        status = Finish(report, printer, options);
        if (options.skipped) WriteError(SkippedText(list.params.GetCritForSkipped()));
    }
    if (slot != input) delete slot;
    delete input;
    return status;
}

int Search(const Options& options) {
    const HINSTANCE resources = SrResReturnHandle();
    MDxFileNameNode* slot = nullptr;
    SRxFindDialog dialog(resources, &slot, nullptr, nullptr, nullptr);
    SearchReport report(resources);
    const DeskScope desk(report);
    DialogControls controls(resources);
    if (controls.Window() == nullptr) {
        WriteError("srfind: the controls of the dialog could not be made\n");
        return kUnreadable;
    }
    std::string fault;
    dialog.observer = &report;
    dialog.dialogWindow = controls.Window();
    dialog.SetAccessPoint(eAccessShellNoWindow);
    dialog.SetOnlyAssem(options.haveFilesFrom);
    dialog.Initialize();
    dialog.TellOfFinishedSaves();
    if (options.listSearches) {
        for (const WText& name : SavedSearchNames())
            WriteOutput(wtext::ToUtf8(name) + "\n");
        return kHits;
    }
    if (options.deleteSearch.given) return DeleteSearch(options, report);
    if (options.openSearch.given && !OpenSearch(dialog, options.openSearch.text, fault)) {
        return Refuse(fault);
    }
    if (options.matchCase) controls.Check(IDC_MATCH_CASE, true);
    if (!AddCriteria(dialog, options, fault)) return Refuse(fault);
    if (options.saveSearch.given && !SaveSearch(dialog, options, report, fault)) {
        return Refuse(fault);
    }
    if (!options.Searches()) return kHits;
    // The chain to search comes in on the slot, and the hits go out on it.
    if (!SetPlace(options, dialog, controls, report, slot, fault)) {
        delete slot;
        return Refuse(fault);
    }
    if (!options.haveFilesFrom) return SearchInDialog(options, dialog, report);
    return SearchFiles(options, dialog, report, slot);
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
