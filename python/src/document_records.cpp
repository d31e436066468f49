#include "bindings.hpp"

namespace morv::python {
namespace {

using chem::Vec3;

void bind_vec3(py::module_& module) {
    RecordBinding<Vec3> vec3(module, "Vec3", "A Cartesian vector.");
    vec3.field<&Vec3::x>("x").field<&Vec3::y>("y").field<&Vec3::z>("z").finish();
    vec3.type().def(py::init([](py::handle x, py::handle y, py::handle z) {
                        return Ref<Vec3>::owning(
                            {float_from_python(x, "Vec3.x"), float_from_python(y, "Vec3.y"), float_from_python(z, "Vec3.z")});
                    }),
                    py::arg("x"), py::arg("y"), py::arg("z"));
    vec3.type().def(py::init([](py::handle values) { return Ref<Vec3>::owning(Convert<Vec3>::from_python(values, "Vec3")); }));
}

void bind_spans_and_diagnostics(py::module_& module) {
    using model::Diagnostic;
    using model::SourceFile;
    using model::SourcePosition;
    using model::SourceSpan;
    RecordBinding<SourcePosition>(module, "SourcePosition", "A place in a source file.")
        .field<&SourcePosition::offset>("offset")
        .field<&SourcePosition::line>("line")
        .field<&SourcePosition::column>("column")
        .finish();
    RecordBinding<SourceSpan>(module, "SourceSpan", "A region of one source file of the document.")
        .field<&SourceSpan::source_id>("source_id")
        .field<&SourceSpan::begin>("begin")
        .field<&SourceSpan::end>("end")
        .finish();
    RecordBinding<Diagnostic>(module, "Diagnostic", "One finding of a decode, or one stored in the document.")
        .field<&Diagnostic::severity>("severity")
        .field<&Diagnostic::code>("code")
        .field<&Diagnostic::message>("message")
        .field<&Diagnostic::source>("source")
        .finish();
    RecordBinding<SourceFile>(module, "SourceFile", "A file that the run read or wrote.")
        .field<&SourceFile::id>("id")
        .field<&SourceFile::path>("path")
        .field<&SourceFile::sha256>("sha256")
        .field<&SourceFile::size_bytes>("size_bytes")
        .field<&SourceFile::embedded_content>("embedded_content")
        .finish();
}

void bind_systems(py::module_& module) {
    using namespace chem;
    RecordBinding<AtomSite>(module, "AtomSite", "One atom of a system.")
        .field<&AtomSite::id>("id")
        .field<&AtomSite::symbol>("symbol")
        .field<&AtomSite::raw_label>("raw_label")
        .field<&AtomSite::atomic_number>("atomic_number")
        .field<&AtomSite::isotope>("isotope")
        .field<&AtomSite::formal_charge>("formal_charge")
        .finish();
    RecordBinding<Topology>(module, "Topology", "The atoms of a system.").field<&Topology::atoms>("atoms").finish();
    RecordBinding<ElectronicState>(module, "ElectronicState", "Charge and multiplicity.")
        .field<&ElectronicState::charge>("charge")
        .field<&ElectronicState::multiplicity>("multiplicity")
        .finish();
    RecordBinding<ChemicalSystem>(module, "ChemicalSystem", "A molecule or cluster that jobs work on.")
        .field<&ChemicalSystem::id>("id")
        .field<&ChemicalSystem::label>("label")
        .field<&ChemicalSystem::topology>("topology")
        .field<&ChemicalSystem::electronic_state>("electronic_state")
        .field<&ChemicalSystem::source>("source")
        .finish();
    RecordBinding<GeometryFrame>(module, "GeometryFrame", "The positions of a system's atoms, in angstrom.")
        .field<&GeometryFrame::id>("id")
        .field<&GeometryFrame::system_id>("system_id")
        .field<&GeometryFrame::positions_angstrom>("positions_angstrom")
        .field<&GeometryFrame::source>("source")
        .finish();
}

void bind_program(py::module_& module) {
    using namespace qc;
    RecordBinding<Termination>(module, "Termination", "How a program or job ended.")
        .field<&Termination::kind>("kind")
        .field<&Termination::reason>("reason")
        .field<&Termination::source>("source")
        .finish();
    RecordBinding<ProgramInfo>(module, "ProgramInfo", "The program of the run and how the run ended.")
        .field<&ProgramInfo::kind>("kind")
        .field<&ProgramInfo::name>("name")
        .field<&ProgramInfo::version>("version")
        .field<&ProgramInfo::input_file_name>("input_file_name")
        .field<&ProgramInfo::termination>("termination")
        .finish();
    RecordBinding<RequestedAnalyses>(module, "RequestedAnalyses", "The analyses that the producer looked for.")
        .field<&RequestedAnalyses::gradients>("gradients")
        .field<&RequestedAnalyses::vibrations>("vibrations")
        .field<&RequestedAnalyses::excited_states>("excited_states")
        .field<&RequestedAnalyses::orbitals>("orbitals")
        .field<&RequestedAnalyses::dipoles>("dipoles")
        .finish();
    RecordBinding<Normalization>(module, "Normalization", "How much of the run the producer kept.")
        .field<&Normalization::profile>("profile")
        .field<&Normalization::requested_analyses>("requested_analyses")
        .finish();
}

void bind_jobs_and_steps(py::module_& module) {
    using namespace qc;
    RecordBinding<EnergyRecord>(module, "EnergyRecord", "One labelled energy, in hartree.")
        .field<&EnergyRecord::id>("id")
        .field<&EnergyRecord::kind>("kind")
        .field<&EnergyRecord::label>("label")
        .field<&EnergyRecord::method>("method")
        .field<&EnergyRecord::value>("value")
        .field<&EnergyRecord::source>("source")
        .finish();
    RecordBinding<GradientRecord>(module, "GradientRecord", "The gradient at a step, in hartree per bohr.")
        .field<&GradientRecord::vectors>("vectors")
        .field<&GradientRecord::norm>("norm")
        .field<&GradientRecord::rms>("rms")
        .field<&GradientRecord::max>("max")
        .field<&GradientRecord::source>("source")
        .finish();
    RecordBinding<ConvergenceCriterion>(module, "ConvergenceCriterion", "One test of an optimisation step.")
        .field<&ConvergenceCriterion::kind>("kind")
        .field<&ConvergenceCriterion::value>("value")
        .field<&ConvergenceCriterion::threshold>("threshold")
        .field<&ConvergenceCriterion::satisfied>("satisfied")
        .field<&ConvergenceCriterion::unit>("unit")
        .finish();
    RecordBinding<ConvergenceRecord>(module, "ConvergenceRecord", "The convergence tests of a step.")
        .field<&ConvergenceRecord::criteria>("criteria")
        .field<&ConvergenceRecord::status>("status")
        .field<&ConvergenceRecord::source>("source")
        .finish();
    RecordBinding<CalculationJob>(module, "CalculationJob", "One piece of work of a run on one system.")
        .field<&CalculationJob::id>("id")
        .field<&CalculationJob::system_id>("system_id")
        .field<&CalculationJob::ordinal>("ordinal")
        .field<&CalculationJob::parent_job_id>("parent_job_id")
        .field<&CalculationJob::relation>("relation")
        .field<&CalculationJob::tasks>("tasks")
        .field<&CalculationJob::primary_task>("primary_task")
        .field<&CalculationJob::method>("method")
        .field<&CalculationJob::basis_set>("basis_set")
        .field<&CalculationJob::keywords>("keywords")
        .field<&CalculationJob::step_ids>("step_ids")
        .field<&CalculationJob::termination>("termination")
        .field<&CalculationJob::source>("source")
        .finish();
    RecordBinding<CalculationStep>(module, "CalculationStep", "One point of a job's progress.")
        .field<&CalculationStep::id>("id")
        .field<&CalculationStep::job_id>("job_id")
        .field<&CalculationStep::system_id>("system_id")
        .field<&CalculationStep::ordinal>("ordinal")
        .field<&CalculationStep::native_cycle>("native_cycle")
        .field<&CalculationStep::frame_id>("frame_id")
        .field<&CalculationStep::energies>("energies")
        .field<&CalculationStep::primary_energy_id>("primary_energy_id")
        .field<&CalculationStep::gradient>("gradient")
        .field<&CalculationStep::convergence>("convergence")
        .field<&CalculationStep::source>("source")
        .finish();
}

}  // namespace

void bind_document_records(py::module_& module) {
    bind_vec3(module);
    bind_spans_and_diagnostics(module);
    bind_systems(module);
    bind_program(module);
    bind_jobs_and_steps(module);
}

}  // namespace morv::python
