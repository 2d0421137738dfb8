// srprops FILE...: every property of the documents, a line each with the columns file, set, id or
// name, type, value. A set that isn't there has a line with ABSENT, one without properties a line
// with EMPTYSET. What can't be read is told on the standard error output.
#include <cstdio>
#include <string>

#include "companions/md/document/document_properties.h"
#include "host/srprops/value_text.h"
#include "platform/host/program_main.h"

using mddoc::DocumentProperties;
using mddoc::eSetKind;
using mddoc::PropertyEntry;

namespace {

enum eExit { kAllRead = 0, kWrongUse = 2, kNotAllRead = 3 };

constexpr DWORD kEditingTime = 10;  // of the summary: a duration in the form of a time
constexpr std::uint32_t kMostBlobBytes = 256u << 20;

struct SetName {
    eSetKind kind;
    const char* name;
};

constexpr SetName kSets[] = {
    {eSetKind::Summary, "summary"},
    {eSetKind::DocumentSummary, "docsummary"},
    {eSetKind::UserDefined, "custom"},
    {eSetKind::Product, "product"},
};

std::string LastComponent(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

std::string FaultText(HRESULT status) {
    switch (status) {
        case STG_E_FILENOTFOUND:
            return "there is no such file";
        case STG_E_PATHNOTFOUND:
            return "there is no such folder";
        case STG_E_ACCESSDENIED:
            return "access is denied";
        case STG_E_TOOMANYOPENFILES:
            return "too many files are open";
        case STG_E_SHAREVIOLATION:
            return "another process keeps the file to itself";
        case STG_E_LOCKVIOLATION:
            return "another process has locked a part of the file";
        case STG_E_READFAULT:
            return "reading failed";
        case STG_E_DOCFILECORRUPT:
            return "it is damaged";
        case DISP_E_BADVARTYPE:
            return "its type can't be shown";
        case DISP_E_OVERFLOW:
            return "it has too many elements";
        default:
            break;
    }
    if (status == HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION)) {
        return "its code page is not known";
    }
    char text[32] = "";
    std::snprintf(text, sizeof text, "status %08X", static_cast<unsigned>(status));
    return text;
}

class Printer {
public:
    // False when something of the document could not be read.
    bool Print(const HostArgument& argument);

private:
    bool PrintSet(const SetName& set);
    bool PrintEntry(const SetName& set, const PropertyEntry& entry);
    void Row(const SetName& set, const std::string& id, const std::string& type,
             const std::string& value);
    void Fault(const std::string& what, HRESULT status);

    DocumentProperties document_;
    std::vector<PropertyEntry> entries_;
    std::vector<BYTE> bytes_;
    std::string path_;
    std::string file_;
};

bool Printer::Print(const HostArgument& argument) {
    path_ = argument.text;
    file_ = LastComponent(argument.text);
    const HRESULT status = document_.Open(argument.path);
    if (FAILED(status)) {
        Fault("", status);
        return false;
    }
    bool allRead = true;
    for (const SetName& set : kSets) allRead = PrintSet(set) && allRead;
    document_.Close();
    return allRead;
}

bool Printer::PrintSet(const SetName& set) {
    const HRESULT status = document_.List(set.kind, entries_);
    if (FAILED(status)) {
        Fault(std::string(", set ") + set.name, status);
        return false;
    }
    if (status == S_FALSE) {
        // Only our own documents have the product's set, so its absence is no news.
        if (set.kind != eSetKind::Product) Row(set, "-", "ABSENT", "");
        return true;
    }
    if (entries_.empty()) Row(set, "-", "EMPTYSET", "");
    bool allRead = true;
    for (const PropertyEntry& entry : entries_) allRead = PrintEntry(set, entry) && allRead;
    return allRead;
}

bool Printer::PrintEntry(const SetName& set, const PropertyEntry& entry) {
    const mddoc::PropertyValue& value = entry.value;
    std::string id = std::to_string(entry.id);
    if (set.kind == eSetKind::UserDefined) {
        id = entry.name.empty() ? "#" + id : EscapedText(entry.name);
    }
    HRESULT status = entry.status;
    std::string text;
    if (FAILED(status)) {
        // told below
    } else if (value.type == VT_BLOB || value.type == VT_BLOB_OBJECT || value.type == VT_CF) {
        status = document_.FindBlob(set.kind, entry.id, kMostBlobBytes, bytes_);
        if (SUCCEEDED(status)) text = BlobText(bytes_);
    } else if (value.type == VT_I2 && entry.id == mddoc::kCodePageId) {
        text = std::to_string(static_cast<std::uint16_t>(value.number));
    } else if (set.kind == eSetKind::Summary && entry.id == kEditingTime &&
               value.type == VT_FILETIME) {
        text = std::to_string(mddoc::Ticks(value.time));
    } else {
        text = ValueText(value);
    }
    if (FAILED(status)) {
        Fault(std::string(", set ") + set.name + ", property " + id, status);
        return false;
    }
    Row(set, id, TypeText(value.type), text);
    return true;
}

void Printer::Row(const SetName& set, const std::string& id, const std::string& type,
                  const std::string& value) {
    WriteOutput(file_ + "\t" + set.name + "\t" + id + "\t" + type + "\t" + value + "\n");
}

void Printer::Fault(const std::string& what, HRESULT status) {
    WriteError("srprops: " + path_ + what + ": " + FaultText(status) + "\n");
}

}  // namespace

int ProgramMain(const std::vector<HostArgument>& arguments) {
    if (arguments.empty()) {
        WriteError("Usage: srprops FILE...\nPrints the properties of the documents.\n");
        return kWrongUse;
    }
    Printer printer;
    bool allRead = true;
    for (const HostArgument& argument : arguments) allRead = printer.Print(argument) && allRead;
    return allRead ? kAllRead : kNotAllRead;
}
