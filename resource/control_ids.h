// The numbers of the dialog templates, their controls and the icons. Written as macros, since the
// resource script reads this file as well; texts have their own ranges of the same numbers.
#pragma once

#define IDD_MDFIND 21700
#define IDD_SR_FINDLIST 21701
#define IDD_SR_OPENSEARCH 21702
#define IDD_SR_SAVESEARCH 21703

#define IDI_FIND 21700
#define IDI_BROWSE 21701
#define IDI_FIND_IN_ASSEMBLY 21703
#define IDI_HELP_BUTTON 21704

// The find dialog.
#define IDC_ADD 21700
#define IDC_JOIN_AND 21701
#define IDC_BROWSE 21702
#define IDC_CONDITION_LIST 21703
#define IDC_CRITERIA_LIST 21704
#define IDC_LOOK_FOLDER 21705
#define IDC_DELETE 21707
#define IDC_LOOK_FOR_LABEL 21708
#define IDC_ASSEMBLY_LABEL 21717
#define IDC_CONTEXT_TEXT 21718
#define IDC_VALUE_LIST 21720
#define IDC_LOOK_FOR 21721
#define IDC_MATCH_CASE 21722
#define IDC_NEW_SEARCH 21723
#define IDC_OPEN_SEARCH 21724
#define IDC_JOIN_OR 21725
#define IDC_PATH_LIST 21726
#define IDC_PROPERTY_LIST 21727
#define IDC_LOOK_RELATED 21728
#define IDC_SAVE_SEARCH 21730
#define IDC_LOOK_SUBFOLDERS 21735
#define IDC_VALUE_DATE 21736
#define IDC_VALUE_EDIT 21737

// The found dialog.
#define IDC_FOUND_LIST 21716
#define IDC_FOUND_SAVE 21729
#define IDC_FOUND_STATUS 21733
#define IDC_FOUND_STOP 21734

// The dialogs of the saved searches.
#define IDC_DELETE_SEARCH 21706
#define IDC_SEARCH_NAME 21731
#define IDC_SEARCH_LIST 21732
