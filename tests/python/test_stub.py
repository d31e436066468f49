"""The type stub says what the module holds: the same public names, the same
fields of each record in the same order, the same members of each enumeration."""

import ast
import inspect
import pathlib

import morv_qc_json as qc

STUB = pathlib.Path(__file__).parents[2] / "python" / "morv_qc_json" / "_core.pyi"


def stub_tree():
    return ast.parse(STUB.read_text())


def is_class_variable(annotation):
    return isinstance(annotation, ast.Subscript) and getattr(annotation.value, "id", "") == "ClassVar"


def stub_fields(node):
    fields = []
    for item in node.body:
        if isinstance(item, ast.AnnAssign) and not is_class_variable(item.annotation):
            fields.append(item.target.id)
        elif isinstance(item, ast.FunctionDef) and any(getattr(d, "id", "") == "property" for d in item.decorator_list):
            fields.append(item.name)
    return fields


def stub_members(node):
    return [item.target.id for item in node.body
            if isinstance(item, ast.AnnAssign) and is_class_variable(item.annotation)
            and item.target.id != "__members__"]


def test_stub_names_every_public_name_of_the_module():
    stub = {getattr(node, "name", None) or node.target.id for node in stub_tree().body
            if isinstance(node, (ast.ClassDef, ast.FunctionDef, ast.AnnAssign))}
    public_stub = {name for name in stub if not name.startswith("_")} | {"__version__"}
    public_module = {name for name in dir(qc) if not name.startswith("_")} | {"__version__"}
    assert public_stub == public_module


def test_stub_fields_and_members_are_the_module_ones_in_order():
    classes = {node.name: node for node in stub_tree().body if isinstance(node, ast.ClassDef)}
    for name, cls in inspect.getmembers(qc, inspect.isclass):
        if hasattr(cls, "__members__"):
            assert stub_members(classes[name]) == list(cls.__members__), name
        elif not name.endswith("List"):
            properties = [field for field, value in vars(cls).items() if isinstance(value, property)]
            assert stub_fields(classes[name]) == properties, name
