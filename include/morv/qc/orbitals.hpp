#pragma once

#include <morv/model/equality.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

enum class SpinChannel : std::uint32_t {
    none = 0,
    alpha = 1,
    beta = 2,
};

struct Orbital {
    std::optional<int> index;
    SpinChannel spin = SpinChannel::none;
    std::optional<double> occupation;
    double energy = 0.0;
    std::string symmetry;
    std::string kind;
};

struct OrbitalSetBlock {
    SpinChannel spin = SpinChannel::none;
    std::string kind;
    std::vector<Orbital> orbitals;
};

inline auto fields_of(Orbital const& o) {
    return std::tie(o.index, o.spin, o.occupation, o.energy, o.symmetry, o.kind);
}
inline auto fields_of(OrbitalSetBlock const& b) { return std::tie(b.spin, b.kind, b.orbitals); }

MORV_DEFINE_EQUALITY(Orbital)
MORV_DEFINE_EQUALITY(OrbitalSetBlock)

}  // namespace morv::qc
