#include "host/srfind/shown_dialog.h"

bool CanShowFindDialog() {
    return false;
}

bool ShowFindDialog(const Options&, const WText&, SearchReport&, MDxFileNameNode**) {
    return false;
}
