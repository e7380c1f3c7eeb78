#!/usr/bin/env python3
"""The layer rules the compiler cannot see.

Include paths keep a layer from reaching another layer's internals or Qt Widgets (see
cmake/KivdbLayers.cmake), but the database client headers sit in the system's include
folder, visible to all. Only the dialect and the platform talk to SQLite or ODBC; every
other layer reaches the database through the platform's connection. Only presentation/
writes spreadsheet files with libxlsxwriter (linked to the families alone). Tests are
exempt: they look inside.

usage: check_layers.py SRC_DIR   (exits 1 and lists the offending lines)
"""
import pathlib
import re
import sys

DATABASE_LAYERS = re.compile(r"^kivdb/(dialect|platform)/[^/]+$")
DATABASE_CLIENT = re.compile(r'#\s*include\s*[<"](sqlite3|sql|sqlext|sqltypes|sqlucode)\.h[>"]'
                             r'|\bsqlite3_\w+\s*\(|\bSQL(HANDLE|HSTMT|HDBC|HENV|RETURN)\b')
SPREADSHEET_LAYER = re.compile(r"^kivdb/presentation/[^/]+$")
SPREADSHEET_WRITER = re.compile(r'#\s*include\s*[<"]xlsxwriter[./]')


def offences(src):
    for path in sorted(src.rglob("*")):
        rel = path.relative_to(src).as_posix()
        if path.suffix not in (".cpp", ".h") or rel.endswith("_test.cpp") or rel.startswith("kivdb/testing/"):
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if DATABASE_CLIENT.search(line) and not DATABASE_LAYERS.match(rel):
                yield f"{rel}:{number}: only the dialect and the platform use the database client: {line.strip()}"
            if SPREADSHEET_WRITER.search(line) and not SPREADSHEET_LAYER.match(rel):
                yield f"{rel}:{number}: only presentation/ uses the spreadsheet writer: {line.strip()}"


def main():
    found = list(offences(pathlib.Path(sys.argv[1])))
    for line in found:
        print(line)
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
