#include "framework/sha256.hpp"

#include <array>
#include <cstdint>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace morv::qc::import {

namespace {

constexpr std::array<std::uint32_t, 64> round_constants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

constexpr std::uint32_t rotr(std::uint32_t x, int n) { return (x >> n) | (x << (32 - n)); }

void compress(std::array<std::uint32_t, 8>& state, unsigned char const* block) {
    std::array<std::uint32_t, 64> w{};
    for (int i = 0; i < 16; ++i) {
        w[i] = (std::uint32_t(block[4 * i]) << 24) | (std::uint32_t(block[4 * i + 1]) << 16) |
               (std::uint32_t(block[4 * i + 2]) << 8) | std::uint32_t(block[4 * i + 3]);
    }
    for (int i = 16; i < 64; ++i) {
        std::uint32_t const s0 = rotr(w[i - 15], 7) ^ rotr(w[i - 15], 18) ^ (w[i - 15] >> 3);
        std::uint32_t const s1 = rotr(w[i - 2], 17) ^ rotr(w[i - 2], 19) ^ (w[i - 2] >> 10);
        w[i] = w[i - 16] + s0 + w[i - 7] + s1;
    }
    auto v = state;
    for (int i = 0; i < 64; ++i) {
        std::uint32_t const s1 = rotr(v[4], 6) ^ rotr(v[4], 11) ^ rotr(v[4], 25);
        std::uint32_t const choice = (v[4] & v[5]) ^ (~v[4] & v[6]);
        std::uint32_t const t1 = v[7] + s1 + choice + round_constants[i] + w[i];
        std::uint32_t const s0 = rotr(v[0], 2) ^ rotr(v[0], 13) ^ rotr(v[0], 22);
        std::uint32_t const majority = (v[0] & v[1]) ^ (v[0] & v[2]) ^ (v[1] & v[2]);
        std::uint32_t const t2 = s0 + majority;
        v[7] = v[6];
        v[6] = v[5];
        v[5] = v[4];
        v[4] = v[3] + t1;
        v[3] = v[2];
        v[2] = v[1];
        v[1] = v[0];
        v[0] = t1 + t2;
    }
    for (int i = 0; i < 8; ++i) {
        state[i] += v[i];
    }
}

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))

// The SHA extensions of x86 processors do two rounds in one instruction and
// most of the message schedule in two more: an output is hashed several
// times faster than by the portable rounds above, which decided the import's
// speed. The state is kept as the two halves the instructions take,
// ABEF and CDGH.
__attribute__((target("sha,sse4.1,ssse3"))) void compress_with_sha_extensions(std::array<std::uint32_t, 8>& state,
                                                                               unsigned char const* blocks,
                                                                               std::size_t count) {
    // Big-endian words from the bytes of each 16-byte part.
    __m128i const byte_order = _mm_set_epi64x(0x0c0d0e0f08090a0bULL, 0x0405060700010203ULL);
    __m128i const dcba = _mm_loadu_si128(reinterpret_cast<__m128i const*>(state.data()));
    __m128i const hgfe = _mm_loadu_si128(reinterpret_cast<__m128i const*>(state.data() + 4));
    __m128i const cdab = _mm_shuffle_epi32(dcba, 0xB1);
    __m128i const efgh = _mm_shuffle_epi32(hgfe, 0x1B);
    __m128i abef = _mm_alignr_epi8(cdab, efgh, 8);
    __m128i cdgh = _mm_blend_epi16(efgh, cdab, 0xF0);
    for (std::size_t block = 0; block < count; ++block) {
        auto const* bytes = blocks + 64 * block;
        __m128i const abef_before = abef;
        __m128i const cdgh_before = cdgh;
        // Four words of the schedule at a time, the last four groups kept.
        __m128i words[4];
        // Unrolled, the words stay in registers and the first four groups
        // lose their test.
#pragma GCC unroll 16
        for (int group = 0; group < 16; ++group) {
            __m128i& current = words[group % 4];
            if (group < 4) {
                current = _mm_shuffle_epi8(
                    _mm_loadu_si128(reinterpret_cast<__m128i const*>(bytes + 16 * group)), byte_order);
            } else {
                __m128i const& previous = words[(group + 3) % 4];
                __m128i const sum = _mm_add_epi32(_mm_sha256msg1_epu32(current, words[(group + 1) % 4]),
                                                  _mm_alignr_epi8(previous, words[(group + 2) % 4], 4));
                current = _mm_sha256msg2_epu32(sum, previous);
            }
            __m128i message = _mm_add_epi32(
                current, _mm_loadu_si128(reinterpret_cast<__m128i const*>(round_constants.data() + 4 * group)));
            // Two rounds leave the new ABEF in `cdgh` and the new CDGH, the
            // old ABEF, in `abef`; two more put them back.
            cdgh = _mm_sha256rnds2_epu32(cdgh, abef, message);
            message = _mm_shuffle_epi32(message, 0x0E);
            abef = _mm_sha256rnds2_epu32(abef, cdgh, message);
        }
        abef = _mm_add_epi32(abef, abef_before);
        cdgh = _mm_add_epi32(cdgh, cdgh_before);
    }
    __m128i const feba = _mm_shuffle_epi32(abef, 0x1B);
    __m128i const dchg = _mm_shuffle_epi32(cdgh, 0xB1);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(state.data()), _mm_blend_epi16(feba, dchg, 0xF0));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(state.data() + 4), _mm_alignr_epi8(dchg, feba, 8));
}

bool has_sha_extensions() {
    unsigned a = 0, b = 0, c = 0, d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & bit_SSSE3) == 0 || (c & bit_SSE4_1) == 0) {
        return false;
    }
    return __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & bit_SHA) != 0;
}

void compress_blocks(std::array<std::uint32_t, 8>& state, unsigned char const* blocks, std::size_t count) {
    static bool const accelerated = has_sha_extensions();
    if (accelerated) {
        compress_with_sha_extensions(state, blocks, count);
        return;
    }
    for (std::size_t block = 0; block < count; ++block) {
        compress(state, blocks + 64 * block);
    }
}

#else

void compress_blocks(std::array<std::uint32_t, 8>& state, unsigned char const* blocks, std::size_t count) {
    for (std::size_t block = 0; block < count; ++block) {
        compress(state, blocks + 64 * block);
    }
}

#endif

}  // namespace

std::string sha256_hex(std::string_view data) {
    std::array<std::uint32_t, 8> state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                          0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    auto const* bytes = reinterpret_cast<unsigned char const*>(data.data());
    std::size_t const whole = data.size() / 64 * 64;
    compress_blocks(state, bytes, whole / 64);
    // The rest, a one bit, zeros and the length in bits fill one or two
    // last blocks.
    std::array<unsigned char, 128> tail{};
    std::size_t const rest = data.size() - whole;
    for (std::size_t i = 0; i < rest; ++i) {
        tail[i] = bytes[whole + i];
    }
    tail[rest] = 0x80;
    std::size_t const blocks = rest + 9 > 64 ? 2 : 1;
    std::uint64_t const bits = static_cast<std::uint64_t>(data.size()) * 8;
    for (int i = 0; i < 8; ++i) {
        tail[blocks * 64 - 1 - i] = static_cast<unsigned char>(bits >> (8 * i));
    }
    compress_blocks(state, tail.data(), blocks);
    static constexpr char digits[] = "0123456789abcdef";
    std::string out;
    for (auto const word : state) {
        for (int shift = 28; shift >= 0; shift -= 4) {
            out.push_back(digits[(word >> shift) & 0xf]);
        }
    }
    return out;
}

}  // namespace morv::qc::import
