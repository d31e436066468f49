#include <morv/qc/import.hpp>

#include "gamess/gamess_reader.hpp"
#include "gaussian/gaussian_reader.hpp"
#include "orca/orca_reader.hpp"

#include <exception>

namespace morv::qc {

namespace {

model::ParseResult<Document> failure(char const* code, char const* message) {
    model::ParseResult<Document> result;
    result.status = model::ParseStatus::failed;
    result.diagnostics.push_back({model::Severity::error, code, message, std::nullopt});
    return result;
}

}  // namespace

model::ParseResult<Document> import_output(std::string_view text, std::string_view file_name) {
    // Whatever the text holds, the caller gets a result: a reader's failure,
    // memory running out included, becomes a failed import.
    try {
        // GAMESS's banner stands in its first lines, so that testing for it
        // first costs the other outputs little, and spares a GAMESS output
        // the search of its whole head for a Gaussian banner.
        if (import::gamess::recognises(text)) {
            return import::gamess::read(text, file_name);
        }
        if (import::gaussian::recognises(text)) {
            return import::gaussian::read(text, file_name);
        }
        if (import::orca::recognises(text)) {
            return import::orca::read(text, file_name);
        }
        return failure("qc.import.unknown_program", "not an output of a known program");
    } catch (std::exception const&) {
        return failure("qc.import.internal_error", "the output could not be read to the end");
    } catch (...) {
        return failure("qc.import.internal_error", "the output could not be read to the end");
    }
}

}  // namespace morv::qc
