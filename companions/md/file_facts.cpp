#include "companions/md/file_facts.h"

#include "outside/md_properties.h"
#include "platform/native_path.h"

namespace {

struct KindRow {
    const WCHAR* extension;
    int kind;
    GUID rootClass;  // of a genuine document of this kind
};
constexpr KindRow kKinds[] = {
    {TEXT(".hsb"),
     eKindAssembly,
     {0xE60F81E1, 0x49B3, 0x11D0, {0x93, 0xC3, 0x7E, 0x07, 0x06, 0x00, 0x00, 0x00}}},
    {TEXT(".hpa"),
     eKindPart,
     {0x4D29B490, 0x49B2, 0x11D0, {0x93, 0xC3, 0x7E, 0x07, 0x06, 0x00, 0x00, 0x00}}},
    {TEXT(".hdg"),
     eKindDrawing,
     {0xBBF9FDF1, 0x52DC, 0x11D0, {0x8C, 0x04, 0x08, 0x00, 0x09, 0x0B, 0xE8, 0xEC}}},
    {TEXT(".cvd"),
     eKindDrawing,
     {0xBBF9FDF1, 0x52DC, 0x11D0, {0x8C, 0x04, 0x08, 0x00, 0x09, 0x0B, 0xE8, 0xEC}}},
    {TEXT(".hpr"),
     eKindPresentation,
     {0x76283A80, 0x50DD, 0x11D3, {0xA7, 0xE3, 0x00, 0xC0, 0x4F, 0x79, 0xD7, 0xBC}}},
    {TEXT(".hdx"),
     eKindDesignElement,
     {0x62FBB030, 0x24C7, 0x11D3, {0xB7, 0x8D, 0x00, 0x60, 0xB0, 0xF1, 0x59, 0xEF}}},
    {TEXT(".cvw"),
     eKindWire,
     {0xA2B4C17D, 0xF0D2, 0x4C0F, {0x97, 0x99, 0xDD, 0x5F, 0x71, 0xDF, 0xB2, 0x91}}},
};

// Files of other programs that a search meets often: their extension alone tells what they are not,
// so they are not opened.
constexpr const WCHAR* kForeignExtensions[] = {
    TEXT(".doc"), TEXT(".xls"), TEXT(".ppt"),  TEXT(".txt"), TEXT(".htm"),  TEXT(".html"),
    TEXT(".sat"), TEXT(".stp"), TEXT(".step"), TEXT(".ste"), TEXT(".stpz"),
};

bool HasExtension(const WCHAR* fileName, const WCHAR* extension) {
    return CompareStringW(
               LOCALE_USER_DEFAULT,
               NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH | SORT_STRINGSORT,
               PathFindExtensionW(fileName), -1, extension, -1) == CSTR_EQUAL;
}

const KindRow* KindByExtension(const WCHAR* fileName) {
    for (const KindRow& row : kKinds) {
        if (HasExtension(fileName, row.extension)) return &row;
    }
    return nullptr;
}

int KindByRootClass(const GUID& rootClass) {
    for (const KindRow& row : kKinds) {
        if (row.rootClass == rootClass) return row.kind;
    }
    return eKindNone;
}

bool IsForeign(const WCHAR* fileName) {
    for (const WCHAR* extension : kForeignExtensions) {
        if (HasExtension(fileName, extension)) return true;
    }
    return false;
}

// One reader for all looks at single facts: it keeps its buffers. There is one thread.
mddoc::DocumentProperties& Reader() {
    static mddoc::DocumentProperties reader;
    return reader;
}

// Opens the node's document for the time of a look.
class Look {
public:
    explicit Look(const MDxFileNameNode& node)
        : status_(Reader().Open(NativePathFromWide(node.GetFileName()))) {}
    ~Look() { Reader().Close(); }
    Look(const Look&) = delete;
    Look& operator=(const Look&) = delete;

    HRESULT Status() const { return status_; }
    mddoc::DocumentProperties& Document() { return Reader(); }

private:
    HRESULT status_;
};

}  // namespace

bool mdfacts::ReadNumber(mddoc::DocumentProperties& document, DWORD id, LONG& number) {
    mddoc::PropertyValue value;
    if (document.Find(mddoc::eSetKind::Product, id, value) != S_OK || value.type != VT_I4) {
        return false;
    }
    number = static_cast<LONG>(value.number);
    return true;
}

int MDxFileNameNode::GetFileType() {
    if (type_ == -1) {
        const WCHAR* name = PathFindFileNameW(fileName_.c_str());
        if (const KindRow* row = KindByExtension(name)) {
            type_ = row->kind;
        } else if (IsForeign(name)) {
            type_ = eKindNone;
        } else {
            type_ = KindByRootClass(RootClass());
        }
    }
    return type_;
}

const GUID& MDxFileNameNode::RootClass() {
    if (facts_ == nullptr) {
        facts_ = std::make_unique<Facts>();
        Look look(*this);
        if (look.Status() >= 0) facts_->rootClass = look.Document().RootClass();
    }
    return facts_->rootClass;
}

bool MDxFileNameNode::IsMirelFile(void*, void*) {
    const KindRow* row = KindByExtension(PathFindFileNameW(fileName_.c_str()));
    if (row != nullptr) return RootClass() == row->rootClass;
    return KindByRootClass(RootClass()) != eKindNone;
}

bool MDxFileNameNode::GetFileSizeKB(double& size) {
    constexpr double kBytesInKilobyte = 1024.0;
    std::uint64_t bytes = 0;
    if (!FileSize(fileName_, bytes)) return false;
    size = static_cast<double>(bytes) / kBytesInKilobyte;
    return true;
}

HRESULT MDxFileNameNode::GetDocTypeProps(IQxLecternServer*, tagBUILDINFO*, void*) {
    Look look(*this);
    if (look.Status() < 0) return look.Status();
    LONG status = 0;
    if (mdfacts::ReadNumber(look.Document(), mdfacts::kDocStatus, status)) {
        docStatus = status != 0 ? 1 : 0;
    }
    return S_OK;
}

HRESULT MDxGetFileSubtype(MDxFileNameNode& node) {
    Look look(node);
    if (look.Status() < 0) return look.Status();
    mddoc::PropertyValue value;
    if (look.Document().Find(mddoc::eSetKind::Product, mdfacts::kSubtype, value) == S_OK &&
        value.type == VT_CLSID) {
        node.subType_ = value.guid;
    }
    (void)mdfacts::ReadNumber(look.Document(), mdfacts::kLibraryKind, node.contentLibType_);
    return S_OK;
}
