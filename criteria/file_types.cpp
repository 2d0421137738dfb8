#include "criteria/file_types.h"

#include "criteria/or_groups.h"
#include "criteria/text_equality.h"

namespace {

constexpr std::size_t kMostExtensions = 7;

struct FileTypeRow {
    unsigned typeId;
    const WCHAR* extensions[kMostExtensions + 1];  // null at the end
};

constexpr FileTypeRow kFileTypes[] = {
    {FILETYPE_DESIGN_DOCS,
     {TEXT(".hpa"), TEXT(".hdg"), TEXT(".cvd"), TEXT(".hdx"), TEXT(".hsb"), TEXT(".hpr"),
      TEXT(".cvp")}},
    {FILETYPE_ASSEMBLIES, {TEXT(".hsb")}},
    {FILETYPE_CVD, {TEXT(".cvd")}},
    {FILETYPE_DOC, {TEXT(".doc")}},
    {FILETYPE_DRAWINGS, {TEXT(".hdg"), TEXT(".cvd")}},
    {FILETYPE_DESIGN_ELEMENTS, {TEXT(".hdx")}},
    {FILETYPE_HTML, {TEXT(".html"), TEXT(".htm")}},
    {FILETYPE_IMPORT,
     {TEXT(".sat"), TEXT(".step"), TEXT(".ste"), TEXT(".stp"), TEXT(".stpz"), TEXT(".cvd")}},
    {FILETYPE_PRESENTATIONS, {TEXT(".hpr")}},
    {FILETYPE_OFFICE,
     {TEXT(".txt"), TEXT(".html"), TEXT(".htm"), TEXT(".xls"), TEXT(".ppt"), TEXT(".doc")}},
    {FILETYPE_PPT, {TEXT(".ppt")}},
    {FILETYPE_PARTS, {TEXT(".hpa")}},
    {FILETYPE_MODELS, {TEXT(".hpa"), TEXT(".hsb")}},
    {FILETYPE_SAT, {TEXT(".sat")}},
    {FILETYPE_STEP, {TEXT(".step"), TEXT(".stp"), TEXT(".ste"), TEXT(".stpz")}},
    {FILETYPE_TXT, {TEXT(".txt")}},
    {FILETYPE_XLS, {TEXT(".xls")}},
    {FILETYPE_DRAWABLE, {TEXT(".hpa"), TEXT(".cvd"), TEXT(".hdg"), TEXT(".hdx"), TEXT(".cvp")}},
    {FILETYPE_WIRE, {TEXT(".cvw")}},
};

// From the last point of the last component, the point included; empty without one.
WTextView ExtensionOf(WTextView fileName) {
    fileName = fileName.substr(0, fileName.find(static_cast<WCHAR>('<')));
    const std::size_t stop = fileName.find_last_of(TEXT("\\/:."));
    if (stop == WTextView::npos || fileName[stop] != '.') return {};
    return fileName.substr(stop);
}

}  // namespace

bool CompareFileType(const WCHAR* fileName, unsigned typeId) {
    if (typeId == FILETYPE_ALL) return true;
    const WTextView extension = ExtensionOf(fileName);
    if (extension.empty()) return false;
    for (const FileTypeRow& row : kFileTypes) {
        if (row.typeId != typeId) continue;
        for (const WCHAR* const* listed = row.extensions; *listed != nullptr; ++listed) {
            if (TextsEqual(extension, *listed, kFoldText)) return true;
        }
        return false;
    }
    return false;
}

bool FileTypesAllow(const SRxCriteriaNode* criteria, const WCHAR* fileName) {
    SRxJoinRule atBest;
    for (const SRxCriteriaNode* c = criteria; c != nullptr; c = c->nextCriterion) {
        const auto typeId = static_cast<unsigned>(c->conditionId);
        atBest.Take(!c->IsFileTypeCriterion() || CompareFileType(fileName, typeId), *c);
    }
    return atBest.Total();
}

bool PassesFileTypeFilter(const SRxCriteriaNode* criteria, eFileTypeSearch propSearchType,
                          const WCHAR* fileName) {
    if (!FileTypesAllow(criteria, fileName)) return false;
    // Without its file types the list is false when some or-group asks for nothing else.
    SRxJoinRule withoutTypes;
    for (const SRxCriteriaNode* c = criteria; c != nullptr; c = c->nextCriterion)
        withoutTypes.Take(!c->IsFileTypeCriterion(), *c);
    if (!withoutTypes.Total()) return true;
    const auto is = [&](unsigned typeId) { return CompareFileType(fileName, typeId); };
    switch (propSearchType) {
        case FILE_SEARCH_MODELS:
            return is(FILETYPE_MODELS);
        case FILE_SEARCH_OFFICE:
            return is(FILETYPE_MODELS) || is(FILETYPE_OFFICE);
        case FILE_SEARCH_IMPORT:
            return is(FILETYPE_MODELS) || is(FILETYPE_OFFICE) || is(FILETYPE_IMPORT);
        case FILE_SEARCH_ANY:
            return true;
    }
    return true;
}
