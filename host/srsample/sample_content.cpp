#include "host/srsample/sample_content.h"

#include "host/srsample/text_encoding.h"
#include "outside/md_document_classes.h"
using mddoc::eSetKind;
using mddoc::PropertyValue;

namespace {

using Text = const WCHAR*;

constexpr Text kThings[] = {TEXT("Bracket"), TEXT("Shaft"),     TEXT("Housing"), TEXT("Flange"),
                            TEXT("Cover"),   TEXT("Gear"),      TEXT("Bearing"), TEXT("Spring"),
                            TEXT("Plate"),   TEXT("Dowel pin"), TEXT("Washer"),  TEXT("Bolt"),
                            TEXT("Lever"),   TEXT("Bushing"),   TEXT("Clamp"),   TEXT("Rail"),
                            TEXT("Seal"),    TEXT("Spacer"),    TEXT("Handle"),  TEXT("Base")};
constexpr Text kGroups[] = {TEXT("Drive unit"), TEXT("Gearbox"),       TEXT("Frame"),
                            TEXT("Feeder"),     TEXT("Clamping unit"), TEXT("Tool changer"),
                            TEXT("Lift table"), TEXT("Valve block")};
constexpr Text kPapers[] = {TEXT("Offer"),       TEXT("Minutes"),  TEXT("Bill of material"),
                            TEXT("Test report"), TEXT("Schedule"), TEXT("Risk review")};
constexpr Text kAttributes[] = {TEXT(""),       TEXT(" left"),   TEXT(" right"), TEXT(" upper"),
                                TEXT(" lower"), TEXT(" welded"), TEXT(" short"), TEXT(" long")};
constexpr Text kMachines[] = {
    TEXT("Gear pump"),  TEXT("Conveyor"),     TEXT("Robot arm"),       TEXT("Packing line"),
    TEXT("Test stand"), TEXT("Wind tracker"), TEXT("F\u00F6rderband"), TEXT("Presse \u00C4hre")};
constexpr Text kCompanies[] = {TEXT("Northfield Machines"), TEXT("Kr\u00E4mer & S\u00F6hne"),
                               TEXT("Atelier Lef\u00E8vre"), TEXT("Harbour Tools Ltd")};
constexpr Text kPersons[] = {
    TEXT("Anna M\u00FCller"),
    TEXT("Tom Baker"),
    TEXT("Jos\u00E9 Garc\u00EDa"),
    TEXT("Priya Rao"),
    TEXT("\u0141ukasz Nowak"),
    TEXT("Ingrid S\u00F8rensen"),
    TEXT("\u7530\u4E2D \u512A\u5B50"),
    TEXT("\u041E\u043B\u044C\u0433\u0430 \u0418\u0432\u0430\u043D\u043E\u0432\u0430"),
    TEXT("Bob O'Neil"),
    TEXT("Claire Martin-Roux")};
constexpr Text kMaterials[] = {
    TEXT("Steel S235"), TEXT("Steel C45"), TEXT("Aluminium 6061"),  TEXT("Grey cast iron 250"),
    TEXT("Brass"),      TEXT("POM"),       TEXT("Stainless 1.4301")};
constexpr Text kFinishes[] = {TEXT("blank"), TEXT("zinc plated"), TEXT("anodized"),
                              TEXT("powder coated"), TEXT("hardened 58+2 HRC")};
constexpr Text kVendors[] = {TEXT("Norm & Co"), TEXT("B\u00E9rard"), TEXT("City Steel"),
                             TEXT("made here")};
constexpr Text kCategories[] = {TEXT("Mechanical"), TEXT("Hydraulic"), TEXT("Sheet metal"),
                                TEXT("Purchased"), TEXT("Fixture")};
constexpr Text kRemarks[] = {TEXT("Check the fit of the bore."),
                             TEXT("Replaces the welded version."),
                             TEXT("Tolerances after the second trial.\r\nSee the minutes."),
                             TEXT("100 % inspected"), TEXT("Only with the long lever")};
constexpr GUID kSubtypes[] = {kPartClass, kSheetMetalSubtype, kWeldedSubtype};

constexpr std::uint64_t kTicksInSecond = 10000000;
constexpr std::uint64_t kTicksInDay = 86400 * kTicksInSecond;
constexpr std::uint32_t kDaysTo2015 = 151208;  // from 1601

// Numbers of the properties in the sets.
enum eOfficeId : std::uint32_t {
    kTitle = 2,
    kSubject = 3,
    kAuthor = 4,
    kKeywords = 5,
    kComments = 6,
    kLastAuthor = 8,
    kRevision = 9,
    kCreated = 12,
    kSaved = 13,
    kProgram = 18,
    kCategory = 2,
    kManager = 14,
    kCompany = 15,
};
constexpr std::uint32_t kTextIds[] = {5, 55, 9, 7, 30, 29, 17, 20, 23, 16};
constexpr std::uint32_t kPersonIds[] = {10, 12, 34, 41, 42, 43};
constexpr std::uint32_t kDateIds[] = {4, 11, 13, 35};
constexpr std::uint32_t kSubtypeId = 31;
constexpr std::uint32_t kPriceId = 36;
constexpr std::uint32_t kDesignStateId = 40;
constexpr std::uint32_t kControlPersonIds[] = {1005, 1007};
constexpr std::uint32_t kControlDateIds[] = {1006, 1008};
constexpr std::uint32_t kStatusId = 1103;
constexpr std::uint32_t kLibraryKindId = 1108;

// Adds properties to a document, drawing what varies.
class Filler {
public:
    Filler(SampleRandom& random, const SampleProject& project, SampleDocument& document)
        : random_(random), project_(project), document_(document) {}

    void Summaries(WTextView title);
    void Product(bool isLibraryPart);
    void Custom();

private:
    PropertyValue& Add(eSetKind set, std::uint32_t id, VARTYPE type, WTextView name = {}) {
        SampleProperty& property = document_.properties.emplace_back();
        property.set = set;
        property.id = id;
        property.name = name;
        property.value.type = type;
        return property.value;
    }
    void AddText(eSetKind set, std::uint32_t id, WTextView text, WTextView name = {}) {
        const bool isWide = document_.codePage == mddoc::kUtf16CodePage;
        Add(set, id, static_cast<VARTYPE>(isWide ? VT_LPWSTR : VT_LPSTR), name).text = text;
    }
    void AddTime(eSetKind set, std::uint32_t id, WTextView name = {}) {
        const std::uint64_t days = kDaysTo2015 + random_.Below(3650);
        const std::uint64_t ticks = days * kTicksInDay + random_.Below(86400) * kTicksInSecond;
        FILETIME& time = Add(set, id, VT_FILETIME, name).time;
        time.dwLowDateTime = static_cast<DWORD>(ticks & 0xFFFFFFFFu);
        time.dwHighDateTime = static_cast<DWORD>(ticks >> 32);
    }
    WText TextFor(std::uint32_t id);
    // One of the texts that the code page has; of every choice some are plain ASCII.
    template <std::size_t N>
    WText Pick(const Text (&choices)[N]) {
        WText text = random_.Pick(choices);
        while (!CodePageHas(document_.codePage, text))
            text = random_.Pick(choices);
        return text;
    }

    SampleRandom& random_;
    const SampleProject& project_;
    SampleDocument& document_;
};

void Filler::Summaries(WTextView title) {
    const eSetKind summary = eSetKind::Summary;
    AddText(summary, kTitle, title);
    if (random_.Chance(70)) AddText(summary, kSubject, project_.title);
    AddText(summary, kAuthor, random_.Chance(50) ? project_.designer : Pick(kPersons));
    if (random_.Chance(50)) {
        const WText material = Pick(kMaterials);
        AddText(summary, kKeywords, material + TEXT(", ") + Pick(kCategories));
    }
    if (random_.Chance(40)) AddText(summary, kComments, Pick(kRemarks));
    AddText(summary, kLastAuthor, Pick(kPersons));
    AddText(summary, kRevision, wtext::FromNumber(1 + random_.Below(30)));
    AddTime(summary, kCreated);
    AddTime(summary, kSaved);
    AddText(summary, kProgram, TEXT("Sample library"));
    const eSetKind office = eSetKind::DocumentSummary;
    if (random_.Chance(80)) AddText(office, kCategory, Pick(kCategories));
    if (random_.Chance(80)) AddText(office, kManager, project_.manager);
    AddText(office, kCompany, project_.company);
}

WText Filler::TextFor(std::uint32_t id) {
    switch (id) {
        case 5:
        case 55:
            return TEXT("P-") + wtext::FromNumber(100000 + random_.Below(900000));
        case 7:
            return project_.title;
        case 9:
            return Pick(kFinishes);
        case 17:
        case 20:
            return Pick(kMaterials);
        case 23:
        case 30:
            return Pick(kVendors);
        case 16:
            return Pick(kRemarks);
        default:
            return TEXT("KST ") + wtext::FromNumber(4000 + random_.Below(60));
    }
}

void Filler::Product(bool isLibraryPart) {
    const eSetKind product = eSetKind::Product;
    for (const std::uint32_t id : kTextIds) {
        if (random_.Chance(75)) AddText(product, id, TextFor(id));
    }
    for (const std::uint32_t id : kPersonIds) {
        if (random_.Chance(60)) AddText(product, id, Pick(kPersons));
    }
    for (const std::uint32_t id : kDateIds) {
        if (random_.Chance(70)) AddTime(product, id);
    }
    if (random_.Chance(80)) {
        Add(product, kPriceId, VT_CY).number = static_cast<std::int64_t>(random_.Below(50000000));
    }
    Add(product, kDesignStateId, VT_I4).number = 1 + random_.Below(3);
    GUID subtype = RootClassOf(document_.kind);
    if (document_.kind == eSampleKind::Part) subtype = random_.Pick(kSubtypes);
    if (document_.kind == eSampleKind::Assembly && random_.Chance(25)) subtype = kFabricatedSubtype;
    Add(product, kSubtypeId, VT_CLSID).guid = isLibraryPart ? kLibrarySubtype : subtype;
    const bool isControlled = random_.Chance(40);
    for (const std::uint32_t id : kControlPersonIds) {
        if (isControlled) AddText(product, id, Pick(kPersons));
    }
    for (const std::uint32_t id : kControlDateIds) {
        if (isControlled) AddTime(product, id);
    }
    Add(product, kStatusId, VT_I4).number = isControlled ? 1 : 0;
    Add(product, kLibraryKindId, VT_I4).number = isLibraryPart ? 1 + random_.Below(2) : 0;
}

void Filler::Custom() {
    const eSetKind custom = eSetKind::UserDefined;
    std::uint32_t id = 2;
    if (random_.Chance(70)) Add(custom, id++, VT_BOOL, TEXT("Released")).number = random_.Below(2);
    if (random_.Chance(60)) AddTime(custom, id++, TEXT("Next check"));
    if (random_.Chance(60)) Add(custom, id++, VT_I4, TEXT("Pieces")).number = random_.Below(500);
    if (random_.Chance(60)) {
        // Sixteenths are exact, so the number has one text.
        Add(custom, id++, VT_R8, TEXT("Mass kg")).real = random_.Below(100000) / 16.0;
    }
    if (random_.Chance(70)) AddText(custom, id++, Pick(kFinishes), TEXT("Surface"));
    const Text checker = TEXT("Pr\u00FCfer");
    if (random_.Chance(30) && CodePageHas(document_.codePage, checker)) {
        AddText(custom, id++, Pick(kPersons), checker);
    }
}

// What the project gives to all its documents is not chosen by their code page.
bool CodePageHasAll(const SampleDocument& document) {
    for (const SampleProperty& property : document.properties) {
        if (!CodePageHas(document.codePage, property.value.text)) return false;
    }
    return true;
}

// Each draw is a statement of its own: the order within an expression is the compiler's.
WText AttributedThing(SampleRandom& random) {
    const WText thing = random.Pick(kThings);
    return thing + random.Pick(kAttributes);
}

std::vector<std::uint8_t> Noise(SampleRandom& random, std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    for (std::uint8_t& value : bytes)
        value = static_cast<std::uint8_t>(random.Next() >> 56);
    return bytes;
}

void AppendBytes(std::vector<std::uint8_t>& bytes, WTextView text) {
    for (const char c : wtext::ToUtf8(text))
        bytes.push_back(static_cast<std::uint8_t>(c));
}

void FillPlainFile(SampleRandom& random, const SampleProject& project, WTextView title,
                   SampleDocument& document) {
    const bool isPage = document.kind == eSampleKind::Page;
    const WText head = WText(title) + TEXT(" - ") + project.title;
    WText text =
        isPage ? TEXT("<!DOCTYPE html>\n<title>") + head + TEXT("</title>\n") : head + TEXT("\n\n");
    for (std::uint32_t line = 3 + random.Below(20); line > 0; --line) {
        if (isPage) text += TEXT("<p>");
        text += random.Pick(kPersons);
        text += TEXT(": ");
        text += random.Pick(kRemarks);
        text += TEXT("\n");
    }
    AppendBytes(document.contents, text);
}

WText TitleOf(const WText& path) {
    const std::size_t begin = path.find_last_of(TEXT('\\')) + 1;
    return path.substr(begin, path.find_last_of(TEXT('.')) - begin);
}

}  // namespace

SampleProject MakeProject(SampleRandom& random, std::uint32_t index) {
    SampleProject project;
    project.number = 1001 + index;
    project.title = random.Pick(kMachines);
    project.company = random.Pick(kCompanies);
    project.manager = random.Pick(kPersons);
    project.designer = random.Pick(kPersons);
    project.folder =
        TEXT("Projects\\") + wtext::FromNumber(project.number) + TEXT(" ") + project.title;
    return project;
}

WText MakeThingName(SampleRandom& random, eSampleKind kind) {
    switch (kind) {
        case eSampleKind::Part:
        case eSampleKind::Drawing:
        case eSampleKind::DesignElement:
            return AttributedThing(random);
        case eSampleKind::Assembly:
        case eSampleKind::Presentation:
            return random.Pick(kGroups);
        case eSampleKind::Office:
        case eSampleKind::Text:
        case eSampleKind::Page:
            return random.Pick(kPapers);
    }
    return {};
}

void FillDocument(SampleRandom& random, const SampleProject& project, bool isLibraryPart,
                  SampleDocument& document) {
    const WText title = TitleOf(document.path);
    if (!document.IsCompound()) {
        FillPlainFile(random, project, title, document);
        return;
    }
    constexpr std::uint16_t kUtf8 = 65001;
    constexpr std::uint16_t kCodePages[] = {1252, 1250, 1251, 932, kUtf8, mddoc::kUtf16CodePage};
    document.codePage = random.Pick(kCodePages);
    Filler filler(random, project, document);
    filler.Summaries(title);
    if (document.kind != eSampleKind::Office) filler.Product(isLibraryPart);
    filler.Custom();
    if (!CodePageHasAll(document)) document.codePage = kUtf8;
    if (random.Chance(50)) document.preview = Noise(random, 800 + random.Below(12000));
    document.contents = Noise(random, 500 + random.Below(24000));
}
