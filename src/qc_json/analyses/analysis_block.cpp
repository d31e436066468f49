#include "analyses/analysis_block.hpp"

#include "analyses/atomic_charges.hpp"
#include "analyses/dipoles.hpp"
#include "analyses/excited_states.hpp"
#include "analyses/orbitals.hpp"
#include "analyses/scalar_properties.hpp"
#include "analyses/thermochemistry.hpp"
#include "analyses/vibrations.hpp"
#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/source_spans.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace morv::qc::json {
namespace {

template <typename Alternative, Alternative (*read)(DocumentResult&, Node const&)>
AnalysisPayload read_payload(DocumentResult& result, Node const& node) {
    return read(result, node);
}

// In the order of the alternatives of the payload, as the type words are.
constexpr std::array payload_readers{
    read_payload<VibrationalBlock, read_vibrational_block>,
    read_payload<ExcitedStateBlock, read_excited_state_block>,
    read_payload<OrbitalSetBlock, read_orbital_set_block>,
    read_payload<ThermochemistryBlock, read_thermochemistry_block>,
    read_payload<DipoleBlock, read_dipole_block>,
    read_payload<AtomicChargeBlock, read_atomic_charge_block>,
    read_payload<ScalarPropertyBlock, read_scalar_property_block>,
};
static_assert(payload_readers.size() == std::variant_size_v<AnalysisPayload>,
              "every alternative of the payload needs its reader");

struct WritePayload {
    JsonValue& object;
    void operator()(VibrationalBlock const& block) const { write_vibrational_block(object, block); }
    void operator()(ExcitedStateBlock const& block) const { write_excited_state_block(object, block); }
    void operator()(OrbitalSetBlock const& block) const { write_orbital_set_block(object, block); }
    void operator()(ThermochemistryBlock const& block) const { write_thermochemistry_block(object, block); }
    void operator()(DipoleBlock const& block) const { write_dipole_block(object, block); }
    void operator()(AtomicChargeBlock const& block) const { write_atomic_charge_block(object, block); }
    void operator()(ScalarPropertyBlock const& block) const { write_scalar_property_block(object, block); }
};

}  // namespace

std::optional<AnalysisBlock> read_analysis_block(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        add_error(result, "qc.json.invalid_analysis", "Expected an analysis object.");
        return std::nullopt;
    }
    // All three header keys are read so that each fault is reported.
    auto const id = read_id_field(result, node, "id", Presence::required);
    auto const job_id = read_entity_id_field<JobIdTag>(result, node, "job_id", Presence::required);
    std::string const type = read_string_field(result, node, "type", Presence::required).value_or("");
    if (!id || !job_id || type.empty()) {
        return std::nullopt;
    }
    auto const known = std::find(analysis_type_words.begin(), analysis_type_words.end(), std::string_view(type));
    if (known == analysis_type_words.end()) {
        add_warning(result, "qc.json.unknown_analysis", "Ignoring unknown analysis type: " + type);
        return std::nullopt;
    }
    // The alternative's own keys come first, so their diagnostics stand
    // before those of the remaining header keys.
    AnalysisBlock block;
    block.id = AnalysisId(*id);
    block.job_id = *job_id;
    block.payload = payload_readers[known - analysis_type_words.begin()](result, node);
    block.ordinal = read_uint32_field(result, node, "ordinal", Presence::optional).value_or(*id);
    block.reference_step_id = read_entity_id_field<StepIdTag>(result, node, "reference_step_id", Presence::optional);
    block.source = read_source_key(result, node);
    return block;
}

JsonValue write_analysis_block(AnalysisBlock const& block) {
    JsonValue object = make_json_object();
    object["id"] = block.id.value;
    object["job_id"] = block.job_id.value;
    object["ordinal"] = block.ordinal;
    object["type"] = analysis_type(block.payload);
    set_if_present(object, "reference_step_id", block.reference_step_id);
    write_source_key(object, block.source);
    std::visit(WritePayload{object}, block.payload);
    return object;
}

}  // namespace morv::qc::json
