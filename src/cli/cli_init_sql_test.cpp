// The kivdb command line tool, run as a program on real database files.
#include "platform/sqlite_connection.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

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

    // A database made by init (no scripts: an empty one), filled through the library.
    void makeNoteDatabase() {
        ASSERT_EQ(runCli({"init", "--db", db_, "--schema", emptySchema_}).exitCode, 0);
        SqliteConnection conn(db_, SqliteConnection::OpenMode::ExistingFile);
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

TEST_F(CliTest, InitRefusesExistingFileAndRemovesAHalfMadeOne) {
    const QString schema = dir_.filePath(QStringLiteral("broken"));
    writeScript(schema + "/mssql", "01_tables.sql", "create table counter (kind nvarchar(4))\ngo\ncreate tabel oops (x int)\n");
    struct Case {
        QStringList args;
        QString err;  // a pattern: the failing batch may be quoted before the message
        bool fileAfter;
    };
    QFile existing(dir_.filePath(QStringLiteral("existing.kivdb")));
    ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
    existing.close();
    const Case cases[] = {
        {{"init", "--db", existing.fileName(), "--schema", emptySchema_},
         QStringLiteral("error: database file already exists: %1\n").arg(QRegularExpression::escape(existing.fileName())),
         true},
        {{"init", "--db", db_, "--schema", schema},
         QStringLiteral("error: 01_tables\\.sql: .*Incorrect syntax near 'tabel'\\.\n"), false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(' ').toStdString());
        const CliRun run = runCli(c.args);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^%1$").arg(c.err)).match(run.err).hasMatch())
            << run.err.toStdString();
        EXPECT_EQ(QFileInfo::exists(c.args[2]), c.fileAfter);
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
         "甲-01\t3\t1250000.5\t2024-05-06 07:08:09\t1\n乙-02\tNULL\tNULL\tNULL\t0\n"},
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
    struct Case {
        QStringList args;
        int exitCode;
        QString errFirstLine;
    };
    const Case cases[] = {
        {{"sql", "--db", db_, "select * from nosuch"}, 1, QStringLiteral("error: no such table: nosuch")},
        {{"sql", "--db", db_, "   "}, 1, QStringLiteral("error: Command text was not set for the command object.")},
        {{"sql", "--db", missing, "select 1"}, 1, QStringLiteral("error: database file not found: ") + missing},
        // A malformed command line is a usage error, told apart by its status.
        {{"sql", "select 1"}, 2, QStringLiteral("error: --db FILE is required")},
        {{"sql", "--db", db_}, 2, QStringLiteral("error: sql takes exactly one statement")},
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
}

}  // namespace
}  // namespace kivdb
