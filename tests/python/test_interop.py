"""Documents through QCSchema, ASE and cclib and back: every real output that
the importers read, and the shared outputs when they are at hand, so that a
new program's outputs are covered as soon as they land in tests/data."""

import os
import pathlib

import numpy
import pytest

import morv_qc_json
from morv_qc_json import _units, interop

DATA = pathlib.Path(__file__).resolve().parents[1] / "data"
SHARED = pathlib.Path(os.environ.get("MORV_SHARED_OUTPUTS", "/nonexistent"))


def imported_outputs(folders):
    """(path, document) of every file in the folders that import_output reads."""
    found = []
    for path in sorted(p for folder in folders if folder.is_dir() for p in folder.rglob("*") if p.is_file()):
        result = morv_qc_json.import_output(path)
        if result.status != morv_qc_json.ParseStatus.failed:
            found.append(pytest.param(result.value, id=str(path.relative_to(path.parents[1]))))
    return found


BUNDLED = imported_outputs(sorted(DATA.iterdir()))
EVERY = BUNDLED + imported_outputs([SHARED]) + [
    pytest.param(morv_qc_json.load(pathlib.Path(os.environ["MORV_EXAMPLES_DIR"]) / "orca_water_opt_freq.json").value,
                 id="orca_water_opt_freq.json")]


# QCSchema's names for the totals of the methods that the importers name so.
TOTALS = {"MP2": "mp2_total_energy", "CCSD": "ccsd_total_energy", "CCSD(T)": "ccsd_prt_pr_total_energy"}


def final_steps(document):
    steps = {step.id: step for step in document.steps}
    return [(job, steps[job.step_ids[-1]]) for job in document.jobs if len(job.step_ids)]


@pytest.mark.parametrize("document", EVERY)
def test_qcschema_results_validate_and_come_back(document):
    models = pytest.importorskip("qcelemental.models")
    results = interop.to_qcschema(document)
    assert len(results) == len(final_steps(document))
    for result, (job, step) in zip(results, final_steps(document)):
        model = models.AtomicResult(**result)
        frame = document.frames[[f.id for f in document.frames].index(step.frame_id)]
        primary = [e.value for e in step.energies if e.id == step.primary_energy_id][0]
        assert model.properties.return_energy == primary
        # qcelemental rounds a molecule's coordinates to 1e-8 bohr; the dict holds them whole.
        numpy.testing.assert_allclose(numpy.reshape(result["molecule"]["geometry"], (-1, 3)) * _units.BOHR_IN_ANGSTROM,
                                      frame.positions_angstrom.to_numpy(), rtol=0, atol=1e-12)
        for energy in step.energies:
            correlated = energy.kind == morv_qc_json.EnergyKind.correlated and energy.method in TOTALS
            if energy.kind == morv_qc_json.EnergyKind.scf or correlated:
                name = "scf_total_energy" if energy.kind == morv_qc_json.EnergyKind.scf else TOTALS[energy.method]
                assert getattr(model.properties, name) == energy.value
        if model.driver == "gradient":
            numpy.testing.assert_array_equal(model.return_result, step.gradient.vectors.to_numpy())

        back = interop.from_qcschema(result)
        numpy.testing.assert_allclose(back.frames[0].positions_angstrom.to_numpy(),
                                      frame.positions_angstrom.to_numpy(), rtol=0, atol=1e-12)
        assert list(back.steps[0].energies) == list(step.energies)
        assert back.steps[0].primary_energy_id == step.primary_energy_id
        assert (back.jobs[0].method, back.jobs[0].basis_set, list(back.jobs[0].tasks)) == (
            job.method, job.basis_set, list(job.tasks))
        assert [b.payload for b in back.analyses] == [b.payload for b in document.analyses if b.job_id == job.id]
        assert back.systems[0].electronic_state == document.systems[0].electronic_state
        assert list(morv_qc_json.validate_document(back)) == []

        # Without this library's extras, as from another program: energies from QCSchema's own fields.
        foreign = interop.from_qcschema(models.AtomicResult(**{**result, "extras": {}}))
        assert foreign.steps[0].energies[0].value == model.properties.scf_total_energy
        assert [e for e in foreign.steps[0].energies if e.id == foreign.steps[0].primary_energy_id][0].value == primary

    for optimization in interop.to_qcschema_optimizations(document):
        model = models.OptimizationResult(**optimization)
        job = [j for j in document.jobs if j.primary_task == morv_qc_json.TaskKind.optimization][0]
        assert len(model.trajectory) == len(job.step_ids)
        assert model.energies[-1] == model.trajectory[-1].properties.return_energy


@pytest.mark.parametrize("document", [p for p in EVERY if any(s.gradient for s in p.values[0].steps)])
def test_ase_extxyz_keeps_positions_energies_and_forces(document, tmp_path):
    ase_io = pytest.importorskip("ase.io")
    ase_io.write(tmp_path / "run.extxyz", interop.to_ase(document))
    read = ase_io.read(tmp_path / "run.extxyz", index=":")
    assert len(read) == len(document.frames)
    first_steps = {}
    for step in document.steps:
        first_steps.setdefault(step.frame_id, step)
    for atoms, frame in zip(read, document.frames):
        numpy.testing.assert_allclose(atoms.positions, frame.positions_angstrom.to_numpy(), atol=1e-8)
        step = first_steps[frame.id]
        primary = [e.value for e in step.energies if e.id == step.primary_energy_id][0]
        assert atoms.get_potential_energy() == pytest.approx(primary * _units.HARTREE_IN_EV, abs=1e-6)
        if step.gradient is not None:
            forces = -step.gradient.vectors.to_numpy() * _units.HARTREE_IN_EV / _units.BOHR_IN_ANGSTROM
            numpy.testing.assert_allclose(atoms.get_forces(), forces, atol=1e-7)

    back = interop.from_ase(read)
    assert [len(f.positions_angstrom) for f in back.frames] == [len(f.positions_angstrom) for f in document.frames]
    for step, frame in zip(back.steps, document.frames):
        original = first_steps[frame.id]
        assert step.energies[0].value == pytest.approx(
            [e.value for e in original.energies if e.id == original.primary_energy_id][0], abs=1e-9)
        if original.gradient is not None:
            numpy.testing.assert_allclose(step.gradient.vectors.to_numpy(), original.gradient.vectors.to_numpy(),
                                          atol=1e-9)


def cclib_outputs():
    bundled = sorted(p for p in (DATA / "gaussian").iterdir() if p.suffix in (".log", ".out"))
    # Programs without an importer of ours, as cclib reads them (its 1.6 fails on ORCA 6's outputs).
    return bundled + sorted((SHARED / "GAMESS").rglob("*.out"))[:4]


@pytest.mark.parametrize("path", cclib_outputs(), ids=lambda p: p.name)
def test_cclib_documents_hold_what_cclib_read(path):
    cclib = pytest.importorskip("cclib")
    data = cclib.io.ccread(str(path))
    result = interop.from_cclib(data)
    assert result.status == morv_qc_json.ParseStatus.complete
    assert [d.code for d in result.diagnostics] == ["interop.cclib.single_job"]
    document = result.value
    assert morv_qc_json.validate_document(document) == []
    numpy.testing.assert_array_equal(document.positions_array(), data.atomcoords)
    if path.parent.name == "gaussian":
        imported = morv_qc_json.import_output(path).value
        ours = [e.value for s in imported.steps for e in s.energies if e.kind == morv_qc_json.EnergyKind.scf]
        theirs = [e.value for s in document.steps for e in s.energies if e.kind == morv_qc_json.EnergyKind.scf]
        assert theirs == pytest.approx(ours, abs=1e-8)
        for kind in (morv_qc_json.VibrationalBlock, morv_qc_json.ExcitedStateBlock):
            mine = [b.payload for b in imported.analyses if isinstance(b.payload, kind)][-1:]
            read = [b.payload for b in document.analyses if isinstance(b.payload, kind)]
            assert len(read) == len(mine)
            if kind is morv_qc_json.VibrationalBlock and read:
                assert [m.frequency_cm1 for m in read[0].modes] == [m.frequency_cm1 for m in mine[0].modes]
            elif read:
                assert [s.excitation_energy for s in read[0].states] == pytest.approx(
                    [s.excitation_energy for s in mine[0].states], abs=1e-6)


def test_cclib_unreadable_input_fails_with_a_diagnostic():
    pytest.importorskip("cclib")
    result = interop.from_cclib(DATA / "gaussian" / "README.md")
    assert result.status == morv_qc_json.ParseStatus.failed
    assert [d.code for d in result.diagnostics] == ["interop.cclib.unreadable"]
