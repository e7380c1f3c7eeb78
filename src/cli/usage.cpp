#include "cli/usage.h"

#include <QStringList>
#include <iterator>

namespace kivdb::cli {

namespace {

const Command kCommands[] = {
    {"init", "create an embedded database with the suite's schema",
     "kivdb init --db FILE [--sample] [--schema DIR]",
     "Creates the embedded database FILE with the suite's tables and, with --sample, the\n"
     "sample company's rows. DIR replaces the scripts built into the tool: tables from\n"
     "DIR/mssql/NN_*.sql, sample rows from DIR/sample/mssql/NN_*.sql, run in name order.\n"
     "\n"
     "FILE must not exist. The database is built beside it and renamed into place when\n"
     "complete, so FILE is either absent or a whole database, even if init is killed.\n"
     "FILE is a path: URIs (file:...) and in-memory names (:memory:) are refused.\n"},
    {"sql", "run one T-SQL statement and print its rows",
     "kivdb sql --db FILE [--csv | --json | --translate] STATEMENT",
     "Runs STATEMENT on the embedded database FILE and prints its rows.\n"
     "\n"
     "Default: no header, one line per row, values separated by a tab. Inside a value a\n"
     "tab, line feed, carriage return and backslash print as \\t, \\n, \\r and \\\\. SQL NULL\n"
     "prints as NULL, the text 'NULL' as \\NULL.\n"
     "  --csv        RFC 4180: a header row (an unnamed column is column_N, N its position),\n"
     "               lines ending CRLF, a value quoted (\"\" for a\n"
     "               quote) when it holds a comma, quote or line break; NULL is an empty\n"
     "               field, the empty text \"\".\n"
     "  --json       an array of objects, one per row, members in column order and named\n"
     "               by the columns (an unnamed or repeated column is column_N, N its\n"
     "               position); NULL is null, integers and floats are numbers, bit is\n"
     "               true/false, everything else a string.\n"
     "  --translate  print the SQLite text of STATEMENT instead of running it.\n"
     "\n"
     "Values: dates yyyy-mm-dd hh:mm:ss[.mmm], binary 0x..., floats in the shortest\n"
     "form that reads back.\n"},
    {"export", "run one T-SQL statement and write its rows to a spreadsheet file",
     "kivdb export --db FILE --out PATH STATEMENT",
     "Runs STATEMENT on the embedded database FILE and writes its rows to the spreadsheet\n"
     "file PATH (.xlsx; an existing file is replaced): a header row of the column names,\n"
     "then a row per result row. Numbers, dates and bit values are the spreadsheet's own\n"
     "numbers, dates (the time shown when there is one) and TRUE/FALSE; money shows with\n"
     "thousands grouped and two decimals; NULL is an empty cell.\n"
     "\n"
     "The file is written beside PATH and renamed into place when complete: on failure,\n"
     "an interrupt (SIGINT, SIGTERM, SIGHUP) included, none is left and an existing file\n"
     "stays. When stderr is a terminal, a line there counts the rows written.\n"},
    {"call", "call an export by name",
     "kivdb call [--db FILE | --url URL] [--trace] [--confirm yes|no] EXPORT [ARG...]",
     "Calls EXPORT (see kivdb exports) on the embedded database FILE or the connection URL\n"
     "(sqlite:PATH, odbc:CONNECTION-STRING). The arguments are read by the export's\n"
     "parameter kinds: integers, floats, true/false, dates yyyy-mm-dd, text, a variant as\n"
     "JSON or text, a variant array as a JSON array.\n"
     "\n"
     "stdout: the result on one line (nothing for an export without result): text as is,\n"
     "true/false, integers in decimal, floats in the shortest form that reads back, dates\n"
     "yyyy-mm-dd (with the time when there is one) and the zero date as 0, a null variant\n"
     "as null.\n"
     "stderr, in order: SQL: and PROC: lines for what the library sends (with --trace),\n"
     "MSG hint|warn|error: for messages and CONFIRM: for questions, answered by --confirm\n"
     "(default no). Errors print error: MESSAGE and exit with status 1; for an unknown\n"
     "EXPORT the message ends with the nearest names.\n"},
    {"exports", "list the exports with their argument kinds", "kivdb exports [PATTERN]",
     "Lists the exports as the export table declares them, one per line:\n"
     "  NAME(PARAM: kind, ...) -> result [subsystem]<TAB>DESCRIPTION\n"
     "with \"library only\" after the subsystem for exports kivdb call cannot call (their\n"
     "arguments or result are no command-line values), and after a tab what the export\n"
     "does, in one line. PATTERN selects names without regard to case: with * or ? a\n"
     "wildcard over the whole name, otherwise a part of it.\n"},
    {"help", "print the usage of kivdb or of a command", "kivdb help [COMMAND]",
     "Prints the list of commands, or the usage of COMMAND (as kivdb COMMAND --help does).\n"},
};

}  // namespace

const Command* findCommand(const QString& name) {
    for (const Command& c : kCommands)
        if (name == QLatin1String(c.name)) return &c;
    return nullptr;
}

QString synopses() {
    QString out;
    for (const Command& c : kCommands)
        out += (out.isEmpty() ? QStringLiteral("usage: ") : QStringLiteral("       ")) + QLatin1String(c.synopsis) + QLatin1Char('\n');
    return out;
}

QString generalUsage() {
    QString out = QStringLiteral("usage: kivdb COMMAND [OPTION...] [ARG...]\n\ncommands:\n");
    for (const Command& c : kCommands)
        out += QStringLiteral("  %1%2\n").arg(QLatin1String(c.name), -10).arg(QLatin1String(c.summary));
    out += QStringLiteral("\n'kivdb help COMMAND' or 'kivdb COMMAND --help' prints a command's usage;\n"
                          "'kivdb --version' the version.\n");
    return out;
}

QString commandUsage(const Command& command) {
    return QStringLiteral("usage: %1\n\n%2").arg(QLatin1String(command.synopsis), QLatin1String(command.details));
}

QString versionText() { return QStringLiteral("kivdb %1\n").arg(QLatin1String(KIVDB_VERSION)); }

}  // namespace kivdb::cli
