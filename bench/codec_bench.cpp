// Throughput of the codec beside the references of the same run on the same
// texts: the decode through YAML::Load, which defines every result, YAML::Load
// alone, and the parsers and writers of nlohmann/json, RapidJSON and simdjson.
//
// The texts have two shapes. Generated ORCA runs of 100 KB, 4 MB and 40 MB are
// written by the codec, with 17 significant digits in every double. Documents
// that the importer makes from the bundled outputs, some grown by repeating
// their optimisation steps, carry the numbers as the program printed them, as
// documents written by other tools or by hand do; so do the generated runs
// of 4 MB and 40 MB with their numbers printed to 7 digits.
//
// Every rate is in bytes of the compact document text per second, writers
// included, so that all figures measure work on one and the same document
// whatever the length of the text each of them produces.
//
//   make bench

#include <morv/testing/document_builder.hpp>
#include "real_documents.hpp"

#include "core/document.hpp"
#include "core/json_tree.hpp"

#include <morv/qc/json/codec.hpp>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>
#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace {

using namespace morv;

constexpr std::uint64_t seed = 2026;

// Programs print 6 to 10 significant digits; 7 gives the generated texts
// about the bytes per value of the imported ones.
constexpr int printed_digits = 7;

// A benchmark text: generated to `bytes` and written by the codec, the same
// with its numbers printed to `printed_digits`, or imported from `output` and
// grown to `bytes` (0: as it is).
enum class Shape { written, printed, imported };

struct Text {
    char const* name;
    Shape shape;
    std::size_t bytes;
    bench::GrownOutput output;
};

// The generated texts come from no output.
constexpr bench::GrownOutput no_output{};

Text const texts[] = {
    {"100KB", Shape::written, 100'000, no_output},
    {"4MB", Shape::written, 4'000'000, no_output},
    {"40MB", Shape::written, 40'000'000, no_output},
    {"printed_4MB", Shape::printed, 4'000'000, no_output},
    {"printed_40MB", Shape::printed, 40'000'000, no_output},
    {"water_mp2", Shape::imported, 0, bench::gaussian_single_point},
    {"gaussian_opt_4MB", Shape::imported, 4'000'000, bench::gaussian_optimisation},
    {"gaussian_opt_40MB", Shape::imported, 40'000'000, bench::gaussian_optimisation},
    {"orca_opt_4MB", Shape::imported, 4'000'000, bench::orca_optimisation},
    {"gamess_opt_4MB", Shape::imported, 4'000'000, bench::gamess_optimisation},
};

std::string make_text(Text const& text) {
    switch (text.shape) {
        case Shape::written: return qc::json::serialize(testing::generate_result(seed, text.bytes));
        case Shape::printed:
            return bench::printed_numbers(qc::json::serialize(testing::generate_result(seed, text.bytes)),
                                          printed_digits);
        case Shape::imported: break;
    }
    return bench::imported_text(MORV_SOURCE_DIR, text.output, text.bytes);
}

// Generating, importing and printing the 40 MB documents takes seconds, so
// each text is made once and kept for all benchmarks and repetitions; the
// document that the writers print is the one its text decodes to.
std::string const& text_of(Text const& text) {
    static std::map<char const*, std::string> made;
    auto found = made.find(text.name);
    if (found == made.end()) {
        found = made.emplace(text.name, make_text(text)).first;
    }
    return found->second;
}

model::ParseResult<qc::Document> const& result_of(Text const& text) {
    static std::map<char const*, model::ParseResult<qc::Document>> results;
    auto found = results.find(text.name);
    if (found == results.end()) {
        found = results.emplace(text.name, qc::json::deserialize(text_of(text))).first;
    }
    return found->second;
}

void count_text(benchmark::State& state, std::string const& text) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(text.size()));
}

// Each decode builds a fresh tree or document and drops it again, so that
// freeing is paid for as a caller pays for it.

// `decode` is `deserialize` or the internal decode through yaml-cpp.
template <typename Decode>
void decode_text(benchmark::State& state, Text const& which, Decode decode) {
    std::string const& text = text_of(which);
    for (auto _ : state) {
        auto result = decode(text);
        if (result.status != model::ParseStatus::complete) {
            state.SkipWithError("the generated text did not decode complete");
            break;
        }
        benchmark::DoNotOptimize(result);
    }
    count_text(state, text);
}

void deserialize(benchmark::State& state, Text const& which) {
    decode_text(state, which, [](std::string const& text) { return qc::json::deserialize(text); });
}

void deserialize_through_yaml(benchmark::State& state, Text const& which) {
    decode_text(state, which, [](std::string const& text) { return qc::json::decode_through_yaml(text); });
}

// The loader's tree of the text, without the readers that make the document
// of it: the part of a decode that no reader can win back.
void load_tree(benchmark::State& state, Text const& which) {
    std::string const& text = text_of(which);
    for (auto _ : state) {
        std::optional<qc::json::JsonTree> tree = qc::json::load_strict_json(text);
        if (!tree) {
            state.SkipWithError("the loader declined the text");
            break;
        }
        benchmark::DoNotOptimize(tree);
    }
    count_text(state, text);
}

void serialize(benchmark::State& state, Text const& which, bool pretty) {
    auto const& result = result_of(which);
    qc::json::SerializeOptions options;
    options.pretty = pretty;
    for (auto _ : state) {
        std::string text = qc::json::serialize(result, options);
        benchmark::DoNotOptimize(text);
    }
    count_text(state, text_of(which));
}

void yaml_load(benchmark::State& state, Text const& which) {
    std::string const& text = text_of(which);
    for (auto _ : state) {
        YAML::Node root = YAML::Load(text);
        benchmark::DoNotOptimize(root);
    }
    count_text(state, text);
}

void nlohmann_parse(benchmark::State& state, Text const& which) {
    std::string const& text = text_of(which);
    for (auto _ : state) {
        nlohmann::json root = nlohmann::json::parse(text);
        benchmark::DoNotOptimize(root);
    }
    count_text(state, text);
}

void nlohmann_dump(benchmark::State& state, Text const& which) {
    std::string const& text = text_of(which);
    nlohmann::json const root = nlohmann::json::parse(text);
    for (auto _ : state) {
        std::string out = root.dump();
        benchmark::DoNotOptimize(out);
    }
    count_text(state, text);
}

// Full precision, because the other parsers here give the nearest double and
// RapidJSON's default may miss it by a unit in the last place.
constexpr unsigned rapidjson_flags = rapidjson::kParseFullPrecisionFlag;

void rapidjson_parse(benchmark::State& state, Text const& which) {
    std::string const& text = text_of(which);
    for (auto _ : state) {
        rapidjson::Document document;
        document.Parse<rapidjson_flags>(text.data(), text.size());
        if (document.HasParseError()) {
            state.SkipWithError("RapidJSON refused the text");
            break;
        }
        benchmark::DoNotOptimize(document);
    }
    count_text(state, text);
}

void rapidjson_write(benchmark::State& state, Text const& which) {
    std::string const& text = text_of(which);
    rapidjson::Document document;
    document.Parse<rapidjson_flags>(text.data(), text.size());
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        benchmark::DoNotOptimize(buffer.GetString());
    }
    count_text(state, text);
}

// The parser is kept across iterations, as simdjson means it to be: it
// allocates once for the largest document it has seen.
void simdjson_parse(benchmark::State& state, Text const& which) {
    simdjson::padded_string const text(text_of(which));
    simdjson::dom::parser parser;
    for (auto _ : state) {
        simdjson::dom::element root;
        if (parser.parse(text).get(root) != simdjson::SUCCESS) {
            state.SkipWithError("simdjson refused the text");
            break;
        }
        benchmark::DoNotOptimize(root);
    }
    count_text(state, text_of(which));
}

// Each benchmark runs a fixed number of times, about `budget` bytes of text
// in each repetition, so that the yaml-cpp based runs on 40 MB (over ten
// seconds each) stay at one iteration and the whole run at a few minutes.
constexpr std::size_t slow = 8'000'000;
constexpr std::size_t fast = 100'000'000;

template <typename Run, typename... Args>
void add(std::string const& name, Text const& text, std::size_t budget, Run run, Args... args) {
    auto const iterations =
        static_cast<benchmark::IterationCount>(std::max<std::size_t>(1, budget / text_of(text).size()));
    benchmark::RegisterBenchmark((name + "/" + text.name).c_str(), run, text, args...)
        ->Iterations(iterations)
        ->Unit(benchmark::kMillisecond);
}

// yaml-cpp takes seconds on every megabyte, so it reads the generated texts
// alone: its rate does not depend on the shape of the numbers.
void add_all() {
    for (Text const& text : texts) {
        add("deserialize", text, fast, deserialize);
        add("load_strict_json", text, fast, load_tree);
        if (text.shape == Shape::written) {
            add("deserialize_through_yaml", text, slow, deserialize_through_yaml);
            add("yaml_load", text, slow, yaml_load);
        }
        add("nlohmann_parse", text, fast, nlohmann_parse);
        add("rapidjson_parse", text, fast, rapidjson_parse);
        add("simdjson_parse", text, fast, simdjson_parse);
        add("serialize_compact", text, fast, serialize, false);
        add("serialize_pretty", text, fast, serialize, true);
        add("nlohmann_dump", text, fast, nlohmann_dump);
        add("rapidjson_write", text, fast, rapidjson_write);
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    add_all();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
