"""The model as Python objects: keyword construction, fields, equality, repr,
lists that change the document in place, values refused, enumerations, copy
and pickle, and arrays."""

import copy
import pickle

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
    assert qc.Vec3(1, 2, 3) == qc.Vec3(x=1.0, y=2.0, z=3.0) == qc.Vec3((1, 2, 3)) != qc.Vec3()
    with pytest.raises(TypeError, match="unexpected keyword argument 'identifier'"):
        qc.CalculationStep(identifier=1)


def test_reprs_stay_short_whatever_the_size():
    document = qc.Document(steps=[qc.CalculationStep(id=i, energies=[qc.EnergyRecord()] * 50) for i in range(10000)],
                           metadata={f"key{i}": "x" * 1000 for i in range(100)})
    assert len(repr(document)) < 2000
    assert "steps=CalculationStepList(len=10000)" in repr(document)
    steps = repr(document.steps)
    assert steps.startswith("CalculationStepList([CalculationStep(id=0, ") and steps.endswith("], len=10000)")
    assert steps.count("CalculationStep(id=") == 6 and "energies=EnergyRecordList(len=50)" in steps
    assert repr(qc.StepIdList([1, 2])) == "StepIdList([1, 2])"


def test_a_document_built_in_python_writes_what_it_reads_back():
    document = small_document()
    document.metadata = {"host": "node1", "cores": np.int32(4), "ok": np.bool_(True), "temps": [1.0, np.float32(2)],
                         "tags": ["a"], "none": []}
    document.extensions = {"x_run": {"id": None, "big": 2**64 - 1, "list": [1.5, "a", False, np.int64(-3)]}}
    result = qc.loads(qc.dumps(document))
    assert result.value == document
    assert result.value.metadata == {"host": "node1", "cores": 4, "ok": True, "temps": [1.0, 2.0],
                                     "tags": ["a"], "none": []}
    assert result.value.extensions == {"x_run": {"id": None, "big": 2**64 - 1, "list": [1.5, "a", False, -3]}}
    assert [d.code for d in qc.validate_document(document)] == []


def test_lists_and_sub_records_change_the_document_in_place():
    # Steps, energies, gradients and payloads are held and changed by the
    # random sequences of test_lifetimes; here the other kinds of list and
    # sub-record.
    document = small_document()
    document.jobs[0].step_ids.append(2)
    document.jobs[0].tasks.append(qc.TaskKind.frequency)
    document.program.termination.kind = qc.TerminationKind.normal
    del document.systems[0].topology.atoms[0]
    document.analyses.append(qc.AnalysisBlock(id=1, job_id=1, payload=qc.DipoleBlock()))

    read = qc.loads(qc.dumps(document)).value
    assert read.jobs[0].step_ids == [1, 2]
    assert read.jobs[0].tasks == [qc.TaskKind.optimization, qc.TaskKind.frequency]
    assert read.program.termination.kind == qc.TerminationKind.normal
    assert len(read.systems[0].topology.atoms) == 0
    assert isinstance(read.analyses[0].payload, qc.DipoleBlock)
    assert read == document


def test_list_methods_behave_as_pythons_own():
    steps = qc.StepIdList([5, 6, 7, 8])
    plain = [5, 6, 7, 8]
    for apply in [lambda l: l.insert(-1, 9), lambda l: l.remove(6), lambda l: l.pop(0), lambda l: l.extend((1, 1)),
                  lambda l: l.__setitem__(slice(None, None, 2), [0, 0, 0]), lambda l: l.__delitem__(slice(1, 3))]:
        assert apply(steps) == apply(plain)
        assert list(steps) == plain
    assert (steps.count(0), steps.index(1), 1 in steps, "1" in steps, steps[-1], steps[:2]) == (
        plain.count(0), plain.index(1), True, False, plain[-1], plain[:2])
    with pytest.raises(IndexError):
        steps[10]
    with pytest.raises(ValueError):
        steps.remove(42)


def nested(depth):
    value = []
    for _ in range(depth):
        value = [value]
    return value


@pytest.mark.parametrize(
    "record, field, value, error, message",
    [
        (qc.CalculationStep(), "id", "1", TypeError, "CalculationStep.id: expected int, not str"),
        (qc.CalculationStep(), "id", -1, OverflowError, "CalculationStep.id: the value does not fit an int from 0 to 4294967295"),
        (qc.CalculationStep(), "id", 2**32, OverflowError, "CalculationStep.id"),
        (qc.CalculationStep(), "id", 1.0, TypeError, "expected int, not float"),
        (qc.CalculationStep(), "id", True, TypeError, "expected int, not bool"),
        (qc.CalculationStep(), "ordinal", None, TypeError, "CalculationStep.ordinal: expected int, not NoneType"),
        (qc.CalculationStep(), "energies", [1, 2], TypeError, "CalculationStep.energies: expected EnergyRecord, not int"),
        (qc.CalculationStep(), "gradient", qc.ConvergenceRecord(), TypeError, "expected GradientRecord or None"),
        (qc.EnergyRecord(), "kind", 2, TypeError, "EnergyRecord.kind: expected EnergyKind, not int"),
        (qc.EnergyRecord(), "value", "1.0", TypeError, "EnergyRecord.value: expected float, not str"),
        (qc.EnergyRecord(), "value", 10**400, OverflowError, "EnergyRecord.value"),
        (qc.EnergyRecord(), "label", b"bytes", TypeError, "EnergyRecord.label: expected str, not bytes"),
        (qc.ExcitationContribution(), "from_spin", "ab", ValueError, "one character standing for one byte"),
        (qc.GeometryFrame(), "positions_angstrom", np.zeros((2, 4)), ValueError, r"shape \(N, 3\)"),
        (qc.AnalysisBlock(), "payload", qc.Document(), TypeError, "expected one of VibrationalBlock, "),
        (qc.Document(), "steps", 5, TypeError, "Document.steps: expected an iterable of CalculationStep, not int$"),
        (qc.Document(), "metadata", {"k": {"nested": 1}}, TypeError, r"Document.metadata\['k'\]"),
        (qc.Document(), "metadata", {"k": [1, "a"]}, TypeError, "only texts or only numbers"),
        (qc.Document(), "metadata", {"x": 2**70}, OverflowError, r"Document.metadata\['x'\]"),
        (qc.Document(), "metadata", {1: "a"}, TypeError, "keys must be str, not int"),
        (qc.Document(), "extensions", {"k": object()}, TypeError, "Document.extensions: expected None, bool"),
        (qc.Document(), "extensions", {"k": 2**64}, OverflowError, "Document.extensions"),
        (qc.Document(), "extensions", {"k": nested(450)}, ValueError, "nests deeper than 400 levels"),
    ],
)
def test_values_that_do_not_fit_are_refused_with_a_short_message(record, field, value, error, message):
    before = copy.deepcopy(record)
    with pytest.raises(error, match=message) as raised:
        setattr(record, field, value)
    assert len(str(raised.value)) < 200
    assert record == before


def test_numpy_scalars_stand_for_ints_and_floats():
    step = qc.CalculationStep(id=np.uint16(3), ordinal=np.int64(4), energies=[qc.EnergyRecord(value=np.float32(0.5))])
    assert (step.id, step.ordinal, step.energies[0].value) == (3, 4, 0.5)
    assert type(step.id) is int and type(step.energies[0].value) is float


def test_enumerations_from_numbers_and_wire_words():
    assert qc.EnergyKind("scf") is qc.EnergyKind(2) is qc.EnergyKind.scf
    assert f"{qc.Severity.warning:>8}|" == " warning|"
    for wrong in [99, -1, "SCF", "nonsense"]:
        with pytest.raises(ValueError):
            qc.EnergyKind(wrong)
    enumerations = [qc.ParseStatus, qc.Severity, qc.ProgramKind, qc.ResultProfile, qc.TerminationKind, qc.TaskKind,
                    qc.JobRelation, qc.EnergyKind, qc.ConvergenceStatus, qc.CriterionKind, qc.SpinChannel]
    for enumeration in enumerations:
        for member in enumeration:
            assert qc.to_string(member) == member.name and enumeration(member.name) is member
    with pytest.raises(TypeError):
        qc.to_string(2)


@pytest.mark.parametrize("make", [
    small_document,
    lambda: qc.loads(b'{"schema":"morv.qc.document.v2","program":{"kind":"orca","name":"caf\xe9"},"steps":[{"id":1}]}'),
    lambda: qc.Document(extensions={"x_zero": -0.0}, metadata={"m": ["2 "]}),
    lambda: small_document().steps[0],
    lambda: small_document().steps,
    lambda: qc.AnalysisBlock(payload=qc.ExcitedStateBlock(states=[qc.ExcitedState(contributions=[
        qc.ExcitationContribution(from_spin="\udcff")])])),
    lambda: qc.Vec3List(np.arange(6.0).reshape(2, 3)),
])
def test_copies_and_pickles_are_equal_and_independent(make):
    original = make()
    for duplicate in [copy.copy(original), copy.deepcopy(original), pickle.loads(pickle.dumps(original))]:
        assert type(duplicate) is type(original) and duplicate == original
    duplicate = copy.deepcopy(original)
    target = duplicate.value if isinstance(duplicate, qc.ParseResult) else duplicate
    if isinstance(target, qc.Document):
        target.steps.append(qc.CalculationStep(id=99))
        assert duplicate != original


def test_arrays_of_a_whole_document():
    document = qc.Document(
        frames=[qc.GeometryFrame(id=i, positions_angstrom=np.full((2, 3), float(i))) for i in (1, 2)],
        steps=[qc.CalculationStep(id=7, energies=[qc.EnergyRecord(id=1, kind=qc.EnergyKind.scf, value=-1.0),
                                                  qc.EnergyRecord(id=2, value=-2.0)]),
               qc.CalculationStep(id=8, energies=[qc.EnergyRecord(id=3, kind=qc.EnergyKind.gibbs_free, value=-3.0)])])
    energies = document.energies_array()
    assert energies.tolist() == [(7, 1, 2, -1.0), (7, 2, 0, -2.0), (8, 3, 5, -3.0)]
    assert energies.dtype.names == ("step_id", "energy_id", "kind", "value")
    positions = document.positions_array()
    assert positions.shape == (2, 2, 3) and positions[1, 0, 0] == 2.0
    document.set_positions_array(positions * 10)
    assert np.asarray(document.frames[1].positions_angstrom)[1, 2] == 20.0
    with pytest.raises(ValueError):
        document.set_positions_array(np.zeros((3, 2, 3)))
    document.frames[0].positions_angstrom = [(0, 0, 1)]
    with pytest.raises(ValueError):
        document.positions_array()

    frame = qc.GeometryFrame(positions_angstrom=np.arange(12, dtype=np.float32).reshape(4, 3))
    assert frame.positions_angstrom[3] == qc.Vec3(9, 10, 11)
    back = np.asarray(frame.positions_angstrom)
    assert back.dtype == np.float64 and back.shape == (4, 3) and back[3, 2] == 11
    frame.positions_angstrom = np.empty((0, 3))
    assert frame.positions_angstrom.to_numpy().shape == (0, 3)
