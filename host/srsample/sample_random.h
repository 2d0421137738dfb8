// Reproducible random numbers: the same on every system for the same seed (SplitMix64).
#pragma once

#include <cstddef>
#include <cstdint>

class SampleRandom {
public:
    explicit SampleRandom(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return mixed ^ (mixed >> 31);
    }
    // 0 to count - 1.
    std::uint32_t Below(std::uint32_t count) {
        return static_cast<std::uint32_t>((Next() >> 32) * count >> 32);
    }
    bool Chance(std::uint32_t percent) { return Below(100) < percent; }
    template <typename T, std::size_t N>
    const T& Pick(const T (&choices)[N]) {
        return choices[Below(static_cast<std::uint32_t>(N))];
    }

private:
    std::uint64_t state_;
};
