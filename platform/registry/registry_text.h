// Native build: the registry's text form, as registry editors write it, in UTF-8. Texts that a line
// can't hold (line ends, no terminator) are stored as bytes. Comments aren't kept.
#pragma once

#include <string>
#include <string_view>

#include "platform/registry/registry_tree.h"

struct RegistryParse {
    RegistryKey root;
    std::size_t badLines = 0;
    std::size_t firstBadLine = 0;  // counted from 1
};

// UTF-8, or UTF-16 behind a byte order mark. Reads what can be read and counts the lines that
// can't.
RegistryParse ParseRegistry(std::string_view text);

std::string WriteRegistry(const RegistryKey& root);
