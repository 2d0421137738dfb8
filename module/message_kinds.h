// What a message box is shown with, beside its text.
#pragma once

// Help ids; those of a dialog are its template's number.
enum eHelpContext { kHelpFind = 21700, kHelpFoundList = 21701, kHelpSaveSearch = 21703 };

enum eMessageKind { eKindQuestion = 0, eKindInformation = 1, eKindWarning = 2, eKindError = 3 };
