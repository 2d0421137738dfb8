#include "host/srsample/sample_library.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t kProjectDocuments = 60;
constexpr std::uint32_t kMostPurchased = 500;
constexpr std::uint32_t kMissingPercent = 4;
constexpr std::uint32_t kFirstFreely = 6;  // so that an assembly has something to refer to
constexpr const WCHAR* kPurchasedFolder = TEXT("Library\\Purchased\\");
constexpr const WCHAR* kSavedRoot = TEXT("M:\\Design\\");

const WCHAR* FolderOf(eSampleKind kind) {
    switch (kind) {
        case eSampleKind::Part:
        case eSampleKind::DesignElement:
            return TEXT("Parts");
        case eSampleKind::Assembly:
            return TEXT("Assemblies");
        case eSampleKind::Drawing:
        case eSampleKind::Presentation:
            return TEXT("Drawings");
        case eSampleKind::Office:
        case eSampleKind::Text:
        case eSampleKind::Page:
            return TEXT("Papers");
    }
    return TEXT("");
}

// From the folder of one document to another, both given from the library's folder.
WText RelativePath(const WText& from, const WText& to) {
    std::size_t common = 0;
    for (std::size_t i = 0; i < from.size() && i < to.size() && from[i] == to[i]; ++i) {
        if (from[i] == TEXT('\\')) common = i + 1;
    }
    WText path;
    const auto steps =
        std::count(from.begin() + static_cast<std::ptrdiff_t>(common), from.end(), TEXT('\\'));
    for (auto i = steps; i > 0; --i)
        path += TEXT("..\\");
    return path + to.substr(common);
}

}  // namespace

SampleLibrary::SampleLibrary(std::uint32_t documents, std::uint64_t seed)
    : random_(seed), left_(documents), purchasedLeft_(std::min(documents / 10, kMostPurchased)) {}

void SampleLibrary::BeginProject() {
    project_ = MakeProject(random_, projects_++);
    inProject_ = 0;
    placed_.clear();
    hasRing_ = false;
}

eSampleKind SampleLibrary::NextKind() {
    if (inProject_ < kFirstFreely) return eSampleKind::Part;
    const std::uint32_t draw = random_.Below(100);
    if (draw < 48) return eSampleKind::Part;
    if (draw < 63) return eSampleKind::Assembly;
    if (draw < 78) return eSampleKind::Drawing;
    if (draw < 81) return eSampleKind::Presentation;
    if (draw < 84) return eSampleKind::DesignElement;
    if (draw < 94) return eSampleKind::Office;
    return draw < 97 ? eSampleKind::Text : eSampleKind::Page;
}

void SampleLibrary::Refer(SampleDocument& document, const Placed& other) const {
    WText relative = RelativePath(document.path, other.path);
    const auto isSame = [&](const mddoc::DocumentReference& reference) {
        return reference.relativePath == relative;
    };
    if (std::any_of(document.references.begin(), document.references.end(), isSame)) return;
    document.references.push_back({std::move(relative), kSavedRoot + other.path});
}

// The number makes names unique, whatever letters' case means to the file system.
WText SampleLibrary::NewPath(eSampleKind kind, bool isPurchased) {
    WText path = isPurchased ? WText(kPurchasedFolder)
                             : project_.folder + TEXT("\\") + FolderOf(kind) + TEXT("\\");
    path += MakeThingName(random_, kind);
    path += TEXT(" ") + wtext::FromNumber(1000 + ++made_);
    return path + ExtensionOf(kind, random_.Below(3));
}

// An assembly is made of parts and of assemblies made before. Some of them have been thrown away.
void SampleLibrary::MakeReferences(SampleDocument& document) {
    const bool isDrawing = document.kind == eSampleKind::Drawing;
    const std::uint32_t wanted = isDrawing ? 1 : 2 + random_.Below(12);
    for (std::uint32_t i = 0; i < wanted; ++i) {
        if (random_.Chance(kMissingPercent)) {
            Refer(document, {NewPath(eSampleKind::Part, false), eSampleKind::Part});
            continue;
        }
        const bool fromStock = !isDrawing && !purchased_.empty() && random_.Chance(30);
        const std::vector<Placed>& choices = fromStock ? purchased_ : placed_;
        Refer(document, choices[random_.Below(static_cast<std::uint32_t>(choices.size()))]);
    }
}

void SampleLibrary::MakeRing(SampleDocument& document, bool isPromised) {
    if (isPromised) {
        Refer(document, placed_.back());  // the one that promised it
    } else if (!hasRing_ && left_ > 0) {
        hasRing_ = true;
        promised_ = NewPath(document.kind, false);
        Refer(document, {promised_, document.kind});
    }
}

bool SampleLibrary::MakeNext(SampleDocument& document) {
    document = SampleDocument();
    if (left_ == 0) return false;
    --left_;
    const bool isPurchased = purchasedLeft_ > 0;
    const bool isPromised = !promised_.empty();
    if (isPurchased) {
        --purchasedLeft_;
    } else if (!isPromised && (projects_ == 0 || inProject_ >= kProjectDocuments)) {
        BeginProject();
    }
    if (isPromised) {
        document.kind = eSampleKind::Assembly;
        document.path = std::exchange(promised_, WText());
    } else {
        document.kind = isPurchased ? eSampleKind::Part : NextKind();
        document.path = NewPath(document.kind, isPurchased);
    }
    if (document.HasReferences()) MakeReferences(document);
    if (document.kind == eSampleKind::Assembly) MakeRing(document, isPromised);
    FillDocument(random_, project_, isPurchased, document);
    if (isPurchased) {
        purchased_.push_back({document.path, document.kind});
        return true;
    }
    ++inProject_;
    if (document.kind == eSampleKind::Part || document.kind == eSampleKind::Assembly) {
        placed_.push_back({document.path, document.kind});
    }
    return true;
}
