// Saved searches whose keys and values hold anything: what is read is stored so that it reads back
// as the same, and the find dialog takes it into its list or says why not.
#include "store/saved_search.h"

#include <fuzzer/FuzzedDataProvider.h>

#include "dialog/saved_search_commands.h"
#include "fuzz/fuzz_input.h"
#include "module/module_state.h"
#include "outside/md_registry.h"
#include "platform/desk.h"
#include "platform/registry/registry_text.h"

namespace {

constexpr const WCHAR* kCopy = TEXT("copy of a search");
constexpr const WCHAR* kSearchValues[] = {TEXT(""), TEXT("LookFor"), TEXT("Environment")};
constexpr const WCHAR* kCriterionValues[] = {TEXT("Join"), TEXT("Property"), TEXT("Condition"),
                                             TEXT("Value"), TEXT("ValueID")};
constexpr DWORD kTypes[] = {REG_SZ, REG_DWORD, REG_DWORD, REG_BINARY, REG_NONE, 7, 11};

// Agrees and refuses in turn.
class Answering : public Desk {
public:
    int AnswerMessageBox(const MessageBoxQuestion& question) override {
        Require(!question.text.empty());
        agrees_ = !agrees_;
        return agrees_ ? IDYES : IDNO;
    }

private:
    bool agrees_ = false;
};

class Library {
public:
    Library() : scope_(desk_) {
        setenv("SR_REGISTRY", registry_.Path().c_str(), 1);
        registry_.Write("", 0);
        dialog_ = new SRxFindDialog(SrResReturnHandle(), nullptr, nullptr, nullptr, nullptr);
        dialog_->SetAccessPoint(eAccessShellNoWindow);
        Require(dialog_->Initialize() && dialog_->InvokeCommand(nullptr) == 0);
    }
    ~Library() { dialog_->CloseDialog(false); }

    void Fill(const RegistryKey& root) const {
        const std::string text = WriteRegistry(root);
        registry_.Write(text.data(), text.size());
    }
    SRxFindDialog& Dialog() const { return *dialog_; }

private:
    InputFile registry_;
    Answering desk_;
    DeskScope scope_;
    SRxFindDialog* dialog_;
};

WText AnyText(FuzzedDataProvider& input, std::size_t most) {
    return wtext::FromUtf8(input.ConsumeRandomLengthString(most));
}

RegistryPath PathOf(WText path) {
    RegistryPath parts;
    for (std::size_t end = 0; !path.empty(); path.erase(0, end + 1)) {
        end = std::min(path.find('\\'), path.size());
        parts.push_back(path.substr(0, end));
        if (end == path.size()) break;
    }
    return parts;
}

void AddValues(FuzzedDataProvider& input, RegistryKey& key, std::span<const WCHAR* const> names) {
    for (const WCHAR* name : names) {
        if (input.ConsumeIntegralInRange(0, 15) == 0) continue;
        RegistryValue value;
        value.name = name;
        value.type = input.PickValueInArray(kTypes);
        if (value.type == REG_DWORD && input.ConsumeIntegralInRange(0, 7) != 0) {
            // Mostly a number that means something.
            const DWORD number = input.ConsumeBool() ? input.ConsumeIntegralInRange(0u, 255u)
                                 : input.ConsumeBool()
                                     ? input.ConsumeIntegralInRange(19100u, 21800u)
                                     : input.ConsumeIntegralInRange(0u, 70u) << 16 |
                                           input.ConsumeIntegralInRange(0u, 20u);
            const BYTE* bytes = reinterpret_cast<const BYTE*>(&number);
            value.data.assign(bytes, bytes + sizeof(number));
        } else if (value.type == REG_SZ && input.ConsumeBool()) {
            const WText text = AnyText(input, 300);
            const BYTE* bytes = reinterpret_cast<const BYTE*>(text.c_str());
            value.data.assign(bytes, bytes + (text.size() + 1) * sizeof(WCHAR));
        } else {
            value.data = input.ConsumeBytes<BYTE>(input.ConsumeIntegralInRange<std::size_t>(0, 64));
        }
        key.values[FoldName(value.name)] = value;
    }
}

void AddSearch(FuzzedDataProvider& input, RegistryKey& root, RegistryPath path) {
    RegistryKey& key = MakeKey(root, path);
    AddValues(input, key, kSearchValues);
    const int criteria = input.ConsumeIntegralInRange(0, 6);
    for (int i = 1; i <= criteria; ++i) {
        path.push_back(input.ConsumeBool() ? TEXT("Node") + wtext::FromNumber(i)
                                           : AnyText(input, 140));
        if (IsStorableName(path.back()) && !path.back().empty() &&
            path.back().find('\\') == WText::npos) {
            AddValues(input, MakeKey(root, path), kCriterionValues);
        }
        path.pop_back();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Library library;
    FuzzedDataProvider input(data, size);
    RegistryKey root;
    SRxFindDialog& dialog = library.Dialog();
    WCHAR last[kPathLength] = {};
    dialog.GetLastSearchName(last, kPathLength);
    const WText branch = MDxRegistryBranch();
    RegistryPath searches = PathOf(branch + TEXT("\\FindExt\\SavedSearches"));
    for (const WText& name : {WText(last), WText(TEXT("Gears")), AnyText(input, 40)}) {
        if (name.empty() || !IsStorableName(name) || name.find('\\') != WText::npos) continue;
        searches.push_back(name);
        AddSearch(input, root, searches);
        searches.pop_back();
    }
    // One that a process left that ended in mid-save; there is no process 4194305.
    RegistryPath saving = PathOf(branch + TEXT("\\FindExt\\UnfinishedSaves"));
    saving.push_back(TEXT("4194305"));
    AddSearch(input, root, saving);
    constexpr const WCHAR* kName[] = {TEXT("Name")};
    AddValues(input, MakeKey(root, saving), kName);
    library.Fill(root);

    for (const WText& name : SavedSearchNames()) {
        StoredSearch search;
        const eStoredRead read = ReadSavedSearch(name.c_str(), search);
        Require(read != eStoredRead::Absent);
        LONG environment = 0;
        Require(EnvironmentOfSavedSearch(name.c_str(), environment) !=
                eStoredEnvironment::NoSearch);
        std::vector<WText> finished;
        if (WriteSavedSearch(kCopy, search, finished) == eStoredWrite::Whole) {
            StoredSearch again;
            Require(ReadSavedSearch(kCopy, again) == eStoredRead::Whole && again == search);
        }
    }
    for (const WText& finished : FinishCutSaves())
        Require(HasSavedSearch(finished.c_str()));
    (void)dialog.OnCommandOpenSearch(true);
    (void)ReadSearch(dialog, TEXT("Gears"));
    (void)dialog.OnCommandSaveSearch(true);
    for (const WText& name : SavedSearchNames()) {
        std::vector<WText> finished;
        if (name != last) Require(DeleteSavedSearch(name.c_str(), finished));
    }
    DeleteAllLastSearches();
    Require(SavedSearchNames().empty());
    return 0;
}
