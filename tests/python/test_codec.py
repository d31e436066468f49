"""Reading and writing through the module: the same bytes, statuses and
diagnostics as the C++ library, files and their errors, threads; program
outputs imported as the tool imports them."""

import concurrent.futures
import io
import json
import tempfile

import pytest

import morv_qc_json as qc
from conftest import DAMAGED, EXAMPLES, cli_check, run_cli


def test_round_trip_of_the_example_gives_the_cli_bytes(example_path):
    text = example_path.read_bytes()
    result = qc.loads(text)
    assert result.status == qc.ParseStatus.complete
    for options, arguments in [
        ({}, ["format", "--with-diagnostics"]),
        ({"pretty": True, "indent": 3}, ["format", "--with-diagnostics", "--indent", "3"]),
    ]:
        written = qc.dumps(result, **options)
        expected = run_cli(*arguments, text=text).decode()
        assert written == (expected if options else expected[:-1])
    assert qc.loads(qc.dumps(result)) == result
    assert qc.dumps(result.value) == run_cli("format", text=text).decode()[:-1]


def test_damaged_text_reads_partial_with_the_diagnostics_of_the_cli():
    result = qc.loads(DAMAGED)
    report = cli_check(DAMAGED.encode())
    assert result.status == qc.ParseStatus.partial
    assert qc.to_string(result.status) == report["status"] == "partial"
    assert [(d.severity.name, d.code, d.message) for d in result.diagnostics] == [
        (d["severity"], d["code"], d["message"]) for d in report["diagnostics"]
    ]
    assert len(result.diagnostics) == 3


@pytest.mark.parametrize(
    "text, status",
    [("", qc.ParseStatus.failed), ("{", qc.ParseStatus.failed), ('{"schema":"x"}', qc.ParseStatus.failed),
     (b"\xff\xfe[", qc.ParseStatus.failed), (bytearray(DAMAGED.encode()), qc.ParseStatus.partial)],
)
def test_bad_content_never_raises(text, status):
    assert qc.loads(text).status == status


def test_strings_that_are_not_utf8_come_back_as_the_same_bytes():
    text = (b'{"schema":"morv.qc.document.v2","program":{"kind":"orca","name":"caf\xe9 \xff"},'
            b'"systems":[{"id":1,"topology":{"atoms":[]}}],"metadata":{"k\xe9y":["\xe9"]}}')
    result = qc.loads(text)
    assert result.value.program.name == "caf\udce9 \udcff"
    assert result.value.metadata == {"k\udce9y": ["\udce9"]}
    written = qc.dumps(result).encode("utf-8", "surrogateescape")
    assert written == run_cli("format", "--with-diagnostics", text=text)[:-1]
    assert qc.loads(qc.dumps(result)) == result


def test_files_paths_and_their_errors(example_path, tmp_path):
    expected = qc.loads(example_path.read_bytes())
    assert qc.load(example_path) == expected
    assert qc.load(str(example_path)) == expected
    with open(example_path, "rb") as binary:
        assert qc.load(binary) == expected

    written = tmp_path / "out.json"
    qc.dump(expected, written, pretty=True)
    assert written.read_text() == qc.dumps(expected, pretty=True)
    text_file = io.StringIO()
    qc.dump(expected.value, text_file)
    assert text_file.getvalue() == qc.dumps(expected.value)
    with tempfile.SpooledTemporaryFile(mode="w+") as spooled:
        qc.dump(expected, spooled)
        spooled.seek(0)
        assert spooled.read() == qc.dumps(expected)
    binary_file = io.BytesIO()
    qc.dump(expected, binary_file, include_diagnostics=False)
    assert binary_file.getvalue() == qc.dumps(expected, include_diagnostics=False).encode()

    for call, error in [(lambda: qc.load(tmp_path / "missing.json"), FileNotFoundError),
                        (lambda: qc.load(tmp_path), IsADirectoryError),
                        (lambda: qc.dump(expected, tmp_path / "no" / "out.json"), FileNotFoundError),
                        (lambda: qc.load(3), TypeError), (lambda: qc.loads(3.5), TypeError),
                        (lambda: qc.dumps({"schema": "morv.qc.document.v2"}), TypeError)]:
        with pytest.raises(error):
            call()


def test_threads_decode_and_write_side_by_side(example_path):
    text = example_path.read_bytes()
    expected = qc.dumps(qc.loads(text))
    with concurrent.futures.ThreadPoolExecutor(max_workers=4) as pool:
        written = list(pool.map(lambda _: qc.dumps(qc.loads(text)), range(16)))
    assert written == [expected] * 16


def test_import_output_takes_text_with_a_line_break_and_a_path_otherwise(tmp_path):
    notes = tmp_path / "notes.txt"
    notes.write_text("hello\n")
    report = json.loads(run_cli("import", "--json", "-o", str(tmp_path / "out.json"), text=b"hello\n"))
    unknown = [(d["severity"], d["code"], d["message"]) for d in report["diagnostics"]]
    assert unknown == [("error", "qc.import.unknown_program", "not an output of a known program")]
    for source in ["hello\n", b"hello\r\n", notes, str(notes), bytes(notes)]:
        result = qc.import_output(source)
        assert result.status == qc.ParseStatus.failed
        assert [(d.severity.name, d.code, d.message) for d in result.diagnostics] == unknown

    gaussian = EXAMPLES / "gaussian" / "water_mp2.log"
    assert qc.import_output(gaussian) == qc.import_output(gaussian.read_text(), file_name="water_mp2.log")

    for source, error in [("hello", FileNotFoundError), (tmp_path, IsADirectoryError), (3, TypeError)]:
        with pytest.raises(error):
            qc.import_output(source)
