#pragma once
// Small text helpers that the readers share: fields split at blanks, numbers
// in the forms programs print (Fortran's D exponent included).
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morv::qc::import {

// Every line of an output passes through these, so they are inline.
inline bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }
inline std::string_view trim(std::string_view text) {
    while (!text.empty() && is_blank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_blank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}
inline bool starts_with(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && text.compare(0, prefix.size(), prefix) == 0;
}
inline bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }
// A rule of three dashes or more, as programs draw under their headings.
inline bool is_dashes(std::string_view text) {
    text = trim(text);
    return text.size() >= 3 && text.find_first_not_of('-') == std::string_view::npos;
}
// Views into `text`, so that a field's position gives its span.
std::vector<std::string_view> fields(std::string_view text);
// The same into `out`, whose memory a reader of a long table reuses.
void fields(std::string_view text, std::vector<std::string_view>& out);
// The whole field must be a finite number, else nothing.
std::optional<double> to_double(std::string_view field);
std::optional<long long> to_integer(std::string_view field);
// ASCII case changes, for keywords that programs read without regard to case.
std::string ascii_upper(std::string_view text);
std::string ascii_lower(std::string_view text);

// The number after the first `key` in `text`, blanks and one '=' allowed
// between them: "ENERGY=   -74.59", "S = 1.0", "IS  -382.05 AFTER".
struct NumberField {
    double value = 0.0;
    // The number's characters, a view into `text`.
    std::string_view field;
};
std::optional<NumberField> number_after(std::string_view text, std::string_view key);

}  // namespace morv::qc::import
