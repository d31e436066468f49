#pragma once

#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

struct ScalarProperty {
    std::string key;
    std::string label;
    double value = 0.0;
    std::string unit;
    std::optional<model::SourceSpan> source;
};

struct ScalarPropertyBlock {
    std::vector<ScalarProperty> properties;
};

inline auto fields_of(ScalarProperty const& p) { return std::tie(p.key, p.label, p.value, p.unit, p.source); }
inline auto fields_of(ScalarPropertyBlock const& b) { return std::tie(b.properties); }

MORV_DEFINE_EQUALITY(ScalarProperty)
MORV_DEFINE_EQUALITY(ScalarPropertyBlock)

}  // namespace morv::qc
