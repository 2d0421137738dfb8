// The documents that a document refers to, as the running application names them.
#include <algorithm>

#include "outside/md_file_name_node.h"
#include "platform/wtext.h"

namespace {

HRESULT AskApplication(Application& application, const WCHAR* fileName, unsigned flags,
                       VARIANT& answer) {
    LPWSTR name = const_cast<WCHAR*>(kRelatedDocumentsName);  // only read
    DISPID id = 0;
    const HRESULT known = application.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(known)) return known;
    VARIANTARG arguments[2];  // the last one first
    for (VARIANTARG& argument : arguments)
        VariantInit(&argument);
    arguments[0].vt = VT_I4;
    arguments[0].lVal = static_cast<LONG>(flags);
    arguments[1].vt = VT_BSTR;
    arguments[1].bstrVal = SysAllocString(fileName);
    if (arguments[1].bstrVal == nullptr) return E_OUTOFMEMORY;
    DISPPARAMS parameters = {arguments, nullptr, 2, 0};
    const HRESULT status = application.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                              &parameters, &answer, nullptr, nullptr);
    VariantClear(&arguments[1]);
    if (FAILED(status)) return status;
    return answer.vt == VT_BSTR ? S_OK : DISP_E_TYPEMISMATCH;
}

}  // namespace

HRESULT MDxFileNameNode::GetRelatedDocs(Application& application, MDxFileNameNode** docs,
                                        unsigned flags, int) {
    *docs = nullptr;
    missingDocs_.clear();
    VARIANT answer;
    VariantInit(&answer);
    const HRESULT status = AskApplication(application, fileName_.c_str(), flags, answer);
    WText names;
    if (SUCCEEDED(status)) names.assign(answer.bstrVal, SysStringLen(answer.bstrVal));
    VariantClear(&answer);
    for (std::size_t at = 0; at < names.size();) {
        const std::size_t end = std::min(names.find(TEXT('\n'), at), names.size());
        const WText name = names.substr(at, end - at);
        if (!name.empty()) (new MDxFileNameNode(name.c_str(), -1, inApp_))->AddFileNode(docs);
        at = end + 1;
    }
    return status;
}
