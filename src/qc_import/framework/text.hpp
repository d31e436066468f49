#pragma once
// Small text helpers that the readers share: fields split at blanks, numbers
// in the forms programs print (Fortran's D exponent included).
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morv::qc::import {

// Every line of an output passes through these, so they are inline.
// Blanks are all at or below the space, which most bytes are not.
inline bool is_blank(char c) {
    return static_cast<unsigned char>(c) <= ' ' && (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v');
}
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
// The fields of a line split at blanks: views into the line, so that a
// field's position gives its span. Tables are read a row at a time, and a row
// seldom has more fields than are kept in place, so most lines are split
// without touching the heap.
class Fields {
public:
    Fields() = default;
    explicit Fields(std::string_view text);

    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    std::string_view const* begin() const { return spilled_.empty() ? in_place_.data() : spilled_.data(); }
    std::string_view const* end() const { return begin() + count_; }
    std::string_view operator[](std::size_t index) const { return begin()[index]; }
    std::string_view front() const { return begin()[0]; }
    std::string_view back() const { return begin()[count_ - 1]; }

private:
    void push_back(std::string_view field) {
        if (count_ < in_place_.size()) {
            in_place_[count_++] = field;
        } else {
            spill(field);
        }
    }
    void spill(std::string_view field);

    std::array<std::string_view, 24> in_place_;
    std::vector<std::string_view> spilled_;
    std::size_t count_ = 0;
};
inline Fields fields(std::string_view text) { return Fields(text); }
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
