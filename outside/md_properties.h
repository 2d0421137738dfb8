// Md.dll: the properties of one document.
#pragma once

#include <memory>

#include "outside/md_file_name_node.h"

struct IMDxDv;  // a callback that nobody gives

inline constexpr HRESULT kNoPropertySets = 1;  // of InitProps: the file is no compound file

namespace mddoc {
class DocumentProperties;
}

// Properties by number. A date that the document doesn't have is all zero, a number 0, a text null.
// So is one that can't be read; `Status` tells them apart.
class MD_API MDxGeneralProperties {
public:
    explicit MDxGeneralProperties(mddoc::DocumentProperties& document);
    ~MDxGeneralProperties();

    // The text holds until the next call; null when the document doesn't have it.
    const WCHAR* Property(int id);
    // In local time, by the rule of that date.
    bool GetDateValue(int id, SYSTEMTIME* date);
    // In ten-thousandths.
    bool GetCurrencyValue(int id, LONGLONG* value);
    bool GetLongValue(int id, LONG* value);
    bool GetGuidValue(int id, GUID* value);
    // Of the property that was asked for last: S_OK, S_FALSE when the document doesn't have it,
    // negative when nothing is known of it. STG_E_DOCFILECORRUPT: its set is damaged;
    // DISP_E_TYPEMISMATCH: its value is in a form that can't be decoded or of another type;
    // else a failure of the reading.
    HRESULT Status() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

class MD_API MDxControlProperties {
public:
    explicit MDxControlProperties(mddoc::DocumentProperties& document);
    ~MDxControlProperties();

    // `cch` is the size of `buffer` in units. The length of the text, 0 when the document doesn't
    // have it; a longer text is cut.
    int Property(int id, WCHAR* buffer, int cch);
    bool GetDatePropertyValue(int id, SYSTEMTIME* date);
    // As that of a general property.
    HRESULT Status() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

struct MDxCustomProperty;

// Properties by the name that a user gave.
class MD_API MDxCustomProperties {
public:
    explicit MDxCustomProperties(mddoc::DocumentProperties& document);
    ~MDxCustomProperties();

    // Null when the document doesn't have it or it can't be read; `create` has to be false. Holds
    // until another name is asked for.
    const MDxCustomProperty* Property(const WCHAR* name, bool create);
    VARTYPE GetType(const WCHAR* name);
    bool GetBoolValue(const WCHAR* name);
    bool GetDateValue(const WCHAR* name, SYSTEMTIME* date);
    // Null unless it is a text; holds as `Property` does.
    const WCHAR* GetTextValue(const WCHAR* name);
    // False and 0 unless it is a number: an integer, a real, an amount of money.
    bool GetNumberValue(const WCHAR* name, double* number);
    // As that of a general property; a custom one may be of any type.
    HRESULT Status() const;
    // What was asked for last belongs to another document.
    void Forget();

private:
    struct State;
    std::unique_ptr<State> state_;
};

class MD_API MDxProperties {
public:
    // Both arguments are fixed: false and null.
    MDxProperties(bool write, IMDxDv* callback);
    ~MDxProperties();
    MDxProperties(const MDxProperties&) = delete;
    MDxProperties& operator=(const MDxProperties&) = delete;

    HRESULT Initialize(IMDxDv* callback, bool write);
    // Opens the node's file; a property set is read when one of its properties is asked for.
    // Negative on failure: STG_E_SHAREVIOLATION or STG_E_LOCKVIOLATION when another process holds
    // the file, STG_E_INVALIDHEADER when it is no compound file though its extension is one of the
    // product's. May be called for file after file.
    HRESULT InitProps(MDxFileNameNode& node, int flags, void* reserved);
    MDxGeneralProperties& GenProp();
    MDxControlProperties& ControlProp();
    MDxCustomProperties& CustomProp();

    struct State;

private:
    std::unique_ptr<State> state_;
};
