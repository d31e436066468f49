#include "fuzzed_document.hpp"

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace morv::fuzz {
namespace {

using model::ExtensionValue;

// Texts that a YAML loader may take for something else than a string, and
// the format's own words.
constexpr std::array<char const*, 41> tricky_texts = {
    "",      "null",  "Null", "~",     "true",  "false", "True",  "yes",   "1",     "-0",
    "017",   "0x10",  "+1",   "12.0",  "1e999", ".inf",  "-.inf", ".nan",  "inf",   "nan",
    "9223372036854775808",     "18446744073709551616",   " x",    "x ",    "- a",   "a: b",
    "#",     "&a",    "*a",   "!x",    "'",     "\"",    "\\",    "[",     "{}",    "partial",
    "error", "orca",  "morv.qc.document.v2",             "\xef\xbb\xbf", "<<"};

constexpr std::array<double, 12> special_doubles = {
    std::numeric_limits<double>::quiet_NaN(),  std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),  -0.0,
    0.0,                                       std::numeric_limits<double>::max(),
    std::numeric_limits<double>::lowest(),     std::numeric_limits<double>::denorm_min(),
    0.1,                                       1e21,
    9007199254740993.0,                        -76.4};

// Documents stay small and shallow, and their keys short: yaml-cpp refuses
// text nested about 500 deep and keys over 1024 characters (README.md, Known
// limits), and those limits have tests of their own.
constexpr std::size_t max_list_size = 3;
constexpr int max_extension_depth = 4;
constexpr std::size_t max_raw_text_bytes = 16;
constexpr int max_code_points = 6;

// Bytes in the UTF-8 sequence that `lead` starts; 0 for a byte that starts none.
std::size_t sequence_length(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if ((lead & 0xE0) == 0xC0) {
        return 2;
    }
    if ((lead & 0xF0) == 0xE0) {
        return 3;
    }
    return (lead & 0xF8) == 0xF0 ? 4 : 0;
}

// RFC 3629, as strict JSON parsers apply it: no overlong forms, no
// surrogates, nothing above U+10FFFF.
bool is_valid_utf8(std::string const& text) {
    constexpr std::uint32_t smallest_code_point[] = {0, 0, 0x80, 0x800, 0x10000};
    std::size_t i = 0;
    while (i < text.size()) {
        auto const lead = static_cast<unsigned char>(text[i]);
        std::size_t const length = sequence_length(lead);
        if (length == 0 || i + length > text.size()) {
            return false;
        }
        std::uint32_t code_point = length == 1 ? lead : lead & (0x7Fu >> length);
        for (std::size_t k = 1; k < length; ++k) {
            auto const next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80) {
                return false;
            }
            code_point = (code_point << 6) | (next & 0x3Fu);
        }
        if (code_point < smallest_code_point[length] || code_point > 0x10FFFF ||
            (code_point >= 0xD800 && code_point <= 0xDFFF)) {
            return false;
        }
        i += length;
    }
    return true;
}

void append_utf8(std::string& text, std::uint32_t code_point) {
    if (code_point < 0x80) {
        text += static_cast<char>(code_point);
    } else if (code_point < 0x800) {
        text += static_cast<char>(0xC0 | (code_point >> 6));
        text += static_cast<char>(0x80 | (code_point & 0x3F));
    } else if (code_point < 0x10000) {
        text += static_cast<char>(0xE0 | (code_point >> 12));
        text += static_cast<char>(0x80 | ((code_point >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code_point & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | (code_point >> 18));
        text += static_cast<char>(0x80 | ((code_point >> 12) & 0x3F));
        text += static_cast<char>(0x80 | ((code_point >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code_point & 0x3F));
    }
}

class DocumentBuilder {
public:
    explicit DocumentBuilder(FuzzedDataProvider& provider) : in_(provider) {}

    FuzzedResult build() {
        FuzzedResult built;
        auto& result = built.result;
        result.status = enumerator<model::ParseStatus>();
        qc::Document& document = result.value;
        document.program = program();
        document.normalization = normalization();
        document.sources = list(&DocumentBuilder::source_file);
        document.systems = list(&DocumentBuilder::system);
        document.frames = list(&DocumentBuilder::frame);
        document.jobs = list(&DocumentBuilder::job);
        document.steps = list(&DocumentBuilder::step);
        document.analyses = list(&DocumentBuilder::analysis);
        document.metadata = table(&DocumentBuilder::metadata_value);
        document.extensions = table(&DocumentBuilder::extension_value);
        result.diagnostics = list(&DocumentBuilder::diagnostic);
        built.all_text_is_utf8 = all_text_is_utf8_;
        return built;
    }

private:
    // Scalars.

    std::string text() {
        std::string chosen;
        switch (in_.ConsumeIntegralInRange(0, 3)) {
            case 0: chosen = in_.ConsumeRandomLengthString(max_raw_text_bytes); break;
            case 1: chosen = in_.PickValueInArray(tricky_texts); break;
            case 2: chosen = code_points(); break;
            default: chosen = std::string(1, static_cast<char>('a' + in_.ConsumeIntegralInRange(0, 25))); break;
        }
        all_text_is_utf8_ = all_text_is_utf8_ && is_valid_utf8(chosen);
        return chosen;
    }

    // Valid UTF-8 from anywhere in the code space: controls, DEL, the two-,
    // three- and four-byte forms, line and paragraph separators.
    std::string code_points() {
        std::string chosen;
        for (auto count = in_.ConsumeIntegralInRange(0, max_code_points); count > 0; --count) {
            std::uint32_t code_point = in_.ConsumeIntegralInRange<std::uint32_t>(0, 0x10FFFF);
            if (code_point >= 0xD800 && code_point <= 0xDFFF) {
                code_point = 0x2028 + (code_point & 1);
            }
            append_utf8(chosen, code_point);
        }
        return chosen;
    }

    double number() {
        if (in_.ConsumeBool()) {
            return in_.PickValueInArray(special_doubles);
        }
        auto const bits = in_.ConsumeIntegral<std::uint64_t>();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    template <typename Integer>
    Integer integer() {
        return in_.ConsumeIntegral<Integer>();
    }

    // Mostly inside the enumerator's table, sometimes anywhere in its range.
    template <typename Enum>
    Enum enumerator() {
        std::uint32_t const raw =
            in_.ConsumeBool() ? in_.ConsumeIntegralInRange<std::uint32_t>(0, 9) : in_.ConsumeIntegral<std::uint32_t>();
        return static_cast<Enum>(raw);
    }

    // Mostly small, so that records name each other and the validator finds
    // references that hold as well as ones that do not.
    template <typename Id>
    Id id() {
        return Id(in_.ConsumeBool() ? in_.ConsumeIntegralInRange<std::uint32_t>(0, 3)
                                    : in_.ConsumeIntegral<std::uint32_t>());
    }

    template <typename T>
    std::optional<T> maybe(T (DocumentBuilder::*make)()) {
        if (!in_.ConsumeBool()) {
            return std::nullopt;
        }
        return (this->*make)();
    }

    template <typename T>
    std::vector<T> list(T (DocumentBuilder::*make)()) {
        std::vector<T> items(in_.ConsumeIntegralInRange<std::size_t>(0, max_list_size));
        for (auto& item : items) {
            item = (this->*make)();
        }
        return items;
    }

    template <typename T>
    std::map<std::string, T> table(T (DocumentBuilder::*make)()) {
        std::map<std::string, T> entries;
        for (auto count = in_.ConsumeIntegralInRange<std::size_t>(0, max_list_size); count > 0; --count) {
            std::string key = text();
            entries.emplace(std::move(key), (this->*make)());
        }
        return entries;
    }

    bool flag() { return in_.ConsumeBool(); }
    int small_int() { return integer<int>(); }
    // Written as a text of this one byte.
    char spin_letter() {
        char const letter = integer<char>();
        all_text_is_utf8_ = all_text_is_utf8_ && static_cast<unsigned char>(letter) < 0x80;
        return letter;
    }

    // Shared records.

    model::SourceSpan span() {
        return {id<model::SourceId>(), position(), position()};
    }

    model::SourcePosition position() {
        return {integer<std::uint64_t>(), integer<std::uint64_t>(), integer<std::uint64_t>()};
    }

    chem::Vec3 vec3() { return {number(), number(), number()}; }

    qc::Termination termination() { return {enumerator<qc::TerminationKind>(), text(), maybe(&DocumentBuilder::span)}; }

    qc::EnergyRecord energy() {
        return {id<qc::EnergyId>(), enumerator<qc::EnergyKind>(), text(), text(), number(),
                maybe(&DocumentBuilder::span)};
    }

    model::Diagnostic diagnostic() {
        return {enumerator<model::Severity>(), text(), text(), maybe(&DocumentBuilder::span)};
    }

    // Document body.

    qc::ProgramInfo program() {
        return {enumerator<qc::ProgramKind>(), text(), text(), text(), termination()};
    }

    qc::Normalization normalization() {
        return {enumerator<qc::ResultProfile>(), {flag(), flag(), flag(), flag(), flag()}};
    }

    model::SourceFile source_file() {
        return {id<model::SourceId>(), text(), maybe(&DocumentBuilder::text),
                maybe(&DocumentBuilder::integer<std::uint64_t>), maybe(&DocumentBuilder::text)};
    }

    chem::AtomSite atom() {
        return {id<chem::AtomId>(),
                text(),
                text(),
                maybe(&DocumentBuilder::integer<std::uint16_t>),
                maybe(&DocumentBuilder::integer<std::uint16_t>),
                maybe(&DocumentBuilder::integer<std::int32_t>)};
    }

    chem::ElectronicState electronic_state() { return {integer<std::int32_t>(), integer<std::uint32_t>()}; }

    chem::ChemicalSystem system() {
        return {id<chem::SystemId>(), text(), {list(&DocumentBuilder::atom)},
                maybe(&DocumentBuilder::electronic_state), maybe(&DocumentBuilder::span)};
    }

    chem::GeometryFrame frame() {
        return {id<chem::FrameId>(), id<chem::SystemId>(), list(&DocumentBuilder::vec3), maybe(&DocumentBuilder::span)};
    }

    qc::TaskKind task() { return enumerator<qc::TaskKind>(); }
    qc::JobId job_id() { return id<qc::JobId>(); }
    qc::StepId step_id() { return id<qc::StepId>(); }
    qc::EnergyId energy_id() { return id<qc::EnergyId>(); }
    chem::FrameId frame_id() { return id<chem::FrameId>(); }

    qc::CalculationJob job() {
        return {id<qc::JobId>(),
                id<chem::SystemId>(),
                integer<std::uint32_t>(),
                maybe(&DocumentBuilder::job_id),
                enumerator<qc::JobRelation>(),
                list(&DocumentBuilder::task),
                maybe(&DocumentBuilder::task),
                text(),
                text(),
                text(),
                list(&DocumentBuilder::step_id),
                termination(),
                maybe(&DocumentBuilder::span)};
    }

    qc::GradientRecord gradient() {
        return {list(&DocumentBuilder::vec3), maybe(&DocumentBuilder::number), maybe(&DocumentBuilder::number),
                maybe(&DocumentBuilder::number), maybe(&DocumentBuilder::span)};
    }

    qc::ConvergenceCriterion criterion() {
        return {enumerator<qc::CriterionKind>(), number(), maybe(&DocumentBuilder::number),
                maybe(&DocumentBuilder::flag), text()};
    }

    qc::ConvergenceRecord convergence() {
        return {list(&DocumentBuilder::criterion), enumerator<qc::ConvergenceStatus>(), maybe(&DocumentBuilder::span)};
    }

    qc::CalculationStep step() {
        return {id<qc::StepId>(),
                id<qc::JobId>(),
                id<chem::SystemId>(),
                integer<std::uint32_t>(),
                maybe(&DocumentBuilder::integer<std::int32_t>),
                maybe(&DocumentBuilder::frame_id),
                list(&DocumentBuilder::energy),
                maybe(&DocumentBuilder::energy_id),
                maybe(&DocumentBuilder::gradient),
                maybe(&DocumentBuilder::convergence),
                maybe(&DocumentBuilder::span)};
    }

    // Analyses.

    qc::AnalysisBlock analysis() {
        return {id<qc::AnalysisId>(), id<qc::JobId>(), integer<std::uint32_t>(), maybe(&DocumentBuilder::step_id),
                payload(), maybe(&DocumentBuilder::span)};
    }

    qc::AnalysisPayload vibrational() { return qc::VibrationalBlock{list(&DocumentBuilder::mode)}; }
    qc::AnalysisPayload orbital_set() {
        return qc::OrbitalSetBlock{enumerator<qc::SpinChannel>(), text(), list(&DocumentBuilder::orbital)};
    }
    qc::AnalysisPayload dipoles() { return qc::DipoleBlock{list(&DocumentBuilder::dipole)}; }
    qc::AnalysisPayload atomic_charges() {
        return qc::AtomicChargeBlock{text(), list(&DocumentBuilder::charge_record)};
    }
    qc::AnalysisPayload scalar_properties() {
        return qc::ScalarPropertyBlock{list(&DocumentBuilder::scalar_property)};
    }

    // One maker for each alternative, in the order of the payload.
    qc::AnalysisPayload payload() {
        static constexpr std::array makers{
            &DocumentBuilder::vibrational, &DocumentBuilder::excited_states, &DocumentBuilder::orbital_set,
            &DocumentBuilder::thermochemistry, &DocumentBuilder::dipoles, &DocumentBuilder::atomic_charges,
            &DocumentBuilder::scalar_properties};
        static_assert(makers.size() == std::variant_size_v<qc::AnalysisPayload>, "a maker for each alternative");
        return (this->*makers[in_.ConsumeIntegralInRange<std::size_t>(0, makers.size() - 1)])();
    }

    std::optional<double> maybe_number() { return maybe(&DocumentBuilder::number); }
    std::optional<int> maybe_int() { return maybe(&DocumentBuilder::small_int); }

    qc::VibrationalMode mode() {
        return {maybe_int(),    number(),       text(), maybe_number(), maybe_number(),
                maybe_number(), maybe_number(), list(&DocumentBuilder::vec3)};
    }

    qc::ExcitationContribution contribution() {
        return {text(),
                maybe_int(),
                maybe_int(),
                text(),
                text(),
                maybe(&DocumentBuilder::spin_letter),
                maybe(&DocumentBuilder::spin_letter),
                maybe_number(),
                maybe_number(),
                flag()};
    }

    qc::AbsorptionPeak peak() {
        return {text(),         text(),         maybe_int(), number(),
                maybe_number(), maybe_number(), maybe_number(), text(),
                maybe_number(), maybe(&DocumentBuilder::vec3), maybe_number(), maybe(&DocumentBuilder::span)};
    }

    qc::ExcitedState excited_state() {
        qc::ExcitedState state;
        state.index = maybe_int();
        state.root_label = text();
        state.method = text();
        state.section = text();
        state.multiplicity_label = text();
        state.symmetry = text();
        state.multiplicity = maybe_int();
        for (auto* field : {&state.total_energy, &state.excitation_energy, &state.reported_millihartree,
                            &state.reported_wavenumber_cm1, &state.reported_wavelength_nm, &state.oscillator_strength,
                            &state.spin_squared, &state.spin_contamination, &state.ground_state_amplitude,
                            &state.singles_character_percent}) {
            *field = maybe_number();
        }
        state.contributions = list(&DocumentBuilder::contribution);
        state.source = maybe(&DocumentBuilder::span);
        return state;
    }

    qc::AnalysisPayload excited_states() {
        return qc::ExcitedStateBlock{maybe_int(),
                text(),
                text(),
                text(),
                list(&DocumentBuilder::excited_state),
                list(&DocumentBuilder::energy),
                maybe(&DocumentBuilder::energy_id),
                list(&DocumentBuilder::peak)};
    }

    qc::Orbital orbital() {
        return {maybe_int(), enumerator<qc::SpinChannel>(), maybe_number(), number(), text(), text()};
    }

    qc::AnalysisPayload thermochemistry() {
        qc::ThermochemistryBlock block;
        for (auto* field : {&block.temperature_kelvin, &block.pressure_atmosphere, &block.total_mass_amu,
                            &block.electronic_energy, &block.zero_point_energy, &block.thermal_energy,
                            &block.thermal_correction, &block.enthalpy, &block.enthalpy_correction,
                            &block.entropy_correction, &block.gibbs_free_energy, &block.gibbs_correction}) {
            *field = maybe_number();
        }
        return block;
    }

    qc::PermanentDipole dipole() {
        return {vec3(), maybe_number(), maybe_number(), text(), text(), maybe(&DocumentBuilder::span)};
    }

    qc::AtomicChargeRecord charge_record() {
        return {maybe_int(), text(), maybe_number(), maybe_number(), maybe_number(), maybe_number(), maybe_number()};
    }

    qc::ScalarProperty scalar_property() { return {text(), text(), number(), text(), maybe(&DocumentBuilder::span)}; }

    // Open-ended values.

    qc::MetadataValue metadata_value() {
        switch (in_.ConsumeIntegralInRange(0, 5)) {
            case 0: return flag();
            case 1: return integer<long long>();
            case 2: return number();
            case 3: return text();
            case 4: return list(&DocumentBuilder::text);
            default: return list(&DocumentBuilder::number);
        }
    }

    ExtensionValue extension_value() {
        ++extension_depth_;
        ExtensionValue value = extension_alternative(extension_depth_ < max_extension_depth ? 7 : 5);
        --extension_depth_;
        return value;
    }

    ExtensionValue extension_alternative(int last) {
        switch (in_.ConsumeIntegralInRange(0, last)) {
            case 0: return {nullptr};
            case 1: return {flag()};
            case 2: return {integer<long long>()};
            case 3: return {integer<unsigned long long>()};
            case 4: return {number()};
            case 5: return {text()};
            case 6: return {list(&DocumentBuilder::extension_value)};
            default: return {table(&DocumentBuilder::extension_value)};
        }
    }

    FuzzedDataProvider& in_;
    bool all_text_is_utf8_ = true;
    int extension_depth_ = 0;
};

}  // namespace

FuzzedResult build_result(FuzzedDataProvider& provider) { return DocumentBuilder(provider).build(); }

}  // namespace morv::fuzz
