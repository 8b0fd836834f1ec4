"""The files that the tour saved, read with Python's csv module: do they hold what its data viewer showed?

read_tour_csv.py FOLDER
"""

import csv
import io
import json
import pathlib
import sys

TIME = {"zh": "時間", "en": "Time"}


def cells_of(text):
    return list(csv.reader(io.StringIO(text, newline=""), strict=True))


def expect(what, got, wanted):
    for line, (left, right) in enumerate(zip(got, wanted)):
        if left != right:
            sys.exit(f"{what}, line {line + 1}: {left} is not {right}")
    if len(got) != len(wanted):
        sys.exit(f"{what}: {len(got)} lines are not {len(wanted)}")


def apart(row):
    """A row whose date and time of day are cells of their own."""
    return row[0].split(" ") + row[1:]


def iso(date):
    day, _, time = date.partition(" ")
    return day.replace("/", "-") + (f"T{time}:00" if time else "")


def as_shown(number, shown):
    """An exact number with the decimals of the shown one."""
    text = f"{float(number):.{len(shown.partition('.')[2])}f}" if number else ""
    return text.lstrip("-") if text and float(text) == 0 else text


def check_fixed(what, text, shown):
    title, headings, rows = text.split("\r\n", 2)
    expect(what, [title, headings], [shown["title"], ",".join(shown["headings"]) + ","])
    expect(what, cells_of(rows), [row + [""] for row in shown["rows"]])


def check_apart(what, text, shown, time):
    headings = list(shown["headings"])
    if " " in shown["rows"][0][0]:
        headings.insert(1, time)
    expect(what, cells_of(text), [headings] + [apart(row) for row in shown["rows"]])


def check_analysis(what, text, shown):
    head, *rows = cells_of(text)
    expect(what, [head], [shown["headings"]])
    expect(what,
           [[row[0]] + [as_shown(*pair) for pair in zip(row[1:], seen[1:])]
            for row, seen in zip(rows, shown["rows"])],
           [[iso(seen[0])] + seen[1:] for seen in shown["rows"]])
    expect(what, [len(rows)], [len(shown["rows"])])


def check(folder, language):
    shown = json.loads((folder / f"data-{language}-shown.json").read_text("utf-8"))
    if not any("," in heading for heading in shown["headings"]) or len(shown["rows"]) < 100:
        sys.exit(f"{language}: too little is shown to prove anything")
    forms = {
        "saved": ("cp950", check_fixed),
        "fixed": ("cp950", check_fixed),
        "spreadsheet": ("utf-8-sig", lambda *all: check_apart(*all, TIME[language])),
        "codepage": ("cp950", lambda *all: check_apart(*all, TIME[language])),
        "analysis": ("utf-8", check_analysis),
    }
    for form, (encoding, compare) in forms.items():
        path = folder / f"data-{language}-{form}.csv"
        compare(path.name, path.read_bytes().decode(encoding), shown)


for tongue in TIME:
    check(pathlib.Path(sys.argv[1]), tongue)
