// A library of design documents, made one document at a time: projects with parts, assemblies,
// drawings and papers, and a folder of purchased parts that the projects use.
#pragma once

#include <vector>

#include "host/srsample/sample_content.h"

class SampleLibrary {
public:
    // The same documents in the same order for the same numbers.
    SampleLibrary(std::uint32_t documents, std::uint64_t seed);

    // False when all have been made.
    [[nodiscard]] bool MakeNext(SampleDocument& document);

private:
    // A document that others may refer to.
    struct Placed {
        WText path;
        eSampleKind kind;
    };

    void BeginProject();
    eSampleKind NextKind();
    WText NewPath(eSampleKind kind, bool isPurchased);
    void MakeReferences(SampleDocument& document);
    // Two assemblies of each project hold each other.
    void MakeRing(SampleDocument& document, bool isPromised);
    void Refer(SampleDocument& document, const Placed& other) const;

    SampleRandom random_;
    std::uint32_t left_;
    std::uint32_t purchasedLeft_;
    std::uint32_t projects_ = 0;
    std::uint32_t inProject_ = 0;
    std::uint32_t made_ = 0;
    SampleProject project_;
    std::vector<Placed> purchased_;
    std::vector<Placed> placed_;  // of the current project
    bool hasRing_ = false;
    WText promised_;  // the path of the next document, to which the present one refers already
};
