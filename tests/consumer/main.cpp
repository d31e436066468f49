// Reads a document, writes it back and checks it, using only the installed
// headers and libraries.

#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <cstring>
#include <iostream>
#include <string>

namespace {

constexpr char const* input =
    R"({"schema":"morv.qc.document.v2","program":{"kind":"orca","name":"ORCA","termination":{"kind":"normal"}}})";

constexpr char const* expected =
    R"({"analyses":[],"diagnostics":[],"frames":[],"jobs":[],"metadata":{},)"
    R"("normalization":{"profile":"unknown","requested_analyses":{"dipoles":true,"excited_states":true,)"
    R"("gradients":true,"orbitals":true,"vibrations":true}},"parse_status":"complete",)"
    R"("program":{"kind":"orca","name":"ORCA","termination":{"kind":"normal","normal":true}},)"
    R"("schema":"morv.qc.document.v2","sources":[],"steps":[],"systems":[]})";

int fail(std::string const& what) {
    std::cerr << "consumer: " << what << '\n';
    return 1;
}

}  // namespace

int main() {
    auto const result = morv::qc::json::deserialize(input);
    if (std::strcmp(morv::qc::to_string(result.status), "complete") != 0) {
        return fail(std::string("status is ") + morv::qc::to_string(result.status));
    }
    if (std::string const text = morv::qc::json::serialize(result); text != expected) {
        return fail("serialized as " + text);
    }
    if (std::strcmp(morv::qc::to_string(result.value.program.kind), "orca") != 0) {
        return fail("program kind is not orca");
    }
    if (!morv::qc::validate_document(result.value).empty()) {
        return fail("the validator reported findings");
    }
    return 0;
}
