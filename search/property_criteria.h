// What one criterion means: which fact of the file it reads and by which comparison it is judged.
#pragma once

#include "search/search_run.h"

// The file at hand.
struct FileAtHand {
    MDxFileNameNode& node;
    MDxProperties* properties;  // null when no criterion needs them
    HRESULT status;             // negative: the properties can't be used
    bool needProperties;
    bool passedOver;  // the properties were not read, since they can't matter
};

// A criterion about the file itself, or a custom property.
CriterionOutcome EvaluateFileCriterion(SRxSearchRun& run, const FileAtHand& file,
                                       const SRxCriteriaNode& c);

// A criterion about things inside the document: true for every file, unless its own value can't be
// used. Sets the test on `record`, which may be null.
bool CarryOccurrenceCriterion(bool matchCase, const SRxCriteriaNode& c, MDxCritNode* record);
