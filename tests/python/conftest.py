"""Shared inputs of the Python module's tests: the bundled example, a damaged
text, and the command-line tool that the module must agree with byte for
byte."""

import json
import os
import pathlib
import subprocess

import pytest

EXAMPLES = pathlib.Path(os.environ["MORV_EXAMPLES_DIR"])

# Two steps without their job or system: both are dropped with an error each,
# so the document reads as partial.
DAMAGED = (
    '{"schema":"morv.qc.document.v2","program":{"kind":"orca","name":"ORCA"},'
    '"systems":[{"id":1,"topology":{"atoms":[{"id":1,"symbol":"O"}]}}],'
    '"jobs":[{"id":1,"system_id":1}],"steps":[{"id":1,"job_id":1},{"id":2,"system_id":1}],'
    '"metadata":{"nested":{"a":1}}}'
)


@pytest.fixture
def example_path():
    return EXAMPLES / "orca_water_opt_freq.json"


def run_cli(*arguments, text):
    """What the C++ tool prints for `text` given on standard input."""
    completed = subprocess.run(
        [os.environ["MORV_CLI"], *arguments, "-"], input=text, capture_output=True, check=False
    )
    return completed.stdout


def cli_check(text):
    return json.loads(run_cli("check", "--json", text=text))
