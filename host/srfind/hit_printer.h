// Prints hits as they come, or at the end when they are to be sorted.
#pragma once

#include <chrono>
#include <memory>
#include <unordered_set>
#include <vector>

#include "host/srfind/hits.h"

class HitPrinter {
public:
    explicit HitPrinter(const Options& options) : options_(options) {}

    // A file that a list names more than once is one hit.
    void Take(const MDxFileNameNode& hit);
    void Finish();
    std::size_t Count() const { return count_; }
    // The paths of the hits in the order of their finding, where --export asks for them.
    const std::vector<WText>& Paths() const { return paths_; }

private:
    const Options& options_;
    std::size_t count_ = 0;
    UndecidedCount undecided_;
    std::vector<std::unique_ptr<MDxFileNameNode>> kept_;
    std::vector<WText> paths_;
    std::unordered_set<WText> seen_;
    std::chrono::steady_clock::time_point flushed_{};
};
