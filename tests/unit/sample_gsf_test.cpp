// What an independent reader, the program gsf, sees in the documents of a sample library.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <map>

#include "host/srprops/value_text.h"
#include "host/srsample/sample_library.h"
#include "tests/unit/document_support.h"

namespace {

using mddoc::eSetKind;

std::string Output(const std::string& command) {
    std::string text;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return text;
    char buffer[4096];
    for (std::size_t got = 0; (got = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        text.append(buffer, got);
    }
    return pclose(pipe) == 0 ? text : "the command failed: " + text;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find('\n', begin)) != std::string::npos;
         begin = end + 1) {
        lines.push_back(text.substr(begin, end - begin));
    }
    return lines;
}

// gsf puts texts into quotation marks, with backslashes and octal numbers.
std::string Unquoted(const std::string& text) {
    std::string out;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] != '\\') {
            out += text[i];
        } else if (text[i + 1] >= '0' && text[i + 1] <= '3') {
            out += static_cast<char>(std::strtol(text.substr(i + 1, 3).c_str(), nullptr, 8));
            i += 3;
        } else {
            const char c = text[++i];
            out += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
        }
    }
    return out;
}

// The name under which gsf shows a property; empty for those that it shows otherwise or not at all.
std::string NameOf(const SampleProperty& property) {
    if (property.set == eSetKind::UserDefined) return wtext::ToUtf8(property.name);
    if (property.set == eSetKind::Product) return "";
    static const std::map<std::pair<eSetKind, std::uint32_t>, std::string> names = {
        {{eSetKind::Summary, 2}, "dc:title"},
        {{eSetKind::Summary, 3}, "dc:subject"},
        {{eSetKind::Summary, 4}, "dc:creator"},
        {{eSetKind::Summary, 6}, "dc:description"},
        {{eSetKind::Summary, 8}, "gsf:last-saved-by"},
        {{eSetKind::Summary, 9}, "meta:editing-cycles"},
        {{eSetKind::Summary, 12}, "meta:creation-date"},
        {{eSetKind::Summary, 13}, "dc:date"},
        {{eSetKind::DocumentSummary, 2}, "gsf:category"},
        {{eSetKind::DocumentSummary, 14}, "gsf:manager"},
        {{eSetKind::DocumentSummary, 15}, "dc:publisher"},
    };
    const auto found = names.find({property.set, property.id});
    return found == names.end() ? "" : found->second;
}

// A value as gsf would show it, as far as it is one text.
bool IsShownAs(const mddoc::PropertyValue& value, const std::string& shown) {
    switch (value.type) {
        case VT_BOOL:
            return shown == (value.number != 0 ? "TRUE" : "FALSE");
        case VT_I4:
            return shown == std::to_string(value.number);
        case VT_R8:
            return std::strtod(shown.c_str(), nullptr) == value.real;
        case VT_FILETIME:
            return shown == TimeText(mddoc::Ticks(value.time)).substr(0, 19) + "Z";
        default:
            return Unquoted(shown) == wtext::ToUtf8(value.text);
    }
}

TEST(SampleGsf, SeesTheStreamsAndTheValues) {
    const TempFolder folder;
    SampleLibrary library(60, 9);
    SampleDocument document;
    std::size_t compared = 0;
    while (library.MakeNext(document)) {
        if (!document.IsCompound()) continue;
        SCOPED_TRACE(wtext::ToUtf8(document.path));
        const std::string path = folder.Write("document", BuildDocument(document));
        const std::string stream = wtext::ToUtf8(ContentsStreamOf(document));
        const std::string contents = Output(SR_GSF " cat " + path + " '" + stream + "'");
        EXPECT_EQ(FileContents(contents.begin(), contents.end()), document.contents);
        const std::string listed = Output(SR_GSF " list " + path);
        for (const char* name : {"DesignProperties", "References"}) {
            const bool isWanted =
                name[0] == 'R' ? document.HasReferences() : document.kind != eSampleKind::Office;
            EXPECT_EQ(isWanted, listed.find(name) != std::string::npos) << name;
        }
        std::string command = SR_GSF " props " + path;
        for (const SampleProperty& property : document.properties) {
            const std::string name = NameOf(property);
            if (!name.empty()) command += " '" + name + "'";
        }
        std::map<std::string, std::string> shown;
        for (const std::string& line : Lines(Output(command))) {
            const std::size_t mark = line.find(": \t= ");
            if (mark != std::string::npos) shown[line.substr(0, mark)] = line.substr(mark + 5);
        }
        for (const SampleProperty& property : document.properties) {
            const std::string name = NameOf(property);
            if (name.empty()) continue;
            EXPECT_TRUE(IsShownAs(property.value, shown[name]))
                << name << ": wrote " << ValueText(property.value) << ", gsf shows " << shown[name];
            ++compared;
        }
    }
    EXPECT_LT(400u, compared);
}

}  // namespace
