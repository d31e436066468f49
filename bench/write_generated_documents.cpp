// Writes a set of generated documents into a folder:
//   write_generated_documents bench FOLDER   the compact 4 MB and 40 MB texts
//                                            that the Python benchmark reads,
//                                            the same as the C++ benchmark's
//   write_generated_documents seeds FOLDER   the fuzzers' seed corpus: three
//                                            sizes, one of them pretty, so
//                                            that the fuzzers start from deep,
//                                            well-formed text

#include <morv/qc/json/codec.hpp>
#include <morv/testing/document_builder.hpp>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

struct Generated {
    char const* file_name;
    std::uint64_t seed;
    std::size_t target_bytes;
    bool pretty;
};

std::vector<Generated> const bench_documents = {
    {"generated_4mb.json", 2026, 4'000'000, false},
    {"generated_40mb.json", 2026, 40'000'000, false},
};

// The generator's smallest document is about 25 KB; the largest seed stays
// below the -max_len of run-fuzzers.sh.
std::vector<Generated> const seed_documents = {
    {"generated_1_smallest.json", 1, 0, false},
    {"generated_2_20000_pretty.json", 2, 20000, true},
    {"generated_3_100000.json", 3, 100000, false},
};

bool write_generated(std::string const& folder, Generated const& generated) {
    morv::qc::json::SerializeOptions options;
    options.pretty = generated.pretty;
    std::ofstream file(folder + "/" + generated.file_name, std::ios::binary);
    file << morv::qc::json::serialize(morv::testing::generate_result(generated.seed, generated.target_bytes), options);
    return static_cast<bool>(file);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 || (std::strcmp(argv[1], "bench") != 0 && std::strcmp(argv[1], "seeds") != 0)) {
        std::cerr << "usage: write_generated_documents bench|seeds FOLDER\n";
        return 64;
    }
    for (auto const& generated : std::strcmp(argv[1], "bench") == 0 ? bench_documents : seed_documents) {
        if (!write_generated(argv[2], generated)) {
            std::cerr << "write_generated_documents: cannot write " << argv[2] << "/" << generated.file_name << "\n";
            return 73;
        }
    }
    return 0;
}
