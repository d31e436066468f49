#!/usr/bin/env python3
"""Times morv_qc_json.import_output against cclib.io.ccread on Gaussian, ORCA and GAMESS outputs.

Both read the same bytes in the same process: import_output from the text held
in memory, ccread from the file (it takes a path), so that ccread's time
includes reading the file, which is small beside its parse. Rounds interleave
the two readers and each reports the median of its rounds. A rate is 10^6
bytes of the output per second; the ratio is morv_qc_json's rate divided by
cclib's on the same output, above 1 meaning faster.

The outputs are the largest bundled ones of each program, the largest of the
shared folders when they are there, and outputs grown from dvb_gopt.out (a geometry
optimisation in five steps): the text of its first four steps, from the line
of the first "Input orientation:" to that of the fifth, is repeated N times
between the original beginning and the original fifth step and end. The grown outputs, of 0.2, 1.4, 13.5
and 100 MB, show whether the time grows linearly with the size.

The ORCA outputs are chosen alike, and grown alike from ORCA's dvb_gopt.out:
the text of its first two optimisation cycles, from the banner of the first
"GEOMETRY OPTIMIZATION CYCLE" to that of the third, repeated N times. cclib
1.6 fails on every ORCA 6 output; its columns then say so and the import's
rate stands alone.
"""

import argparse
import gc
import os
import statistics
import sys
import tempfile
import time
from pathlib import Path

import cclib
import morv_qc_json

ROOT = Path(__file__).resolve().parents[1]
BUNDLED = ROOT / "tests" / "data" / "gaussian"
SHARED = ROOT.parent / "shared" / "outputs" / "Gaussian" / "basicGaussian16"
BUNDLED_GAMESS = ROOT / "tests" / "data" / "gamess"
SHARED_GAMESS = ROOT.parent / "shared" / "outputs" / "GAMESS" / "basicGAMESS-US2018"
GROWN_FROM = BUNDLED / "dvb_gopt.out"
MARK = b"Input orientation:"
BUNDLED_ORCA = ROOT / "tests" / "data" / "orca"
SHARED_ORCA = ROOT.parent / "shared" / "outputs" / "ORCA" / "basicORCA6.0"
ORCA_MARK = b"GEOMETRY OPTIMIZATION CYCLE"


def grown(times, source=GROWN_FROM, mark=MARK, steps=4):
    """`source` with the text of its first `steps` optimisation steps repeated `times` times."""
    text = source.read_bytes()
    starts = []
    at = text.find(mark)
    while at != -1:
        starts.append(text.rfind(b"\n", 0, at) + 1)
        at = text.find(mark, at + 1)
    # Gaussian's sixth geometry is the fifth printed again after convergence.
    first, last = starts[0], starts[steps]
    return text[:first] + text[first:last] * times + text[last:]


def largest(folder):
    """The three largest outputs of a folder."""
    return sorted((p for p in folder.iterdir() if p.suffix in (".log", ".out")), key=lambda p: -p.stat().st_size)[:3]


def medians(readers, rounds):
    """Median seconds of each reader, over `rounds` rounds that run them one after the other."""
    times = [[] for _ in readers]
    for _ in range(rounds):
        for read, kept in zip(readers, times):
            gc.collect()
            start = time.perf_counter()
            read()
            kept.append(time.perf_counter() - start)
    return [statistics.median(kept) for kept in times]


def row(label, text, path, rounds):
    if morv_qc_json.import_output(text).status == morv_qc_json.ParseStatus.failed:
        sys.exit(f"{label}: the import fails")
    megabytes = len(text) / 1e6
    try:
        cclib.io.ccread(str(path))
    except Exception as error:  # cclib 1.6 stops on ORCA 6's banner
        (ours,) = medians((lambda: morv_qc_json.import_output(text),), rounds)
        print(f"| {label} | {megabytes:.2f} | {megabytes / ours:.1f} | fails ({type(error).__name__}) | - |",
              flush=True)
        return
    ours, theirs = medians((lambda: morv_qc_json.import_output(text), lambda: cclib.io.ccread(str(path))), rounds)
    print(f"| {label} | {megabytes:.2f} | {megabytes / ours:.1f} | {megabytes / theirs:.2f} | {theirs / ours:.1f} |",
          flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--rounds", type=int, default=5, metavar="N", help="interleaved rounds (default 5)")
    args = parser.parse_args()
    if args.rounds < 1:
        parser.error("--rounds must be at least 1")

    print(f"morv_qc_json {morv_qc_json.__version__}, cclib {cclib.__version__}, Python {sys.version.split()[0]}, "
          f"medians of {args.rounds} interleaved rounds\n")
    print("| output | MB | morv_qc_json MB/s | cclib MB/s | ratio |")
    print("|---|---:|---:|---:|---:|")
    files = []
    for bundled, shared in ((BUNDLED, SHARED), (BUNDLED_ORCA, SHARED_ORCA), (BUNDLED_GAMESS, SHARED_GAMESS)):
        files += largest(bundled)
        if shared.is_dir():
            files += largest(shared)
        else:
            print(f"(no shared outputs at {shared})", file=sys.stderr)
    for path in files:
        row(path.relative_to(ROOT.parent), path.read_bytes(), path, args.rounds)
    with tempfile.TemporaryDirectory() as folder:
        for times in (1, 10, 100, 745):
            text = grown(times)
            path = Path(folder) / f"dvb_gopt_x{times}.out"
            path.write_bytes(text)
            # cclib takes seconds on 100 MB: three rounds there.
            rounds = args.rounds if times <= 100 else min(args.rounds, 3)
            row(f"dvb_gopt.out, steps x{times}", text, path, rounds)
            os.remove(path)
        for times in (1, 10, 100):
            text = grown(times, BUNDLED_ORCA / "dvb_gopt.out", ORCA_MARK, 2)
            path = Path(folder) / f"orca_dvb_gopt_x{times}.out"
            path.write_bytes(text)
            row(f"ORCA dvb_gopt.out, cycles x{times}", text, path, args.rounds)
            os.remove(path)


if __name__ == "__main__":
    main()
