#include "orca/orca_reader.hpp"

#include "orca/simple_input.hpp"

#include "framework/document_builder.hpp"
#include "framework/job_lines.hpp"
#include "framework/job_records.hpp"
#include "framework/text.hpp"
#include "framework/units.hpp"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morv::qc::import::orca {

namespace {

using model::Diagnostic;
using model::Severity;
using model::SourceSpan;

// ORCA writes "Key ... value", "Key : value" and "Key = value"; the first
// field after the key and its separators is the number.
struct Number {
    double value = 0.0;
    std::string_view field;
};

std::optional<Number> number_after(std::string_view text, std::string_view key) {
    auto const at = text.find(key);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    for (auto field : fields(text.substr(at + key.size()))) {
        if (field.find_first_not_of(".:=") == std::string_view::npos) {
            continue;
        }
        if (auto const value = to_double(field)) {
            return Number{*value, field};
        }
        return std::nullopt;
    }
    return std::nullopt;
}

int atomic_number_of(std::string_view symbol) {
    for (int z = 1; z <= 118; ++z) {
        auto const known = element_symbol(z);
        if (known.size() == symbol.size() &&
            std::equal(known.begin(), known.end(), symbol.begin(), [](char a, char b) {
                return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
            })) {
            return z;
        }
    }
    return 0;
}

std::optional<int> small_integer(std::string_view field) {
    auto const value = to_integer(field);
    if (!value || *value < -1000000 || *value > 1000000) {
        return std::nullopt;
    }
    return static_cast<int>(*value);
}

bool is_normal_termination(std::string_view trimmed) { return trimmed == "****ORCA TERMINATED NORMALLY****"; }

bool is_error_termination(std::string_view trimmed) {
    return starts_with(trimmed, "ORCA finished by error termination") || contains(trimmed, "aborting the run");
}

// What the echo of the input says about one job: the input of a run holds
// one part for each job, "$new_job" between them.
struct JobInput {
    SimpleInput simple;
    bool excited_block = false;
    bool scan_block = false;
    std::optional<chem::ElectronicState> state;
};

struct RunInput {
    std::string file_name;
    std::vector<JobInput> jobs;
};

// "* xyz 0 1", "*xyzfile 0 1 water.xyz", "* int -1 2": the charge and
// multiplicity of the job's molecule.
std::optional<chem::ElectronicState> state_of_coordinates(std::string_view text) {
    text.remove_prefix(1);
    auto const values = fields(text);
    if (values.size() < 3) {
        return std::nullopt;
    }
    auto const charge = small_integer(values[1]);
    auto const multiplicity = small_integer(values[2]);
    if (!charge || !multiplicity || *multiplicity < 1) {
        return std::nullopt;
    }
    return chem::ElectronicState{*charge, static_cast<std::uint32_t>(*multiplicity)};
}

JobInput job_input(std::vector<std::string_view> const& lines) {
    JobInput job;
    std::string keywords;
    for (auto const line : lines) {
        auto const lowered = ascii_lower(line);
        if (starts_with(line, "!")) {
            keywords += std::string(keywords.empty() ? "" : " ") + std::string(line);
        } else if (starts_with(lowered, "%tddft") || starts_with(lowered, "%cis") || starts_with(lowered, "%rocis")) {
            job.excited_block = true;
        } else if (starts_with(line, "*") && !job.state) {
            job.state = state_of_coordinates(line);
        } else if (contains(lowered, "scan")) {
            job.scan_block = true;
        }
        // An EOM, STEOM or ADC run of %mdci asks for states by their number.
        job.excited_block = job.excited_block || contains(lowered, "nroots");
    }
    job.simple = parse_simple_input(keywords);
    return job;
}

// The echo stands between "INPUT FILE" and "****END OF INPUT****", each
// line as "| 12> text".
RunInput read_input_echo(LineCursor const& lines) {
    RunInput input;
    std::vector<std::string_view> part;
    bool inside = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto const text = trim(lines.at(i).text);
        if (!inside) {
            if (starts_with(text, "NAME = ")) {
                input.file_name = std::string(trim(text.substr(7)));
                inside = true;
            }
            continue;
        }
        if (!starts_with(text, "|")) {
            break;
        }
        auto const mark = text.find('>');
        if (mark == std::string_view::npos) {
            continue;
        }
        auto const line = trim(text.substr(mark + 1));
        if (line == "****END OF INPUT****") {
            break;
        }
        if (ascii_lower(line) == "$new_job") {
            input.jobs.push_back(job_input(part));
            part.clear();
            continue;
        }
        part.push_back(line);
    }
    input.jobs.push_back(job_input(part));
    return input;
}

// Lines [begin, end) of one job and the input part it runs. Each job after
// the first of a run starts at ORCA's "$$$ JOB NUMBER 2 $$$" banner; an
// optimisation followed by frequencies is two jobs, the second starting at
// the final evaluation at the stationary point.
struct JobRange {
    std::size_t begin = 0;
    std::size_t end = 0;
    JobInput input;
    // The optimisation of such a pair, which ends where it converged.
    bool optimisation_part = false;
};

bool has_task(std::vector<TaskKind> const& tasks, TaskKind task) {
    return std::find(tasks.begin(), tasks.end(), task) != tasks.end();
}

void split_optimisation_and_frequencies(LineCursor const& lines, std::vector<JobRange>& jobs) {
    auto& last = jobs.back();
    auto const& tasks = last.input.simple.tasks;
    if (!has_task(tasks, TaskKind::optimization) || !has_task(tasks, TaskKind::frequency)) {
        return;
    }
    for (std::size_t i = last.begin + 1; i < last.end; ++i) {
        if (contains(lines.at(i).text, "FINAL ENERGY EVALUATION AT THE STATIONARY POINT")) {
            // The box of stars above the words opens the frequency job.
            std::size_t const split = starts_with(trim(lines.at(i - 1).text), "*") ? i - 1 : i;
            JobRange frequencies{split, last.end, last.input, false};
            frequencies.input.simple.tasks.erase(std::remove(frequencies.input.simple.tasks.begin(),
                                                             frequencies.input.simple.tasks.end(),
                                                             TaskKind::optimization),
                                                 frequencies.input.simple.tasks.end());
            last.end = split;
            last.optimisation_part = true;
            last.input.simple.tasks.erase(
                std::remove(last.input.simple.tasks.begin(), last.input.simple.tasks.end(), TaskKind::frequency),
                last.input.simple.tasks.end());
            jobs.push_back(std::move(frequencies));
            return;
        }
    }
}

std::vector<JobRange> split_jobs(LineCursor const& lines, RunInput const& run) {
    std::vector<std::size_t> starts{0};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto const text = trim(lines.at(i).text);
        if (starts_with(text, "$$$") && contains(text, "JOB NUMBER")) {
            starts.push_back(i);
        }
    }
    std::vector<JobRange> jobs;
    for (std::size_t j = 0; j < starts.size(); ++j) {
        std::size_t const end = j + 1 < starts.size() ? starts[j + 1] : lines.size();
        if (end <= starts[j]) {
            continue;
        }
        jobs.push_back({starts[j], end, run.jobs.at(std::min(j, run.jobs.size() - 1)), false});
        split_optimisation_and_frequencies(lines, jobs);
    }
    return jobs;
}

std::optional<ExcitationContribution> contribution_of(std::string_view text);

class JobReader : JobLines, JobRecords {
public:
    JobReader(DocumentBuilder& builder, model::SourceId source, LineCursor& lines, JobRange const& range,
              std::vector<Diagnostic>& diagnostics)
        : JobLines(lines, range.end, source), JobRecords(builder), range_(range), input_(range.input),
          diagnostics_(diagnostics) {}

    void read() {
        CalculationJob job;
        job.source = span_of_lines(source_, lines_.at(range_.begin), lines_.at(range_.end - 1));
        job.keywords = input_.simple.text;
        job.method = input_.simple.method;
        job.basis_set = input_.simple.basis_set;
        job.tasks = input_.simple.tasks;
        job_ = builder_.add_job(std::move(job));
        if (input_.scan_block) {
            add_task(TaskKind::scan);
        }
        if (input_.excited_block) {
            add_task(TaskKind::excited_state);
        }
        state_ = input_.state;
        if (!state_) {
            read_state_from_settings();
        }
        lines_.seek(range_.begin);
        while (lines_.index() < range_.end) {
            read_line();
        }
        read_notes();
        finish();
    }

private:

    void add_task(TaskKind task) {
        auto& tasks = builder_.job(job_).tasks;
        if (std::find(tasks.begin(), tasks.end(), task) == tasks.end()) {
            tasks.push_back(task);
        }
    }

    // " Total Charge           Charge          ....    0" and the
    // multiplicity below it, for an input that gives its molecule in a file.
    void read_state_from_settings() {
        std::optional<int> charge;
        for (std::size_t i = range_.begin; i < range_.end; ++i) {
            auto const text = trim(lines_.at(i).text);
            if (starts_with(text, "Total Charge") && !charge) {
                auto const values = fields(text);
                charge = small_integer(values.back());
            } else if (starts_with(text, "Multiplicity           Mult") && charge) {
                auto const multiplicity = small_integer(fields(text).back());
                if (multiplicity && *multiplicity > 0) {
                    state_ = chem::ElectronicState{*charge, static_cast<std::uint32_t>(*multiplicity)};
                }
                return;
            }
        }
    }

    void read_line() {
        auto const text = trim(line().text);
        if (text.empty()) {
            lines_.advance();
            return;
        }
        switch (text.front()) {
        case '*':
            read_starred(text);
            break;
        case '-':
            if (is_dashes(text)) {
                read_section_header();
            } else if (contains(text, "|Geometry convergence|")) {
                read_convergence();
            }
            break;
        default:
            read_plain(text);
            break;
        }
        // A reader that read a table leaves the cursor on its last line, or
        // past the job's end when the job ended inside the table.
        if (lines_.index() < range_.end) {
            lines_.advance();
        }
    }

    void read_starred(std::string_view text) {
        if (is_normal_termination(text)) {
            end_normally("ORCA TERMINATED NORMALLY", span(text));
        } else if (contains(text, "GEOMETRY OPTIMIZATION CYCLE")) {
            auto const values = fields(text.substr(text.find("CYCLE") + 5));
            pending_cycle_ = values.empty() ? std::nullopt : small_integer(values.front());
        } else if (contains(text, "THE OPTIMIZATION HAS CONVERGED")) {
            if (step_ && builder_.step(*step_).convergence) {
                builder_.step(*step_).convergence->status = ConvergenceStatus::converged;
            }
            if (range_.optimisation_part) {
                auto const words = trim(text.substr(text.find("THE OPTIMIZATION"), 30));
                end_normally("THE OPTIMIZATION HAS CONVERGED", span(words));
            }
        } else if (contains(text, "Parameter Scan Calculation")) {
            add_task(TaskKind::scan);
        }
    }

    void end_normally(char const* reason, SourceSpan where) {
        auto& termination = builder_.job(job_).termination;
        termination.kind = TerminationKind::normal;
        termination.reason = reason;
        termination.source = where;
    }

    // A title between two lines of dashes: the tables that ORCA heads so.
    void read_section_header() {
        auto const title = peek(1);
        if (title.empty() || !is_dashes(peek(2))) {
            return;
        }
        next();
        heading_ = line();
        next();
        if (title == "CARTESIAN COORDINATES (ANGSTROEM)") {
            read_geometry();
        } else if (title == "CARTESIAN GRADIENT") {
            read_gradient();
        } else if (title == "ORBITAL ENERGIES") {
            read_orbitals();
        } else if (starts_with(title, "MULLIKEN ATOMIC CHARGES")) {
            read_charges("Mulliken");
        } else if (starts_with(title, "LOEWDIN ATOMIC CHARGES")) {
            read_charges("Loewdin");
        } else if (title == "DIPOLE MOMENT") {
            read_dipole();
        } else if (title == "VIBRATIONAL FREQUENCIES") {
            read_frequencies();
        } else if (title == "NORMAL MODES") {
            read_normal_modes();
        } else if (title == "IR SPECTRUM") {
            read_mode_table(TableKind::infrared);
        } else if (title == "RAMAN SPECTRUM") {
            read_mode_table(TableKind::raman);
        } else if (starts_with(title, "THERMOCHEMISTRY AT")) {
            read_thermochemistry();
        } else if (contains(title, "EXCITED STATES") || ends_with_results(title)) {
            open_states(title);
        } else if (contains(title, "SPECTRUM VIA") || starts_with(title, "ABSORPTION SPECTRUM") ||
                   starts_with(title, "CD SPECTRUM")) {
            read_spectrum(title);
        } else if (contains(title, " LHS")) {
            // EOM's left-hand states repeat the right-hand ones.
            left_hand_states_ = true;
        } else if (starts_with(title, "SPECTRUM FOR ")) {
            spectrum_prefix_ = std::string(title.substr(13));
        } else {
            // Not a table: the title is read as any other line.
            lines_.seek(lines_.index() - 2);
        }
    }

    static bool ends_with_results(std::string_view title) {
        auto const at = title.find(" RESULTS");
        return at != std::string_view::npos &&
               (at + 8 == title.size() || title.substr(at + 8, 2) == " (");
    }

    void read_plain(std::string_view text) {
        // "MP2 TOTAL ENERGY:  -74.999374598 Eh", "RI-MP2 TOTAL ENERGY: ..."
        if (text.back() == 'h' && contains(text, "MP2 TOTAL ENERGY:")) {
            auto const label = std::string(text.substr(0, text.find(" TOTAL ENERGY")));
            energy(text, "TOTAL ENERGY:", EnergyKind::correlated, label, label);
            return;
        }
        switch (text.front()) {
        case 'C':
            if (starts_with(text, "CPCM Dielectric")) {
                component(text, "CPCM Dielectric");
            }
            break;
        case 'D':
            if (starts_with(text, "Dispersion correction")) {
                component(text, "Dispersion correction");
            }
            break;
        case 'E':
            if (starts_with(text, "Eigenvectors of ROCIS calculation")) {
                heading_ = line();
                open_states(text.substr(0, text.size() - (text.back() == ':' ? 1 : 0)));
            } else if (starts_with(text, "EOM type")) {
                eom_type_ = std::string(fields(text).back());
            } else if (starts_with(text, "Expectation value of <S**2>")) {
                scalar(text, "<S**2>", "spin_squared", "<S**2>", "");
            } else {
                read_keyed_energy(text);
            }
            break;
        case 'F':
            if (starts_with(text, "FINAL SINGLE POINT ENERGY")) {
                energy(text, "FINAL SINGLE POINT ENERGY", EnergyKind::electronic, "FINAL SINGLE POINT ENERGY",
                       builder_.job(job_).method);
            }
            break;
        case 'I':
            if (starts_with(text, "IROOT=")) {
                read_root(text);
            } else if (starts_with(text, "Isotropic polarizability")) {
                scalar(text, "Isotropic polarizability", "isotropic_polarizability", "Isotropic polarizability",
                       "bohr^3");
            }
            break;
        case 'M':
            if (starts_with(text, "MAX gradient") && contains(text, "...")) {
                gradient_summary(text, "MAX gradient", &GradientRecord::max);
            }
            break;
        case 'N':
            if (starts_with(text, "Nuclear Repulsion  ")) {
                scalar(text, "Nuclear Repulsion", "nuclear_repulsion_energy", "Nuclear repulsion energy", "hartree");
            } else if (starts_with(text, "Norm of the Cartesian gradient")) {
                gradient_summary(text, "gradient", &GradientRecord::norm);
            } else if (starts_with(text, "Number of basis functions")) {
                scalar(text, "Number of basis functions", "basis_functions", "Number of basis functions", "");
            }
            break;
        case 'R':
            if (starts_with(text, "RMS gradient") && contains(text, "...")) {
                gradient_summary(text, "RMS gradient", &GradientRecord::rms);
            }
            break;
        case 'S':
            if (starts_with(text, "STATE ")) {
                read_state(text);
            } else if (starts_with(text, "SMD CDS (Gcds)")) {
                component(text, "SMD CDS (Gcds)");
            }
            break;
        case 'T':
            if (starts_with(text, "Total Energy ") && text.find(':') != std::string_view::npos &&
                trim(text.substr(12, text.find(':') - 12)).empty()) {
                energy(text, ":", EnergyKind::scf, "Total Energy", scf_method());
            } else if (starts_with(text, "T1 diagnostic")) {
                scalar(text, "T1 diagnostic", "t1_diagnostic", "T1 diagnostic", "");
            } else if (starts_with(text, "TRAJECTORY STEP")) {
                pending_cycle_ = small_integer(fields(text).back());
                add_task(TaskKind::scan);
            }
            break;
        case 'P':
            if (starts_with(text, "Program Version")) {
                read_version(text);
            }
            break;
        default:
            if (is_error_termination(text)) {
                read_error_termination(text);
            }
            break;
        }
    }

    // "Program Version 6.0.0  -   RELEASE  -"
    void read_version(std::string_view text) {
        auto& version = builder_.document().program.version;
        auto const values = fields(text);
        if (version.empty() && values.size() >= 3) {
            version = std::string(values[2]);
        }
    }

    // The method of an SCF energy: Hartree-Fock under a correlated method,
    // the functional of a DFT run.
    std::string scf_method() const {
        auto const& method = builder_.job(job_).method;
        bool const correlated = contains(method, "MP") || contains(method, "CC") || contains(method, "ADC") ||
                                contains(method, "CI") || contains(method, "EOM");
        return correlated ? "HF" : method;
    }

    // "E(MP2)  =    -74.999374616   EC(MP2)= ..." (the MP2 and MP3 totals
    // of an MP3 run), "E(TOT)  ...  -75.013487814" (coupled cluster) and
    // "E(CCSD(T))  ...  -75.013556306".
    void read_keyed_energy(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 3) {
            return;
        }
        auto const key = values[0];
        if ((key == "E(MP2)" || key == "E(MP3)") && values[1] == "=") {
            auto const method = std::string(key.substr(2, 3));
            energy(text, key, EnergyKind::correlated, std::string(key), method);
        } else if (key == "E(TOT)" && values[1] == "...") {
            energy(text, key, EnergyKind::correlated, "CCSD", coupled_cluster("CCSD"));
        } else if (key == "E(CCSD(T))" && values[1] == "...") {
            energy(text, key, EnergyKind::correlated, "CCSD(T)", coupled_cluster("CCSD(T)"));
        } else if (key == "E(CORR)(strong-pairs)") {
            pair_natural_orbitals_ = true;
        }
    }

    std::string coupled_cluster(std::string const& name) const {
        return pair_natural_orbitals_ ? "DLPNO-" + name : name;
    }

    // The structure of one step; a new geometry starts a new step, the same
    // geometry printed again does not.
    void read_geometry() {
        Line const first = heading_;
        std::vector<int> numbers;
        std::vector<chem::Vec3> positions;
        while (has_next()) {
            auto const values = fields(lines_.at(lines_.index() + 1).text);
            if (values.size() != 4) {
                break;
            }
            auto const x = to_double(values[1]);
            auto const y = to_double(values[2]);
            auto const z = to_double(values[3]);
            if (!x || !y || !z) {
                break;
            }
            next();
            numbers.push_back(atomic_number_of(values[0]));
            positions.push_back({*x, *y, *z});
        }
        // A blank line ends the table; one cut short is left out.
        if (positions.empty() || !peek(1).empty() || !has_next()) {
            return;
        }
        auto const table = span_of_lines(source_, first, line());
        if (!takes_geometry(numbers, "", table)) {
            return;
        }
        if (step_ && builder_.step_is_at(*step_, positions)) {
            return;
        }
        close_step();
        // The frequencies after an optimisation start from its last geometry.
        auto const& frames = builder_.document().frames;
        auto const frame = !step_ && !frames.empty() && frames.back().system_id == *system_ &&
                                   frames.back().positions_angstrom == positions
                               ? frames.back().id
                               : builder_.add_frame(*system_, std::move(positions), table);
        step_ = builder_.add_step(job_, frame, table);
        builder_.step(*step_).native_cycle = pending_cycle_;
        pending_cycle_.reset();
    }

    StepId current_step() { return open_step(span_of_line(source_, line())); }

    void extend_step(SourceSpan const& record) { builder_.extend_step(current_step(), record); }

    void energy(std::string_view text, std::string_view key, EnergyKind kind, std::string label,
                std::string method) {
        auto const found = number_after(text, key);
        if (!found) {
            return;
        }
        auto const step = current_step();
        builder_.add_energy(step, kind, std::move(label), std::move(method), found->value, span(found->field));
        extend_step(span(found->field));
    }

    // A part of an energy (dispersion, solvation) is recorded beside the
    // energy it is part of, which stays the step's primary one.
    void component(std::string_view text, char const* label) {
        auto const step = current_step();
        auto const primary = builder_.step(step).primary_energy_id;
        auto const before = builder_.step(step).energies.size();
        energy(text, label, EnergyKind::unknown, label, "");
        if (primary && builder_.step(step).energies.size() > before) {
            builder_.step(step).primary_energy_id = primary;
        }
    }

    // "   1   C   :    0.000763548    0.000179736    0.000000092", in
    // hartree per bohr, up to a blank line.
    void read_gradient() {
        Line const first = heading_;
        std::vector<chem::Vec3> vectors;
        while (has_next()) {
            auto const row = fields(lines_.at(lines_.index() + 1).text);
            if (row.empty() && vectors.empty()) {
                next();
                continue;
            }
            if (row.size() != 6 || row[2] != ":") {
                break;
            }
            auto const x = to_double(row[3]);
            auto const y = to_double(row[4]);
            auto const z = to_double(row[5]);
            if (!x || !y || !z) {
                return;
            }
            next();
            vectors.push_back({*x, *y, *z});
        }
        if (vectors.empty() || !has_next() || !peek(1).empty() ||
            (atom_count_ != 0 && vectors.size() != atom_count_)) {
            return;
        }
        GradientRecord record;
        record.vectors = std::move(vectors);
        record.source = span_of_lines(source_, first, line());
        extend_step(*record.source);
        builder_.step(current_step()).gradient = std::move(record);
    }

    // "RMS gradient   ...   0.0004293185", after the gradient's table.
    void gradient_summary(std::string_view text, std::string_view key, std::optional<double> GradientRecord::*into) {
        if (!step_ || !builder_.step(*step_).gradient) {
            return;
        }
        if (auto const found = number_after(text, key)) {
            (*builder_.step(*step_).gradient).*into = found->value;
        }
    }

    // ORCA's five criteria, each "Item  value  tolerance  YES|NO"; the
    // energy change is left out of the first cycle.
    void read_convergence() {
        static constexpr std::pair<char const*, CriterionKind> rows[] = {
            {"Energy change", CriterionKind::energy_change},
            {"RMS gradient", CriterionKind::rms_force},
            {"MAX gradient", CriterionKind::max_force},
            {"RMS step", CriterionKind::rms_displacement},
            {"MAX step", CriterionKind::max_displacement}};
        Line const first = line();
        ConvergenceRecord record;
        bool all = true;
        while (next()) {
            auto const text = trim(line().text);
            if (starts_with(text, "Item") || is_dashes(text)) {
                continue;
            }
            auto const row = std::find_if(std::begin(rows), std::end(rows),
                                          [&](auto const& known) { return starts_with(text, known.first); });
            if (row == std::end(rows)) {
                break;
            }
            auto const values = fields(text.substr(std::string_view(row->first).size()));
            auto const value = values.size() == 3 ? to_double(values[0]) : std::nullopt;
            auto const threshold = values.size() == 3 ? to_double(values[1]) : std::nullopt;
            if (!value || !threshold || (values[2] != "YES" && values[2] != "NO")) {
                return;
            }
            bool const satisfied = values[2] == "YES";
            all = all && satisfied;
            auto const kind = row->second;
            char const* unit = kind == CriterionKind::energy_change ? "hartree"
                               : kind == CriterionKind::rms_force || kind == CriterionKind::max_force
                                   ? "hartree/bohr"
                                   : "bohr";
            record.criteria.push_back({kind, *value, *threshold, satisfied, unit});
        }
        if (record.criteria.size() < 4 || lines_.index() >= range_.end) {
            return;
        }
        lines_.seek(lines_.index() - 1);
        record.status = all ? ConvergenceStatus::converged : ConvergenceStatus::not_converged;
        record.source = span_of_lines(source_, first, line());
        extend_step(*record.source);
        builder_.step(current_step()).convergence = std::move(record);
    }

    // "  NO   OCC          E(Eh)            E(eV)    Irrep" and one row an
    // orbital; an unrestricted run heads the alpha and the beta orbitals
    // "SPIN UP ORBITALS" and "SPIN DOWN ORBITALS".
    void read_orbitals() {
        Line const first = heading_;
        std::vector<Orbital> alpha;
        std::vector<Orbital> beta;
        auto* into = &alpha;
        bool unrestricted = false;
        while (has_next()) {
            auto const text = peek(1);
            if (text == "SPIN UP ORBITALS") {
                unrestricted = true;
            } else if (text == "SPIN DOWN ORBITALS") {
                into = &beta;
            } else if (text.empty() ? into->empty() || peek(2) == "SPIN DOWN ORBITALS" : starts_with(text, "NO ")) {
            } else if (auto orbital = orbital_row(text)) {
                into->push_back(std::move(*orbital));
            } else {
                break;
            }
            next();
        }
        if (alpha.empty() || !has_next() || (unrestricted && beta.empty())) {
            return;
        }
        auto const where = span_of_lines(source_, first, line());
        auto add = [&](std::vector<Orbital> orbitals, SpinChannel spin) {
            for (auto& orbital : orbitals) {
                orbital.spin = spin;
            }
            OrbitalSetBlock block;
            block.spin = spin;
            block.kind = "canonical";
            block.orbitals = std::move(orbitals);
            builder_.add_analysis(job_, current_step(), std::move(block), where);
        };
        if (unrestricted) {
            add(std::move(alpha), SpinChannel::alpha);
            add(std::move(beta), SpinChannel::beta);
        } else {
            add(std::move(alpha), SpinChannel::none);
        }
    }

    static std::optional<Orbital> orbital_row(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 4 || values.size() > 5) {
            return std::nullopt;
        }
        auto const index = small_integer(values[0]);
        auto const occupation = to_double(values[1]);
        auto const energy = to_double(values[2]);
        if (!index || !occupation || !energy) {
            return std::nullopt;
        }
        Orbital orbital;
        orbital.index = *index;
        orbital.occupation = *occupation;
        orbital.energy = *energy;
        orbital.kind = *occupation > 0.0 ? "occupied" : "virtual";
        if (values.size() == 5) {
            orbital.symmetry = std::string(values[4]);
        }
        return orbital;
    }

    // "   0 C :   -0.004313 [spin]" per atom, up to "Sum of atomic charges"
    // (Mulliken) or a blank line (Loewdin).
    void read_charges(char const* scheme) {
        Line const first = heading_;
        AtomicChargeBlock block;
        block.scheme = scheme;
        while (next()) {
            auto const values = fields(line().text);
            if (values.size() < 4 || values.size() > 5 || values[2] != ":") {
                break;
            }
            auto const index = small_integer(values[0]);
            auto const charge = to_double(values[3]);
            if (!index || !charge || *index < 0) {
                return;
            }
            AtomicChargeRecord record;
            record.atom_index = *index;
            record.element = std::string(values[1]);
            record.charge = charge;
            if (values.size() == 5) {
                record.spin_population = to_double(values[4]);
            }
            block.records.push_back(std::move(record));
        }
        if (lines_.index() >= range_.end || block.records.empty()) {
            return;
        }
        // The blank line that ends Loewdin's table is no part of it.
        if (trim(line().text).empty()) {
            lines_.seek(lines_.index() - 1);
        }
        builder_.add_analysis(job_, current_step(), std::move(block), span_of_lines(source_, first, line()));
    }

    // "Method : SCF", "Type of density : Electron Density", then the total
    // in atomic units and its magnitude in both units.
    void read_dipole() {
        Line const first = heading_;
        PermanentDipole moment;
        moment.method = builder_.job(job_).method;
        moment.density_type = "electronic";
        std::optional<chem::Vec3> total;
        for (int i = 0; i < 40 && next(); ++i) {
            auto const text = trim(line().text);
            if (starts_with(text, "Method ")) {
                auto const method = trim(text.substr(text.find(':') + 1));
                moment.method = method == "SCF" ? scf_method() : std::string(method);
            } else if (starts_with(text, "Type of density") && !contains(text, "Electron Density")) {
                moment.density_type = ascii_lower(trim(text.substr(text.find(':') + 1)));
            } else if (starts_with(text, "Total Dipole Moment")) {
                auto const values = fields(text.substr(text.find(':') + 1));
                if (values.size() == 3) {
                    auto const x = to_double(values[0]);
                    auto const y = to_double(values[1]);
                    auto const z = to_double(values[2]);
                    if (x && y && z) {
                        total = chem::Vec3{*x, *y, *z};
                    }
                }
            } else if (starts_with(text, "Magnitude (a.u.)")) {
                if (auto const found = number_after(text, ":")) {
                    moment.magnitude_atomic_units = found->value;
                }
            } else if (starts_with(text, "Magnitude (Debye)")) {
                if (auto const found = number_after(text, ":")) {
                    moment.magnitude_debye = found->value;
                }
                break;
            }
        }
        if (!total || !moment.magnitude_debye) {
            return;
        }
        moment.atomic_units = *total;
        moment.source = span_of_lines(source_, first, line());
        DipoleBlock block;
        block.moments.push_back(std::move(moment));
        builder_.add_analysis(job_, current_step(), std::move(block), span_of_lines(source_, first, line()));
    }

    // "     6:      43.87 cm**-1    2-Au", every mode of 3N, the
    // translations and rotations at zero among them.
    void read_frequencies() {
        vibration_first_ = heading_;
        modes_.clear();
        int prose = 0;
        while (next()) {
            auto const values = fields(line().text);
            if (values.empty() || (values.size() >= 3 && values[2] != "cm**-1")) {
                if (!modes_.empty() || ++prose > 12) {
                    break;
                }
                continue;
            }
            if (values.size() < 3 || values[0].back() != ':') {
                continue;
            }
            auto const index = small_integer(values[0].substr(0, values[0].size() - 1));
            auto const frequency = to_double(values[1]);
            if (!index || !frequency) {
                break;
            }
            VibrationalMode mode;
            mode.index = *index;
            mode.frequency_cm1 = *frequency;
            if (values.size() >= 4 && values[3] != "***imaginary") {
                mode.symmetry = std::string(values[3]);
            }
            modes_.push_back(std::move(mode));
        }
        if (lines_.index() >= range_.end) {
            modes_.clear();
            return;
        }
        vibration_last_ = line();
        lines_.seek(lines_.index() - 1);
    }

    VibrationalMode* mode_numbered(long long number) {
        for (auto& mode : modes_) {
            if (mode.index == number) {
                return &mode;
            }
        }
        return nullptr;
    }

    // Columns of modes, a row of mode numbers (and of symmetries) over them,
    // and one row for each Cartesian coordinate, x y z of each atom in turn.
    void read_normal_modes() {
        if (modes_.empty()) {
            return;
        }
        std::vector<VibrationalMode*> columns;
        std::size_t row_count = 0;
        std::vector<std::vector<double>> values(modes_.size());
        std::vector<std::vector<double>*> column_values;
        bool started = false;
        int prose = 0;
        while (next()) {
            auto const row = fields(line().text);
            if (row.empty()) {
                if (!columns.empty() && row_count == 3 * atom_count_) {
                    columns.clear();
                }
                continue;
            }
            bool const header =
                std::all_of(row.begin(), row.end(), [](std::string_view f) { return to_integer(f).has_value(); });
            if (!header && !started) {
                // A few lines of prose stand before the first columns.
                if (++prose > 12) {
                    return;
                }
                continue;
            }
            if (header) {
                started = true;
                columns.clear();
                column_values.clear();
                row_count = 0;
                for (auto const field : row) {
                    auto* mode = mode_numbered(*to_integer(field));
                    if (mode == nullptr) {
                        return;
                    }
                    columns.push_back(mode);
                    column_values.push_back(&values[static_cast<std::size_t>(mode - modes_.data())]);
                }
                continue;
            }
            if (columns.empty() || row.size() != columns.size() + 1 || !to_integer(row[0])) {
                if (!columns.empty() && row.size() == columns.size() && !to_double(row[0])) {
                    continue;  // the symmetries of the columns
                }
                break;
            }
            for (std::size_t k = 0; k < columns.size(); ++k) {
                column_values[k]->push_back(to_double(row[k + 1]).value_or(0.0));
            }
            ++row_count;
        }
        if (lines_.index() >= range_.end) {
            return;
        }
        for (std::size_t m = 0; m < modes_.size(); ++m) {
            auto const& coordinates = values[m];
            if (coordinates.size() != 3 * atom_count_) {
                continue;
            }
            for (std::size_t a = 0; a < atom_count_; ++a) {
                modes_[m].displacements.push_back(
                    {coordinates[3 * a], coordinates[3 * a + 1], coordinates[3 * a + 2]});
            }
        }
        lines_.seek(lines_.index() - 1);
        vibration_last_ = line();
    }

    enum class TableKind { infrared, raman };

    // " Mode  freq  eps  Int ..." (IR, intensity in km/mol in the fourth
    // column) or " Mode  freq  Activity  Depolarization" (Raman), a row per
    // mode "  6:  43.87  ...".
    void read_mode_table(TableKind kind) {
        bool any = false;
        while (has_next()) {
            auto const values = fields(peek(1));
            if (values.empty() || starts_with(values[0], "Mode") || starts_with(values[0], "cm**") ||
                is_dashes(values[0])) {
                if (any) {
                    break;
                }
                next();
                continue;
            }
            auto* mode = values[0].back() == ':'
                             ? mode_numbered(to_integer(values[0].substr(0, values[0].size() - 1)).value_or(-1))
                             : nullptr;
            if (mode == nullptr || values.size() < 4) {
                break;
            }
            next();
            any = true;
            vibration_last_ = line();
            if (kind == TableKind::infrared) {
                mode->ir_intensity_km_per_mol = to_double(values[3]);
            } else {
                mode->raman_activity = to_double(values[2]);
            }
        }
    }

    void close_vibrations() {
        std::vector<VibrationalMode> modes;
        for (auto& mode : modes_) {
            // Translations and rotations, which ORCA lists at zero.
            if (mode.frequency_cm1 != 0.0) {
                modes.push_back(std::move(mode));
            }
        }
        modes_.clear();
        if (modes.empty()) {
            return;
        }
        VibrationalBlock block;
        block.modes = std::move(modes);
        builder_.add_analysis(job_, current_step(), std::move(block),
                              span_of_lines(source_, *vibration_first_, *vibration_last_));
    }

    void read_thermochemistry() {
        Line const first = heading_;
        ThermochemistryBlock block;
        bool complete = false;
        while (next()) {
            auto const text = trim(line().text);
            auto take = [&](char const* key, std::optional<double>& into) {
                if (starts_with(text, key)) {
                    if (auto const found = number_after(text, key)) {
                        into = found->value;
                    }
                }
            };
            take("Temperature", block.temperature_kelvin);
            take("Pressure", block.pressure_atmosphere);
            take("Total Mass", block.total_mass_amu);
            take("Electronic energy", block.electronic_energy);
            take("Zero point energy", block.zero_point_energy);
            take("Total thermal energy", block.thermal_energy);
            take("Total correction", block.thermal_correction);
            take("Total Enthalpy", block.enthalpy);
            take("Total entropy correction", block.entropy_correction);
            take("Final Gibbs free energy", block.gibbs_free_energy);
            if (starts_with(text, "G-E(el)")) {
                take("G-E(el)", block.gibbs_correction);
                complete = true;
                break;
            }
            if (is_normal_termination(text) || starts_with(text, "THERMOCHEMISTRY AT")) {
                break;
            }
        }
        if (!complete) {
            return;
        }
        builder_.add_analysis(job_, current_step(), block, span_of_lines(source_, first, line()));
    }

    // A heading over a list of states: "TD-DFT/TDA EXCITED STATES
    // (SINGLETS)", "EOM-CCSD RESULTS (RHS)", "STEOM-CCSD RESULTS (SINGLETS)".
    void open_states(std::string_view title) {
        close_excited();
        excited_.emplace();
        excited_->section = std::string(title);
        auto method = title;
        for (auto const* end : {" EXCITED STATES", "-EXCITED STATES", " RESULTS", "Eigenvectors of "}) {
            auto const at = method.find(end);
            if (at == 0) {
                method = method.substr(std::string_view(end).size());
                method = method.substr(0, method.find(' '));
            } else if (at != std::string_view::npos) {
                method = method.substr(0, at);
            }
        }
        excited_->method = std::string(method);
        // The ionisations and attachments that STEOM starts from head their
        // roots "EOM-CCSD RESULTS" too; "EOM type ... IP-EOM" above tells them.
        if (starts_with(method, "EOM-") && (eom_type_ == "IP-EOM" || eom_type_ == "EA-EOM")) {
            excited_->method = eom_type_ + std::string(method.substr(3));
        }
        excited_span_ = span_of_line(source_, heading_);
        left_hand_states_ = false;
        excited_step_ = current_step();
        spectrum_prefix_.clear();
    }

    void add_state(ExcitedState state) {
        if (!excited_) {
            return;
        }
        add_task(TaskKind::excited_state);
        state.method = excited_->method;
        state.section = excited_->section;
        excited_span_.end = state.source->end;
        excited_->states.push_back(std::move(state));
    }

    // "STATE  1:  E=   0.196688 au      5.352 eV    43168.0 cm**-1 <S**2> =
    // 0.000000 Sym: Bu Mult 1" (TD-DFT, CIS) and "STATE   1   Exc. Energy:
    // 10718.290mEh  291.660eV  2352392.8cm**-1" (ROCIS), then one line for
    // each contribution.
    void read_state(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 4) {
            return;
        }
        ExcitedState state;
        auto number = values[1];
        if (number.back() == ':') {
            number.remove_suffix(1);
        }
        state.index = small_integer(number);
        if (values[2] == "E=" && values.size() >= 8 && values[4] == "au") {
            state.excitation_energy = to_double(values[3]);
            state.reported_wavenumber_cm1 = to_double(values[7]);
            for (std::size_t i = 8; i + 1 < values.size(); ++i) {
                if (values[i] == "<S**2>" && i + 2 < values.size()) {
                    state.spin_squared = to_double(values[i + 2]);
                } else if (values[i] == "Sym:") {
                    state.symmetry = std::string(values[i + 1]);
                } else if (values[i] == "Mult") {
                    state.multiplicity = small_integer(values[i + 1]);
                }
            }
        } else if (values[2] == "Exc." && values.size() >= 7 && ends_with(values[4], "mEh")) {
            state.reported_millihartree = to_double(values[4].substr(0, values[4].size() - 3));
            if (state.reported_millihartree) {
                state.excitation_energy = *state.reported_millihartree / 1000.0;
            }
            if (ends_with(values[6], "cm**-1")) {
                state.reported_wavenumber_cm1 = to_double(values[6].substr(0, values[6].size() - 6));
            }
            // The reference itself heads the list.
            if (state.index == 0 && state.excitation_energy == 0.0) {
                return;
            }
        }
        if (!state.index || !state.excitation_energy) {
            return;
        }
        read_contributions(state);
        add_state(std::move(state));
    }

    // "IROOT=  1:  0.201084 au     5.472 eV   44132.8 cm**-1", then the
    // amplitudes "0.455299    33 ->  35", the ground state's amplitude and
    // the singles' share.
    void read_root(std::string_view text) {
        auto const values = fields(text);
        if (!excited_ || left_hand_states_ || values.size() < 8 || values[3] != "au") {
            return;
        }
        ExcitedState state;
        state.index = small_integer(values[1].substr(0, values[1].size() - (values[1].back() == ':' ? 1 : 0)));
        state.excitation_energy = to_double(values[2]);
        state.reported_wavenumber_cm1 = to_double(values[6]);
        if (!state.index || !state.excitation_energy) {
            return;
        }
        Line const first = line();
        while (has_next()) {
            auto const row = peek(1);
            auto const row_values = fields(row);
            if (starts_with(row, "Amplitude")) {
            } else if (row_values.size() == 4 && row_values[2] == "->") {
                ExcitationContribution contribution;
                contribution.label = std::string(row.substr(row_values[1].data() - row.data()));
                contribution.coefficient = to_double(row_values[0]);
                contribution.from_orbital = small_integer(row_values[1]);
                contribution.to_orbital = small_integer(row_values[3]);
                state.contributions.push_back(std::move(contribution));
            } else if (starts_with(row, "Ground state amplitude:")) {
                state.ground_state_amplitude = to_double(row_values.back());
            } else if (starts_with(row, "Percentage singles character=")) {
                state.singles_character_percent = to_double(row_values.back());
            } else {
                break;
            }
            next();
        }
        state.source = span_of_lines(source_, first, line());
        add_state(std::move(state));
    }

    void read_contributions(ExcitedState& state) {
        Line const first = line();
        while (has_next()) {
            auto contribution = contribution_of(peek(1));
            if (!contribution) {
                break;
            }
            next();
            state.contributions.push_back(std::move(*contribution));
        }
        state.source = span_of_lines(source_, first, line());
    }

    // One table of a spectrum: "  0-1Ag ->  1-1Bu   5.352154   43168.0
    // 231.7   0.005038390 ..." under a heading of its columns (ORCA 6), or
    // "   1   43168.0    231.7   0.005038390 ..." with the state's number
    // first (ORCA 5).
    void read_spectrum(std::string_view title) {
        if (!excited_ || !next()) {
            return;
        }
        auto const header = fields(line().text);
        std::string const kind =
            spectrum_prefix_.empty() ? std::string(title) : spectrum_prefix_ + ": " + std::string(title);
        auto column = [&](std::initializer_list<char const*> names) -> std::optional<std::size_t> {
            for (auto const* name : names) {
                for (std::size_t i = 0; i < header.size(); ++i) {
                    if (header[i] == name) {
                        return i;
                    }
                }
            }
            return std::nullopt;
        };
        auto const oscillator = column({"fosc(D2+M2+Q2)", "fosc(D2)", "fosc(P2)", "fosc"});
        auto const strength = column({"D2", "P2", "T2"});
        auto const moment = column({"DX", "PX", "TX"});
        auto const rotatory = column({"R"});
        bool const cd = starts_with(title, "CD ");
        bool any = false;
        while (has_next()) {
            auto const row = fields(peek(1));
            if (row.empty() || is_dashes(row[0]) || row[0].front() == '(') {
                if (any && (row.empty() || is_dashes(row[0]))) {
                    break;
                }
                next();
                continue;
            }
            bool const arrow = row.size() > 3 && row[1] == "->";
            std::size_t const shift = arrow ? 2 : 0;
            if (row.size() < header.size() + shift || row.size() > header.size() + shift + 1) {
                break;
            }
            AbsorptionPeak peak;
            peak.spectrum_kind = kind;
            auto value = [&](std::optional<std::size_t> at) -> std::optional<double> {
                if (!at) {
                    return std::nullopt;
                }
                return to_double(row[*at + shift]);
            };
            if (arrow) {
                peak.transition = std::string(row[0]) + " -> " + std::string(row[2]);
                peak.target_state_index = small_integer(row[2].substr(0, row[2].find('-')));
                auto const ev = to_double(row[3]);
                peak.excitation_energy = ev.value_or(0.0) / units::hartree_in_ev;
                peak.reported_wavenumber_cm1 = to_double(row[4]);
                peak.reported_wavelength_nm = to_double(row[5]);
            } else {
                peak.transition = std::string(row[0]);
                peak.target_state_index = small_integer(row[0]);
                peak.reported_wavenumber_cm1 = to_double(row[1]);
                peak.reported_wavelength_nm = to_double(row[2]);
                peak.excitation_energy = peak.reported_wavenumber_cm1.value_or(0.0) / units::hartree_in_wavenumber;
            }
            if (!peak.target_state_index || !peak.reported_wavenumber_cm1) {
                break;
            }
            if (cd) {
                peak.rotatory_strength = value(rotatory);
            } else {
                peak.oscillator_strength = value(oscillator);
                if (strength) {
                    peak.strength_label = std::string(header[*strength]);
                    peak.strength = value(strength);
                }
                if (moment && *moment + shift + 2 < row.size()) {
                    auto const x = value(moment);
                    auto const y = to_double(row[*moment + shift + 1]);
                    auto const z = to_double(row[*moment + shift + 2]);
                    if (x && y && z) {
                        peak.transition_moment_au = chem::Vec3{*x, *y, *z};
                    }
                }
            }
            next();
            peak.source = span_of_line(source_, line());
            excited_span_.end = peak.source->end;
            excited_->absorption_peaks.push_back(std::move(peak));
            any = true;
        }
    }

    void close_excited() {
        if (excited_ && !excited_->states.empty()) {
            builder_.add_analysis(job_, excited_step_, std::move(*excited_), excited_span_);
        }
        excited_.reset();
    }

    void scalar(std::string_view text, std::string_view key, char const* name, char const* label, char const* unit) {
        auto const found = number_after(text, key);
        if (!found) {
            return;
        }
        current_step();
        ScalarProperty property{name, label, found->value, unit, span(found->field)};
        for (auto& known : scalars_.properties) {
            if (known.key == property.key) {
                known = std::move(property);
                return;
            }
        }
        scalars_.properties.push_back(std::move(property));
    }

    void close_step() {
        close_excited();
        close_vibrations();
        if (step_ && !scalars_.properties.empty()) {
            auto where = *scalars_.properties.front().source;
            for (auto const& property : scalars_.properties) {
                where.begin = property.source->begin.offset < where.begin.offset ? property.source->begin : where.begin;
                where.end = property.source->end.offset > where.end.offset ? property.source->end : where.end;
            }
            builder_.add_analysis(job_, step_, std::move(scalars_), where);
        }
        scalars_ = {};
    }

    // "ORCA finished by error termination in SCF" and "... aborting the
    // run", the reason on the line or just above it.
    void read_error_termination(std::string_view text) {
        auto& termination = builder_.job(job_).termination;
        if (termination.kind == TerminationKind::error) {
            return;
        }
        termination.kind = TerminationKind::error;
        termination.reason = std::string(text);
        termination.source = span(text);
        diagnostics_.push_back({Severity::error, "orca.error_termination",
                                "ORCA stopped with an error: " + std::string(text), termination.source});
    }

    // ORCA's warnings, "WARNING: Geometry Optimization" with the lines that
    // explain it ("  ===> : Switching off AutoStart ..."), and the note of an
    // SCF that started from the orbitals of an earlier run.
    void read_notes() {
        for (std::size_t i = range_.begin; i < range_.end; ++i) {
            auto const& current = lines_.at(i);
            auto const text = trim(current.text);
            if ((starts_with(text, "WARNING") && text != "WARNINGS") || starts_with(text, "! Warning")) {
                std::string message(text.front() == '!' ? trim(text.substr(1)) : text);
                std::size_t last = i;
                // The explanation is indented under the warning.
                while (last + 1 < range_.end && starts_with(lines_.at(last + 1).text, " ")) {
                    auto const more = trim(lines_.at(last + 1).text);
                    if (more.empty() || more.front() == '!') {
                        break;
                    }
                    ++last;
                    message += " " + std::string(more);
                }
                // Switching AutoStart off is ORCA telling what it does, not
                // a fault.
                bool const autostart = contains(message, "Switching off AutoStart");
                diagnostics_.push_back({autostart ? Severity::note : Severity::warning,
                                        autostart ? "orca.autostart_off" : "orca.warning", std::move(message),
                                        span_of_lines(source_, current, lines_.at(last))});
                i = last;
            } else if (text == "Checking for AutoStart:") {
                read_autostart(i);
            }
        }
    }

    void read_autostart(std::size_t at) {
        for (std::size_t i = at + 1; i < range_.end && i < at + 20; ++i) {
            auto const text = trim(lines_.at(i).text);
            if (contains(text, "the orbitals can be read")) {
                auto const file = trim(lines_.at(at + 1).text);
                diagnostics_.push_back({Severity::note, "orca.autostart",
                                        "the SCF started from the orbitals of an earlier run (" + std::string(file) +
                                            ")",
                                        span_of_lines(source_, lines_.at(at), lines_.at(i))});
                return;
            }
            if (text.empty()) {
                return;
            }
        }
    }

    void finish() {
        close_step();
        finish_job("");
        auto& job = builder_.job(job_);
        job.primary_task = job.tasks.front();
    }

    static bool ends_with(std::string_view text, std::string_view suffix) {
        return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
    }

    JobRange const& range_;
    JobInput const& input_;
    std::vector<Diagnostic>& diagnostics_;

    std::optional<int> pending_cycle_;
    bool pair_natural_orbitals_ = false;
    ScalarPropertyBlock scalars_;
    std::vector<VibrationalMode> modes_;
    std::optional<Line> vibration_first_;
    std::optional<Line> vibration_last_;
    std::optional<ExcitedStateBlock> excited_;
    SourceSpan excited_span_;
    std::optional<StepId> excited_step_;
    std::string spectrum_prefix_;
    bool left_hand_states_ = false;
    std::string eom_type_;
    // The title line of the section being read.
    Line heading_;
};

// "    33a ->  35a  :     0.562531 (c=  0.75002079)" (TD-DFT, CIS) and
// "       0->34  ->37          :   0.0275   (0.165873)" (ROCIS): the weight,
// then the coefficient in parentheses.
std::optional<ExcitationContribution> contribution_of(std::string_view text) {
    auto const colon = text.find(':');
    if (colon == std::string_view::npos || !contains(text.substr(0, colon), "->")) {
        return std::nullopt;
    }
    auto const label = trim(text.substr(0, colon));
    auto const values = fields(text.substr(colon + 1));
    if (values.empty()) {
        return std::nullopt;
    }
    ExcitationContribution contribution;
    contribution.label = std::string(label);
    contribution.weight = to_double(values[0]);
    if (!contribution.weight) {
        return std::nullopt;
    }
    auto const open = text.find('(', colon);
    if (open != std::string_view::npos) {
        auto inner = text.substr(open + 1);
        inner = inner.substr(0, inner.find(')'));
        if (starts_with(inner, "c=")) {
            inner.remove_prefix(2);
        }
        contribution.coefficient = to_double(trim(inner));
    }
    auto const arrow = label.find("->");
    auto orbital = [](std::string_view field, std::optional<int>& index, std::optional<char>& spin) {
        field = trim(field);
        if (!field.empty() && (field.back() == 'a' || field.back() == 'b')) {
            spin = field.back();
            field.remove_suffix(1);
        }
        index = small_integer(field);
    };
    // ROCIS names a spin flip through a third orbital; only a plain
    // promotion has its two orbitals.
    if (label.find("->", arrow + 2) == std::string_view::npos) {
        orbital(label.substr(0, arrow), contribution.from_orbital, contribution.from_spin);
        orbital(label.substr(arrow + 2), contribution.to_orbital, contribution.to_spin);
    }
    return contribution;
}

}  // namespace

bool recognises(std::string_view text) {
    auto const head = text.substr(0, 1 << 16);
    return contains(head, "* O   R   C   A *") ||
           (contains(head, "Program Version") && contains(head, "Max Planck Institute") && contains(head, "ORCA"));
}

model::ParseResult<Document> read(std::string_view text, std::string_view file_name) {
    model::ParseResult<Document> result;
    DocumentBuilder builder;
    auto const source = builder.add_output(file_name, text, ProgramKind::orca, "ORCA");
    LineCursor lines(text);
    auto& program = builder.document().program;

    auto const input = read_input_echo(lines);
    if (!input.file_name.empty()) {
        program.input_file_name = input.file_name;
        builder.source_for(input.file_name, std::nullopt);
    }
    auto const ranges = split_jobs(lines, input);
    for (auto const& range : ranges) {
        JobReader(builder, source, lines, range, result.diagnostics).read();
    }

    // ORCA writes its termination line once, after the last job: a job
    // that another one followed came to its end.
    auto& jobs = builder.document().jobs;
    for (std::size_t j = 0; j + 1 < jobs.size(); ++j) {
        if (jobs[j].termination.kind == TerminationKind::unknown) {
            jobs[j].termination.kind = TerminationKind::normal;
            jobs[j].termination.reason = "the next job started";
            jobs[j].termination.source = span_of_line(source, lines.at(ranges[j + 1].begin));
        }
    }
    builder.finish_import(result, lines, source, "orca.truncated", "ORCA");
    return result;
}

}  // namespace morv::qc::import::orca
