// kivdb: command line tool over the library.
//
//   kivdb init --db FILE [--schema DIR] [--sample]
//                                            create an embedded database with the tables of
//                                            the T-SQL scripts DIR/mssql/NN_*.sql (DIR is
//                                            the source tree's schema/ by default); with
//                                            --sample also the sample company's rows of
//                                            DIR/sample/mssql/NN_*.sql
//   kivdb sql --db FILE [--translate] STATEMENT
//                                            run one T-SQL statement and print its rows, one a
//                                            line, values tab-separated, NULL as NULL; with
//                                            --translate print the SQLite text instead
//   kivdb call [--db FILE] [--trace] [--confirm yes|no] EXPORT [ARG...]
//                                            call an export by name (see call_command.cpp)
//
// Failures print "error: MESSAGE" on stderr and exit with 1; a malformed command line
// prints the usage and exits with 2.
#include "cli/call_command.h"
#include "integrity/sample_data.h"
#include "integrity/schema_loader.h"
#include "platform/sqlite_connection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <cstdio>

namespace {

using kivdb::DatabaseError;
using kivdb::SqliteConnection;

constexpr int kExitError = 1;
constexpr int kExitUsage = 2;

const char* const kUsage =
    "usage: kivdb init --db FILE [--schema DIR] [--sample]\n"
    "       kivdb sql --db FILE [--translate] STATEMENT\n"
    "       kivdb call [--db FILE] [--trace] [--confirm yes|no] EXPORT [ARG...]\n";

struct UsageError {
    QString message;
};

struct CommandLine {
    QString verb;
    QString database;
    QString schemaDir;
    bool sample = false;
    bool translate = false;
    QStringList positional;
};

CommandLine parseCommandLine(QStringList args) {
    CommandLine line;
    if (args.isEmpty()) throw UsageError{QStringLiteral("no command given")};
    line.verb = args.takeFirst();
    if (line.verb != QLatin1String("init") && line.verb != QLatin1String("sql"))
        throw UsageError{QStringLiteral("unknown command %1").arg(line.verb)};
    bool optionsEnded = false;
    while (!args.isEmpty()) {
        const QString arg = args.takeFirst();
        auto valueOf = [&](QString& target) {
            if (args.isEmpty()) throw UsageError{QStringLiteral("%1 needs a value").arg(arg)};
            target = args.takeFirst();
        };
        if (optionsEnded || !arg.startsWith(QLatin1String("--"))) line.positional << arg;
        else if (arg == QLatin1String("--")) optionsEnded = true;
        else if (arg == QLatin1String("--db")) valueOf(line.database);
        else if (arg == QLatin1String("--schema")) valueOf(line.schemaDir);
        else if (arg == QLatin1String("--sample")) line.sample = true;
        else if (arg == QLatin1String("--translate")) line.translate = true;
        else throw UsageError{QStringLiteral("unknown option %1").arg(arg)};
    }
    if (line.database.isEmpty()) throw UsageError{QStringLiteral("--db FILE is required")};
    return line;
}

void runInit(const CommandLine& line) {
    if (!line.positional.isEmpty()) throw UsageError{QStringLiteral("init takes no statement")};
    // Never touch an existing database: init is for a new one.
    if (QFileInfo::exists(line.database))
        throw DatabaseError(QStringLiteral("database file already exists: %1").arg(line.database));
    const QString schemaDir =
        line.schemaDir.isEmpty() ? kivdb::integrity::defaultSchemaDirectory() : line.schemaDir;
    try {
        SqliteConnection conn(line.database, SqliteConnection::OpenMode::CreateIfMissing);
        // A tree without table scripts leaves the new database empty.
        if (!kivdb::integrity::tableScripts(schemaDir).isEmpty())
            kivdb::integrity::applySchema(conn.handle(), schemaDir);
        if (line.sample)
            kivdb::integrity::applySampleData(conn.handle(), schemaDir + QStringLiteral("/sample"));
    } catch (...) {
        // A database whose schema failed halfway is worse than none.
        QFile::remove(line.database);
        throw;
    }
}

QString printable(const kivdb::Value& value) {
    if (!value.isValid()) return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Double: return QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    case QMetaType::QDateTime: {
        const QDateTime when = value.toDateTime();
        return when.toString(when.time().msec() ? QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")
                                                : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    case QMetaType::QByteArray: return QStringLiteral("0x") + QString::fromLatin1(value.toByteArray().toHex());
    default: return value.toString();
    }
}

void printLine(const QString& text) {
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

void runSql(const CommandLine& line) {
    if (line.positional.size() != 1) throw UsageError{QStringLiteral("sql takes exactly one statement")};
    const QString& statement = line.positional.front();
    SqliteConnection conn(line.database, SqliteConnection::OpenMode::ExistingFile);
    if (line.translate) {
        printLine(conn.translate(statement));
        return;
    }
    const kivdb::RowSet rows = conn.query(statement);
    for (const auto& row : rows.rows) {
        QStringList fields;
        for (const auto& value : row) fields << printable(value);
        printLine(fields.join(QLatin1Char('\t')));
    }
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments();
    args.removeFirst();
    if (!args.isEmpty() && args.first() == QLatin1String("call")) {
        args.removeFirst();
        return kivdb::cli::runCall(args);
    }
    try {
        const CommandLine line = parseCommandLine(args);
        if (line.verb == QLatin1String("init")) runInit(line);
        else runSql(line);
    } catch (const UsageError& e) {
        std::fprintf(stderr, "error: %s\n%s", e.message.toUtf8().constData(), kUsage);
        return kExitUsage;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "error: %s\n", e.what());
        return kExitError;
    }
    std::fflush(stdout);
    return 0;
}
