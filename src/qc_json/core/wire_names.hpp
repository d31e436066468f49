#pragma once

// The reader matches enumerator names with its own copy of the wire strings,
// byte for byte, so that it never depends on what the writer's names are.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace morv::qc::json {

template <typename Enum, std::size_t Size>
using WireNames = std::array<std::pair<char const*, Enum>, Size>;

template <typename Enum, std::size_t Size>
std::optional<Enum> find_wire_name(std::string const& text, WireNames<Enum, Size> const& names) {
    for (auto const& [wire, value] : names) {
        if (text == wire) {
            return value;
        }
    }
    return std::nullopt;
}

}  // namespace morv::qc::json
