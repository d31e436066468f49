#include "framework/text.hpp"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <string>

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
    return out;
}

std::optional<double> to_double(std::string_view field) {
    // strtod would also take hexadecimal, infinities and leading blanks,
    // none of which a program prints as a number.
    if (field.empty() || field.size() > 64) {
        return std::nullopt;
    }
    std::string copy;
    for (char c : field) {
        bool const allowed = (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E' ||
                             c == 'd' || c == 'D';
        if (!allowed) {
            return std::nullopt;
        }
        copy.push_back(c == 'd' || c == 'D' ? 'E' : c);
    }
    char* end = nullptr;
    errno = 0;
    double const value = std::strtod(copy.c_str(), &end);
    if (end != copy.c_str() + copy.size() || errno == ERANGE || !std::isfinite(value)) {
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
