#pragma once

#include <cstdint>

namespace pontrel::demo {

/// Numbers that look like chance and are the same on every machine: those of the standard library need not
/// be.
class Chance {
  public:
    explicit Chance(std::uint32_t seed) : state_(seed * 2654435761U + 1) {
        for (int warmUp = 0; warmUp < 4; ++warmUp)
            next();
    }

    /// A number from 0 to count - 1.
    int below(int count) { return static_cast<int>(next() % static_cast<std::uint32_t>(count)); }
    /// A number from first to last, both included.
    int between(int first, int last) { return first + below(last - first + 1); }
    /// True in so many of a thousand cases.
    bool perMille(int share) { return below(1000) < share; }

  private:
    /// A linear congruential generator; its upper bits alone are good enough to be used.
    std::uint32_t next() {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::uint32_t>(state_ >> 33U);
    }

    std::uint64_t state_;
};

} // namespace pontrel::demo
