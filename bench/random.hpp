#pragma once

// The benchmarks' and fuzzers' name for the one random generator, splitmix64,
// of testing/.

#include <morv/testing/choices.hpp>

namespace morv::bench {

class Random : public testing::Choices {
public:
    using Choices::Choices;
};

}  // namespace morv::bench
