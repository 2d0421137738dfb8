#include "outside/md_messages.h"

#include "platform/resource_text.h"
#include "resource/string_ids.h"

namespace {

constexpr const WCHAR* kCaption = TEXT("Find");

UINT PictureOf(int kind) {
    switch (kind) {
        case 1:
            return MB_ICONINFORMATION;
        case 2:
            return MB_ICONWARNING;
        case 3:
            return MB_ICONERROR;
        default:
            return MB_ICONQUESTION;
    }
}

// The text of a string, or one that names the missing number: a message is never lost.
WText TextOf(HINSTANCE instance, UINT id) {
    const WText text = ResourceText(instance, id);
    if (!text.empty()) return text;
    return wtext::Format(TEXT("Message %d has no text in the resource library."),
                         {wtext::FromNumber(id)});
}

int Show(const WText& text, UINT style, int kind, HWND parent) {
    return MessageBoxW(parent, text.c_str(), kCaption, style | PictureOf(kind));
}

}  // namespace

int DisplayMessageId(HINSTANCE instance, UINT id, UINT style, int kind, DWORD, HWND parent) {
    return Show(TextOf(instance, id), style, kind, parent);
}

bool DisplayMessageString(const WCHAR* text, bool question, int kind, DWORD, HWND parent) {
    const int button = Show(text, question ? MB_YESNO : MB_OK, kind, parent);
    return !question || button == IDYES || button == IDOK;
}

int DisplayMessageStringEx(HINSTANCE, const WCHAR* text, UINT style, int kind, DWORD, HWND parent) {
    return Show(text, style, kind, parent);
}

int DisplayMessageFileName(HINSTANCE instance, const WCHAR* fileName, UINT id, DWORD, HWND parent,
                           UINT style) {
    constexpr int kWarning = 2;
    return Show(wtext::Format(TextOf(instance, id), {fileName}), style, kWarning, parent);
}
