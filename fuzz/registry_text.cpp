// The registry's text form: what was read is written so that it reads back as the same.
#include "platform/registry/registry_text.h"

#include "fuzz/fuzz_input.h"

namespace {

bool IsSame(const RegistryKey& one, const RegistryKey& other) {
    if (one.keys.size() != other.keys.size() || one.values.size() != other.values.size()) {
        return false;
    }
    for (const auto& [folded, value] : one.values) {
        const auto found = other.values.find(folded);
        if (found == other.values.end() || found->second.name != value.name ||
            found->second.type != value.type || found->second.data != value.data) {
            return false;
        }
    }
    for (const auto& [folded, key] : one.keys) {
        const auto found = other.keys.find(folded);
        if (found == other.keys.end() || found->second->name != key->name ||
            !IsSame(*key, *found->second)) {
            return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const RegistryParse parse =
        ParseRegistry(std::string_view(reinterpret_cast<const char*>(data), size));
    Require((parse.badLines == 0) == (parse.firstBadLine == 0));
    const std::string written = WriteRegistry(parse.root);
    const RegistryParse again = ParseRegistry(written);
    Require(again.badLines == 0);
    Require(IsSame(parse.root, again.root));
    Require(WriteRegistry(again.root) == written);
    return 0;
}
