#include "module/user_names.h"

#include "module/running_application.h"
#include "module/text_lengths.h"
#include "platform/wtext.h"

void TakeText(WCHAR* buffer, std::size_t cch, BSTR text) {
    if (text == nullptr) return;
    const WTextView whole(text, SysStringLen(text));
    if (whole.size() < cch) (void)wtext::CopyWhole(buffer, cch, whole);
    SysFreeString(text);
}

void ReadApplicationUserName(IQxLecternServer& server, WCHAR* name) {
    void* found = nullptr;
    if (FAILED(server.QueryInterface(IID_IQxServerProperties, &found)) || found == nullptr) return;
    auto* properties = static_cast<IQxServerProperties*>(found);
    VARIANT value;
    if (SUCCEEDED(ReadDispatchProperty(*properties, kServerUserNameId, VT_BSTR, value))) {
        TakeText(name, kLabelLength, value.bstrVal);
    }
    properties->Release();
}

void ReadLoginUserName(WCHAR* name) {
    DWORD cch = kLabelLength;
    if (!GetUserNameW(name, &cch)) name[0] = 0;
}
