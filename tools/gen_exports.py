#!/usr/bin/env python3
"""Builds everything that follows from the export table.

The export table is one `NAME.exports` file per subsystem, in the subsystem's folder under
src/kivdb (frame/frame.exports). Each export is a one-line description starting with `##`,
right above its signature line, optionally followed by a body line for exports whose
behaviour is a row of a family (the C++ function is then generated from the row):

    # comment
    include "refdata/code_checks.h"
    ## Whether a department with this number exists.
    IsDepartNoValid(Conn: conn, DepartNo: string) -> bool [refdata]
        = existsOne(Conn, "select 1 from Bs_Depart where DepartNo = '" + quotedText(DepartNo) + "'")

The subsystem in brackets is the folder of the file. Exports without a body are
implemented by hand as `kivdb::Name` with the generated declaration. Declarations and
bodies carry `#line` directives naming the row, so the compiler reports an error in a row
at its line of the .exports file.

    gen_exports.py subsystem FILE OUTDIR       one subsystem's outputs, S being its name:
        kivdb/exports/S.h            C++ declarations (namespace kivdb)
        exports/S_family.cpp         C++ definitions of the rows that carry a body
        exports/S_abi.cpp            extern "C" wrappers of libkivdb.so
        include/kivdb_exports/S.h    C prototypes for hosts
        exports/S_cli.cpp            the CLI's dispatch and declaration rows
        exports/S_names.inc          the export names, for the symbol test
    gen_exports.py aggregate OUTDIR S...       what joins the subsystems' outputs:
        kivdb/exports.h, include/kivdb_exports.h, cli_exports.cpp, export_names.inc
    gen_exports.py reference OUT.md FILE...    the Markdown reference of every export
    gen_exports.py check-copy OUT.md DOC.md    fails when the committed copy DOC.md of the
                                               reference OUT.md differs from it

An output whose text did not change is not rewritten, so what includes it is not rebuilt.
"""
import pathlib
import re
import sys

# type -> (C++ parameter, C++ result, C parameter, C result)
TYPES = {
    "conn": ("Connection&", "Connection*", "kivdb_conn*", "kivdb_conn*"),
    "string": ("const QString&", "QString", "const char*", None),  # result: hidden char**
    "int": ("int", "int", "int32_t", "int32_t"),
    "float": ("double", "double", "double", "double"),
    "bool": ("bool", "bool", "bool", "bool"),
    "date": ("OleDate", "OleDate", "double", "double"),
    "variant": ("const Value&", "Value", "const kivdb_variant*", None),  # result: hidden kivdb_variant**
    "variant_array": ("const QVariantList&", None, "const kivdb_variant*", None),
    # Live objects a host made through the C interface: parameters only.
    "dataset": ("DataSet&", None, "kivdb_dataset*", None),
    "query": ("QueryDataSet&", None, "kivdb_dataset*", None),  # a dataset handle that is a query
    "strings": ("StringList&", None, "kivdb_strings*", None),
    "none": (None, "void", None, "void"),
}
# Types the CLI can read from its command line.
CLI_ARG_TYPES = {"string", "int", "float", "bool", "date", "variant", "variant_array"}
# Types the CLI passes itself, not read from the command line: a string list starts empty and
# its items are printed after the result.
CLI_OUTPUT_TYPES = {"strings"}
CLI_RESULT_TYPES = {"string", "int", "float", "bool", "date", "variant", "none"}
HIDDEN_RESULT = {"string": "char**", "variant": "kivdb_variant**"}
# Value returned through the C ABI when the call fails.
C_DEFAULT = {"int": "0", "float": "0.0", "bool": "false", "date": "0.0", "conn": "nullptr"}

SIG = re.compile(r"^(\w+)\s*\((.*)\)\s*->\s*(\w+)\s*\[(\w+)\]\s*$")
PARAM = re.compile(r"^(\w+)\s*:\s*(\w+)$")
GENERATED = "Generated from the export table; do not edit."


class Export:
    def __init__(self, name, params, result, subsystem, description, path, line):
        self.name, self.params, self.result = name, params, result
        self.subsystem, self.description = subsystem, description
        self.path, self.line = path, line  # the signature's place in the table
        self.body, self.body_line = None, None

    @property
    def where(self):
        return f"{self.path}:{self.line}"


def fail(where, message):
    sys.exit(f"{where}: {message}")


NAME_PARAM = re.compile(r"Names?$")


def check_name_splicing(export, where):
    """A table or field name argument concatenated into SQL must pass the name guard."""
    for name, type_ in export.params:
        if type_ != "string" or not NAME_PARAM.search(name):
            continue
        if re.search(rf"\+\s*{name}\b|\b{name}\s*\+", export.body):
            fail(where, f"{name} is spliced into SQL without sqlName({name})")


def subsystem_of(path):
    return path.parent.name


def parse(path):
    """The exports and include lines of one subsystem's file."""
    subsystem = subsystem_of(path)
    exports, includes, seen = [], [], {}
    current, description = None, None
    for number, raw in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        where = f"{path}:{number}"
        line = raw.strip()
        if description is not None and not SIG.match(line):
            fail(where, "a description line must stand right above a signature line")
        if line.startswith("##"):
            description = line[2:].strip()
            if not description:
                fail(where, "empty description")
            continue
        if not line or line.startswith("#"):
            continue
        if line.startswith("include "):
            includes.append(line[len("include "):].strip())
            continue
        if line.startswith("="):
            if current is None or current.body is not None:
                fail(where, "a body line must follow a signature line without body")
            current.body, current.body_line = line[1:].strip(), number
            check_name_splicing(current, where)
            continue
        m = SIG.match(line)
        if not m:
            fail(where, f"not a signature: {line}")
        name, params_text, result, tag = m.groups()
        if description is None:
            fail(where, f"{name} has no description (a line '## ...' right above it)")
        if tag != subsystem:
            fail(where, f"{name} is tagged [{tag}] in the table of subsystem {subsystem}")
        if result not in TYPES or TYPES[result][1] is None:
            fail(where, f"unknown result type {result}")
        params = []
        for piece in filter(None, (p.strip() for p in params_text.split(","))):
            pm = PARAM.match(piece)
            if not pm or pm.group(2) not in TYPES or TYPES[pm.group(2)][0] is None:
                fail(where, f"bad parameter '{piece}'")
            params.append(pm.groups())
        if name.lower() in seen:
            fail(where, f"{name} is listed twice (first at {seen[name.lower()]})")
        seen[name.lower()] = where
        current = Export(name, params, result, subsystem, description, path, number)
        description = None
        exports.append(current)
    if description is not None:
        fail(f"{path}", "the last description has no signature")
    return exports, includes


def parse_all(paths):
    """Every subsystem's exports; a name may appear in one subsystem only."""
    exports, seen = [], {}
    for path in paths:
        for e in parse(path)[0]:
            if e.name.lower() in seen:
                fail(e.where, f"{e.name} is listed twice (first at {seen[e.name.lower()]})")
            seen[e.name.lower()] = e.where
            exports.append(e)
    return exports


# Output text is a list of lines; BACK stands for a #line directive that returns to the
# generated file itself, numbered once the text is complete.
BACK = object()


def at_rows(path, *pieces):
    """Lines of code the compiler reports at lines of the table: each piece is a line
    number of `path` and the code it stands for; the text after them is the generated file's."""
    out = []
    for line, code in pieces:
        out += [f'#line {line} "{path}"', code]
    return out + [BACK]


def render(lines, outpath):
    text = "\n".join(f'#line {i + 2} "{outpath}"' if line is BACK else line for i, line in enumerate(lines))
    return text if text.endswith("\n") else text + "\n"


def c_string(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def cpp_signature(e):
    params = ", ".join(f"{TYPES[t][0]} {n}" for n, t in e.params)
    return f"{TYPES[e.result][1]} {e.name}({params})"


def c_params(e):
    params = [f"{TYPES[t][2]} {n}" for n, t in e.params]
    if e.result in HIDDEN_RESULT:
        params.insert(0, f"{HIDDEN_RESULT[e.result]} result")
    return ", ".join(params) if params else "void"


def c_result(e):
    return "void" if e.result in HIDDEN_RESULT else TYPES[e.result][3]


def c_prototype(e):
    return f"KIVDB_API {c_result(e)} KIVDB_CALL {e.name}({c_params(e)})"


# The handles of each kind a call looks up and holds (abi::CallTurn), in the order of its
# arguments: connections, datasets (plain or query), string lists.
HANDLE_KINDS = (("conn",), ("dataset", "query"), ("strings",))


def handles(e):
    """Each kind's handle parameters, and each handle parameter's index among its kind."""
    groups = [[n for n, t in e.params if t in kind] for kind in HANDLE_KINDS]
    return groups, {n: i for group in groups for i, n in enumerate(group)}


def abi_argument(name, type_, index):
    return {
        "conn": f"turn.connection({index.get(name)})",
        "dataset": f"turn.dataSet({index.get(name)})",
        "query": f"turn.queryDataSet({index.get(name)})",
        "strings": f"turn.strings({index.get(name)})",
        "string": f"abi::inText({name})",
        "variant": f"abi::inVariant({name})",
        "variant_array": f"abi::inVariantArray({name})",
    }.get(type_, name)


def call_turn(groups):
    """The declaration of the call's turn, or nothing when it takes no handle."""
    if not any(groups):
        return ""
    while not groups[-1]:
        groups = groups[:-1]
    lists = ", ".join("{" + ", ".join(group) + "}" for group in groups)
    return f"const abi::CallTurn turn({lists}); "


def gen_cpp_header(subsystem, exports):
    out = [f"// {GENERATED}", "#pragma once", '#include "platform/connection.h"',
           '#include "platform/field_values.h"', '#include "platform/query_dataset.h"',
           '#include "platform/string_list.h"', "", "#include <QVariantList>", "",
           "namespace kivdb {", ""]
    for e in exports:
        out += at_rows(e.path, (e.line, f"{cpp_signature(e)};"))
    out += ["", "}  // namespace kivdb", ""]
    return out


def gen_family(subsystem, exports, includes):
    out = [f"// {GENERATED}", '#include "kivdb/exports.h"']
    out += [f"#include {inc}" for inc in includes]
    out += ["", "namespace kivdb {", ""]
    for e in exports:
        if e.body is None:
            continue
        out += at_rows(e.path, (e.line, f"{cpp_signature(e)} {{"),
                       (e.body_line, f"    {'' if e.result == 'none' else 'return '}{e.body};"))
        out += ["}", ""]
    out += ["}  // namespace kivdb", ""]
    return out


def gen_abi(subsystem, exports):
    out = [f"// {GENERATED}", '#include "abi/abi_runtime.h"',
           f'#include "kivdb/exports/{subsystem}.h"', "", "using namespace kivdb;", "",
           'extern "C" {', ""]
    for e in exports:
        groups, index = handles(e)
        call = f"kivdb::{e.name}({', '.join(abi_argument(n, t, index) for n, t in e.params)})"
        # The call's handles are looked up and held for the whole call, result included.
        turn = call_turn(groups)
        out.append(f"{c_prototype(e)} {{")
        if e.result == "string":
            out.append(f"    abi::storeText(result, abi::guarded<QString>(QString(), [&] {{ {turn}return {call}; }}));")
        elif e.result == "variant":
            out.append(f"    abi::storeVariant(result, abi::guarded<Value>(Value(), [&] {{ {turn}return {call}; }}));")
        elif e.result == "none":
            out.append(f"    abi::guarded([&] {{ {turn}{call}; }});")
        elif e.result == "conn":
            out.append(f"    return abi::guarded<kivdb_conn*>(nullptr, [&] {{ {turn}const auto screen = abi::hostScreenLock(); "
                       f"return abi::connectionHandle({call}); }});")
        else:
            out.append(f"    return abi::guarded<{c_result(e)}>({C_DEFAULT[e.result]}, [&] {{ {turn}return {call}; }});")
        out.append("}")
        out.append("")
    out += ['}  // extern "C"', ""]
    return out


def gen_c_header(subsystem, exports):
    out = [f"/* {GENERATED} Included by kivdb_exports.h. */", "", f"/* {subsystem} */"]
    out += [f"{c_prototype(e)};" for e in exports]
    return out + [""]


def camel(type_):
    return "".join(part.capitalize() for part in type_.split("_"))


def cli_callable(e):
    """Whether `kivdb call` can read the export's arguments and print its result."""
    return (all(t in CLI_ARG_TYPES | CLI_OUTPUT_TYPES for _, t in e.params if t != "conn")
            and e.result in CLI_RESULT_TYPES
            and sum(1 for _, t in e.params if t == "conn") <= 1)


def declaration(e):
    """The export as `kivdb exports` and the reference show it, without its subsystem."""
    params = ", ".join(f"{n}: {t}" for n, t in e.params)
    return f"{e.name}({params}) -> {e.result}"


def cli_namespace(subsystem):
    return f"{subsystem}_exports"


def gen_cli(subsystem, exports):
    out = [f"// {GENERATED}", '#include "cli/call_table.h"', f'#include "kivdb/exports/{subsystem}.h"',
           "", f"namespace kivdb::cli::{cli_namespace(subsystem)} {{", "",
           "const std::vector<CallableExport>& callable() {",
           "    static const std::vector<CallableExport> table = {"]
    for e in exports:
        if not cli_callable(e):
            continue
        value_params = [(n, t) for n, t in e.params if t in CLI_ARG_TYPES]
        lists = [n for n, t in e.params if t in CLI_OUTPUT_TYPES]
        args, index = [], 0
        for n, t in e.params:
            if t == "conn":
                args.append("ctx.connection()")
            elif t in CLI_OUTPUT_TYPES:
                args.append(n)
            else:
                args.append(f"args.as{camel(t)}({index})")
                index += 1
        call = f"kivdb::{e.name}({', '.join(args)})"
        params = ", ".join(f'{{"{n}", ArgType::{camel(t)}}}' for n, t in value_params)
        needs_conn = "true" if any(t == "conn" for _, t in e.params) else "false"
        result = "CallResult::none()" if e.result == "none" else f"CallResult::of{camel(e.result)}(result)"
        body = "".join(f"StringList {n}; " for n in lists)
        body += f"{call}; " if e.result == "none" else f"const auto result = {call}; "
        body += f"return {result}" + "".join(f".withLines({n}.items())" for n in lists) + ";"
        out.append(f'        {{"{e.name}", "{e.subsystem}", {needs_conn}, {{{params}}},')
        out.append(f"         [](CallContext& ctx, const CallArgs& args) -> CallResult {{ {body} }}}},")
    out += ["    };", "    return table;", "}", "",
            "const std::vector<ExportDeclaration>& declarations() {",
            "    static const std::vector<ExportDeclaration> table = {"]
    for e in exports:
        callable_ = "true" if cli_callable(e) else "false"
        out.append(f'        {{"{e.name}", "{declaration(e)} [{e.subsystem}]", {callable_},')
        out.append(f"         {c_string(e.description)}}},")
    out += ["    };", "    return table;", "}", "", f"}}  // namespace kivdb::cli::{cli_namespace(subsystem)}", ""]
    return out


def gen_names(subsystem, exports):
    return [f'"{e.name}",' for e in exports]


def subsystem_outputs(path):
    subsystem = subsystem_of(path)
    exports, includes = parse(path)
    return {
        f"kivdb/exports/{subsystem}.h": gen_cpp_header(subsystem, exports),
        f"exports/{subsystem}_family.cpp": gen_family(subsystem, exports, includes),
        f"exports/{subsystem}_abi.cpp": gen_abi(subsystem, exports),
        f"include/kivdb_exports/{subsystem}.h": gen_c_header(subsystem, exports),
        f"exports/{subsystem}_cli.cpp": gen_cli(subsystem, exports),
        f"exports/{subsystem}_names.inc": gen_names(subsystem, exports),
    }


def gen_cli_aggregate(subsystems):
    out = [f"// {GENERATED}", "// Every subsystem's rows, in the order of the subsystems.",
           '#include "cli/call_table.h"', "", "namespace kivdb::cli {", ""]
    for s in subsystems:
        out += [f"namespace {cli_namespace(s)} {{", "const std::vector<CallableExport>& callable();",
                "const std::vector<ExportDeclaration>& declarations();", "}", ""]
    out += ["namespace {", "", "template <typename Row>",
            "std::vector<Row> joined(std::initializer_list<const std::vector<Row>*> tables) {",
            "    std::vector<Row> rows;", "    for (const auto* table : tables) rows.insert(rows.end(), table->begin(), table->end());",
            "    return rows;", "}", "", "}  // namespace", ""]
    for function, row, part in (("callableExports", "CallableExport", "callable"),
                                ("exportDeclarations", "ExportDeclaration", "declarations")):
        parts = ", ".join(f"&{cli_namespace(s)}::{part}()" for s in subsystems)
        out += [f"const std::vector<{row}>& {function}() {{",
                f"    static const std::vector<{row}> table = joined<{row}>({{{parts}}});",
                "    return table;", "}", ""]
    out += ["}  // namespace kivdb::cli", ""]
    return out


def aggregate_outputs(subsystems):
    return {
        "kivdb/exports.h": [f"// {GENERATED}", "#pragma once"]
                           + [f'#include "kivdb/exports/{s}.h"' for s in subsystems] + [""],
        "include/kivdb_exports.h": [f"/* {GENERATED} Included by kivdb.h. */"]
                                   + [f'#include "kivdb_exports/{s}.h"' for s in subsystems] + [""],
        "cli_exports.cpp": gen_cli_aggregate(subsystems),
        "export_names.inc": [f'#include "exports/{s}_names.inc"' for s in subsystems],
    }


def markdown_cell(text):
    return text.replace("|", "\\|")


def gen_reference(exports):
    out = ["# The exports", "", f"<!-- {GENERATED} -->",
           "Every export of the library as the export table (`src/kivdb/*/NAME.exports`) declares it,",
           "grouped by subsystem. *library only*: `kivdb call` cannot call the export.", ""]
    for subsystem in sorted({e.subsystem for e in exports}):
        out += [f"## {subsystem}", "", "| Export | Declaration | Description |", "|---|---|---|"]
        for e in exports:
            if e.subsystem != subsystem:
                continue
            mark = "" if cli_callable(e) else ", *library only*"
            out.append(f"| {e.name} | `{declaration(e)}`{mark} | {markdown_cell(e.description)} |")
        out.append("")
    return "\n".join(out)


def write_if_changed(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def write_outputs(outdir, outputs):
    for name, lines in outputs.items():
        path = (outdir / name).absolute()
        write_if_changed(path, render(lines, path))


def main(argv):
    mode, args = (argv[1], argv[2:]) if len(argv) > 1 else (None, [])
    if mode == "subsystem" and len(args) == 2:
        write_outputs(pathlib.Path(args[1]), subsystem_outputs(pathlib.Path(args[0])))
    elif mode == "aggregate" and args:
        write_outputs(pathlib.Path(args[0]), aggregate_outputs(args[1:]))
    elif mode == "check-copy" and len(args) == 2:
        generated, doc = map(pathlib.Path, args)
        if not doc.exists() or doc.read_bytes() != generated.read_bytes():
            sys.exit(f"{doc} differs from the reference generated from the export table; "
                     f"refresh it:\n    cp {generated} {doc}")
    elif mode == "reference" and args:
        write_if_changed(pathlib.Path(args[0]), gen_reference(parse_all(map(pathlib.Path, args[1:]))))
    else:
        sys.exit("usage: gen_exports.py subsystem FILE OUTDIR | aggregate OUTDIR SUBSYSTEM... | "
                 "reference OUT.md FILE... | check-copy OUT.md DOC.md")


if __name__ == "__main__":
    main(sys.argv)
