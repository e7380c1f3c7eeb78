// The cost of one call through the C interface, the way host screens call it: a lookup of one
// value by a random key, on a database file of 100,000 parts. The baseline is plain SQLite on
// the same file in the same run: the statement prepared once, then bound, stepped and reset
// for every key, running the SQLite text the library makes of the statement. Rows print as: what, kivdb, baseline, ratio, aim.
#include "kivdb.h"
#include "kivdb_exports.h"
#include "platform/sqlite_connection.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>
#include <unistd.h>

namespace {

constexpr int kParts = 100000;
constexpr int kLookups = 20000;

double microsPerRun(int runs, const std::function<void(int)>& body) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < runs; ++i) body(i);
    const auto elapsed = std::chrono::steady_clock::now() - start;
    return std::chrono::duration<double, std::micro>(elapsed).count() / runs;
}

void must(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "call_bench: %s failed\n", what);
    std::exit(1);
}

// Parts under random keys, inserted in random order, names in Chinese so the encoding matters.
// The table is made by the library, so its columns compare as the library's do.
std::vector<std::string> createParts(const std::string& path) {
    kivdb::SqliteConnection conn(QString::fromStdString(path), kivdb::SqliteConnection::OpenMode::CreateIfMissing);
    conn.execute("create table Bs_ProdList (PartNo varchar(30) not null, PartName nvarchar(100), Unit varchar(10), "
                 "Price decimal(18,6), constraint PK_Bs_ProdList primary key (PartNo))");
    sqlite3* db = conn.handle();
    std::mt19937 random(42);
    std::vector<std::string> keys;
    keys.reserve(kParts);
    for (int i = 0; i < kParts; ++i) keys.push_back("P" + std::to_string(10000000 + random() % 89999999) + "-" + std::to_string(i));
    std::shuffle(keys.begin(), keys.end(), random);
    sqlite3_exec(db, "begin", nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db, "insert into Bs_ProdList values (?1, ?2, 'PCS', ?3)", -1, &insert, nullptr);
    for (int i = 0; i < kParts; ++i) {
        const std::string name = "零件" + std::to_string(i) + "号齿轮";
        sqlite3_bind_text(insert, 1, keys[size_t(i)].c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 2, name.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_double(insert, 3, i % 997 + 0.5);
        must(sqlite3_step(insert) == SQLITE_DONE, "inserting a part");
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(db, "commit", nullptr, nullptr, nullptr);
    std::shuffle(keys.begin(), keys.end(), random);
    keys.resize(kLookups);
    return keys;
}

// The library's own SQLite text for the lookup, the key a parameter, on a connection of its own.
double baseline(const std::string& path, const std::vector<std::string>& keys) {
    kivdb::SqliteConnection conn(QString::fromStdString(path), kivdb::SqliteConnection::OpenMode::ExistingFile);
    QString sql = conn.translate(QStringLiteral("select PartName from Bs_ProdList where PartNo = 'KEY'"));
    sql.replace(QStringLiteral("'KEY'"), QStringLiteral("?1"));
    sqlite3* db = conn.handle();
    sqlite3_stmt* stmt = nullptr;
    must(sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &stmt, nullptr) == SQLITE_OK, "preparing the baseline");
    size_t bytes = 0;
    const double micros = microsPerRun(kLookups, [&](int i) {
        sqlite3_bind_text(stmt, 1, keys[size_t(i)].c_str(), int(keys[size_t(i)].size()), SQLITE_STATIC);
        if (sqlite3_step(stmt) == SQLITE_ROW) {
            // A caller keeps the value: a copy, as the library hands one out.
            std::string value(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)), size_t(sqlite3_column_bytes(stmt, 0)));
            bytes += value.size();
        }
        sqlite3_reset(stmt);
    });
    must(bytes > 0, "the baseline lookups");
    sqlite3_finalize(stmt);
    return micros;
}

double lookups(kivdb_conn* conn, const std::vector<std::string>& statements) {
    size_t bytes = 0;
    // One variable, as a host keeps it: the library frees what it held.
    char* value = nullptr;
    const double micros = microsPerRun(kLookups, [&](int i) {
        SelTableStringValue(&value, conn, statements[size_t(i)].c_str());
        bytes += value ? std::char_traits<char>::length(value) : 0;
    });
    kivdb_free(value);
    must(bytes > 0 && *kivdb_last_error() == 0, "the lookups");
    return micros;
}

void row(const char* what, double kivdb, double base, double aim) {
    const double ratio = kivdb / base;
    // A row of the table bench/run gathers from every program.
    std::printf("| %-44s | %13.2f µs | %13.2f µs | %6.2fx | %s%.1fx%s |\n", what, kivdb, base, ratio,
                ratio <= aim ? "≤ " : "", aim, ratio <= aim ? "" : " MISS");
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    char dir[] = "/tmp/kivdb_call_benchXXXXXX";
    must(mkdtemp(dir) != nullptr, "making a directory");
    const std::string path = std::string(dir) + "/parts.db";
    const std::vector<std::string> keys = createParts(path);
    std::vector<std::string> statements;
    for (const auto& key : keys) statements.push_back("select PartName from Bs_ProdList where PartNo = '" + key + "'");

    kivdb_conn* conn = kivdb_connect(("sqlite:" + path).c_str());
    must(conn != nullptr, "connecting");
    // Every lookup a new key: the statement's text is new each time.
    must(kivdb_set_encoding("UTF-8"), "UTF-8");
    const double base = baseline(path, keys);
    const double utf8 = lookups(conn, statements);
    row("SelTableStringValue, C interface, UTF-8", utf8, base, 1.5);
    // The library's default encoding; new keys again.
    must(kivdb_set_encoding("GBK"), "GBK");
    std::vector<std::string> gbk;
    for (const auto& key : keys) gbk.push_back("select PartName from Bs_ProdList where PartNo='" + key + "'");
    const double gbkMicros = lookups(conn, gbk);
    row("the same, GBK (the default)", gbkMicros, base, 1.5);
    // Every statement seen before: what is left is the call itself.
    const double seen = lookups(conn, statements);
    const double baseAgain = baseline(path, keys);
    row("the same, every statement already translated", seen, baseAgain, 1.3);
    kivdb_disconnect(conn);
    std::remove(path.c_str());
    rmdir(dir);
    return 0;
}
