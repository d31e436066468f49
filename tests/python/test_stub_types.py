"""The stub's record fields against the module, beyond the names that stubtest
checks: pybind11 gives its properties no types, so each field of each record
class in the stub is read from a new record, set to a value of every type its
annotation names and read again, and set to None, which must be refused
exactly where the annotation leaves None out."""

import ast
import enum
from pathlib import Path

import pytest

import morv_qc_json as qc
from morv_qc_json import _core

PLAIN = {"int": (int, 1), "float": (float, 0.5), "str": (str, "x"), "bool": (bool, True)}


def stub_fields():
    """(class, field, alternatives of its annotation) for every public field."""
    tree = ast.parse(Path(_core.__file__).with_name("_core.pyi").read_text(encoding="utf-8"))
    for node in tree.body:
        if not isinstance(node, ast.ClassDef) or node.name.startswith("_"):
            continue
        for item in node.body:
            if isinstance(item, ast.AnnAssign) and not ast.unparse(item.annotation).startswith("ClassVar"):
                name, annotation = item.target.id, item.annotation
            elif isinstance(item, ast.FunctionDef) and any(getattr(d, "id", "") == "property"
                                                            for d in item.decorator_list):
                name, annotation = item.name, item.returns
            else:
                continue
            yield node.name, name, [part.strip() for part in ast.unparse(annotation).split("|")]


def example_of(alternative):
    """A value of the type an alternative names, and the check of a value read
    back; nothing for the stub's own aliases and generics."""
    if alternative in PLAIN:
        kind, value = PLAIN[alternative]
        return value, lambda read: type(read) is kind
    kind = getattr(qc, alternative, None)
    if not isinstance(kind, type):
        return None
    value = next(iter(kind)) if issubclass(kind, enum.Enum) else kind()
    return value, lambda read: isinstance(read, kind)


FIELDS = list(stub_fields())


def test_the_stub_describes_fields():
    assert len(FIELDS) > 200


@pytest.mark.parametrize("class_name, field, alternatives", FIELDS,
                         ids=[f"{c}.{f}" for c, f, _ in FIELDS])
def test_a_field_holds_what_its_annotation_says(class_name, field, alternatives):
    kind = getattr(qc, class_name)
    if issubclass(kind, enum.Enum):
        pytest.skip("an enumeration's members are checked by stubtest")
    record = kind()
    for alternative in alternatives:
        example = example_of(alternative)
        if example is None:
            continue
        value, holds = example
        setattr(record, field, value)
        assert holds(getattr(record, field)), f"{alternative}: {getattr(record, field)!r}"
    if "None" in alternatives:
        setattr(record, field, None)
        assert getattr(record, field) is None
    else:
        with pytest.raises(TypeError):
            setattr(record, field, None)
