#include "host/srfind/options.h"

#include <utility>

#include "platform/host/host_files.h"

namespace {

struct OptionRow {
    char letter;  // 0: none
    const char* name;
    const char* argument;  // null: takes none
    const char* help;
};

constexpr OptionRow kOptions[] = {
    {'w', "where", "CRITERION", "files that satisfy the criterion and what stands before it"},
    {'o', "or", "CRITERION", "or this one instead of the criterion before it"},
    {'r', "subfolders", nullptr, "look in subfolders too"},
    {'c', "match-case", nullptr, "upper and lower case are different"},
    {0, "files-from", "FILE",
     "look at the files that FILE names, one a line (- for standard input)"},
    {0, "related", "FILE", "look at FILE and all documents that it refers to"},
    {0, "open", "NAME", "take the criteria of a saved search; others are added to them"},
    {0, "save", "NAME", "save the criteria under a name"},
    {0, "searches", nullptr, "list the names of the saved searches"},
    {0, "delete", "NAME", "delete a saved search"},
    {'y', "yes", nullptr, "answer yes where a saved search or a file would be replaced"},
    {'0', "print0", nullptr, "end each hit with a null instead of a line feed"},
    {0, "json", nullptr, "print each hit as a JSON object on a line of its own"},
    {0, "sort", "ORDER", "sort the hits by name or by folder"},
    {0, "export", "FILE", "write the list of hits to a text file as well"},
    {0, "dialog", nullptr, "open the find dialog instead, and print what is picked there"},
    {0, "modeless", nullptr, "with --dialog: open it without a modal loop"},
    {0, "records", nullptr, "print with each hit what each criterion leaves to the caller"},
    {0, "skipped", nullptr, "tell which criteria are left to the caller"},
    {0, "stats", nullptr, "tell at the end what was looked at"},
    {0, "criteria", nullptr, "list the properties with their conditions"},
    {'h', "help", nullptr, "show this text"},
    {0, "version", nullptr, "show the version"},
};

class Parser {
public:
    Parser(const std::vector<HostArgument>& arguments, Options& options, std::string& fault)
        : arguments_(arguments), options_(options), fault_(fault) {}

    bool Run() {
        bool onlyOperands = false;
        while (next_ < arguments_.size()) {
            const std::string& text = arguments_[next_].text;
            if (!onlyOperands && text == "--") {
                onlyOperands = true;
                ++next_;
            } else if (onlyOperands || text.size() < 2 || text[0] != '-') {
                if (!TakeOperand()) return false;
            } else if (!(text[1] == '-' ? TakeLong() : TakeLetters())) {
                return false;
            }
        }
        return CheckWhole();
    }

private:
    bool Fail(std::string text) {
        fault_ = std::move(text);
        return false;
    }

    bool TakeOperand() { return TakeLookIn(arguments_[next_++]); }

    bool TakeLookIn(const HostArgument& place) {
        if (options_.haveLookIn) {
            return Fail("there can be one place to look in, and \"" + place.text +
                        "\" would be a second one");
        }
        options_.haveLookIn = true;
        options_.lookIn = place;
        return true;
    }

    bool TakeLong() {
        const std::string text = arguments_[next_].text.substr(2);
        const std::size_t equals = text.find('=');
        const std::string name = text.substr(0, equals);
        for (const OptionRow& row : kOptions) {
            if (name != row.name) continue;
            if (row.argument == nullptr) {
                if (equals != std::string::npos) return Fail("--" + name + " takes no value");
                ++next_;
                return Apply(row, {});
            }
            if (equals != std::string::npos) {
                ++next_;
                const std::string value = text.substr(equals + 1);
                return Apply(row, {NativePathFromLine(value), value});
            }
            return TakeValue(row, "--" + name);
        }
        return Fail("there is no option --" + name);
    }

    bool TakeLetters() {
        const std::string text = arguments_[next_].text;
        for (std::size_t i = 1; i < text.size(); ++i) {
            const OptionRow* found = nullptr;
            for (const OptionRow& row : kOptions) {
                if (row.letter == text[i]) found = &row;
            }
            const std::string shown = std::string("-") + text[i];
            if (found == nullptr) return Fail("there is no option " + shown);
            if (found->argument != nullptr) {
                if (i + 1 == text.size()) return TakeValue(*found, shown);
                ++next_;
                const std::string value = text.substr(i + 1);
                return Apply(*found, {NativePathFromLine(value), value});
            }
            if (!Apply(*found, {})) return false;
        }
        ++next_;
        return true;
    }

    bool TakeValue(const OptionRow& row, const std::string& shown) {
        if (next_ + 1 == arguments_.size()) return Fail(shown + " needs a " + row.argument);
        next_ += 2;
        return Apply(row, arguments_[next_ - 1]);
    }

    bool Apply(const OptionRow& row, const HostArgument& value) {
        const std::string name = row.name;
        if (name == "where" || name == "or") {
            if (name == "or" && options_.criteria.empty()) {
                return Fail("--or \"" + value.text + "\" has no criterion before it to join");
            }
            options_.criteria.push_back({value.text, name == "or"});
        } else if (name == "files-from") {
            options_.haveFilesFrom = true;
            options_.filesFrom = value.path;
        } else if (name == "export") {
            options_.haveExport = true;
            options_.exportTo = value.path;
        } else if (name == "related") {
            options_.related = true;
            return TakeLookIn(value);
        } else if (NameOption* search = SearchName(name)) {
            if (value.text.empty()) return Fail("--" + name + " needs a name that isn't empty");
            *search = {true, value.text};
        } else if (name == "sort") {
            if (value.text != "name" && value.text != "folder") {
                return Fail("--sort takes name or folder, not \"" + value.text + "\"");
            }
            options_.sort = value.text == "name" ? eSort::ByName : eSort::ByFolder;
        } else {
            Flag(name) = true;
        }
        return true;
    }

    NameOption* SearchName(const std::string& name) {
        if (name == "open") return &options_.openSearch;
        if (name == "save") return &options_.saveSearch;
        return name == "delete" ? &options_.deleteSearch : nullptr;
    }

    bool& Flag(const std::string& name) {
        if (name == "dialog") return options_.dialog;
        if (name == "modeless") return options_.modeless;
        if (name == "records") return options_.records;
        if (name == "skipped") return options_.skipped;
        if (name == "searches") return options_.listSearches;
        if (name == "yes") return options_.yes;
        if (name == "subfolders") return options_.subfolders;
        if (name == "match-case") return options_.matchCase;
        if (name == "print0") return options_.print0;
        if (name == "json") return options_.json;
        if (name == "stats") return options_.stats;
        if (name == "criteria") return options_.listCriteria;
        if (name == "version") return options_.version;
        return options_.help;
    }

    bool CheckWhole() {
        if (options_.help || options_.version || options_.listCriteria) return true;
        if (options_.modeless && !options_.dialog) return Fail("--modeless needs --dialog");
        if (options_.dialog) {
            const bool worksAlone = options_.haveFilesFrom || options_.haveExport ||
                                    options_.saveSearch.given || options_.deleteSearch.given ||
                                    options_.listSearches;
            if (worksAlone)
                return Fail(
                    "--dialog leaves the work to a person: it takes criteria, "
                    "a place to look in, --open and how hits are printed");
            return true;
        }
        if (options_.haveFilesFrom && options_.haveLookIn) {
            return Fail("--files-from names the files, so \"" + options_.lookIn.text +
                        "\" can't be looked in as well");
        }
        if ((options_.haveFilesFrom || options_.related) && options_.subfolders) {
            return Fail(
                "--files-from and --related name the files, so --subfolders has no meaning");
        }
        if (options_.haveExport && !options_.haveLookIn) {
            return Fail("--export writes what a search in a folder or of related documents finds");
        }
        if (options_.records && !options_.haveFilesFrom) {
            return Fail("--records needs --files-from: only then do hits keep their records");
        }
        if (options_.records && options_.print0) {
            return Fail("--records prints lines, so --print0 can't hold");
        }
        if (options_.saveSearch.given && options_.criteria.empty() && !options_.openSearch.given) {
            return Fail("--save \"" + options_.saveSearch.text + "\" has no criteria to save");
        }
        if (options_.json && options_.print0) {
            return Fail("--json ends each hit with a line feed, so --print0 can't hold");
        }
        const bool keeps = options_.saveSearch.given || options_.deleteSearch.given;
        if (!options_.Searches() && !keeps && !options_.listSearches) {
            return Fail("no place to look in");
        }
        return true;
    }

    const std::vector<HostArgument>& arguments_;
    Options& options_;
    std::string& fault_;
    std::size_t next_ = 0;
};

}  // namespace

bool ParseOptions(const std::vector<HostArgument>& arguments, Options& options,
                  std::string& fault) {
    return Parser(arguments, options, fault).Run();
}

std::string UsageText() {
    std::string text =
        "Finds design documents by their properties.\n"
        "\n"
        "srfind [options] LOOK_IN\n"
        "srfind [options] --files-from FILE\n"
        "srfind [options] --related FILE\n"
        "srfind --save NAME --where CRITERION ...\n"
        "srfind --dialog [--modeless] [options] [LOOK_IN]\n"
        "srfind --criteria\n"
        "\n";
    for (const OptionRow& row : kOptions) {
        std::string left = row.letter != 0 ? std::string("  -") + row.letter + ", --" : "      --";
        left += row.name;
        if (row.argument != nullptr) left += std::string(" ") + row.argument;
        left.resize(left.size() < 28 ? 28 : left.size() + 1, ' ');
        text += left + row.help + "\n";
    }
    text +=
        "\n"
        "A CRITERION is a property, a condition and, where the condition takes one, a value:\n"
        "  \"Title contains bracket\"     \"Date checked is on or after 2024-03-07\"\n"
        "  \"File type is Parts\"         \"19140 21721 bracket\"\n"
        "A custom property stands in quotes: '\"Supplier\" equals Miller'.\n"
        "Or binds tighter than And: -w A -w B -o C asks for A and (B or C).\n"
        "\n"
        "Exit status: 0 hits, 1 none, 2 wrong use, 3 something could not be read or kept, 130 "
        "stopped.\n";
    return text;
}
