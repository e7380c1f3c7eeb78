// What the embedded engine costs over plain SQLite, measured in one run on one database:
// the baseline runs the already translated SQLite text on the raw handle; the others run
// the suite's T-SQL through the connection (translation cache, collation, runtime
// functions, field typing) or translate without the cache. Results are ratios to the
// baseline, so they hold from machine to machine.
#include "dialect/dialect.h"
#include "dialect/sqlite_catalog.h"
#include "platform/sqlite_connection.h"

#include <QTemporaryDir>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <functional>

using namespace kivdb;

namespace {

double nanosPerRun(int runs, const std::function<void()>& body) {
    body();  // warm up: caches, pages
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < runs; ++i) body();
    const auto elapsed = std::chrono::steady_clock::now() - start;
    return std::chrono::duration<double, std::nano>(elapsed).count() / runs;
}

// The baseline reads every value as text, as any caller of plain SQLite would.
void rawRun(sqlite3* db, const QByteArray& sql) {
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &stmt, nullptr);
    const int columns = sqlite3_column_count(stmt);
    while (sqlite3_step(stmt) == SQLITE_ROW)
        for (int i = 0; i < columns; ++i) sqlite3_column_text(stmt, i);
    sqlite3_finalize(stmt);
}

struct Workload {
    const char* name;
    const char* tsql;
    int runs;
};

// Plain SQLite's way through a text of many statements: prepare at the tail, step, repeat,
// in one transaction as the connection runs a text.
void rawRunAll(sqlite3* db, const QByteArray& sql) {
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    const char* next = sql.constData();
    const char* const end = next + sql.size();
    while (next < end) {
        sqlite3_stmt* stmt = nullptr;
        const char* tail = end;
        sqlite3_prepare_v2(db, next, int(end - next) + 1, &stmt, &tail);
        if (stmt) while (sqlite3_step(stmt) == SQLITE_ROW) {}
        sqlite3_finalize(stmt);
        next = tail;
    }
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
}

// One text of many short statements, as hosts send cleanup scripts, on a database file:
// the cost per statement must not grow with the length of the text.
void benchManyStatements() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("many.db"));
    SqliteConnection conn(path, SqliteConnection::OpenMode::CreateIfMissing);
    conn.execute("create table T (N int)");
    std::printf("\n%-26s %14s %14s %8s %16s %8s\n", "statements in one text", "raw ns/stmt", "conn ns/stmt", "ratio",
                "first ns/stmt", "ratio");
    for (const int count : {20000, 80000, 300000}) {
        const QString tsql = QStringLiteral("delete from T;").repeated(count);
        // Seen for the first time, the text's translation is part of the cost.
        const auto start = std::chrono::steady_clock::now();
        conn.execute(tsql);
        const double first = std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() / count;
        const QByteArray translated = conn.translate(tsql).toUtf8();
        const double raw = nanosPerRun(1, [&] { rawRunAll(conn.handle(), translated); }) / count;
        const double viaConnection = nanosPerRun(1, [&] { conn.execute(tsql); }) / count;
        std::printf("%-26d %14.0f %14.0f %7.2fx %16.0f %7.2fx\n", count, raw, viaConnection, viaConnection / raw, first,
                    first / raw);
    }
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);  // each line as soon as it is measured
    SqliteConnection conn(QStringLiteral(":memory:"), SqliteConnection::OpenMode::CreateIfMissing);
    conn.execute("create table Bs_ProdList (PartNo varchar(30) not null, PartName nvarchar(100), Unit varchar(10), "
                 "Price decimal(18,6), constraint PK_Bs_ProdList primary key (PartNo))");
    conn.execute("create table Rp_TypeCodeInfo (Code int, type varchar(4), descript nvarchar(40))");
    conn.execute("create table Rp_RAcct (CustNo varchar(20), Type int, NoteNo varchar(20), Amount money, HadPayAmt money)");
    conn.begin();
    for (int i = 0; i < 2000; ++i) {
        const QString n = QString::number(i).rightJustified(4, QLatin1Char('0'));
        conn.execute("insert into Bs_ProdList values ('P" + n + "', N'零件" + n + "', 'PCS', " + QString::number(i % 97) + ".5)");
        conn.execute("insert into Rp_RAcct values ('C" + QString::number(i % 50) + "', " + QString::number(100 + i % 7) +
                     ", 'SO" + n + "', " + QString::number(i) + ", 0)");
    }
    for (int t = 100; t < 104; ++t)
        conn.execute("insert into Rp_TypeCodeInfo values (" + QString::number(t) + ", 'RE', N'应收')");
    conn.commit();

    const Workload workloads[] = {
        {"lookup by key", "select PartName from Bs_ProdList where PartNo = 'P1234'", 20000},
        {"old outer join", "select a.CustNo, a.Type, a.NoteNo, b.descript from Rp_RAcct a , Rp_TypeCodeInfo b "
                           "where a.type*=b.Code and b.type='RE' and a.Amount<>a.HadPayAmt ", 200},
        {"concatenation and isnull", "select top 20 rtrim(PartNo)+','+isnull(PartName,'') from Bs_ProdList order by PartNo", 5000},
    };
    dialect::SqliteCatalog catalog(conn.handle());
    std::printf("%-26s %14s %14s %8s %16s %8s\n", "workload", "raw ns/op", "conn ns/op", "ratio", "uncached ns/op", "ratio");
    for (const Workload& w : workloads) {
        const QByteArray translated = conn.translate(QString::fromUtf8(w.tsql)).toUtf8();
        const double raw = nanosPerRun(w.runs, [&] { rawRun(conn.handle(), translated); });
        const double viaConnection = nanosPerRun(w.runs, [&] { conn.query(QString::fromUtf8(w.tsql)); });
        const double uncached = nanosPerRun(w.runs, [&] {
            const QByteArray sql = dialect::translateToSqlite(QString::fromUtf8(w.tsql), catalog).toUtf8();
            rawRun(conn.handle(), sql);
        });
        std::printf("%-26s %14.0f %14.0f %7.2fx %16.0f %7.2fx\n", w.name, raw, viaConnection, viaConnection / raw,
                    uncached, uncached / raw);
    }
    benchManyStatements();
    return 0;
}
