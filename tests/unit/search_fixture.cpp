#include "tests/unit/search_fixture.h"

#include <algorithm>

#include "companions/md/document/document_properties.h"
#include "outside/md_document_classes.h"
#include "platform/host/host_files.h"

namespace {

namespace fs = std::filesystem;

GUID RootClassOf(const std::string& file) {
    const std::string extension = fs::path(file).extension().string();
    return extension == ".hpa"   ? kPartClass
           : extension == ".hsb" ? kAssemblyClass
           : extension == ".hdg" ? kDrawingClass
                                 : GUID{};
}

}  // namespace

SearchTest::SearchTest() {
    EXPECT_NE(nullptr, SrResReturnHandle());
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

void SearchTest::Replace(const std::string& file, const std::string& from, const std::string& to) {
    std::ifstream in(folder_ / file, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), {});
    in.close();
    for (std::size_t at = 0; (at = bytes.find(from, at)) != std::string::npos; at += to.size())
        bytes.replace(at, from.size(), to);
    WriteFile(file, {bytes.begin(), bytes.end()});
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
    const CriterionParser parser(SrResReturnHandle());
    auto node = parser.Parse(isOr ? text.substr(4) : text, isOr ? JOIN_OR : JOIN_AND, fault);
    ASSERT_NE(nullptr, node) << fault;
    if (!node->IsFileTypeCriterion()) {
        criteria_.propSearchType = PropSearchTypeWith(*node, criteria_.propSearchType);
    }
    SRxCriteriaNode** end = &criteria_.head;
    while (*end != nullptr)
        end = &(*end)->nextCriterion;
    *end = node.release();
}

void SearchTest::ClearCriteria() {
    delete std::exchange(criteria_.head, nullptr);
    criteria_.propSearchType = FILE_SEARCH_ANY;
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

SRxSearchQuery SearchTest::ReadQuery() {
    SRxSearchQuery query = query_;
    query.criteria = criteria_.head;
    query.propSearchType = criteria_.propSearchType;
    return query;
}

std::vector<std::string> SearchTest::RunFolders(bool subfolders, const std::string& lookIn) {
    lookIn_ = Wide(lookIn);
    query_.subfolders = subfolders ? 1 : 0;
    return Run();
}

std::vector<std::string> SearchTest::RunTyped(const WText& lookIn) {
    lookIn_ = lookIn;
    query_.subfolders = 1;
    return Run();
}

std::vector<std::string> SearchTest::RunAt(const std::filesystem::path& folder) {
    lookIn_ = AbsoluteWidePath(NativePathFromLine(folder.string()));
    query_.subfolders = 0;
    (void)Run();
    std::vector<std::string> paths;
    for (const MDxFileNameNode* hit = slot_; hit != nullptr; hit = hit->GetNextNode()) {
        paths.push_back(DisplayPath(hit->GetFileName()));
    }
    return paths;
}

std::vector<std::string> SearchTest::RunRelated(const WText& lookIn) {
    lookIn_ = lookIn;
    query_.route = eSearchRoute::RelatedDocuments;
    return Run();
}

std::vector<std::string> SearchTest::RunSelection(const std::vector<std::string>& files) {
    MDxFileNameNode* chain = nullptr;
    for (const std::string& file : files) {
        (new MDxFileNameNode(Wide(file).c_str(), -1, false))->AddFileNode(&chain);
    }
    const std::unique_ptr<MDxFileNameNode> input(chain);
    return RunChain(chain);
}

std::vector<std::string> SearchTest::RunChain(MDxFileNameNode* chain) {
    delete std::exchange(slot_, chain);
    query_.route = eSearchRoute::Selection;
    return Run();
}

std::vector<std::string> SearchTest::Run() {
    if (query_.route != eSearchRoute::Selection) {
        delete slot_;
        slot_ = nullptr;
    }
    statuses_.clear();
    SRxSearchRun run(*this, *this);
    run.params = params_;
    routeResult_ = RunSearch(run);
    query_.route = eSearchRoute::Folders;
    std::vector<std::string> hits;
    for (const MDxFileNameNode* hit = slot_; hit != nullptr; hit = hit->GetNextNode()) {
        hits.push_back(Relative(hit->GetFileName()));
    }
    return hits;
}

void SearchTest::OnHit(SRxSearchRun&, const WCHAR* folder, const WCHAR* name, MDxFileNameNode& node,
                       int&) {
    EXPECT_EQ(WText(node.GetFileName()), WText(folder) + name);
    auto copy = std::make_unique<MDxFileNameNode>(&node);
    if (copy->AddFileNodeUnique(&slot_)) (void)copy.release();
}

std::vector<std::string> Sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
}
