// Throughput of the codec on generated ORCA runs of 100 KB, 4 MB and 40 MB of
// compact text, beside the references of the same run on the same texts: the
// decode through YAML::Load, which defines every result, YAML::Load alone,
// and the parsers and writers of nlohmann/json, RapidJSON and simdjson.
//
// Every rate is in bytes of the compact document text per second, writers
// included, so that all figures measure work on one and the same document
// whatever the length of the text each of them produces.
//
//   make bench

#include "document_generator.hpp"

#include "core/document.hpp"

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
#include <string>

namespace {

using namespace morv;

constexpr std::uint64_t seed = 2026;

struct Size {
    char const* name;
    std::size_t bytes;
};

constexpr Size sizes[] = {{"100KB", 100'000}, {"4MB", 4'000'000}, {"40MB", 40'000'000}};

// Generating and printing the 40 MB document takes seconds, so each size is
// made once and kept for all benchmarks and repetitions.
model::ParseResult<qc::Document> const& result_of(std::size_t bytes) {
    static std::map<std::size_t, model::ParseResult<qc::Document>> results;
    auto found = results.find(bytes);
    if (found == results.end()) {
        found = results.emplace(bytes, bench::generate_result(seed, bytes)).first;
    }
    return found->second;
}

std::string const& text_of(std::size_t bytes) {
    static std::map<std::size_t, std::string> texts;
    auto found = texts.find(bytes);
    if (found == texts.end()) {
        found = texts.emplace(bytes, qc::json::serialize(result_of(bytes))).first;
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
void decode_text(benchmark::State& state, std::size_t bytes, Decode decode) {
    std::string const& text = text_of(bytes);
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

void deserialize(benchmark::State& state, std::size_t bytes) {
    decode_text(state, bytes, [](std::string const& text) { return qc::json::deserialize(text); });
}

void deserialize_through_yaml(benchmark::State& state, std::size_t bytes) {
    decode_text(state, bytes, [](std::string const& text) { return qc::json::decode_through_yaml(text); });
}

void serialize(benchmark::State& state, std::size_t bytes, bool pretty) {
    auto const& result = result_of(bytes);
    qc::json::SerializeOptions options;
    options.pretty = pretty;
    for (auto _ : state) {
        std::string text = qc::json::serialize(result, options);
        benchmark::DoNotOptimize(text);
    }
    count_text(state, text_of(bytes));
}

void yaml_load(benchmark::State& state, std::size_t bytes) {
    std::string const& text = text_of(bytes);
    for (auto _ : state) {
        YAML::Node root = YAML::Load(text);
        benchmark::DoNotOptimize(root);
    }
    count_text(state, text);
}

void nlohmann_parse(benchmark::State& state, std::size_t bytes) {
    std::string const& text = text_of(bytes);
    for (auto _ : state) {
        nlohmann::json root = nlohmann::json::parse(text);
        benchmark::DoNotOptimize(root);
    }
    count_text(state, text);
}

void nlohmann_dump(benchmark::State& state, std::size_t bytes) {
    std::string const& text = text_of(bytes);
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

void rapidjson_parse(benchmark::State& state, std::size_t bytes) {
    std::string const& text = text_of(bytes);
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

void rapidjson_write(benchmark::State& state, std::size_t bytes) {
    std::string const& text = text_of(bytes);
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
void simdjson_parse(benchmark::State& state, std::size_t bytes) {
    simdjson::padded_string const text(text_of(bytes));
    simdjson::dom::parser parser;
    for (auto _ : state) {
        simdjson::dom::element root;
        if (parser.parse(text).get(root) != simdjson::SUCCESS) {
            state.SkipWithError("simdjson refused the text");
            break;
        }
        benchmark::DoNotOptimize(root);
    }
    count_text(state, text_of(bytes));
}

// Each benchmark runs a fixed number of times, about `budget` bytes of text
// in each repetition, so that the yaml-cpp based runs on 40 MB (over ten
// seconds each) stay at one iteration and the whole run at a few minutes.
constexpr std::size_t slow = 8'000'000;
constexpr std::size_t fast = 100'000'000;

template <typename Run, typename... Args>
void add(std::string const& name, Size const& size, std::size_t budget, Run run, Args... args) {
    auto const iterations = static_cast<benchmark::IterationCount>(std::max<std::size_t>(1, budget / size.bytes));
    benchmark::RegisterBenchmark((name + "/" + size.name).c_str(), run, size.bytes, args...)
        ->Iterations(iterations)
        ->Unit(benchmark::kMillisecond);
}

void add_all() {
    for (Size const& size : sizes) {
        add("deserialize", size, fast, deserialize);
        add("deserialize_through_yaml", size, slow, deserialize_through_yaml);
        add("yaml_load", size, slow, yaml_load);
        add("nlohmann_parse", size, fast, nlohmann_parse);
        add("rapidjson_parse", size, fast, rapidjson_parse);
        add("simdjson_parse", size, fast, simdjson_parse);
        add("serialize_compact", size, fast, serialize, false);
        add("serialize_pretty", size, fast, serialize, true);
        add("nlohmann_dump", size, fast, nlohmann_dump);
        add("rapidjson_write", size, fast, rapidjson_write);
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
