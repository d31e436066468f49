#pragma once

#include <morv/model/equality.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

struct AtomicChargeRecord {
    std::optional<int> atom_index;
    std::string element;
    std::optional<double> population;
    std::optional<double> charge;
    std::optional<double> spin_population;
    std::optional<double> secondary_population;
    std::optional<double> secondary_charge;
};

// One population analysis: the scheme and one record for each atom.
struct AtomicChargeBlock {
    std::string scheme;
    std::vector<AtomicChargeRecord> records;
};

inline auto fields_of(AtomicChargeRecord const& r) {
    return std::tie(r.atom_index, r.element, r.population, r.charge, r.spin_population, r.secondary_population,
                    r.secondary_charge);
}
inline auto fields_of(AtomicChargeBlock const& b) { return std::tie(b.scheme, b.records); }

MORV_DEFINE_EQUALITY(AtomicChargeRecord)
MORV_DEFINE_EQUALITY(AtomicChargeBlock)

}  // namespace morv::qc
