// The list of criteria of a search from the command line: typed, opened, saved.
#pragma once

#include <string>

#include "criteria/list_rules.h"
#include "host/srfind/options.h"
#include "host/srfind/report.h"
#include "platform/wtext.h"

struct LineCriteria {
    SRxCriteriaList list;
    bool matchCase = false;
    LONG lookFor = 0;  // of the search that was opened, kept when it is saved again
};

// The criteria of the saved search, then those typed, in their order, so that the joins mean what
// was typed. False with the fault.
[[nodiscard]] bool FillCriteria(const Options& options, SearchReport& report,
                                LineCriteria& criteria, std::string& fault);

// Refused, with the fault: what was asked for can't be. Failed: it is not saved whole, which is
// told.
enum class eSaved { Saved, Refused, Failed };
[[nodiscard]] eSaved SaveCriteria(const Options& options, const LineCriteria& criteria,
                                  SearchReport& report, std::string& fault);

enum class eDeleted { Deleted, NotThere, NotAgreed, Failed };
[[nodiscard]] eDeleted DeleteSearch(const Options& options, SearchReport& report);
