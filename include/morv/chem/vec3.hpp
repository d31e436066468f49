#pragma once

#include <morv/model/equality.hpp>

#include <tuple>

namespace morv::chem {

// A Cartesian vector. It carries no unit; the field that holds it does.
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline auto fields_of(Vec3 const& v) { return std::tie(v.x, v.y, v.z); }

MORV_DEFINE_EQUALITY(Vec3)

}  // namespace morv::chem
