// Which files have a row in the found list: by name and folder, without regard to the case of
// letters, kana type and width. Constant time a file, however many rows there are.
#pragma once

#include <string>
#include <unordered_map>

#include "platform/wtext.h"

class FoundRowIndex {
public:
    // The place where the full name of the row for this name and folder is kept: null in a place
    // that is new. The pointer holds until the next call.
    const WCHAR** PlaceOf(const WCHAR* folder, const WCHAR* name);

private:
    // One table a folder: the files of a folder come together, and a table of all would be a walk
    // through cold memory for each.
    using Rows = std::unordered_map<std::string, const WCHAR*>;
    std::unordered_map<std::string, Rows> folders_;
    // The folder of the last call, which is most often that of the next.
    WText folder_;
    Rows* rows_ = nullptr;
};
