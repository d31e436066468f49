"""One way to open a file for every submodule: a document's JSON text, or a
program's output imported on the spot."""

import os

from ._core import ParseResult, import_output, load


def read_document(path: str | os.PathLike[str]) -> ParseResult:
    """The document of `path`: read as JSON when the name ends in .json, imported as a program output otherwise."""
    if os.fspath(path).endswith(".json"):
        return load(path)
    return import_output(path)
