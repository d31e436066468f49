#pragma once
// The rotation that carries one set of points onto another. Programs print
// some vectors (forces, say) in the axes of one orientation of a molecule and
// its geometry in another; the rotation between the two printed geometries
// carries the vectors over.
#include <morv/chem/vec3.hpp>

#include <array>
#include <optional>
#include <vector>

namespace morv::qc::import {

using Rotation = std::array<std::array<double, 3>, 3>;

// The proper rotation R and a translation with R * from[i] + t == to[i] for
// every point within `tolerance` (the points' unit); nothing when no rotation
// does, or when the lists differ in length.
std::optional<Rotation> rotation_between(std::vector<chem::Vec3> const& from, std::vector<chem::Vec3> const& to,
                                         double tolerance);

chem::Vec3 rotate(Rotation const& rotation, chem::Vec3 const& v);

}  // namespace morv::qc::import
