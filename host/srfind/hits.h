// The hits of a search as srfind prints them.
#pragma once

#include <string>
#include <vector>

#include "host/srfind/options.h"
#include "outside/md_file_name_node.h"
#include "shell/shell_ext_parameters.h"

// In the order asked for; equal ones stay as they were found.
void SortHits(std::vector<const MDxFileNameNode*>& hits, eSort sort);

// Each hit in the form asked for.
std::string HitsText(const std::vector<const MDxFileNameNode*>& hits, const Options& options);

// Which criteria the hits carry on unanswered, so that nobody takes them for decided.
std::string UndecidedText(const std::vector<const MDxFileNameNode*>& hits, const Options& options);

// The reduced criteria that a search left to its caller; `chain` may be null.
std::string SkippedText(const SRxSkippedCritNode* chain);
