#include "bindings.hpp"

namespace morv::python {
namespace {

using namespace qc;

void bind_vibrations(py::module_& module) {
    RecordBinding<VibrationalMode>(module, "VibrationalMode", "One normal mode.")
        .field<&VibrationalMode::index>("index")
        .field<&VibrationalMode::frequency_cm1>("frequency_cm1")
        .field<&VibrationalMode::symmetry>("symmetry")
        .field<&VibrationalMode::reduced_mass_amu>("reduced_mass_amu")
        .field<&VibrationalMode::force_constant_mdyne_per_angstrom>("force_constant_mdyne_per_angstrom")
        .field<&VibrationalMode::ir_intensity_km_per_mol>("ir_intensity_km_per_mol")
        .field<&VibrationalMode::raman_activity>("raman_activity")
        .field<&VibrationalMode::displacements>("displacements")
        .finish();
    RecordBinding<VibrationalBlock>(module, "VibrationalBlock", "The normal modes of a frequency job.")
        .field<&VibrationalBlock::modes>("modes")
        .finish();
}

void bind_excited_states(py::module_& module) {
    RecordBinding<ExcitationContribution>(module, "ExcitationContribution", "One orbital pair of an excitation.")
        .field<&ExcitationContribution::label>("label")
        .field<&ExcitationContribution::from_orbital>("from_orbital")
        .field<&ExcitationContribution::to_orbital>("to_orbital")
        .field<&ExcitationContribution::from_type>("from_type")
        .field<&ExcitationContribution::to_type>("to_type")
        .field<&ExcitationContribution::from_spin>("from_spin")
        .field<&ExcitationContribution::to_spin>("to_spin")
        .field<&ExcitationContribution::coefficient>("coefficient")
        .field<&ExcitationContribution::weight>("weight")
        .field<&ExcitationContribution::reverse>("reverse")
        .finish();
    RecordBinding<AbsorptionPeak>(module, "AbsorptionPeak", "One line of an absorption spectrum.")
        .field<&AbsorptionPeak::spectrum_kind>("spectrum_kind")
        .field<&AbsorptionPeak::transition>("transition")
        .field<&AbsorptionPeak::target_state_index>("target_state_index")
        .field<&AbsorptionPeak::excitation_energy>("excitation_energy")
        .field<&AbsorptionPeak::reported_wavenumber_cm1>("reported_wavenumber_cm1")
        .field<&AbsorptionPeak::reported_wavelength_nm>("reported_wavelength_nm")
        .field<&AbsorptionPeak::oscillator_strength>("oscillator_strength")
        .field<&AbsorptionPeak::strength_label>("strength_label")
        .field<&AbsorptionPeak::strength>("strength")
        .field<&AbsorptionPeak::transition_moment_au>("transition_moment_au")
        .field<&AbsorptionPeak::rotatory_strength>("rotatory_strength")
        .field<&AbsorptionPeak::source>("source")
        .finish();
    RecordBinding<ExcitedState>(module, "ExcitedState", "One excited state.")
        .field<&ExcitedState::index>("index")
        .field<&ExcitedState::root_label>("root_label")
        .field<&ExcitedState::method>("method")
        .field<&ExcitedState::section>("section")
        .field<&ExcitedState::multiplicity_label>("multiplicity_label")
        .field<&ExcitedState::symmetry>("symmetry")
        .field<&ExcitedState::multiplicity>("multiplicity")
        .field<&ExcitedState::total_energy>("total_energy")
        .field<&ExcitedState::excitation_energy>("excitation_energy")
        .field<&ExcitedState::reported_millihartree>("reported_millihartree")
        .field<&ExcitedState::reported_wavenumber_cm1>("reported_wavenumber_cm1")
        .field<&ExcitedState::reported_wavelength_nm>("reported_wavelength_nm")
        .field<&ExcitedState::oscillator_strength>("oscillator_strength")
        .field<&ExcitedState::spin_squared>("spin_squared")
        .field<&ExcitedState::spin_contamination>("spin_contamination")
        .field<&ExcitedState::ground_state_amplitude>("ground_state_amplitude")
        .field<&ExcitedState::singles_character_percent>("singles_character_percent")
        .field<&ExcitedState::contributions>("contributions")
        .field<&ExcitedState::source>("source")
        .finish();
    RecordBinding<ExcitedStateBlock>(module, "ExcitedStateBlock", "The excited states of one calculation.")
        .field<&ExcitedStateBlock::block_index>("block_index")
        .field<&ExcitedStateBlock::method>("method")
        .field<&ExcitedStateBlock::section>("section")
        .field<&ExcitedStateBlock::comment>("comment")
        .field<&ExcitedStateBlock::states>("states")
        .field<&ExcitedStateBlock::total_energies>("total_energies")
        .field<&ExcitedStateBlock::preferred_total_energy_id>("preferred_total_energy_id")
        .field<&ExcitedStateBlock::absorption_peaks>("absorption_peaks")
        .finish();
}

void bind_orbitals_and_thermochemistry(py::module_& module) {
    RecordBinding<Orbital>(module, "Orbital", "One molecular orbital.")
        .field<&Orbital::index>("index")
        .field<&Orbital::spin>("spin")
        .field<&Orbital::occupation>("occupation")
        .field<&Orbital::energy>("energy")
        .field<&Orbital::symmetry>("symmetry")
        .field<&Orbital::kind>("kind")
        .finish();
    RecordBinding<OrbitalSetBlock>(module, "OrbitalSetBlock", "A set of orbitals of one spin.")
        .field<&OrbitalSetBlock::spin>("spin")
        .field<&OrbitalSetBlock::kind>("kind")
        .field<&OrbitalSetBlock::orbitals>("orbitals")
        .finish();
    RecordBinding<ThermochemistryBlock>(module, "ThermochemistryBlock", "Thermochemistry of a frequency job.")
        .field<&ThermochemistryBlock::temperature_kelvin>("temperature_kelvin")
        .field<&ThermochemistryBlock::pressure_atmosphere>("pressure_atmosphere")
        .field<&ThermochemistryBlock::total_mass_amu>("total_mass_amu")
        .field<&ThermochemistryBlock::electronic_energy>("electronic_energy")
        .field<&ThermochemistryBlock::zero_point_energy>("zero_point_energy")
        .field<&ThermochemistryBlock::thermal_energy>("thermal_energy")
        .field<&ThermochemistryBlock::thermal_correction>("thermal_correction")
        .field<&ThermochemistryBlock::enthalpy>("enthalpy")
        .field<&ThermochemistryBlock::enthalpy_correction>("enthalpy_correction")
        .field<&ThermochemistryBlock::entropy_correction>("entropy_correction")
        .field<&ThermochemistryBlock::gibbs_free_energy>("gibbs_free_energy")
        .field<&ThermochemistryBlock::gibbs_correction>("gibbs_correction")
        .finish();
}

void bind_properties(py::module_& module) {
    RecordBinding<PermanentDipole>(module, "PermanentDipole", "One permanent dipole moment.")
        .field<&PermanentDipole::atomic_units>("atomic_units")
        .field<&PermanentDipole::magnitude_atomic_units>("magnitude_atomic_units")
        .field<&PermanentDipole::magnitude_debye>("magnitude_debye")
        .field<&PermanentDipole::method>("method")
        .field<&PermanentDipole::density_type>("density_type")
        .field<&PermanentDipole::source>("source")
        .finish();
    RecordBinding<DipoleBlock>(module, "DipoleBlock", "The dipole moments of a job.")
        .field<&DipoleBlock::moments>("moments")
        .finish();
    RecordBinding<AtomicChargeRecord>(module, "AtomicChargeRecord", "The population analysis of one atom.")
        .field<&AtomicChargeRecord::atom_index>("atom_index")
        .field<&AtomicChargeRecord::element>("element")
        .field<&AtomicChargeRecord::population>("population")
        .field<&AtomicChargeRecord::charge>("charge")
        .field<&AtomicChargeRecord::spin_population>("spin_population")
        .field<&AtomicChargeRecord::secondary_population>("secondary_population")
        .field<&AtomicChargeRecord::secondary_charge>("secondary_charge")
        .finish();
    RecordBinding<AtomicChargeBlock>(module, "AtomicChargeBlock", "Atomic charges of one scheme.")
        .field<&AtomicChargeBlock::scheme>("scheme")
        .field<&AtomicChargeBlock::records>("records")
        .finish();
    RecordBinding<ScalarProperty>(module, "ScalarProperty", "One named number.")
        .field<&ScalarProperty::key>("key")
        .field<&ScalarProperty::label>("label")
        .field<&ScalarProperty::value>("value")
        .field<&ScalarProperty::unit>("unit")
        .field<&ScalarProperty::source>("source")
        .finish();
    RecordBinding<ScalarPropertyBlock>(module, "ScalarPropertyBlock", "Named numbers of a job.")
        .field<&ScalarPropertyBlock::properties>("properties")
        .finish();
}

// The payload is the alternative itself, changed in place; assigning any of
// the seven block types switches the alternative.
void bind_analysis_block(py::module_& module) {
    RecordBinding<AnalysisBlock>(module, "AnalysisBlock", "One typed analysis derived from a job.")
        .field<&AnalysisBlock::id>("id")
        .field<&AnalysisBlock::job_id>("job_id")
        .field<&AnalysisBlock::ordinal>("ordinal")
        .field<&AnalysisBlock::reference_step_id>("reference_step_id")
        .field<&AnalysisBlock::payload>("payload")
        .field<&AnalysisBlock::source>("source")
        .finish();
}

}  // namespace

void bind_analysis_records(py::module_& module) {
    bind_vibrations(module);
    bind_excited_states(module);
    bind_orbitals_and_thermochemistry(module);
    bind_properties(module);
    bind_analysis_block(module);
}

}  // namespace morv::python
