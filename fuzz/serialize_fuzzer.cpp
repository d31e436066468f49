// Documents built from the fuzzer's bytes go to `serialize`, in any form that
// SerializeOptions allow. Writing must not throw; when every string of the
// document is valid UTF-8 the text is strict JSON, and pretty text holds the
// same JSON value as compact text; the text loads (no "qc.json.parse_failed"),
// and what it reads as settles, as in round_trip_fuzzer.

#include "fuzzed_document.hpp"
#include "settled_round_trip.hpp"

#include <morv/qc/json/codec.hpp>

#include <fuzzer/FuzzedDataProvider.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using morv::model::Diagnostic;
using morv::qc::json::SerializeOptions;

[[noreturn]] void fail(char const* what, std::string const& text) {
    std::fprintf(stderr, "\nFINDING: %s\n--- text:\n%s\n", what, text.c_str());
    std::abort();
}

SerializeOptions fuzzed_options(FuzzedDataProvider& provider) {
    SerializeOptions options;
    options.pretty = provider.ConsumeBool();
    // Small, so that deep pretty text stays a few kilobytes.
    options.indent = provider.ConsumeIntegralInRange<std::uint32_t>(0, 8);
    options.include_diagnostics = provider.ConsumeBool();
    return options;
}

bool loaded(morv::model::ParseResult<morv::qc::Document> const& read) {
    return std::none_of(read.diagnostics.begin(), read.diagnostics.end(),
                        [](Diagnostic const& d) { return d.code == "qc.json.parse_failed"; });
}

std::string write(morv::fuzz::FuzzedResult const& built, bool as_plain_document, SerializeOptions const& options) {
    return as_plain_document ? morv::qc::json::serialize(built.result.value, options)
                             : morv::qc::json::serialize(built.result, options);
}

void require_strict_json(std::string const& text) {
    if (!nlohmann::json::accept(text)) {
        fail("not strict JSON", text);
    }
}

void require_same_json(std::string const& pretty, std::string const& compact) {
    if (nlohmann::json::parse(pretty) != nlohmann::json::parse(compact)) {
        fail("pretty and compact text hold different JSON values", pretty);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider provider(data, size);
    SerializeOptions options = fuzzed_options(provider);
    bool const as_plain_document = provider.ConsumeBool();
    auto const built = morv::fuzz::build_result(provider);

    std::string const text = write(built, as_plain_document, options);
    if (built.all_text_is_utf8) {
        require_strict_json(text);
        if (options.pretty) {
            options.pretty = false;
            require_same_json(text, write(built, as_plain_document, options));
        }
    }
    auto const read = morv::qc::json::deserialize(text);
    if (!loaded(read)) {
        fail("written text does not load", text);
    }
    morv::fuzz::require_settled(read);
    return 0;
}
