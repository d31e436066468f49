"""Quantum-chemistry result documents ("morv.qc.document.v2") between Python and JSON text."""

import os
from collections.abc import Iterable, Iterator, Sequence
from typing import Any, BinaryIO, ClassVar, Generic, Self, SupportsIndex, TextIO, TypeAlias, TypeVar, overload

import numpy
from numpy.typing import ArrayLike, DTypeLike, NDArray

__version__: str
schema_id: str

# Enumerations. pybind11 enumerations are not enum.Enum subclasses: each is a
# class of its own whose members are instances held as class attributes. The
# base class below exists only in this stub, to say once what they share.

class _Enumeration:
    def __init__(self, value: int) -> None: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    def __getstate__(self) -> int: ...
    def __setstate__(self, state: int) -> None: ...

class ParseStatus(_Enumeration):
    __members__: ClassVar[dict[str, ParseStatus]]
    complete: ClassVar[ParseStatus]
    partial: ClassVar[ParseStatus]
    failed: ClassVar[ParseStatus]

class Severity(_Enumeration):
    __members__: ClassVar[dict[str, Severity]]
    note: ClassVar[Severity]
    warning: ClassVar[Severity]
    error: ClassVar[Severity]

class ProgramKind(_Enumeration):
    __members__: ClassVar[dict[str, ProgramKind]]
    unknown: ClassVar[ProgramKind]
    gaussian: ClassVar[ProgramKind]
    orca: ClassVar[ProgramKind]
    gamess: ClassVar[ProgramKind]

class ResultProfile(_Enumeration):
    __members__: ClassVar[dict[str, ResultProfile]]
    unknown: ClassVar[ResultProfile]
    summary: ClassVar[ResultProfile]
    standard: ClassVar[ResultProfile]
    full: ClassVar[ResultProfile]

class TerminationKind(_Enumeration):
    __members__: ClassVar[dict[str, TerminationKind]]
    unknown: ClassVar[TerminationKind]
    running: ClassVar[TerminationKind]
    normal: ClassVar[TerminationKind]
    error: ClassVar[TerminationKind]
    interrupted: ClassVar[TerminationKind]
    truncated: ClassVar[TerminationKind]

class TaskKind(_Enumeration):
    __members__: ClassVar[dict[str, TaskKind]]
    single_point: ClassVar[TaskKind]
    optimization: ClassVar[TaskKind]
    frequency: ClassVar[TaskKind]
    excited_state: ClassVar[TaskKind]
    irc: ClassVar[TaskKind]
    scan: ClassVar[TaskKind]
    neb: ClassVar[TaskKind]

class JobRelation(_Enumeration):
    __members__: ClassVar[dict[str, JobRelation]]
    none: ClassVar[JobRelation]
    link: ClassVar[JobRelation]
    restart: ClassVar[JobRelation]
    branch: ClassVar[JobRelation]
    image: ClassVar[JobRelation]

class EnergyKind(_Enumeration):
    __members__: ClassVar[dict[str, EnergyKind]]
    unknown: ClassVar[EnergyKind]
    electronic: ClassVar[EnergyKind]
    scf: ClassVar[EnergyKind]
    correlated: ClassVar[EnergyKind]
    excited_state_total: ClassVar[EnergyKind]
    gibbs_free: ClassVar[EnergyKind]
    enthalpy: ClassVar[EnergyKind]
    zero_point: ClassVar[EnergyKind]
    thermal_correction: ClassVar[EnergyKind]

class ConvergenceStatus(_Enumeration):
    __members__: ClassVar[dict[str, ConvergenceStatus]]
    unknown: ClassVar[ConvergenceStatus]
    converged: ClassVar[ConvergenceStatus]
    not_converged: ClassVar[ConvergenceStatus]

class CriterionKind(_Enumeration):
    __members__: ClassVar[dict[str, CriterionKind]]
    max_force: ClassVar[CriterionKind]
    rms_force: ClassVar[CriterionKind]
    max_displacement: ClassVar[CriterionKind]
    rms_displacement: ClassVar[CriterionKind]
    energy_change: ClassVar[CriterionKind]
    gradient_norm: ClassVar[CriterionKind]
    constraint_violation: ClassVar[CriterionKind]

class SpinChannel(_Enumeration):
    __members__: ClassVar[dict[str, SpinChannel]]
    none: ClassVar[SpinChannel]
    alpha: ClassVar[SpinChannel]
    beta: ClassVar[SpinChannel]

# List types. Each wraps the C++ vector inside its owner, so changing a list
# changes the document. The generic base class exists only in this stub.

_T = TypeVar("_T")

class _RecordList(Generic[_T]):
    def __init__(self, iterable: Iterable[_T] = ..., /) -> None: ...
    def __bool__(self) -> bool: ...
    def __len__(self) -> int: ...
    @overload
    def __getitem__(self, index: SupportsIndex, /) -> _T: ...
    @overload
    def __getitem__(self, index: slice, /) -> Self: ...
    @overload
    def __setitem__(self, index: SupportsIndex, value: _T, /) -> None: ...
    @overload
    def __setitem__(self, index: slice, value: Iterable[_T], /) -> None: ...
    def __delitem__(self, index: SupportsIndex | slice, /) -> None: ...
    def __iter__(self) -> Iterator[_T]: ...
    def __contains__(self, x: _T, /) -> bool: ...
    def append(self, x: _T) -> None: ...
    def extend(self, L: Iterable[_T]) -> None: ...
    def insert(self, i: SupportsIndex, x: _T) -> None: ...
    def pop(self, i: SupportsIndex = -1) -> _T: ...
    def remove(self, x: _T) -> None:
        """Removes the first element equal to x; ValueError when there is none."""
    def count(self, x: _T) -> int: ...
    def clear(self) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class DiagnosticList(_RecordList[Diagnostic]): ...
class SourceFileList(_RecordList[SourceFile]): ...
class AtomSiteList(_RecordList[AtomSite]): ...
class ChemicalSystemList(_RecordList[ChemicalSystem]): ...
class GeometryFrameList(_RecordList[GeometryFrame]): ...
class TaskKindList(_RecordList[TaskKind]): ...
class StepIdList(_RecordList[int]): ...
class CalculationJobList(_RecordList[CalculationJob]): ...
class EnergyRecordList(_RecordList[EnergyRecord]): ...
class ConvergenceCriterionList(_RecordList[ConvergenceCriterion]): ...
class CalculationStepList(_RecordList[CalculationStep]): ...
class VibrationalModeList(_RecordList[VibrationalMode]): ...
class ExcitationContributionList(_RecordList[ExcitationContribution]): ...
class AbsorptionPeakList(_RecordList[AbsorptionPeak]): ...
class ExcitedStateList(_RecordList[ExcitedState]): ...
class OrbitalList(_RecordList[Orbital]): ...
class PermanentDipoleList(_RecordList[PermanentDipole]): ...
class AtomicChargeRecordList(_RecordList[AtomicChargeRecord]): ...
class ScalarPropertyList(_RecordList[ScalarProperty]): ...
class AnalysisBlockList(_RecordList[AnalysisBlock]): ...

# A sequence of three numbers converts to a Vec3 wherever one is expected.
_Vec3Like: TypeAlias = Vec3 | Sequence[float]
# Vectors, or anything NumPy turns into an (N, 3) float array.
_Vec3ListLike: TypeAlias = Iterable[_Vec3Like] | ArrayLike

class Vec3List(_RecordList[Vec3]):
    def __init__(self, iterable: _Vec3ListLike = ..., /) -> None: ...
    @overload
    def __setitem__(self, index: SupportsIndex, value: _Vec3Like, /) -> None: ...
    @overload
    def __setitem__(self, index: slice, value: _Vec3ListLike, /) -> None: ...
    def __contains__(self, x: _Vec3Like, /) -> bool: ...
    def append(self, x: _Vec3Like) -> None: ...
    def extend(self, L: _Vec3ListLike) -> None: ...
    def insert(self, i: SupportsIndex, x: _Vec3Like) -> None: ...
    def remove(self, x: _Vec3Like) -> None: ...
    def count(self, x: _Vec3Like) -> int: ...
    @overload
    def __array__(self, dtype: None = None) -> NDArray[numpy.float64]: ...
    @overload
    def __array__(self, dtype: DTypeLike) -> NDArray[Any]: ...
    def to_numpy(self) -> NDArray[numpy.float64]:
        """A new float64 array of shape (N, 3)."""

# Records. Every class takes its fields as optional keyword arguments,
# compares field by field and is therefore unhashable.

class SourcePosition:
    offset: int
    line: int
    column: int
    def __init__(self, *, offset: int = 0, line: int = 0, column: int = 0) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class SourceSpan:
    """A region of one source file of the document; `source_id` names the file."""

    source_id: int
    begin: SourcePosition
    end: SourcePosition
    def __init__(self, *, source_id: int = 0, begin: SourcePosition = ..., end: SourcePosition = ...) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class Diagnostic:
    severity: Severity
    code: str
    message: str
    source: SourceSpan | None
    def __init__(
        self,
        *,
        severity: Severity = Severity.note,
        code: str = "",
        message: str = "",
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class SourceFile:
    """One file that a document was made from."""

    id: int
    path: str
    sha256: str | None
    size_bytes: int | None
    embedded_content: str | None
    def __init__(
        self,
        *,
        id: int = 0,
        path: str = "",
        sha256: str | None = None,
        size_bytes: int | None = None,
        embedded_content: str | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class Vec3:
    """A Cartesian vector. It carries no unit; the field that holds it does."""

    x: float
    y: float
    z: float
    @overload
    def __init__(self, *, x: float = 0.0, y: float = 0.0, z: float = 0.0) -> None: ...
    @overload
    def __init__(self, x: float, y: float, z: float) -> None: ...
    @overload
    def __init__(self, values: Sequence[float], /) -> None:
        """Exactly three numbers."""
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class AtomSite:
    id: int
    symbol: str
    raw_label: str
    atomic_number: int | None
    isotope: int | None
    formal_charge: int | None
    def __init__(
        self,
        *,
        id: int = 0,
        symbol: str = "",
        raw_label: str = "",
        atomic_number: int | None = None,
        isotope: int | None = None,
        formal_charge: int | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class Topology:
    @property
    def atoms(self) -> AtomSiteList: ...
    @atoms.setter
    def atoms(self, value: Iterable[AtomSite]) -> None: ...
    def __init__(self, *, atoms: Iterable[AtomSite] = ...) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ElectronicState:
    charge: int
    multiplicity: int
    def __init__(self, *, charge: int = 0, multiplicity: int = 0) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ChemicalSystem:
    """A labelled list of atoms. Coordinates live in geometry frames."""

    id: int
    label: str
    topology: Topology
    electronic_state: ElectronicState | None
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: int = 0,
        label: str = "",
        topology: Topology = ...,
        electronic_state: ElectronicState | None = None,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class GeometryFrame:
    """One set of atom positions of one chemical system."""

    id: int
    system_id: int
    @property
    def positions_angstrom(self) -> Vec3List: ...
    @positions_angstrom.setter
    def positions_angstrom(self, value: _Vec3ListLike) -> None: ...
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: int = 0,
        system_id: int = 0,
        positions_angstrom: _Vec3ListLike = ...,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class Termination:
    kind: TerminationKind
    reason: str
    source: SourceSpan | None
    def __init__(
        self,
        *,
        kind: TerminationKind = TerminationKind.unknown,
        reason: str = "",
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ProgramInfo:
    kind: ProgramKind
    name: str
    version: str
    input_file_name: str
    termination: Termination
    def __init__(
        self,
        *,
        kind: ProgramKind = ProgramKind.unknown,
        name: str = "",
        version: str = "",
        input_file_name: str = "",
        termination: Termination = ...,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class RequestedAnalyses:
    """Which kinds of analysis the producer of a document was asked to extract."""

    gradients: bool
    vibrations: bool
    excited_states: bool
    orbitals: bool
    dipoles: bool
    def __init__(
        self,
        *,
        gradients: bool = True,
        vibrations: bool = True,
        excited_states: bool = True,
        orbitals: bool = True,
        dipoles: bool = True,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class Normalization:
    profile: ResultProfile
    requested_analyses: RequestedAnalyses
    def __init__(
        self,
        *,
        profile: ResultProfile = ResultProfile.unknown,
        requested_analyses: RequestedAnalyses = ...,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class EnergyRecord:
    """One labelled energy, in hartree."""

    id: int
    kind: EnergyKind
    label: str
    method: str
    value: float
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: int = 0,
        kind: EnergyKind = EnergyKind.unknown,
        label: str = "",
        method: str = "",
        value: float = 0.0,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class GradientRecord:
    """Gradient vectors in hartree per bohr, with the summary numbers that the program reported."""

    @property
    def vectors(self) -> Vec3List: ...
    @vectors.setter
    def vectors(self, value: _Vec3ListLike) -> None: ...
    norm: float | None
    rms: float | None
    max: float | None
    source: SourceSpan | None
    def __init__(
        self,
        *,
        vectors: _Vec3ListLike = ...,
        norm: float | None = None,
        rms: float | None = None,
        max: float | None = None,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ConvergenceCriterion:
    kind: CriterionKind
    value: float
    threshold: float | None
    satisfied: bool | None
    unit: str
    def __init__(
        self,
        *,
        kind: CriterionKind = CriterionKind.gradient_norm,
        value: float = 0.0,
        threshold: float | None = None,
        satisfied: bool | None = None,
        unit: str = "",
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ConvergenceRecord:
    @property
    def criteria(self) -> ConvergenceCriterionList: ...
    @criteria.setter
    def criteria(self, value: Iterable[ConvergenceCriterion]) -> None: ...
    status: ConvergenceStatus
    source: SourceSpan | None
    def __init__(
        self,
        *,
        criteria: Iterable[ConvergenceCriterion] = ...,
        status: ConvergenceStatus = ConvergenceStatus.unknown,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class CalculationJob:
    """One piece of work of a run on one chemical system."""

    id: int
    system_id: int
    ordinal: int
    parent_job_id: int | None
    relation: JobRelation
    @property
    def tasks(self) -> TaskKindList: ...
    @tasks.setter
    def tasks(self, value: Iterable[TaskKind]) -> None: ...
    primary_task: TaskKind | None
    method: str
    basis_set: str
    keywords: str
    @property
    def step_ids(self) -> StepIdList: ...
    @step_ids.setter
    def step_ids(self, value: Iterable[int]) -> None: ...
    termination: Termination
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: int = 0,
        system_id: int = 0,
        ordinal: int = 0,
        parent_job_id: int | None = None,
        relation: JobRelation = JobRelation.none,
        tasks: Iterable[TaskKind] = ...,
        primary_task: TaskKind | None = None,
        method: str = "",
        basis_set: str = "",
        keywords: str = "",
        step_ids: Iterable[int] = ...,
        termination: Termination = ...,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class CalculationStep:
    """One point of a job's progress: a geometry with what was found there."""

    id: int
    job_id: int
    system_id: int
    ordinal: int
    native_cycle: int | None
    frame_id: int | None
    @property
    def energies(self) -> EnergyRecordList: ...
    @energies.setter
    def energies(self, value: Iterable[EnergyRecord]) -> None: ...
    primary_energy_id: int | None
    gradient: GradientRecord | None
    convergence: ConvergenceRecord | None
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: int = 0,
        job_id: int = 0,
        system_id: int = 0,
        ordinal: int = 0,
        native_cycle: int | None = None,
        frame_id: int | None = None,
        energies: Iterable[EnergyRecord] = ...,
        primary_energy_id: int | None = None,
        gradient: GradientRecord | None = None,
        convergence: ConvergenceRecord | None = None,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class VibrationalMode:
    """One normal mode. An imaginary mode has a negative frequency."""

    index: int | None
    frequency_cm1: float
    symmetry: str
    reduced_mass_amu: float | None
    force_constant_mdyne_per_angstrom: float | None
    ir_intensity_km_per_mol: float | None
    raman_activity: float | None
    @property
    def displacements(self) -> Vec3List: ...
    @displacements.setter
    def displacements(self, value: _Vec3ListLike) -> None: ...
    def __init__(
        self,
        *,
        index: int | None = None,
        frequency_cm1: float = 0.0,
        symmetry: str = "",
        reduced_mass_amu: float | None = None,
        force_constant_mdyne_per_angstrom: float | None = None,
        ir_intensity_km_per_mol: float | None = None,
        raman_activity: float | None = None,
        displacements: _Vec3ListLike = ...,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class VibrationalBlock:
    @property
    def modes(self) -> VibrationalModeList: ...
    @modes.setter
    def modes(self, value: Iterable[VibrationalMode]) -> None: ...
    def __init__(self, *, modes: Iterable[VibrationalMode] = ...) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ExcitationContribution:
    """How one orbital-to-orbital promotion takes part in an excited state."""

    label: str
    from_orbital: int | None
    to_orbital: int | None
    from_type: str
    to_type: str
    from_spin: str | None
    """One character, or None."""
    to_spin: str | None
    """One character, or None."""
    coefficient: float | None
    weight: float | None
    reverse: bool
    def __init__(
        self,
        *,
        label: str = "",
        from_orbital: int | None = None,
        to_orbital: int | None = None,
        from_type: str = "",
        to_type: str = "",
        from_spin: str | None = None,
        to_spin: str | None = None,
        coefficient: float | None = None,
        weight: float | None = None,
        reverse: bool = False,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class AbsorptionPeak:
    """One row of a spectrum table."""

    spectrum_kind: str
    transition: str
    target_state_index: int | None
    excitation_energy: float
    reported_wavenumber_cm1: float | None
    reported_wavelength_nm: float | None
    oscillator_strength: float | None
    strength_label: str
    strength: float | None
    @property
    def transition_moment_au(self) -> Vec3 | None: ...
    @transition_moment_au.setter
    def transition_moment_au(self, value: _Vec3Like | None) -> None: ...
    rotatory_strength: float | None
    source: SourceSpan | None
    def __init__(
        self,
        *,
        spectrum_kind: str = "",
        transition: str = "",
        target_state_index: int | None = None,
        excitation_energy: float = 0.0,
        reported_wavenumber_cm1: float | None = None,
        reported_wavelength_nm: float | None = None,
        oscillator_strength: float | None = None,
        strength_label: str = "",
        strength: float | None = None,
        transition_moment_au: _Vec3Like | None = None,
        rotatory_strength: float | None = None,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ExcitedState:
    index: int | None
    root_label: str
    method: str
    section: str
    multiplicity_label: str
    symmetry: str
    multiplicity: int | None
    total_energy: float | None
    excitation_energy: float | None
    reported_millihartree: float | None
    reported_wavenumber_cm1: float | None
    reported_wavelength_nm: float | None
    oscillator_strength: float | None
    spin_squared: float | None
    spin_contamination: float | None
    ground_state_amplitude: float | None
    singles_character_percent: float | None
    @property
    def contributions(self) -> ExcitationContributionList: ...
    @contributions.setter
    def contributions(self, value: Iterable[ExcitationContribution]) -> None: ...
    source: SourceSpan | None
    def __init__(
        self,
        *,
        index: int | None = None,
        root_label: str = "",
        method: str = "",
        section: str = "",
        multiplicity_label: str = "",
        symmetry: str = "",
        multiplicity: int | None = None,
        total_energy: float | None = None,
        excitation_energy: float | None = None,
        reported_millihartree: float | None = None,
        reported_wavenumber_cm1: float | None = None,
        reported_wavelength_nm: float | None = None,
        oscillator_strength: float | None = None,
        spin_squared: float | None = None,
        spin_contamination: float | None = None,
        ground_state_amplitude: float | None = None,
        singles_character_percent: float | None = None,
        contributions: Iterable[ExcitationContribution] = ...,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ExcitedStateBlock:
    block_index: int | None
    method: str
    section: str
    comment: str
    @property
    def states(self) -> ExcitedStateList: ...
    @states.setter
    def states(self, value: Iterable[ExcitedState]) -> None: ...
    @property
    def total_energies(self) -> EnergyRecordList: ...
    @total_energies.setter
    def total_energies(self, value: Iterable[EnergyRecord]) -> None: ...
    preferred_total_energy_id: int | None
    @property
    def absorption_peaks(self) -> AbsorptionPeakList: ...
    @absorption_peaks.setter
    def absorption_peaks(self, value: Iterable[AbsorptionPeak]) -> None: ...
    def __init__(
        self,
        *,
        block_index: int | None = None,
        method: str = "",
        section: str = "",
        comment: str = "",
        states: Iterable[ExcitedState] = ...,
        total_energies: Iterable[EnergyRecord] = ...,
        preferred_total_energy_id: int | None = None,
        absorption_peaks: Iterable[AbsorptionPeak] = ...,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class Orbital:
    index: int | None
    spin: SpinChannel
    occupation: float | None
    energy: float
    symmetry: str
    kind: str
    def __init__(
        self,
        *,
        index: int | None = None,
        spin: SpinChannel = SpinChannel.none,
        occupation: float | None = None,
        energy: float = 0.0,
        symmetry: str = "",
        kind: str = "",
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class OrbitalSetBlock:
    spin: SpinChannel
    kind: str
    @property
    def orbitals(self) -> OrbitalList: ...
    @orbitals.setter
    def orbitals(self, value: Iterable[Orbital]) -> None: ...
    def __init__(
        self,
        *,
        spin: SpinChannel = SpinChannel.none,
        kind: str = "",
        orbitals: Iterable[Orbital] = ...,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ThermochemistryBlock:
    """The thermodynamic summary of a frequency calculation, as reported. Energies are in hartree."""

    temperature_kelvin: float | None
    pressure_atmosphere: float | None
    total_mass_amu: float | None
    electronic_energy: float | None
    zero_point_energy: float | None
    thermal_energy: float | None
    thermal_correction: float | None
    enthalpy: float | None
    enthalpy_correction: float | None
    entropy_correction: float | None
    gibbs_free_energy: float | None
    gibbs_correction: float | None
    def __init__(
        self,
        *,
        temperature_kelvin: float | None = None,
        pressure_atmosphere: float | None = None,
        total_mass_amu: float | None = None,
        electronic_energy: float | None = None,
        zero_point_energy: float | None = None,
        thermal_energy: float | None = None,
        thermal_correction: float | None = None,
        enthalpy: float | None = None,
        enthalpy_correction: float | None = None,
        entropy_correction: float | None = None,
        gibbs_free_energy: float | None = None,
        gibbs_correction: float | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class PermanentDipole:
    @property
    def atomic_units(self) -> Vec3: ...
    @atomic_units.setter
    def atomic_units(self, value: _Vec3Like) -> None: ...
    magnitude_atomic_units: float | None
    magnitude_debye: float | None
    method: str
    density_type: str
    source: SourceSpan | None
    def __init__(
        self,
        *,
        atomic_units: _Vec3Like = ...,
        magnitude_atomic_units: float | None = None,
        magnitude_debye: float | None = None,
        method: str = "",
        density_type: str = "",
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class DipoleBlock:
    @property
    def moments(self) -> PermanentDipoleList: ...
    @moments.setter
    def moments(self, value: Iterable[PermanentDipole]) -> None: ...
    def __init__(self, *, moments: Iterable[PermanentDipole] = ...) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class AtomicChargeRecord:
    atom_index: int | None
    element: str
    population: float | None
    charge: float | None
    spin_population: float | None
    secondary_population: float | None
    secondary_charge: float | None
    def __init__(
        self,
        *,
        atom_index: int | None = None,
        element: str = "",
        population: float | None = None,
        charge: float | None = None,
        spin_population: float | None = None,
        secondary_population: float | None = None,
        secondary_charge: float | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class AtomicChargeBlock:
    """One population analysis: the scheme and one record for each atom."""

    scheme: str
    @property
    def records(self) -> AtomicChargeRecordList: ...
    @records.setter
    def records(self, value: Iterable[AtomicChargeRecord]) -> None: ...
    def __init__(self, *, scheme: str = "", records: Iterable[AtomicChargeRecord] = ...) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ScalarProperty:
    key: str
    label: str
    value: float
    unit: str
    source: SourceSpan | None
    def __init__(
        self,
        *,
        key: str = "",
        label: str = "",
        value: float = 0.0,
        unit: str = "",
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ScalarPropertyBlock:
    @property
    def properties(self) -> ScalarPropertyList: ...
    @properties.setter
    def properties(self, value: Iterable[ScalarProperty]) -> None: ...
    def __init__(self, *, properties: Iterable[ScalarProperty] = ...) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

_AnalysisPayload: TypeAlias = (
    VibrationalBlock
    | ExcitedStateBlock
    | OrbitalSetBlock
    | ThermochemistryBlock
    | DipoleBlock
    | AtomicChargeBlock
    | ScalarPropertyBlock
)

class AnalysisBlock:
    """One analysis of a job; the type of `payload` says which kind. A new block holds a VibrationalBlock."""

    id: int
    job_id: int
    ordinal: int
    reference_step_id: int | None
    payload: _AnalysisPayload
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: int = 0,
        job_id: int = 0,
        ordinal: int = 0,
        reference_step_id: int | None = None,
        payload: _AnalysisPayload = ...,
        source: SourceSpan | None = None,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

_MetadataValue: TypeAlias = bool | int | float | str | list[str] | list[float]

class Document:
    """Everything that one run of a calculation program did and found."""

    program: ProgramInfo
    normalization: Normalization
    @property
    def sources(self) -> SourceFileList: ...
    @sources.setter
    def sources(self, value: Iterable[SourceFile]) -> None: ...
    @property
    def systems(self) -> ChemicalSystemList: ...
    @systems.setter
    def systems(self, value: Iterable[ChemicalSystem]) -> None: ...
    @property
    def frames(self) -> GeometryFrameList: ...
    @frames.setter
    def frames(self, value: Iterable[GeometryFrame]) -> None: ...
    @property
    def jobs(self) -> CalculationJobList: ...
    @jobs.setter
    def jobs(self, value: Iterable[CalculationJob]) -> None: ...
    @property
    def steps(self) -> CalculationStepList: ...
    @steps.setter
    def steps(self, value: Iterable[CalculationStep]) -> None: ...
    @property
    def analyses(self) -> AnalysisBlockList: ...
    @analyses.setter
    def analyses(self, value: Iterable[AnalysisBlock]) -> None: ...
    metadata: dict[str, _MetadataValue]
    """A copy of the flat metadata table; assign a whole dict to change it."""
    extensions: dict[str, Any]
    """A copy of the root keys the format does not know, as JSON-like values; assign a whole dict to change it."""
    def __init__(
        self,
        *,
        program: ProgramInfo = ...,
        normalization: Normalization = ...,
        sources: Iterable[SourceFile] = ...,
        systems: Iterable[ChemicalSystem] = ...,
        frames: Iterable[GeometryFrame] = ...,
        jobs: Iterable[CalculationJob] = ...,
        steps: Iterable[CalculationStep] = ...,
        analyses: Iterable[AnalysisBlock] = ...,
        metadata: dict[str, _MetadataValue] = ...,
        extensions: dict[str, Any] = ...,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

class ParseResult:
    """What a decode gives back: the document that could be read, how far the read got, and every finding."""

    value: Document
    status: ParseStatus
    @property
    def diagnostics(self) -> DiagnosticList: ...
    @diagnostics.setter
    def diagnostics(self, value: Iterable[Diagnostic]) -> None: ...
    def __init__(
        self,
        *,
        value: Document = ...,
        status: ParseStatus = ParseStatus.failed,
        diagnostics: Iterable[Diagnostic] = ...,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]

def loads(text: str | bytes) -> ParseResult:
    """Reads document text. Bad content never raises: see the result's status and diagnostics."""

def load(file: str | os.PathLike[str] | BinaryIO) -> ParseResult:
    """Reads a document from a path or a binary file. A path that cannot be opened raises OSError."""

def dumps(
    obj: Document | ParseResult,
    *,
    pretty: bool = False,
    indent: int = 2,
    include_diagnostics: bool = True,
) -> str:
    """Writes a Document (as complete, without diagnostics) or a ParseResult (with its status and diagnostics) as JSON text."""

def dump(
    obj: Document | ParseResult,
    file: str | os.PathLike[str] | TextIO | BinaryIO,
    *,
    pretty: bool = False,
    indent: int = 2,
    include_diagnostics: bool = True,
) -> None:
    """Writes what dumps() gives to a path or an open file."""

def validate_document(document: Document) -> DiagnosticList:
    """Checks the references between the records; each finding is a warning with a "qc.model." code."""

# Severity has no entry: the library writes its words itself and offers no
# function for them.
_WordedEnumeration: TypeAlias = (
    ParseStatus
    | ProgramKind
    | ResultProfile
    | TerminationKind
    | TaskKind
    | JobRelation
    | EnergyKind
    | ConvergenceStatus
    | CriterionKind
    | SpinChannel
)

def to_string(value: _WordedEnumeration) -> str:
    """The word that stands for the value in document text."""
