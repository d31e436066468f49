#include <morv/qc/model.hpp>
#include <morv/qc/wire_words.hpp>

namespace morv::qc {

char const* to_string(model::ParseStatus value) { return wire_word(value); }
char const* to_string(model::Severity value) { return wire_word(value); }
char const* to_string(ResultProfile value) { return wire_word(value); }
char const* to_string(ProgramKind value) { return wire_word(value); }
char const* to_string(TerminationKind value) { return wire_word(value); }
char const* to_string(JobRelation value) { return wire_word(value); }
char const* to_string(TaskKind value) { return wire_word(value); }
char const* to_string(EnergyKind value) { return wire_word(value); }
char const* to_string(ConvergenceStatus value) { return wire_word(value); }
char const* to_string(CriterionKind value) { return wire_word(value); }
char const* to_string(SpinChannel value) { return wire_word(value); }

}  // namespace morv::qc
