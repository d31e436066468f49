#include "framework/text.hpp"

#include <cctype>
#include <charconv>
#include <cmath>
#include <system_error>

namespace morv::qc::import {

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
    // Only what a program prints as a number. from_chars takes no blanks,
    // hexadecimal or leading '+' and reads the C locale's form whatever the
    // process's locale; infinities and NaN it reads are turned away below.
    if (!field.empty() && field.front() == '+') {
        field.remove_prefix(1);
        if (!field.empty() && (field.front() == '+' || field.front() == '-')) {
            return std::nullopt;
        }
    }
    // Fortran's D exponent, as in -0.75D+02.
    char copy[64];
    auto const exponent = field.find_first_of("dD");
    if (exponent != std::string_view::npos) {
        if (field.size() > sizeof copy) {
            return std::nullopt;
        }
        field.copy(copy, field.size());
        copy[exponent] = 'E';
        field = std::string_view(copy, field.size());
    }
    double value = 0.0;
    auto const [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    if (field.empty() || error != std::errc() || end != field.data() + field.size() || !std::isfinite(value)) {
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

std::string ascii_upper(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return out;
}

std::string ascii_lower(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
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
