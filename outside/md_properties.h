// Md.dll: the properties of one document.
#pragma once

#include <memory>

#include "outside/md_file_name_node.h"

struct IMDxDv;  // a callback that nobody gives

inline constexpr HRESULT kNoPropertySets = 1;  // of InitProps: the file is no compound file
inline constexpr HRESULT kSetUnreadable = 2;   // of SetsStatus: a set that was asked for is damaged

namespace mddoc {
class DocumentProperties;
}

// Properties by number. A date that the document doesn't have is all zero, a number 0, a text null.
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
    // The set that would hold the property is damaged: nothing is known of it.
    bool IsUnreadable(int id) const;

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
    bool IsUnreadable() const;

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

    // Null when the document doesn't have it; `create` has to be false. Holds until another name is
    // asked for.
    const MDxCustomProperty* Property(const WCHAR* name, bool create);
    VARTYPE GetType(const WCHAR* name);
    bool GetBoolValue(const WCHAR* name);
    bool GetDateValue(const WCHAR* name, SYSTEMTIME* date);
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
    // Negative on failure, STG_E_SHAREVIOLATION or STG_E_LOCKVIOLATION when another process holds
    // the file. May be called for file after file.
    HRESULT InitProps(MDxFileNameNode& node, int flags, void* reserved);
    // Of the sets that were asked for since: S_OK, kSetUnreadable, or negative when one could not
    // be read though the file is there, as when its bytes are locked.
    HRESULT SetsStatus() const;
    MDxGeneralProperties& GenProp();
    MDxControlProperties& ControlProp();
    MDxCustomProperties& CustomProp();

    struct State;

private:
    std::unique_ptr<State> state_;
};
