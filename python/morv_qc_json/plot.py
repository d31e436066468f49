"""Spectra and energy profiles of a document, drawn with matplotlib.

A spectrum is a sum of line shapes, one for each line, each as high as the
line's intensity at its centre and as wide as `width` at half height
(Lorentzian or Gaussian), so that a lone line's peak stands at its intensity
and the line's stick, drawn beside the curve, ends under it. Each function
gives back the curve as arrays with the Axes it drew on: the one given, or a
new one on a new Figure (which needs no display: save it with
`axes.figure.savefig`). matplotlib is imported when something is drawn.
"""

from __future__ import annotations

import math
from collections.abc import Sequence
from typing import TYPE_CHECKING, Literal, NamedTuple

import numpy
from numpy.typing import NDArray

from . import _units
from ._core import (
    CalculationJob,
    Document,
    ExcitedStateBlock,
    ParseResult,
    TaskKind,
    VibrationalBlock,
    VibrationalMode,
)
from ._documents import primary_energy

if TYPE_CHECKING:
    from matplotlib.axes import Axes  # type: ignore[import]

Shape = Literal["lorentzian", "gaussian"]
# Grid points of a spectrum's curve.
DEFAULT_POINTS = 2000
# Tasks whose steps trace a path worth a profile.
_PATH_TASKS = {TaskKind.optimization, TaskKind.scan, TaskKind.irc, TaskKind.neb}


class Curve(NamedTuple):
    """A drawn curve: x and y as arrays, and the Axes that holds it."""

    x: NDArray[numpy.float64]
    y: NDArray[numpy.float64]
    axes: Axes


def broaden(centres: Sequence[float], heights: Sequence[float], grid: NDArray[numpy.float64], width: float,
            shape: Shape) -> NDArray[numpy.float64]:
    """The sum over lines of `shape` line shapes of full width `width` at half height, each `height` high at
    its centre, on `grid`."""
    offsets = (grid[:, None] - numpy.asarray(centres, dtype=float)[None, :]) / width
    if shape == "lorentzian":
        profile = 1.0 / (1.0 + 4.0 * offsets**2)
    elif shape == "gaussian":
        profile = numpy.exp(-4.0 * math.log(2.0) * offsets**2)
    else:
        raise ValueError(f"unknown line shape {shape!r}: choose 'lorentzian' or 'gaussian'")
    curve: NDArray[numpy.float64] = profile @ numpy.asarray(heights, dtype=float)
    return curve


def _document(source: Document | ParseResult) -> Document:
    return source.value if isinstance(source, ParseResult) else source


def _new_axes() -> Axes:
    from matplotlib.figure import Figure  # type: ignore[import]

    return Figure(figsize=(7, 4), layout="constrained").add_subplot()


def _draw(x: NDArray[numpy.float64], y: NDArray[numpy.float64], centres: Sequence[float],
          heights: Sequence[float], axes: Axes | None, xlabel: str, ylabel: str) -> Curve:
    axes = axes if axes is not None else _new_axes()
    axes.vlines(centres, 0.0, heights, colors="0.6", linewidth=1.0)
    axes.plot(x, y, color="C0")
    axes.set_xlabel(xlabel)
    axes.set_ylabel(ylabel)
    axes.set_ylim(bottom=0.0)
    return Curve(x, y, axes)


def _modes(document: Document) -> list[VibrationalMode]:
    """The real modes of the document's last vibrational analysis."""
    blocks = [block.payload for block in document.analyses if isinstance(block.payload, VibrationalBlock)]
    if not blocks:
        raise ValueError("the document holds no vibrational analysis")
    return [mode for mode in blocks[-1].modes if mode.frequency_cm1 > 0]


def _vibrational_spectrum(intensities: list[float | None], frequencies: list[float],
                          width: float, shape: Shape, axes: Axes | None, points: int, ylabel: str) -> Curve:
    lines = [(frequency, value) for frequency, value in zip(frequencies, intensities) if value is not None]
    if not lines:
        raise ValueError(f"the document's modes carry no {ylabel}")
    centres, heights = [line[0] for line in lines], [line[1] for line in lines]
    grid = numpy.linspace(0.0, max(centres) * 1.1 + 5.0 * width, points)
    curve = _draw(grid, broaden(centres, heights, grid, width, shape), centres, heights, axes,
                  "wavenumber / cm$^{-1}$", ylabel)
    curve.axes.set_xlim(grid[-1], grid[0])
    return curve


def ir_spectrum(source: Document | ParseResult, *, width: float = 20.0, shape: Shape = "lorentzian",
                axes: Axes | None = None, points: int = DEFAULT_POINTS) -> Curve:
    """The infrared spectrum of the last vibrational analysis: wavenumber (cm-1) against intensity (km/mol),
    `width` in cm-1. Imaginary modes are left out."""
    modes = _modes(_document(source))
    return _vibrational_spectrum([mode.ir_intensity_km_per_mol for mode in modes],
                                 [mode.frequency_cm1 for mode in modes], width, shape, axes, points,
                                 "IR intensity / km mol$^{-1}$")


def raman_spectrum(source: Document | ParseResult, *, width: float = 20.0, shape: Shape = "lorentzian",
                   axes: Axes | None = None, points: int = DEFAULT_POINTS) -> Curve:
    """The Raman spectrum of the last vibrational analysis: wavenumber (cm-1) against activity as the program
    reported it, `width` in cm-1."""
    modes = _modes(_document(source))
    return _vibrational_spectrum([mode.raman_activity for mode in modes],
                                 [mode.frequency_cm1 for mode in modes], width, shape, axes, points,
                                 "Raman activity")


def absorption_lines(document: Document) -> list[tuple[float, float]]:
    """(excitation energy in eV, oscillator strength) of each line of the last excited-state analysis: its
    absorption peaks where the program printed a spectrum table with strengths, its states otherwise."""
    blocks = [block.payload for block in document.analyses if isinstance(block.payload, ExcitedStateBlock)]
    if not blocks:
        raise ValueError("the document holds no excited-state analysis")
    block = blocks[-1]
    # A program prints one table per gauge (electric dipole first, then
    # velocity) and tables of rotatory strengths: the first table with
    # oscillator strengths is the spectrum, the others would count each state again.
    kinds = [peak.spectrum_kind for peak in block.absorption_peaks if peak.oscillator_strength]
    peaks: list[tuple[float | None, float | None]] = [(peak.excitation_energy, peak.oscillator_strength)
                                                      for peak in block.absorption_peaks
                                                      if kinds and peak.spectrum_kind == kinds[0]]
    states: list[tuple[float | None, float | None]] = [(state.excitation_energy, state.oscillator_strength) for state in block.states]
    lines = [(energy, strength) for energy, strength in (peaks if any(s for _, s in peaks) else states)
             if energy is not None and energy > 0 and strength is not None]
    return [(energy * _units.HARTREE_IN_EV, strength) for energy, strength in lines]


def uv_vis_spectrum(source: Document | ParseResult, *, width: float = 0.3, shape: Shape = "gaussian",
                    axes: Axes | None = None, points: int = DEFAULT_POINTS) -> Curve:
    """The absorption spectrum of the last excited-state analysis: wavelength (nm) against oscillator strength.
    The lines are broadened in energy, `width` in eV, where their shape has a physical meaning, and drawn
    against wavelength, so a lone line's maximum stands at its wavelength."""
    lines = absorption_lines(_document(source))
    if not lines:
        raise ValueError("the document's excited states carry no oscillator strengths")
    energies = [energy for energy, _ in lines]
    strengths = [strength for _, strength in lines]
    lowest, highest = max(min(energies) - 3.0 * width, 0.5), max(energies) + 3.0 * width
    wavelengths = numpy.linspace(_units.EV_NANOMETRE / highest, _units.EV_NANOMETRE / lowest, points)
    curve = broaden(energies, strengths, _units.EV_NANOMETRE / wavelengths, width, shape)
    return _draw(wavelengths, curve, [_units.EV_NANOMETRE / energy for energy in energies], strengths, axes,
                 "wavelength / nm", "oscillator strength")


def _profile_job(document: Document, job_id: int | None) -> CalculationJob:
    jobs = list(document.jobs)
    chosen = [job for job in jobs if job.id == job_id] if job_id is not None else (
        [job for job in jobs if job.primary_task in _PATH_TASKS] or jobs)
    if not chosen:
        raise ValueError("the document has no such job" if job_id is not None else "the document has no job")
    return chosen[0]


def energy_profile(source: Document | ParseResult, *, job_id: int | None = None,
                   axes: Axes | None = None) -> Curve:
    """The primary energy of each step of a job against the step's ordinal, in kcal/mol above the lowest:
    the job named, else the first optimisation, scan, IRC or NEB job, else the first job."""
    document = _document(source)
    job = _profile_job(document, job_id)
    steps = {step.id: step for step in document.steps}
    points: list[tuple[float, float]] = []
    for step_id in job.step_ids:
        step = steps.get(step_id)
        energy = primary_energy(step) if step is not None else None
        if step is not None and energy is not None:
            points.append((step.ordinal, energy.value))
    if not points:
        raise ValueError(f"job {job.id} has no step with a primary energy")
    x = numpy.array([point[0] for point in points], dtype=float)
    y = numpy.array([point[1] for point in points])
    y = (y - y.min()) * _units.HARTREE_IN_KCAL_PER_MOL
    axes = axes if axes is not None else _new_axes()
    axes.plot(x, y, marker="o", color="C0")
    axes.set_xlabel("step")
    axes.set_ylabel("energy above the lowest / kcal mol$^{-1}$")
    return Curve(x, y, axes)

