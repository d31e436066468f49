"""The package's command line: `python3 -m morv_qc_json plot FILE --kind ir|raman|uv-vis|profile -o OUT`.

FILE is a document (.json) or a program output, imported on the spot; the
image format follows the suffix of OUT (png, svg, pdf...).
"""

import argparse
import sys

from ._documents import read_document


def plot(arguments: argparse.Namespace) -> int:
    # No display is needed or wanted: the image goes to a file.
    import matplotlib  # type: ignore[import]

    matplotlib.use("Agg")
    from . import plot as plots

    document = read_document(arguments.file).value
    options = {"shape": arguments.shape} if arguments.shape else {}
    if arguments.width is not None:
        options["width"] = arguments.width
    draw = {"ir": plots.ir_spectrum, "raman": plots.raman_spectrum, "uv-vis": plots.uv_vis_spectrum}
    try:
        if arguments.kind == "profile":
            curve = plots.energy_profile(document)
        else:
            curve = draw[arguments.kind](document, **options)
    except ValueError as error:
        print(f"{arguments.file}: {error}", file=sys.stderr)
        return 1
    curve.axes.set_title(str(arguments.file).rsplit("/", 1)[-1])
    curve.axes.figure.savefig(arguments.output, dpi=120)
    return 0


def main(argv: list[str] | None = None) -> int:
    parser = argparse.ArgumentParser(prog="python3 -m morv_qc_json", description="Tools over result documents.")
    commands = parser.add_subparsers(dest="command", required=True)
    drawing = commands.add_parser("plot", help="draws a spectrum or an energy profile into an image file")
    drawing.add_argument("file", help="a document (.json) or a program output")
    drawing.add_argument("--kind", choices=["ir", "raman", "uv-vis", "profile"], required=True)
    drawing.add_argument("-o", "--output", required=True, help="the image; its suffix picks the format")
    drawing.add_argument("--width", type=float, help="line width at half height: cm-1 for ir and raman, eV for uv-vis")
    drawing.add_argument("--shape", choices=["lorentzian", "gaussian"], help="the line shape of a spectrum")
    arguments = parser.parse_args(argv)
    return plot(arguments)


if __name__ == "__main__":
    sys.exit(main())
