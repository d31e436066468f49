#!/usr/bin/env python3
"""Prints the energies of each calculation step of a morv.qc.document.v2 file."""

import sys
from pathlib import Path

import morv_qc_json

path = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parent / "orca_water_opt_freq.json"
result = morv_qc_json.load(path)
print(f"{path}: {morv_qc_json.to_string(result.status)}")
print(f"{'step':>4} {'job':>4} {'ordinal':>7}  {'kind':<20} {'label':<28} {'hartree':>16}")
for step in result.value.steps:
    for energy in step.energies:
        kind = morv_qc_json.to_string(energy.kind)
        print(f"{step.id:>4} {step.job_id:>4} {step.ordinal:>7}  {kind:<20} {energy.label:<28} {energy.value:>16.10f}")
