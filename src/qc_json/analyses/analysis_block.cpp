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
    JsonPrinter& printer;
    void operator()(VibrationalBlock const& block) const { write_vibrational_block(printer, block); }
    void operator()(ExcitedStateBlock const& block) const { write_excited_state_block(printer, block); }
    void operator()(OrbitalSetBlock const& block) const { write_orbital_set_block(printer, block); }
    void operator()(ThermochemistryBlock const& block) const { write_thermochemistry_block(printer, block); }
    void operator()(DipoleBlock const& block) const { write_dipole_block(printer, block); }
    void operator()(AtomicChargeBlock const& block) const { write_atomic_charge_block(printer, block); }
    void operator()(ScalarPropertyBlock const& block) const { write_scalar_property_block(printer, block); }
};

// The keys that every block has, which fall among those of its kind.
class BlockHeader final : public MergedMembers {
public:
    explicit BlockHeader(AnalysisBlock const& block) : block_(block) { skip_absent(); }

    std::optional<std::string_view> next_key() const override {
        if (next_ == keys.size()) {
            return std::nullopt;
        }
        return std::string_view(keys[next_]);
    }

    void print_next(JsonPrinter& printer) override {
        switch (static_cast<Key>(next_)) {
            case id: printer.value(block_.id.value); break;
            case job_id: printer.value(block_.job_id.value); break;
            case ordinal: printer.value(block_.ordinal); break;
            case reference_step_id: printer.value(block_.reference_step_id->value); break;
            case source: write_source_span(printer, *block_.source); break;
            case type: printer.value(analysis_type(block_.payload)); break;
        }
        skip_next();
    }

    void skip_next() override {
        ++next_;
        skip_absent();
    }

private:
    enum Key { id, job_id, ordinal, reference_step_id, source, type };
    static constexpr std::array<char const*, 6> keys{"id", "job_id", "ordinal", "reference_step_id", "source", "type"};

    void skip_absent() {
        if ((next_ == reference_step_id && !block_.reference_step_id) || (next_ == source && !block_.source)) {
            skip_next();
        }
    }

    AnalysisBlock const& block_;
    std::size_t next_ = 0;
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

void write_analysis_payload(JsonPrinter& printer, AnalysisPayload const& payload) {
    std::visit(WritePayload{printer}, payload);
}

void write_analysis_block(JsonPrinter& printer, AnalysisBlock const& block) {
    BlockHeader header(block);
    printer.begin_object(header);
    write_analysis_payload(printer, block.payload);
    printer.end_object();
}

}  // namespace morv::qc::json
