#pragma once

// The companion model library: names of enumerators and the check of a
// finished document.

#include <morv/model/export.hpp>
#include <morv/qc/document.hpp>

#include <vector>

namespace morv::qc {

// Each returns the wire string of the enumerator, owned by the library.
MORV_API char const* to_string(model::ParseStatus value);
MORV_API char const* to_string(model::Severity value);
MORV_API char const* to_string(ResultProfile value);
MORV_API char const* to_string(ProgramKind value);
MORV_API char const* to_string(TerminationKind value);
MORV_API char const* to_string(JobRelation value);
MORV_API char const* to_string(TaskKind value);
MORV_API char const* to_string(EnergyKind value);
MORV_API char const* to_string(ConvergenceStatus value);
MORV_API char const* to_string(CriterionKind value);
MORV_API char const* to_string(SpinChannel value);

// Checks the references between the records of a document and reports each
// finding as a warning with a "qc.model." code, in document order.
MORV_API std::vector<model::Diagnostic> validate_document(Document const& document);

}  // namespace morv::qc
