#include "framework/text.hpp"

#include <charconv>
#include <cmath>
#include <system_error>

namespace morv::qc::import {

namespace {
bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }
}  // namespace

std::string_view trim(std::string_view text) {
    while (!text.empty() && is_blank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_blank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool starts_with(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::vector<std::string_view> fields(std::string_view text) {
    std::vector<std::string_view> out;
    fields(text, out);
    return out;
}

void fields(std::string_view text, std::vector<std::string_view>& out) {
    out.clear();
    std::size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && is_blank(text[i])) {
            ++i;
        }
        std::size_t const start = i;
        while (i < text.size() && !is_blank(text[i])) {
            ++i;
        }
        if (i > start) {
            out.push_back(text.substr(start, i - start));
        }
    }
}

std::optional<double> to_double(std::string_view field) {
    // Only the characters of a number as programs print it: no hexadecimal,
    // infinities or blanks. from_chars reads the numbers of a large table
    // several times faster than strtod, but takes no '+' sign.
    if (field.empty() || field.size() > 64) {
        return std::nullopt;
    }
    char copy[64];
    std::size_t size = 0;
    for (char c : field) {
        bool const allowed = (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E' ||
                             c == 'd' || c == 'D';
        if (!allowed) {
            return std::nullopt;
        }
        copy[size++] = c == 'd' || c == 'D' ? 'E' : c;
    }
    char const* begin = copy;
    if (copy[0] == '+' && size > 1 && copy[1] != '+' && copy[1] != '-') {
        ++begin;
    }
    double value = 0.0;
    auto const [end, error] = std::from_chars(begin, copy + size, value);
    if (end != copy + size || error != std::errc() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<long long> to_integer(std::string_view field) {
    if (field.empty() || field.size() > 18) {
        return std::nullopt;
    }
    std::size_t i = field.front() == '-' || field.front() == '+' ? 1 : 0;
    if (i == field.size()) {
        return std::nullopt;
    }
    long long value = 0;
    for (; i < field.size(); ++i) {
        if (field[i] < '0' || field[i] > '9') {
            return std::nullopt;
        }
        value = value * 10 + (field[i] - '0');
    }
    return field.front() == '-' ? -value : value;
}

std::optional<NumberField> number_after(std::string_view text, std::string_view key) {
    auto const at = text.find(key);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    auto rest = text.substr(at + key.size());
    auto skip_blanks = [&rest] {
        while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t')) {
            rest.remove_prefix(1);
        }
    };
    skip_blanks();
    if (!rest.empty() && rest.front() == '=') {
        rest.remove_prefix(1);
        skip_blanks();
    }
    auto const end = rest.find_first_of(" \t");
    auto const field = rest.substr(0, end);
    auto const value = to_double(field);
    if (!value) {
        return std::nullopt;
    }
    return NumberField{*value, field};
}

}  // namespace morv::qc::import
