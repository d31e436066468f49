#include <morv/qc/import.hpp>

namespace morv::qc {

model::ParseResult<Document> import_output(std::string_view, std::string_view) {
    model::ParseResult<Document> result;
    result.status = model::ParseStatus::failed;
    result.diagnostics.push_back(
        {model::Severity::error, "qc.import.unknown_program", "not an output of a known program", std::nullopt});
    return result;
}

}  // namespace morv::qc
