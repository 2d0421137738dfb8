// The documents that an assembly or a drawing is made of. docs/document-format.md describes the
// stream.
#pragma once

#include <vector>

#include "companions/md/document/document_properties.h"

namespace mddoc {

inline constexpr const WCHAR* kReferencesStream = TEXT("References");
inline constexpr std::uint32_t kReferencesVersion = 1;

struct DocumentReference {
    WText relativePath;  // from the document's own folder; the one to try first
    WText fullPath;      // where the other stood when the document was saved; may be empty
};

// S_OK, S_FALSE when the document has no such stream, STG_E_DOCFILECORRUPT when the stream is
// damaged or of a later version, another failure when it can't be read. Empty unless S_OK.
[[nodiscard]] HRESULT ReadReferences(DocumentProperties& document,
                                     std::vector<DocumentReference>& references);

}  // namespace mddoc
