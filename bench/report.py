#!/usr/bin/env python3
"""Prints the table of bench/README.md from the JSON that `make bench` writes.

    bench/report.py build-bench/codec_bench.json

Each figure is the median of the repetitions, in MB/s (10^6 bytes of the
compact document text per second), and each rate of the codec is also given
as a ratio to the references of the same run.
"""

import json
import sys

SIZES = [("100KB", "100 KB"), ("4MB", "4 MB"), ("40MB", "40 MB")]

CODEC = [
    ("deserialize", "`deserialize`",
     ["deserialize_through_yaml", "yaml_load", "nlohmann_parse", "rapidjson_parse", "simdjson_parse"]),
    ("serialize_compact", "`serialize`, compact", ["nlohmann_dump", "rapidjson_write"]),
    ("serialize_pretty", "`serialize`, pretty", ["nlohmann_dump", "rapidjson_write"]),
]

REFERENCES = {
    "deserialize_through_yaml": "the decode through `YAML::Load`",
    "yaml_load": "`YAML::Load`",
    "nlohmann_parse": "nlohmann `json::parse`",
    "rapidjson_parse": "RapidJSON `Document::Parse`",
    "simdjson_parse": "simdjson DOM `parser.parse`",
    "nlohmann_dump": "nlohmann `dump`",
    "rapidjson_write": "RapidJSON `Writer`",
}


def medians(path):
    with open(path) as file:
        runs = json.load(file)["benchmarks"]
    rates = {}
    for run in runs:
        if run.get("aggregate_name") == "median":
            name, size = run["run_name"].split("/")[:2]
            rates[(name, size)] = run["bytes_per_second"] / 1e6
    return rates


def rate(value):
    return f"{value:.1f}" if value < 100 else f"{value:.0f}"


def ratio(value):
    return f"{value:.2f}" if value >= 0.1 else f"{value:#.2g}"


def main(path):
    rates = medians(path)
    print("| | " + " | ".join(label for _, label in SIZES) + " |")
    print("|---|" + "---:|" * len(SIZES))
    for name, label, references in CODEC:
        print(f"| {label}, MB/s | " + " | ".join(rate(rates[(name, size)]) for size, _ in SIZES) + " |")
        for reference in references:
            cells = (ratio(rates[(name, size)] / rates[(reference, size)]) for size, _ in SIZES)
            print(f"| &emsp;÷ {REFERENCES[reference]} | " + " | ".join(cells) + " |")
    for reference, label in REFERENCES.items():
        print(f"| {label}, MB/s | " + " | ".join(rate(rates[(reference, size)]) for size, _ in SIZES) + " |")


if __name__ == "__main__":
    main(sys.argv[1])
