#pragma once

// A scalar's text converted with yaml-cpp's rules, which are the tolerance of
// the field readers. The spellings that strict JSON writes for numbers and
// booleans are converted here directly, to the very values that yaml-cpp's
// stream conversion gives them; every other text is handed to yaml-cpp itself.

#include <optional>
#include <string>
#include <string_view>

namespace morv::qc::json {

// Empty when yaml-cpp refuses the text. `json_number` vouches that the text
// is a number as strict JSON spells it, which spares checking it again.
// Defined for std::string, std::string_view, bool, double, int, and unsigned short, int and
// long long.
template <typename T>
std::optional<T> convert_scalar(std::string_view text, bool json_number);

template <>
std::optional<std::string> convert_scalar<std::string>(std::string_view text, bool json_number);
// The text itself, as the conversion to std::string gives it, without a copy:
// it lives as long as the parsed text.
template <>
inline std::optional<std::string_view> convert_scalar<std::string_view>(std::string_view text, bool) {
    return text;
}
template <>
std::optional<bool> convert_scalar<bool>(std::string_view text, bool json_number);
template <>
std::optional<double> convert_scalar<double>(std::string_view text, bool json_number);

extern template std::optional<int> convert_scalar<int>(std::string_view, bool);
extern template std::optional<unsigned short> convert_scalar<unsigned short>(std::string_view, bool);
extern template std::optional<unsigned int> convert_scalar<unsigned int>(std::string_view, bool);
extern template std::optional<unsigned long long> convert_scalar<unsigned long long>(std::string_view, bool);

}  // namespace morv::qc::json
