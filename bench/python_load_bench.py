#!/usr/bin/env python3
"""Times morv_qc_json against the standard library's json module on the generated documents.

Each operation runs --repetitions times and the median is reported. A rate is
10^6 bytes of the document file per second, for every row, so that a ratio
(morv_qc_json's rate divided by json's rate of the same operation, above 1
meaning faster) is the inverse ratio of the two times. As in the C++
benchmark, freeing what an operation built is part of its time. The json
module builds untyped dicts and lists; morv_qc_json builds typed records.
json.dumps writes compact text, as morv_qc_json.dumps does.
"""

import argparse
import gc
import json
import statistics
import sys
import time
from pathlib import Path

import morv_qc_json

DOCUMENTS = ("generated_4mb.json", "generated_40mb.json")
COMPACT = (",", ":")


def median_seconds(operation, repetitions):
    times = []
    for _ in range(repetitions):
        gc.collect()
        start = time.perf_counter()
        operation()
        times.append(time.perf_counter() - start)
    return statistics.median(times)


def json_load(path):
    with open(path, "rb") as file:
        return json.load(file)


def comparisons(path):
    """(operation, morv_qc_json's call, json's call) for one document, its text read once."""
    text = path.read_bytes()
    result = morv_qc_json.loads(text)
    if result.status != morv_qc_json.ParseStatus.complete:
        sys.exit(f"{path}: decodes as {morv_qc_json.to_string(result.status)}, not complete")
    parsed = json.loads(text)
    return len(text), (
        ("load", lambda: morv_qc_json.load(path), lambda: json_load(path)),
        ("loads", lambda: morv_qc_json.loads(text), lambda: json.loads(text)),
        ("dumps", lambda: morv_qc_json.dumps(result), lambda: json.dumps(parsed, separators=COMPACT)),
    )


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=Path, help="the folder holding " + " and ".join(DOCUMENTS))
    parser.add_argument("--repetitions", type=int, default=5, metavar="N", help="timings of each operation (default 5)")
    args = parser.parse_args()
    if args.repetitions < 1:
        parser.error("--repetitions must be at least 1")
    missing = [name for name in DOCUMENTS if not (args.folder / name).is_file()]
    if missing:
        parser.error(f"{args.folder} lacks {' and '.join(missing)}")

    print(f"morv_qc_json {morv_qc_json.__version__}, Python {sys.version.split()[0]}, "
          f"medians of {args.repetitions} repetitions\n")
    print("| size | operation | median s | MB/s | ratio |")
    print("|---|---|---:|---:|---:|")
    for name in DOCUMENTS:
        size, operations = comparisons(args.folder / name)
        label = f"{size / 1e6:.1f} MB"
        for operation, morv_call, json_call in operations:
            morv_seconds = median_seconds(morv_call, args.repetitions)
            json_seconds = median_seconds(json_call, args.repetitions)
            ratio = json_seconds / morv_seconds
            print(f"| {label} | `morv_qc_json.{operation}` | {morv_seconds:.5f} | {size / 1e6 / morv_seconds:.1f} | {ratio:.2f} |")
            print(f"| {label} | `json.{operation}` | {json_seconds:.5f} | {size / 1e6 / json_seconds:.1f} | |", flush=True)


if __name__ == "__main__":
    main()
