// How much heap a decode of a 40 MB text needs at its peak, above the text
// itself, beside YAML::Load alone and nlohmann::json::parse of the same text,
// and how much a compact write of the decoded document needs, its output
// included. Two texts: the generated one, and an imported Gaussian
// optimisation grown to the same size, with short numbers. Counts what goes
// through operator new, which is all that the codec, yaml-cpp and
// nlohmann/json allocate.
//
//   make bench   (or build-bench/bench/peak_heap)

#include <morv/testing/document_builder.hpp>
#include "real_documents.hpp"

#include <morv/qc/json/codec.hpp>

#include <nlohmann/json.hpp>
#include <yaml-cpp/yaml.h>

#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace {

// The program runs on one thread, so plain counters do.
std::size_t live_bytes = 0;
std::size_t peak_bytes = 0;

void* counted(void* block) {
    if (block != nullptr) {
        live_bytes += malloc_usable_size(block);
        peak_bytes = std::max(peak_bytes, live_bytes);
    }
    return block;
}

void release(void* block) noexcept {
    if (block != nullptr) {
        live_bytes -= malloc_usable_size(block);
        std::free(block);
    }
}

void* allocate(std::size_t size) noexcept { return counted(std::malloc(size == 0 ? 1 : size)); }

void* allocate(std::size_t size, std::align_val_t alignment) noexcept {
    auto const align = std::max(static_cast<std::size_t>(alignment), sizeof(void*));
    void* block = nullptr;
    return posix_memalign(&block, align, size == 0 ? 1 : size) == 0 ? counted(block) : nullptr;
}

template <typename... Alignment>
void* allocate_or_throw(std::size_t size, Alignment... alignment) {
    void* block = allocate(size, alignment...);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

}  // namespace

// Every replaceable form, so that nothing bypasses the count. They must stay
// visible to the shared libraries, which take their operator new from here.
#define MORV_REPLACED __attribute__((visibility("default")))

MORV_REPLACED void* operator new(std::size_t size) { return allocate_or_throw(size); }
MORV_REPLACED void* operator new[](std::size_t size) { return allocate_or_throw(size); }
MORV_REPLACED void* operator new(std::size_t size, std::nothrow_t const&) noexcept { return allocate(size); }
MORV_REPLACED void* operator new[](std::size_t size, std::nothrow_t const&) noexcept { return allocate(size); }
MORV_REPLACED void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate_or_throw(size, alignment);
}
MORV_REPLACED void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocate_or_throw(size, alignment);
}
MORV_REPLACED void* operator new(std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    return allocate(size, alignment);
}
MORV_REPLACED void* operator new[](std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    return allocate(size, alignment);
}

MORV_REPLACED void operator delete(void* block) noexcept { release(block); }
MORV_REPLACED void operator delete[](void* block) noexcept { release(block); }
MORV_REPLACED void operator delete(void* block, std::size_t) noexcept { release(block); }
MORV_REPLACED void operator delete[](void* block, std::size_t) noexcept { release(block); }
MORV_REPLACED void operator delete(void* block, std::nothrow_t const&) noexcept { release(block); }
MORV_REPLACED void operator delete[](void* block, std::nothrow_t const&) noexcept { release(block); }
MORV_REPLACED void operator delete(void* block, std::align_val_t) noexcept { release(block); }
MORV_REPLACED void operator delete[](void* block, std::align_val_t) noexcept { release(block); }
MORV_REPLACED void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }
MORV_REPLACED void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { release(block); }
MORV_REPLACED void operator delete(void* block, std::align_val_t, std::nothrow_t const&) noexcept { release(block); }
MORV_REPLACED void operator delete[](void* block, std::align_val_t, std::nothrow_t const&) noexcept {
    release(block);
}

namespace {

constexpr std::uint64_t seed = 2026;
constexpr std::size_t text_bytes = 40'000'000;

// Runs `work` with the peak reset to what is live before it, and prints how
// far above that the heap went, in bytes and in multiples of `measure`: four
// decimals, as a write is held to at most 2 and two would round 2.0004 down.
template <typename Work>
void report(char const* name, std::size_t measure, Work work) {
    std::size_t const before = live_bytes;
    peak_bytes = live_bytes;
    work();
    std::size_t const above = peak_bytes - before;
    std::printf("%-24s %14zu bytes %8.4f x text\n", name, above,
                static_cast<double>(above) / static_cast<double>(measure));
}

// The decode and the references on `text`, then the compact write of what it
// decoded to, measured against the text that the write gives (output
// included). False when the text does not decode complete.
bool report_text(char const* shape, std::string const& text) {
    std::printf("%s: peak heap above the text of %zu bytes, through operator new:\n", shape, text.size());
    auto result = morv::qc::json::deserialize(text);
    result = {};
    std::size_t document_bytes = 0;
    report("deserialize", text.size(), [&] {
        std::size_t const before = live_bytes;
        result = morv::qc::json::deserialize(text);
        document_bytes = live_bytes - before;
    });
    report("YAML::Load", text.size(), [&] { YAML::Node const root = YAML::Load(text); });
    report("nlohmann::json::parse", text.size(), [&] { nlohmann::json const root = nlohmann::json::parse(text); });
    std::size_t const written = morv::qc::json::serialize(result).size();
    report("serialize (÷ its output)", written, [&] { std::string const out = morv::qc::json::serialize(result); });
    std::printf("The decoded document itself holds %zu bytes, %.2f x text.\n\n", document_bytes,
                static_cast<double>(document_bytes) / static_cast<double>(text.size()));
    return result.status == morv::model::ParseStatus::complete;
}

}  // namespace

int main() {
    bool const generated =
        report_text("Generated", morv::qc::json::serialize(morv::testing::generate_result(seed, text_bytes)));
    bool const imported = report_text(
        "Imported Gaussian optimisation",
        morv::bench::imported_text(MORV_SOURCE_DIR, morv::bench::gaussian_optimisation, text_bytes));
    if (!generated || !imported) {
        std::fputs("error: a text did not decode complete\n", stderr);
        return 1;
    }
    return 0;
}
