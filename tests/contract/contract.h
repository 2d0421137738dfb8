// What the contract tests share: the same rows judge the native layer and Windows, by public names
// only.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <iostream>
#include <string>

#include "platform/native_layer.h"
#include "platform/win.h"
#include "platform/wtext.h"

inline constexpr DWORD kPoisonError = 7777;
inline constexpr WCHAR kGuard = 0x2603;

// Which side a row is known not to hold on; each has a row in platform/GAPS.md.
enum class eGap { none, native, windows };

inline bool GapApplies(eGap gap) {
    return gap == (IsNativeLayer() ? eGap::native : eGap::windows);
}

// Judges the condition on the side that has the gap. A gap of the layer is ours: when it closes,
// its mark and its row go, so that fails. A fault of Windows differs from version to version: that
// it is gone is only said.
inline void JudgeGap(eGap gap, const char* condition, bool holds) {
    if (!holds) return;
    if (gap == eGap::native) {
        ADD_FAILURE() << "the gap closed: drop this mark and its row in GAPS.md: " << condition;
    } else {
        std::cout << "this Windows has no such gap any more: " << condition << '\n';
    }
}

// The condition holds, save on the side that has the gap.
#define KNOWN_GAP(gap, condition)                   \
    GTEST_AMBIGUOUS_ELSE_BLOCKER_                   \
    if (GapApplies(gap)) {                          \
        JudgeGap(gap, #condition, bool(condition)); \
    } else                                          \
        EXPECT_TRUE(condition)

// A buffer of `size` units with a guard behind it, all filled with the guard's value.
class GuardedBuffer {
public:
    explicit GuardedBuffer(std::size_t size) : units_(size + 1, kGuard) {}
    WCHAR* data() { return units_.data(); }
    bool IsGuardWhole() const { return units_.back() == kGuard; }
    // Up to the terminator.
    WText Text() const { return units_.c_str(); }

private:
    WText units_;
};

// Garbage that no call would leave behind.
template <typename Value>
Value Poison() {
    Value value;
    std::memset(&value, 0x55, sizeof value);
    return value;
}

template <typename Value>
bool IsPoison(const Value& value) {
    const Value poison = Poison<Value>();
    return std::memcmp(&value, &poison, sizeof value) == 0;
}
