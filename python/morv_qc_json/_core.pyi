"""Quantum-chemistry result documents ("morv.qc.document.v2") between Python and JSON text."""

import io
import os
from collections.abc import Iterable, Iterator, Sequence
from typing import (
    Any,
    ClassVar,
    Generic,
    Protocol,
    Self,
    SupportsFloat,
    SupportsIndex,
    TextIO,
    TypeAlias,
    TypeVar,
    overload,
)

import numpy
from numpy.typing import ArrayLike, DTypeLike, NDArray

from ._enumerations import WireEnum as WireEnum

__version__: str
schema_id: str

# Enumerations: enum.IntEnum classes that the module makes when it loads, one
# member for each wire word, named by it and numbered as in C++. A member is
# found by its number or by its word: EnergyKind(2) and EnergyKind("scf") are
# EnergyKind.scf.

class ParseStatus(WireEnum):
    """How far a decode got."""

    complete = 0
    partial = 1
    failed = 2
    def __new__(cls, value: int | str) -> Self: ...

class Severity(WireEnum):
    """How much a diagnostic matters."""

    note = 0
    warning = 1
    error = 2
    def __new__(cls, value: int | str) -> Self: ...

class ProgramKind(WireEnum):
    """The program that made a document."""

    unknown = 0
    gaussian = 1
    orca = 2
    gamess = 3
    def __new__(cls, value: int | str) -> Self: ...

class ResultProfile(WireEnum):
    """How much of a run the producer kept."""

    unknown = 0
    summary = 1
    standard = 2
    full = 3
    def __new__(cls, value: int | str) -> Self: ...

class TerminationKind(WireEnum):
    """How a program or job ended."""

    unknown = 0
    running = 1
    normal = 2
    error = 3
    interrupted = 4
    truncated = 5
    def __new__(cls, value: int | str) -> Self: ...

class TaskKind(WireEnum):
    """What a job was asked to do."""

    single_point = 0
    optimization = 1
    frequency = 2
    excited_state = 3
    irc = 4
    scan = 5
    neb = 6
    def __new__(cls, value: int | str) -> Self: ...

class JobRelation(WireEnum):
    """How a job follows its parent."""

    none = 0
    link = 1
    restart = 2
    branch = 3
    image = 4
    def __new__(cls, value: int | str) -> Self: ...

class EnergyKind(WireEnum):
    """What an energy record is."""

    unknown = 0
    electronic = 1
    scf = 2
    correlated = 3
    excited_state_total = 4
    gibbs_free = 5
    enthalpy = 6
    zero_point = 7
    thermal_correction = 8
    def __new__(cls, value: int | str) -> Self: ...

class ConvergenceStatus(WireEnum):
    """Whether a step converged."""

    unknown = 0
    converged = 1
    not_converged = 2
    def __new__(cls, value: int | str) -> Self: ...

class CriterionKind(WireEnum):
    """What a convergence test measures."""

    max_force = 0
    rms_force = 1
    max_displacement = 2
    rms_displacement = 3
    energy_change = 4
    gradient_norm = 5
    constraint_violation = 6
    def __new__(cls, value: int | str) -> Self: ...

class SpinChannel(WireEnum):
    """The spin of an orbital set."""

    none = 0
    alpha = 1
    beta = 2
    def __new__(cls, value: int | str) -> Self: ...

# What a field accepts besides the type it gives back: a float field any real
# number, an int field any integer (NumPy's scalars included; a bool is refused
# at run time, though the types cannot say so), a bool field NumPy's bool too.
_FloatLike: TypeAlias = SupportsFloat | SupportsIndex
_IntLike: TypeAlias = SupportsIndex
_BoolLike: TypeAlias = bool | numpy.bool_
# A Vec3, or any sequence of three numbers (a tuple, a row of an array).
_Vec3Like: TypeAlias = Vec3 | Sequence[_FloatLike] | NDArray[Any]
# Vectors one by one, or an array of shape (N, 3).
_Vec3ListLike: TypeAlias = Iterable[_Vec3Like] | NDArray[Any]

# The records and lists are pybind11 classes, whose metaclass is pybind11's
# own; this stand-in for it exists only in the stub, as do the private base
# classes below.
class _HandleType(type): ...

class _Handle(metaclass=_HandleType):
    def __eq__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]
    def __repr__(self) -> str: ...
    def __copy__(self) -> Self:
        """A record or list of its own, equal to this one."""
    def __deepcopy__(self, memo: object) -> Self: ...

# Records. Every class takes its fields as optional keyword arguments (the
# others keep their defaults), compares field by field and is therefore
# unhashable. A record taken from a document is a handle on its place there:
# changing it changes the document, and once that place holds another record
# (its list reordered or shortened, it or its owner replaced) using it raises
# RuntimeError. A field that holds a record or a list gives such a handle too;
# assigning to it copies the value in. Copies and unpickled records are records
# of their own.

class _Record(_Handle):
    def __getstate__(self) -> tuple[Any, ...]: ...
    def __setstate__(self, state: tuple[Any, ...], /) -> None: ...

# Lists. A list taken from a record is that record's list, so changing it
# changes the record; an element taken from it is a handle on that element,
# and a slice is a builtins.list of such handles. A list made by its
# constructor is a list of its own. At run time the lists have no __iter__:
# iteration goes through __getitem__ until IndexError, as for any sequence,
# and __iter__ below only says what it gives.

_Item = TypeVar("_Item")
_ItemLike = TypeVar("_ItemLike")

class _List(_Handle, Generic[_Item, _ItemLike]):
    def __init__(self, items: Iterable[_ItemLike] = ()) -> None:
        """A list of its own, filled from any iterable of elements."""
    def __eq__(self, other: object) -> bool:
        """Equal to a list of the same class, or to a list or tuple, with equal elements."""
    def __len__(self) -> int: ...
    @overload
    def __getitem__(self, index: SupportsIndex, /) -> _Item: ...
    @overload
    def __getitem__(self, index: slice, /) -> list[_Item]: ...
    @overload
    def __setitem__(self, index: SupportsIndex, value: _ItemLike, /) -> None: ...
    @overload
    def __setitem__(self, index: slice, value: Iterable[_ItemLike], /) -> None: ...
    def __delitem__(self, index: SupportsIndex | slice, /) -> None: ...
    def __iter__(self) -> Iterator[_Item]: ...
    def __contains__(self, value: object, /) -> bool: ...
    def append(self, value: _ItemLike) -> None:
        """Adds an element at the end; elements taken before stay good."""
    def extend(self, values: Iterable[_ItemLike]) -> None:
        """Adds the elements of an iterable at the end; elements taken before stay good."""
    def insert(self, index: SupportsIndex, value: _ItemLike) -> None: ...
    def pop(self, index: SupportsIndex = -1) -> _Item:
        """Removes an element and gives it back as a record of its own."""
    def remove(self, value: _ItemLike) -> None:
        """Removes the first element equal to value; ValueError when there is none."""
    def clear(self) -> None: ...
    def index(self, value: object) -> int: ...
    def count(self, value: object) -> int: ...
    def __getstate__(self) -> list[_Item]: ...
    def __setstate__(self, state: list[_ItemLike], /) -> None: ...

class DiagnosticList(_List[Diagnostic, Diagnostic]): ...
class SourceFileList(_List[SourceFile, SourceFile]): ...
class AtomSiteList(_List[AtomSite, AtomSite]): ...
class ChemicalSystemList(_List[ChemicalSystem, ChemicalSystem]): ...
class GeometryFrameList(_List[GeometryFrame, GeometryFrame]): ...
class CalculationJobList(_List[CalculationJob, CalculationJob]): ...
class TaskKindList(_List[TaskKind, TaskKind]): ...
class StepIdList(_List[int, _IntLike]): ...
class CalculationStepList(_List[CalculationStep, CalculationStep]): ...
class EnergyRecordList(_List[EnergyRecord, EnergyRecord]): ...
class ConvergenceCriterionList(_List[ConvergenceCriterion, ConvergenceCriterion]): ...
class AnalysisBlockList(_List[AnalysisBlock, AnalysisBlock]): ...
class VibrationalModeList(_List[VibrationalMode, VibrationalMode]): ...
class ExcitationContributionList(_List[ExcitationContribution, ExcitationContribution]): ...
class AbsorptionPeakList(_List[AbsorptionPeak, AbsorptionPeak]): ...
class ExcitedStateList(_List[ExcitedState, ExcitedState]): ...
class OrbitalList(_List[Orbital, Orbital]): ...
class PermanentDipoleList(_List[PermanentDipole, PermanentDipole]): ...
class AtomicChargeRecordList(_List[AtomicChargeRecord, AtomicChargeRecord]): ...
class ScalarPropertyList(_List[ScalarProperty, ScalarProperty]): ...

class Vec3List(_List[Vec3, _Vec3Like]):
    def __init__(self, items: _Vec3ListLike = ()) -> None:
        """A list of its own, filled from vectors or from an array of shape (N, 3)."""
    @overload
    def __setitem__(self, index: SupportsIndex, value: _Vec3Like, /) -> None: ...
    @overload
    def __setitem__(self, index: slice, value: _Vec3ListLike, /) -> None: ...
    def extend(self, values: _Vec3ListLike) -> None:
        """Adds vectors, or the rows of an array of shape (N, 3), at the end."""
    @overload
    def __array__(self, dtype: None = None) -> NDArray[numpy.float64]: ...
    @overload
    def __array__(self, dtype: DTypeLike) -> NDArray[Any]: ...
    def to_numpy(self) -> NDArray[numpy.float64]:
        """A new float64 array of shape (N, 3)."""

class SourcePosition(_Record):
    """A place in a source file."""

    @property
    def offset(self) -> int: ...
    @offset.setter
    def offset(self, value: _IntLike) -> None: ...
    @property
    def line(self) -> int: ...
    @line.setter
    def line(self, value: _IntLike) -> None: ...
    @property
    def column(self) -> int: ...
    @column.setter
    def column(self, value: _IntLike) -> None: ...
    def __init__(self, *, offset: _IntLike = 0, line: _IntLike = 0, column: _IntLike = 0) -> None: ...

class SourceSpan(_Record):
    """A region of one source file of the document; `source_id` names the file."""

    @property
    def source_id(self) -> int: ...
    @source_id.setter
    def source_id(self, value: _IntLike) -> None: ...
    begin: SourcePosition
    end: SourcePosition
    def __init__(self, *, source_id: _IntLike = 0, begin: SourcePosition = ..., end: SourcePosition = ...) -> None: ...

class Diagnostic(_Record):
    """One finding of a decode, or one stored in the document."""

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

class SourceFile(_Record):
    """One file that a document was made from."""

    @property
    def id(self) -> int: ...
    @id.setter
    def id(self, value: _IntLike) -> None: ...
    path: str
    sha256: str | None
    @property
    def size_bytes(self) -> int | None: ...
    @size_bytes.setter
    def size_bytes(self, value: _IntLike | None) -> None: ...
    embedded_content: str | None
    def __init__(
        self,
        *,
        id: _IntLike = 0,
        path: str = "",
        sha256: str | None = None,
        size_bytes: _IntLike | None = None,
        embedded_content: str | None = None,
    ) -> None: ...

class Vec3(_Record):
    """A Cartesian vector. It carries no unit; the field that holds it does."""

    @property
    def x(self) -> float: ...
    @x.setter
    def x(self, value: _FloatLike) -> None: ...
    @property
    def y(self) -> float: ...
    @y.setter
    def y(self, value: _FloatLike) -> None: ...
    @property
    def z(self) -> float: ...
    @z.setter
    def z(self, value: _FloatLike) -> None: ...
    @overload
    def __init__(self, *, x: _FloatLike = 0.0, y: _FloatLike = 0.0, z: _FloatLike = 0.0) -> None: ...
    @overload
    def __init__(self, x: _FloatLike, y: _FloatLike, z: _FloatLike) -> None: ...
    @overload
    def __init__(self, values: Sequence[_FloatLike] | NDArray[Any], /) -> None:
        """Exactly three numbers."""

class AtomSite(_Record):
    """One atom of a system."""

    @property
    def id(self) -> int: ...
    @id.setter
    def id(self, value: _IntLike) -> None: ...
    symbol: str
    raw_label: str
    @property
    def atomic_number(self) -> int | None: ...
    @atomic_number.setter
    def atomic_number(self, value: _IntLike | None) -> None: ...
    @property
    def isotope(self) -> int | None: ...
    @isotope.setter
    def isotope(self, value: _IntLike | None) -> None: ...
    @property
    def formal_charge(self) -> int | None: ...
    @formal_charge.setter
    def formal_charge(self, value: _IntLike | None) -> None: ...
    def __init__(
        self,
        *,
        id: _IntLike = 0,
        symbol: str = "",
        raw_label: str = "",
        atomic_number: _IntLike | None = None,
        isotope: _IntLike | None = None,
        formal_charge: _IntLike | None = None,
    ) -> None: ...

class Topology(_Record):
    """The atoms of a system."""

    @property
    def atoms(self) -> AtomSiteList: ...
    @atoms.setter
    def atoms(self, value: Iterable[AtomSite]) -> None: ...
    def __init__(self, *, atoms: Iterable[AtomSite] = ...) -> None: ...

class ElectronicState(_Record):
    """Charge and multiplicity."""

    @property
    def charge(self) -> int: ...
    @charge.setter
    def charge(self, value: _IntLike) -> None: ...
    @property
    def multiplicity(self) -> int: ...
    @multiplicity.setter
    def multiplicity(self, value: _IntLike) -> None: ...
    def __init__(self, *, charge: _IntLike = 0, multiplicity: _IntLike = 0) -> None: ...

class ChemicalSystem(_Record):
    """A labelled list of atoms. Coordinates live in geometry frames."""

    @property
    def id(self) -> int: ...
    @id.setter
    def id(self, value: _IntLike) -> None: ...
    label: str
    topology: Topology
    electronic_state: ElectronicState | None
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: _IntLike = 0,
        label: str = "",
        topology: Topology = ...,
        electronic_state: ElectronicState | None = None,
        source: SourceSpan | None = None,
    ) -> None: ...

class GeometryFrame(_Record):
    """One set of atom positions of one chemical system."""

    @property
    def id(self) -> int: ...
    @id.setter
    def id(self, value: _IntLike) -> None: ...
    @property
    def system_id(self) -> int: ...
    @system_id.setter
    def system_id(self, value: _IntLike) -> None: ...
    @property
    def positions_angstrom(self) -> Vec3List: ...
    @positions_angstrom.setter
    def positions_angstrom(self, value: _Vec3ListLike) -> None: ...
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: _IntLike = 0,
        system_id: _IntLike = 0,
        positions_angstrom: _Vec3ListLike = ...,
        source: SourceSpan | None = None,
    ) -> None: ...

class Termination(_Record):
    """How a program or job ended."""

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

class ProgramInfo(_Record):
    """The program of the run and how the run ended."""

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

class RequestedAnalyses(_Record):
    """Which kinds of analysis the producer of a document was asked to extract."""

    @property
    def gradients(self) -> bool: ...
    @gradients.setter
    def gradients(self, value: _BoolLike) -> None: ...
    @property
    def vibrations(self) -> bool: ...
    @vibrations.setter
    def vibrations(self, value: _BoolLike) -> None: ...
    @property
    def excited_states(self) -> bool: ...
    @excited_states.setter
    def excited_states(self, value: _BoolLike) -> None: ...
    @property
    def orbitals(self) -> bool: ...
    @orbitals.setter
    def orbitals(self, value: _BoolLike) -> None: ...
    @property
    def dipoles(self) -> bool: ...
    @dipoles.setter
    def dipoles(self, value: _BoolLike) -> None: ...
    def __init__(
        self,
        *,
        gradients: _BoolLike = True,
        vibrations: _BoolLike = True,
        excited_states: _BoolLike = True,
        orbitals: _BoolLike = True,
        dipoles: _BoolLike = True,
    ) -> None: ...

class Normalization(_Record):
    """How much of the run the producer kept."""

    profile: ResultProfile
    requested_analyses: RequestedAnalyses
    def __init__(
        self,
        *,
        profile: ResultProfile = ResultProfile.unknown,
        requested_analyses: RequestedAnalyses = ...,
    ) -> None: ...

class EnergyRecord(_Record):
    """One labelled energy, in hartree."""

    @property
    def id(self) -> int: ...
    @id.setter
    def id(self, value: _IntLike) -> None: ...
    kind: EnergyKind
    label: str
    method: str
    @property
    def value(self) -> float: ...
    @value.setter
    def value(self, value: _FloatLike) -> None: ...
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: _IntLike = 0,
        kind: EnergyKind = EnergyKind.unknown,
        label: str = "",
        method: str = "",
        value: _FloatLike = 0.0,
        source: SourceSpan | None = None,
    ) -> None: ...

class GradientRecord(_Record):
    """Gradient vectors in hartree per bohr, with the summary numbers that the program reported."""

    @property
    def vectors(self) -> Vec3List: ...
    @vectors.setter
    def vectors(self, value: _Vec3ListLike) -> None: ...
    @property
    def norm(self) -> float | None: ...
    @norm.setter
    def norm(self, value: _FloatLike | None) -> None: ...
    @property
    def rms(self) -> float | None: ...
    @rms.setter
    def rms(self, value: _FloatLike | None) -> None: ...
    @property
    def max(self) -> float | None: ...
    @max.setter
    def max(self, value: _FloatLike | None) -> None: ...
    source: SourceSpan | None
    def __init__(
        self,
        *,
        vectors: _Vec3ListLike = ...,
        norm: _FloatLike | None = None,
        rms: _FloatLike | None = None,
        max: _FloatLike | None = None,
        source: SourceSpan | None = None,
    ) -> None: ...

class ConvergenceCriterion(_Record):
    """One test of an optimisation step."""

    kind: CriterionKind
    @property
    def value(self) -> float: ...
    @value.setter
    def value(self, value: _FloatLike) -> None: ...
    @property
    def threshold(self) -> float | None: ...
    @threshold.setter
    def threshold(self, value: _FloatLike | None) -> None: ...
    @property
    def satisfied(self) -> bool | None: ...
    @satisfied.setter
    def satisfied(self, value: _BoolLike | None) -> None: ...
    unit: str
    def __init__(
        self,
        *,
        kind: CriterionKind = CriterionKind.gradient_norm,
        value: _FloatLike = 0.0,
        threshold: _FloatLike | None = None,
        satisfied: _BoolLike | None = None,
        unit: str = "",
    ) -> None: ...

class ConvergenceRecord(_Record):
    """The convergence tests of a step."""

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

class CalculationJob(_Record):
    """One piece of work of a run on one chemical system."""

    @property
    def id(self) -> int: ...
    @id.setter
    def id(self, value: _IntLike) -> None: ...
    @property
    def system_id(self) -> int: ...
    @system_id.setter
    def system_id(self, value: _IntLike) -> None: ...
    @property
    def ordinal(self) -> int: ...
    @ordinal.setter
    def ordinal(self, value: _IntLike) -> None: ...
    @property
    def parent_job_id(self) -> int | None: ...
    @parent_job_id.setter
    def parent_job_id(self, value: _IntLike | None) -> None: ...
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
    def step_ids(self, value: Iterable[_IntLike]) -> None: ...
    termination: Termination
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: _IntLike = 0,
        system_id: _IntLike = 0,
        ordinal: _IntLike = 0,
        parent_job_id: _IntLike | None = None,
        relation: JobRelation = JobRelation.none,
        tasks: Iterable[TaskKind] = ...,
        primary_task: TaskKind | None = None,
        method: str = "",
        basis_set: str = "",
        keywords: str = "",
        step_ids: Iterable[_IntLike] = ...,
        termination: Termination = ...,
        source: SourceSpan | None = None,
    ) -> None: ...

class CalculationStep(_Record):
    """One point of a job's progress: a geometry with what was found there."""

    @property
    def id(self) -> int: ...
    @id.setter
    def id(self, value: _IntLike) -> None: ...
    @property
    def job_id(self) -> int: ...
    @job_id.setter
    def job_id(self, value: _IntLike) -> None: ...
    @property
    def system_id(self) -> int: ...
    @system_id.setter
    def system_id(self, value: _IntLike) -> None: ...
    @property
    def ordinal(self) -> int: ...
    @ordinal.setter
    def ordinal(self, value: _IntLike) -> None: ...
    @property
    def native_cycle(self) -> int | None: ...
    @native_cycle.setter
    def native_cycle(self, value: _IntLike | None) -> None: ...
    @property
    def frame_id(self) -> int | None: ...
    @frame_id.setter
    def frame_id(self, value: _IntLike | None) -> None: ...
    @property
    def energies(self) -> EnergyRecordList: ...
    @energies.setter
    def energies(self, value: Iterable[EnergyRecord]) -> None: ...
    @property
    def primary_energy_id(self) -> int | None: ...
    @primary_energy_id.setter
    def primary_energy_id(self, value: _IntLike | None) -> None: ...
    gradient: GradientRecord | None
    convergence: ConvergenceRecord | None
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: _IntLike = 0,
        job_id: _IntLike = 0,
        system_id: _IntLike = 0,
        ordinal: _IntLike = 0,
        native_cycle: _IntLike | None = None,
        frame_id: _IntLike | None = None,
        energies: Iterable[EnergyRecord] = ...,
        primary_energy_id: _IntLike | None = None,
        gradient: GradientRecord | None = None,
        convergence: ConvergenceRecord | None = None,
        source: SourceSpan | None = None,
    ) -> None: ...

class VibrationalMode(_Record):
    """One normal mode. An imaginary mode has a negative frequency."""

    @property
    def index(self) -> int | None: ...
    @index.setter
    def index(self, value: _IntLike | None) -> None: ...
    @property
    def frequency_cm1(self) -> float: ...
    @frequency_cm1.setter
    def frequency_cm1(self, value: _FloatLike) -> None: ...
    symmetry: str
    @property
    def reduced_mass_amu(self) -> float | None: ...
    @reduced_mass_amu.setter
    def reduced_mass_amu(self, value: _FloatLike | None) -> None: ...
    @property
    def force_constant_mdyne_per_angstrom(self) -> float | None: ...
    @force_constant_mdyne_per_angstrom.setter
    def force_constant_mdyne_per_angstrom(self, value: _FloatLike | None) -> None: ...
    @property
    def ir_intensity_km_per_mol(self) -> float | None: ...
    @ir_intensity_km_per_mol.setter
    def ir_intensity_km_per_mol(self, value: _FloatLike | None) -> None: ...
    @property
    def raman_activity(self) -> float | None: ...
    @raman_activity.setter
    def raman_activity(self, value: _FloatLike | None) -> None: ...
    @property
    def displacements(self) -> Vec3List: ...
    @displacements.setter
    def displacements(self, value: _Vec3ListLike) -> None: ...
    def __init__(
        self,
        *,
        index: _IntLike | None = None,
        frequency_cm1: _FloatLike = 0.0,
        symmetry: str = "",
        reduced_mass_amu: _FloatLike | None = None,
        force_constant_mdyne_per_angstrom: _FloatLike | None = None,
        ir_intensity_km_per_mol: _FloatLike | None = None,
        raman_activity: _FloatLike | None = None,
        displacements: _Vec3ListLike = ...,
    ) -> None: ...

class VibrationalBlock(_Record):
    """The normal modes of a frequency job."""

    @property
    def modes(self) -> VibrationalModeList: ...
    @modes.setter
    def modes(self, value: Iterable[VibrationalMode]) -> None: ...
    def __init__(self, *, modes: Iterable[VibrationalMode] = ...) -> None: ...

class ExcitationContribution(_Record):
    """How one orbital-to-orbital promotion takes part in an excited state."""

    label: str
    @property
    def from_orbital(self) -> int | None: ...
    @from_orbital.setter
    def from_orbital(self, value: _IntLike | None) -> None: ...
    @property
    def to_orbital(self) -> int | None: ...
    @to_orbital.setter
    def to_orbital(self, value: _IntLike | None) -> None: ...
    from_type: str
    to_type: str
    from_spin: str | None
    """One character, or None."""
    to_spin: str | None
    """One character, or None."""
    @property
    def coefficient(self) -> float | None: ...
    @coefficient.setter
    def coefficient(self, value: _FloatLike | None) -> None: ...
    @property
    def weight(self) -> float | None: ...
    @weight.setter
    def weight(self, value: _FloatLike | None) -> None: ...
    @property
    def reverse(self) -> bool: ...
    @reverse.setter
    def reverse(self, value: _BoolLike) -> None: ...
    def __init__(
        self,
        *,
        label: str = "",
        from_orbital: _IntLike | None = None,
        to_orbital: _IntLike | None = None,
        from_type: str = "",
        to_type: str = "",
        from_spin: str | None = None,
        to_spin: str | None = None,
        coefficient: _FloatLike | None = None,
        weight: _FloatLike | None = None,
        reverse: _BoolLike = False,
    ) -> None: ...

class AbsorptionPeak(_Record):
    """One row of a spectrum table."""

    spectrum_kind: str
    transition: str
    @property
    def target_state_index(self) -> int | None: ...
    @target_state_index.setter
    def target_state_index(self, value: _IntLike | None) -> None: ...
    @property
    def excitation_energy(self) -> float: ...
    @excitation_energy.setter
    def excitation_energy(self, value: _FloatLike) -> None: ...
    @property
    def reported_wavenumber_cm1(self) -> float | None: ...
    @reported_wavenumber_cm1.setter
    def reported_wavenumber_cm1(self, value: _FloatLike | None) -> None: ...
    @property
    def reported_wavelength_nm(self) -> float | None: ...
    @reported_wavelength_nm.setter
    def reported_wavelength_nm(self, value: _FloatLike | None) -> None: ...
    @property
    def oscillator_strength(self) -> float | None: ...
    @oscillator_strength.setter
    def oscillator_strength(self, value: _FloatLike | None) -> None: ...
    strength_label: str
    @property
    def strength(self) -> float | None: ...
    @strength.setter
    def strength(self, value: _FloatLike | None) -> None: ...
    @property
    def transition_moment_au(self) -> Vec3 | None: ...
    @transition_moment_au.setter
    def transition_moment_au(self, value: _Vec3Like | None) -> None: ...
    @property
    def rotatory_strength(self) -> float | None: ...
    @rotatory_strength.setter
    def rotatory_strength(self, value: _FloatLike | None) -> None: ...
    source: SourceSpan | None
    def __init__(
        self,
        *,
        spectrum_kind: str = "",
        transition: str = "",
        target_state_index: _IntLike | None = None,
        excitation_energy: _FloatLike = 0.0,
        reported_wavenumber_cm1: _FloatLike | None = None,
        reported_wavelength_nm: _FloatLike | None = None,
        oscillator_strength: _FloatLike | None = None,
        strength_label: str = "",
        strength: _FloatLike | None = None,
        transition_moment_au: _Vec3Like | None = None,
        rotatory_strength: _FloatLike | None = None,
        source: SourceSpan | None = None,
    ) -> None: ...

class ExcitedState(_Record):
    """One excited state."""

    @property
    def index(self) -> int | None: ...
    @index.setter
    def index(self, value: _IntLike | None) -> None: ...
    root_label: str
    method: str
    section: str
    multiplicity_label: str
    symmetry: str
    @property
    def multiplicity(self) -> int | None: ...
    @multiplicity.setter
    def multiplicity(self, value: _IntLike | None) -> None: ...
    @property
    def total_energy(self) -> float | None: ...
    @total_energy.setter
    def total_energy(self, value: _FloatLike | None) -> None: ...
    @property
    def excitation_energy(self) -> float | None: ...
    @excitation_energy.setter
    def excitation_energy(self, value: _FloatLike | None) -> None: ...
    @property
    def reported_millihartree(self) -> float | None: ...
    @reported_millihartree.setter
    def reported_millihartree(self, value: _FloatLike | None) -> None: ...
    @property
    def reported_wavenumber_cm1(self) -> float | None: ...
    @reported_wavenumber_cm1.setter
    def reported_wavenumber_cm1(self, value: _FloatLike | None) -> None: ...
    @property
    def reported_wavelength_nm(self) -> float | None: ...
    @reported_wavelength_nm.setter
    def reported_wavelength_nm(self, value: _FloatLike | None) -> None: ...
    @property
    def oscillator_strength(self) -> float | None: ...
    @oscillator_strength.setter
    def oscillator_strength(self, value: _FloatLike | None) -> None: ...
    @property
    def spin_squared(self) -> float | None: ...
    @spin_squared.setter
    def spin_squared(self, value: _FloatLike | None) -> None: ...
    @property
    def spin_contamination(self) -> float | None: ...
    @spin_contamination.setter
    def spin_contamination(self, value: _FloatLike | None) -> None: ...
    @property
    def ground_state_amplitude(self) -> float | None: ...
    @ground_state_amplitude.setter
    def ground_state_amplitude(self, value: _FloatLike | None) -> None: ...
    @property
    def singles_character_percent(self) -> float | None: ...
    @singles_character_percent.setter
    def singles_character_percent(self, value: _FloatLike | None) -> None: ...
    @property
    def contributions(self) -> ExcitationContributionList: ...
    @contributions.setter
    def contributions(self, value: Iterable[ExcitationContribution]) -> None: ...
    source: SourceSpan | None
    def __init__(
        self,
        *,
        index: _IntLike | None = None,
        root_label: str = "",
        method: str = "",
        section: str = "",
        multiplicity_label: str = "",
        symmetry: str = "",
        multiplicity: _IntLike | None = None,
        total_energy: _FloatLike | None = None,
        excitation_energy: _FloatLike | None = None,
        reported_millihartree: _FloatLike | None = None,
        reported_wavenumber_cm1: _FloatLike | None = None,
        reported_wavelength_nm: _FloatLike | None = None,
        oscillator_strength: _FloatLike | None = None,
        spin_squared: _FloatLike | None = None,
        spin_contamination: _FloatLike | None = None,
        ground_state_amplitude: _FloatLike | None = None,
        singles_character_percent: _FloatLike | None = None,
        contributions: Iterable[ExcitationContribution] = ...,
        source: SourceSpan | None = None,
    ) -> None: ...

class ExcitedStateBlock(_Record):
    """The excited states of one calculation."""

    @property
    def block_index(self) -> int | None: ...
    @block_index.setter
    def block_index(self, value: _IntLike | None) -> None: ...
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
    @property
    def preferred_total_energy_id(self) -> int | None: ...
    @preferred_total_energy_id.setter
    def preferred_total_energy_id(self, value: _IntLike | None) -> None: ...
    @property
    def absorption_peaks(self) -> AbsorptionPeakList: ...
    @absorption_peaks.setter
    def absorption_peaks(self, value: Iterable[AbsorptionPeak]) -> None: ...
    def __init__(
        self,
        *,
        block_index: _IntLike | None = None,
        method: str = "",
        section: str = "",
        comment: str = "",
        states: Iterable[ExcitedState] = ...,
        total_energies: Iterable[EnergyRecord] = ...,
        preferred_total_energy_id: _IntLike | None = None,
        absorption_peaks: Iterable[AbsorptionPeak] = ...,
    ) -> None: ...

class Orbital(_Record):
    """One molecular orbital."""

    @property
    def index(self) -> int | None: ...
    @index.setter
    def index(self, value: _IntLike | None) -> None: ...
    spin: SpinChannel
    @property
    def occupation(self) -> float | None: ...
    @occupation.setter
    def occupation(self, value: _FloatLike | None) -> None: ...
    @property
    def energy(self) -> float: ...
    @energy.setter
    def energy(self, value: _FloatLike) -> None: ...
    symmetry: str
    kind: str
    def __init__(
        self,
        *,
        index: _IntLike | None = None,
        spin: SpinChannel = SpinChannel.none,
        occupation: _FloatLike | None = None,
        energy: _FloatLike = 0.0,
        symmetry: str = "",
        kind: str = "",
    ) -> None: ...

class OrbitalSetBlock(_Record):
    """A set of orbitals of one spin."""

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

class ThermochemistryBlock(_Record):
    """The thermodynamic summary of a frequency calculation, as reported. Energies are in hartree."""

    @property
    def temperature_kelvin(self) -> float | None: ...
    @temperature_kelvin.setter
    def temperature_kelvin(self, value: _FloatLike | None) -> None: ...
    @property
    def pressure_atmosphere(self) -> float | None: ...
    @pressure_atmosphere.setter
    def pressure_atmosphere(self, value: _FloatLike | None) -> None: ...
    @property
    def total_mass_amu(self) -> float | None: ...
    @total_mass_amu.setter
    def total_mass_amu(self, value: _FloatLike | None) -> None: ...
    @property
    def electronic_energy(self) -> float | None: ...
    @electronic_energy.setter
    def electronic_energy(self, value: _FloatLike | None) -> None: ...
    @property
    def zero_point_energy(self) -> float | None: ...
    @zero_point_energy.setter
    def zero_point_energy(self, value: _FloatLike | None) -> None: ...
    @property
    def thermal_energy(self) -> float | None: ...
    @thermal_energy.setter
    def thermal_energy(self, value: _FloatLike | None) -> None: ...
    @property
    def thermal_correction(self) -> float | None: ...
    @thermal_correction.setter
    def thermal_correction(self, value: _FloatLike | None) -> None: ...
    @property
    def enthalpy(self) -> float | None: ...
    @enthalpy.setter
    def enthalpy(self, value: _FloatLike | None) -> None: ...
    @property
    def enthalpy_correction(self) -> float | None: ...
    @enthalpy_correction.setter
    def enthalpy_correction(self, value: _FloatLike | None) -> None: ...
    @property
    def entropy_correction(self) -> float | None: ...
    @entropy_correction.setter
    def entropy_correction(self, value: _FloatLike | None) -> None: ...
    @property
    def gibbs_free_energy(self) -> float | None: ...
    @gibbs_free_energy.setter
    def gibbs_free_energy(self, value: _FloatLike | None) -> None: ...
    @property
    def gibbs_correction(self) -> float | None: ...
    @gibbs_correction.setter
    def gibbs_correction(self, value: _FloatLike | None) -> None: ...
    def __init__(
        self,
        *,
        temperature_kelvin: _FloatLike | None = None,
        pressure_atmosphere: _FloatLike | None = None,
        total_mass_amu: _FloatLike | None = None,
        electronic_energy: _FloatLike | None = None,
        zero_point_energy: _FloatLike | None = None,
        thermal_energy: _FloatLike | None = None,
        thermal_correction: _FloatLike | None = None,
        enthalpy: _FloatLike | None = None,
        enthalpy_correction: _FloatLike | None = None,
        entropy_correction: _FloatLike | None = None,
        gibbs_free_energy: _FloatLike | None = None,
        gibbs_correction: _FloatLike | None = None,
    ) -> None: ...

class PermanentDipole(_Record):
    """One permanent dipole moment."""

    @property
    def atomic_units(self) -> Vec3: ...
    @atomic_units.setter
    def atomic_units(self, value: _Vec3Like) -> None: ...
    @property
    def magnitude_atomic_units(self) -> float | None: ...
    @magnitude_atomic_units.setter
    def magnitude_atomic_units(self, value: _FloatLike | None) -> None: ...
    @property
    def magnitude_debye(self) -> float | None: ...
    @magnitude_debye.setter
    def magnitude_debye(self, value: _FloatLike | None) -> None: ...
    method: str
    density_type: str
    source: SourceSpan | None
    def __init__(
        self,
        *,
        atomic_units: _Vec3Like = ...,
        magnitude_atomic_units: _FloatLike | None = None,
        magnitude_debye: _FloatLike | None = None,
        method: str = "",
        density_type: str = "",
        source: SourceSpan | None = None,
    ) -> None: ...

class DipoleBlock(_Record):
    """The dipole moments of a job."""

    @property
    def moments(self) -> PermanentDipoleList: ...
    @moments.setter
    def moments(self, value: Iterable[PermanentDipole]) -> None: ...
    def __init__(self, *, moments: Iterable[PermanentDipole] = ...) -> None: ...

class AtomicChargeRecord(_Record):
    """The population analysis of one atom."""

    @property
    def atom_index(self) -> int | None: ...
    @atom_index.setter
    def atom_index(self, value: _IntLike | None) -> None: ...
    element: str
    @property
    def population(self) -> float | None: ...
    @population.setter
    def population(self, value: _FloatLike | None) -> None: ...
    @property
    def charge(self) -> float | None: ...
    @charge.setter
    def charge(self, value: _FloatLike | None) -> None: ...
    @property
    def spin_population(self) -> float | None: ...
    @spin_population.setter
    def spin_population(self, value: _FloatLike | None) -> None: ...
    @property
    def secondary_population(self) -> float | None: ...
    @secondary_population.setter
    def secondary_population(self, value: _FloatLike | None) -> None: ...
    @property
    def secondary_charge(self) -> float | None: ...
    @secondary_charge.setter
    def secondary_charge(self, value: _FloatLike | None) -> None: ...
    def __init__(
        self,
        *,
        atom_index: _IntLike | None = None,
        element: str = "",
        population: _FloatLike | None = None,
        charge: _FloatLike | None = None,
        spin_population: _FloatLike | None = None,
        secondary_population: _FloatLike | None = None,
        secondary_charge: _FloatLike | None = None,
    ) -> None: ...

class AtomicChargeBlock(_Record):
    """One population analysis: the scheme and one record for each atom."""

    scheme: str
    @property
    def records(self) -> AtomicChargeRecordList: ...
    @records.setter
    def records(self, value: Iterable[AtomicChargeRecord]) -> None: ...
    def __init__(self, *, scheme: str = "", records: Iterable[AtomicChargeRecord] = ...) -> None: ...

class ScalarProperty(_Record):
    """One named number."""

    key: str
    label: str
    @property
    def value(self) -> float: ...
    @value.setter
    def value(self, value: _FloatLike) -> None: ...
    unit: str
    source: SourceSpan | None
    def __init__(
        self,
        *,
        key: str = "",
        label: str = "",
        value: _FloatLike = 0.0,
        unit: str = "",
        source: SourceSpan | None = None,
    ) -> None: ...

class ScalarPropertyBlock(_Record):
    """Named numbers of a job."""

    @property
    def properties(self) -> ScalarPropertyList: ...
    @properties.setter
    def properties(self, value: Iterable[ScalarProperty]) -> None: ...
    def __init__(self, *, properties: Iterable[ScalarProperty] = ...) -> None: ...

_AnalysisPayload: TypeAlias = (
    VibrationalBlock
    | ExcitedStateBlock
    | OrbitalSetBlock
    | ThermochemistryBlock
    | DipoleBlock
    | AtomicChargeBlock
    | ScalarPropertyBlock
)

class AnalysisBlock(_Record):
    """One analysis of a job; the type of `payload` says which kind. A new block holds a VibrationalBlock."""

    @property
    def id(self) -> int: ...
    @id.setter
    def id(self, value: _IntLike) -> None: ...
    @property
    def job_id(self) -> int: ...
    @job_id.setter
    def job_id(self, value: _IntLike) -> None: ...
    @property
    def ordinal(self) -> int: ...
    @ordinal.setter
    def ordinal(self, value: _IntLike) -> None: ...
    @property
    def reference_step_id(self) -> int | None: ...
    @reference_step_id.setter
    def reference_step_id(self, value: _IntLike | None) -> None: ...
    payload: _AnalysisPayload
    source: SourceSpan | None
    def __init__(
        self,
        *,
        id: _IntLike = 0,
        job_id: _IntLike = 0,
        ordinal: _IntLike = 0,
        reference_step_id: _IntLike | None = None,
        payload: _AnalysisPayload = ...,
        source: SourceSpan | None = None,
    ) -> None: ...

# A metadata entry as read back: a list of numbers comes back as floats.
_MetadataValue: TypeAlias = bool | int | float | str | list[str] | list[float]

# A Document or a ParseResult pickles as its JSON text (bytes) whenever that
# text reads back to an equal value, and through its fields otherwise.

class Document(_Handle):
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
    def positions_array(self) -> NDArray[numpy.float64]:
        """The positions of every frame in angstrom, a new float64 array of shape (frames, atoms, 3).
        ValueError when the frames hold different numbers of atoms."""
    def set_positions_array(self, positions: ArrayLike) -> None:
        """Writes an array of shape (frames, atoms, 3), in angstrom, into the frames' positions."""
    def energies_array(self) -> NDArray[numpy.void]:
        """Every energy record of every step, in document order, as a new structured array with the fields
        step_id, energy_id (uint32), kind (the EnergyKind number, uint32) and value (hartree, float64)."""
    def __getstate__(self) -> bytes | tuple[Any, ...]: ...
    def __setstate__(self, state: bytes | tuple[Any, ...], /) -> None: ...

class ParseResult(_Handle):
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
    def __getstate__(self) -> bytes | tuple[Any, ...]: ...
    def __setstate__(self, state: bytes | tuple[Any, ...], /) -> None: ...

class _Readable(Protocol):
    def read(self) -> str | bytes | bytearray | memoryview: ...

class _BinaryWritable(Protocol):
    def write(self, data: bytes, /) -> object: ...

def loads(text: str | bytes | bytearray | memoryview) -> ParseResult:
    """Reads document text. Bad content never raises: see the result's status and diagnostics."""

def load(file: str | os.PathLike[str] | _Readable) -> ParseResult:
    """Reads a document from a path or from a file's read(). A path that cannot be opened raises OSError."""

def import_output(path_or_text: str | bytes | os.PathLike[str], file_name: str | None = None) -> ParseResult:
    """Reads a program's output into a document: a str or bytes with a line break is the output's text, anything
    else a path to it (OSError when it cannot be read). file_name names the output among the document's sources;
    by default the path's file name, or none for a text. Bad content never raises: an output of no known program
    gives a failed result."""

def dumps(
    obj: Document | ParseResult,
    *,
    pretty: bool = False,
    indent: int = 2,
    include_diagnostics: bool = True,
) -> str:
    """Writes a Document (as complete, without diagnostics) or a ParseResult (with its status and diagnostics)
    as JSON text."""

def dump(
    obj: Document | ParseResult,
    file: str | os.PathLike[str] | TextIO | io.TextIOBase | _BinaryWritable,
    *,
    pretty: bool = False,
    indent: int = 2,
    include_diagnostics: bool = True,
) -> None:
    """Writes what dumps() gives to a path or an open file: a text file (io.TextIOBase) gets the str, any other
    file the bytes."""

def validate_document(document: Document) -> DiagnosticList:
    """Checks the references between the records; each finding is a warning with a "qc.model." code."""

def to_string(value: WireEnum) -> str:
    """The word that stands for the value in document text, which is also its name."""
