// A process that registers itself as the running application until it is told to end. Arguments:
// the names of two events, "ready" and "end".
#include "tests/unit/fake_application.h"
#include "tests/windows/application_proxy.h"

namespace {

constexpr CLSID kClass = {
    0x3D6F0B52, 0x7C1E, 0x4A8B, {0x9E, 0x21, 0x5A, 0x0C, 0x77, 0x41, 0xE3, 0x10}};

WText TextOf(const GUID& id) {
    WCHAR text[64] = {};
    StringFromGUID2(id, text, 64);
    return text;
}

// The key that gives the class id of the application; gone again at the end.
class ProgramKey {
public:
    ProgramKey() {
        const WText path = kPath + TEXT("\\CLSID");
        const WText id = TextOf(kClass);
        ok = RegSetKeyValueW(HKEY_LOCAL_MACHINE, path.c_str(), nullptr, REG_SZ, id.c_str(),
                             static_cast<DWORD>((id.size() + 1) * sizeof(WCHAR))) == 0;
    }
    ~ProgramKey() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, kPath.c_str()); }

    bool ok = false;

private:
    const WText kPath = WText(TEXT("Software\\Classes\\")) + kApplicationProgId;
};

bool Serve(FakeApplication& application, LPCWSTR ready, LPCWSTR end) {
    const ProgramKey key;
    DWORD cookie = 0;
    const HRESULT status = RegisterActiveObject(&application, kClass, ACTIVEOBJECT_STRONG, &cookie);
    if (!key.ok || FAILED(status)) return false;
    const HANDLE stop = OpenEventW(SYNCHRONIZE, FALSE, end);
    SetEvent(OpenEventW(EVENT_MODIFY_STATE, FALSE, ready));
    while (MsgWaitForMultipleObjects(1, &stop, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    return SUCCEEDED(RevokeActiveObject(cookie, nullptr));
}

}  // namespace

// 0 when every reference to the application came back.
extern "C" int wmain(int count, wchar_t** arguments) {
    ApplicationProxy proxy;
    FakeApplication application;
    if (count != 3 || FAILED(CoInitialize(nullptr)) || !proxy.Register()) return 1;
    const bool served = Serve(application, arguments[1], arguments[2]);
    CoUninitialize();
    return served && application.references == 1 ? 0 : 2;
}
