// A folder of its own, documents in it, criteria in words, and a search over it.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/srfind/criterion_text.h"
#include "host/srsample/compound_writer.h"
#include "host/srsample/property_set_writer.h"
#include "platform/native_path.h"
#include "search/search.h"
#include "search/search_observer.h"
#include "shell/module_state.h"
#include "tests/scripted_desk.h"
#include "tests/unit/dialog_controls.h"
#include "tests/unit/document_support.h"

// Where a property of the product's own set stands, in a form that a table can hold.
using FillSection = std::function<void(PropertySectionWriter&)>;

class SearchTest : public ::testing::Test, public SRxSearchObserver {
protected:
    SearchTest();
    ~SearchTest() override;

    // Empty files, with the folders on their way. Slashes part the names.
    void Tree(const std::vector<std::string>& files);
    // A design document whose root class fits its extension.
    void Document(const std::string& file, const FillSection& product,
                  const FillSection& userDefined = nullptr, const FillSection& summary = nullptr);
    void WriteFile(const std::string& file, const std::vector<std::uint8_t>& bytes);

    // "and" by default; a text that begins with "or: " joins by Or.
    void Criterion(const std::string& text);
    // The hits of a folder search, from the folder, in the order of their finding.
    std::vector<std::string> RunFolders(bool subfolders = true, const std::string& lookIn = "");
    // The hits of a folder search with this text in the look-in box.
    std::vector<std::string> RunTyped(const WText& lookIn);
    // The whole paths of the hits of a search in this one folder.
    std::vector<std::string> RunAt(const std::filesystem::path& folder);
    // The hits of a search over these files.
    std::vector<std::string> RunSelection(const std::vector<std::string>& files);
    WText Wide(const std::string& file) const;

    void OnFolder(SRxFoundList& list, const WCHAR* folder) override;
    void OnFolderFailed(const WCHAR*) override { ++failedFolders_; }
    void OnFile(SRxFoundList& list) override;
    void OnPassedOver() override { ++passedOver_; }
    void OnReferencesFailed(const WCHAR* file, HRESULT status) override {
        failedReferences_.push_back(Relative(file) + (status < 0 ? "" : "?"));
    }
    void OnReferenceMissing(const WCHAR* file, const WCHAR* missing) override {
        missing_.push_back(Relative(file) + " -> " + Relative(missing));
    }
    void OnLeftOut(const WCHAR* file, const WCHAR*) override { leftOut_.push_back(Relative(file)); }
    void OnRow(const MDxFileNameNode& hit) override {
        shownRows_.push_back(Relative(hit.GetFileName()));
    }
    void OnPropertiesRead(const WCHAR* file, HRESULT status) override {
        statuses_[Relative(file)] = status;
    }

    const TempFolder place_;
    const std::filesystem::path folder_ = place_.Path();
    ScriptedDesk desk_;
    MDxFileNameNode* slot_ = nullptr;
    SRxFindDialog dialog_;
    DialogControls controls_{SrResReturnHandle()};
    bool routeResult_ = false;
    std::size_t failedFolders_ = 0;
    std::size_t passedOver_ = 0;
    std::size_t files_ = 0;
    std::vector<std::string> folders_;
    std::vector<std::string> leftOut_;
    std::vector<std::string> shownRows_;
    std::vector<std::string> failedReferences_;
    std::vector<std::string> missing_;
    std::map<std::string, HRESULT> statuses_;  // of the last search
    std::function<void(SRxFoundList&)> onFile_;

private:
    std::vector<std::string> Run();
    std::string Relative(const WCHAR* path) const;
    DeskScope deskScope_{desk_};
};

std::vector<std::string> Sorted(std::vector<std::string> names);
