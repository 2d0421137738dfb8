// A folder of its own, documents in it, criteria in words, and a search over it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "criteria/list_rules.h"
#include "host/srfind/criterion_text.h"
#include "host/srsample/compound_writer.h"
#include "host/srsample/property_set_writer.h"
#include "module/module_state.h"
#include "platform/native_path.h"
#include "search/search.h"
#include "search/search_sink.h"
#include "tests/scripted_desk.h"
#include "tests/unit/document_support.h"

// Where a property of the product's own set stands, in a form that a table can hold.
using FillSection = std::function<void(PropertySectionWriter&)>;

class SearchTest : public ::testing::Test, public SRxSearchSource, public SRxSearchSink {
protected:
    SearchTest();
    ~SearchTest() override;

    // Empty files, with the folders on their way. Slashes part the names.
    void Tree(const std::vector<std::string>& files);
    // A design document whose root class fits its extension.
    void Document(const std::string& file, const FillSection& product,
                  const FillSection& userDefined = nullptr, const FillSection& summary = nullptr);
    void WriteFile(const std::string& file, const std::vector<std::uint8_t>& bytes);
    // Every place of some bytes in a file.
    void Replace(const std::string& file, const std::string& from, const std::string& to);

    // "and" by default; a text that begins with "or: " joins by Or.
    void Criterion(const std::string& text);
    void ClearCriteria();
    // The hits of a folder search, from the folder, in the order of their finding.
    std::vector<std::string> RunFolders(bool subfolders = true, const std::string& lookIn = "");
    // The hits of a folder search with this text in the look-in box.
    std::vector<std::string> RunTyped(const WText& lookIn);
    // The whole paths of the hits of a search in this one folder.
    std::vector<std::string> RunAt(const std::filesystem::path& folder);
    // The hits of a search over these files.
    std::vector<std::string> RunSelection(const std::vector<std::string>& files);
    // The hits of a search over this chain, which stays the caller's.
    std::vector<std::string> RunChain(MDxFileNameNode* chain);
    WText Wide(const std::string& file) const;

    // The hits of a search of this document and all that it refers to.
    std::vector<std::string> RunRelated(const WText& lookIn);
    std::string Relative(const WCHAR* path) const;

    SRxSearchQuery ReadQuery() override;
    BLxWString LookIn() override { return lookIn_.c_str(); }
    std::vector<WText> ListedFiles() override { return listed_; }
    IQxLecternServer* Server() override { return nullptr; }
    MDxFileNameNode* TakeSelection() override { return std::exchange(slot_, nullptr); }

    void Begin(SRxSearchRun&) override {}
    bool End(SRxSearchRun&, bool result) override { return result; }
    bool OnProgress(SRxSearchRun&, const WCHAR*) override { return false; }
    void OnHit(SRxSearchRun&, const WCHAR*, const WCHAR*, MDxFileNameNode& node, int&) override;
    void OnFolder(SRxSearchRun&, const WCHAR* folder) override {
        folders_.push_back(Relative(folder));
    }
    void OnFolderFailed(const WCHAR* folder) override { failedFolders_.push_back(folder); }
    void OnFileInUse(const WCHAR* file) override { inUse_.push_back(Relative(file)); }
    void OnFileFailed(SRxSearchRun&, const WCHAR* file, HRESULT) override {
        if (cantTell_) throw std::bad_alloc();
        failedFiles_.push_back(Relative(file));
    }
    void OnFile(SRxSearchRun& run) override {
        ++files_;
        if (onFile_) onFile_(run);
    }
    void OnPassedOver() override { ++passedOver_; }
    void OnReferencesFailed(const WCHAR* file, HRESULT status) override {
        failedReferences_.push_back(Relative(file) + (status < 0 ? "" : "?"));
    }
    void OnReferenceMissing(const WCHAR* file, const WCHAR* missing) override {
        missing_.push_back(Relative(file) + " -> " + Relative(missing));
    }
    void OnPropertiesRead(const WCHAR* file, HRESULT status) override {
        statuses_[Relative(file)] = status;
    }

    const TempFolder place_;
    const std::filesystem::path folder_ = place_.Path();
    ScriptedDesk desk_;
    MDxFileNameNode* slot_ = nullptr;  // the chain to search, and then the hits
    SRxCriteriaList criteria_;
    SRxSearchQuery query_;  // but for the criteria
    WText lookIn_;
    std::vector<WText> listed_;
    SRxShellExtParameters params_;  // of the last search
    bool routeResult_ = false;
    std::vector<WText> failedFolders_;
    std::vector<std::string> inUse_;
    std::vector<std::string> failedFiles_;
    bool cantTell_ = false;  // of a file that failed
    std::size_t passedOver_ = 0;
    std::size_t files_ = 0;
    std::vector<std::string> folders_;
    std::vector<std::string> failedReferences_;
    std::vector<std::string> missing_;
    std::map<std::string, HRESULT> statuses_;  // of the last search
    std::function<void(SRxSearchRun&)> onFile_;

private:
    std::vector<std::string> Run();
    DeskScope deskScope_{desk_};
};

std::vector<std::string> Sorted(std::vector<std::string> names);
