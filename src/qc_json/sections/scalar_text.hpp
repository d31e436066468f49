#pragma once

// Typing of an untyped scalar by its text, for the tables that no schema
// describes. Each conversion counts only when it takes the whole text; a
// failure of the standard conversion is not an error, it only means that the
// text is not of that kind.

#include <optional>
#include <string>

namespace morv::qc::json {

std::optional<long long> whole_signed(std::string const& text);
std::optional<unsigned long long> whole_unsigned(std::string const& text);
// Takes whatever strtod takes, infinities, NaN and hexadecimal included.
std::optional<double> whole_double(std::string const& text);

}  // namespace morv::qc::json
