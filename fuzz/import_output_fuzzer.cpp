// Any bytes go to `import_output`: it must return without a crash, a leak,
// undefined behaviour or an exception, and whatever it imports must name only
// records of its own document and come back equal through the codec.

#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    // The view is not terminated, so a read past its end shows under ASan.
    auto const result =
        morv::qc::import_output(std::string_view(reinterpret_cast<char const*>(data), size), "fuzzed.log");
    if (result.status == morv::model::ParseStatus::failed) {
        return 0;
    }
    auto const findings = morv::qc::validate_document(result.value);
    if (!findings.empty()) {
        std::fprintf(stderr, "FINDING: the imported document names a missing record: %s\n",
                     findings.front().message.c_str());
        std::abort();
    }
    if (morv::qc::json::deserialize(morv::qc::json::serialize(result.value, {})).value != result.value) {
        std::fprintf(stderr, "FINDING: the imported document changes through the codec\n");
        std::abort();
    }
    return 0;
}
