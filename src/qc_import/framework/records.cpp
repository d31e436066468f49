#include "framework/records.hpp"

#include "framework/text.hpp"
#include "framework/units.hpp"

#include <utility>

namespace morv::qc::import {

PermanentDipole dipole_from_debye(double x, double y, double z, double magnitude) {
    double const per_debye = 1.0 / units::dipole_au_in_debye;
    PermanentDipole moment;
    moment.atomic_units = {x * per_debye, y * per_debye, z * per_debye};
    moment.magnitude_debye = magnitude;
    moment.magnitude_atomic_units = magnitude * per_debye;
    return moment;
}

void set_property(ScalarPropertyBlock& block, ScalarProperty property) {
    for (auto& known : block.properties) {
        if (known.key == property.key) {
            known = std::move(property);
            return;
        }
    }
    block.properties.push_back(std::move(property));
}

model::SourceSpan span_of_properties(ScalarPropertyBlock const& block) {
    auto where = *block.properties.front().source;
    for (auto const& property : block.properties) {
        if (property.source->end.offset > where.end.offset) {
            where.end = property.source->end;
        }
        if (property.source->begin.offset < where.begin.offset) {
            where.begin = property.source->begin;
        }
    }
    return where;
}

model::Diagnostic error_termination(Termination& termination, LineCursor const& lines, std::size_t index,
                                    std::size_t first, model::SourceId source, std::string_view noise,
                                    std::string code, std::string const& program) {
    Line reason_line = lines.at(index);
    std::size_t const stop = index > first + 12 ? index - 12 : first;
    for (std::size_t i = index; i > stop; --i) {
        auto const previous = trim(lines.at(i - 1).text);
        if (!previous.empty() && (noise.empty() || !contains(previous, noise))) {
            reason_line = lines.at(i - 1);
            break;
        }
    }
    auto const reason = trim(reason_line.text);
    termination.kind = TerminationKind::error;
    termination.reason = std::string(reason);
    termination.source = span_of_part(source, reason_line, reason);
    return {model::Severity::error, std::move(code), program + " stopped with an error: " + std::string(reason),
            termination.source};
}

void read_gradient_summary(std::optional<GradientRecord>& gradient, std::string_view text, std::string_view max_key,
                           std::string_view rms_key) {
    if (!gradient) {
        return;
    }
    if (auto const max = number_after(text, max_key)) {
        gradient->max = max->value;
    }
    if (auto const rms = number_after(text, rms_key)) {
        gradient->rms = rms->value;
    }
}

}  // namespace morv::qc::import
