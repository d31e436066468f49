// Writes the generated documents of the seed corpus into the folder given as
// the one argument: realistic results of three sizes, one of them pretty, so
// that the fuzzers start from deep, well-formed text and mutate from there.

#include <document_generator.hpp>

#include <morv/qc/json/codec.hpp>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>

namespace {

struct Seed {
    char const* file_name;
    std::uint64_t seed;
    std::size_t target_bytes;
    bool pretty;
};

// The generator's smallest document is about 25 KB; the largest seed stays
// below the -max_len of run-fuzzers.sh.
constexpr Seed seeds[] = {
    {"generated_1_smallest.json", 1, 0, false},
    {"generated_2_20000_pretty.json", 2, 20000, true},
    {"generated_3_100000.json", 3, 100000, false},
};

bool write_seed(std::string const& folder, Seed const& seed) {
    morv::qc::json::SerializeOptions options;
    options.pretty = seed.pretty;
    std::string const text =
        morv::qc::json::serialize(morv::bench::generate_result(seed.seed, seed.target_bytes), options);
    std::ofstream file(folder + "/" + seed.file_name, std::ios::binary);
    file << text;
    return static_cast<bool>(file);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_seed_documents FOLDER\n";
        return 2;
    }
    for (auto const& seed : seeds) {
        if (!write_seed(argv[1], seed)) {
            std::cerr << "write_seed_documents: cannot write " << argv[1] << "/" << seed.file_name << "\n";
            return 1;
        }
    }
    return 0;
}
