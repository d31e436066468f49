#pragma once
// Records that every reader fills the same way from what a program prints.
#include <morv/model/diagnostic.hpp>
#include <morv/qc/program.hpp>
#include <morv/qc/convergence.hpp>
#include <morv/qc/dipoles.hpp>
#include <morv/qc/scalar_properties.hpp>

#include "framework/line_cursor.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace morv::qc::import {

// A dipole printed in debye, its components and its magnitude.
PermanentDipole dipole_from_debye(double x, double y, double z, double magnitude);

// Puts `property` into `block`, in place of an earlier value of its key.
void set_property(ScalarPropertyBlock& block, ScalarProperty property);

// From the first to the last byte that the properties, each with a span,
// were read from; only for a block that has some.
model::SourceSpan span_of_properties(ScalarPropertyBlock const& block);

// Fills the termination of a run that stopped with an error and returns the
// diagnostic `code` that reports it. Programs write why they stopped just
// before: the reason is the last line with text among the dozen before line
// `index` (none before `first`) that does not contain `noise`.
model::Diagnostic error_termination(Termination& termination, LineCursor const& lines, std::size_t index,
                                    std::size_t first, model::SourceId source, std::string_view noise,
                                    std::string code, std::string const& program);

// The largest component and the root mean square of the gradient just read,
// from a line that prints them after `max_key` and `rms_key`; nothing without
// a gradient.
void read_gradient_summary(std::optional<GradientRecord>& gradient, std::string_view text, std::string_view max_key,
                           std::string_view rms_key);

}  // namespace morv::qc::import
