// The rows of the dialog's list of criteria. Rows and criteria are matched by the criterion, since
// some have no row.
#pragma once

#include <memory>

#include "dialog/find_dialog.h"

// Puts a criterion at the end of the list, whatever is there, with a row of its own. False when it
// was refused, or got no row.
[[nodiscard]] SR_API bool AppendCriterion(SRxFindDialog& dialog,
                                          std::unique_ptr<SRxCriteriaNode> node);
// Gives a criterion a row at the end of the list box, or in front of the row `index`.
bool AddRow(SRxFindDialog& dialog, SRxCriteriaNode& node, int index = -1);
// Gives a criterion just added its row, or that of the one that it replaced.
void ShowAdded(SRxFindDialog& dialog, SRxCriteriaNode& added, bool replaced);
// Writes a criterion's row anew, after a change of its join.
void RewriteRow(SRxFindDialog& dialog, SRxCriteriaNode& node);
// The row of a criterion, -1 for one without.
int RowOf(const SRxFindDialog& dialog, const SRxCriteriaNode* node);
// The criterion of the selected row; null without a selection.
SRxCriteriaNode* SelectedCriterion(const SRxFindDialog& dialog);
