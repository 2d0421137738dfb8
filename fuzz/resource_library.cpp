// A resource library of any bytes: its texts, dialogs and icons, as the module takes them from it.
#include "fuzz/fuzz_input.h"
#include "platform/resource_text.h"
#include "platform/win.h"
#include "resource/control_ids.h"

namespace {

constexpr UINT kIds[] = {0,     1,     19100, 19140, 19407, 21700,
                         21701, 21702, 21703, 21704, 21769, 65535};

INT_PTR CALLBACK Answer(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG;
}

const WCHAR* NameOf(UINT id) {
    return reinterpret_cast<const WCHAR*>(static_cast<ULONG_PTR>(id));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    static const WText path = AbsoluteWidePath(file.Path());
    file.Write(data, size);
    const HMODULE library = LoadLibraryExW(path.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    if (library == nullptr) return 0;
    for (const UINT id : kIds) {
        (void)ResourceText(library, id);
        WCHAR text[8];
        const int cch = LoadStringW(library, id, text, 8);
        Require(cch >= 0 && cch < 8 && text[cch] == 0);
        const HWND dialog = CreateDialogParamW(library, NameOf(id), nullptr, Answer, 0);
        if (dialog != nullptr) {
            ShowWindow(dialog, SW_SHOW);
            Require(DestroyWindow(dialog) != FALSE);
        }
        for (const int side : {16, 32}) {
            const HANDLE icon = LoadImageW(library, NameOf(id), IMAGE_ICON, side, side, 0);
            if (icon != nullptr) Require(DestroyIcon(static_cast<HICON>(icon)) != FALSE);
        }
    }
    FreeLibrary(library);
    return 0;
}
