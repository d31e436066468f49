#!/usr/bin/env python3
"""Prints the table of bench/README.md from the JSON that `make bench` writes.

    bench/report.py build-bench/codec_bench.json

Each figure is the median of the repetitions, in MB/s (10^6 bytes of the
compact document text per second), and each rate of the codec is also given
as a ratio to the references of the same run.
"""

import json
import sys

CODEC = [
    ("deserialize", "`deserialize`",
     ["deserialize_through_yaml", "yaml_load", "nlohmann_parse", "rapidjson_parse", "simdjson_parse"]),
    ("load_strict_json", "the strict JSON loader alone",
     ["deserialize", "rapidjson_parse", "simdjson_parse"]),
    ("serialize_compact", "`serialize`, compact", ["nlohmann_dump", "rapidjson_write"]),
    ("serialize_pretty", "`serialize`, pretty", ["nlohmann_dump", "rapidjson_write"]),
]

REFERENCES = {
    "deserialize": "`deserialize`",
    "deserialize_through_yaml": "the decode through `YAML::Load`",
    "yaml_load": "`YAML::Load`",
    "nlohmann_parse": "nlohmann `json::parse`",
    "rapidjson_parse": "RapidJSON `Document::Parse`",
    "simdjson_parse": "simdjson DOM `parser.parse`",
    "nlohmann_dump": "nlohmann `dump`",
    "rapidjson_write": "RapidJSON `Writer`",
}


def medians(path):
    """The median rate of each (benchmark, text), and the texts in the order of the run."""
    with open(path) as file:
        runs = json.load(file)["benchmarks"]
    rates = {}
    texts = []
    for run in runs:
        if run.get("aggregate_name") == "median":
            name, text = run["run_name"].split("/")[:2]
            rates[(name, text)] = run["bytes_per_second"] / 1e6
            if text not in texts:
                texts.append(text)
    return rates, texts


def rate(value):
    return f"{value:.1f}" if value < 100 else f"{value:.0f}"


def ratio(value):
    return f"{value:.2f}" if value >= 0.1 else f"{value:#.2g}"


def main(path):
    rates, texts = medians(path)

    def cells(numerator, denominator=None):
        for text in texts:
            if (numerator, text) not in rates or (denominator and (denominator, text) not in rates):
                yield "–"
            elif denominator:
                yield ratio(rates[(numerator, text)] / rates[(denominator, text)])
            else:
                yield rate(rates[(numerator, text)])

    print("| | " + " | ".join(f"`{text}`" for text in texts) + " |")
    print("|---|" + "---:|" * len(texts))
    for name, label, references in CODEC:
        print(f"| {label}, MB/s | " + " | ".join(cells(name)) + " |")
        for reference in references:
            print(f"| &emsp;÷ {REFERENCES[reference]} | " + " | ".join(cells(name, reference)) + " |")
    codec = {name for name, _, _ in CODEC}
    for reference, label in REFERENCES.items():
        if reference in codec:
            continue
        print(f"| {label}, MB/s | " + " | ".join(cells(reference)) + " |")


if __name__ == "__main__":
    main(sys.argv[1])
