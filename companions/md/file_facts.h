// What the library keeps of a node's file once it has looked, and where facts lie in a document.
#pragma once

#include "companions/md/document/document_properties.h"
#include "outside/md_file_name_node.h"

struct MDxFileNameNode::Facts {
    HRESULT status = S_FALSE;  // of the opening; S_FALSE: the file is no compound file
    GUID rootClass{};          // all zero unless S_OK
    mddoc::FileStamp stamp;    // of the file that was looked at
};

namespace mdfacts {

// The facts that were read of the document which is open now: it can't be another file meanwhile.
// Compared only. Null without one; there is one thread.
inline const void* openFacts = nullptr;

// Numbers of the product set that are no properties of a list: controls are kept 1,000 above their
// number, facts of the document 1,000 above the number of their criterion.
inline constexpr DWORD kControlBase = 1000;
inline constexpr DWORD kDocStatus = 1103;
inline constexpr DWORD kLibraryKind = 1108;
inline constexpr DWORD kSubtype = 31;

// The extension is of a kind whose documents are told by their root class.
bool IsVerified(const WCHAR* fileName);

// A number of the product set: S_OK, S_FALSE when it is absent, negative when it is unreadable or
// no number. `number` stays as it was unless the result is S_OK.
[[nodiscard]] HRESULT ReadNumber(mddoc::DocumentProperties& document, DWORD id, LONG& number);

}  // namespace mdfacts
