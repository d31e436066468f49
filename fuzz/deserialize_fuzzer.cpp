// Any bytes go to `deserialize`: it must return, whatever they are, without
// a crash, a leak, undefined behaviour or an exception.

#include <morv/qc/json/codec.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    // The view is not terminated, so a read past its end shows under ASan.
    morv::qc::json::deserialize(std::string_view(reinterpret_cast<char const*>(data), size));
    return 0;
}
