#pragma once

#include <morv/model/entity_id.hpp>
#include <morv/model/equality.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

namespace morv::model {

enum class Severity : std::uint32_t {
    note = 0,
    warning = 1,
    error = 2,
};

struct SourcePosition {
    std::uint64_t offset = 0;
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

// A region of one source file of the document; `source_id` names the file.
struct SourceSpan {
    SourceId source_id;
    SourcePosition begin;
    SourcePosition end;
};

struct Diagnostic {
    Severity severity = Severity::note;
    std::string code;
    std::string message;
    std::optional<SourceSpan> source;
};

inline auto fields_of(SourcePosition const& p) { return std::tie(p.offset, p.line, p.column); }
inline auto fields_of(SourceSpan const& s) { return std::tie(s.source_id, s.begin, s.end); }
inline auto fields_of(Diagnostic const& d) { return std::tie(d.severity, d.code, d.message, d.source); }

MORV_DEFINE_EQUALITY(SourcePosition)
MORV_DEFINE_EQUALITY(SourceSpan)
MORV_DEFINE_EQUALITY(Diagnostic)

}  // namespace morv::model
