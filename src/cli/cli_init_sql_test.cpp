// The kivdb command line tool, run as a program on real database files.
#include "platform/sqlite_connection.h"
#include "presentation/spreadsheet_export.h"
#include "testing/spreadsheet_reader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QThread>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <csignal>
#include <cstring>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kivdb {
namespace {

struct CliRun {
    int exitCode = -1;
    QString out;
    QString err;
};

CliRun runCli(const QStringList& args) {
    QProcess process;
    process.start(QStringLiteral(KIVDB_CLI_PATH), args);
    EXPECT_TRUE(process.waitForFinished(30000)) << args.join(' ').toStdString();
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

class CliTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        db_ = dir_.filePath(QStringLiteral("erp.kivdb"));
        emptySchema_ = dir_.filePath(QStringLiteral("no-scripts"));
        QDir().mkpath(emptySchema_);
    }

    void writeScript(const QString& schemaDir, const QString& name, const QByteArray& text) {
        QDir().mkpath(schemaDir);
        QFile file(QDir(schemaDir).filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    // A database holding one table, filled through the library.
    void makeNoteDatabase() {
        SqliteConnection conn(db_, SqliteConnection::OpenMode::CreateIfMissing);
        conn.execute("create table note (code nvarchar(20), qty int, amount money, made datetime, posted bit)");
        conn.execute("insert into note values ('甲-01', 3, 1250000.5, '2024-05-06 07:08:09', 1)");
        conn.execute("insert into note values ('乙-02', null, null, null, 0)");
    }

    QTemporaryDir dir_;
    QString db_;
    QString emptySchema_;
};

TEST_F(CliTest, InitAppliesSchemaScriptsInNameOrderBatchByBatch) {
    const QString schema = dir_.filePath(QStringLiteral("schema"));
    const QString scripts = schema + QStringLiteral("/mssql");
    // Name order matters: the second script fills what the first created.
    writeScript(scripts, "02_data.sql", "insert into counter values ('SO', 1)\ngo\ninsert into counter values ('PO', 2)\n");
    writeScript(scripts, "01_tables.sql", "create table counter (kind nvarchar(4), last int)\nGO\n");
    // Not table scripts: the server's procedures, and anything else.
    writeScript(scripts, "procedures.sql", "create procedure bs_Get_BillSeqNo as return 0\n");
    writeScript(scripts, "readme.txt", "not a script");
    const CliRun run = runCli({"init", "--db", db_, "--schema", schema});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(runCli({"sql", "--db", db_, "select kind, last from counter order by last"}).out,
              QStringLiteral("SO\t1\nPO\t2\n"));
}

TEST_F(CliTest, InitRefusesWhatCannotBecomeADatabaseFileAndLeavesNoFile) {
    const QString schema = dir_.filePath(QStringLiteral("broken"));
    writeScript(schema + "/mssql", "01_tables.sql", "create table counter (kind nvarchar(4))\ngo\ncreate tabel oops (x int)\n");
    QFile existing(dir_.filePath(QStringLiteral("existing.kivdb")));
    ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
    existing.close();
    const QString e = QRegularExpression::escape(dir_.path());
    struct Case {
        QStringList args;
        QString err;  // a pattern: the failing batch may be quoted before the message
        bool fileAfter;
    };
    const Case cases[] = {
        {{"init", "--db", existing.fileName()}, "error: database file already exists: " + e + "/existing\\.kivdb\n", true},
        {{"init", "--db", db_, "--schema", schema}, "error: 01_tables\\.sql: .*Incorrect syntax near 'tabel'\\.\n", false},
        {{"init", "--db", db_, "--schema", "/nonexistent"}, "error: schema directory not found: /nonexistent\n", false},
        {{"init", "--db", db_, "--schema", emptySchema_}, "error: no table scripts under " + e + "/no-scripts/mssql\n", false},
        // SQLite reads these as URIs or memory; init would create nothing where asked.
        {{"init", "--db", "file:u.kivdb?mode=memory"},
         "error: --db takes a file path, not a URI or an in-memory database: file:u\\.kivdb\\?mode=memory\n", false},
        {{"init", "--db", ":memory:"}, "error: --db takes a file path, not a URI or an in-memory database: :memory:\n", false},
        {{"init", "--db", dir_.path()}, "error: --db names a directory: " + e + "\n", true},
        {{"init", "--db", dir_.filePath("nodir/x.kivdb")}, "error: directory not found: " + e + "/nodir\n", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(' ').toStdString());
        const CliRun run = runCli(c.args);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^%1$").arg(c.err)).match(run.err).hasMatch())
            << run.err.toStdString();
        EXPECT_EQ(QFileInfo::exists(c.args[2]), c.fileAfter);
    }
    EXPECT_EQ(QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"existing.kivdb"});
}

// What a complete database holds: every table with its row count, when it is sound.
QString tableCounts(const QString& path) {
    QStringList out;
    auto collect = [](void* sink, int, char** values, char**) {
        *static_cast<QStringList*>(sink) << QString::fromUtf8(values[0] ? values[0] : "NULL");
        return 0;
    };
    try {
        // Opened by the library: the schema's checks call the dialect's functions.
        SqliteConnection conn(path, SqliteConnection::OpenMode::ExistingFile);
        sqlite3* db = conn.handle();
        if (sqlite3_exec(db, "PRAGMA integrity_check", collect, &out, nullptr) != SQLITE_OK || out != QStringList{"ok"})
            return out.join(QLatin1Char(' '));
        QStringList tables;
        sqlite3_exec(db, "select name from sqlite_master where type = 'table' order by name", collect, &tables, nullptr);
        for (const QString& table : tables) {
            out << table;
            sqlite3_exec(db, QStringLiteral("select count(*) from \"%1\"").arg(table).toUtf8().constData(), collect, &out,
                         nullptr);
        }
    } catch (const std::exception& e) {
        out << QString::fromUtf8(e.what());
    }
    return out.join(QLatin1Char(' '));
}

TEST_F(CliTest, InitKilledAtAnyMomentLeavesNothingOrACompleteDatabase) {
    const QString reference = dir_.filePath(QStringLiteral("reference.kivdb"));
    QElapsedTimer timer;
    timer.start();
    ASSERT_EQ(runCli({"init", "--db", reference, "--sample"}).exitCode, 0);
    const qint64 fullRunMs = timer.elapsed();
    const QString complete = tableCounts(reference);
    ASSERT_TRUE(complete.startsWith(QLatin1String("ok "))) << complete.toStdString();

    struct Case {
        int signal;
        double atFractionOfARun;
    };
    const Case cases[] = {
        {SIGKILL, 0.0}, {SIGTERM, 0.05}, {SIGKILL, 0.2}, {SIGTERM, 0.35}, {SIGKILL, 0.5},
        {SIGTERM, 0.65}, {SIGKILL, 0.8}, {SIGTERM, 0.95}, {SIGKILL, 1.1}, {SIGTERM, 1.5},
    };
    int index = 0;
    for (const Case& c : cases) {
        const QString target = dir_.filePath(QStringLiteral("killed-%1.kivdb").arg(++index));
        SCOPED_TRACE(QStringLiteral("%1 at %2 of %3 ms").arg(strsignal(c.signal)).arg(c.atFractionOfARun).arg(fullRunMs).toStdString());
        QProcess init;
        init.start(QStringLiteral(KIVDB_CLI_PATH), {"init", "--db", target, "--sample"});
        ASSERT_TRUE(init.waitForStarted());
        QThread::msleep(static_cast<unsigned long>(fullRunMs * c.atFractionOfARun));
        ::kill(pid_t(init.processId()), c.signal);
        ASSERT_TRUE(init.waitForFinished(30000));
        const QStringList workFiles = QDir(dir_.path()).entryList({".killed-*"}, QDir::Files | QDir::Hidden);
        if (c.signal == SIGTERM) EXPECT_EQ(workFiles, QStringList());
        if (QFileInfo::exists(target)) {
            EXPECT_EQ(tableCounts(target), complete);
            continue;
        }
        // A later init succeeds, and removes what the killed one left beside the target.
        const CliRun later = runCli({"init", "--db", target});
        EXPECT_EQ(later.exitCode, 0) << later.err.toStdString();
        EXPECT_EQ(QDir(dir_.path()).entryList({".killed-*"}, QDir::Files | QDir::Hidden), QStringList());
    }
}

TEST_F(CliTest, SqlPrintsRowsTabSeparatedWithNull) {
    makeNoteDatabase();
    struct Case {
        const char* statement;
        const char* out;
    };
    const Case cases[] = {
        {"select code, qty, amount, made, posted from note order by posted desc",
         "甲-01\t3\t1250000.5000\t2024-05-06 07:08:09\t1\n乙-02\tNULL\tNULL\tNULL\t0\n"},
        {"select count(*) from note where qty > 100", "0\n"},
        {"select code from note where 1 = 0", ""},
        {"update note set qty = 4 where qty = 3", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.statement);
        const CliRun run = runCli({"sql", "--db", db_, QString::fromUtf8(c.statement)});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_EQ(run.out, QString::fromUtf8(c.out));
        EXPECT_EQ(run.err, QString());
    }
    EXPECT_EQ(runCli({"sql", "--db", db_, "select qty from note where qty is not null"}).out, QStringLiteral("4\n"));
}

TEST_F(CliTest, SqlFormatsKeepValuesApartFromStructure) {
    makeNoteDatabase();
    // Each value imitates structure: the word NULL, a separator, line breaks, an escape, quotes.
    const QString tricky = QStringLiteral(
        "select 'NULL' as t, null as n, 'a\tb' as tab, 'l1\nl2' as lf, 'c\\d\r' as bs, '' as e, 'say \"hi\", 1' as q");
    const QString typed = QStringLiteral("select qty as a, posted as a, made, code from note where qty = 3");
    struct Case {
        QString option;
        QString statement;
        const char* out;
    };
    const Case cases[] = {
        {"", tricky, "\\NULL\tNULL\ta\\tb\tl1\\nl2\tc\\\\d\\r\t\tsay \"hi\", 1\n"},
        {"--csv", tricky, "t,n,tab,lf,bs,e,q\r\nNULL,,a\tb,\"l1\nl2\",\"c\\d\r\",\"\",\"say \"\"hi\"\", 1\"\r\n"},
        {"--json", tricky,
         "[\n{\"t\":\"NULL\",\"n\":null,\"tab\":\"a\\tb\",\"lf\":\"l1\\nl2\",\"bs\":\"c\\\\d\\r\",\"e\":\"\","
         "\"q\":\"say \\\"hi\\\", 1\"}\n]\n"},
        // A repeated column name gets its position; numbers and bits are JSON's own.
        {"--json", typed, "[\n{\"a\":3,\"column_2\":true,\"made\":\"2024-05-06 07:08:09\",\"code\":\"甲-01\"}\n]\n"},
        {"--csv", typed, "a,a,made,code\r\n3,1,2024-05-06 07:08:09,甲-01\r\n"},
        {"--json", "select code from note where 1 = 0", "[]\n"},
        {"--csv", "select code from note where 1 = 0", "code\r\n"},
        {"--csv", "update note set qty = qty where 1 = 0", ""},
        // A column the server leaves unnamed is column_N, never the engine's text; a plain
        // column keeps its name.
        {"--csv", "select 1, 2+3, qty, 4 as [x], count(*) from note where qty = 3 group by qty",
         "column_1,column_2,qty,x,column_5\r\n1,5,3,4,1\r\n"},
        {"--json", "select 1, n.qty from note n where qty = 3", "[\n{\"column_1\":1,\"qty\":3}\n]\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE((c.option + ' ' + c.statement).toStdString());
        QStringList args{"sql", "--db", db_};
        if (!c.option.isEmpty()) args << c.option;
        const CliRun run = runCli(args << c.statement);
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_EQ(run.out, QString::fromUtf8(c.out));
    }
}

TEST_F(CliTest, ExportWritesTheStatementsRowsToASpreadsheetFile) {
    makeNoteDatabase();
    const QString out = dir_.filePath(QStringLiteral("note.xlsx"));
    struct Case {
        const char* statement;
        QStringList sheet;
    };
    const Case cases[] = {
        // 2024-05-06 07:08:09 is day 45418 and 25689 of 86400 seconds.
        {"select code, qty, amount, made, posted from note order by posted desc",
         {"'code|'qty|'amount|'made|'posted", "'甲-01|3|1250000.5 @ #,##0.00|45418.29732638889 @ yyyy-mm-dd hh:mm:ss|TRUE",
          "'乙-02||||FALSE"}},
        {"select code from note where 1 = 0", {"'code"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.statement);
        const CliRun run = runCli({"export", "--db", db_, "--out", out, QString::fromUtf8(c.statement)});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_EQ(run.out + run.err, QString());  // no progress line where nobody watches
        QStringList sheet;
        for (const QStringList& row : testing::readSheet(out)) sheet << row.join(u'|');
        EXPECT_EQ(sheet, c.sheet);
    }
}

TEST_F(CliTest, ExportInterruptedLeavesNoFile) {
    {
        SqliteConnection conn(db_, SqliteConnection::OpenMode::CreateIfMissing);
        conn.execute("create table note (n int, code nvarchar(20))");
        conn.execute("insert into note values (1, N'甲')");
        // 2^19 rows: an export that takes a while.
        for (int i = 0; i < 19; ++i) conn.execute("insert into note select n + (select count(*) from note), code from note");
    }
    for (const int signal : {SIGINT, SIGTERM}) {
        SCOPED_TRACE(strsignal(signal));
        QProcess exporting;
        exporting.start(QStringLiteral(KIVDB_CLI_PATH),
                        {"export", "--db", db_, "--out", dir_.filePath("note.xlsx"), "select n, code, n, code from note"});
        ASSERT_TRUE(exporting.waitForStarted());
        QThread::msleep(500);
        ::kill(pid_t(exporting.processId()), signal);
        ASSERT_TRUE(exporting.waitForFinished(30000));
        EXPECT_EQ(exporting.exitStatus(), QProcess::CrashExit);  // ended by the signal, as it was sent
        EXPECT_EQ(QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden).join(' ').toStdString(), "erp.kivdb");
    }
}

TEST_F(CliTest, HelpVersionAndExportsAnswerOnStdout) {
    struct Case {
        QStringList args;
        int exitCode;
        const char* out;  // a pattern over the whole output
        const char* errFirstLine;
    };
    const Case cases[] = {
        {{"--help"}, 0, "usage: kivdb COMMAND .*\ncommands:\n  init .*  help .*", ""},
        {{"help"}, 0, "usage: kivdb COMMAND .*", ""},
        {{"help", "sql"}, 0, "usage: kivdb sql --db FILE \\[--csv \\| --json \\| --translate\\] STATEMENT\n\n.*\\\\NULL.*", ""},
        {{"sql", "--help"}, 0, "usage: kivdb sql .*", ""},
        {{"init", "--help"}, 0, "usage: kivdb init --db FILE .*", ""},
        {{"call", "--help"}, 0, "usage: kivdb call .*", ""},
        {{"exports", "--help"}, 0, "usage: kivdb exports \\[PATTERN\\]\n.*", ""},
        {{"export", "--help"}, 0, "usage: kivdb export --db FILE --out PATH STATEMENT\n\n.*", ""},
        {{"--version"}, 0, "kivdb [0-9]+\\.[0-9]+\n", ""},
        {{"help", "drop"}, 2, "", "error: no such command: drop"},
        // A wildcard spans the whole name: SelTableIntegerValue2 is not listed.
        {{"exports", "seltableint*value"}, 0,
         "SelTableIntValue\\(Conn: conn, Sql: string\\) -> int \\[frame\\]\tThe query's first value as an integer;[^\t\n]+\n"
         "SelTableIntegerValue\\(Conn: conn, Sql: string\\) -> int \\[frame\\]\tThe query's [^\t\n]+\n", ""},
        {{"exports", "DataConn"}, 0, "GetDataConnection\\(\\) -> conn \\[frame, library only\\]\tThe host's database connection[^\t\n]+\n", ""},
        {{"exports", "NoSuchExport"}, 1, "", "error: no export matches NoSuchExport"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(' ').toStdString());
        const CliRun run = runCli(c.args);
        EXPECT_EQ(run.exitCode, c.exitCode);
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^%1$").arg(QString::fromUtf8(c.out)),
                                       QRegularExpression::DotMatchesEverythingOption)
                        .match(run.out)
                        .hasMatch())
            << run.out.toStdString();
        EXPECT_EQ(run.err.section(QLatin1Char('\n'), 0, 0), QString::fromUtf8(c.errFirstLine));
    }
}

TEST_F(CliTest, TranslatePrintsTheSqliteTextWithoutRunningIt) {
    makeNoteDatabase();
    const CliRun run = runCli({"sql", "--db", db_, "--translate", "delete from note"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("DELETE FROM \"note\"\n"));
    EXPECT_EQ(runCli({"sql", "--db", db_, "select count(*) from note"}).out, QStringLiteral("2\n"));
}

TEST_F(CliTest, FailuresPrintOneErrorLineAndExitNonZero) {
    makeNoteDatabase();
    const QString missing = dir_.filePath(QStringLiteral("missing.kivdb"));
    const QString out = dir_.filePath(QStringLiteral("out.xlsx"));
    struct Case {
        QStringList args;
        int exitCode;
        QString errFirstLine;
    };
    const Case cases[] = {
        {{"sql", "--db", db_, "select * from nosuch"}, 1, QStringLiteral("error: Invalid object name 'nosuch'.")},
        {{"sql", "--db", db_, "   "}, 1, QStringLiteral("error: Command text was not set for the command object.")},
        {{"sql", "--db", missing, "select 1"}, 1, QStringLiteral("error: database file not found: ") + missing},
        // A malformed command line is a usage error, told apart by its status.
        {{"sql", "select 1"}, 2, QStringLiteral("error: --db FILE is required")},
        {{"sql", "--db", db_}, 2, QStringLiteral("error: sql takes exactly one statement")},
        {{"export", "--db", db_, "select 1"}, 2, QStringLiteral("error: --out PATH is required")},
        {{"sql", "--db", db_, "--out", out, "select 1"}, 2, QStringLiteral("error: --out is for export")},
        // The statement is refused before anything is written, in the database's words.
        {{"export", "--db", db_, "--out", out, "select * from nosuch"}, 1, QStringLiteral("error: Invalid object name 'nosuch'.")},
        {{"export", "--db", db_, "--out", dir_.filePath("nodir/x.xlsx"), "select * from note"}, 1,
         QStringLiteral("error: ") + kSpreadsheetExportFailed},
        {{"drop", "--db", db_}, 2, QStringLiteral("error: unknown command drop")},
        {{}, 2, QStringLiteral("error: no command given")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(' ').toStdString());
        const CliRun run = runCli(c.args);
        EXPECT_EQ(run.exitCode, c.exitCode);
        EXPECT_EQ(run.err.section(QLatin1Char('\n'), 0, 0), c.errFirstLine);
        EXPECT_EQ(run.out, QString());
    }
    EXPECT_FALSE(QFileInfo::exists(missing));
    EXPECT_FALSE(QFileInfo::exists(out));
}

}  // namespace
}  // namespace kivdb
