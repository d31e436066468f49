#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace morv::model {

// Any JSON value, kept for a root key that the document format does not know.
struct ExtensionValue {
    std::variant<std::nullptr_t,
                 bool,
                 long long,
                 unsigned long long,
                 double,
                 std::string,
                 std::vector<ExtensionValue>,
                 std::map<std::string, ExtensionValue>>
        value;
};

inline bool operator==(ExtensionValue const& lhs, ExtensionValue const& rhs) { return lhs.value == rhs.value; }
inline bool operator!=(ExtensionValue const& lhs, ExtensionValue const& rhs) { return !(lhs == rhs); }

}  // namespace morv::model
