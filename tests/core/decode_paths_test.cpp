#include "core/document.hpp"
#include "core/json_tree.hpp"
#include "support/json_text.hpp"

#include <morv/testing/document_builder.hpp>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace morv::qc::json {
namespace {

using namespace morv::testing;

// The tree of a strict JSON text is a faster way to what yaml-cpp gives, and
// nothing more: both decodes agree on the status, on every diagnostic with
// its span, and on every byte written back.
void expect_same_decode(std::string const& text) {
    auto const fast = deserialize(text);
    auto const reference = decode_through_yaml(text);
    EXPECT_EQ(fast.status, reference.status);
    EXPECT_EQ(describe(fast.diagnostics), describe(reference.diagnostics));
    EXPECT_EQ(serialize(fast), serialize(reference));
}

std::string const head = R"({"schema":"morv.qc.document.v2","program":{"kind":"orca","name":"x"},)";
std::string const system = R"("systems":[{"id":1,"topology":{"atoms":[{"element":"O"}]}}])";

std::string document_holding(std::string const& members) { return head + members + "," + system + "}"; }

std::string nested(int depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(DecodePaths, EverySpellingDecodesAsThroughYamlCpp) {
    struct Case {
        char const* name;
        std::string text;
        bool tree_reads;
    };
    std::string const compact = document_holding(R"("metadata":{"m":1.50})");
    Case const cases[] = {
        {"compact", compact, true},
        {"blanks, tabs and CRLF between tokens",
         "\r\n\t{ \"schema\" :\t\"morv.qc.document.v2\" ,\r\n\t\"program\"\t: { } ,\n" + system + " }\r\n\t", true},
        {"byte-order mark", "\xEF\xBB\xBF" + compact, false},
        {"UTF-16 byte-order mark", "\xFF\xFE" + compact, false},
        {"comment after the root", compact + " # done", false},
        {"a second document", compact + "\n---\n{}", false},
        {"lone CR between tokens", document_holding("\r\"metadata\":{}"), false},
        {"raw tab in a string", document_holding("\"metadata\":{\"m\":\"a\tb\"}"), false},
        {"escapes", document_holding(R"("metadata":{"m\/":"\u00e9\u0000\"\\\/\b\f\n\r\t\u20AC"})"), true},
        {"escaped surrogate pair", document_holding(R"("metadata":{"m":"\ud83d\ude00"})"), false},
        {"line break before a colon", document_holding("\"metadata\"\n:{}"), false},
        {"key 990 bytes before its colon", document_holding("\"" + std::string(988, 'k') + "\":1"), true},
        {"key 1,024 bytes before its colon", document_holding("\"" + std::string(1022, 'k') + "\"  :1"), false},
        {"nesting 200 deep", document_holding("\"x\":" + nested(200)), true},
        {"nesting 300 deep", document_holding("\"x\":" + nested(300)), false},
        {"more brackets opened than the text could close", std::string(64, '['), false},
        {"bytes that are not UTF-8", document_holding("\"metadata\":{\"\xFF\":\"\xC3\x28\x80\"}"), true},
        {"duplicate keys", document_holding(R"("schema":"other","metadata":{"m":1,"m":2})"), true},
        {"numbers as written", document_holding(R"("metadata":{"a":-0,"b":1E+2,"c":1e400,"d":[1,"2",1e-400]})"),
         true},
        {"ids out of range", document_holding(R"("jobs":[{"id":4294967296,"step_ids":[-1,1.0,"7",18446744073709551616]}])"),
         true},
        {"scalar where a record belongs", document_holding(R"("steps":[5])"), true},
        {"system without a topology", head + R"("systems":[{"id":1}]})", true},
        {"root array", "[1]", true},
        {"root number", "42", false},
        {"truncated", compact.substr(0, compact.size() - 1), false},
        // Files in the manner of JSONTestSuite: a "y" text is JSON and reads
        // as a tree, an "n" text is not JSON and must never become one, and
        // an "i" text is JSON that the loader leaves to yaml-cpp.
        {"y_array_empty", "[]", true},
        {"y_object_empty", " {} ", true},
        {"y_nested", R"([[[{"a":[{}]}]]])", true},
        {"y_literals", "[null,true,false]", true},
        {"y_numbers", "[0,-0,1E2,1e+2,1e-2,-1.5e3,0.5,123456789012345678901234567890]", true},
        {"y_escapes", R"(["\"\\\/\b\f\n\r\t\u0041\u00e9"])", true},
        {"y_utf8", "[\"\xC3\xA9\xE2\x82\xAC\"]", true},
        {"y_whitespace", " \t\n[ 1 ,\n2 ]\r\n", true},
        {"y_duplicate_keys", R"({"a":1,"a":2})", true},
        {"n_trailing_comma_array", "[1,]", false},
        {"n_leading_comma", "[,1]", false},
        {"n_trailing_comma_object", R"({"a":1,})", false},
        {"n_unquoted_key", "{a:1}", false},
        {"n_single_quotes", "{'a':1}", false},
        {"n_missing_colon", R"({"a" 1})", false},
        {"n_leading_zero", "[012]", false},
        {"n_plus", "[+1]", false},
        {"n_bare_fraction", "[.5]", false},
        {"n_empty_fraction", "[1.]", false},
        {"n_empty_exponent", "[1e]", false},
        {"n_minus_alone", "[-]", false},
        {"n_hex", "[0x10]", false},
        {"n_nan", "[NaN]", false},
        {"n_infinity", "[Infinity]", false},
        {"n_capital_literal", "[True]", false},
        {"n_control_byte", "[\"a\x01\"]", false},
        {"n_bad_escape", R"(["\x"])", false},
        {"n_short_unicode", R"(["\u12"])", false},
        {"n_unclosed_array", "[1", false},
        {"n_unclosed_object", R"({"a":1)", false},
        {"n_two_roots", "[] []", false},
        {"n_trailing_text", "[1]x", false},
        {"n_comment", "[1] // c", false},
        {"n_empty", "", false},
        {"i_lone_surrogate", R"(["\ud800"])", false},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(load_strict_json(c.text).has_value(), c.tree_reads);
        expect_same_decode(c.text);
    }
}

std::string read_file(std::filesystem::path const& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

TEST(DecodePaths, CorpusAndExamplesDecodeAsThroughYamlCpp) {
    for (char const* dir : {MORV_FUZZ_CORPUS_DIR, MORV_EXAMPLES_DIR}) {
        for (auto const& entry : std::filesystem::directory_iterator(dir)) {
            SCOPED_TRACE(entry.path().string());
            expect_same_decode(read_file(entry.path()));
        }
    }
}

TEST(DecodePaths, GeneratedDocumentsGoThroughTheTree) {
    for (std::uint64_t seed : {1, 2, 3}) {
        auto const result = morv::testing::generate_result(seed, 30'000);
        for (bool pretty : {false, true}) {
            std::string const text = serialize(result, SerializeOptions{pretty});
            SCOPED_TRACE(text.substr(0, 200));
            EXPECT_TRUE(load_strict_json(text));
            expect_same_decode(text);
        }
    }
}

// Odd values in every field, texts that are not UTF-8 among them.
TEST(DecodePaths, OddRunsDecodeAsThroughYamlCpp) {
    for (std::uint64_t seed = 1; seed <= 16; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        expect_same_decode(serialize(morv::testing::odd_result(seed, morv::testing::Departures::any_value)));
    }
}

}  // namespace
}  // namespace morv::qc::json
