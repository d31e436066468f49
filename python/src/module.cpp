#include "bindings.hpp"

#include <morv/qc/json/codec.hpp>
#include <morv/qc/json/version.hpp>

PYBIND11_MODULE(_core, module) {
    using namespace morv::python;
    module.doc() =
        "Quantum-chemistry result documents between Python and \"morv.qc.document.v2\" JSON text: a tolerant "
        "reader, an exact writer, and every record of the model as a typed object.";
    module.attr("__version__") = morv::qc::json::library_version;
    module.attr("schema_id") = morv::qc::json::schema_id;
    bind_enumerations(module);
    bind_document_records(module);
    bind_analysis_records(module);
    bind_document(module);
    bind_lists(module);
    bind_codec(module);
}
