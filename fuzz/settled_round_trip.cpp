#include "settled_round_trip.hpp"

#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

namespace morv::fuzz {
namespace {

using Result = model::ParseResult<qc::Document>;

// A finite number as the writer prints it.
std::string number_text(double number) {
    std::ostringstream out;
    out.precision(17);
    out << number;
    return out.str();
}

std::string describe(std::vector<model::Diagnostic> const& diagnostics) {
    std::string lines;
    for (auto const& d : diagnostics) {
        lines += std::to_string(static_cast<unsigned>(d.severity)) + " " + d.code + ": " + d.message +
                 (d.source ? " (with source)" : "") + "\n";
    }
    return lines;
}

[[noreturn]] void fail(char const* what, std::string const& expected, std::string const& actual) {
    std::fprintf(stderr, "\nFINDING: %s\n--- expected:\n%s\n--- actual:\n%s\n", what, expected.c_str(), actual.c_str());
    std::abort();
}

// The two re-typings that take a second read to settle, as the tests in
// tests/core/yaml_behaviours_test.cpp show them. A negative zero that an
// extension held as a double is written as -0, which reads as a signed 0 and
// that, written as 0, as an unsigned 0.
model::ExtensionValue after_next_read(model::ExtensionValue value) {
    if (auto const* number = std::get_if<long long>(&value.value); number && *number >= 0) {
        value.value = static_cast<unsigned long long>(*number);
    } else if (auto* items = std::get_if<std::vector<model::ExtensionValue>>(&value.value)) {
        for (auto& item : *items) {
            item = after_next_read(std::move(item));
        }
    } else if (auto* members = std::get_if<std::map<std::string, model::ExtensionValue>>(&value.value)) {
        for (auto& member : *members) {
            member.second = after_next_read(std::move(member.second));
        }
    }
    return value;
}

// A metadata array of texts such as ".inf" reads as numbers, since yaml-cpp
// converts them whatever their quotes say; a number that is not finite is
// written as null, and null makes the whole array texts again.
qc::MetadataValue after_next_read(qc::MetadataValue value) {
    auto const* numbers = std::get_if<std::vector<double>>(&value);
    if (!numbers || std::all_of(numbers->begin(), numbers->end(), [](double x) { return std::isfinite(x); })) {
        return value;
    }
    std::vector<std::string> texts;
    for (double const number : *numbers) {
        texts.push_back(std::isfinite(number) ? number_text(number) : "");
    }
    return texts;
}

qc::Document after_next_read(qc::Document document) {
    for (auto& entry : document.extensions) {
        entry.second = after_next_read(std::move(entry.second));
    }
    for (auto& entry : document.metadata) {
        entry.second = after_next_read(std::move(entry.second));
    }
    return document;
}

std::string compact(qc::Document const& document) { return qc::json::serialize(document); }

std::string pretty(Result const& result) {
    qc::json::SerializeOptions options;
    options.pretty = true;
    return qc::json::serialize(result, options);
}

// Each read appends the validator's findings to the diagnostics that the text
// stored, and nothing else may join them.
std::vector<model::Diagnostic> expected_diagnostics(Result const& decoded, qc::Document const& read_again) {
    std::vector<model::Diagnostic> expected = decoded.diagnostics;
    for (auto& finding : qc::validate_document(read_again)) {
        expected.push_back(std::move(finding));
    }
    return expected;
}

void require_same_read(char const* form, Result const& decoded, Result const& again) {
    if (again.status != decoded.status) {
        fail(form, "status " + std::to_string(static_cast<unsigned>(decoded.status)),
             "status " + std::to_string(static_cast<unsigned>(again.status)));
    }
    auto const diagnostics = expected_diagnostics(decoded, again.value);
    if (again.diagnostics != diagnostics) {
        fail(form, describe(diagnostics), describe(again.diagnostics));
    }
    qc::Document const document = after_next_read(decoded.value);
    if (compact(again.value) != compact(document)) {
        fail(form, compact(document), compact(again.value));
    }
    if (!(again.value == document)) {
        fail(form, "equal records (the texts agree: the records differ where text cannot show it)",
             compact(again.value));
    }
}

}  // namespace

void require_settled(Result const& decoded) {
    require_same_read("compact text read again", decoded, qc::json::deserialize(qc::json::serialize(decoded)));
    require_same_read("pretty text read again", decoded, qc::json::deserialize(pretty(decoded)));
}

}  // namespace morv::fuzz
