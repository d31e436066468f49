#pragma once

#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

namespace morv::qc {

enum class ProgramKind : std::uint32_t {
    unknown = 0,
    gaussian = 1,
    orca = 2,
    gamess = 3,
};

enum class ResultProfile : std::uint32_t {
    unknown = 0,
    summary = 1,
    standard = 2,
    full = 3,
};

enum class TerminationKind : std::uint32_t {
    unknown = 0,
    running = 1,
    normal = 2,
    error = 3,
    interrupted = 4,
    truncated = 5,
};

struct Termination {
    TerminationKind kind = TerminationKind::unknown;
    std::string reason;
    std::optional<model::SourceSpan> source;
};

struct ProgramInfo {
    ProgramKind kind = ProgramKind::unknown;
    std::string name;
    std::string version;
    std::string input_file_name;
    Termination termination;
};

// Which kinds of analysis the producer of a document was asked to extract.
struct RequestedAnalyses {
    bool gradients = true;
    bool vibrations = true;
    bool excited_states = true;
    bool orbitals = true;
    bool dipoles = true;
};

struct Normalization {
    ResultProfile profile = ResultProfile::unknown;
    RequestedAnalyses requested_analyses;
};

inline auto fields_of(Termination const& t) { return std::tie(t.kind, t.reason, t.source); }
inline auto fields_of(ProgramInfo const& p) {
    return std::tie(p.kind, p.name, p.version, p.input_file_name, p.termination);
}
inline auto fields_of(RequestedAnalyses const& r) {
    return std::tie(r.gradients, r.vibrations, r.excited_states, r.orbitals, r.dipoles);
}
inline auto fields_of(Normalization const& n) { return std::tie(n.profile, n.requested_analyses); }

MORV_DEFINE_EQUALITY(Termination)
MORV_DEFINE_EQUALITY(ProgramInfo)
MORV_DEFINE_EQUALITY(RequestedAnalyses)
MORV_DEFINE_EQUALITY(Normalization)

}  // namespace morv::qc
