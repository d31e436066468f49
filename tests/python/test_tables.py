"""The tables against the documents they were made from: one row per record,
the values as the records hold them."""

import os
import pathlib

import pytest

import morv_qc_json
from morv_qc_json import _units

pytest.importorskip("pandas")
from morv_qc_json import tables  # noqa: E402

OUTPUTS = sorted(str(p) for p in (pathlib.Path(__file__).resolve().parents[1] / "data" / "gaussian").iterdir()
                 if p.suffix in (".log", ".out"))
PATHS = OUTPUTS + [os.path.join(os.environ["MORV_EXAMPLES_DIR"], "orca_water_opt_freq.json")]


def payloads(document, kind):
    return [block for block in document.analyses if isinstance(block.payload, kind)]


@pytest.mark.parametrize("table, records, values, column", [
    (tables.energies, lambda d: [e for s in d.steps for e in s.energies], lambda e: e.value, "energy_hartree"),
    (tables.steps, lambda d: list(d.steps), lambda s: s.frame_id, "frame_id"),
    (tables.jobs, lambda d: list(d.jobs), lambda j: ",".join(t.name for t in j.tasks), "tasks"),
    (tables.vibrations, lambda d: [m for b in payloads(d, morv_qc_json.VibrationalBlock) for m in b.payload.modes],
     lambda m: m.frequency_cm1, "frequency_cm1"),
    (tables.excited_states,
     lambda d: [s for b in payloads(d, morv_qc_json.ExcitedStateBlock) for s in b.payload.states],
     lambda s: _units.EV_NANOMETRE / (s.excitation_energy * _units.HARTREE_IN_EV), "wavelength_nm"),
])
def test_one_row_per_record_with_its_values(table, records, values, column):
    frame = table(PATHS)
    documents = [morv_qc_json._documents.read_document(path).value for path in PATHS]
    expected = [(path, values(record)) for path, document in zip(PATHS, documents) for record in records(document)]
    assert list(zip(frame["document"], frame[column])) == expected
    # By position when the documents are given, not their paths; and the same columns with no rows at all.
    assert list(table(documents)["document"].unique()) == [i for i, d in enumerate(documents) if records(d)]
    empty = table([])
    assert len(empty) == 0 and (empty.dtypes == frame.dtypes).all()


def test_energy_columns_carry_units_and_the_primary_mark():
    frame = tables.energies({"td": morv_qc_json.import_output(OUTPUTS[3])})
    assert frame["energy_ev"].tolist() == pytest.approx((frame["energy_hartree"] * _units.HARTREE_IN_EV).tolist())
    assert frame[frame["primary"]]["kind"].tolist() == ["excited_state_total"]
    assert set(frame["document"]) == {"td"}
    assert tables.energies(OUTPUTS[3]).equals(tables.energies([OUTPUTS[3]]))
