"""Documents as pandas DataFrames, one row per record, for sorting, grouping
and plotting many runs at once.

Each table starts with a `document` column that names the row's document:
its path when the documents were given as paths (or as a mapping from names),
else its position in the sequence. Column names carry their units. Each table
has fixed columns and dtypes, also when it has no rows, so that tables of
several batches concatenate and dask can know a table's shape before reading.
pandas is imported when a table is made.
"""

from __future__ import annotations

import os
from collections.abc import Callable, Iterable, Iterator, Mapping
from typing import TYPE_CHECKING, Any, TypeAlias

from . import _units
from ._core import CalculationStep, Document, ExcitedStateBlock, ParseResult, VibrationalBlock
from ._documents import primary_energy, read_document

if TYPE_CHECKING:
    import pandas  # type: ignore[import]

DocumentLike: TypeAlias = Document | ParseResult | str | os.PathLike[str]
Documents: TypeAlias = DocumentLike | Iterable[DocumentLike] | Mapping[str, Document | ParseResult]
Row: TypeAlias = dict[str, Any]

# Columns and their dtypes. Optional integers take pandas' nullable Int64,
# optional numbers NaN.
ENERGY_COLUMNS = {
    "document": "object", "job_id": "int64", "step_id": "int64", "step_ordinal": "int64", "energy_id": "int64",
    "kind": "object", "label": "object", "method": "object", "primary": "bool", "energy_hartree": "float64",
    "energy_ev": "float64",
}
STEP_COLUMNS = {
    "document": "object", "job_id": "int64", "step_id": "int64", "ordinal": "int64", "system_id": "int64",
    "frame_id": "Int64", "native_cycle": "Int64", "energies": "int64", "primary_energy_hartree": "float64",
    "gradient_max_hartree_per_bohr": "float64", "gradient_rms_hartree_per_bohr": "float64",
    "convergence": "object",
}
VIBRATION_COLUMNS = {
    "document": "object", "job_id": "int64", "analysis_id": "int64", "mode": "Int64", "frequency_cm1": "float64",
    "symmetry": "object", "reduced_mass_amu": "float64", "force_constant_mdyne_per_angstrom": "float64",
    "ir_intensity_km_per_mol": "float64", "raman_activity": "float64",
}
EXCITED_STATE_COLUMNS = {
    "document": "object", "job_id": "int64", "analysis_id": "int64", "block_method": "object", "state": "Int64",
    "multiplicity": "Int64", "symmetry": "object", "excitation_energy_hartree": "float64",
    "excitation_energy_ev": "float64", "wavelength_nm": "float64", "oscillator_strength": "float64",
    "total_energy_hartree": "float64",
}
JOB_COLUMNS = {
    "document": "object", "job_id": "int64", "ordinal": "int64", "system_id": "int64", "parent_job_id": "Int64",
    "relation": "object", "tasks": "object", "primary_task": "object", "method": "object", "basis_set": "object",
    "steps": "int64", "termination": "object", "final_energy_hartree": "float64",
}


def named_documents(docs: Documents) -> Iterator[tuple[Any, Document]]:
    """(name, document) for each document given, one alone or many: paths are read here, as JSON or as a
    program's output."""
    if isinstance(docs, (str, os.PathLike, Document, ParseResult)):
        docs = [docs]
    pairs: Iterable[tuple[Any, Any]] = docs.items() if isinstance(docs, Mapping) else enumerate(docs)
    for name, doc in pairs:
        if isinstance(doc, (str, os.PathLike)):
            name, doc = os.fspath(doc), read_document(doc)
        yield name, doc.value if isinstance(doc, ParseResult) else doc


def _primary_value(step: CalculationStep) -> float | None:
    energy = primary_energy(step)
    return energy.value if energy is not None else None


def energy_rows(name: Any, document: Document) -> Iterator[Row]:
    for step in document.steps:
        primary = primary_energy(step)
        for energy in step.energies:
            yield {
                "document": name, "job_id": step.job_id, "step_id": step.id, "step_ordinal": step.ordinal,
                "energy_id": energy.id, "kind": energy.kind.name, "label": energy.label, "method": energy.method,
                "primary": primary is not None and energy.id == primary.id, "energy_hartree": energy.value,
                "energy_ev": energy.value * _units.HARTREE_IN_EV,
            }


def step_rows(name: Any, document: Document) -> Iterator[Row]:
    for step in document.steps:
        gradient, convergence = step.gradient, step.convergence
        yield {
            "document": name, "job_id": step.job_id, "step_id": step.id, "ordinal": step.ordinal,
            "system_id": step.system_id, "frame_id": step.frame_id, "native_cycle": step.native_cycle,
            "energies": len(step.energies), "primary_energy_hartree": _primary_value(step),
            "gradient_max_hartree_per_bohr": gradient.max if gradient else None,
            "gradient_rms_hartree_per_bohr": gradient.rms if gradient else None,
            "convergence": convergence.status.name if convergence else None,
        }


def vibration_rows(name: Any, document: Document) -> Iterator[Row]:
    for block in document.analyses:
        if isinstance(block.payload, VibrationalBlock):
            for mode in block.payload.modes:
                yield {
                    "document": name, "job_id": block.job_id, "analysis_id": block.id, "mode": mode.index,
                    "frequency_cm1": mode.frequency_cm1, "symmetry": mode.symmetry,
                    "reduced_mass_amu": mode.reduced_mass_amu,
                    "force_constant_mdyne_per_angstrom": mode.force_constant_mdyne_per_angstrom,
                    "ir_intensity_km_per_mol": mode.ir_intensity_km_per_mol, "raman_activity": mode.raman_activity,
                }


def wavelength_nm(excitation_hartree: float | None) -> float | None:
    """The wavelength of a photon of that energy; none for an energy that is absent, zero or negative."""
    if excitation_hartree is None or excitation_hartree <= 0:
        return None
    return _units.EV_NANOMETRE / (excitation_hartree * _units.HARTREE_IN_EV)


def excited_state_rows(name: Any, document: Document) -> Iterator[Row]:
    for block in document.analyses:
        if isinstance(block.payload, ExcitedStateBlock):
            for state in block.payload.states:
                energy = state.excitation_energy
                yield {
                    "document": name, "job_id": block.job_id, "analysis_id": block.id,
                    "block_method": block.payload.method, "state": state.index, "multiplicity": state.multiplicity,
                    "symmetry": state.symmetry, "excitation_energy_hartree": energy,
                    "excitation_energy_ev": None if energy is None else energy * _units.HARTREE_IN_EV,
                    "wavelength_nm": wavelength_nm(energy), "oscillator_strength": state.oscillator_strength,
                    "total_energy_hartree": state.total_energy,
                }


def job_rows(name: Any, document: Document) -> Iterator[Row]:
    steps = {step.id: step for step in document.steps}
    for job in document.jobs:
        last = steps.get(job.step_ids[-1]) if len(job.step_ids) else None
        yield {
            "document": name, "job_id": job.id, "ordinal": job.ordinal, "system_id": job.system_id,
            "parent_job_id": job.parent_job_id, "relation": job.relation.name,
            "tasks": ",".join(task.name for task in job.tasks),
            "primary_task": job.primary_task.name if job.primary_task is not None else None,
            "method": job.method, "basis_set": job.basis_set, "steps": len(job.step_ids),
            "termination": job.termination.kind.name,
            "final_energy_hartree": _primary_value(last) if last is not None else None,
        }


RowMaker: TypeAlias = Callable[[Any, Document], Iterator[Row]]


def frame(rows: Iterable[Row], columns: Mapping[str, str]) -> pandas.DataFrame:
    """A DataFrame of the rows with exactly these columns and dtypes."""
    import pandas

    return pandas.DataFrame(list(rows), columns=list(columns)).astype(dict(columns))


def table(docs: Documents, rows: RowMaker, columns: Mapping[str, str]) -> pandas.DataFrame:
    return frame((row for name, document in named_documents(docs) for row in rows(name, document)), columns)


def energies(docs: Documents) -> pandas.DataFrame:
    """Every energy record of every step; `primary` marks the energy that stands for its step."""
    return table(docs, energy_rows, ENERGY_COLUMNS)


def steps(docs: Documents) -> pandas.DataFrame:
    """Every step, with its primary energy, gradient summary and convergence status."""
    return table(docs, step_rows, STEP_COLUMNS)


def vibrations(docs: Documents) -> pandas.DataFrame:
    """Every normal mode of every vibrational analysis; an imaginary mode has a negative frequency."""
    return table(docs, vibration_rows, VIBRATION_COLUMNS)


def excited_states(docs: Documents) -> pandas.DataFrame:
    """Every excited state, its wavelength worked out from its excitation energy."""
    return table(docs, excited_state_rows, EXCITED_STATE_COLUMNS)


def jobs(docs: Documents) -> pandas.DataFrame:
    """Every job, with its tasks joined by commas and the primary energy of its last step."""
    return table(docs, job_rows, JOB_COLUMNS)


__all__ = ["energies", "excited_states", "jobs", "steps", "vibrations"]
