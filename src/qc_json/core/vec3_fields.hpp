#pragma once

#include "core/json_writer.hpp"

#include <morv/chem/vec3.hpp>

#include <array>
#include <string_view>

namespace morv::qc::json {

// The keys of a Cartesian vector object, in the order in which they are written.
inline constexpr std::array<std::string_view, 3> vec3_keys = {"x", "y", "z"};

inline void write_vec3(JsonPrinter& printer, chem::Vec3 const& vec3) {
    printer.begin_object();
    printer.member(vec3_keys[0], vec3.x);
    printer.member(vec3_keys[1], vec3.y);
    printer.member(vec3_keys[2], vec3.z);
    printer.end_object();
}

}  // namespace morv::qc::json
