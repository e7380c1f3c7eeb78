#!/usr/bin/env python3
"""The export table generator on small tables: a row's body compiles as code of its line
of the table, and malformed rows are refused at their line.

usage: gen_exports_test.py CXX_COMPILER
"""
import pathlib
import subprocess
import sys
import tempfile

GENERATOR = pathlib.Path(__file__).with_name("gen_exports.py")

# A table of subsystem `fix`; Broken's body names nothing declared.
BROKEN = """\
# fixture
## Twice the number.
Twice(N: int) -> int [fix]
    = N * 2
## Fails to compile.
Broken(N: int) -> int [fix]
    = N + undeclaredName
"""
BROKEN_BODY_LINE = 7

# Stand-ins for the headers every generated header includes.
STUBS = ["platform/connection.h", "platform/field_values.h", "platform/query_dataset.h",
         "platform/string_list.h", "QVariantList"]

REFUSED = [
    # (what, table text, line reported, words of the message)
    ("no description", "## Twice.\nTwice(N: int) -> int [fix]\nThrice(N: int) -> int [fix]\n", 3,
     "Thrice has no description"),
    ("description apart from its row", "## Twice.\n\nTwice(N: int) -> int [fix]\n", 2,
     "right above a signature"),
    ("tag of another subsystem", "## Twice.\nTwice(N: int) -> int [frame]\n", 2,
     "tagged [frame] in the table of subsystem fix"),
    ("name twice", "## Twice.\nTwice(N: int) -> int [fix]\n## Again.\ntwice(N: int) -> int [fix]\n", 4,
     "listed twice"),
    ("name spliced unguarded", "## Drop.\nDrop(TableName: string) -> int [fix]\n    = f(\"drop \" + TableName)\n", 3,
     "without sqlName"),
]


def generate(root, text):
    table = root / "fix" / "fix.exports"
    table.parent.mkdir(parents=True, exist_ok=True)
    table.write_text(text, encoding="utf-8")
    out = root / "out"
    run = subprocess.run([sys.executable, GENERATOR, "subsystem", table, out], capture_output=True, text=True)
    if run.returncode == 0:
        subprocess.run([sys.executable, GENERATOR, "aggregate", out, "fix"], check=True)
    return table, out, run


def check_broken_body(cxx, root, failures):
    table, out, run = generate(root, BROKEN)
    if run.returncode != 0:
        failures.append(f"generating the broken table failed: {run.stderr}")
        return
    family = out / "exports" / "fix_family.cpp"
    text = family.read_text(encoding="utf-8").splitlines()
    body = next(i for i, line in enumerate(text) if "undeclaredName" in line)
    if text[body - 1] != f'#line {BROKEN_BODY_LINE} "{table}"':
        failures.append(f"the line before the broken body is {text[body - 1]!r}")
    back = text[body + 1]
    if back != f'#line {body + 3} "{family}"':
        failures.append(f"after the body the generated file does not take over: {back!r}")
    for stub in STUBS:
        (root / "stubs" / stub).parent.mkdir(parents=True, exist_ok=True)
        (root / "stubs" / stub).write_text("", encoding="utf-8")
    compiled = subprocess.run([cxx, "-std=c++20", "-fsyntax-only", "-I", root / "stubs", "-I", out, family],
                              capture_output=True, text=True)
    if compiled.returncode == 0 or f"fix.exports:{BROKEN_BODY_LINE}:" not in compiled.stderr:
        failures.append(f"the compiler does not report fix.exports:{BROKEN_BODY_LINE}:\n{compiled.stderr}")


def main():
    cxx = sys.argv[1]
    failures = []
    with tempfile.TemporaryDirectory() as tmp:
        check_broken_body(cxx, pathlib.Path(tmp) / "broken", failures)
        for what, text, line, words in REFUSED:
            table, _, run = generate(pathlib.Path(tmp) / what.replace(" ", "_"), text)
            if run.returncode == 0 or f"{table}:{line}:" not in run.stderr or words not in run.stderr:
                failures.append(f"{what}: expected an error at line {line} with '{words}', got: {run.stderr!r}")
    for failure in failures:
        print(failure)
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
