// One differential run for what every record's reader and writer must agree
// on: built runs that set, over a few seeds, every optional field, every
// alternative, every enumerator and longer lists, travel through their text
// unchanged, through either decode, and write the same text again.

#include "core/document.hpp"
#include "support/json_text.hpp"

#include <morv/testing/document_builder.hpp>

namespace morv::qc::json {
namespace {

TEST(RoundTrip, EveryKeyTravelsThroughTextByEitherDecode) {
    for (std::uint64_t seed = 1; seed <= 16; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Document const document = morv::testing::odd_result(seed, morv::testing::Departures::within_format).value;
        std::string const text = serialize(document);
        for (auto const& back : {deserialize(text).value, decode_through_yaml(text).value}) {
            EXPECT_TRUE(back == document);
            EXPECT_EQ(serialize(back), text);
        }
    }
}

}  // namespace
}  // namespace morv::qc::json
