// The controls of the find dialog, by their numbers in template 21700.
#pragma once

enum eFindControl {
    IDC_ADD = 21700,
    IDC_JOIN_AND = 21701,
    IDC_BROWSE = 21702,
    IDC_CONDITION_LIST = 21703,
    IDC_CRITERIA_LIST = 21704,
    IDC_LOOK_FOLDER = 21705,
    IDC_DELETE = 21707,
    IDC_LOOK_FOR_LABEL = 21708,
    IDC_ASSEMBLY_LABEL = 21717,
    IDC_CONTEXT_TEXT = 21718,
    IDC_VALUE_LIST = 21720,
    IDC_LOOK_FOR = 21721,
    IDC_MATCH_CASE = 21722,
    IDC_NEW_SEARCH = 21723,
    IDC_OPEN_SEARCH = 21724,
    IDC_JOIN_OR = 21725,
    IDC_PATH_LIST = 21726,
    IDC_PROPERTY_LIST = 21727,
    IDC_LOOK_RELATED = 21728,
    IDC_SAVE_SEARCH = 21730,
    IDC_LOOK_SUBFOLDERS = 21735,
    IDC_VALUE_DATE = 21736,
    IDC_VALUE_EDIT = 21737
};

// Help ids; those of a dialog are its template's number.
enum eHelpContext { kHelpFind = 21700, kHelpFoundList = 21701 };

// The kind that a message box is shown with.
enum eMessageKind { eKindQuestion = 0, eKindInformation = 1, eKindWarning = 2, eKindError = 3 };
