"""Coordinate systems: found, refused, written, and where the process's own state stays as it is."""

import os
import pathlib
import pickle
import shutil
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

import pytest

from conftest import ROOT


def test_a_document_is_opened(kelstd, systems):
    system = kelstd.System.open(systems / "rd_new.xml")
    assert system.name == "Amersfoort / RD New"
    assert system.geoid_model == "" and not system.has_site
    assert system.warnings == () and system.report is None
    # As the document has them: false easting and northing, and the shift of published signs.
    assert "+x_0=155000 +y_0=463000" in system.definitions.local_projected
    assert "+towgs84=565.04,49.91,465.84,-0.40939,0.35971,-1.86849,4.0772" in (
        system.definitions.local_geographic)
    assert system.definitions._fields == (
        "wgs84_geographic", "wgs84_cartesian", "local_geographic", "local_projected")


@pytest.mark.parametrize("given", ["EPSG:28992", "epsg:28992", "28992", "Amersfoort / RD New"])
def test_a_delivered_system_is_found(kelstd, given, recwarn):
    system = kelstd.System.find(given)
    assert (system.name, system.code) == ("Amersfoort / RD New", "EPSG:28992")
    # EPSG Dataset: operation 4833 and the area of use of 28992.
    assert system.origin.datum_shift.code == "EPSG:4833"
    assert system.origin.area == (3.2, 50.75, 7.22, 53.7)
    assert not recwarn.list


def test_an_import_states_its_datum_shift(kelstd):
    with pytest.warns(kelstd.KelstdWarning, match=r"ED50 to WGS 84 \(18\) \(EPSG:1311\); accuracy 1 m"):
        system = kelstd.System.find("EPSG:23031")
    assert system.name == "ED50 / UTM zone 31N"
    assert system.report["shift"]["code"] == "EPSG:1311" and system.report["difference_m"] < 0.001
    assert len(system.warnings) == 2


def test_an_import_takes_the_shift_that_is_asked_for(kelstd):
    with pytest.warns(kelstd.KelstdWarning, match="EPSG:1133"):
        system = kelstd.System.find("EPSG:23031", shift="EPSG:1133")
    # EPSG Dataset, operation 1133: -87, -98, -121 m.
    assert "+towgs84=-87,-98,-121" in system.definitions.local_projected


def test_an_imported_system_is_the_one_of_its_document(kelstd):
    with pytest.warns(kelstd.KelstdWarning):
        system = kelstd.System.find("EPSG:2154")
    again = kelstd.System.from_xml(system.to_xml())
    assert again.definitions == system.definitions and again == system
    assert again.origin == system.origin


@pytest.mark.parametrize("given, error, text", [
    ("no such system", "SystemNotFoundError", "no coordinate system"),
    ("EPSG:99999999", "SystemNotFoundError", "99999999"),
    ("", "ValueRefusedError", "no name"),
    ("  ", "ValueRefusedError", "no name"),
    ("EPSG:4326", "SystemRefusedError", "geographic system"),
    # A classical ellipsoid without a datum shift: nobody knows where its positions are.
    ("+proj=utm +zone=31 +ellps=intl +type=crs", "SystemRefusedError", "take_as_wgs84=True"),
    ("examples/rd_new.xml", "SystemNotFoundError", "System.open"),
])
def test_what_is_no_usable_system_is_refused(kelstd, given, error, text):
    with pytest.raises(getattr(kelstd, error), match=text):
        kelstd.System.find(given)


def test_consent_takes_what_has_no_shift(kelstd):
    with pytest.warns(kelstd.KelstdWarning):
        system = kelstd.System.find("+proj=utm +zone=31 +ellps=intl +type=crs", take_as_wgs84=True)
    assert "+ellps=intl" in system.definitions.local_projected


def test_a_doubtful_document_is_refused_unless_lenient(kelstd, systems, tmp_path):
    text = (systems / "rd_new.xml").read_text()
    doubtful = tmp_path / "doubtful.xml"
    doubtful.write_text(text.replace('fuction="Seven"', 'fuction="seven"'))
    assert doubtful.read_text() != text
    with pytest.raises(kelstd.SystemRefusedError, match="lenient=True") as refused:
        kelstd.System.open(doubtful)
    assert any('fuction="seven"' in one for one in refused.value.details)
    with pytest.warns(kelstd.KelstdWarning, match='fuction="seven"'):
        assert kelstd.System.open(doubtful, lenient=True).warnings
    with pytest.raises(kelstd.SystemRefusedError):
        kelstd.System.from_xml(doubtful.read_text())


@pytest.mark.parametrize("content, error", [
    (None, "SystemNotFoundError"), (b"", "SystemRefusedError"), (b"<Coord", "SystemRefusedError"),
    (b"not at all", "SystemRefusedError"), (b"<Other/>", "SystemRefusedError"),
    (bytes(range(256)), "SystemRefusedError"),
])
def test_what_is_no_document_is_refused(kelstd, tmp_path, content, error):
    path = tmp_path / "some.xml"
    if content is not None:
        path.write_bytes(content)
    with pytest.raises(getattr(kelstd, error), match="some.xml"):
        kelstd.System.open(path)


def test_what_is_no_file_is_refused(kelstd, tmp_path):
    os.mkfifo(tmp_path / "pipe")
    for path in (tmp_path, tmp_path / "pipe"):
        with pytest.raises(kelstd.SystemRefusedError):
            kelstd.System.open(path)
    for path in (5, None, b"bytes.xml"):
        with pytest.raises(TypeError):
            kelstd.System.open(path)


@pytest.mark.parametrize("ask, error", [
    (lambda k: k.System.find("\ud800"), ValueError),
    (lambda k: k.System.find("EPSG:28992\0"), ValueError),
    (lambda k: k.System.find("x" * 2_000_000), LookupError),
    (lambda k: k.System.find("EPSG:28992", at=(5,)), ValueError),
    (lambda k: k.System.find("EPSG:28992", at=(float("nan"), 52)), ValueError),
    (lambda k: k.System.find("EPSG:28992", at=(5, 91)), ValueError),
    (lambda k: k.System.find("EPSG:28992", at="52"), ValueError),
    (lambda k: k.System.find("EPSG:28992", shift=""), ValueError),
    (lambda k: k.System.find("EPSG:28992", shift="EPSG:1"), LookupError),
    (lambda k: k.System.open("a\0b"), ValueError),
    (lambda k: k.System.open(":/resource.xml"), LookupError),
    (lambda k: k.System.from_xml(5), TypeError),
    (lambda k: k.System.from_xml("\ud800"), ValueError),
    (lambda k: k.System.from_xml('<!DOCTYPE a [<!ENTITY b "c">]><Coord>&b;</Coord>'), Exception),
    (lambda k: k.System.find("EPSG:28992").save("/nowhere/\0"), ValueError),
    (lambda k: k.Geoid(""), LookupError),
    (lambda k: k.Geoid("../geoid.gtx"), LookupError),
    (lambda k: k.Geoid(5), TypeError),
])
def test_texts_that_name_nothing_are_refused(kelstd, ask, error, capfd):
    with pytest.raises(error):
        ask(kelstd)
    assert capfd.readouterr() == ("", "")


def test_a_system_is_made_by_its_own_functions_only(kelstd):
    with pytest.raises(TypeError, match="System.open"):
        kelstd.System("EPSG:28992")
    with pytest.raises(TypeError):
        kelstd.System.find(28992)


def test_the_document_is_xml_and_comes_back(kelstd, rd, tmp_path):
    text = rd.to_xml()
    assert ElementTree.fromstring(text.encode()).tag == "Coord"
    assert kelstd.System.from_xml(text) == kelstd.System.from_xml(text.encode()) == rd
    path = tmp_path / "saved.xml"
    rd.save(path)
    assert path.read_text() == text
    rd.save(str(path))
    assert kelstd.System.open(path) == rd and hash(kelstd.System.open(path)) == hash(rd)
    assert pickle.loads(pickle.dumps(rd)) == rd


def test_a_file_that_cannot_be_written_is_an_error(kelstd, rd, tmp_path):
    with pytest.raises(kelstd.Error, match="nowhere"):
        rd.save(tmp_path / "nowhere" / "rd.xml")
    assert not list(tmp_path.iterdir())


def test_another_library_is_asked_alone(kelstd, tmp_path, home):
    kelstd.System.find("EPSG:28992")  # lays out that of the home directory
    with pytest.raises(kelstd.SystemNotFoundError, match="holds no library"):
        kelstd.System.find("EPSG:28992", library=tmp_path)
    custom = tmp_path / "custom"
    custom.mkdir()
    shutil.copy(ROOT / "examples" / "rd_new.xml", custom / "mine.xml")
    assert kelstd.System.find("Amersfoort / RD New", library=tmp_path).code == ""


def test_a_custom_system_of_a_code_is_told_of(kelstd, tmp_path):
    custom = tmp_path / "custom"
    custom.mkdir()
    delivered = kelstd.System.find("EPSG:28992").to_xml()
    (custom / "mine.xml").write_text(delivered.replace("Amersfoort / RD New", "Mine"))
    with pytest.warns(kelstd.KelstdWarning, match='custom system "Mine"'):
        assert kelstd.System.find("EPSG:28992", library=tmp_path).name == "Mine"
    (custom / "other.xml").write_text(delivered.replace("Amersfoort / RD New", "Other"))
    with pytest.raises(kelstd.SystemRefusedError, match="2 custom systems .* name one of them"):
        kelstd.System.find("EPSG:28992", library=tmp_path)


def test_copies_of_a_delivered_system_leave_its_code_to_it(kelstd, home, tmp_path):
    delivered = kelstd.System.find("EPSG:28992").to_xml()
    library = shutil.copytree(home / "library", tmp_path / "library")
    for name in ("Mine", "Other"):
        (library / "custom" / f"{name}.xml").write_text(
            delivered.replace("Amersfoort / RD New", name))
    with pytest.warns(kelstd.KelstdWarning,
                      match='2 custom systems have this code, too: "Mine", "Other"'):
        assert kelstd.System.find("EPSG:28992", library=library).name == "Amersfoort / RD New"


def in_a_process(code, **environment):
    return subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, cwd=ROOT,
                          env={**os.environ, **environment}, timeout=60)


def test_the_process_keeps_its_state(home):
    """Locale, current directory, warnings of Qt: nothing of it is changed or said."""
    code = """
import locale, os, threading
locale.setlocale(locale.LC_ALL, "")
before = locale.setlocale(locale.LC_ALL), os.getcwd(), os.umask(0o22)
import kelstd
rd = kelstd.System.find("EPSG:28992")
kelstd.Converter(rd).from_wgs84(5.4, 52.1, 0)
os.umask(0o22)
assert before == (locale.setlocale(locale.LC_ALL), os.getcwd(), 0o22)
print(kelstd.format_length(1234.5))
"""
    for name in ("C", "C.UTF-8"):
        run = in_a_process(code.replace('locale.LC_ALL, ""', f'locale.LC_ALL, "{name}"'))
        assert (run.stdout, run.stderr, run.returncode) == ("1234.500\n", "", 0)


def test_a_home_directory_that_is_none_is_told_of(tmp_path):
    run = in_a_process(
        "import kelstd\n"
        "try: kelstd.System.find('EPSG:28992')\n"
        "except kelstd.NotReadyError as error: print(error)",
        KELSTD_HOME_DIR=str(tmp_path / "missing"))
    assert "is no directory; create it, or set KELSTD_HOME_DIR" in run.stdout and not run.stderr
    assert not list(tmp_path.iterdir())


def test_what_lies_in_the_place_of_proj_is_not_emptied(tmp_path):
    precious = tmp_path / "proj" / "thesis.txt"
    precious.parent.mkdir()
    precious.write_text("years of work")
    run = in_a_process(
        "import kelstd\n"
        "try: kelstd.Converter(kelstd.System.open('examples/rd_new.xml'))\n"
        "except kelstd.NotReadyError as error: print(error)",
        KELSTD_HOME_DIR=str(tmp_path))
    assert "holds something else and is not emptied" in run.stdout
    assert precious.read_text() == "years of work"


def test_without_a_word_the_home_directory_is_that_of_the_program(tmp_path):
    environment = {"XDG_DATA_HOME": str(tmp_path), "KELSTD_HOME_DIR": ""}
    run = in_a_process("import kelstd; print(kelstd.home_dir())", **environment)
    assert pathlib.Path(run.stdout.strip()) == tmp_path / "kelstd"
    program = pathlib.Path(os.environ["KELSTD_BUILD_DIR"]) / "bin" / "kelstd"
    told = subprocess.run([program, "doctor"], capture_output=True, text=True,
                          env={**os.environ, **environment})
    assert str(tmp_path / "kelstd") in told.stdout + told.stderr
