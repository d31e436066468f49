#include "core/document.hpp"
#include "core/json_tree.hpp"
#include "support/json_text.hpp"

#include "document_generator.hpp"

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
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(load_strict_json(c.text).has_value(), c.tree_reads);
        expect_same_decode(c.text);
    }
}

// The strict loader on files in the manner of JSONTestSuite: a "y" text is
// JSON and reads as a tree, an "n" text is not JSON and must never become
// one, and an "i" text is JSON that the loader leaves to yaml-cpp, which
// reads it otherwise. Whichever way a text goes, it decodes as through
// yaml-cpp.
TEST(StrictLoader, ReadsJsonAndRefusesEverythingElse) {
    std::pair<char const*, char const*> const files[] = {
        {"y_array_empty", "[]"},
        {"y_object_empty", " {} "},
        {"y_nested", R"([[[{"a":[{}]}]]])"},
        {"y_literals", "[null,true,false]"},
        {"y_numbers", "[0,-0,1E2,1e+2,1e-2,-1.5e3,0.5,123456789012345678901234567890]"},
        {"y_escapes", R"(["\"\\\/\b\f\n\r\t\u0041\u00e9"])"},
        {"y_utf8", "[\"\xC3\xA9\xE2\x82\xAC\"]"},
        {"y_whitespace", " \t\n[ 1 ,\n2 ]\r\n"},
        {"y_duplicate_keys", R"({"a":1,"a":2})"},
        {"n_trailing_comma_array", "[1,]"},
        {"n_leading_comma", "[,1]"},
        {"n_trailing_comma_object", R"({"a":1,})"},
        {"n_unquoted_key", "{a:1}"},
        {"n_single_quotes", "{'a':1}"},
        {"n_missing_colon", R"({"a" 1})"},
        {"n_leading_zero", "[012]"},
        {"n_plus", "[+1]"},
        {"n_bare_fraction", "[.5]"},
        {"n_empty_fraction", "[1.]"},
        {"n_empty_exponent", "[1e]"},
        {"n_minus_alone", "[-]"},
        {"n_hex", "[0x10]"},
        {"n_nan", "[NaN]"},
        {"n_infinity", "[Infinity]"},
        {"n_capital_literal", "[True]"},
        {"n_control_byte", "[\"a\x01\"]"},
        {"n_bad_escape", R"(["\x"])"},
        {"n_short_unicode", R"(["\u12"])"},
        {"n_unclosed_array", "[1"},
        {"n_unclosed_object", R"({"a":1)"},
        {"n_two_roots", "[] []"},
        {"n_trailing_text", "[1]x"},
        {"n_comment", "[1] // c"},
        {"n_empty", ""},
        {"n_scalar_root", "1"},
        {"i_lone_surrogate", R"(["\ud800"])"},
        {"i_surrogate_pair", R"(["\ud83d\ude00"])"},
        {"i_byte_order_mark", "\xEF\xBB\xBF[]"},
    };
    for (auto const& [name, text] : files) {
        SCOPED_TRACE(name);
        EXPECT_EQ(load_strict_json(text).has_value(), name[0] == 'y');
        expect_same_decode(text);
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
        auto const result = bench::generate_result(seed, 30'000);
        for (bool pretty : {false, true}) {
            std::string const text = serialize(result, SerializeOptions{pretty});
            SCOPED_TRACE(text.substr(0, 200));
            EXPECT_TRUE(load_strict_json(text));
            expect_same_decode(text);
        }
    }
}

}  // namespace
}  // namespace morv::qc::json
