// What the library keeps of a node's file once it has looked, and where facts lie in a document.
#pragma once

#include "companions/md/document/document_properties.h"
#include "outside/md_file_name_node.h"

struct MDxFileNameNode::Facts {
    GUID rootClass{};  // all zero: the file is no compound file or could not be read
};

namespace mdfacts {

// Numbers of the product set that are no properties of a list: controls are kept 1,000 above their
// number, facts of the document 1,000 above the number of their criterion.
inline constexpr DWORD kControlBase = 1000;
inline constexpr DWORD kDocStatus = 1103;
inline constexpr DWORD kLibraryKind = 1108;
inline constexpr DWORD kSubtype = 31;

// A number of the product set; false when it is absent or unreadable.
bool ReadNumber(mddoc::DocumentProperties& document, DWORD id, LONG& number);

}  // namespace mdfacts
