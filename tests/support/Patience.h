#pragma once

namespace pontrel::test {

/// Milliseconds after which what a test waits for is taken for hung: no machine is so busy. What comes in
/// time costs no more than it takes.
inline constexpr int PatienceMs = 120'000;

} // namespace pontrel::test
