#pragma once

// The benchmarks' and fuzzers' name for the one random generator, splitmix64,
// of testing/.

#include <morv/testing/choices.hpp>

namespace morv::bench {

using Random = testing::Choices;

}  // namespace morv::bench
