// Writes what the codec emits for every kind of document at hand into the
// folder given as argument, compact and pretty, for the JSON Schema check:
// the examples, the fuzzers' corpus of damaged and odd texts decoded and
// written again, the imports of the bundled program outputs, and built runs:
// plain ones of several sizes and small ones full of odd values.

#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/testing/document_builder.hpp>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace morv;
using namespace morv::qc;

// Over these seeds the odd runs reach every word and key of the schema.
constexpr std::uint64_t odd_runs = 32;

std::string read_file(fs::path const& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void write_file(fs::path const& path, std::string const& text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    if (!out) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

// In name order so that the samples are the same on every run.
std::vector<fs::path> files_of(fs::path const& folder) {
    std::vector<fs::path> files;
    for (auto const& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

struct SampleFolder {
    fs::path folder;

    void write(std::string const& name, model::ParseResult<Document> const& result) const {
        write_file(folder / (name + ".json"), json::serialize(result));
        json::SerializeOptions pretty;
        pretty.pretty = true;
        write_file(folder / (name + ".pretty.json"), json::serialize(result, pretty));
    }

    void write_decoded(fs::path const& from, std::string const& prefix) const {
        for (auto const& file : files_of(from)) {
            write(prefix + file.stem().string(), json::deserialize(read_file(file)));
        }
    }

    // Every output of `from`, its licence and notes left out.
    void write_imported(fs::path const& from, std::string const& prefix) const {
        for (auto const& file : files_of(from)) {
            if (file.extension() == ".log" || file.extension() == ".out") {
                write(prefix + file.stem().string(), import_output(read_file(file), file.filename().string()));
            }
        }
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_schema_samples OUTPUT_FOLDER\n";
        return 2;
    }
    try {
        SampleFolder const samples{argv[1]};
        fs::create_directories(samples.folder);
        samples.write_decoded(MORV_EXAMPLES_DIR, "example_");
        samples.write_decoded(MORV_FUZZ_CORPUS_DIR, "corpus_");
        samples.write_imported(MORV_GAUSSIAN_DATA_DIR, "gaussian_");
        samples.write_imported(MORV_ORCA_DATA_DIR, "orca_");
        samples.write_imported(MORV_GAMESS_DATA_DIR, "gamess_");
        std::size_t const sizes[] = {0, 20'000, 100'000};
        for (std::uint64_t seed = 1; seed <= 6; ++seed) {
            for (std::size_t const size : sizes) {
                std::string const name = "generated_" + std::to_string(seed) + "_" + std::to_string(size);
                samples.write(name, morv::testing::generate_result(seed, size));
            }
        }
        for (std::uint64_t seed = 1; seed <= odd_runs; ++seed) {
            auto const odd = morv::testing::odd_result(seed, morv::testing::Departures::any_value);
            samples.write("odd_run_" + std::to_string(seed), odd);
        }
        auto const written = std::distance(fs::directory_iterator(samples.folder), fs::directory_iterator());
        std::cout << "wrote " << written << " samples to " << argv[1] << "\n";
    } catch (std::exception const& e) {
        std::cerr << "write_schema_samples: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
