// Writes the generated documents that the Python benchmark reads, in compact
// form, into the folder given as the one argument: the same texts as the C++
// benchmark's 4 MB and 40 MB ones.

#include <document_generator.hpp>

#include <morv/qc/json/codec.hpp>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>

namespace {

constexpr std::uint64_t seed = 2026;

struct BenchDocument {
    char const* file_name;
    std::size_t target_bytes;
};

constexpr BenchDocument documents[] = {{"generated_4mb.json", 4'000'000}, {"generated_40mb.json", 40'000'000}};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_bench_documents FOLDER\n";
        return 64;
    }
    for (auto const& document : documents) {
        std::string const path = std::string(argv[1]) + "/" + document.file_name;
        std::ofstream file(path, std::ios::binary);
        file << morv::qc::json::serialize(morv::bench::generate_result(seed, document.target_bytes));
        if (!file) {
            std::cerr << "write_bench_documents: cannot write " << path << "\n";
            return 73;
        }
    }
    return 0;
}
