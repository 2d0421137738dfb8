#include "host/srsample/sample_document.h"

#include "host/srsample/compound_writer.h"
#include "host/srsample/property_set_writer.h"
#include "outside/md_document_classes.h"

using mddoc::eSetKind;
using mddoc::PropertyValue;

namespace {

constexpr std::uint32_t kPreviewId = 17;

void AddValue(PropertySectionWriter& section, std::uint32_t id, const PropertyValue& value) {
    switch (value.type) {
        case VT_I4:
            section.AddNumber(id, static_cast<std::int32_t>(value.number));
            break;
        case VT_BOOL:
            section.AddYesNo(id, value.number != 0);
            break;
        case VT_CY:
            section.AddCurrency(id, value.number);
            break;
        case VT_R8:
            section.AddReal(id, value.real);
            break;
        case VT_FILETIME:
            section.AddTime(id, mddoc::Ticks(value.time));
            break;
        case VT_CLSID:
            section.AddId(id, value.guid);
            break;
        default:
            section.AddText(id, value.text);
            break;
    }
}

// The section of one set; `isUsed` tells whether the document has any property in it.
PropertySectionWriter SectionOf(const SampleDocument& document, eSetKind set, const GUID& format,
                                bool& isUsed) {
    PropertySectionWriter section(format, document.codePage);
    isUsed = false;
    for (const SampleProperty& property : document.properties) {
        if (property.set != set) continue;
        isUsed = true;
        AddValue(section, property.id, property.value);
        if (!property.name.empty()) section.AddName(property.id, property.name);
    }
    return section;
}

std::vector<std::uint8_t> References(const SampleDocument& document) {
    ByteWriter out;
    out.Number32(mddoc::kReferencesVersion);
    out.Number32(static_cast<std::uint32_t>(document.references.size()));
    for (const mddoc::DocumentReference& reference : document.references) {
        for (const WText* path : {&reference.relativePath, &reference.fullPath}) {
            out.Number32(static_cast<std::uint32_t>(path->size()));
            out.Units(*path);
        }
    }
    return out.Done();
}

}  // namespace

GUID RootClassOf(eSampleKind kind) {
    switch (kind) {
        case eSampleKind::Part:
            return kPartClass;
        case eSampleKind::Assembly:
            return kAssemblyClass;
        case eSampleKind::Drawing:
            return kDrawingClass;
        case eSampleKind::Presentation:
            return kPresentationClass;
        case eSampleKind::DesignElement:
            return kDesignElementClass;
        case eSampleKind::Office:
        case eSampleKind::Text:
        case eSampleKind::Page:
            return GUID{};
    }
    return GUID{};
}

const WCHAR* ExtensionOf(eSampleKind kind, std::uint32_t variant) {
    static constexpr const WCHAR* kOffice[] = {TEXT(".doc"), TEXT(".xls"), TEXT(".ppt")};
    switch (kind) {
        case eSampleKind::Part:
            return TEXT(".hpa");
        case eSampleKind::Assembly:
            return TEXT(".hsb");
        case eSampleKind::Drawing:
            return TEXT(".hdg");
        case eSampleKind::Presentation:
            return TEXT(".hpr");
        case eSampleKind::DesignElement:
            return TEXT(".hdx");
        case eSampleKind::Office:
            return kOffice[variant % 3];
        case eSampleKind::Text:
            return TEXT(".txt");
        case eSampleKind::Page:
            return TEXT(".html");
    }
    return TEXT("");
}

const WCHAR* ContentsStreamOf(const SampleDocument& document) {
    if (document.kind != eSampleKind::Office) return TEXT("DesignData");
    if (document.path.ends_with(TEXT(".doc"))) return TEXT("WordDocument");
    return document.path.ends_with(TEXT(".xls")) ? TEXT("Workbook") : TEXT("PowerPoint Document");
}

std::vector<std::uint8_t> BuildDocument(const SampleDocument& document) {
    if (!document.IsCompound()) return document.contents;
    CompoundWriter writer;
    writer.SetRootClass(RootClassOf(document.kind));
    bool isUsed = false;
    PropertySectionWriter summary =
        SectionOf(document, eSetKind::Summary, mddoc::kSummaryFormat, isUsed);
    if (!document.preview.empty()) summary.AddPicture(kPreviewId, document.preview);
    writer.AddStream(TEXT("\005SummaryInformation"), BuildPropertySet({summary}));

    std::vector<PropertySectionWriter> office = {
        SectionOf(document, eSetKind::DocumentSummary, mddoc::kDocumentSummaryFormat, isUsed)};
    PropertySectionWriter custom =
        SectionOf(document, eSetKind::UserDefined, mddoc::kUserDefinedFormat, isUsed);
    if (isUsed) office.push_back(custom);
    writer.AddStream(TEXT("\005DocumentSummaryInformation"), BuildPropertySet(office));

    PropertySectionWriter product =
        SectionOf(document, eSetKind::Product, mddoc::kProductFormat, isUsed);
    if (isUsed) writer.AddStream(mddoc::kProductStream, BuildPropertySet({product}));
    if (document.HasReferences()) {
        writer.AddStream(mddoc::kReferencesStream, References(document));
    }
    writer.AddStream(ContentsStreamOf(document), document.contents);
    return writer.Build();
}
