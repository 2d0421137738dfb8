// Native build: an extended dialog template (DIALOGEX) as read from its bytes. Every field is
// checked against the end; a template that is cut short or of another form is refused.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "platform/win.h"
#include "platform/wtext.h"

namespace platform {

struct DialogItemTemplate {
    DWORD helpId;
    DWORD style;
    SHORT x, y, width, height;  // dialog units
    DWORD id;
    WText className;
    WText text;  // empty for one that names a resource
};

struct DialogTemplate {
    DWORD helpId;
    DWORD style;
    SHORT x, y, width, height;
    bool hasClass;  // of its own: the layer has none to offer
    WText title;
    std::vector<DialogItemTemplate> items;
};

std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> bytes);

}  // namespace platform
