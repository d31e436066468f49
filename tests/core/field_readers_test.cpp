#include "core/field_readers.hpp"
#include "support/json_text.hpp"

#include <functional>

namespace morv::qc::json {
namespace {

using namespace morv::testing;

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
std::optional<std::string> text_of(std::optional<JobId> const& id) {
    return id ? std::optional(std::to_string(id->value)) : std::nullopt;
}

// Reads the key "a", with its presence if the reader takes one, and gives
// the value as text.
using Reader = std::function<std::optional<std::string>(DocumentResult&, Node const&)>;
template <auto read, typename... Presences>
Reader reader(Presences... presence) {
    return [=](DocumentResult& r, Node const& n) { return text_of(read(r, n, "a", presence...)); };
}
constexpr auto required = Presence::required;
constexpr auto optional = Presence::optional;
Reader const uint64 = reader<read_uint64_field>(required), optional_uint64 = reader<read_uint64_field>(optional),
             uint32 = reader<read_uint32_field>(required), uint16 = reader<read_uint16_field>(),
             integer = reader<read_int_field>(required), optional_integer = reader<read_int_field>(optional),
             real = reader<read_double_field>(required), text = reader<read_string_field>(required),
             optional_text = reader<read_string_field>(optional), boolean = reader<read_bool_field>(),
             entity_id = reader<read_entity_id_field<JobIdTag>>(required),
             optional_entity_id = reader<read_entity_id_field<JobIdTag>>(optional);

TEST(FieldReaders, ConvertWithTheToleranceOfTheParser) {
    struct Case {
        char const* json;
        Reader reader;
        std::optional<std::string> value;
        Lines diagnostics;
    };
    Case const cases[] = {
        // Absence: a missing key and a null are alike, and only a required
        // field reports them.
        {R"({"a": null})", uint64, std::nullopt, {missing("a")}},
        {R"({"a": null})", optional_uint64, std::nullopt, {}},
        {R"({})", real, std::nullopt, {missing("a")}},
        {R"([1, 2])", text, std::nullopt, {missing("a")}},
        {R"(null)", integer, std::nullopt, {missing("a")}},
        // Integers: the prefix picks the base; the sign, width and trailing
        // text decide validity.
        {R"({"a": "0x10"})", integer, "16", {}},
        {R"({"a": "010"})", integer, "8", {}},
        {R"({"a": 09})", integer, std::nullopt, {invalid("a")}},
        {R"({"a": "12 "})", integer, "12", {}},
        {R"({"a": " 12"})", integer, std::nullopt, {invalid("a")}},
        {R"({"a": "12abc"})", optional_integer, std::nullopt, {invalid("a")}},
        {R"({"a": 1.5})", optional_integer, std::nullopt, {invalid("a")}},
        {R"({"a": -1})", integer, "-1", {}},
        {R"({"a": -1})", uint32, std::nullopt, {invalid("a")}},
        {R"({"a": "-0"})", uint64, std::nullopt, {invalid("a")}},
        {R"({"a": 70000})", uint16, std::nullopt, {invalid("a")}},
        {R"({"a": 4294967296})", uint32, std::nullopt, {invalid("a")}},
        {R"({"a": 18446744073709551615})", uint64, "18446744073709551615", {}},
        {R"({"a": 18446744073709551616})", uint64, std::nullopt, {invalid("a")}},
        {R"({"a": ""})", uint64, std::nullopt, {invalid("a")}},
        // Identifiers are 64-bit fields with a 32-bit range of their own.
        {R"({"a": 4294967295})", entity_id, "4294967295", {}},
        {R"({"a": 4294967296})", entity_id, std::nullopt, {out_of_range("a")}},
        {R"({"a": "x"})", optional_entity_id, std::nullopt, {invalid("a")}},
        {R"({})", optional_entity_id, std::nullopt, {}},
        // Reals: the YAML spellings of infinity and NaN, and nothing else.
        {R"({"a": "1.0"})", real, "1", {}},
        {R"({"a": ".nan"})", real, "nan", {}},
        {R"({"a": ".NaN "})", real, std::nullopt, {invalid("a")}},
        {R"({"a": "-.inf"})", real, "-inf", {}},
        {R"({"a": "+.INF"})", real, "inf", {}},
        {R"({"a": "inf"})", real, std::nullopt, {invalid("a")}},
        {R"({"a": "Infinity"})", real, std::nullopt, {invalid("a")}},
        {R"({"a": 1e999})", real, std::nullopt, {invalid("a")}},
        // Strings: the scalar's own text; containers are refused.
        {R"({"a": 1.50})", text, "1.50", {}},
        {R"({"a": true})", text, "true", {}},
        {R"({"a": ""})", text, "", {}},
        {R"({"a": [1]})", text, std::nullopt, {invalid("a")}},
        {R"({"a": {}})", optional_text, std::nullopt, {invalid("a")}},
        // Booleans as yaml-cpp decodes them.
        {R"({"a": "off"})", boolean, "false", {}},
        {R"({"a": "maybe"})", boolean, std::nullopt, {invalid("a")}},
        {R"({"a": 1})", boolean, std::nullopt, {invalid("a")}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        for_each_backend(c.json, [&](Node const& node) {
            DocumentResult result;
            EXPECT_EQ(c.reader(result, node), c.value);
            EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
        });
    }
}

TEST(FieldReaders, Vec3ReadsAllThreeComponentsAndIsAllOrNothing) {
    expect_reads(read_vec3, {
        {R"({"x": 1, "y": -2.5, "z": "3"})", chem::Vec3{1, -2.5, 3}, {}},
        {R"({"x": 1, "y": null, "z": 3})", std::nullopt, {missing("y")}},
        {R"({"x": "a", "y": [], "z": {}})", std::nullopt, {invalid("x"), invalid("y"), invalid("z")}},
        {"[0, 0, 0]", std::nullopt, {bad_vec3}},
    });
}

}  // namespace
}  // namespace morv::qc::json
