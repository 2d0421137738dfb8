#include "companions/md/file_facts.h"

#include "outside/md_document_classes.h"
#include "outside/md_properties.h"
#include "platform/native_path.h"

namespace {

struct KindRow {
    const WCHAR* extension;
    int kind;
    GUID rootClass;  // of a genuine document of this kind
};
constexpr KindRow kKinds[] = {
    {TEXT(".hsb"), eKindAssembly, kAssemblyClass},
    {TEXT(".hpa"), eKindPart, kPartClass},
    {TEXT(".hdg"), eKindDrawing, kDrawingClass},
    {TEXT(".cvd"), eKindDrawing, kDrawingClass},
    {TEXT(".hpr"), eKindPresentation, kPresentationClass},
    {TEXT(".hdx"), eKindDesignElement, kDesignElementClass},
    {TEXT(".cvw"), eKindWire, kWireClass},
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
        : status_(Reader().Open(NativePathFromWide(node.GetFileName()), node.isPlainFile)) {}
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
