// What a person does in the loop of a dialog: steps in turn, each once nothing waits any more.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <vector>

#include "platform/win.h"

class ScriptedSteps {
protected:
    ScriptedSteps() { current_ = this; }
    virtual ~ScriptedSteps() { current_ = nullptr; }
    // The next step has to wait.
    virtual bool IsBusy() const = 0;

    void Script(std::vector<std::function<void()>> steps) {
        steps_.assign(steps.begin(), steps.end());
        ticks_ = 0;
        timer_ = SetTimer(nullptr, 0, 10, Tick);
    }
    void EndScript() {
        KillTimer(nullptr, timer_);
        EXPECT_TRUE(steps_.empty()) << "the dialog ended early";
    }

    std::deque<std::function<void()>> steps_;
    bool inStep_ = false;

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        ScriptedSteps& test = *current_;
        constexpr int kMostTicks = 1000;
        if (++test.ticks_ > kMostTicks) {
            ADD_FAILURE() << "the dialog doesn't end";
            test.steps_.clear();
            PostQuitMessage(1);
            return;
        }
        if (test.inStep_ || test.steps_.empty() || test.IsBusy()) return;
        const auto step = test.steps_.front();
        test.steps_.pop_front();
        test.inStep_ = true;
        step();
        test.inStep_ = false;
    }

    static inline ScriptedSteps* current_ = nullptr;
    UINT_PTR timer_ = 0;
    int ticks_ = 0;
};
