"""The shared library shows what its headers mark with TADIALOGS_EXPORT, and nothing else of its own.

symbols_test.py NM LIBRARY SOURCE_DIR
"""

import pathlib
import re
import subprocess
import sys

ROOMS = ("platform", "settings", "groupfile", "dialogs", "sheet")
CLASS = re.compile(r"^(?:class|struct)\s+(TADIALOGS_EXPORT\s+)?(?:TADIALOGS_HIDDEN\s+)?(\w+)\b(?!\s*;)",
                   re.M)
# A function or variable: the name before "(", "[", "=" or ";".
MARKED_NAME = re.compile(r"^TADIALOGS_EXPORT\s[^;(=\[]*?(\w+)\s*[;(=\[]", re.M)
NAMESPACE = re.compile(r"^namespace\s+([\w:]+)\s*\{", re.M)

# What nm says before and after the name that a symbol is for.
DECORATION = re.compile(r"^(?:vtable for|typeinfo for|typeinfo name for|guard variable for|"
                        r"(?:non-)?virtual thunk to) |\[abi:\w+\]|\(.*", re.S)
# Instances of inline functions and templates of other libraries, which all libraries share.
SHARED_KINDS = "WVu"
LINKER = {"__bss_start", "_edata", "_end"}


def block_end(text, brace):
    """The position after the block that opens at `brace`."""
    depth = 0
    for match in re.compile(r"[{}]").finditer(text, brace):
        depth += 1 if match[0] == "{" else -1
        if depth == 0:
            return match.end()
    return len(text)


def names_of(header):
    """Of a header: its marked classes, its marked functions and variables, all its classes."""
    text = header.read_text(encoding="utf-8")
    scopes = [(m.start(), block_end(text, m.end() - 1), m[1]) for m in NAMESPACE.finditer(text)]

    def qualified(match, name):
        outer = [scope for start, end, scope in scopes if start < match.start() < end]
        return "::".join([*outer, name])

    return ({qualified(m, m[2]) for m in CLASS.finditer(text) if m[1]},
            {qualified(m, m[1]) for m in MARKED_NAME.finditer(text)},
            {qualified(m, m[2]) for m in CLASS.finditer(text)})


def main(nm, library, source_dir):
    headers = [path for room in ROOMS for path in pathlib.Path(source_dir, room).rglob("*.h")]
    per_header = [names_of(header) for header in headers]
    marked, others, own = (set().union(*names) for names in zip(*per_header))

    listing = subprocess.run([nm, "-DC", "--defined-only", library], text=True, check=True,
                             capture_output=True).stdout
    shown = set()
    faults = []
    for line in listing.splitlines():
        _, kind, symbol = line.split(" ", 2)
        name = DECORATION.sub("", symbol)
        shown.add(name)
        of_class = name.rpartition("::")[0]
        # A class within a marked one is shown with it.
        if name in marked | others or {of_class, of_class.rpartition("::")[0]} & marked or \
                symbol in LINKER:
            continue
        is_own = name.startswith("ta::") or name in own or of_class in own
        if is_own or kind not in SHARED_KINDS:
            faults.append(f"shown, but not marked: {symbol}")
    faults += [f"marked, but not shown: {name}" for name in sorted(others - shown)]

    print("\n".join(faults))
    print(f"{len(shown)} names shown; {len(marked)} classes and {len(others)} others are marked")
    return 1 if faults or not marked or not others else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
