#include "companions/md/file_facts.h"

#include "outside/md_document_classes.h"
#include "outside/md_properties.h"
#include "platform/native_path.h"

namespace {

struct KindRow {
    const WCHAR* extension;
    int kind;
    GUID rootClass;  // of a genuine document of this kind; all zero when anything may be one
};
constexpr KindRow kKinds[] = {
    {TEXT(".hsb"), eKindAssembly, kAssemblyClass},
    {TEXT(".hpa"), eKindPart, kPartClass},
    {TEXT(".hdg"), eKindDrawing, kDrawingClass},
    {TEXT(".cvd"), eKindForeignDrawing, {}},
    {TEXT(".hpr"), eKindPresentation, kPresentationClass},
    {TEXT(".hdx"), eKindDesignElement, kDesignElementClass},
    {TEXT(".cvw"), eKindForeignWire, {}},
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

const KindRow* RowByExtension(const WCHAR* fileName) {
    for (const KindRow& row : kKinds) {
        if (HasExtension(fileName, row.extension)) return &row;
    }
    return nullptr;
}

int KindByRootClass(const GUID& rootClass) {
    if (rootClass == GUID{}) return eKindNone;
    if (rootClass == kWireClass) return eKindWire;
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

HRESULT mdfacts::ReadNumber(mddoc::DocumentProperties& document, DWORD id, LONG& number) {
    mddoc::PropertyValue value;
    const HRESULT status = document.Find(mddoc::eSetKind::Product, id, value);
    if (status != S_OK) return status;
    if (value.type != VT_I4) return DISP_E_TYPEMISMATCH;
    number = static_cast<LONG>(value.number);
    return S_OK;
}

bool mdfacts::IsVerified(const WCHAR* fileName) {
    const KindRow* row = RowByExtension(PathFindFileNameW(fileName));
    return row != nullptr && row->rootClass != GUID{};
}

int MDxFileNameNode::KindByExtension() const {
    const KindRow* row = RowByExtension(PathFindFileNameW(fileName_.c_str()));
    return row != nullptr ? row->kind : eKindNone;
}

int MDxFileNameNode::GetFileType() {
    if (type_ == -1) {
        const WCHAR* name = PathFindFileNameW(fileName_.c_str());
        if (const KindRow* row = RowByExtension(name)) {
            type_ = row->kind;
        } else if (IsForeign(name)) {
            type_ = eKindNone;
        } else {
            // A file of this name may be another document the next time.
            return KindByRootClass(RootClass());
        }
    }
    return type_;
}

const GUID& MDxFileNameNode::RootClass() {
    const bool isKnown = facts_ != nullptr && facts_->status >= 0 &&
                         (facts_.get() == mdfacts::openFacts ||
                          facts_->stamp == mddoc::StampOf(NativePathFromWide(fileName_)));
    if (!isKnown) {
        if (facts_ == nullptr) facts_ = std::make_unique<Facts>();
        Look look(*this);
        *facts_ = {look.Status(), look.Document().RootClass(), look.Document().Stamp()};
    }
    return facts_->rootClass;
}

bool MDxFileNameNode::IsMirelFile(void*, void*) {
    const KindRow* row = RowByExtension(PathFindFileNameW(fileName_.c_str()));
    if (row != nullptr && row->rootClass != GUID{}) return RootClass() == row->rootClass;
    return KindByRootClass(RootClass()) != eKindNone;
}

HRESULT MDxFileNameNode::LookStatus() const {
    return facts_ != nullptr ? facts_->status : S_FALSE;
}

void MDxFileNameNode::ForgetFacts() {
    facts_.reset();
    if (docStatus == readDocStatus_) docStatus = -1;
    readDocStatus_ = -1;
    contentLibType_ = 0;
    subType_ = {};
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
    LONG number = 0;
    const HRESULT status = mdfacts::ReadNumber(look.Document(), mdfacts::kDocStatus, number);
    if (status == S_OK) docStatus = readDocStatus_ = number != 0 ? 1 : 0;
    return status < 0 ? status : S_OK;
}

HRESULT MDxGetFileSubtype(MDxFileNameNode& node) {
    node.subType_ = {};
    node.contentLibType_ = 0;
    Look look(node);
    if (look.Status() < 0) return look.Status();
    mddoc::PropertyValue value;
    HRESULT status = look.Document().Find(mddoc::eSetKind::Product, mdfacts::kSubtype, value);
    if (status == S_OK && value.type != VT_CLSID) status = DISP_E_TYPEMISMATCH;
    if (status < 0) return status;
    if (status == S_OK) node.subType_ = value.guid;
    status = mdfacts::ReadNumber(look.Document(), mdfacts::kLibraryKind, node.contentLibType_);
    return status < 0 ? status : S_OK;
}
