#include "tests/unit/search_fixture.h"

#include <algorithm>

#include "companions/md/document/document_properties.h"
#include "outside/md_document_classes.h"
#include "platform/host/host_files.h"

namespace {

namespace fs = std::filesystem;

GUID RootClassOf(const std::string& file) {
    const std::string extension = fs::path(file).extension().string();
    return extension == ".hpa" ? kPartClass : extension == ".hsb" ? kAssemblyClass : GUID{};
}

}  // namespace

SearchTest::SearchTest() : dialog_(SrResReturnHandle(), &slot_, nullptr, nullptr, nullptr) {
    EXPECT_NE(nullptr, dialog_.resourceInstance);
    EXPECT_NE(nullptr, controls_.Window());
    dialog_.dialogWindow = controls_.Window();
    dialog_.observer = this;
}

SearchTest::~SearchTest() {
    delete slot_;
    std::error_code ignored;
    fs::current_path(fs::temp_directory_path(), ignored);
}

void SearchTest::Tree(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        if (file.back() == '/') {
            fs::create_directories(folder_ / file);
        } else {
            WriteFile(file, {});
        }
    }
}

void SearchTest::WriteFile(const std::string& file, const std::vector<std::uint8_t>& bytes) {
    const fs::path path = folder_ / file;
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(out.good()) << path;
}

void SearchTest::Document(const std::string& file, const FillSection& product,
                          const FillSection& userDefined, const FillSection& summary) {
    constexpr std::uint16_t kUtf8 = 65001;
    CompoundWriter writer;
    writer.SetRootClass(RootClassOf(file));
    if (product) {
        PropertySectionWriter section(mddoc::kProductFormat, kUtf8);
        product(section);
        writer.AddStream(mddoc::kProductStream, BuildPropertySet({section}));
    }
    if (userDefined) {
        const PropertySectionWriter first(mddoc::kDocumentSummaryFormat, kUtf8);
        PropertySectionWriter second(mddoc::kUserDefinedFormat, kUtf8);
        userDefined(second);
        writer.AddStream(mddoc::kDocumentSummaryStream, BuildPropertySet({first, second}));
    }
    if (summary) {
        PropertySectionWriter section(mddoc::kSummaryFormat, kUtf8);
        summary(section);
        writer.AddStream(mddoc::kSummaryStream, BuildPropertySet({section}));
    }
    WriteFile(file, writer.Build());
}

void SearchTest::Criterion(const std::string& text) {
    const bool isOr = text.rfind("or: ", 0) == 0;
    std::string fault;
    const CriterionParser parser(dialog_.resourceInstance);
    auto node = parser.Parse(isOr ? text.substr(4) : text, isOr ? JOIN_OR : JOIN_AND, fault);
    ASSERT_NE(nullptr, node) << fault;
    if (!node->IsFileTypeCriterion()) dialog_.SetPropSearchType(*node);
    SRxCriteriaNode** end = &dialog_.criteriaHead;
    while (*end != nullptr)
        end = &(*end)->nextCriterion;
    *end = node.release();
}

WText SearchTest::Wide(const std::string& file) const {
    const fs::path path = file.empty() ? folder_ : folder_ / file;
    return AbsoluteWidePath(NativePathFromLine(path.string()));
}

std::string SearchTest::Relative(const WCHAR* path) const {
    const std::size_t root = Wide("").size() + 1;
    const WText text = wtext::Length(path) < root ? WText() : WText(path + root);
    std::string relative = DisplayPath(text);
    std::replace(relative.begin(), relative.end(), '\\', '/');
    return relative;
}

std::vector<std::string> SearchTest::RunFolders(bool subfolders, const std::string& lookIn) {
    dialog_.SetOnlyAssem(false);
    controls_.SetLookIn(Wide(lookIn));
    controls_.Check(IDC_LOOK_SUBFOLDERS, subfolders);
    return Run();
}

std::vector<std::string> SearchTest::RunTyped(const WText& lookIn) {
    dialog_.SetOnlyAssem(false);
    controls_.SetLookIn(lookIn);
    controls_.Check(IDC_LOOK_SUBFOLDERS, true);
    return Run();
}

std::vector<std::string> SearchTest::RunAt(const std::filesystem::path& folder) {
    dialog_.SetOnlyAssem(false);
    controls_.SetLookIn(AbsoluteWidePath(NativePathFromLine(folder.string())));
    controls_.Check(IDC_LOOK_SUBFOLDERS, false);
    (void)Run();
    std::vector<std::string> paths;
    for (const MDxFileNameNode* hit = slot_; hit != nullptr; hit = hit->GetNextNode()) {
        paths.push_back(DisplayPath(hit->GetFileName()));
    }
    return paths;
}

std::vector<std::string> SearchTest::RunSelection(const std::vector<std::string>& files) {
    delete slot_;
    slot_ = nullptr;
    for (const std::string& file : files) {
        (new MDxFileNameNode(Wide(file).c_str(), -1, false))->AddFileNode(&slot_);
    }
    dialog_.SetOnlyAssem(true);
    MDxFileNameNode* const input = slot_;
    std::vector<std::string> hits = Run();
    delete input;
    return hits;
}

std::vector<std::string> SearchTest::Run() {
    if (!dialog_.SearchOnlyAssem()) {
        delete slot_;
        slot_ = nullptr;
    }
    statuses_.clear();
    SRxFoundList list(dialog_, &slot_);
    routeResult_ = RunSearch(list);
    std::vector<std::string> hits;
    for (const MDxFileNameNode* hit = slot_; hit != nullptr; hit = hit->GetNextNode()) {
        hits.push_back(Relative(hit->GetFileName()));
    }
    return hits;
}

void SearchTest::OnFolder(SRxFoundList&, const WCHAR* folder) {
    folders_.push_back(Relative(folder));
}

void SearchTest::OnFile(SRxFoundList& list) {
    ++files_;
    if (onFile_) onFile_(list);
}

std::vector<std::string> Sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
}
