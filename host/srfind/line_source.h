// What a search from the command line is given.
#pragma once

#include "host/srfind/criteria_list.h"
#include "module/text_lengths.h"
#include "search/search_run.h"

// What a search goes over; all paths are absolute.
struct LinePlace {
    LinePlace() = default;
    ~LinePlace() { delete files; }
    LinePlace(const LinePlace&) = delete;
    LinePlace& operator=(const LinePlace&) = delete;

    WText lookIn;
    WText exportTo;
    MDxFileNameNode* files = nullptr;  // the chain to search, owned
};

class LineSource final : public SRxSearchSource {
public:
    // All outlive it.
    LineSource(const Options& options, const LinePlace& place, const LineCriteria& criteria);
    ~LineSource();
    LineSource(const LineSource&) = delete;
    LineSource& operator=(const LineSource&) = delete;

    SRxSearchQuery ReadQuery() override;
    BLxWString LookIn() override { return place_.lookIn.c_str(); }
    std::vector<WText> ListedFiles() override { return {}; }
    IQxLecternServer* Server() override;
    MDxFileNameNode* TakeSelection() override { return place_.files; }

private:
    eFileTypeSearch ClassWithCustom() const;

    const Options& options_;
    const LinePlace& place_;
    const LineCriteria& criteria_;
    IQxLecternServer* server_ = nullptr;  // one reference
    WCHAR application_[kLabelLength] = {};
    WCHAR login_[kLabelLength] = {};
};
