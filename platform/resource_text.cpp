#include "platform/resource_text.h"

WText ResourceText(HINSTANCE resources, UINT id) {
    const WCHAR* text = nullptr;
    const int length = LoadStringW(resources, id, reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 ? WText(text, static_cast<std::size_t>(length)) : WText();
}
