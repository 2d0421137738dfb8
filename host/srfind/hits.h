// The hits of a search as srfind prints them.
#pragma once

#include <string>
#include <vector>

#include "host/srfind/options.h"
#include "module/shell_ext_parameters.h"
#include "outside/md_file_name_node.h"

// In the order asked for; equal ones stay as they were found.
void SortHits(std::vector<const MDxFileNameNode*>& hits, eSort sort);

// A hit in the form asked for.
std::string HitText(const MDxFileNameNode& hit, const Options& options);

// Which criteria hits carry on unanswered, so that nobody takes them for decided.
class UndecidedCount {
public:
    void Take(const MDxFileNameNode& hit);
    std::string Text(const Options& options) const;

private:
    std::size_t hits_ = 0;
    // The criteria of an opened search stand in front of those typed.
    std::vector<std::size_t> counts_;
};

// The reduced criteria that a search left to its caller; `chain` may be null.
std::string SkippedText(const SRxSkippedCritNode* chain);
