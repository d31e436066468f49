// Any bytes are read, written with their status and diagnostics, and read
// again. That first re-read may change things: non-finite numbers become
// null, metadata texts take a type, records that lost a required field drop
// out. From then on the text is the codec's own, and a further write and read
// must change nothing but the two known re-typings (settled_round_trip.hpp).

#include "settled_round_trip.hpp"

#include <morv/qc/json/codec.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    using morv::qc::json::deserialize;
    using morv::qc::json::serialize;
    auto const first = deserialize(std::string_view(reinterpret_cast<char const*>(data), size));
    morv::fuzz::require_settled(deserialize(serialize(first)));
    return 0;
}
