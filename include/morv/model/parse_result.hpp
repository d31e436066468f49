#pragma once

#include <morv/model/diagnostic.hpp>

#include <cstdint>
#include <vector>

namespace morv::model {

enum class ParseStatus : std::uint32_t {
    complete = 0,
    partial = 1,
    failed = 2,
};

// What a decode gives back: the value that could be read, how far the read
// got, and every finding on the way. A new result has not succeeded yet.
template <typename T>
struct ParseResult {
    T value{};
    ParseStatus status = ParseStatus::failed;
    std::vector<Diagnostic> diagnostics;
};

}  // namespace morv::model
