"""Spectra whose maxima sit where the strongest lines are, line shapes of the
width asked for, and the command line that writes the images."""

import os
import pathlib

import numpy
import pytest

import morv_qc_json
from morv_qc_json import _units

pytest.importorskip("matplotlib")
from morv_qc_json import __main__ as cli, plot  # noqa: E402

GAUSSIAN = pathlib.Path(__file__).resolve().parents[1] / "data" / "gaussian"
ORCA = pathlib.Path(os.environ["MORV_EXAMPLES_DIR"]) / "orca_water_opt_freq.json"


@pytest.mark.parametrize("shape", ["lorentzian", "gaussian"])
def test_line_is_as_high_as_its_intensity_and_half_as_high_half_a_width_away(shape):
    curve = plot.broaden([100.0], [3.0], numpy.array([100.0, 95.0, 105.0, 200.0]), 10.0, shape)
    assert curve[:3] == pytest.approx([3.0, 1.5, 1.5]) and curve[3] < 0.01


def strongest(lines):
    return max(lines, key=lambda line: line[1])[0]


def modes(path):
    return [b.payload for b in morv_qc_json.import_output(path).value.analyses
            if isinstance(b.payload, morv_qc_json.VibrationalBlock)][-1].modes


def excited(path, lines):
    block = [b.payload for b in morv_qc_json._documents.read_document(path).value.analyses
             if isinstance(b.payload, morv_qc_json.ExcitedStateBlock)][-1]
    energy = strongest([(line.excitation_energy, line.oscillator_strength) for line in getattr(block, lines)])
    return _units.EV_NANOMETRE / (energy * _units.HARTREE_IN_EV)


@pytest.mark.parametrize("draw, source, width, expected", [
    (plot.ir_spectrum, GAUSSIAN / "dvb_ir.out", 2.0,
     strongest([(m.frequency_cm1, m.ir_intensity_km_per_mol) for m in modes(GAUSSIAN / "dvb_ir.out")])),
    (plot.raman_spectrum, GAUSSIAN / "dvb_raman.out", 2.0,
     strongest([(m.frequency_cm1, m.raman_activity) for m in modes(GAUSSIAN / "dvb_raman.out")])),
    # The two strongest states of dvb lie 0.04 eV apart: a narrow width keeps them apart.
    (plot.uv_vis_spectrum, GAUSSIAN / "dvb_td.out", 0.01, excited(GAUSSIAN / "dvb_td.out", "states")),
    # ORCA's absorption table, whose strongest peak (121 nm) the curve follows.
    (plot.uv_vis_spectrum, ORCA, 0.05, excited(ORCA, "absorption_peaks")),
])
def test_maximum_stands_at_the_strongest_line(draw, source, width, expected):
    result = morv_qc_json._documents.read_document(source)
    x, y, axes = draw(result, width=width, points=20001)
    assert x[numpy.argmax(y)] == pytest.approx(expected, abs=2 * abs(x[1] - x[0]))
    assert len(axes.lines) == 1 and len(axes.collections) == 1


def test_energy_profile_of_an_optimisation():
    document = morv_qc_json.import_output(GAUSSIAN / "dvb_gopt.out").value
    x, y, _ = plot.energy_profile(document)
    energies = numpy.array([s.energies[0].value for s in document.steps])
    assert x.tolist() == [1, 2, 3, 4, 5]
    assert y == pytest.approx((energies - energies.min()) * _units.HARTREE_IN_KCAL_PER_MOL)


@pytest.mark.parametrize("source, kind, name, magic", [
    (GAUSSIAN / "dvb_ir.out", "ir", "ir.png", b"\x89PNG"),
    (GAUSSIAN / "dvb_raman.out", "raman", "raman.svg", b"<?xml"),
    (GAUSSIAN / "dvb_td.out", "uv-vis", "uv.png", b"\x89PNG"),
    (GAUSSIAN / "dvb_gopt.out", "profile", "profile.pdf", b"%PDF"),
])
def test_command_line_writes_the_image(tmp_path, source, kind, name, magic):
    assert cli.main(["plot", str(source), "--kind", kind, "-o", str(tmp_path / name)]) == 0
    assert (tmp_path / name).read_bytes().startswith(magic)


def test_command_line_fails_on_a_document_without_the_analysis(tmp_path, capsys):
    assert cli.main(["plot", str(GAUSSIAN / "water_mp2.log"), "--kind", "ir", "-o", str(tmp_path / "x.png")]) == 1
    assert "no vibrational analysis" in capsys.readouterr().err
