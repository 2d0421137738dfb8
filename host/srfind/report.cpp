#include "host/srfind/report.h"

#include <cstdio>

#include "outside/md_properties.h"
#include "platform/host/host_files.h"
#include "platform/host/program_main.h"
#include "platform/native_path.h"
#include "platform/resource_text.h"
#include "resource/string_ids.h"

namespace {

constexpr std::chrono::milliseconds kBetweenLines{100};
constexpr std::size_t kMostMissingTold = 100;  // of one document

std::string Reason(HRESULT status) {
    switch (status) {
        case STG_E_SHAREVIOLATION:
        case STG_E_LOCKVIOLATION:
            return "is in use by another program";
        case STG_E_ACCESSDENIED:
            return "may not be read";
        case STG_E_FILENOTFOUND:
        case STG_E_PATHNOTFOUND:
            return "is not there any more";
        case STG_E_DOCFILECORRUPT:
            return "is damaged";
        case STG_E_INVALIDHEADER:
            return "is no design document, though its extension says so";
        case DISP_E_TYPEMISMATCH:
            return "has a property that was asked for in a form that can't be read";
        case E_OUTOFMEMORY:
            return "could not be looked into: there is not enough memory";
        default: {
            char code[16];
            std::snprintf(code, sizeof(code), "0x%08X", static_cast<unsigned>(status));
            return std::string("could not be read (") + code + ")";
        }
    }
}

}  // namespace

SearchReport::SearchReport(HINSTANCE resources)
    : resources_(resources), terminal_(IsErrorTerminal()) {}

void SearchReport::Say(const std::string& text) {
    SayHowManyMore();
    ClearProgressLine();
    WriteError("srfind: " + text + "\n");
}

void SearchReport::OnFolder(SRxSearchRun& run, const WCHAR* folder) {
    if (WasInterrupted()) run.stopRequested = true;
    if (terminal_) ShowProgressLine(folder);
}

void SearchReport::OnFile(SRxSearchRun& run) {
    ++files_;
    if (WasInterrupted()) run.stopRequested = true;
}

void SearchReport::OnFolderFailed(const WCHAR* folder) {
    ++badFolders_;
    const WText format = ResourceText(resources_, MSG_PATH_NOT_FOUND);
    const std::string text = wtext::ToUtf8(format);
    const std::size_t insert = text.find("%s");
    Say(insert == std::string::npos
            ? text + " " + DisplayPath(folder)
            : text.substr(0, insert) + DisplayPath(folder) + text.substr(insert + 2));
}

void SearchReport::OnPropertiesRead(const WCHAR* file, HRESULT status) {
    ++propertiesRead_;
    if (status == kNoPropertySets) ++withoutSets_;
    if (status >= 0) return;
    ++unreadable_;
    lastUnreadable_ = file;
    Say(DisplayPath(file) + " " + Reason(status));
}

void SearchReport::OnReferencesFailed(const WCHAR* file, HRESULT status) {
    // Said already when its properties were asked for.
    if (lastUnreadable_ == file) return;
    ++unreadable_;
    Say(DisplayPath(file) + " " + Reason(status) +
        ": the documents that it refers to aren't known");
}

void SearchReport::OnReferenceMissing(const WCHAR* file, const WCHAR* missing) {
    ++missing_;
    if (missingIn_ != file) {
        SayHowManyMore();
        missingIn_ = file;
        missingTold_ = 0;
    }
    if (missingTold_ == kMostMissingTold) {
        ++missingMore_;
        return;
    }
    ++missingTold_;
    Say(DisplayPath(missing) + " is not there, though " + DisplayPath(file) + " refers to it");
}

void SearchReport::SayHowManyMore() {
    if (missingMore_ == 0) return;
    const std::size_t more = std::exchange(missingMore_, 0);
    Say("and " + std::to_string(more) + " more of those that " + DisplayPath(missingIn_) +
        " refers to");
}

void SearchReport::OnHit(SRxSearchRun&, const WCHAR*, const WCHAR*, MDxFileNameNode& node, int&) {
    ClearProgressLine();
    if (onHit_) onHit_(node);
}

bool SearchReport::End(SRxSearchRun&, bool result) {
    SayHowManyMore();
    ClearProgressLine();
    return result;
}

void SearchReport::OnFileFailed(SRxSearchRun&, const WCHAR* file, HRESULT status) {
    OnUnusable(file, Reason(status).c_str());
}

void SearchReport::OnIncomplete() noexcept {
    ++unreadable_;
    incomplete_ = true;
    try {
        Say(wtext::ToUtf8(ResourceText(resources_, MSG_SEARCH_INCOMPLETE)));
    } catch (...) {
        WriteError("srfind: The search ended before its end, for want of memory.\n");
    }
}

void SearchReport::OnUnusable(const WCHAR* file, const char* reason) {
    ++unreadable_;
    Say(DisplayPath(file) + " " + reason);
}

void SearchReport::ShowProgressLine(const WCHAR* folder) {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastLine_ < kBetweenLines) return;
    lastLine_ = now;
    lineShown_ = true;
    WriteError("\r\x1b[K" + std::to_string(files_) + " files, " + DisplayPath(folder));
    std::fflush(stderr);
}

void SearchReport::ClearProgressLine() {
    if (lineShown_) WriteError("\r\x1b[K");
    lineShown_ = false;
}

void SearchReport::PrintPassedOver() const {
    if (passedOver_ == 0) return;
    WriteError("srfind: " + std::to_string(passedOver_) +
               " file(s) were passed over by their type: their properties were not read\n");
}

void SearchReport::PrintStats(std::size_t hits) const {
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start_;
    char time[32];
    std::snprintf(time, sizeof(time), "%.3f", seconds.count());
    const auto line = [](const char* name, std::size_t count) {
        return std::string(name) + std::to_string(count) + "\n";
    };
    WriteError(
        line("files looked at        ", files_) + line("property sets read     ", propertiesRead_) +
        line("without property sets  ", withoutSets_) +
        line("passed over by type    ", passedOver_) + line("hits                   ", hits) +
        line("unreadable files       ", unreadable_) +
        line("unreadable folders     ", badFolders_) + line("missing references     ", missing_) +
        "seconds                " + time + "\n");
}
