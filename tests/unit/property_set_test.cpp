#include <gtest/gtest.h>

#include <functional>

#include "companions/md/document/document_properties.h"
#include "host/srsample/compound_writer.h"
#include "host/srsample/property_set_writer.h"
#include "platform/native_layer.h"
#include "tests/unit/document_support.h"

namespace {

using mddoc::DocumentProperties;
using mddoc::eSetKind;
using mddoc::PropertyEntry;
using mddoc::PropertyValue;

constexpr HRESULT kCorrupt = STG_E_DOCFILECORRUPT;
const HRESULT kUnknownPage = HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION);
constexpr VARTYPE kByReference = 0x4000;

FileContents FileWith(WTextView stream, const FileContents& set) {
    CompoundWriter writer;
    writer.AddStream(stream, set);
    return writer.Build();
}

FileContents SummaryFile(const FileContents& set) {
    return FileWith(mddoc::kSummaryStream, set);
}

// A summary of one section whose bytes are given: the code page, and one value under id 2.
FileContents OneValue(std::uint16_t codePage, const FileContents& value) {
    ByteWriter out;
    out.Number16(0xFFFE);
    out.Fill(0, 22);
    out.Number32(1);
    out.Id(mddoc::kSummaryFormat);
    out.Number32(48);
    out.Number32(static_cast<std::uint32_t>(32 + value.size()));
    out.Number32(2);
    for (const std::uint32_t number : {1u, 24u, 2u, 32u})
        out.Number32(number);
    out.Number32(VT_I2);
    out.Number32(codePage);
    out.Bytes(value);
    return out.Done();
}

FileContents Lpstr(const std::string& bytes) {
    ByteWriter out;
    out.Number32(VT_LPSTR);
    out.Number32(static_cast<std::uint32_t>(bytes.size()));
    for (const char c : bytes)
        out.Byte(static_cast<std::uint8_t>(c));
    return out.Done();
}

TEST(PropertySet, EveryKindOfValueComesBack) {
    const WText umlauts = TEXT("M\u00FCller & S\u00F6hne");
    const GUID id = {0xA1B2C3D4, 0x1234, 0x5678, {1, 2, 3, 4, 5, 6, 7, 8}};
    const TempFolder folder;
    DocumentProperties document;
    for (const int codePage : {1252, 65001, 1200}) {
        SCOPED_TRACE(codePage);
        PropertySectionWriter section(mddoc::kProductFormat, static_cast<std::uint16_t>(codePage));
        section.AddText(5, umlauts);
        section.AddNumber(40, -3);
        section.AddCurrency(36, -123456789);
        section.AddTime(4, 0x01C0FFEE12345678);
        section.AddId(31, id);
        section.AddYesNo(50, true);
        section.AddReal(51, -0.25);
        section.AddTexts(52, {TEXT("a"), umlauts, TEXT("")});
        section.AddPicture(53, FileContents(70000, 7));
        ASSERT_EQ(S_OK,
                  document.Open(folder.Write(
                      "kinds", FileWith(mddoc::kProductStream, BuildPropertySet({section})))));
        EXPECT_EQ(S_FALSE, document.SetStatus(eSetKind::Summary));
        ASSERT_EQ(S_OK, document.SetStatus(eSetKind::Product));
        PropertyValue value;
        const auto find = [&](DWORD property) -> const PropertyValue& {
            EXPECT_EQ(S_OK, document.Find(eSetKind::Product, property, value)) << property;
            return value;
        };
        EXPECT_EQ(umlauts, find(5).text);
        EXPECT_EQ(codePage == 1200 ? VT_LPWSTR : VT_LPSTR, value.type);
        EXPECT_EQ(-3, find(40).number);
        EXPECT_EQ(-123456789, find(36).number);
        EXPECT_EQ(0x01C0FFEE12345678u, mddoc::Ticks(find(4).time));
        EXPECT_TRUE(id == find(31).guid);
        EXPECT_EQ(1, find(50).number);
        EXPECT_EQ(-0.25, find(51).real);
        ASSERT_EQ(3u, find(52).elements.size());
        EXPECT_EQ(umlauts, value.elements[1].text);
        EXPECT_EQ(WText(), value.elements[2].text);
        EXPECT_EQ(70008u, find(53).cbBlob);
        FileContents blob;
        EXPECT_EQ(S_OK, document.FindBlob(eSetKind::Product, 53, 70008, blob));
        EXPECT_EQ(70008u, blob.size());
        EXPECT_EQ(STG_E_READFAULT, document.FindBlob(eSetKind::Product, 53, 70007, blob));
        EXPECT_EQ(DISP_E_TYPEMISMATCH, document.FindBlob(eSetKind::Product, 5, 100, blob));
        EXPECT_EQ(S_FALSE, document.Find(eSetKind::Product, 6, value));
        EXPECT_EQ(VT_EMPTY, value.type);
    }
}

TEST(PropertySet, TextsOfEveryCodePage) {
    struct Row {
        int codePage;
        std::string bytes;
        WText wanted;
        bool isOptional = false;  // a part of Windows that may not be installed
    };
    const Row rows[] = {
        {1252, std::string("Caf\xE9 \x80\0junk", 11), TEXT("Caf\u00E9 \u20AC")},
        {932, "\x83\x65\x83\x58\x83\x67", TEXT("\u30C6\u30B9\u30C8")},
        {936, "\xB2\xE2", TEXT("\u6D4B")},
        {949, "\xB1\xE8", TEXT("\uAE40")},
        {950, "\xA7\xF5", TEXT("\u674E")},
        {10002, "\xA4\x75", TEXT("\u5DE5")},
        {65001, "\xE2\x82\xAC", TEXT("\u20AC")},
        {1200, std::string("\x11\x20z\0\0\0x\0", 8), TEXT("\u2011z")},
        {0, "\xE9", TEXT("\u00E9")},
        {31337, "plain", TEXT("plain")},
        {20273, "\xC1\x4A", TEXT("A\u00C4"), true},
        {38598, "\xE0", TEXT("\u05D0"), true},
        {50937, "\xC1", TEXT("A"), true},
        {57002, "\xB3", TEXT("\u0915"), true},
    };
    const TempFolder folder;
    DocumentProperties document;
    PropertyValue value;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.codePage);
        const FileContents set =
            OneValue(static_cast<std::uint16_t>(row.codePage), Lpstr(row.bytes));
        ASSERT_EQ(S_OK, document.Open(folder.Write("text", SummaryFile(set))));
        const HRESULT status = document.Find(eSetKind::Summary, 2, value);
        if (row.isOptional && status == kUnknownPage && !IsNativeLayer()) continue;
        EXPECT_EQ(S_OK, status);
        EXPECT_EQ(row.wanted, value.text);
    }
    // The set is sound, this one text can't be read.
    ASSERT_EQ(S_OK,
              document.Open(folder.Write("text", SummaryFile(OneValue(31337, Lpstr("\xE9"))))));
    EXPECT_EQ(S_OK, document.SetStatus(eSetKind::Summary));
    EXPECT_EQ(kUnknownPage, document.Find(eSetKind::Summary, 2, value));
    EXPECT_EQ(VT_EMPTY, value.type);
}

// Of each code page of one byte a character, its number and what all bytes alone stand for, as
// Windows' own tables have it.
TEST(PropertySet, EveryByteOfTheSmallCodePages) {
    const std::pair<std::uint32_t, std::uint32_t> rows[] = {
        {37, 0xEE95},    {437, 0xED70},   {500, 0x5A37},   {708, 0x01CB},   {720, 0x272D},
        {737, 0x17E1},   {775, 0x73C5},   {850, 0xD7BA},   {852, 0xF89A},   {855, 0xD43B},
        {857, 0x33A7},   {860, 0x091A},   {861, 0xC077},   {862, 0xBC4C},   {863, 0xD214},
        {864, 0xD6A8},   {865, 0xA2AC},   {866, 0xC316},   {869, 0xD732},   {874, 0x6D8F},
        {875, 0x4368},   {1026, 0xD9A3},  {1250, 0xF5DA},  {1251, 0x0198},  {1252, 0x8A4D},
        {1253, 0x6EFC},  {1254, 0x55F3},  {1255, 0x7623},  {1256, 0x6038},  {1257, 0x73E5},
        {1258, 0xFD0F},  {10000, 0x8B6B}, {10004, 0xE57A}, {10005, 0x1DCA}, {10006, 0x2D0B},
        {10007, 0x4847}, {10010, 0x39AB}, {10017, 0x2370}, {10021, 0x68D1}, {10029, 0xDB8D},
        {10079, 0xC8A7}, {10081, 0x7485}, {10082, 0xCC34}, {20127, 0x7C5C}, {20866, 0xA4C0},
        {21866, 0x68DF}, {28591, 0xBC65}, {28592, 0x59E5}, {28593, 0x452B}, {28594, 0x5D38},
        {28595, 0xCA1F}, {28596, 0xF8D4}, {28597, 0x81C8}, {28598, 0x71D9}, {28599, 0x84A1},
        {28603, 0x896F}, {28605, 0xC2B9},
    };
    mddoc::TextDecoder decoder;
    WText text;
    for (const auto& [codePage, wanted] : rows) {
        std::uint32_t digest = 2166136261;
        for (unsigned value = 0; value < 256; ++value) {
            const auto bytes = static_cast<BYTE>(value);
            ASSERT_EQ(S_OK, decoder.Decode(codePage, &bytes, 1, text)) << codePage;
            for (const WCHAR unit : text)
                digest = (digest ^ unit) * 16777619u;
        }
        EXPECT_EQ(wanted, (digest >> 16) ^ (digest & 0xFFFF)) << codePage;
    }
}

TEST(PropertySet, NamesOfTheUserDefinedSet) {
    const TempFolder folder;
    DocumentProperties document;
    for (const int codePage : {1252, 65001, 1200}) {
        SCOPED_TRACE(codePage);
        const auto page = static_cast<std::uint16_t>(codePage);
        PropertySectionWriter office(mddoc::kDocumentSummaryFormat, page);
        office.AddText(15, TEXT("Works"));
        PropertySectionWriter custom(mddoc::kUserDefinedFormat, page);
        custom.AddText(2, TEXT("green"));
        custom.AddName(2, TEXT("F\u00E4rbe"));
        custom.AddNumber(3, 9);
        custom.AddName(7, TEXT("NO"));  // of no value
        custom.AddName(3, TEXT("No"));
        custom.AddNumber(4, 1);
        ASSERT_EQ(S_OK, document.Open(
                            folder.Write("names", FileWith(mddoc::kDocumentSummaryStream,
                                                           BuildPropertySet({office, custom})))));
        PropertyValue value;
        EXPECT_EQ(S_OK, document.FindByName(TEXT("f\u00C4RBE"), value));
        EXPECT_EQ(WText(TEXT("green")), value.text);
        EXPECT_EQ(S_FALSE, document.FindByName(TEXT("F\u00E4rb"), value));
        EXPECT_EQ(S_OK, document.FindByName(TEXT("no"), value));
        EXPECT_EQ(9, value.number);
        EXPECT_EQ(S_OK, document.Find(eSetKind::DocumentSummary, 15, value));
        std::vector<PropertyEntry> entries;
        EXPECT_EQ(S_OK, document.List(eSetKind::UserDefined, entries));
        ASSERT_EQ(4u, entries.size());
        EXPECT_EQ(WText(TEXT("No")), entries[2].name);
        EXPECT_EQ(WText(), entries[3].name);
    }
}

TEST(PropertySet, DamageIsTheStatusOfTheSet) {
    struct Row {
        const char* label;
        std::function<void(FileContents&)> change;
        HRESULT set;
    };
    const auto number = [](std::size_t offset, std::uint32_t value) {
        return [=](FileContents& bytes) { Put32(bytes, offset, value); };
    };
    // Head 0-27, section entry 28-47, section from 48: length, count, (1, 24), (2, 32), values.
    const Row rows[] = {
        {"untouched", [](FileContents&) {}, S_OK},
        {"byte order", number(0, 0), kCorrupt},
        {"format version", number(0, 0x0005FFFE), kCorrupt},
        {"no section", number(24, 0), kCorrupt},
        {"two sections claimed", number(24, 2), S_OK},
        {"sections of four billion", number(24, 0xFFFFFFFF), kCorrupt},
        {"other format", number(28, 0), S_OK},
        {"section behind the end", number(44, 0x7FFFFFFF), kCorrupt},
        {"section at the end", number(44, 92), kCorrupt},
        {"section of no length", number(48, 0), kCorrupt},
        {"section too short for its value", number(48, 40), kCorrupt},
        {"section longer than the stream", number(48, 0xFFFFFFFF), S_OK},
        {"properties of four billion", number(52, 0xFFFFFFFF), kCorrupt},
        {"no properties", number(52, 0), S_OK},
        {"value over the list", number(68, 8), kCorrupt},
        {"value behind the end", number(68, 0x7FFFFFFF), kCorrupt},
        {"value at the last bytes", number(68, 44), kCorrupt},
        {"one id twice", number(64, 1), kCorrupt},
        {"code page of another type", number(72, VT_I4), kCorrupt},
        {"unknown type", number(80, 0x55), kCorrupt},
        {"array", number(80, VT_ARRAY | VT_I4), S_OK},
        {"type of a reference", number(80, kByReference | VT_I4), kCorrupt},
        {"text of four billion", number(84, 0xFFFFFFFF), kCorrupt},
        {"text one too long", number(84, 5), kCorrupt},
        {"blob too long", [](FileContents& b) { Put32(b, 80, VT_BLOB), Put32(b, 84, 5); },
         kCorrupt},
        {"vector of four billion",
         [](FileContents& b) { Put32(b, 80, VT_VECTOR | VT_LPSTR), Put32(b, 84, 0xFFFFFFFF); },
         kCorrupt},
        {"vector of vectors", number(80, VT_VECTOR | VT_ARRAY | VT_I4), kCorrupt},
        {"vector of nothing", number(80, VT_VECTOR | VT_EMPTY), kCorrupt},
        {"stream of a head only", [](FileContents& b) { b.resize(28); }, kCorrupt},
        {"stream shorter than a head", [](FileContents& b) { b.resize(27); }, kCorrupt},
        {"stream without bytes", [](FileContents& b) { b.clear(); }, kCorrupt},
        {"dictionary of four billion",
         [](FileContents& b) { Put32(b, 64, 0), Put32(b, 80, 0xFFFFFFFF); }, kCorrupt},
    };
    const TempFolder folder;
    DocumentProperties document;
    PropertyValue value;
    std::vector<PropertyEntry> entries;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        FileContents set = OneValue(1252, Lpstr(std::string("abc\0", 4)));
        ASSERT_EQ(92u, set.size());
        row.change(set);
        ASSERT_EQ(S_OK, document.Open(folder.Write("set", SummaryFile(set))));
        EXPECT_EQ(row.set, document.SetStatus(eSetKind::Summary));
        if (row.set != S_OK) {
            EXPECT_EQ(row.set, document.Find(eSetKind::Summary, 2, value));
            EXPECT_EQ(row.set, document.List(eSetKind::Summary, entries));
        }
    }
}

// Vectors as writers lay them out: byte texts without padding, wide ones with it, and exceptions.
TEST(PropertySet, VectorsInEveryLayout) {
    const std::string head("\x1E\x10\0\0\2\0\0\0", 8);
    const std::string packed = head + std::string("\2\0\0\0a\0\3\0\0\0bc\0", 13);
    const std::string padded = head + std::string("\2\0\0\0a\0\0\0\3\0\0\0bc\0\0", 16);
    const std::string noFinal = head + std::string("\1\0\0\0a\2\0\0\0bc", 11);
    const std::string mixed = std::string("\x0C\x10\0\0\2\0\0\0\x1E\0\0\0\2\0\0\0a\0", 18) +
                              std::string("\3\0\0\0\7\0\0\0", 8);
    const std::string wide =
        std::string("\x1F\x10\0\0\2\0\0\0\1\0\0\0a\0\0\0", 16) + std::string("\2\0\0\0b\0c\0", 8);
    // Read as packed this would fit as well, and give two other texts.
    const std::string padding = head + std::string("\3\0\0\0a\0\0\0\3\0\0\0bc\0", 15);
    const std::string ambiguous = padding + std::string(1000, 'x');
    const TempFolder folder;
    DocumentProperties document;
    PropertyValue value;
    for (const std::string& raw : {packed, padded, noFinal, mixed, wide, ambiguous}) {
        const FileContents bytes(raw.begin(), raw.end());
        ASSERT_EQ(S_OK, document.Open(folder.Write("vector", SummaryFile(OneValue(1252, bytes)))));
        ASSERT_EQ(S_OK, document.Find(eSetKind::Summary, 2, value));
        ASSERT_EQ(2u, value.elements.size());
        EXPECT_EQ(WText(TEXT("a")), value.elements[0].text);
        if (raw != mixed) {
            EXPECT_EQ(WText(TEXT("bc")), value.elements[1].text);
        } else {
            EXPECT_EQ(7, value.elements[1].number);
        }
    }
}

TEST(DocumentProperties, ForeignFilesAndNoFiles) {
    const TempFolder folder;
    DocumentProperties document;
    PropertyValue value;
    const FileContents good = SummaryFile(OneValue(1252, Lpstr("x")));
    EXPECT_EQ(S_OK, document.Open(folder.Write("good", good)));
    EXPECT_EQ(S_FALSE, document.Open(folder.Write("plain", {'t', 'e', 'x', 't'})));
    EXPECT_EQ(S_FALSE, document.SetStatus(eSetKind::Summary));
    EXPECT_EQ(S_FALSE, document.Find(eSetKind::Summary, 2, value));
    EXPECT_EQ(STG_E_FILENOTFOUND, document.Open((folder.Path() / "none").native()));
    EXPECT_EQ(STG_E_FILENOTFOUND, document.Find(eSetKind::Summary, 2, value));
    EXPECT_EQ(STG_E_PATHNOTFOUND, document.Open((folder.Path() / "no" / "file").native()));
    EXPECT_EQ(STG_E_ACCESSDENIED, document.Open(folder.Path().native()));
    ASSERT_EQ(S_OK, document.Open(folder.Write("good", good)));
}

TEST(DocumentProperties, LimitsOfASet) {
    const TempFolder folder;
    DocumentProperties document;
    PropertyValue value;
    struct Row {
        std::size_t cbText;
        HRESULT set;
        HRESULT value;
    };
    constexpr std::size_t kAround = 48 + 32 + 8;
    for (const Row& row : {Row{mddoc::kMostTextBytes, S_OK, S_OK},
                           {mddoc::kMostTextBytes + 1, S_OK, DISP_E_OVERFLOW},
                           {mddoc::kMostSetBytes - kAround, S_OK, DISP_E_OVERFLOW},
                           {mddoc::kMostSetBytes - kAround + 1, kCorrupt, kCorrupt}}) {
        const FileContents set = OneValue(1252, Lpstr(std::string(row.cbText, '\xE9')));
        ASSERT_EQ(S_OK, document.Open(folder.Write("long", SummaryFile(set))));
        EXPECT_EQ(row.set, document.SetStatus(eSetKind::Summary)) << row.cbText;
        EXPECT_EQ(row.value, document.Find(eSetKind::Summary, 2, value)) << row.cbText;
    }
    for (const std::uint32_t count : {mddoc::kMostProperties - 2, mddoc::kMostProperties - 1}) {
        PropertySectionWriter custom(mddoc::kUserDefinedFormat, 1252);  // with it and the names
        for (std::uint32_t id = 2; id < 2 + count; ++id) {
            custom.AddNumber(id, static_cast<std::int32_t>(id));
            // Two names each, and all but the first in the wrong order.
            custom.AddName(id, TEXT("N") + wtext::FromNumber(count - id));
            custom.AddName(id, TEXT("other"));
        }
        ASSERT_EQ(S_OK, document.Open(folder.Write("many", FileWith(mddoc::kDocumentSummaryStream,
                                                                    BuildPropertySet({custom})))));
        const bool fits = count + 2 == mddoc::kMostProperties;
        EXPECT_EQ(fits ? S_OK : kCorrupt, document.SetStatus(eSetKind::UserDefined));
        for (std::uint32_t id = 2; fits && id < 2 + count; ++id) {
            const WText name = TEXT("n") + wtext::FromNumber(count - id);
            ASSERT_EQ(S_OK, document.FindByName(name, value));
            ASSERT_EQ(id, value.number);
        }
        EXPECT_GE(mddoc::kMostAllocated, document.Spent().cbAllocated);
    }
}

// Each of many properties claims to be the same long vector. To walk it for each would not end
// within the limit of a test.
TEST(DocumentProperties, OverlappingVectorsAreNotWalked) {
    constexpr std::uint32_t kCount = 60000;
    constexpr std::uint32_t kElements = 1800000;
    ByteWriter section;
    section.Number32(8 + kCount * 8 + 8 + kElements * 4);
    section.Number32(kCount);
    for (std::uint32_t i = 0; i < kCount; ++i) {
        section.Number32(i + 2);
        section.Number32(8 + kCount * 8);
    }
    section.Number32(VT_VECTOR | VT_LPSTR);
    section.Number32(kElements);
    section.Fill(0, kElements * 4);
    ByteWriter set;
    set.Number16(0xFFFE);
    set.Fill(0, 22);
    set.Number32(1);
    set.Id(mddoc::kSummaryFormat);
    set.Number32(48);
    set.Bytes(section.Done());
    const TempFolder folder;
    const NativePath path = folder.Write("vectors", SummaryFile(set.Done()));
    DocumentProperties document;
    ASSERT_EQ(S_OK, document.Open(path));
    EXPECT_EQ(kCorrupt, document.SetStatus(eSetKind::Summary));
}

}  // namespace
