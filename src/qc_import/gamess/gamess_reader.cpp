#include "gamess/gamess_reader.hpp"

#include "gamess/options.hpp"

#include "framework/document_builder.hpp"
#include "framework/job_records.hpp"
#include "framework/line_cursor.hpp"
#include "framework/records.hpp"
#include "framework/text.hpp"
#include "framework/units.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morv::qc::import::gamess {

namespace {

using model::Diagnostic;
using model::Severity;
using model::SourceSpan;

bool is_termination(std::string_view trimmed) { return starts_with(trimmed, "EXECUTION OF GAMESS TERMINATED"); }

bool all_integers(Fields const& values) {
    return !values.empty() &&
           std::all_of(values.begin(), values.end(), [](std::string_view v) { return to_integer(v).has_value(); });
}

// The first word of `text`, "" when there is none.
std::string_view first_field(std::string_view text) {
    auto const values = fields(text);
    return values.empty() ? std::string_view() : values.front();
}

std::optional<int> small_integer(std::string_view field) {
    auto const n = to_integer(field);
    if (!n || *n < -1000000 || *n > 1000000) {
        return std::nullopt;
    }
    return static_cast<int>(*n);
}

// A count or a charge printed as a number, when it is a whole one of a
// sensible size.
std::optional<int> whole_number(std::optional<NumberField> const& number) {
    if (!number || std::abs(number->value) > 1000000 || number->value != std::floor(number->value)) {
        return std::nullopt;
    }
    return static_cast<int>(number->value);
}

char const* multiplicity_name(int multiplicity) {
    static constexpr char const* names[] = {"", "Singlet", "Doublet", "Triplet", "Quartet", "Quintet"};
    return multiplicity > 0 && multiplicity < 6 ? names[multiplicity] : "";
}

class Reader : JobRecords {
public:
    Reader(DocumentBuilder& builder, model::SourceId source, LineCursor& lines, std::vector<Diagnostic>& diagnostics)
        : JobRecords(builder), source_(source), lines_(lines), diagnostics_(diagnostics) {}

    void read() {
        CalculationJob job;
        if (lines_.size() > 0) {
            job.source = span_of_lines(source_, lines_.at(0), lines_.at(lines_.size() - 1));
        }
        job_ = builder_.add_job(std::move(job));
        while (!lines_.at_end()) {
            read_line();
            if (!lines_.at_end()) {
                lines_.advance();
            }
        }
        finish();
    }

private:
    Line const& line() const { return lines_.current(); }
    bool has_next() const { return lines_.index() + 1 < lines_.size(); }
    // Moves to the next line, if there is one; past the end otherwise.
    bool next() {
        if (!has_next()) {
            lines_.seek(lines_.size());
            return false;
        }
        lines_.advance();
        return true;
    }
    // Leaves the cursor on the line before the current one, so that the
    // main loop reads the current line again.
    void step_back() { lines_.seek(lines_.index() - 1); }

    // Moves to the next blank line; false at the end of the text.
    bool skip_to_blank() {
        while (next()) {
            if (trim(line().text).empty()) {
                return true;
            }
        }
        return false;
    }

    SourceSpan span(std::string_view part) const { return span_of_part(source_, line(), part); }

    // Most lines of an output are numbers of tables nobody reads here; the
    // first character sends a line to the few checks that might concern it.
    void read_line() {
        auto const text = trim(line().text);
        if (text.empty()) {
            return;
        }
        switch (text.front()) {
        case '*':
            return read_starred(text);
        case '$':
            if (starts_with(text, "$CONTRL OPTIONS")) {
                read_options();
            }
            return;
        case '-':
            if (starts_with(text, "----- ALPHA SET")) {
                orbital_spin_ = SpinChannel::alpha;
            } else if (starts_with(text, "----- BETA SET")) {
                orbital_spin_ = SpinChannel::beta;
            }
            return;
        case 'A':
            if (starts_with(text, "ATOM      ATOMIC") && contains(text, "COORDINATES (BOHR)")) {
                read_input_geometry();
            } else if (starts_with(text, "ATOMIC WEIGHTS (AMU)")) {
                read_masses();
            }
            return;
        case 'B':
            if (text == "BASIS OPTIONS") {
                read_options();
            } else if (starts_with(text, "BEGINNING GEOMETRY SEARCH POINT NSERCH=")) {
                search_point_ = small_integer(first_field(text.substr(39)));
            }
            return;
        case 'C':
            if (starts_with(text, "CHARGE OF MOLECULE")) {
                charge_ = whole_number(number_after(text, "CHARGE OF MOLECULE"));
            } else if (starts_with(text, "COORDINATES OF ALL ATOMS ARE")) {
                read_search_geometry(text);
            } else if (starts_with(text, "CC")) {
                read_cluster_energy(text);
            } else if (starts_with(text, "CI-SINGLES EXCITATION ENERGIES")) {
                read_cis_table();
            } else if (starts_with(text, "Copying input file ")) {
                read_input_name(text.substr(19));
            } else if (starts_with(text, "CIS ") && contains(text, "PROPERTIES...")) {
                properties_of("CIS", "excited state");
            }
            return;
        case 'E':
            if (is_termination(text)) {
                read_termination(text);
            } else if (text == "EIGENVECTORS") {
                read_orbitals();
            } else if (starts_with(text, "E(MP2)=")) {
                energy(text, "E(MP2)=", EnergyKind::correlated, "E(MP2)", "MP2");
            } else if (starts_with(text, "EXCITED STATE") && contains(text, "ENERGY=")) {
                read_cis_state(text);
            } else if (text == "ELECTROSTATIC MOMENTS") {
                read_dipole();
            }
            return;
        case 'F':
            if (starts_with(text, "FINAL ") && contains(text, " ENERGY IS")) {
                read_final_energy(text);
            } else if (starts_with(text, "FREQUENCY:")) {
                read_vibrations();
            }
            return;
        case 'G':
            if (starts_with(text, "GRADIENT (HARTREE/BOHR)")) {
                read_gradient();
            } else if (starts_with(text, "GRIMME'S DISPERSION ENERGY")) {
                read_dispersion(text);
            }
            return;
        case 'M':
            if (text == "MOLECULAR ORBITALS") {
                read_orbitals();
            } else if (starts_with(text, "MBPT(2) ENERGY:")) {
                read_cluster_energy(text);
            } else if (starts_with(text, "MAXIMUM GRADIENT =")) {
                read_gradient_line(text);
            } else if (starts_with(text, "MODES") && contains(text, "ARE TAKEN AS ROTATIONS AND TRANSLATIONS")) {
                read_rigid_modes(text);
            } else if (starts_with(text, "MP2 PROPERTIES...")) {
                properties_of("MP2", "relaxed");
            }
            return;
        case 'N':
            if (starts_with(text, "NSERCH:")) {
                read_search_point(text);
            } else if (starts_with(text, "NUMBER OF OCCUPIED ORBITALS (ALPHA)")) {
                alpha_electrons_ = number_after(text, "(ALPHA)");
            } else if (starts_with(text, "NUMBER OF OCCUPIED ORBITALS (BETA )")) {
                beta_electrons_ = number_after(text, "(BETA )");
            } else if (starts_with(text, "NUMBER OF CARTESIAN GAUSSIAN BASIS FUNCTIONS")) {
                scalar(text, "FUNCTIONS", "basis_functions", "Number of basis functions", "");
            } else if (starts_with(text, "NSTATE") && contains(text, "IROOT")) {
                root_ = whole_number(number_after(text, "IROOT"));
            }
            return;
        case 'O':
            if (starts_with(text, "OPTTOL =")) {
                if (auto const found = number_after(text, "OPTTOL")) {
                    gradient_tolerance_ = found->value;
                }
            }
            return;
        case 'P':
            if (starts_with(text, "PROPERTY VALUES FOR THE ")) {
                properties_of(std::string(first_field(text.substr(24))), "SCF");
            }
            return;
        case 'R':
            if (text == "RUN TITLE") {
                read_title();
            }
            return;
        case 'S':
            if (starts_with(text, "SPIN MULTIPLICITY")) {
                read_multiplicity(text);
            } else if (starts_with(text, "STATE #")) {
                read_tddft_state(text);
            } else if (text == "SINGLET EXCITATIONS") {
                open_tddft(text, 1);
            } else if (starts_with(text, "SUMMARY OF TDDFT RESULTS")) {
                read_tddft_summary();
            } else if (starts_with(text, "SELECTING EXCITED STATE IROOT=")) {
                read_followed_state(text);
            } else if (starts_with(text, "S-SQUARED =")) {
                scalar(text, "S-SQUARED", "spin_squared", "<S**2>", "");
            } else if (starts_with(text, "SCF IS UNCONVERGED")) {
                diagnostics_.push_back({Severity::warning, "gamess.scf_unconverged", std::string(text), span(text)});
            }
            return;
        case 'T':
            if (starts_with(text, "THE NUCLEAR REPULSION ENERGY IS")) {
                scalar(text, "ENERGY IS", "nuclear_repulsion_energy", "Nuclear repulsion energy", "hartree");
            } else if (starts_with(text, "TOTAL MULLIKEN AND LOWDIN ATOMIC POPULATIONS")) {
                read_charges();
            } else if (starts_with(text, "THERMOCHEMISTRY AT T=")) {
                read_thermochemistry(text);
            } else if (text == "TRIPLET EXCITATIONS") {
                open_tddft(text, 3);
            } else if (starts_with(text, "TRANSITION FROM THE GROUND STATE TO EXCITED STATE")) {
                read_cis_transition(text);
            }
            return;
        default:
            return;
        }
    }

    // Lines that begin with stars: the version in the banner's box, the
    // warnings and the end of an optimisation.
    void read_starred(std::string_view text) {
        if (contains(text, "GAMESS VERSION =")) {
            auto version = trim(text.substr(text.find('=') + 1));
            while (!version.empty() && version.back() == '*') {
                version.remove_suffix(1);
            }
            builder_.document().program.version = std::string(trim(version));
        } else if (starts_with(text, "*** WARNING") || starts_with(text, "* * * WARNING")) {
            read_warning(text);
        } else if (contains(text, "EQUILIBRIUM GEOMETRY LOCATED")) {
            located_ = true;
        }
    }

    // "*** WARNING ***" and the lines of its message up to the next blank
    // line; "* * * WARNING, MODE 1 HAS BEEN ..." starts its message itself.
    void read_warning(std::string_view text) {
        Line const first = line();
        auto rest = trim(text.substr(text.find("WARNING") + 7));
        while (!rest.empty() && (rest.front() == '*' || rest.front() == ',' || rest.front() == ' ')) {
            rest.remove_prefix(1);
        }
        std::string message(rest);
        Line last = first;
        for (int count = 0; count < 8 && has_next(); ++count) {
            auto const part = trim(lines_.at(lines_.index() + 1).text);
            if (part.empty()) {
                break;
            }
            next();
            last = line();
            message += message.empty() ? std::string(part) : " " + std::string(part);
        }
        diagnostics_.push_back({Severity::warning, "gamess.warning", std::move(message),
                                span_of_lines(source_, first, last)});
    }

    // The option lines up to the next blank line after the heading's dashes.
    void read_options() {
        if (!next() || !is_dashes(line().text)) {
            return;
        }
        while (next() && !trim(line().text).empty()) {
            options_.add_line(line().text);
        }
        auto& job = builder_.job(job_);
        job.method = method_of(options_);
        job.basis_set = basis_of(options_);
        job.tasks = tasks_of(options_);
        job.primary_task = job.tasks.front();
        scf_type_ = std::string(options_.value("SCFTYP"));
    }

    // "Copying input file water.inp to your run's scratch directory...",
    // which the script that runs GAMESS writes: the input becomes a source
    // of the document and its name the program's input file name.
    void read_input_name(std::string_view rest) {
        auto const name = first_field(rest);
        auto& program = builder_.document().program;
        if (name.empty() || !program.input_file_name.empty()) {
            return;
        }
        builder_.source_for(std::string(name), std::nullopt);
        program.input_file_name = std::string(name);
    }

    void read_title() {
        if (next() && is_dashes(line().text) && next()) {
            title_ = std::string(trim(line().text));
        }
    }

    void read_multiplicity(std::string_view text) {
        auto const multiplicity = whole_number(number_after(text, "SPIN MULTIPLICITY"));
        if (!multiplicity || !charge_ || *multiplicity < 1 || *multiplicity > 1000 || std::abs(*charge_) > 1000) {
            return;
        }
        state_ = chem::ElectronicState{*charge_, static_cast<std::uint32_t>(*multiplicity)};
        open_first_step();
    }

    struct Table {
        std::vector<int> numbers;
        std::vector<chem::Vec3> positions;
        SourceSpan span;
    };

    // "O  8.0  0.000  0.000  0.000": a label, the nuclear charge (0 for a
    // ghost atom) and the coordinates, one row per atom up to a blank line.
    // A table cut before its blank line is left out.
    // The cursor is on the line before the first row.
    std::optional<Table> read_table(Line const& first, double to_angstrom) {
        Table table;
        while (next()) {
            auto const values = fields(line().text);
            if (values.empty()) {
                break;
            }
            if (values.size() != 5) {
                return std::nullopt;
            }
            auto const charge = to_double(values[1]);
            auto const x = to_double(values[2]);
            auto const y = to_double(values[3]);
            auto const z = to_double(values[4]);
            if (!charge || !x || !y || !z || *charge < 0 || *charge > 200 || *charge != std::floor(*charge)) {
                return std::nullopt;
            }
            table.numbers.push_back(static_cast<int>(*charge));
            table.positions.push_back({*x * to_angstrom, *y * to_angstrom, *z * to_angstrom});
        }
        if (lines_.at_end() || table.numbers.empty()) {
            return std::nullopt;
        }
        table.span = span_of_lines(source_, first, lines_.at(lines_.index() - 1));
        return table;
    }

    // The molecule as GAMESS took it from the input, in bohr, before the
    // charge and multiplicity that make its system.
    void read_input_geometry() {
        Line const first = line();
        if (system_ || !next()) {
            return;
        }
        if (auto table = read_table(first, units::bohr_in_angstrom)) {
            input_ = std::move(table);
        }
    }

    void open_first_step() {
        if (system_ || !input_) {
            return;
        }
        takes_geometry(input_->numbers, title_, input_->span);
        auto const frame = builder_.add_frame(*system_, std::move(input_->positions), input_->span);
        step_ = builder_.add_step(job_, frame, input_->span);
        input_.reset();
    }

    // "COORDINATES OF ALL ATOMS ARE (ANGS)", then the column names, dashes
    // and the table: the geometry of each point of an optimisation. The
    // first stands for the input's geometry, printed before in bohr, and the
    // one printed after convergence is that of the last point again.
    void read_search_geometry(std::string_view text) {
        Line const first = line();
        double const to_angstrom = contains(text, "(BOHR)") ? units::bohr_in_angstrom : 1.0;
        if (!next() || !next() || !is_dashes(line().text)) {
            return;
        }
        auto table = read_table(first, to_angstrom);
        if (!table) {
            return;
        }
        open_first_step();
        if (!system_ || table->numbers.size() != atom_count_) {
            return;
        }
        auto& frames = builder_.document().frames;
        if (step_) {
            auto& step = builder_.step(*step_);
            if (step.frame_id && step.energies.empty() && !step.gradient) {
                auto& frame = frames.at(step.frame_id->value - 1);
                frame.positions_angstrom = std::move(table->positions);
                frame.source = table->span;
                step.source = table->span;
                step.native_cycle = search_point_;
                return;
            }
            if (builder_.step_is_at(*step_, table->positions)) {
                return;
            }
        }
        write_scalars();
        auto const frame = builder_.add_frame(*system_, std::move(table->positions), table->span);
        step_ = builder_.add_step(job_, frame, table->span);
        builder_.step(*step_).native_cycle = search_point_;
    }

    StepId current_step() {
        open_first_step();
        return open_step(span_of_line(source_, line()));
    }

    void extend_step(SourceSpan const& record) { builder_.extend_step(current_step(), record); }

    void add_energy(EnergyKind kind, std::string label, std::string method, double value, SourceSpan where) {
        builder_.record_energy(current_step(), kind, std::move(label), std::move(method), value, where);
    }

    // An energy that does not replace the step's primary one.
    void add_side_energy(EnergyKind kind, std::string label, std::string method, double value, SourceSpan where) {
        auto const primary = builder_.step(current_step()).primary_energy_id;
        add_energy(kind, std::move(label), std::move(method), value, where);
        if (primary) {
            builder_.step(current_step()).primary_energy_id = primary;
        }
    }

    void energy(std::string_view text, std::string_view key, EnergyKind kind, std::string label,
                std::string method) {
        if (auto const found = number_after(text, key)) {
            add_energy(kind, std::move(label), std::move(method), found->value, span(found->field));
        }
    }

    // "FINAL R-B3LYP ENERGY IS -382.0506353326 AFTER 17 ITERATIONS". A
    // numerical Hessian prints one for each displaced geometry after the
    // step's own, which is the one kept.
    void read_final_energy(std::string_view text) {
        auto const method = trim(text.substr(6, text.find(" ENERGY IS") - 6));
        auto const found = number_after(text, "ENERGY IS");
        if (!found || method.empty()) {
            return;
        }
        auto const step = current_step();
        for (auto const& known : builder_.step(step).energies) {
            if (known.kind == EnergyKind::scf) {
                return;
            }
        }
        add_energy(EnergyKind::scf, "FINAL ENERGY", std::string(method), found->value, span(found->field));
    }

    // "CCSD(T) ENERGY:  -76.2299053356   CORR.E=  -0.2107439309", and the
    // MBPT(2), CCSD[T] and CCD lines of the same summary.
    void read_cluster_energy(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 3 || values[1] != "ENERGY:") {
            return;
        }
        auto const name = std::string(values[0]);
        energy(text, "ENERGY:", EnergyKind::correlated, name, name == "MBPT(2)" ? "MP2" : name);
    }

    // "GRIMME'S DISPERSION ENERGY = -0.0147199333", which the final energy
    // printed before it already holds.
    void read_dispersion(std::string_view text) {
        if (auto const found = number_after(text, "ENERGY")) {
            add_side_energy(EnergyKind::unknown, "GRIMME'S DISPERSION ENERGY", "DFT-D", found->value,
                            span(found->field));
        }
    }

    // Dashes, the column names, dashes, and a row per atom up to a blank
    // line: number, label, nuclear charge and dE/dx dE/dy dE/dz in
    // hartree/bohr.
    void read_gradient() {
        Line const first = line();
        if (!next() || !next() || !starts_with(trim(line().text), "ATOM") || !next() || !is_dashes(line().text)) {
            return;
        }
        std::vector<chem::Vec3> vectors;
        while (next()) {
            auto const values = fields(line().text);
            if (values.size() != 6) {
                break;
            }
            auto const x = to_double(values[3]);
            auto const y = to_double(values[4]);
            auto const z = to_double(values[5]);
            if (!x || !y || !z) {
                return;
            }
            vectors.push_back({*x, *y, *z});
        }
        if (lines_.at_end() || vectors.empty() || vectors.size() != atom_count_) {
            return;
        }
        auto const where = span_of_lines(source_, first, lines_.at(lines_.index() - 1));
        GradientRecord record;
        record.vectors = std::move(vectors);
        record.source = where;
        builder_.step(current_step()).gradient = std::move(record);
        extend_step(where);
        step_back();
    }

    // "MAXIMUM GRADIENT = 0.0013457    RMS GRADIENT = 0.0004696"
    void read_gradient_line(std::string_view text) {
        if (step_) {
            read_gradient_summary(builder_.step(*step_).gradient, text, "MAXIMUM GRADIENT", "RMS GRADIENT");
        }
    }

    // "NSERCH:   0  E=  -382.0506353326  GRAD. MAX=  0.0013457  R.M.S.=  0.0004696":
    // GAMESS stops when the largest gradient component is below OPTTOL and
    // their root mean square below a third of it.
    void read_search_point(std::string_view text) {
        auto const max = number_after(text, "GRAD. MAX=");
        auto const rms = number_after(text, "R.M.S.=");
        if (!max || !rms) {
            return;
        }
        ConvergenceRecord record;
        std::optional<double> const max_threshold = gradient_tolerance_;
        std::optional<double> rms_threshold;
        std::optional<bool> max_satisfied;
        std::optional<bool> rms_satisfied;
        if (gradient_tolerance_) {
            rms_threshold = *gradient_tolerance_ / 3.0;
            max_satisfied = max->value < *max_threshold;
            rms_satisfied = rms->value < *rms_threshold;
            record.status = *max_satisfied && *rms_satisfied ? ConvergenceStatus::converged
                                                             : ConvergenceStatus::not_converged;
        }
        record.criteria.push_back({CriterionKind::max_force, max->value, max_threshold, max_satisfied, "hartree/bohr"});
        record.criteria.push_back({CriterionKind::rms_force, rms->value, rms_threshold, rms_satisfied, "hartree/bohr"});
        record.source = span(text);
        auto& step = builder_.step(current_step());
        step.convergence = std::move(record);
        if (auto const cycle = small_integer(first_field(text.substr(7)))) {
            step.native_cycle = *cycle;
        }
        extend_step(span(text));
    }

    // Rows of five: the modes' numbers, then "FREQUENCY:", "SYMMETRY:",
    // "REDUCED MASS:" and "IR INTENSITY:", a blank line, and three rows per
    // atom ("1  N  X ...", "Y ...", "Z ..."); the Sayvetz conditions follow
    // each group. An imaginary frequency carries an "I" after it.
    void read_vibrations() {
        Line const first = line();
        std::size_t const atoms = atom_count_;
        std::vector<VibrationalMode> modes;
        std::size_t last = lines_.index();
        while (!lines_.at_end()) {
            auto const text = trim(line().text);
            if (starts_with(text, "FREQUENCY:")) {
                auto group = read_mode_group(text, atoms);
                if (group.empty()) {
                    break;
                }
                last = lines_.index();
                for (auto& mode : group) {
                    modes.push_back(std::move(mode));
                }
            } else if (starts_with(text, "REFERENCE ON SAYVETZ") || starts_with(text, "MODE FREQ") ||
                       starts_with(text, "THERMOCHEMISTRY") || is_termination(text)) {
                break;
            }
            next();
        }
        lines_.seek(last);
        modes.erase(std::remove_if(modes.begin(), modes.end(),
                                   [this](VibrationalMode const& mode) {
                                       return mode.index && *mode.index >= rigid_modes_.first &&
                                              *mode.index <= rigid_modes_.second;
                                   }),
                    modes.end());
        if (modes.empty()) {
            return;
        }
        VibrationalBlock block;
        block.modes = std::move(modes);
        builder_.add_analysis(job_, current_step(), std::move(block), span_of_lines(source_, first, line()));
    }

    // One group, the cursor on its "FREQUENCY:" line; empty unless whole.
    std::vector<VibrationalMode> read_mode_group(std::string_view text, std::size_t atoms) {
        std::vector<VibrationalMode> group;
        auto const numbers = lines_.index() > 0 ? fields(lines_.at(lines_.index() - 1).text)
                                                : Fields{};
        auto const values = fields(text.substr(10));
        for (std::size_t k = 0; k < values.size(); ++k) {
            auto const value = to_double(values[k]);
            if (!value) {
                return {};
            }
            VibrationalMode mode;
            mode.frequency_cm1 = *value;
            if (k + 1 < values.size() && values[k + 1] == "I") {
                mode.frequency_cm1 = -*value;
                ++k;
            }
            group.push_back(std::move(mode));
        }
        if (group.empty() || atoms == 0) {
            return {};
        }
        if (numbers.size() == group.size() && all_integers(numbers)) {
            for (std::size_t k = 0; k < group.size(); ++k) {
                group[k].index = small_integer(numbers[k]);
            }
        }
        while (next()) {
            auto const row = trim(line().text);
            auto const colon = row.find(':');
            if (row.empty() || colon == std::string_view::npos) {
                break;
            }
            auto const label = row.substr(0, colon);
            auto const columns = fields(row.substr(colon + 1));
            if (columns.size() != group.size()) {
                continue;
            }
            for (std::size_t k = 0; k < group.size(); ++k) {
                if (label == "SYMMETRY") {
                    group[k].symmetry = std::string(columns[k]);
                } else if (label == "REDUCED MASS") {
                    group[k].reduced_mass_amu = to_double(columns[k]);
                } else if (label == "IR INTENSITY") {
                    if (auto const value = to_double(columns[k])) {
                        group[k].ir_intensity_km_per_mol =
                            *value * units::ir_intensity_debye2_per_amu_angstrom2_in_km_per_mol;
                    }
                }
            }
        }
        static constexpr double chem::Vec3::*axes[] = {&chem::Vec3::x, &chem::Vec3::y, &chem::Vec3::z};
        for (auto& mode : group) {
            mode.displacements.resize(atoms);
        }
        for (std::size_t atom = 0; atom < atoms; ++atom) {
            for (auto const axis : axes) {
                if (!next()) {
                    return {};
                }
                auto const row = fields(line().text);
                if (row.size() < group.size() + 1) {
                    return {};
                }
                std::size_t const first_value = row.size() - group.size();
                for (std::size_t k = 0; k < group.size(); ++k) {
                    group[k].displacements[atom].*axis = to_double(row[first_value + k]).value_or(0.0);
                }
            }
        }
        return group;
    }

    // "MODES    1 TO    6 ARE TAKEN AS ROTATIONS AND TRANSLATIONS."
    void read_rigid_modes(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 4) {
            return;
        }
        auto const from = small_integer(values[1]);
        auto const to = small_integer(values[3]);
        if (from && to) {
            rigid_modes_ = {*from, *to};
        }
    }

    // "1  N  14.00307", one row per atom, for the molecule's mass.
    void read_masses() {
        double total = 0.0;
        if (!next()) {
            return;
        }
        while (next()) {
            auto const values = fields(line().text);
            if (values.size() != 3) {
                break;
            }
            auto const mass = to_double(values[2]);
            if (!mass) {
                break;
            }
            total += *mass;
        }
        mass_amu_ = total > 0.0 ? std::optional<double>(total) : std::nullopt;
        step_back();
    }

    // The zero-point energy in hartree, then tables in kJ/mol whose "TOTAL"
    // rows give E, H and G of the nuclear motion at this temperature, the
    // zero-point energy included.
    void read_thermochemistry(std::string_view text) {
        Line const first = line();
        ThermochemistryBlock block;
        if (auto const found = number_after(text, "T=")) {
            block.temperature_kelvin = found->value;
        }
        block.total_mass_amu = mass_amu_;
        bool kilojoules = false;
        bool complete = false;
        while (next()) {
            auto const row = trim(line().text);
            if (starts_with(row, "P=")) {
                if (auto const found = number_after(row, "P=")) {
                    block.pressure_atmosphere = found->value / units::atmosphere_in_pascal;
                }
            } else if (starts_with(row, "THE HARMONIC ZERO POINT ENERGY IS") && next()) {
                auto const values = fields(line().text);
                if (values.size() >= 2 && values[1] == "HARTREE/MOLECULE") {
                    block.zero_point_energy = to_double(values[0]);
                }
            } else if (starts_with(row, "KJ/MOL")) {
                kilojoules = true;
            } else if (kilojoules && starts_with(row, "TOTAL")) {
                auto const values = fields(row);
                if (values.size() >= 4) {
                    auto in_hartree = [](std::string_view field) -> std::optional<double> {
                        auto const value = to_double(field);
                        return value ? std::optional<double>(*value / units::hartree_in_kj_per_mol) : std::nullopt;
                    };
                    block.thermal_correction = in_hartree(values[1]);
                    block.enthalpy_correction = in_hartree(values[2]);
                    block.gibbs_correction = in_hartree(values[3]);
                    complete = true;
                }
                break;
            } else if (is_termination(row)) {
                step_back();
                break;
            }
        }
        if (!complete) {
            return;
        }
        auto const step = current_step();
        for (auto const& energy : builder_.step(step).energies) {
            if (builder_.step(step).primary_energy_id && energy.id == *builder_.step(step).primary_energy_id) {
                block.electronic_energy = energy.value;
            }
        }
        if (block.electronic_energy) {
            auto plus = [&](std::optional<double> correction) {
                return correction ? std::optional<double>(*block.electronic_energy + *correction) : std::nullopt;
            };
            block.thermal_energy = plus(block.thermal_correction);
            block.enthalpy = plus(block.enthalpy_correction);
            block.gibbs_free_energy = plus(block.gibbs_correction);
        }
        builder_.add_analysis(job_, step, block, span_of_lines(source_, first, line()));
    }

    // Groups of up to five orbitals: their numbers, energies and
    // symmetries, then a row of coefficients per basis function up to a
    // blank line. The occupations follow from the electron counts.
    void read_orbitals() {
        Line const first = line();
        if (!next() || !is_dashes(line().text)) {
            return;
        }
        std::vector<Orbital> orbitals;
        Line last = line();
        while (next()) {
            auto const numbers = fields(line().text);
            if (numbers.empty()) {
                continue;
            }
            if (!all_integers(numbers) || !has_next()) {
                break;
            }
            next();
            auto const energies = fields(line().text);
            if (energies.size() != numbers.size() || !has_next()) {
                break;
            }
            next();
            auto const symmetries = fields(line().text);
            bool const labelled = symmetries.size() == numbers.size() && !to_double(symmetries.front());
            for (std::size_t k = 0; k < numbers.size(); ++k) {
                auto const energy = to_double(energies[k]);
                if (!energy) {
                    return;
                }
                Orbital orbital;
                orbital.index = static_cast<int>(orbitals.size());
                orbital.energy = *energy;
                if (labelled) {
                    orbital.symmetry = std::string(symmetries[k]);
                }
                orbitals.push_back(std::move(orbital));
            }
            // The coefficients, a row per basis function.
            if (!skip_to_blank()) {
                return;
            }
            last = line();
        }
        if (lines_.at_end() || orbitals.empty()) {
            return;
        }
        step_back();
        auto const spin = scf_type_ == "UHF" ? orbital_spin_ : SpinChannel::none;
        int const alpha = whole_number(alpha_electrons_).value_or(0);
        int const beta = whole_number(beta_electrons_).value_or(0);
        for (auto& orbital : orbitals) {
            int const i = *orbital.index;
            double occupation = 0.0;
            if (spin == SpinChannel::alpha) {
                occupation = i < alpha ? 1.0 : 0.0;
            } else if (spin == SpinChannel::beta) {
                occupation = i < beta ? 1.0 : 0.0;
            } else {
                occupation = (i < alpha ? 1.0 : 0.0) + (i < beta ? 1.0 : 0.0);
            }
            orbital.spin = spin;
            orbital.occupation = occupation;
            orbital.kind = occupation > 0.0 ? "occupied" : "virtual";
        }
        OrbitalSetBlock block;
        block.spin = spin;
        block.kind = "canonical";
        block.orbitals = std::move(orbitals);
        builder_.add_analysis(job_, current_step(), std::move(block), span_of_lines(source_, first, last));
    }

    // "ATOM  MULL.POP.  CHARGE  LOW.POP.  CHARGE" and a row per atom. In an
    // unrestricted run a parallel GAMESS may print each atom's populations
    // alone before its row with the charges; those rows are passed over.
    void read_charges() {
        Line const first = line();
        if (!next() || !contains(line().text, "CHARGE")) {
            return;
        }
        AtomicChargeBlock mulliken{"Mulliken", {}};
        AtomicChargeBlock lowdin{"Lowdin", {}};
        while (next()) {
            auto const values = fields(line().text);
            if (values.size() == 4) {
                continue;
            }
            if (values.size() != 6) {
                break;
            }
            auto const index = small_integer(values[0]);
            auto const numbers = std::array{to_double(values[2]), to_double(values[3]), to_double(values[4]),
                                            to_double(values[5])};
            if (!index || *index < 1 || std::any_of(numbers.begin(), numbers.end(), [](auto n) { return !n; })) {
                break;
            }
            AtomicChargeRecord record;
            record.atom_index = *index - 1;
            record.element = std::string(values[1]);
            record.population = numbers[0];
            record.charge = numbers[1];
            mulliken.records.push_back(record);
            record.population = numbers[2];
            record.charge = numbers[3];
            lowdin.records.push_back(std::move(record));
        }
        if (lines_.at_end() || mulliken.records.empty()) {
            return;
        }
        auto const where = span_of_lines(source_, first, lines_.at(lines_.index() - 1));
        auto const step = current_step();
        builder_.add_analysis(job_, step, std::move(mulliken), where);
        builder_.add_analysis(job_, step, std::move(lowdin), where);
        step_back();
    }

    void properties_of(std::string method, char const* density) {
        properties_method_ = std::move(method);
        properties_density_ = density;
    }

    // "DX DY DZ /D/ (DEBYE)" and the dipole on the next line, a few lines
    // after the heading.
    void read_dipole() {
        Line const first = line();
        for (int count = 0; count < 8 && next(); ++count) {
            if (!starts_with(trim(line().text), "DX")) {
                continue;
            }
            if (!next()) {
                return;
            }
            auto const values = fields(line().text);
            if (values.size() != 4) {
                return;
            }
            auto const x = to_double(values[0]);
            auto const y = to_double(values[1]);
            auto const z = to_double(values[2]);
            auto const total = to_double(values[3]);
            if (!x || !y || !z || !total) {
                return;
            }
            auto moment = dipole_from_debye(*x, *y, *z, *total);
            moment.method = properties_method_;
            moment.density_type = properties_density_;
            moment.source = span_of_lines(source_, first, line());
            DipoleBlock block;
            block.moments.push_back(std::move(moment));
            builder_.add_analysis(job_, current_step(), std::move(block), span_of_lines(source_, first, line()));
            return;
        }
    }

    void open_excited(std::string method, std::string section) {
        close_excited();
        excited_.emplace();
        excited_->method = std::move(method);
        excited_->section = std::move(section);
        excited_step_ = current_step();
        excited_span_ = span_of_line(source_, line());
    }

    void add_state(ExcitedState state) {
        if (!excited_) {
            return;
        }
        excited_span_.end = state.source->end;
        excited_->states.push_back(std::move(state));
    }

    void close_excited() {
        if (excited_ && !excited_->states.empty()) {
            builder_.add_analysis(job_, excited_step_, std::move(*excited_), excited_span_);
        }
        excited_.reset();
    }

    ExcitedState* state_numbered(long long index) {
        if (!excited_) {
            return nullptr;
        }
        for (auto& state : excited_->states) {
            if (state.index == index) {
                return &state;
            }
        }
        return nullptr;
    }

    void open_tddft(std::string_view heading, int multiplicity) {
        open_excited("TDDFT", std::string(heading));
        excited_multiplicity_ = multiplicity;
    }

    // "STATE #   1  ENERGY =    4.487681 EV", its oscillator strength and
    // symmetry, and its promotions "34  36  -0.106535  -0.006257"
    // (occupied, virtual, excitation and de-excitation amplitudes).
    void read_tddft_state(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 6 || values.back() != "EV") {
            return;
        }
        auto const index = small_integer(values[2]);
        auto const ev = number_after(text, "ENERGY =");
        if (!index || !ev) {
            return;
        }
        ExcitedState state;
        state.index = *index;
        state.method = excited_ ? excited_->method : "TDDFT";
        state.excitation_energy = ev->value / units::hartree_in_ev;
        state.multiplicity = excited_multiplicity_;
        state.multiplicity_label = multiplicity_name(excited_multiplicity_);
        Line const first = line();
        Line last = first;
        while (next()) {
            auto const row = trim(line().text);
            if (row.empty()) {
                if (!state.contributions.empty()) {
                    break;
                }
                continue;
            }
            if (starts_with(row, "STATE #") || starts_with(row, "SUMMARY")) {
                break;
            }
            last = line();
            if (starts_with(row, "OSCILLATOR STRENGTH")) {
                if (auto const found = number_after(row, "=")) {
                    state.oscillator_strength = found->value;
                }
            } else if (starts_with(row, "SYMMETRY OF STATE")) {
                auto const parts = fields(row.substr(row.find('=') + 1));
                if (!parts.empty()) {
                    state.symmetry = std::string(parts.front());
                }
            } else if (auto const parts = fields(row); parts.size() == 4) {
                auto const from = small_integer(parts[0]);
                auto const to = small_integer(parts[1]);
                auto const coefficient = to_double(parts[2]);
                if (from && to && coefficient) {
                    ExcitationContribution contribution;
                    contribution.label = std::string(parts[0]) + " -> " + std::string(parts[1]);
                    contribution.from_orbital = from;
                    contribution.to_orbital = to;
                    contribution.coefficient = coefficient;
                    state.contributions.push_back(std::move(contribution));
                }
            }
        }
        state.source = span_of_lines(source_, first, last);
        if (!excited_) {
            open_excited("TDDFT", "");
        }
        add_state(std::move(state));
        if (!lines_.at_end()) {
            step_back();
        }
    }

    // "  1  BU  -384.4995231645  4.488  2.4722 0.0498 0.0000  0.6722": the
    // total energy of each state, below the ground state's row.
    void read_tddft_summary() {
        while (next()) {
            auto const values = fields(line().text);
            if (values.size() < 4) {
                if (values.empty() && state_numbered(1) && state_numbered(1)->total_energy) {
                    break;
                }
                continue;
            }
            auto const index = to_integer(values[0]);
            auto const total = to_double(values[2]);
            if (!index || !total) {
                continue;
            }
            if (auto* state = state_numbered(*index)) {
                state->total_energy = *total;
            }
        }
        close_excited();
    }

    // "SELECTING EXCITED STATE IROOT=   1 AT E=  -384.4995231645": the state
    // that the run goes on with, whose total becomes the step's energy.
    void read_followed_state(std::string_view text) {
        auto const root = number_after(text, "IROOT=");
        auto const found = number_after(text, "AT E=");
        if (!root || !found) {
            return;
        }
        add_energy(EnergyKind::excited_state_total, "TDDFT state " + std::string(root->field), "TDDFT", found->value,
                   span(found->field));
    }

    // "EXCITED STATE   1  ENERGY=  -74.5903204319  S = 1.0  SPACE SYM = A",
    // then its promotions between dashes: "ALPHA  5  6  0.70710678".
    void read_cis_state(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 3) {
            return;
        }
        auto const index = small_integer(values[2]);
        auto const total = number_after(text, "ENERGY=");
        auto const spin = number_after(text, "S =");
        if (!index || !total) {
            return;
        }
        if (!excited_ || excited_->method != "CIS") {
            open_excited("CIS", "CI-SINGLES");
        }
        ExcitedState state;
        state.index = *index;
        state.method = "CIS";
        state.total_energy = total->value;
        if (spin && spin->value >= 0 && spin->value < 100) {
            int const multiplicity = static_cast<int>(std::lround(2.0 * spin->value + 1.0));
            state.multiplicity = multiplicity;
            state.multiplicity_label = multiplicity_name(multiplicity);
        }
        auto const symmetry = text.find("SPACE SYM =");
        if (symmetry != std::string_view::npos) {
            auto const parts = fields(text.substr(symmetry + 11));
            if (!parts.empty()) {
                state.symmetry = std::string(parts.front());
            }
        }
        auto const where = span(total->field);
        if (root_ == *index) {
            add_energy(EnergyKind::excited_state_total, "CIS state " + std::to_string(*index), "CIS", total->value,
                       where);
        } else {
            add_side_energy(EnergyKind::excited_state_total, "CIS state " + std::to_string(*index), "CIS",
                            total->value, where);
        }
        Line const first = line();
        Line last = first;
        int dashes = 0;
        while (dashes < 3 && next()) {
            auto const row = trim(line().text);
            if (is_dashes(row)) {
                ++dashes;
                last = line();
                continue;
            }
            auto const parts = fields(row);
            if (dashes == 0 && !row.empty()) {
                step_back();
                break;
            }
            if (dashes != 2 || parts.size() != 4) {
                continue;
            }
            auto const from = small_integer(parts[1]);
            auto const to = small_integer(parts[2]);
            auto const coefficient = to_double(parts[3]);
            if (!from || !to || !coefficient || (parts[0] != "ALPHA" && parts[0] != "BETA")) {
                continue;
            }
            char const channel = parts[0] == "ALPHA" ? 'A' : 'B';
            ExcitationContribution contribution;
            contribution.label = std::string(row.substr(0, parts[2].data() - row.data() + parts[2].size()));
            contribution.from_orbital = from;
            contribution.to_orbital = to;
            contribution.from_spin = channel;
            contribution.to_spin = channel;
            contribution.coefficient = coefficient;
            state.contributions.push_back(std::move(contribution));
        }
        state.source = span_of_lines(source_, first, last);
        add_state(std::move(state));
    }

    // "  3A  0.3740083600  10.1773  234.6938  82085.35  121.82", in the
    // order of the states above: excitation energies in hartree, with the
    // wavenumber and wavelength as printed.
    void read_cis_table() {
        if (!excited_ || excited_->method != "CIS") {
            return;
        }
        if (!next() || !next() || !is_dashes(line().text)) {
            return;
        }
        for (auto& state : excited_->states) {
            if (!next()) {
                return;
            }
            auto const values = fields(line().text);
            if (values.size() != 6) {
                step_back();
                return;
            }
            state.excitation_energy = to_double(values[1]);
            state.reported_wavenumber_cm1 = to_double(values[4]);
            state.reported_wavelength_nm = to_double(values[5]);
        }
    }

    // "TRANSITION FROM THE GROUND STATE TO EXCITED STATE  2", then its
    // dipole and "OSCILLATOR STRENGTH = 0.001677"; a spin-forbidden one
    // "IS OPTICALLY INACTIVE," and has no strength.
    void read_cis_transition(std::string_view text) {
        auto const index = whole_number(number_after(text, "EXCITED STATE"));
        if (!index) {
            return;
        }
        auto* state = state_numbered(*index);
        if (state == nullptr) {
            return;
        }
        if (contains(text, "OPTICALLY INACTIVE")) {
            state->oscillator_strength = 0.0;
            return;
        }
        for (int count = 0; count < 10 && next(); ++count) {
            auto const row = trim(line().text);
            if (starts_with(row, "OSCILLATOR STRENGTH")) {
                if (auto const found = number_after(row, "=")) {
                    state->oscillator_strength = found->value;
                }
                return;
            }
            if (starts_with(row, "TRANSITION FROM")) {
                step_back();
                return;
            }
        }
    }

    void scalar(std::string_view text, std::string_view key, char const* name, char const* label,
                char const* unit) {
        if (auto const found = number_after(text, key)) {
            set_property(scalars_, ScalarProperty{name, label, found->value, unit, span(found->field)});
        }
    }

    // The scalars read since the last step opened, for that step.
    void write_scalars() {
        if (scalars_.properties.empty()) {
            return;
        }
        auto const where = span_of_properties(scalars_);
        builder_.add_analysis(job_, current_step(), std::move(scalars_), where);
        scalars_ = {};
    }

    // "EXECUTION OF GAMESS TERMINATED NORMALLY", or "-ABNORMALLY-" after the
    // line that says why.
    void read_termination(std::string_view text) {
        auto& termination = builder_.job(job_).termination;
        if (contains(text, "NORMALLY") && !contains(text, "ABNORMALLY")) {
            termination.kind = TerminationKind::normal;
            termination.reason = std::string(text);
            termination.source = span(text);
            return;
        }
        diagnostics_.push_back(error_termination(termination, lines_, lines_.index(), 0, source_,
                                                 "WORDS OF DYNAMIC MEMORY USED", "gamess.error_termination",
                                                 "GAMESS"));
    }

    void finish() {
        close_excited();
        open_first_step();
        if (located_ && step_ && builder_.step(*step_).convergence) {
            builder_.step(*step_).convergence->status = ConvergenceStatus::converged;
        }
        write_scalars();
        finish_job(title_);
    }

    model::SourceId source_;
    LineCursor& lines_;
    std::vector<Diagnostic>& diagnostics_;

    Options options_;
    std::string scf_type_;
    std::string title_;
    std::optional<int> charge_;
    std::optional<Table> input_;
    std::optional<int> search_point_;
    std::optional<double> gradient_tolerance_;
    bool located_ = false;
    std::optional<NumberField> alpha_electrons_;
    std::optional<NumberField> beta_electrons_;
    SpinChannel orbital_spin_ = SpinChannel::none;
    std::pair<int, int> rigid_modes_{0, -1};
    std::optional<double> mass_amu_;
    std::string properties_method_;
    std::string properties_density_;
    std::optional<ExcitedStateBlock> excited_;
    SourceSpan excited_span_;
    std::optional<StepId> excited_step_;
    int excited_multiplicity_ = 0;
    std::optional<int> root_;
    ScalarPropertyBlock scalars_;
};

}  // namespace

bool recognises(std::string_view text) {
    // The banner comes after the lines of the script that ran GAMESS, a few
    // kilobytes at the most.
    auto const head = text.substr(0, 1 << 14);
    return contains(head, "GAMESS VERSION =") || contains(head, "EXECUTION OF GAMESS BEGUN");
}

model::ParseResult<Document> read(std::string_view text, std::string_view file_name) {
    model::ParseResult<Document> result;
    DocumentBuilder builder;
    auto const source = builder.add_output(file_name, text, ProgramKind::gamess, "GAMESS");
    LineCursor lines(text);

    Reader(builder, source, lines, result.diagnostics).read();

    builder.finish_import(result, lines, source, "gamess.truncated", "GAMESS");
    return result;
}

}  // namespace morv::qc::import::gamess
