// Peak memory of one long statement, per byte of its T-SQL text: the translation (tokens,
// tree and printed text) against SQLite's own prepare of the translated text. Peaks are
// read from the kernel's high-water mark of resident memory, reset before each phase.
// Usage: translation_memory [megabytes of T-SQL, default 8] [numbers: a list of integers]
#include "dialect/dialect.h"
#include "dialect/sqlite_catalog.h"

#include <QFile>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <malloc.h>

using namespace kivdb::dialect;

namespace {

qint64 statusKb(const char* field) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(field)) return line.mid(int(qstrlen(field))).trimmed().split(' ').first().toLongLong();
    return -1;
}

// Starts a new high-water mark at the current resident size, after handing freed memory
// back so that the next phase cannot grow into it unseen.
void resetPeak() {
    malloc_trim(0);
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly)) clear.write("5");
}

}  // namespace

int main(int argc, char** argv) {
    const double megabytes = argc > 1 ? std::atof(argv[1]) : 8;
    sqlite3* db = nullptr;
    sqlite3_open(":memory:", &db);
    registerRuntime(db);
    sqlite3_exec(db, "CREATE TABLE Bs_ProdList (PartNo varchar(30) COLLATE TSQL_CI)", nullptr, nullptr, nullptr);
    SqliteCatalog catalog(db);

    const bool numbers = argc > 2 && qstrcmp(argv[2], "numbers") == 0;
    QString tsql = numbers ? QStringLiteral("select count(*) from Bs_ProdList where rowid in (0")
                           : QStringLiteral("select count(*) from Bs_ProdList where PartNo in ('P0'");
    for (int i = 1; tsql.size() < megabytes * 1024 * 1024; ++i)
        tsql += (numbers ? QStringLiteral(", %1") : QStringLiteral(", 'P%1'")).arg(i);
    tsql += QLatin1Char(')');
    const double inputBytes = double(tsql.toUtf8().size());

    resetPeak();
    const qint64 beforeTranslation = statusKb("VmRSS:");
    QByteArray sql = translateToSqlite(tsql, catalog).toUtf8();
    const qint64 translationPeak = statusKb("VmHWM:") - beforeTranslation;

    tsql = QString();
    resetPeak();
    const qint64 beforePrepare = statusKb("VmRSS:");
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &stmt, nullptr) != SQLITE_OK)
        std::printf("prepare failed: %s\n", sqlite3_errmsg(db));
    if (sqlite3_step(stmt) != SQLITE_ROW) std::printf("step failed: %s\n", sqlite3_errmsg(db));
    const qint64 preparePeak = statusKb("VmHWM:") - beforePrepare;
    sqlite3_finalize(stmt);
    sqlite3_close(db);

    std::printf("T-SQL text            %10.1f MB\n", inputBytes / 1048576);
    std::printf("translation peak      %10.1f bytes per input byte\n", translationPeak * 1024 / inputBytes);
    std::printf("SQLite prepare peak   %10.1f bytes per input byte\n", preparePeak * 1024 / inputBytes);
    return 0;
}
