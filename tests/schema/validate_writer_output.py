"""Checks the JSON that morv-qc-json writes against its JSON Schema.

usage: validate_writer_output.py SCHEMA SAMPLES_DIR

1. The schema itself must be valid JSON Schema draft 2020-12.
2. Every file in SAMPLES_DIR (the writer's output) must be strict JSON (no
   NaN or Infinity words, no repeated key) and valid against the schema; a
   failure names the file and the JSON path of the error.
3. Documents broken on purpose, each derived from one valid sample, must all
   be rejected, so that the schema is not looser than the writer.

4. Every enum word and optional key of the schema must be reached by some
   sample: the writer's words and keys are then exactly the schema's. Text may hold bytes that are not UTF-8; they
are decoded with surrogateescape, as the writer copies string bytes unchanged.
"""

import copy
import json
import sys
from pathlib import Path

from jsonschema import Draft202012Validator

# A plain built run; the broken documents below are edits of it.
BASE_SAMPLE = "generated_1_0.json"

DROP = object()

# What is wrong, and the edits that make it so: a path into the document and
# the new value, or DROP to remove the key.
BROKEN_DOCUMENTS = [
    ("a schema id of another version", [(["schema"], "morv.qc.document.v1")]),
    ("no program", [(["program"], DROP)]),
    ("a parse_status of 'done'", [(["parse_status"], "done")]),
    ("a job relation outside its table", [(["jobs", 0, "relation"], "sibling")]),
    ("an energy kind in capitals", [(["steps", 0, "energies", 1, "kind"], "ELECTRONIC")]),
    ("a string where a step id belongs", [(["steps", 0, "id"], "1")]),
    ("a negative system id", [(["systems", 0, "id"], -1)]),
    ("a step id beyond 32 bits", [(["jobs", 0, "step_ids", 0], 4294967296)]),
    ("a misspelt key in a step", [(["steps", 0, "frame_id"], DROP), (["steps", 0, "frameid"], 1)]),
    ("a vibrational payload under the type dipoles", [(["analyses", 0, "type"], "dipoles")]),
    ("an analysis type outside its table", [(["analyses", 0, "type"], "raman")]),
    ("a mode marked imaginary at a positive frequency", [(["analyses", 5, "modes", 0, "imaginary"], True)]),
    ("a termination flagged normal but named otherwise", [(["program", "termination", "kind"], "error")]),
    ("an energy without its hartree value", [(["steps", 0, "energies", 0, "value", "hartree"], DROP)]),
    ("a wavelength for a negative energy", [(["steps", 0, "energies", 0, "value", "wavelength_nm"], 1.0)]),
    ("a double written as text", [(["frames", 0, "positions_angstrom", 0, "x"], "0.5")]),
    ("an empty text where only non-empty text is written", [(["jobs", 0, "method"], "")]),
    ("an object as a metadata value", [(["metadata", "ri_approximation"], {"a": 1})]),
    ("a source span without its end", [(["systems", 0, "source", "end"], DROP)]),
    ("a stored diagnostic of severity 'fatal'", [(["diagnostics", 0, "severity"], "fatal")]),
]


def strict_object(pairs):
    keys = [key for key, _ in pairs]
    if len(keys) != len(set(keys)):
        raise ValueError(f"repeated key in an object: {keys}")
    return dict(pairs)


def not_json(word):
    raise ValueError(f"{word} is not JSON")


def load_sample(path):
    text = path.read_bytes().decode("utf-8", "surrogateescape")
    return json.loads(text, object_pairs_hook=strict_object, parse_constant=not_json)


def first_error(validator, document):
    """The deepest error: a failed payload also leaves its keys unevaluated
    higher up, which says less than the fault itself."""
    errors = sorted(validator.iter_errors(document), key=lambda error: -len(error.absolute_path))
    return f"at {errors[0].json_path}: {errors[0].message}" if errors else None


def validate_samples(validator, paths):
    """The documents of the valid samples, and a line for each one that fails."""
    documents, failures = [], []
    for path in paths:
        try:
            document = load_sample(path)
        except ValueError as e:
            failures.append(f"{path.name}: not strict JSON: {e}")
            continue
        error = first_error(validator, document)
        if error:
            failures.append(f"{path.name}: {error}")
        else:
            documents.append(document)
    return documents, failures


def edited(document, edits):
    broken = copy.deepcopy(document)
    for path, value in edits:
        *parents, last = path
        target = broken
        for step in parents:
            target = target[step]
        if value is DROP:
            del target[last]
        else:
            target[last] = value
    return broken


def accepted_broken_documents(validator, base):
    """The broken documents that the schema lets through."""
    print("broken documents, each with the error that rejects it:")
    accepted = []
    for name, edits in BROKEN_DOCUMENTS:
        error = first_error(validator, edited(base, edits))
        if error:
            print(f"  rejected {name}: {error}")
        else:
            accepted.append(name)
    return accepted


def declared(schema):
    """Every enum word and optional key of the schema, as (where, what) pairs.

    `where` is the name of a shape in $defs, or "document", followed by the
    keys and "[]" that lead to the object inside it."""
    found = set()

    def visit(node, where):
        if "enum" in node:
            found.update((where, json.dumps(word)) for word in node["enum"])
        required = node.get("required", [])
        for key, child in node.get("properties", {}).items():
            if key not in required:
                found.add((where, key))
            visit(child, f"{where}.{key}")
        if isinstance(node.get("items"), dict):
            visit(node["items"], f"{where}[]")

    visit(schema, "document")
    for name, shape in schema["$defs"].items():
        visit(shape, name)
    return found


def reached(validator, schema, document):
    """The (where, what) pairs of `declared` that `document` puts to use."""
    found = set()

    def visit(node, value, where):
        if not isinstance(node, dict):
            return
        if "$ref" in node:
            name = node["$ref"].rsplit("/", 1)[-1]
            visit(schema["$defs"][name], value, name)
        if "enum" in node:
            found.add((where, json.dumps(value)))
        for part in [node, *node.get("allOf", [])]:
            if "then" in part and validator.evolve(schema=part["if"]).is_valid(value):
                visit(part["then"], value, where)
        if isinstance(value, dict):
            for key, child in node.get("properties", {}).items():
                if key in value:
                    found.add((where, key))
                    visit(child, value[key], f"{where}.{key}")
        if isinstance(value, list) and "items" in node:
            for item in value:
                visit(node["items"], item, f"{where}[]")

    visit(schema, document, "document")
    return found


def report_unreached(validator, schema, documents):
    unreached = declared(schema)
    for document in documents:
        unreached -= reached(validator, schema, document)
    for where, what in sorted(unreached):
        print(f"  no sample reaches {where}: {what}")
    return len(unreached)


def main(schema_path, samples_dir):
    schema = json.loads(Path(schema_path).read_text(encoding="utf-8"))
    Draft202012Validator.check_schema(schema)
    validator = Draft202012Validator(schema)

    samples = Path(samples_dir)
    paths = sorted(samples.glob("*.json"))
    if not (samples / BASE_SAMPLE).is_file():
        print(f"{samples / BASE_SAMPLE} is missing: the broken documents are made from it")
        return 1
    documents, failures = validate_samples(validator, paths)
    for failure in failures:
        print(f"INVALID {failure}")

    accepted = accepted_broken_documents(validator, load_sample(samples / BASE_SAMPLE))
    for name in accepted:
        print(f"ACCEPTED a broken document: {name}")

    unreached = report_unreached(validator, schema, documents)
    print(f"{len(documents)} of {len(paths)} samples valid, "
          f"{len(BROKEN_DOCUMENTS) - len(accepted)} of {len(BROKEN_DOCUMENTS)} broken documents rejected, "
          f"{unreached} enum words or optional keys reached by no sample")
    # A word or key that no sample reaches is one the writer never writes:
    # the schema would allow more than the library does.
    return 1 if failures or accepted or unreached else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], sys.argv[2]))
