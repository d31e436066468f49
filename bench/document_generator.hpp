#pragma once

// The benchmarks' name for the plain run of testing/.

#include <morv/testing/document_builder.hpp>

namespace morv::bench {

using testing::generate_result;

}  // namespace morv::bench
