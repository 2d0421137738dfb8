// Sample libraries: what was written comes back through the reader, and the bytes are those of
// every other system.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "host/srprops/property_lister.h"
#include "host/srprops/sha256.h"
#include "host/srprops/value_text.h"
#include "host/srsample/compound_writer.h"
#include "host/srsample/sample_damage.h"
#include "host/srsample/sample_library.h"
#include "tests/unit/document_support.h"

namespace {

using mddoc::DocumentProperties;
using mddoc::DocumentReference;
using mddoc::eSetKind;
using mddoc::PropertyEntry;
using mddoc::PropertyValue;

constexpr std::uint32_t kDocuments = 200;
constexpr eSetKind kSets[] = {eSetKind::Summary, eSetKind::DocumentSummary, eSetKind::UserDefined,
                              eSetKind::Product};

// How many properties besides the written ones a set has: its code page, the summary a picture.
std::size_t Besides(eSetKind set, const SampleDocument& document) {
    return 1 + (set == eSetKind::Summary && !document.preview.empty() ? 1 : 0);
}

void ExpectProperties(DocumentProperties& reader, const SampleDocument& document) {
    std::map<eSetKind, std::size_t> written;
    PropertyValue got;
    for (const SampleProperty& property : document.properties) {
        SCOPED_TRACE(property.id);
        ++written[property.set];
        ASSERT_EQ(S_OK, reader.Find(property.set, property.id, got));
        EXPECT_EQ(TypeText(property.value.type), TypeText(got.type));
        EXPECT_EQ(ValueText(property.value), ValueText(got));
        if (property.name.empty()) continue;
        ASSERT_EQ(S_OK, reader.FindByName(property.name, got));
        EXPECT_EQ(ValueText(property.value), ValueText(got));
    }
    std::vector<PropertyEntry> entries;
    for (const eSetKind set : kSets) {
        const bool isThere = written[set] > 0;
        EXPECT_EQ(isThere ? S_OK : S_FALSE, reader.List(set, entries));
        EXPECT_EQ(isThere ? written[set] + Besides(set, document) : 0, entries.size());
    }
}

void ExpectDocument(DocumentProperties& reader, const NativePath& path,
                    const SampleDocument& document) {
    ASSERT_EQ(document.IsCompound() ? S_OK : S_FALSE, reader.Open(path));
    std::vector<DocumentReference> references;
    if (!document.IsCompound()) {
        EXPECT_EQ(S_FALSE, mddoc::ReadReferences(reader, references));
        return;
    }
    EXPECT_TRUE(reader.RootClass() == RootClassOf(document.kind));
    ExpectProperties(reader, document);
    EXPECT_EQ(document.HasReferences() ? S_OK : S_FALSE, mddoc::ReadReferences(reader, references));
    ASSERT_EQ(document.references.size(), references.size());
    for (std::size_t i = 0; i < references.size(); ++i) {
        EXPECT_EQ(document.references[i].relativePath, references[i].relativePath);
        EXPECT_EQ(document.references[i].fullPath, references[i].fullPath);
    }
    mddoc::StreamWindow contents;
    const BYTE* bytes = nullptr;
    EXPECT_EQ(S_OK, reader.OpenStream(ContentsStreamOf(document), contents));
    ASSERT_EQ(S_OK, contents.Fetch(0, contents.Size(), bytes));
    EXPECT_EQ(document.contents, FileContents(bytes, bytes + contents.Size()));
    reader.Close();
}

TEST(Sample, WhatIsWrittenComesBack) {
    const TempFolder folder;
    DocumentProperties reader;
    SampleLibrary library(kDocuments, 3);
    SampleDocument document;
    std::set<eSampleKind> kinds;
    std::set<std::pair<eSetKind, std::uint32_t>> ids;
    std::set<VARTYPE> types;
    std::set<std::uint16_t> codePages;
    while (library.MakeNext(document)) {
        SCOPED_TRACE(wtext::ToUtf8(document.path));
        ExpectDocument(reader, folder.Write("document", BuildDocument(document)), document);
        kinds.insert(document.kind);
        codePages.insert(document.codePage);
        for (const SampleProperty& property : document.properties) {
            ids.insert({property.set, property.id});
            types.insert(property.value.type);
        }
    }
    // All kinds and all kinds of values, so that nothing above was skipped for want of a sample.
    EXPECT_EQ(8u, kinds.size());
    EXPECT_EQ(8u, types.size());
    EXPECT_EQ((std::set<std::uint16_t>{932, 1200, 1250, 1251, 1252, 65001}), codePages);
    for (const std::uint32_t id : {5, 55, 10, 43, 4, 35, 36, 40, 31, 1005, 1006, 1103, 1108}) {
        EXPECT_EQ(1u, ids.count({eSetKind::Product, id})) << id;
    }
}

// Whoever reads a damaged document is told of it, or that there is none, and gets no value.
TEST(Sample, DamagedDocumentsHoldNothing) {
    const TempFolder folder;
    DocumentProperties reader;
    PropertyLister lister;
    std::vector<DocumentReference> references;
    std::set<WText> paths;
    for (const DamagedSample& sample : MakeDamagedSamples(1)) {
        SCOPED_TRACE(sample.what);
        EXPECT_TRUE(paths.insert(sample.path).second) << "one path twice";
        const NativePath path = folder.Write("damaged.hpa", sample.bytes);
        const HRESULT opened = reader.Open(path);
        if (opened != S_OK) {
            EXPECT_EQ(opened, mddoc::ReadReferences(reader, references));
        }
        EXPECT_EQ(!sample.isDocument, lister.List(path, "damaged.hpa"));
        EXPECT_EQ(sample.isDocument, !lister.Faults().empty());
        EXPECT_EQ(sample.isDocument, lister.Rows().empty());
    }
    EXPECT_EQ(9u, paths.size());
}

TEST(Sample, SameBytesEverywhere) {
    const auto digestOf = [](std::uint64_t seed) {
        SampleLibrary library(60, seed);
        SampleDocument document;
        FileContents all;
        const auto add = [&](const WText& path, const FileContents& bytes) {
            const std::string name = wtext::ToUtf8(path);
            all.insert(all.end(), name.begin(), name.end());
            all.insert(all.end(), bytes.begin(), bytes.end());
        };
        while (library.MakeNext(document))
            add(document.path, BuildDocument(document));
        for (const DamagedSample& sample : MakeDamagedSamples(seed))
            add(sample.path, sample.bytes);
        return BlobText(all);
    };
    EXPECT_EQ("bytes:1318780:sha256:0b4d0cb82f0db140", digestOf(1));
    EXPECT_NE(digestOf(1), digestOf(2));
}

TEST(Sample, DamagedReferencesAreNoReferences) {
    struct Row {
        const char* label;
        std::size_t offset;
        std::uint32_t value;
    };
    // Version, count, a path of two units, an empty one.
    const FileContents good = {1, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 'a', 0, 'b', 0, 0, 0, 0, 0};
    const Row rows[] = {
        {"untouched", 0, 1},
        {"later version", 0, 2},
        {"two claimed", 4, 2},
        {"four billion claimed", 4, 0xFFFFFFFF},
        {"none claimed", 4, 0},
        {"path too long", 8, 5},
        {"path of four billion", 8, 0xFFFFFFFF},
        {"path too short", 8, 1},
        {"second path too long", 16, 1},
    };
    const TempFolder folder;
    DocumentProperties reader;
    std::vector<DocumentReference> references;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        FileContents bytes = good;
        Put32(bytes, row.offset, row.value);
        CompoundWriter writer;
        writer.AddStream(mddoc::kReferencesStream, bytes);
        ASSERT_EQ(S_OK, reader.Open(folder.Write("references", writer.Build())));
        const bool isGood = bytes == good;
        EXPECT_EQ(isGood ? S_OK : STG_E_DOCFILECORRUPT, mddoc::ReadReferences(reader, references));
        EXPECT_EQ(isGood ? 1u : 0u, references.size());
    }
    // References, units of the path of each.
    for (const auto& [count, cch, isGood] : {std::tuple{65536u, 1u, true},
                                             {65537u, 1u, false},
                                             {1u, 32767u, true},
                                             {1u, 32768u, false},
                                             {1u, 0u, false},
                                             {256u, 16384u, false}}) {
        ByteWriter out;
        out.Number32(mddoc::kReferencesVersion);
        out.Number32(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            out.Number32(cch);
            out.Fill('p', 2 * cch);
            out.Number32(0);
        }
        CompoundWriter writer;
        writer.AddStream(mddoc::kReferencesStream, out.Done());
        ASSERT_EQ(S_OK, reader.Open(folder.Write("many", writer.Build())));
        EXPECT_EQ(isGood ? S_OK : STG_E_DOCFILECORRUPT, mddoc::ReadReferences(reader, references));
        EXPECT_EQ(isGood ? count : 0u, references.size());
    }
}

}  // namespace
