// The controls of the found dialog, by their numbers in template 21701. OK and Cancel are IDOK and
// IDCANCEL.
#pragma once

enum eFoundControl {
    IDC_FOUND_LIST = 21716,
    IDC_FOUND_SAVE = 21729,
    IDC_FOUND_STATUS = 21733,
    IDC_FOUND_STOP = 21734
};
