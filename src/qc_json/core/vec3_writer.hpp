#pragma once

#include "core/json_writer.hpp"

#include <morv/chem/vec3.hpp>

namespace morv::qc::json {

inline void write_vec3(JsonPrinter& printer, chem::Vec3 const& vec3) {
    printer.begin_object();
    printer.member("x", vec3.x);
    printer.member("y", vec3.y);
    printer.member("z", vec3.z);
    printer.end_object();
}

}  // namespace morv::qc::json
