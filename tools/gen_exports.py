#!/usr/bin/env python3
"""Builds everything that follows from the export table.

The export table is the set of `*.exports` files under src/kivdb. Each export is one
signature line, optionally followed by a body line for exports whose behaviour is a row
of a family (the C++ function is then generated from the row):

    # comment
    include "refdata/code_checks.h"
    IsDepartNoValid(Conn: conn, DepartNo: string) -> bool [refdata]
        = existsOne(Conn, "select 1 from Bs_Depart where DepartNo = '" + quotedText(DepartNo) + "'")

Exports without a body are implemented by hand as `kivdb::Name` with the generated
declaration. Outputs (into OUTDIR):
    kivdb/exports.h           C++ declarations of every export (namespace kivdb)
    family_exports.cpp        C++ definitions of the rows that carry a body
    abi_exports.cpp           extern "C" wrappers of libkivdb.so
    include/kivdb_exports.h   C prototypes for hosts
    cli_exports.cpp           the CLI's dispatch table
    export_names.inc          every export name, for the symbol test
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
    "none": (None, "void", None, "void"),
}
# Types the CLI can read from its command line.
CLI_ARG_TYPES = {"string", "int", "float", "bool", "date", "variant", "variant_array"}
CLI_RESULT_TYPES = {"string", "int", "float", "bool", "date", "variant", "none"}
HIDDEN_RESULT = {"string": "char**", "variant": "kivdb_variant**"}
# Value returned through the C ABI when the call fails.
C_DEFAULT = {"int": "0", "float": "0.0", "bool": "false", "date": "0.0", "conn": "nullptr"}

SIG = re.compile(r"^(\w+)\s*\((.*)\)\s*->\s*(\w+)\s*\[(\w+)\]\s*$")
PARAM = re.compile(r"^(\w+)\s*:\s*(\w+)$")


class Export:
    def __init__(self, name, params, result, subsystem, body, where):
        self.name, self.params, self.result = name, params, result
        self.subsystem, self.body, self.where = subsystem, body, where


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


def parse(files):
    exports, includes, seen = [], [], {}
    for path in files:
        current = None
        for number, raw in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            where = f"{path}:{number}"
            line = raw.strip()
            if not line or line.startswith("#"):
                continue
            if line.startswith("include "):
                includes.append(line[len("include "):].strip())
                continue
            if line.startswith("="):
                if current is None or current.body is not None:
                    fail(where, "a body line must follow a signature line without body")
                current.body = line[1:].strip()
                check_name_splicing(current, where)
                continue
            m = SIG.match(line)
            if not m:
                fail(where, f"not a signature: {line}")
            name, params_text, result, subsystem = m.groups()
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
            current = Export(name, params, result, subsystem, None, where)
            exports.append(current)
    return exports, includes


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


def abi_argument(name, type_, conn_index):
    return {
        "conn": f"turn.connection({conn_index.get(name)})",
        "string": f"abi::inText({name})",
        "variant": f"abi::inVariant({name})",
        "variant_array": f"abi::inVariantArray({name})",
    }.get(type_, name)


def gen_cpp_header(exports):
    out = ["// Generated from the export table; do not edit.", "#pragma once",
           '#include "platform/connection.h"', '#include "platform/field_values.h"', "",
           "#include <QVariantList>", "", "namespace kivdb {", ""]
    out += [f"{cpp_signature(e)};" for e in exports]
    out += ["", "}  // namespace kivdb", ""]
    return "\n".join(out)


def gen_family(exports, includes):
    out = ["// Generated from the export table; do not edit.", '#include "kivdb/exports.h"']
    out += [f"#include {inc}" for inc in includes]
    out += ["", "namespace kivdb {", ""]
    for e in exports:
        if e.body is None:
            continue
        out.append(f"{cpp_signature(e)} {{")
        out.append(f"    {'' if e.result == 'none' else 'return '}{e.body};")
        out.append("}")
        out.append("")
    out += ["}  // namespace kivdb", ""]
    return "\n".join(out)


def gen_abi(exports):
    out = ["// Generated from the export table; do not edit.", '#include "abi/abi_runtime.h"',
           '#include "kivdb/exports.h"', "", "using namespace kivdb;", "", 'extern "C" {', ""]
    for e in exports:
        conns = [n for n, t in e.params if t == "conn"]
        conn_index = {n: i for i, n in enumerate(conns)}
        call = f"kivdb::{e.name}({', '.join(abi_argument(n, t, conn_index) for n, t in e.params)})"
        # The call's connections are looked up and held for the whole call, result included.
        turn = f"const abi::ConnectionTurn turn({{{', '.join(conns)}}}); " if conns else ""
        out.append(f"KIVDB_API {c_result(e)} KIVDB_CALL {e.name}({c_params(e)}) {{")
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
    return "\n".join(out)


def gen_c_header(exports):
    out = ["/* Generated from the export table; do not edit. Included by kivdb.h. */", ""]
    section = None
    for e in exports:
        if e.subsystem != section:
            section = e.subsystem
            out += ["", f"/* {section} */"]
        out.append(f"KIVDB_API {c_result(e)} KIVDB_CALL {e.name}({c_params(e)});")
    return "\n".join(out) + "\n"


def camel(type_):
    return "".join(part.capitalize() for part in type_.split("_"))


def cli_callable(e):
    """Whether `kivdb call` can read the export's arguments and print its result."""
    return (all(t in CLI_ARG_TYPES for _, t in e.params if t != "conn")
            and e.result in CLI_RESULT_TYPES
            and sum(1 for _, t in e.params if t == "conn") <= 1)


def declaration(e):
    params = ", ".join(f"{n}: {t}" for n, t in e.params)
    return f"{e.name}({params}) -> {e.result} [{e.subsystem}]"


def gen_cli(exports):
    out = ["// Generated from the export table; do not edit.", '#include "cli/call_table.h"',
           '#include "kivdb/exports.h"', "", "namespace kivdb::cli {", "",
           "const std::vector<CallableExport>& callableExports() {",
           "    static const std::vector<CallableExport> table = {"]
    for e in exports:
        if not cli_callable(e):
            continue
        value_params = [(n, t) for n, t in e.params if t != "conn"]
        args, index = [], 0
        for n, t in e.params:
            if t == "conn":
                args.append("ctx.connection()")
            else:
                args.append(f"args.as{camel(t)}({index})")
                index += 1
        call = f"kivdb::{e.name}({', '.join(args)})"
        params = ", ".join(f'{{"{n}", ArgType::{camel(t)}}}' for n, t in value_params)
        needs_conn = "true" if any(t == "conn" for _, t in e.params) else "false"
        if e.result == "none":
            body = f"{call}; return CallResult::none();"
        else:
            body = f"return CallResult::of{camel(e.result)}({call});"
        out.append(f'        {{"{e.name}", "{e.subsystem}", {needs_conn}, {{{params}}},')
        out.append(f"         [](CallContext& ctx, const CallArgs& args) -> CallResult {{ {body} }}}},")
    out += ["    };", "    return table;", "}", "",
            "const std::vector<ExportDeclaration>& exportDeclarations() {",
            "    static const std::vector<ExportDeclaration> table = {"]
    for e in exports:
        callable_ = "true" if cli_callable(e) else "false"
        out.append(f'        {{"{e.name}", "{declaration(e)}", {callable_}}},')
    out += ["    };", "    return table;", "}", "", "}  // namespace kivdb::cli", ""]
    return "\n".join(out)


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: gen_exports.py SRC_KIVDB_DIR OUTDIR")
    src, outdir = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    files = sorted(src.rglob("*.exports"))
    exports, includes = parse(files)
    outputs = {
        "kivdb/exports.h": gen_cpp_header(exports),
        "family_exports.cpp": gen_family(exports, includes),
        "abi_exports.cpp": gen_abi(exports),
        "include/kivdb_exports.h": gen_c_header(exports),
        "cli_exports.cpp": gen_cli(exports),
        "export_names.inc": "".join(f'"{e.name}",\n' for e in exports),
    }
    for name, text in outputs.items():
        path = outdir / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
