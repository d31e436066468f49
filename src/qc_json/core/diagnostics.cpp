#include "core/diagnostics.hpp"

#include <utility>

namespace morv::qc::json {
namespace {

void append(DocumentResult& result, model::Severity severity, std::string code, std::string message) {
    result.diagnostics.push_back(model::Diagnostic{severity, std::move(code), std::move(message), std::nullopt});
}

}  // namespace

void add_error(DocumentResult& result, std::string code, std::string message) {
    append(result, model::Severity::error, std::move(code), std::move(message));
}

void add_warning(DocumentResult& result, std::string code, std::string message) {
    append(result, model::Severity::warning, std::move(code), std::move(message));
}

}  // namespace morv::qc::json
