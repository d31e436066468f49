#include <morv/qc/json/codec.hpp>
#include <morv/testing/document_builder.hpp>

#include <gtest/gtest.h>

#include <string>

namespace morv::testing {
namespace {

constexpr std::size_t small_document = 20'000;

TEST(BuiltRuns, PlainRunDecodesCompleteWithItsStoredDiagnosticsAndWritesBackUnchanged) {
    auto const generated = generate_result(7, small_document);
    std::string const text = qc::json::serialize(generated);

    auto const decoded = qc::json::deserialize(text);

    EXPECT_EQ(decoded.status, model::ParseStatus::complete);
    ASSERT_EQ(decoded.diagnostics.size(), 3u);
    EXPECT_EQ(decoded.diagnostics, generated.diagnostics);
    EXPECT_TRUE(decoded.value == generated.value);
    EXPECT_EQ(qc::json::serialize(decoded), text);
    EXPECT_EQ(qc::json::serialize(generate_result(7, small_document)), text);
    EXPECT_NE(qc::json::serialize(generate_result(8, small_document)), text);
}

// A fuzzer's input that ends after the seed is the plain run of that seed;
// the bytes after it put odd values in.
TEST(BuiltRuns, BytesPastTheSeedDepartFromThePlainRun) {
    std::string const seed("\0\0\0\0\0\0\0\7", 8);
    // The choices read the bytes where they lie.
    std::string const longer = seed + std::string(64, '\x35');
    ChoicesFromBytes plain(seed);
    ChoicesFromBytes odd(longer);

    auto const plain_run = build_result(plain, 0);
    auto const odd_run = build_result(odd, 0);

    EXPECT_TRUE(plain_run.result.value == generate_result(7, 0).value);
    EXPECT_FALSE(odd_run.result.value == plain_run.result.value);
}

}  // namespace
}  // namespace morv::testing
