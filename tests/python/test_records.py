"""The model as Python objects: keyword construction, fields, equality, repr,
lists that change the document in place, and types refused."""

import numpy as np
import pytest

import morv_qc_json as qc


def small_document():
    step = qc.CalculationStep(
        id=1, job_id=1, system_id=1, ordinal=1,
        energies=[qc.EnergyRecord(id=1, kind=qc.EnergyKind.scf, value=-1.5)],
    )
    return qc.Document(
        program=qc.ProgramInfo(kind=qc.ProgramKind.gaussian, name="g16"),
        systems=[qc.ChemicalSystem(id=1, topology=qc.Topology(atoms=[qc.AtomSite(id=1, symbol="H", raw_label="H")]))],
        jobs=[qc.CalculationJob(id=1, system_id=1, tasks=[qc.TaskKind.optimization], step_ids=[1])],
        steps=[step],
    )


def test_keyword_construction_defaults_and_repr():
    span = qc.SourceSpan(source_id=2, begin=qc.SourcePosition(line=3), end=qc.SourcePosition(line=4))
    assert repr(span) == ("SourceSpan(source_id=2, begin=SourcePosition(offset=0, line=3, column=0), "
                          "end=SourcePosition(offset=0, line=4, column=0))")
    step = qc.CalculationStep(id=7)
    assert (step.id, step.ordinal, step.native_cycle, step.gradient, len(step.energies)) == (7, 0, None, None, 0)
    assert qc.Termination().kind == qc.TerminationKind.unknown
    assert qc.RequestedAnalyses().dipoles is True
    assert qc.Vec3(1, 2, 3) == qc.Vec3(x=1.0, y=2.0, z=3.0) != qc.Vec3()
    with pytest.raises(TypeError, match="unexpected keyword argument 'identifier'"):
        qc.CalculationStep(identifier=1)


def test_a_document_built_in_python_writes_what_it_reads_back():
    document = small_document()
    document.metadata = {"host": "node1", "cores": 4, "ok": True, "temps": [1.0, 2], "tags": ["a"], "none": []}
    document.extensions = {"x_run": {"id": None, "big": 2**64 - 1, "list": [1.5, "a", False]}}
    result = qc.loads(qc.dumps(document))
    assert result.value == document
    assert result.value.metadata == {"host": "node1", "cores": 4, "ok": True, "temps": [1.0, 2.0],
                                     "tags": ["a"], "none": []}
    assert result.value.extensions == document.extensions
    assert [d.code for d in qc.validate_document(document)] == []


def test_lists_and_sub_records_change_the_document_in_place():
    document = small_document()
    document.steps.append(qc.CalculationStep(id=2, job_id=1, system_id=1))
    document.steps[0].energies[0].value = -2.5
    document.steps[0].gradient = qc.GradientRecord(norm=0.5)
    document.steps[0].gradient.rms = 0.25
    document.jobs[0].step_ids.append(2)
    document.jobs[0].tasks.append(qc.TaskKind.frequency)
    document.program.termination.kind = qc.TerminationKind.normal
    del document.systems[0].topology.atoms[0]
    document.analyses.append(qc.AnalysisBlock(id=1, job_id=1, payload=qc.DipoleBlock()))
    document.analyses[0].payload.moments.append(qc.PermanentDipole(method="SCF"))

    result = qc.loads(qc.dumps(document))
    read = result.value
    assert [s.id for s in read.steps] == [1, 2]
    assert read.steps[0].energies[0].value == -2.5
    assert (read.steps[0].gradient.norm, read.steps[0].gradient.rms) == (0.5, 0.25)
    assert list(read.jobs[0].step_ids) == [1, 2]
    assert list(read.jobs[0].tasks) == [qc.TaskKind.optimization, qc.TaskKind.frequency]
    assert read.program.termination.kind == qc.TerminationKind.normal
    assert len(read.systems[0].topology.atoms) == 0
    assert read.analyses[0].payload.moments[0].method == "SCF"
    assert read == document


@pytest.mark.parametrize(
    "record, field, value",
    [
        (qc.CalculationStep(), "id", "1"),
        (qc.CalculationStep(), "id", -1),
        (qc.CalculationStep(), "id", 2**32),
        (qc.CalculationStep(), "id", 1.0),
        (qc.CalculationStep(), "ordinal", None),
        (qc.CalculationStep(), "energies", [1, 2]),
        (qc.CalculationStep(), "gradient", qc.ConvergenceRecord()),
        (qc.EnergyRecord(), "kind", 2),
        (qc.EnergyRecord(), "value", "1.0"),
        (qc.EnergyRecord(), "label", b"bytes"),
        (qc.SourceFile(), "sha256", 5),
        (qc.AnalysisBlock(), "payload", qc.Document()),
        (qc.Document(), "metadata", {"k": {"nested": 1}}),
        (qc.Document(), "metadata", {"k": [1, "a"]}),
        (qc.Document(), "metadata", {1: "a"}),
        (qc.Document(), "extensions", {"k": object()}),
    ],
)
def test_wrong_types_are_refused_with_type_error(record, field, value):
    with pytest.raises(TypeError):
        setattr(record, field, value)


def test_one_byte_spins_and_vectors_from_numpy():
    contribution = qc.ExcitationContribution(from_spin="a", to_spin="\udcff")
    assert (contribution.from_spin, contribution.to_spin) == ("a", "\udcff")
    with pytest.raises(ValueError):
        contribution.from_spin = "ab"

    positions = np.arange(12, dtype=np.float32).reshape(4, 3)
    frame = qc.GeometryFrame(id=1, system_id=1, positions_angstrom=positions)
    assert frame.positions_angstrom[3] == qc.Vec3(9, 10, 11)
    back = np.asarray(frame.positions_angstrom)
    assert back.dtype == np.float64 and back.shape == (4, 3)
    assert np.array_equal(back, positions)
    assert frame.positions_angstrom.to_numpy().shape == (4, 3)
    frame.positions_angstrom = [(0, 0, 1), qc.Vec3(1, 0, 0)]
    assert np.array_equal(np.asarray(frame.positions_angstrom), [[0, 0, 1], [1, 0, 0]])
    frame.positions_angstrom = np.empty((0, 3))
    assert np.asarray(frame.positions_angstrom).shape == (0, 3)
    with pytest.raises((TypeError, ValueError)):
        frame.positions_angstrom = np.zeros((2, 4))
