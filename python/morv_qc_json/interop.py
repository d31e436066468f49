"""Documents to and from the field's own formats: QCSchema (through
qcelemental), ASE's Atoms, and cclib's reading of the programs that this
library has no importer for.

Each converter imports its library when it is called, so that the package
keeps working where that library is not installed.
"""

from __future__ import annotations

import json
import os
from collections.abc import Iterable, Iterator, Sequence
from typing import TYPE_CHECKING, Any

import numpy

from . import _units
from ._core import (
    AnalysisBlock,
    AtomSite,
    CalculationJob,
    CalculationStep,
    ChemicalSystem,
    Diagnostic,
    Document,
    ElectronicState,
    EnergyKind,
    EnergyRecord,
    ExcitedState,
    ExcitedStateBlock,
    GeometryFrame,
    GradientRecord,
    ParseResult,
    ParseStatus,
    ProgramKind,
    ScalarPropertyBlock,
    Severity,
    TaskKind,
    ThermochemistryBlock,
    Topology,
    VibrationalBlock,
    VibrationalMode,
    __version__,
    dumps,
    loads,
    schema_id,
)
from ._documents import primary_energy

if TYPE_CHECKING:
    import ase  # type: ignore[import]

# Where a QCSchema result keeps, under `extras`, what QCSchema has no field
# for: the program and the files it wrote (which the records' source spans
# name), the job's tasks and keywords, the step's energy records with their
# kinds and labels, and the job's analyses, each in this library's JSON form.
EXTRAS_KEY = "morv_qc_json"

# Totals that QCSchema names, by the energy method as the importers write it.
# Read both ways: an energy record gives its property, a property its record.
_CORRELATED_PROPERTIES = {
    "MP2": "mp2_total_energy",
    "CCSD": "ccsd_total_energy",
    "CCSD(T)": "ccsd_prt_pr_total_energy",
    "CCSDT": "ccsdt_total_energy",
}
_SCF_PROPERTY = "scf_total_energy"
# Scalar properties of a job that QCSchema names.
_SCALAR_PROPERTIES = {"nuclear_repulsion_energy": "nuclear_repulsion_energy", "basis_functions": "calcinfo_nbasis"}
# Tasks whose steps move the geometry, for which a step's gradient is the
# result that QCSchema's "gradient" driver stands for.
_GRADIENT_TASKS = {TaskKind.optimization, TaskKind.irc, TaskKind.scan, TaskKind.neb}


def _main_task(job: CalculationJob) -> TaskKind | None:
    if job.primary_task is not None:
        return job.primary_task
    return job.tasks[0] if len(job.tasks) else None


def _by_id(records: Iterable[Any]) -> dict[int, Any]:
    return {record.id: record for record in records}


def _step_frame(document: Document, step: CalculationStep) -> GeometryFrame | None:
    """The frame of a step: the one it names, else the last frame of its system."""
    frames = _by_id(document.frames)
    if step.frame_id is not None and step.frame_id in frames:
        return frames[step.frame_id]
    of_system = [frame for frame in document.frames if frame.system_id == step.system_id]
    return of_system[-1] if of_system else None


def _job_steps(document: Document, job: CalculationJob) -> list[CalculationStep]:
    steps = _by_id(document.steps)
    listed = [steps[step_id] for step_id in job.step_ids if step_id in steps]
    return listed or [step for step in document.steps if step.job_id == job.id]


def _records_json(key: str, records: Iterable[Any]) -> list[Any]:
    """Records as this library writes them, through a document that holds only them."""
    holder = Document()
    getattr(holder, key).extend(records)
    listed: list[Any] = json.loads(dumps(holder))[key]
    return listed


def _records_from_json(key: str, listed: list[Any]) -> list[Any]:
    return list(getattr(loads(json.dumps({"schema": schema_id, key: listed})).value, key))


def _topology(symbols: Sequence[str], atomic_numbers: Sequence[int] | None) -> Topology:
    return Topology(atoms=[
        AtomSite(id=index + 1, symbol=symbol,
                 atomic_number=None if atomic_numbers is None else int(atomic_numbers[index]))
        for index, symbol in enumerate(symbols)
    ])


# ---------------------------------------------------------------- QCSchema


def _molecule(system: ChemicalSystem, frame: GeometryFrame) -> dict[str, Any]:
    import qcelemental  # type: ignore[import]

    atoms = list(system.topology.atoms)
    molecule: dict[str, Any] = {
        "symbols": [
            atom.symbol or qcelemental.periodictable.to_symbol(atom.atomic_number or 0) for atom in atoms
        ],
        "geometry": (frame.positions_angstrom.to_numpy() / _units.BOHR_IN_ANGSTROM).ravel().tolist(),
        "fix_com": True,
        "fix_orientation": True,
    }
    if system.label:
        molecule["name"] = system.label
    state = system.electronic_state
    if state is not None and state.multiplicity > 0:
        molecule["molecular_charge"] = state.charge
        molecule["molecular_multiplicity"] = state.multiplicity
    return molecule


def _properties(document: Document, job: CalculationJob, step: CalculationStep, natoms: int) -> dict[str, Any]:
    properties: dict[str, Any] = {"calcinfo_natom": natoms}
    for energy in step.energies:
        if energy.kind == EnergyKind.scf:
            properties[_SCF_PROPERTY] = energy.value
        elif energy.kind == EnergyKind.correlated and energy.method in _CORRELATED_PROPERTIES:
            properties[_CORRELATED_PROPERTIES[energy.method]] = energy.value
    primary = primary_energy(step)
    if primary is not None:
        properties["return_energy"] = primary.value
    if step.gradient is not None and len(step.gradient.vectors) == natoms:
        properties["return_gradient"] = step.gradient.vectors.to_numpy().tolist()
    for block in document.analyses:
        if block.job_id == job.id and block.reference_step_id in (None, step.id) \
                and isinstance(block.payload, ScalarPropertyBlock):
            for scalar in block.payload.properties:
                if scalar.key in _SCALAR_PROPERTIES:
                    name = _SCALAR_PROPERTIES[scalar.key]
                    properties[name] = int(scalar.value) if name.startswith("calcinfo") else scalar.value
    return properties


def _atomic_result(document: Document, job: CalculationJob, step: CalculationStep) -> dict[str, Any] | None:
    systems = _by_id(document.systems)
    frame = _step_frame(document, step)
    if frame is None or step.system_id not in systems:
        return None
    system = systems[step.system_id]
    natoms = len(frame.positions_angstrom)
    properties = _properties(document, job, step, natoms)
    gradient_driven = _main_task(job) in _GRADIENT_TASKS and "return_gradient" in properties
    analyses = [block for block in document.analyses if block.job_id == job.id]
    primary = primary_energy(step)
    return {
        "schema_name": "qcschema_output",
        "schema_version": 1,
        "molecule": _molecule(system, frame),
        "driver": "gradient" if gradient_driven else "energy",
        "model": {"method": job.method or (primary.method if primary else "") or "unknown", "basis": job.basis_set},
        "keywords": {},
        "return_result": properties["return_gradient"] if gradient_driven else properties.get("return_energy", 0.0),
        "properties": properties,
        "success": primary is not None,
        "provenance": {"creator": "morv_qc_json", "version": __version__, "routine": "morv_qc_json.interop"},
        "extras": {
            EXTRAS_KEY: {
                "program": {"kind": document.program.kind.name, "name": document.program.name,
                            "version": document.program.version},
                "sources": _records_json("sources", document.sources),
                "tasks": [task.name for task in job.tasks],
                "keywords": job.keywords,
                "energies": _records_json("steps", [step])[0]["energies"],
                "analyses": _records_json("analyses", analyses),
            }
        },
    }


def to_qcschema(document: Document) -> list[dict[str, Any]]:
    """One QCSchema v1 AtomicResult (a dict that `qcelemental.models.AtomicResult(**d)` accepts) for the final
    step of each job: the molecule in bohr, the model, energies in hartree and the gradient in hartree/bohr. The
    driver is "gradient" for a job that moves the geometry and has a gradient at its final step, "energy"
    otherwise. A job without steps, or whose final step has no geometry, gives none."""
    results = []
    for job in document.jobs:
        steps = _job_steps(document, job)
        result = _atomic_result(document, job, steps[-1]) if steps else None
        if result is not None:
            results.append(result)
    return results


def to_qcschema_optimizations(document: Document) -> list[dict[str, Any]]:
    """One QCSchema v1 OptimizationResult for each optimisation job, its trajectory holding an AtomicResult for
    every step of the job that has a geometry."""
    optimizations = []
    for job in document.jobs:
        if _main_task(job) != TaskKind.optimization:
            continue
        trajectory = [
            result for step in _job_steps(document, job) if (result := _atomic_result(document, job, step))
        ]
        if not trajectory:
            continue
        optimizations.append({
            "schema_name": "qcschema_optimization_output",
            "schema_version": 1,
            "initial_molecule": trajectory[0]["molecule"],
            "final_molecule": trajectory[-1]["molecule"],
            "input_specification": {"driver": "gradient", "model": trajectory[0]["model"]},
            "trajectory": trajectory,
            "energies": [result["properties"].get("return_energy", 0.0) for result in trajectory],
            "success": all(result["success"] for result in trajectory),
            "provenance": trajectory[0]["provenance"],
        })
    return optimizations


def _energies_from_properties(properties: dict[str, Any]) -> list[EnergyRecord]:
    named = [(EnergyKind.scf, "SCF", _SCF_PROPERTY)]
    named += [(EnergyKind.correlated, method, name) for method, name in _CORRELATED_PROPERTIES.items()]
    energies = [
        EnergyRecord(kind=kind, method=method, value=properties[name])
        for kind, method, name in named
        if properties.get(name) is not None
    ]
    # The result's own energy, when it is none of the named totals (an MP3 or an excited state's, say), is kept
    # under QCSchema's name for it, its kind unknown.
    returned = properties.get("return_energy")
    if returned is not None and all(energy.value != returned for energy in energies):
        energies.append(EnergyRecord(kind=EnergyKind.unknown, label="return_energy", value=returned))
    for number, energy in enumerate(energies, start=1):
        energy.id = number
    return energies


def from_qcschema(result: Any) -> Document:
    """A document of one job and one step from a QCSchema AtomicResult, given as a dict or as a qcelemental
    model. What this library's to_qcschema kept under `extras` (program, sources, tasks, energy records,
    analyses) comes back; without it, the energies come from QCSchema's named totals and `return_energy`."""
    data: dict[str, Any] = result if isinstance(result, dict) else result.dict()
    kept = data.get("extras", {}).get(EXTRAS_KEY, {})
    molecule = data["molecule"]
    properties = {key: value for key, value in data.get("properties", {}).items() if value is not None}
    symbols = list(molecule["symbols"])
    positions = numpy.asarray(molecule["geometry"], dtype=float).reshape(-1, 3) * _units.BOHR_IN_ANGSTROM

    document = Document()
    program = kept.get("program", {})
    document.program.kind = ProgramKind(program.get("kind", "unknown"))
    document.program.name = program.get("name", data.get("provenance", {}).get("creator", ""))
    document.program.version = program.get("version", "")
    document.sources[:] = _records_from_json("sources", kept.get("sources", []))
    state = None
    if "molecular_multiplicity" in molecule:
        state = ElectronicState(
            charge=int(round(molecule.get("molecular_charge", 0))), multiplicity=molecule["molecular_multiplicity"]
        )
    document.systems[:] = [ChemicalSystem(
        id=1,
        label=molecule.get("name", ""),
        topology=_topology(symbols, molecule.get("atomic_numbers")),
        electronic_state=state,
    )]
    document.frames[:] = [GeometryFrame(id=1, system_id=1, positions_angstrom=positions)]
    tasks = [TaskKind(task) for task in kept.get("tasks", ["single_point"])]
    model = data.get("model", {})
    document.jobs[:] = [CalculationJob(
        id=1, system_id=1, ordinal=1, tasks=tasks, primary_task=tasks[0] if tasks else None,
        method=model.get("method", ""), basis_set=model.get("basis") or "", keywords=kept.get("keywords", ""),
        step_ids=[1],
    )]
    if "energies" in kept:
        holder = {"id": 1, "job_id": 1, "system_id": 1, "energies": kept["energies"]}
        energies = list(_records_from_json("steps", [holder])[0].energies)
    else:
        energies = _energies_from_properties(properties)
    step = CalculationStep(id=1, job_id=1, system_id=1, ordinal=1, frame_id=1, energies=energies)
    returned = [energy.id for energy in energies if energy.value == properties.get("return_energy")]
    step.primary_energy_id = returned[-1] if returned else None
    gradient = properties.get("return_gradient")
    if gradient is None and data.get("driver") == "gradient":
        gradient = data["return_result"]
    if gradient is not None:
        step.gradient = GradientRecord(vectors=numpy.asarray(gradient, dtype=float).reshape(-1, 3))
    document.steps[:] = [step]
    analyses = _records_from_json("analyses", kept.get("analyses", []))
    for block in analyses:
        block.job_id, block.reference_step_id = 1, 1
    document.analyses[:] = analyses
    return document


# ---------------------------------------------------------------------- ASE


def _first_steps_by_frame(document: Document) -> dict[int, CalculationStep]:
    """The first step on each frame: a frame that later jobs reuse (a frequency or excited-state job after an
    optimisation) keeps the energy and gradient of the step that reached it."""
    first: dict[int, CalculationStep] = {}
    for step in document.steps:
        if step.frame_id is not None:
            first.setdefault(step.frame_id, step)
    return first


def to_ase(document: Document) -> list[ase.Atoms]:
    """One ase.Atoms for each frame, in angstrom. Where a step worked on the frame, a SinglePointCalculator holds
    its energy (the step's primary energy, in eV) and forces (from its gradient, in eV/angstrom), so that
    `ase.io.write("run.extxyz", atoms)` writes a trajectory. `info` names the frame, and the step if any."""
    import ase
    from ase.calculators.singlepoint import SinglePointCalculator  # type: ignore[import]

    systems = _by_id(document.systems)
    steps = _first_steps_by_frame(document)
    trajectory = []
    for frame in document.frames:
        system = systems.get(frame.system_id)
        symbols = [atom.symbol for atom in system.topology.atoms] if system is not None else []
        atoms = ase.Atoms(symbols=symbols, positions=frame.positions_angstrom.to_numpy())
        atoms.info["frame_id"] = frame.id
        step = steps.get(frame.id)
        if step is not None:
            atoms.info["step_id"] = step.id
            results: dict[str, Any] = {}
            energy = primary_energy(step)
            if energy is not None:
                results["energy"] = energy.value * _units.HARTREE_IN_EV
            if step.gradient is not None and len(step.gradient.vectors) == len(atoms):
                results["forces"] = (
                    -step.gradient.vectors.to_numpy() * _units.HARTREE_IN_EV / _units.BOHR_IN_ANGSTROM
                )
            if results:
                atoms.calc = SinglePointCalculator(atoms, **results)
        trajectory.append(atoms)
    return trajectory


def from_ase(atoms_list: Iterable[ase.Atoms]) -> Document:
    """A document from ASE structures: one system and one job for each distinct sequence of chemical symbols,
    one frame and one step for each structure, with the calculator's energy (as an electronic energy, in
    hartree) and forces (as a gradient, in hartree/bohr) where it has them."""
    document = Document()
    systems: dict[tuple[str, ...], int] = {}
    frames: list[GeometryFrame] = []
    steps: list[CalculationStep] = []
    for atoms in atoms_list:
        symbols = tuple(atoms.get_chemical_symbols())
        if symbols not in systems:
            systems[symbols] = len(systems) + 1
            document.systems.append(ChemicalSystem(
                id=systems[symbols], topology=_topology(symbols, atoms.get_atomic_numbers().tolist())
            ))
        system_id, number = systems[symbols], len(frames) + 1
        frames.append(GeometryFrame(id=number, system_id=system_id, positions_angstrom=atoms.get_positions()))
        step = CalculationStep(id=number, job_id=system_id, system_id=system_id, frame_id=number)
        results = atoms.calc.results if atoms.calc is not None else {}
        if results.get("energy") is not None:
            step.energies[:] = [EnergyRecord(
                id=1, kind=EnergyKind.electronic, value=results["energy"] / _units.HARTREE_IN_EV
            )]
            step.primary_energy_id = 1
        if results.get("forces") is not None:
            step.gradient = GradientRecord(
                vectors=-numpy.asarray(results["forces"]) * _units.BOHR_IN_ANGSTROM / _units.HARTREE_IN_EV
            )
        steps.append(step)
    for system_id in systems.values():
        own = [step for step in steps if step.system_id == system_id]
        for ordinal, step in enumerate(own, start=1):
            step.ordinal = ordinal
        document.jobs.append(CalculationJob(
            id=system_id, system_id=system_id, ordinal=system_id, step_ids=[step.id for step in own]
        ))
    document.frames[:] = frames
    document.steps[:] = steps
    return document


# -------------------------------------------------------------------- cclib

_CCLIB_PROGRAMS = {"Gaussian": ProgramKind.gaussian, "ORCA": ProgramKind.orca, "GAMESS": ProgramKind.gamess}


def _cclib_tasks(data: Any) -> list[TaskKind]:
    present = [
        (TaskKind.optimization, hasattr(data, "geovalues")),
        (TaskKind.frequency, hasattr(data, "vibfreqs")),
        (TaskKind.excited_state, hasattr(data, "etenergies")),
    ]
    return [task for task, found in present if found] or [TaskKind.single_point]


def _cclib_steps(data: Any, to_hartree: Any) -> Iterator[CalculationStep]:
    scf = list(getattr(data, "scfenergies", []))
    mp = [list(row)[-1] for row in getattr(data, "mpenergies", [])]
    cc = list(getattr(data, "ccenergies", []))
    nframes = len(getattr(data, "atomcoords", []))
    for index in range(max(len(scf), nframes)):
        energies: list[EnergyRecord] = []
        for kind, method, values in ((EnergyKind.scf, "SCF", scf), (EnergyKind.correlated, "MP", mp),
                                     (EnergyKind.correlated, "CC", cc)):
            if index < len(values):
                energies.append(EnergyRecord(
                    id=len(energies) + 1, kind=kind, method=method, value=to_hartree(values[index], "eV")
                ))
        yield CalculationStep(
            id=index + 1, job_id=1, system_id=1, ordinal=index + 1, frame_id=min(index, nframes - 1) + 1
            if nframes else None, energies=energies, primary_energy_id=len(energies) or None
        )


def _cclib_analyses(data: Any, to_hartree: Any) -> list[Any]:
    payloads: list[Any] = []
    if hasattr(data, "vibfreqs"):
        count = len(data.vibfreqs)
        irs = getattr(data, "vibirs", [None] * count)
        ramans = getattr(data, "vibramans", [None] * count)
        syms = getattr(data, "vibsyms", [""] * count)
        displacements = getattr(data, "vibdisps", [[]] * count)
        payloads.append(VibrationalBlock(modes=[
            VibrationalMode(index=index + 1, frequency_cm1=data.vibfreqs[index], symmetry=syms[index],
                            ir_intensity_km_per_mol=irs[index], raman_activity=ramans[index],
                            displacements=numpy.asarray(displacements[index]).reshape(-1, 3))
            for index in range(count)
        ]))
    if hasattr(data, "etenergies"):
        count = len(data.etenergies)
        oscillators = getattr(data, "etoscs", [None] * count)
        syms = getattr(data, "etsyms", [""] * count)
        payloads.append(ExcitedStateBlock(states=[
            ExcitedState(index=index + 1, symmetry=syms[index], oscillator_strength=oscillators[index],
                         excitation_energy=to_hartree(data.etenergies[index], "wavenumber"))
            for index in range(count)
        ]))
    if hasattr(data, "enthalpy") or hasattr(data, "freeenergy"):
        payloads.append(ThermochemistryBlock(
            temperature_kelvin=getattr(data, "temperature", None), pressure_atmosphere=getattr(data, "pressure", None),
            zero_point_energy=getattr(data, "zpve", None), enthalpy=getattr(data, "enthalpy", None),
            gibbs_free_energy=getattr(data, "freeenergy", None),
        ))
    return payloads


def from_cclib(path_or_ccdata: str | os.PathLike[str] | Any) -> ParseResult:
    """A document from any output that cclib reads (NWChem, Psi4, Q-Chem, Molpro, Turbomole, ...), given as a
    path or as cclib's ccData. cclib reads a run as one job, so the document has one job whatever the run held;
    a note among the diagnostics says so. Energies come back to hartree through cclib's own constants, which
    made them. cclib's gradients are left out: their sign differs between its parsers."""
    import cclib  # type: ignore[import]
    from cclib.parser.utils import PeriodicTable, convertor  # type: ignore[import]

    data = path_or_ccdata
    if isinstance(path_or_ccdata, (str, os.PathLike)):
        data = cclib.io.ccread(os.fspath(path_or_ccdata))
    if data is None or not hasattr(data, "atomnos"):
        return ParseResult(status=ParseStatus.failed, diagnostics=[Diagnostic(
            severity=Severity.error, code="interop.cclib.unreadable", message="cclib found no molecule in the input."
        )])

    def to_hartree(value: float, unit: str) -> float:
        return float(convertor(value, unit, "hartree"))

    table = PeriodicTable()
    metadata = getattr(data, "metadata", {})
    document = Document()
    document.program.kind = _CCLIB_PROGRAMS.get(metadata.get("package", ""), ProgramKind.unknown)
    document.program.name = metadata.get("package", "")
    document.program.version = metadata.get("package_version", "")
    numbers = [int(number) for number in data.atomnos]
    document.systems[:] = [ChemicalSystem(
        id=1, topology=_topology([table.element[number] for number in numbers], numbers),
        electronic_state=ElectronicState(charge=getattr(data, "charge", 0), multiplicity=getattr(data, "mult", 0)),
    )]
    document.frames[:] = [
        GeometryFrame(id=index + 1, system_id=1, positions_angstrom=coordinates)
        for index, coordinates in enumerate(getattr(data, "atomcoords", []))
    ]
    document.steps[:] = list(_cclib_steps(data, to_hartree))
    tasks = _cclib_tasks(data)
    methods = metadata.get("methods", [])
    document.jobs[:] = [CalculationJob(
        id=1, system_id=1, ordinal=1, tasks=tasks, primary_task=tasks[0], method=methods[-1] if methods else "",
        basis_set=metadata.get("basis_set", ""), step_ids=[step.id for step in document.steps],
    )]
    last_step = document.steps[-1].id if len(document.steps) else None
    document.analyses[:] = [
        AnalysisBlock(id=index + 1, job_id=1, ordinal=index + 1, reference_step_id=last_step, payload=payload)
        for index, payload in enumerate(_cclib_analyses(data, to_hartree))
    ]
    return ParseResult(value=document, status=ParseStatus.complete, diagnostics=[Diagnostic(
        severity=Severity.note, code="interop.cclib.single_job",
        message="cclib reads a run as one job: the jobs of the output, and how they follow each other, are not kept.",
    )])
