"""What every submodule reads of a document the same way: a file, as JSON or
as a program's output imported on the spot, and the energy that stands for a
step."""

import os

from ._core import CalculationStep, EnergyRecord, ParseResult, import_output, load


def read_document(path: str | os.PathLike[str]) -> ParseResult:
    """The document of `path`: read as JSON when the name ends in .json, imported as a program output otherwise."""
    if os.fspath(path).endswith(".json"):
        return load(path)
    return import_output(path)


def primary_energy(step: CalculationStep) -> EnergyRecord | None:
    """The energy that stands for the step: the one it names, else its last (a step that names none, or one
    that it does not hold, still has a best energy to show)."""
    energies = list(step.energies)
    named = [energy for energy in energies if energy.id == step.primary_energy_id]
    if named:
        return named[0]
    return energies[-1] if energies else None
