#pragma once

#include <morv/chem/vec3.hpp>
#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

struct PermanentDipole {
    chem::Vec3 atomic_units;
    std::optional<double> magnitude_atomic_units;
    std::optional<double> magnitude_debye;
    std::string method;
    std::string density_type;
    std::optional<model::SourceSpan> source;
};

struct DipoleBlock {
    std::vector<PermanentDipole> moments;
};

inline auto fields_of(PermanentDipole const& d) {
    return std::tie(d.atomic_units, d.magnitude_atomic_units, d.magnitude_debye, d.method, d.density_type,
                    d.source);
}
inline auto fields_of(DipoleBlock const& b) { return std::tie(b.moments); }

MORV_DEFINE_EQUALITY(PermanentDipole)
MORV_DEFINE_EQUALITY(DipoleBlock)

}  // namespace morv::qc
