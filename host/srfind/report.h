// What srfind tells about a search on stderr: messages, places that could not be read, counts.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

#include "platform/desk.h"
#include "search/search_observer.h"

class SearchReport : public SRxSearchObserver, public Desk {
public:
    explicit SearchReport(HINSTANCE resources);
    virtual ~SearchReport() = default;

    void OnFolder(SRxFoundList& list, const WCHAR* folder) override;
    void OnFolderFailed(const WCHAR* folder) override;
    void OnFile(SRxFoundList& list) override;
    void OnPassedOver() override { ++passedOver_; }
    void OnPropertiesRead(const WCHAR* file, HRESULT status) override;
    void OnReferencesFailed(const WCHAR* file, HRESULT status) override;
    void OnReferenceMissing(const WCHAR* file, const WCHAR* missing) override;
    void OnRow(const MDxFileNameNode& hit) override;
    void OnLeftOut(const WCHAR* file, const WCHAR* shown) override;
    // Prints the message and gives the answer that changes nothing.
    int AnswerMessageBox(const MessageBoxQuestion& question) override;

    // What to do with each hit of the found dialog.
    void SetOnHit(std::function<void(const MDxFileNameNode&)> onHit) { onHit_ = std::move(onHit); }
    // The file that the next question about one is answered with; `replace`: also one that exists.
    void ExpectExport(const WText& path, bool replace);
    // The list of hits was written, and whole.
    bool Exported() const { return exportDone_ && told_ == toldBeforeExport_; }
    WText AnswerFileQuestion(const FileQuestion& question) override;

    // A line on stderr.
    void Tell(const std::string& text) { Say(text); }
    // How many lines were told so far.
    // An entry of a list of files that is none.
    void OnUnusable(const WCHAR* file, const char* reason);
    bool SomethingUnreadable() const { return unreadable_ + badFolders_ != 0; }
    void PrintPassedOver() const;
    void PrintStats(std::size_t hits) const;

private:
    void Say(const std::string& text);
    void ShowProgressLine(const WCHAR* folder);
    void ClearProgressLine();

    HINSTANCE resources_;
    // Boxes that say what was printed already, with the path in the system's own form.
    WText expectedBox_;
    WText lastUnreadable_;
    std::size_t told_ = 0;
    std::size_t files_ = 0;
    std::size_t propertiesRead_ = 0;
    std::size_t withoutSets_ = 0;
    std::size_t passedOver_ = 0;
    std::size_t unreadable_ = 0;
    std::size_t badFolders_ = 0;
    std::size_t leftOut_ = 0;
    std::size_t missing_ = 0;
    std::function<void(const MDxFileNameNode&)> onHit_;
    WText exportTo_;
    bool replacesFile_ = false;
    bool exportDone_ = false;
    std::size_t toldBeforeExport_ = 0;
    bool terminal_;
    bool lineShown_ = false;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point lastLine_{};
};
