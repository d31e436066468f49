"""What the model's enumerations share. The classes themselves are made by
the compiled core from the library's own wire words, so that the words live
in one place."""

import enum


class WireEnum(enum.IntEnum):
    """An enumeration of the model. Each member is named by its wire word and
    numbered as in C++, and is found by either: ``EnergyKind(2)`` and
    ``EnergyKind("scf")`` are the same member; any other number or word raises
    ValueError. ``str()`` and formatting give the wire word."""

    @classmethod
    def _missing_(cls, value: object) -> "WireEnum | None":
        if isinstance(value, str):
            return cls.__members__.get(value)
        return None

    def __str__(self) -> str:
        return self.name

    def __format__(self, format_spec: str) -> str:
        return format(self.name, format_spec)
