#include "platform/native_path.h"

#include "platform/files/path_mapping.h"

WTextView FileNameIn(WTextView path) {
    using platform::IsSeparator;
    for (std::size_t at = path.size(); at-- > 1;) {
        if (IsSeparator(path[at])) continue;
        if (IsSeparator(path[at - 1]) || path[at - 1] == ':') return path.substr(at);
    }
    return path;
}

WTextView ExtensionIn(WTextView path) {
    for (std::size_t at = path.size(); at-- > 0;) {
        if (path[at] == '.') return path.substr(at);
        // A blank ends an extension, as on Windows: "a.b c" has none.
        if (path[at] == '\\' || path[at] == ' ') break;
    }
    return path.substr(path.size());
}
