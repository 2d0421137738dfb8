// The find dialog for a person, opened by the program.
#pragma once

#include "host/srfind/options.h"
#include "host/srfind/report.h"
#include "outside/md_file_name_node.h"
#include "platform/wtext.h"

// False in the native build, which has no desktop.
bool CanShowFindDialog();

// Opens the dialog with the criteria and the place of the command line, and returns when it is
// closed. `picks` gets the chain that was picked, for the caller to release. False when the dialog
// could not be opened. A criterion that can't be taken is reported.
bool ShowFindDialog(const Options& options, const WText& lookIn, SearchReport& report,
                    MDxFileNameNode** picks);
