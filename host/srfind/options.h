// The command line of srfind.
#pragma once

#include <string>
#include <vector>

#include "platform/host/program_main.h"

enum class eSort { None, ByName, ByFolder };

struct CriterionOption {
    std::string text;
    bool isOr;
};

struct NameOption {
    bool given = false;
    std::string text;
};

struct Options {
    std::vector<CriterionOption> criteria;
    bool subfolders = false;
    bool matchCase = false;
    bool print0 = false;
    bool json = false;
    bool stats = false;
    bool records = false;
    bool skipped = false;
    bool yes = false;
    bool listSearches = false;
    NameOption openSearch;
    NameOption saveSearch;
    NameOption deleteSearch;
    bool related = false;  // lookIn is the document to start with
    bool dialog = false;
    bool modeless = false;
    eSort sort = eSort::None;
    bool help = false;
    bool version = false;
    bool listCriteria = false;
    bool haveFilesFrom = false;
    NativePath filesFrom;
    bool haveExport = false;
    NativePath exportTo;
    bool haveLookIn = false;
    HostArgument lookIn;

    // A search is made, and not only something shown or kept.
    bool Searches() const { return haveFilesFrom || haveLookIn; }
};

// False with a message that names the argument at fault.
[[nodiscard]] bool ParseOptions(const std::vector<HostArgument>& arguments, Options& options,
                                std::string& fault);

std::string UsageText();
