// kivdb: command line tool over the library. Its commands and their usage are the rows of
// cli/usage.cpp; `kivdb help` prints them.
//
// Failures print "error: MESSAGE" on stderr and exit with 1; a malformed command line
// prints the usage and exits with 2.
#include "cli/call_command.h"
#include "cli/call_table.h"
#include "cli/init_command.h"
#include "cli/row_formats.h"
#include "cli/usage.h"
#include "platform/sqlite_connection.h"
#include "platform/ui/library_setup.h"
#include "presentation/spreadsheet_export.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <csignal>
#include <cstdio>
#include <iterator>
#include <unistd.h>

namespace {

using namespace kivdb::cli;
using kivdb::SqliteConnection;

constexpr int kExitError = 1;
constexpr int kExitUsage = 2;

struct UsageError {
    QString message;
};

struct CommandLine {
    QString database;
    QString schemaDir;
    QString out;
    bool sample = false;
    bool translate = false;
    RowFormat format = RowFormat::Text;
    bool help = false;
    QStringList positional;
};

CommandLine parseCommandLine(QStringList args) {
    CommandLine line;
    bool optionsEnded = false;
    int formats = 0;
    while (!args.isEmpty()) {
        const QString arg = args.takeFirst();
        auto valueOf = [&](QString& target) {
            if (args.isEmpty()) throw UsageError{QStringLiteral("%1 needs a value").arg(arg)};
            target = args.takeFirst();
        };
        auto format = [&](RowFormat f) {
            line.format = f;
            ++formats;
        };
        if (optionsEnded || !arg.startsWith(QLatin1String("--"))) line.positional << arg;
        else if (arg == QLatin1String("--")) optionsEnded = true;
        else if (arg == QLatin1String("--help")) line.help = true;
        else if (arg == QLatin1String("--db")) valueOf(line.database);
        else if (arg == QLatin1String("--schema")) valueOf(line.schemaDir);
        else if (arg == QLatin1String("--out")) valueOf(line.out);
        else if (arg == QLatin1String("--sample")) line.sample = true;
        else if (arg == QLatin1String("--translate")) {
            format(RowFormat::Text);
            line.translate = true;
        }
        else if (arg == QLatin1String("--csv")) format(RowFormat::Csv);
        else if (arg == QLatin1String("--json")) format(RowFormat::Json);
        else throw UsageError{QStringLiteral("unknown option %1").arg(arg)};
    }
    if (line.help) return line;
    if (formats > 1) throw UsageError{QStringLiteral("--csv, --json and --translate exclude each other")};
    if (line.database.isEmpty()) throw UsageError{QStringLiteral("--db FILE is required")};
    return line;
}

void write(FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
}

// A command's usage, or the list of commands for nullptr.
int printUsage(const Command* command) {
    write(stdout, command ? commandUsage(*command) : generalUsage());
    return 0;
}

void runInit(const CommandLine& line) {
    if (!line.positional.isEmpty()) throw UsageError{QStringLiteral("init takes no statement")};
    if (line.translate || line.format != RowFormat::Text) throw UsageError{QStringLiteral("init prints no rows")};
    initDatabase({line.database, line.schemaDir, line.sample});
}

void runSql(const CommandLine& line) {
    if (line.positional.size() != 1) throw UsageError{QStringLiteral("sql takes exactly one statement")};
    if (line.sample || !line.schemaDir.isEmpty()) throw UsageError{QStringLiteral("--sample and --schema are for init")};
    const QString& statement = line.positional.front();
    SqliteConnection conn(line.database, SqliteConnection::OpenMode::ExistingFile);
    if (line.translate) {
        write(stdout, conn.translate(statement) + QLatin1Char('\n'));
        return;
    }
    const QByteArray out = formatRows(conn.query(statement), line.format);
    std::fwrite(out.constData(), 1, size_t(out.size()), stdout);
}

volatile std::sig_atomic_t gInterrupt = 0;
extern "C" void noteInterrupt(int signal) { gInterrupt = signal; }

// While it lives, an interrupt or termination cancels the export (which then removes its
// file) instead of ending the process; the process then ends by that signal as it would have.
class InterruptCancels {
public:
    InterruptCancels() {
        struct sigaction action = {};
        action.sa_handler = noteInterrupt;
        sigemptyset(&action.sa_mask);
        for (size_t i = 0; i < std::size(kSignals); ++i) sigaction(kSignals[i], &action, &previous_[i]);
    }
    ~InterruptCancels() {
        for (size_t i = 0; i < std::size(kSignals); ++i) sigaction(kSignals[i], &previous_[i], nullptr);
        if (gInterrupt) raise(gInterrupt);
    }
    InterruptCancels(const InterruptCancels&) = delete;
    InterruptCancels& operator=(const InterruptCancels&) = delete;

private:
    static constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
    struct sigaction previous_[std::size(kSignals)];
};

// The rows of one statement to a spreadsheet file, counted on stderr when a person watches.
void runExport(const CommandLine& line) {
    if (line.positional.size() != 1) throw UsageError{QStringLiteral("export takes exactly one statement")};
    if (line.out.isEmpty()) throw UsageError{QStringLiteral("--out PATH is required")};
    if (line.sample || !line.schemaDir.isEmpty()) throw UsageError{QStringLiteral("--sample and --schema are for init")};
    if (line.translate || line.format != RowFormat::Text) throw UsageError{QStringLiteral("export writes no rows to stdout")};
    SqliteConnection conn(line.database, SqliteConnection::OpenMode::ExistingFile);
    // Opened first, so a statement the database refuses says why.
    const auto cursor = conn.openCursor(line.positional.front());
    const bool terminal = isatty(STDERR_FILENO);
    InterruptCancels interrupts;
    kivdb::exportCursorToSpreadsheet(*cursor, line.out, [terminal](qint64 written, qint64) {
        if (terminal) std::fprintf(stderr, "\rexported %lld rows", static_cast<long long>(written));
        return gInterrupt == 0;
    });
    if (terminal) std::fputc('\n', stderr);
}

int runExports(const QStringList& args) {
    if (args == QStringList{QStringLiteral("--help")}) return printUsage(findCommand(QStringLiteral("exports")));
    if (args.size() > 1 || (!args.isEmpty() && args.front().startsWith(QLatin1String("--"))))
        throw UsageError{QStringLiteral("exports takes one pattern at most")};
    const QString pattern = args.value(0);
    const bool wildcard = pattern.contains(QLatin1Char('*')) || pattern.contains(QLatin1Char('?'));
    const QRegularExpression matcher(
        wildcard ? QRegularExpression::wildcardToRegularExpression(pattern) : QRegularExpression::escape(pattern),
        QRegularExpression::CaseInsensitiveOption);
    int listed = 0;
    for (const ExportDeclaration& e : exportDeclarations()) {
        if (!matcher.match(QLatin1String(e.name)).hasMatch()) continue;
        QString line = QLatin1String(e.declaration);
        if (!e.callable) line.insert(line.size() - 1, QLatin1String(", library only"));  // inside [subsystem]
        line += QLatin1Char('\t') + QString::fromUtf8(e.description);
        write(stdout, line + QLatin1Char('\n'));
        ++listed;
    }
    if (listed == 0) throw std::runtime_error(QStringLiteral("no export matches %1").arg(pattern).toStdString());
    return 0;
}

int runHelp(const QStringList& args) {
    if (args.isEmpty()) return printUsage(nullptr);
    const Command* command = args.size() == 1 ? findCommand(args.front()) : nullptr;
    if (!command) throw UsageError{QStringLiteral("no such command: %1").arg(args.join(QLatin1Char(' ')))};
    return printUsage(command);
}

int run(QStringList args) {
    if (args.isEmpty()) throw UsageError{QStringLiteral("no command given")};
    const QString verb = args.takeFirst();
    if (verb == QLatin1String("--help") || verb == QLatin1String("-h")) return printUsage(nullptr);
    if (verb == QLatin1String("--version")) {
        write(stdout, versionText());
        return 0;
    }
    if (verb == QLatin1String("help")) return runHelp(args);
    if (verb == QLatin1String("call")) return runCall(args);
    if (verb == QLatin1String("exports")) return runExports(args);
    if (verb != QLatin1String("init") && verb != QLatin1String("sql") && verb != QLatin1String("export"))
        throw UsageError{QStringLiteral("unknown command %1").arg(verb)};
    const CommandLine line = parseCommandLine(args);
    if (line.help) return printUsage(findCommand(verb));
    if (!line.out.isEmpty() && verb != QLatin1String("export")) throw UsageError{QStringLiteral("--out is for export")};
    if (verb == QLatin1String("init")) runInit(line);
    else if (verb == QLatin1String("export")) runExport(line);
    else runSql(line);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    kivdb::setUpLibrary();
    QStringList args = app.arguments();
    args.removeFirst();
    int status = 0;
    try {
        status = run(args);
    } catch (const UsageError& e) {
        write(stderr, QStringLiteral("error: %1\n%2").arg(e.message, synopses()));
        return kExitUsage;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "error: %s\n", e.what());
        return kExitError;
    }
    std::fflush(stdout);
    return status;
}
