#include "host/srprops/property_lister.h"

#include <cstdio>

#include "host/srprops/value_text.h"

using mddoc::eSetKind;
using mddoc::PropertyEntry;

namespace {

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
            return "it is too long, or has too many elements";
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

}  // namespace

bool PropertyLister::List(const mddoc::DocumentPath& path, const std::string& shownPath) {
    path_ = shownPath;
    file_ = LastComponent(shownPath);
    rows_.clear();
    faults_.clear();
    const HRESULT status = document_.Open(path);
    if (FAILED(status)) {
        Fault("", status);
        return false;
    }
    bool allRead = true;
    for (const SetName& set : kSets)
        allRead = ListSet(set.kind, set.name) && allRead;
    document_.Close();
    return allRead;
}

bool PropertyLister::ListSet(eSetKind kind, const char* set) {
    const HRESULT status = document_.List(kind, entries_);
    if (FAILED(status)) {
        Fault(std::string(", set ") + set, status);
        return false;
    }
    if (status == S_FALSE) {
        // Only our own documents have the product's set, so its absence is no news.
        if (kind != eSetKind::Product) Row(set, "-", "ABSENT", "");
        return true;
    }
    if (entries_.empty()) Row(set, "-", "EMPTYSET", "");
    bool allRead = true;
    for (const PropertyEntry& entry : entries_)
        allRead = ListEntry(kind, set, entry) && allRead;
    return allRead;
}

bool PropertyLister::ListEntry(eSetKind kind, const char* set, const PropertyEntry& entry) {
    const mddoc::PropertyValue& value = entry.value;
    std::string id = std::to_string(entry.id);
    if (kind == eSetKind::UserDefined) {
        id = entry.name.empty() ? std::string("#") + id : EscapedText(entry.name);
    }
    HRESULT status = entry.status;
    std::string text;
    if (FAILED(status)) {
        // told below
    } else if (value.type == VT_BLOB || value.type == VT_BLOB_OBJECT || value.type == VT_CF) {
        status = document_.FindBlob(kind, entry.id, kMostBlobBytes, bytes_);
        if (SUCCEEDED(status)) text = BlobText(bytes_);
    } else if (value.type == VT_I2 && entry.id == mddoc::kCodePageId) {
        text = std::to_string(static_cast<std::uint16_t>(value.number));
    } else if (kind == eSetKind::Summary && entry.id == kEditingTime && value.type == VT_FILETIME) {
        text = std::to_string(mddoc::Ticks(value.time));
    } else {
        text = ValueText(value);
    }
    if (FAILED(status)) {
        Fault(std::string(", set ") + set + ", property " + id, status);
        return false;
    }
    Row(set, id, TypeText(value.type), text);
    return true;
}

void PropertyLister::Row(const char* set, const std::string& id, const std::string& type,
                         const std::string& value) {
    rows_ += file_ + "\t" + set + "\t" + id + "\t" + type + "\t" + value + "\n";
}

void PropertyLister::Fault(const std::string& what, HRESULT status) {
    faults_ += "srprops: " + path_ + what + ": " + FaultText(status) + "\n";
}
