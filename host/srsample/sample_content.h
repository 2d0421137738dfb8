// What the documents of a sample library say: titles, persons, dates, prices.
#pragma once

#include "host/srsample/sample_document.h"
#include "host/srsample/sample_random.h"

// What the documents of one project share.
struct SampleProject {
    WText folder;  // from the library's folder
    WText title;
    WText company;
    WText manager;
    WText designer;
    std::uint32_t number = 0;
};

SampleProject MakeProject(SampleRandom& random, std::uint32_t index);

// A thing's name as a designer would give it, without an extension.
WText MakeThingName(SampleRandom& random, eSampleKind kind);

// Fills properties, preview and contents; kind and path are set. `isLibraryPart` marks a purchased
// part that many projects use.
void FillDocument(SampleRandom& random, const SampleProject& project, bool isLibraryPart,
                  SampleDocument& document);
