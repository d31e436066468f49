"""No sequence of calls can make a Python object read freed memory or another
record: random sequences against a plain-Python model of the same lists, and
the short sequences that crashed earlier versions, each run as a script."""

import copy
import subprocess
import sys
import threading

import pytest
from hypothesis import settings, strategies as st
from hypothesis.stateful import RuleBasedStateMachine, invariant, precondition, rule

import morv_qc_json as qc


class Step:
    """The model of one step: what the document must hold."""

    def __init__(self, id, energies=(), gradient=None):
        self.id, self.energies, self.gradient = id, list(energies), gradient

    def record(self):
        gradient = None if self.gradient is None else qc.GradientRecord(norm=self.gradient)
        return qc.CalculationStep(id=self.id, energies=[qc.EnergyRecord(value=v) for v in self.energies],
                                  gradient=gradient)


# The field read and written through each kind of held record.
FIELDS = {"step": "id", "energy": "value", "gradient": "norm"}


class Held:
    """An object taken from the document and kept: it reads what the model
    says while it is valid, and raises RuntimeError once the model says its
    place was replaced or moved."""

    def __init__(self, kind, handle, step, index=None):
        self.kind, self.handle, self.step, self.index, self.valid = kind, handle, step, index, True

    def read(self):
        return len(self.handle.moments) if self.kind == "payload" else getattr(self.handle, FIELDS[self.kind])

    def write(self, value):
        if self.kind == "payload":
            self.handle.moments.append(qc.PermanentDipole())
        else:
            setattr(self.handle, FIELDS[self.kind], value)

    def expected(self, machine):
        if self.kind == "energy":
            return self.step.energies[self.index]
        if self.kind == "payload":
            return machine.moments
        return self.step.id if self.kind == "step" else self.step.gradient


ids = st.integers(min_value=0, max_value=2**32 - 1)
values = st.integers(min_value=-10**6, max_value=10**6).map(float)


class DocumentMachine(RuleBasedStateMachine):
    def __init__(self):
        super().__init__()
        self.document = qc.Document(analyses=[qc.AnalysisBlock(payload=qc.DipoleBlock())])
        self.steps = []
        self.moments = 0
        self.held = []

    def forget(self, predicate):
        for held in self.held:
            if predicate(held):
                held.valid = False

    def reorder(self):
        self.forget(lambda held: held.kind != "payload")

    # Changes to the list of steps.
    @rule(id=ids, energies=st.lists(values, max_size=3))
    def append(self, id, energies):
        self.document.steps.append(Step(id, energies).record())
        self.steps.append(Step(id, energies))

    @rule(index=st.integers(-3, 3), id=ids)
    def insert(self, index, id):
        self.document.steps.insert(index, qc.CalculationStep(id=id))
        self.steps.insert(index, Step(id))
        self.reorder()

    @precondition(lambda self: self.steps)
    @rule(data=st.data())
    def delete(self, data):
        index = data.draw(st.integers(0, len(self.steps) - 1))
        del self.document.steps[index]
        del self.steps[index]
        self.reorder()

    @rule()
    def clear(self):
        self.document.steps.clear()
        self.steps.clear()
        self.reorder()

    @rule(start=st.integers(0, 3), stop=st.integers(0, 3), id=ids)
    def assign_slice(self, start, stop, id):
        self.document.steps[start:stop] = [qc.CalculationStep(id=id)]
        self.steps[start:stop] = [Step(id)]
        self.reorder()

    @precondition(lambda self: self.steps)
    @rule(data=st.data(), id=ids)
    def replace_element(self, data, id):
        index = data.draw(st.integers(0, len(self.steps) - 1))
        self.document.steps[index] = qc.CalculationStep(id=id)
        old = self.steps[index]
        self.steps[index] = Step(id)
        self.forget(lambda held: held.step is old)

    @rule()
    def sort_and_assign(self):
        self.document.steps = sorted(self.document.steps, key=lambda step: -step.id)
        self.steps = [copy.deepcopy(step) for step in sorted(self.steps, key=lambda step: -step.id)]
        self.reorder()

    # Holding elements and their parts.
    @precondition(lambda self: self.steps)
    @rule(data=st.data())
    def hold_step(self, data):
        index = data.draw(st.integers(0, len(self.steps) - 1))
        self.held.append(Held("step", self.document.steps[index], self.steps[index]))

    @precondition(lambda self: any(step.energies for step in self.steps))
    @rule(data=st.data())
    def hold_energy(self, data):
        index = data.draw(st.sampled_from([i for i, step in enumerate(self.steps) if step.energies]))
        energy = data.draw(st.integers(0, len(self.steps[index].energies) - 1))
        handle = self.document.steps[index].energies[energy]
        self.held.append(Held("energy", handle, self.steps[index], energy))

    @precondition(lambda self: any(step.gradient is not None for step in self.steps))
    @rule(data=st.data())
    def hold_gradient(self, data):
        index = data.draw(st.sampled_from([i for i, step in enumerate(self.steps) if step.gradient is not None]))
        self.held.append(Held("gradient", self.document.steps[index].gradient, self.steps[index]))

    @rule()
    def hold_payload(self):
        self.held.append(Held("payload", self.document.analyses[0].payload, None))

    # Writing through held objects, and changes to the parts they stand for.
    @precondition(lambda self: self.held)
    @rule(data=st.data(), value=values)
    def write_through_held(self, data, value):
        held = data.draw(st.sampled_from(self.held))
        value = int(abs(value)) if held.kind == "step" else value
        if not held.valid:
            with pytest.raises(RuntimeError):
                held.write(value)
            return
        held.write(value)
        if held.kind == "energy":
            held.step.energies[held.index] = value
        elif held.kind == "payload":
            self.moments += 1
        elif held.kind == "step":
            held.step.id = value
        else:
            held.step.gradient = value

    @precondition(lambda self: self.steps)
    @rule(data=st.data(), energies=st.lists(values, max_size=3))
    def assign_energies(self, data, energies):
        index = data.draw(st.integers(0, len(self.steps) - 1))
        self.document.steps[index].energies = [qc.EnergyRecord(value=v) for v in energies]
        step = self.steps[index]
        step.energies = list(energies)
        self.forget(lambda held: held.kind == "energy" and held.step is step)

    @precondition(lambda self: self.steps)
    @rule(data=st.data(), norm=st.one_of(st.none(), values))
    def set_or_unset_gradient(self, data, norm):
        index = data.draw(st.integers(0, len(self.steps) - 1))
        self.document.steps[index].gradient = None if norm is None else qc.GradientRecord(norm=norm)
        step = self.steps[index]
        step.gradient = norm
        self.forget(lambda held: held.kind == "gradient" and held.step is step)

    @rule(vibrations=st.booleans())
    def switch_payload(self, vibrations):
        self.document.analyses[0].payload = qc.VibrationalBlock() if vibrations else qc.DipoleBlock()
        self.moments = 0
        self.forget(lambda held: held.kind == "payload")
        if vibrations:
            self.document.analyses[0].payload = qc.DipoleBlock()

    @invariant()
    def document_matches_the_model(self):
        steps = self.document.steps
        assert [s.id for s in steps] == [s.id for s in self.steps]
        assert [[e.value for e in s.energies] for s in steps] == [s.energies for s in self.steps]
        assert [s.gradient.norm if s.gradient else None for s in steps] == [s.gradient for s in self.steps]
        assert len(self.document.analyses[0].payload.moments) == self.moments
        for held in self.held:
            if held.valid:
                assert held.read() == held.expected(self)
            else:
                with pytest.raises(RuntimeError):
                    held.read()
        assert qc.loads(qc.dumps(self.document)).value == self.document


DocumentMachine.TestCase.settings = settings(max_examples=300, stateful_step_count=25, deadline=None, database=None)
test_random_sequences_of_calls = DocumentMachine.TestCase


# Each ended in a segmentation fault, an abort or a read of freed memory.
CRASHES = {
    "growth_after_holding": """
d = Document(); d.steps.append(CalculationStep(id=1)); s = d.steps[0]
for i in range(2, 3000): d.steps.append(CalculationStep(id=i))
s.id = 7
assert d.steps[0].id == 7""",
    "write_after_clear": """
d = Document(steps=[CalculationStep(id=1)])
s = d.steps[0]; d.steps.clear(); s.energies = [EnergyRecord()] * 3""",
    "payload_switched": """
block = AnalysisBlock(payload=DipoleBlock())
p = block.payload; block.payload = OrbitalSetBlock(); p.moments.append(PermanentDipole())""",
    "optional_unset": """
step = CalculationStep(gradient=GradientRecord())
g = step.gradient; step.gradient = None; g.vectors.append((1, 2, 3))""",
    "circular_extension": """
a = []; a.append(a); Document().extensions = {"x": a}""",
    "sorted_and_assigned": """
d = Document(steps=[CalculationStep(id=i) for i in (1, 2, 3)])
ss = sorted(d.steps, key=lambda s: -s.id); d.steps = ss
assert [s.id for s in d.steps] == [3, 2, 1]
[s.id for s in ss]""",
}


@pytest.mark.parametrize("name", sorted(CRASHES))
def test_sequences_that_crashed_end_normally_or_in_an_exception(name):
    script = "from morv_qc_json import *\n" + CRASHES[name]
    completed = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True, check=False)
    assert completed.returncode in (0, 1), completed.stderr
    assert completed.returncode == 0 or completed.stderr.splitlines()[-1].split(":")[0] in {
        "RuntimeError", "ValueError"}, completed.stderr


def test_writing_while_another_thread_replaces_the_lists():
    states = [qc.Document(steps=[qc.CalculationStep(id=i) for i in range(n * 500)]) for n in range(4)]
    document = copy.deepcopy(states[3])
    done = threading.Event()
    written = set()

    def write():
        while not done.is_set():
            written.add(qc.dumps(document))

    writer = threading.Thread(target=write)
    writer.start()
    for round in range(100):
        document.steps = states[round % 4].steps
    done.set()
    writer.join()
    # Every text written is one of the states the document went through.
    assert written <= {qc.dumps(state) for state in states}
