// Documents that are damaged on purpose, one for each kind of damage.
#pragma once

#include <string>
#include <vector>

#include "host/srsample/sample_document.h"

struct DamagedSample {
    WText path;        // from the library's folder, with backslashes
    const char* what;  // is wrong with it, for people
    // Whether it is still a compound file, so that reading it fails; otherwise it holds nothing.
    bool isDocument;
    std::vector<std::uint8_t> bytes;
};

// The same for the same seed. Nothing in any of them can be read.
std::vector<DamagedSample> MakeDamagedSamples(std::uint64_t seed);
