// What the embedded engine costs over plain SQLite, measured in one run on one database:
// the baseline runs the already translated SQLite text on the raw handle; the others run
// the suite's T-SQL through the connection (translation cache, collation, runtime
// functions, field typing) or translate without the cache. Results are ratios to the
// baseline, so they hold from machine to machine.
#include "dialect/dialect.h"
#include "dialect/sqlite_catalog.h"
#include "platform/sqlite_connection.h"

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

}  // namespace

int main() {
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
    return 0;
}
