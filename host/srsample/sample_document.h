// One document of a sample library as plain data, and its bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "companions/md/document/references.h"

enum class eSampleKind { Part, Assembly, Drawing, Presentation, DesignElement, Office, Text, Page };

struct SampleProperty {
    mddoc::eSetKind set;
    std::uint32_t id;
    WText name;  // of a user-defined property
    mddoc::PropertyValue value;
};

struct SampleDocument {
    eSampleKind kind = eSampleKind::Part;
    WText path;  // from the library's folder, with backslashes
    std::uint16_t codePage = 65001;
    std::vector<SampleProperty> properties;
    std::vector<mddoc::DocumentReference> references;
    std::vector<std::uint8_t> preview;   // a picture in the summary
    std::vector<std::uint8_t> contents;  // the geometry, or a plain file's bytes

    bool IsCompound() const { return kind != eSampleKind::Text && kind != eSampleKind::Page; }
    bool HasReferences() const {
        return kind == eSampleKind::Assembly || kind == eSampleKind::Drawing;
    }
};

// The class id of the root storage; all zeros for the kinds that have none of ours.
GUID RootClassOf(eSampleKind kind);
const WCHAR* ExtensionOf(eSampleKind kind, std::uint32_t variant);

// The name of the stream that holds the contents of a compound document.
const WCHAR* ContentsStreamOf(const SampleDocument& document);

std::vector<std::uint8_t> BuildDocument(const SampleDocument& document);
