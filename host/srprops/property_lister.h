// The properties of a document as lines of text, with the columns file, set, id or name, type and
// value between tabs. A set that isn't there has a line with ABSENT, one without properties a line
// with EMPTYSET; the product's set has lines only where it is present.
#pragma once

#include <string>
#include <vector>

#include "companions/md/document/document_properties.h"

class PropertyLister {
public:
    // False when something of the document could not be read; then there are faults. `shownPath`
    // is UTF-8 and stands in the faults, its last component in the rows.
    [[nodiscard]] bool List(const mddoc::DocumentPath& path, const std::string& shownPath);

    const std::string& Rows() const { return rows_; }
    // A line each: the program, the path, what of it, and why.
    const std::string& Faults() const { return faults_; }

private:
    bool ListSet(mddoc::eSetKind kind, const char* set);
    bool ListEntry(mddoc::eSetKind kind, const char* set, const mddoc::PropertyEntry& entry);
    void Row(const char* set, const std::string& id, const std::string& type,
             const std::string& value);
    void Fault(const std::string& what, HRESULT status);

    mddoc::DocumentProperties document_;
    std::vector<mddoc::PropertyEntry> entries_;
    std::vector<BYTE> bytes_;
    std::string path_;
    std::string file_;
    std::string rows_;
    std::string faults_;
};
