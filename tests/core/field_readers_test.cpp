#include "core/field_readers.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>
#include <yaml-cpp/exceptions.h>

#include <cmath>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using morv::testing::describe;
using Lines = std::vector<std::string>;

template <typename T>
std::optional<std::string> text_of(std::optional<T> const& value) {
    if (!value) {
        return std::nullopt;
    }
    std::ostringstream out;
    out.precision(17);
    out << std::boolalpha << *value;
    return out.str();
}

using Reader = std::function<std::optional<std::string>(DocumentResult&, Node const&)>;

Reader uint64(bool required) {
    return [=](DocumentResult& r, Node const& n) { return text_of(read_uint64_field(r, n, "a", required)); };
}
Reader uint32(bool required) {
    return [=](DocumentResult& r, Node const& n) { return text_of(read_uint32_field(r, n, "a", required)); };
}
Reader uint16() {
    return [](DocumentResult& r, Node const& n) { return text_of(read_uint16_field(r, n, "a")); };
}
Reader integer(bool required) {
    return [=](DocumentResult& r, Node const& n) { return text_of(read_int_field(r, n, "a", required)); };
}
Reader real(bool required) {
    return [=](DocumentResult& r, Node const& n) { return text_of(read_double_field(r, n, "a", required)); };
}
Reader text(bool required) {
    return [=](DocumentResult& r, Node const& n) { return read_string_field(r, n, "a", required); };
}
Reader boolean() {
    return [](DocumentResult& r, Node const& n) { return text_of(read_bool_field(r, n, "a")); };
}
Reader entity_id(bool required) {
    return [=](DocumentResult& r, Node const& n) {
        auto const id = read_entity_id_field<JobIdTag>(r, n, "a", required);
        return id ? std::optional<std::string>(std::to_string(id->value)) : std::nullopt;
    };
}

TEST(FieldReaders, ConvertWithTheToleranceOfTheParser) {
    std::string const missing = "error qc.json.missing_field: Missing required field: a";
    std::string const invalid = "error qc.json.invalid_field: Invalid value for field: a";
    std::string const out_of_range = "error qc.json.id_out_of_range: Entity ID exceeds uint32 range: a";
    struct Case {
        char const* json;
        Reader reader;
        std::optional<std::string> value;
        Lines diagnostics;
    };
    Case const cases[] = {
        // Absence: a missing key and a null are alike, and only a required
        // field reports them.
        {R"({"a": null})", uint64(true), std::nullopt, {missing}},
        {R"({"a": null})", uint64(false), std::nullopt, {}},
        {R"({})", real(true), std::nullopt, {missing}},
        {R"([1, 2])", text(true), std::nullopt, {missing}},
        {R"(null)", integer(true), std::nullopt, {missing}},
        // Integers: the prefix picks the base; the sign, width and trailing
        // text decide validity.
        {R"({"a": "0x10"})", integer(true), "16", {}},
        {R"({"a": "010"})", integer(true), "8", {}},
        {R"({"a": 010})", integer(true), "8", {}},
        {R"({"a": 09})", integer(true), std::nullopt, {invalid}},
        {R"({"a": "12 "})", integer(true), "12", {}},
        {R"({"a": " 12"})", integer(true), std::nullopt, {invalid}},
        {R"({"a": "12abc"})", integer(false), std::nullopt, {invalid}},
        {R"({"a": 1.5})", integer(false), std::nullopt, {invalid}},
        {R"({"a": -1})", integer(true), "-1", {}},
        {R"({"a": -1})", uint32(true), std::nullopt, {invalid}},
        {R"({"a": "-0"})", uint64(true), std::nullopt, {invalid}},
        {R"({"a": 70000})", uint16(), std::nullopt, {invalid}},
        {R"({"a": 4294967296})", uint32(true), std::nullopt, {invalid}},
        {R"({"a": 18446744073709551615})", uint64(true), "18446744073709551615", {}},
        {R"({"a": 18446744073709551616})", uint64(true), std::nullopt, {invalid}},
        {R"({"a": ""})", uint64(true), std::nullopt, {invalid}},
        // Identifiers are 64-bit fields with a 32-bit range of their own.
        {R"({"a": 4294967295})", entity_id(true), "4294967295", {}},
        {R"({"a": 4294967296})", entity_id(true), std::nullopt, {out_of_range}},
        {R"({"a": "x"})", entity_id(false), std::nullopt, {invalid}},
        {R"({})", entity_id(false), std::nullopt, {}},
        // Reals: the YAML spellings of infinity and NaN, and nothing else.
        {R"({"a": "1.0"})", real(true), "1", {}},
        {R"({"a": ".nan"})", real(true), "nan", {}},
        {R"({"a": ".NaN "})", real(true), std::nullopt, {invalid}},
        {R"({"a": "-.inf"})", real(true), "-inf", {}},
        {R"({"a": "+.INF"})", real(true), "inf", {}},
        {R"({"a": "inf"})", real(true), std::nullopt, {invalid}},
        {R"({"a": "Infinity"})", real(true), std::nullopt, {invalid}},
        {R"({"a": 1e999})", real(true), std::nullopt, {invalid}},
        // Strings: the scalar's own text; containers are refused.
        {R"({"a": 1.50})", text(true), "1.50", {}},
        {R"({"a": true})", text(true), "true", {}},
        {R"({"a": ""})", text(true), "", {}},
        {R"({"a": [1]})", text(true), std::nullopt, {invalid}},
        {R"({"a": {}})", text(false), std::nullopt, {invalid}},
        // Booleans as yaml-cpp decodes them.
        {R"({"a": true})", boolean(), "true", {}},
        {R"({"a": "off"})", boolean(), "false", {}},
        {R"({"a": "maybe"})", boolean(), std::nullopt, {invalid}},
        {R"({"a": 1})", boolean(), std::nullopt, {invalid}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(c.reader(result, load_text(c.json)), c.value);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(FieldReaders, LookupInAScalarOrAMissingNodeEndsTheDecode) {
    DocumentResult result;
    Node const root = load_text(R"({"s": 5})");
    EXPECT_THROW(read_int_field(result, root["s"], "a", true), YAML::BadSubscript);
    EXPECT_THROW(read_int_field(result, root["missing"], "a", true), YAML::InvalidNode);
    EXPECT_TRUE(result.diagnostics.empty());
}

TEST(FieldReaders, Vec3ReadsAllThreeComponentsAndIsAllOrNothing) {
    std::string const not_a_vector = "error qc.json.invalid_vec3: Expected a Cartesian vector object.";
    struct Case {
        char const* json;
        std::optional<chem::Vec3> vector;
        Lines diagnostics;
    };
    Case const cases[] = {
        {R"({"x": 1, "y": -2.5, "z": "3"})", chem::Vec3{1, -2.5, 3}, {}},
        {R"({"x": 1, "y": null, "z": 3})", std::nullopt, {"error qc.json.missing_field: Missing required field: y"}},
        {R"({"x": "a", "y": [], "z": {}})",
         std::nullopt,
         {"error qc.json.invalid_field: Invalid value for field: x",
          "error qc.json.invalid_field: Invalid value for field: y",
          "error qc.json.invalid_field: Invalid value for field: z"}},
        {"5", std::nullopt, {not_a_vector}},
        {"[0, 0, 0]", std::nullopt, {not_a_vector}},
        {"null", std::nullopt, {not_a_vector}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_vec3(result, load_text(c.json)), c.vector);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
    DocumentResult result;
    EXPECT_EQ(read_vec3(result, load_text("{}")["absent"]), std::nullopt);
    EXPECT_EQ(describe(result.diagnostics), Lines{not_a_vector});
}

TEST(FieldReaders, DiagnosticsCarryNoSourceAndTheirOwnSeverity) {
    DocumentResult result;
    add_diagnostic(result, "c1", "m1");
    add_warning(result, "c2", "m2");
    ASSERT_EQ(result.diagnostics.size(), 2u);
    EXPECT_EQ(result.diagnostics[0], (model::Diagnostic{model::Severity::error, "c1", "m1", std::nullopt}));
    EXPECT_EQ(result.diagnostics[1], (model::Diagnostic{model::Severity::warning, "c2", "m2", std::nullopt}));
}

}  // namespace
}  // namespace morv::qc::json
