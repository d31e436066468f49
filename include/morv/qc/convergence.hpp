#pragma once

#include <morv/chem/vec3.hpp>
#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

// Gradient vectors in hartree per bohr, with the summary numbers that the
// program reported for them.
struct GradientRecord {
    std::vector<chem::Vec3> vectors;
    std::optional<double> norm;
    std::optional<double> rms;
    std::optional<double> max;
    std::optional<model::SourceSpan> source;
};

enum class ConvergenceStatus : std::uint32_t {
    unknown = 0,
    converged = 1,
    not_converged = 2,
};

enum class CriterionKind : std::uint32_t {
    max_force = 0,
    rms_force = 1,
    max_displacement = 2,
    rms_displacement = 3,
    energy_change = 4,
    gradient_norm = 5,
    constraint_violation = 6,
};

struct ConvergenceCriterion {
    CriterionKind kind = CriterionKind::gradient_norm;
    double value = 0.0;
    std::optional<double> threshold;
    std::optional<bool> satisfied;
    std::string unit;
};

struct ConvergenceRecord {
    std::vector<ConvergenceCriterion> criteria;
    ConvergenceStatus status = ConvergenceStatus::unknown;
    std::optional<model::SourceSpan> source;
};

inline auto fields_of(GradientRecord const& g) { return std::tie(g.vectors, g.norm, g.rms, g.max, g.source); }
inline auto fields_of(ConvergenceCriterion const& c) {
    return std::tie(c.kind, c.value, c.threshold, c.satisfied, c.unit);
}
inline auto fields_of(ConvergenceRecord const& c) { return std::tie(c.criteria, c.status, c.source); }

MORV_DEFINE_EQUALITY(GradientRecord)
MORV_DEFINE_EQUALITY(ConvergenceCriterion)
MORV_DEFINE_EQUALITY(ConvergenceRecord)

}  // namespace morv::qc
