// One differential run for what every record's reader and writer must agree
// on: built runs that set, over a few seeds, every optional field, every
// alternative, every enumerator and longer lists, travel through their text
// unchanged, through either decode, and write the same text again.

#include "core/document.hpp"
#include "support/json_text.hpp"

#include <morv/testing/document_builder.hpp>

namespace morv::qc::json {
namespace {

using morv::testing::ChoicesFromBytes;
using morv::testing::Departures;

// The smallest run with values chosen anew wherever bytes of `seed` say.
Document run_within_format(std::uint64_t seed) {
    morv::testing::Choices random(seed);
    std::string bytes;
    while (bytes.size() < 1 << 16) {
        bytes += static_cast<char>(random.next());
    }
    ChoicesFromBytes choices(bytes);
    return morv::testing::build_result(choices, 0, Departures::within_format).result.value;
}

TEST(RoundTrip, EveryKeyTravelsThroughTextByEitherDecode) {
    for (std::uint64_t seed = 1; seed <= 16; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Document const document = run_within_format(seed);
        std::string const text = serialize(document);
        for (auto const& back : {deserialize(text).value, decode_through_yaml(text).value}) {
            EXPECT_TRUE(back == document);
            EXPECT_EQ(serialize(back), text);
        }
    }
}

}  // namespace
}  // namespace morv::qc::json
