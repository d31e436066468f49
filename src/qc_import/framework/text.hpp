#pragma once
// Small text helpers that the readers share: fields split at blanks, numbers
// in the forms programs print (Fortran's D exponent included).
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morv::qc::import {

std::string_view trim(std::string_view text);
bool starts_with(std::string_view text, std::string_view prefix);
bool contains(std::string_view text, std::string_view part);
// Views into `text`, so that a field's position gives its span.
std::vector<std::string_view> fields(std::string_view text);
// The whole field must be a finite number, else nothing.
std::optional<double> to_double(std::string_view field);
std::optional<long long> to_integer(std::string_view field);
// ASCII case changes, for keywords that programs read without regard to case.
std::string ascii_upper(std::string_view text);
std::string ascii_lower(std::string_view text);

}  // namespace morv::qc::import
