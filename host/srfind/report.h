// What srfind tells about a search on stderr: messages, places that could not be read, counts.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

#include "search/search_sink.h"

class SearchReport final : public SRxSearchSink {
public:
    explicit SearchReport(HINSTANCE resources);

    void Begin(SRxSearchRun&) override {}
    bool End(SRxSearchRun&, bool result) override;
    bool OnProgress(SRxSearchRun&, const WCHAR*) override { return false; }
    void OnHit(SRxSearchRun& run, const WCHAR* folder, const WCHAR* name, MDxFileNameNode& node,
               int& insertIndex) override;
    void OnFolder(SRxSearchRun& run, const WCHAR* folder) override;
    void OnFolderFailed(const WCHAR* folder) override;
    void OnFileFailed(SRxSearchRun& run, const WCHAR* file, HRESULT status) override;
    // Said with the result of its reading.
    void OnFileInUse(const WCHAR*) override {}
    void OnFile(SRxSearchRun& run) override;
    void OnPassedOver() override { ++passedOver_; }
    void OnPropertiesRead(const WCHAR* file, HRESULT status) override;
    void OnReferencesFailed(const WCHAR* file, HRESULT status) override;
    void OnReferenceMissing(const WCHAR* file, const WCHAR* missing) override;

    // What to do with each hit.
    void SetOnHit(std::function<void(const MDxFileNameNode&)> onHit) { onHit_ = std::move(onHit); }

    // A line on stderr.
    void Tell(const std::string& text) { Say(text); }
    // An entry of a list of files that is none.
    void OnUnusable(const WCHAR* file, const char* reason);
    // The search ended before its end; said also without memory.
    void OnIncomplete() noexcept;
    bool IsIncomplete() const { return incomplete_; }
    bool SomethingUnreadable() const { return unreadable_ + badFolders_ != 0; }
    void PrintPassedOver() const;
    void PrintStats(std::size_t hits) const;

private:
    void Say(const std::string& text);
    void SayHowManyMore();
    void ShowProgressLine(const WCHAR* folder);
    void ClearProgressLine();

    HINSTANCE resources_;
    WText lastUnreadable_;
    std::size_t files_ = 0;
    std::size_t propertiesRead_ = 0;
    std::size_t withoutSets_ = 0;
    std::size_t passedOver_ = 0;
    std::size_t unreadable_ = 0;
    std::size_t badFolders_ = 0;
    std::size_t missing_ = 0;
    WText missingIn_;  // the document whose missing references are being told
    std::size_t missingTold_ = 0;
    std::size_t missingMore_ = 0;  // of it, not told
    std::function<void(const MDxFileNameNode&)> onHit_;
    bool incomplete_ = false;
    bool terminal_;
    bool lineShown_ = false;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point lastLine_{};
};
