#include "host/srfind/hit_printer.h"

#include "platform/host/host_files.h"

namespace {

constexpr std::chrono::milliseconds kBetweenFlushes{50};

}  // namespace

void HitPrinter::Take(const MDxFileNameNode& hit) {
    if (options_.haveFilesFrom && !seen_.insert(hit.GetFileName()).second) return;
    ++count_;
    undecided_.Take(hit);
    if (options_.haveExport) paths_.emplace_back(hit.GetFileName());
    if (options_.sort != eSort::None) {
        kept_.push_back(std::make_unique<MDxFileNameNode>(&hit));
        return;
    }
    WriteOutput(HitText(hit, options_));
    // The first at once; then so that many hits don't become as many writes.
    const auto now = std::chrono::steady_clock::now();
    if (count_ > 1 && now - flushed_ < kBetweenFlushes) return;
    flushed_ = now;
    FlushOutput();
}

void HitPrinter::Finish() {
    std::vector<const MDxFileNameNode*> hits;
    for (const auto& hit : kept_)
        hits.push_back(hit.get());
    SortHits(hits, options_.sort);
    for (const MDxFileNameNode* hit : hits)
        WriteOutput(HitText(*hit, options_));
    WriteError(undecided_.Text(options_));
}
