#pragma once

#include <string>
#include <variant>
#include <vector>

namespace morv::qc {

// The value of one entry of a document's flat `metadata` table.
using MetadataValue =
    std::variant<bool, long long, double, std::string, std::vector<std::string>, std::vector<double>>;

}  // namespace morv::qc
