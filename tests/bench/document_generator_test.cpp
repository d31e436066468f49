#include "document_generator.hpp"

#include <morv/qc/json/codec.hpp>

#include <gtest/gtest.h>

#include <string>

namespace morv::bench {
namespace {

constexpr std::size_t small_document = 20'000;

TEST(DocumentGenerator, TextDecodesCompleteWithItsStoredDiagnosticsAndWritesBackUnchanged) {
    auto const generated = generate_result(7, small_document);
    std::string const text = qc::json::serialize(generated);

    auto const decoded = qc::json::deserialize(text);

    EXPECT_EQ(decoded.status, model::ParseStatus::complete);
    ASSERT_EQ(decoded.diagnostics.size(), 3u);
    EXPECT_EQ(decoded.diagnostics, generated.diagnostics);
    EXPECT_TRUE(decoded.value == generated.value);
    EXPECT_EQ(qc::json::serialize(decoded), text);
}

TEST(DocumentGenerator, SameSeedGivesSameTextAndAnotherSeedAnother) {
    std::string const text = qc::json::serialize(generate_result(7, small_document));

    EXPECT_EQ(qc::json::serialize(generate_result(7, small_document)), text);
    EXPECT_NE(qc::json::serialize(generate_result(8, small_document)), text);
    EXPECT_TRUE(generate_document(7, small_document) == generate_result(7, small_document).value);
}

}  // namespace
}  // namespace morv::bench
