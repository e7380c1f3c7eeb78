// Big results, start-up and one file shared by several processes, each beside plain SQLite in
// the same run, on a database file. Every measurement runs in a process of its own (this
// program run again, the kivdb tool or the sqlite3 shell), so its peak memory is its own.
// Prints rows of the bench table: what, kivdb, baseline, ratio, aim.
#include "platform/connection.h"
#include "platform/oledate.h"
#include "platform/sqlite_connection.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <random>
#include <string>
#include <vector>

using namespace kivdb;

namespace {

constexpr int kBigRows = 1'000'000;
constexpr int kLookupRows = 100'000;
constexpr double kShareSeconds = 3.0;
constexpr int kStartRuns = 20;
const char* const kSelectAll = "select * from Big";

using Clock = std::chrono::steady_clock;
double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// ---- what a child process runs ----

void fail(const char* what, sqlite3* db) {
    std::fprintf(stderr, "%s: %s\n", what, db ? sqlite3_errmsg(db) : "");
    std::exit(3);
}

sqlite3* openRaw(const char* path) {
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path, &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) fail("open", db);
    return db;
}

// Plain SQLite set up as the embedded connection sets itself up: same busy timeout, same
// synchronous level (the journal mode lives in the file).
sqlite3* openRawLikeConnection(const char* path) {
    sqlite3* db = openRaw(path);
    SqliteConnection probe(QString::fromUtf8(path), SqliteConnection::OpenMode::ExistingFile);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(probe.handle(), "PRAGMA synchronous", -1, &stmt, nullptr);
    sqlite3_step(stmt);
    const std::string sync = "PRAGMA synchronous = " + std::to_string(sqlite3_column_int(stmt, 0));
    sqlite3_finalize(stmt);
    sqlite3_exec(db, sync.c_str(), nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(db, 5000);
    return db;
}

// Every column of every row, read as its storage class.
double rawReadAll(const char* path) {
    sqlite3* db = openRaw(path);
    const auto start = Clock::now();
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, kSelectAll, -1, &stmt, nullptr);
    const int columns = sqlite3_column_count(stmt);
    qint64 sink = 0;
    while (sqlite3_step(stmt) == SQLITE_ROW)
        for (int i = 0; i < columns; ++i) switch (sqlite3_column_type(stmt, i)) {
            case SQLITE_INTEGER: sink += sqlite3_column_int64(stmt, i); break;
            case SQLITE_FLOAT: sink += qint64(sqlite3_column_double(stmt, i)); break;
            case SQLITE_TEXT: sink += sqlite3_column_bytes(stmt, i) + *sqlite3_column_text(stmt, i); break;
            default: break;
            }
    sqlite3_finalize(stmt);
    const double seconds = secondsSince(start);
    sqlite3_close(db);
    return sink == 42 ? 0 : seconds;
}

double cursorReadAll(const char* path) {
    SqliteConnection conn(QString::fromUtf8(path), SqliteConnection::OpenMode::ExistingFile);
    const auto start = Clock::now();
    auto cursor = conn.openCursor(QString::fromUtf8(kSelectAll));
    qint64 rows = 0;
    while (!cursor->atEnd()) rows += qint64(cursor->fetch(1000).size());
    return rows == kBigRows ? secondsSince(start) : -1;
}

double queryReadAll(const char* path) {
    SqliteConnection conn(QString::fromUtf8(path), SqliteConnection::OpenMode::ExistingFile);
    const auto start = Clock::now();
    const RowSet rows = conn.query(QString::fromUtf8(kSelectAll));
    return rows.rows.size() == size_t(kBigRows) ? secondsSince(start) : -1;
}

// Runs `once` again and again for `seconds`; answers how many times it succeeded.
double countFor(double seconds, const std::function<bool()>& once) {
    qint64 done = 0;
    for (const auto start = Clock::now(); secondsSince(start) < seconds;) done += once() ? 1 : 0;
    return double(done);
}

// Whether a call through the connection went through (busy or not).
bool succeeds(const std::function<void()>& body) {
    try {
        body();
        return true;
    } catch (const DatabaseError&) {
        return false;
    }
}

// Point lookups by random key for `seconds`; answers how many succeeded.
double readLookups(bool viaConnection, const char* path, double seconds) {
    std::mt19937 random{unsigned(getpid())};
    std::uniform_int_distribution<int> key(1, kLookupRows);
    if (viaConnection) {
        SqliteConnection conn(QString::fromUtf8(path), SqliteConnection::OpenMode::ExistingFile);
        return countFor(seconds, [&] {
            return succeeds([&] { conn.query(QStringLiteral("select Name from Big where Id = %1").arg(key(random))); });
        });
    }
    sqlite3* db = openRawLikeConnection(path);
    const double done = countFor(seconds, [&] {
        const std::string sql = "select Name from Big where Id = " + std::to_string(key(random));
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) return false;
        while (sqlite3_step(stmt) == SQLITE_ROW) sqlite3_column_text(stmt, 0);
        return sqlite3_finalize(stmt) == SQLITE_OK;
    });
    sqlite3_close(db);
    return done;
}

// Small transactions, one after the other, for `seconds`; answers how many committed.
double writeUpdates(bool viaConnection, const char* path, double seconds) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> key(1, kLookupRows);
    if (viaConnection) {
        SqliteConnection conn(QString::fromUtf8(path), SqliteConnection::OpenMode::ExistingFile);
        return countFor(seconds, [&] {
            const bool done = succeeds([&] {
                conn.begin();
                conn.execute(QStringLiteral("update Big set Seq = Seq + 1 where Id = %1").arg(key(random)));
                conn.commit();
            });
            if (!done && conn.inTransaction()) conn.rollback();
            return done;
        });
    }
    sqlite3* db = openRawLikeConnection(path);
    const double done = countFor(seconds, [&] {
        const std::string sql = "BEGIN IMMEDIATE; update Big set Seq = Seq + 1 where Id = " +
                                std::to_string(key(random)) + "; COMMIT";
        if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return true;
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        return false;
    });
    sqlite3_close(db);
    return done;
}

void fillDatabase(const QString& path);

int runChild(int argc, char** argv) {
    const std::string what = argv[2];
    const char* path = argv[3];
    const double seconds = argc > 4 ? std::atof(argv[4]) : 0;
    double answer = -1;
    if (what == "raw-read") answer = rawReadAll(path);
    else if (what == "cursor-read") answer = cursorReadAll(path);
    else if (what == "query-read") answer = queryReadAll(path);
    else if (what == "kivdb-reader") answer = readLookups(true, path, seconds);
    else if (what == "raw-reader") answer = readLookups(false, path, seconds);
    else if (what == "kivdb-writer") answer = writeUpdates(true, path, seconds);
    else if (what == "raw-writer") answer = writeUpdates(false, path, seconds);
    else if (what == "fill") fillDatabase(QString::fromUtf8(path));  // a database to profile with
    std::printf("%.6f\n", answer);
    return 0;
}

// ---- the parent: starts processes and prints the table ----

struct Finished {
    double seconds = 0;  // wall, start to exit
    double peakMb = 0;
    double answer = 0;   // what a child of this program printed
};

struct Process {
    pid_t pid = 0;
    int out = -1;
    Clock::time_point start;
};

// Starts argv with stdout to a pipe (read by finish) or to /dev/null.
Process start(const std::vector<std::string>& args, bool keepOutput) {
    int pipeFds[2] = {-1, -1};
    if (keepOutput && pipe(pipeFds) != 0) std::exit(3);
    Process p;
    p.start = Clock::now();
    p.pid = fork();
    if (p.pid == 0) {
        const int out = keepOutput ? pipeFds[1] : open("/dev/null", O_WRONLY);
        dup2(out, STDOUT_FILENO);
        std::vector<char*> argv;
        for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    if (keepOutput) {
        close(pipeFds[1]);
        p.out = pipeFds[0];
    }
    return p;
}

Finished finish(Process& p) {
    std::string output;
    if (p.out >= 0) {
        char buffer[256];
        for (ssize_t n; (n = read(p.out, buffer, sizeof buffer)) > 0;) output.append(buffer, size_t(n));
        close(p.out);
    }
    int status = 0;
    rusage usage{};
    wait4(p.pid, &status, 0, &usage);
    Finished f;
    f.seconds = secondsSince(p.start);
    f.peakMb = double(usage.ru_maxrss) / 1024.0;
    f.answer = std::atof(output.c_str());
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) std::fprintf(stderr, "failed: exit %d\n", WEXITSTATUS(status));
    return f;
}

Finished runOnce(const std::vector<std::string>& args, bool keepOutput) {
    Process p = start(args, keepOutput);
    return finish(p);
}

std::string self;  // this program, run again for each child

Finished runChildOnce(const char* what, const std::string& db) { return runOnce({self, "child", what, db}, true); }

// The median wall time of `runs` runs.
Finished median(int runs, const std::vector<std::string>& args) {
    std::vector<Finished> all;
    for (int i = 0; i < runs; ++i) all.push_back(runOnce(args, false));
    std::sort(all.begin(), all.end(), [](const Finished& a, const Finished& b) { return a.seconds < b.seconds; });
    return all[all.size() / 2];
}

void row(const char* what, const std::string& kivdb, const std::string& baseline, double ratio, const char* aim) {
    std::printf("| %-44s | %16s | %16s | %6.2fx | %-9s |\n", what, kivdb.c_str(), baseline.c_str(), ratio, aim);
}
std::string seconds(double s) { return std::to_string(s).substr(0, std::to_string(s).find('.') + 4) + " s"; }
std::string millis(double s) { return seconds(s * 1000).replace(seconds(s * 1000).size() - 1, 1, "ms"); }
std::string megabytes(double mb) { return std::to_string(int(mb + 0.5)) + " MB"; }
std::string perSecond(double n) { return std::to_string(qint64(n + 0.5)) + "/s"; }

void fillDatabase(const QString& path) {
    SqliteConnection conn(path, SqliteConnection::OpenMode::CreateIfMissing);
    conn.execute("create table Big (Id int not null primary key, Code varchar(20), Name nvarchar(40), Qty float, "
                 "Price money, Amount decimal(18,2), Made datetime, Flag bit, Note nvarchar(60), Seq int)");
    sqlite3* db = conn.handle();
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, "insert into Big values (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)", -1, &stmt, nullptr);
    char text[64];
    for (int i = 1; i <= kBigRows; ++i) {
        sqlite3_bind_int(stmt, 1, i);
        std::snprintf(text, sizeof text, "P%07d", i);
        sqlite3_bind_text(stmt, 2, text, -1, SQLITE_TRANSIENT);
        std::snprintf(text, sizeof text, "零件 %d", i % 5000);
        sqlite3_bind_text(stmt, 3, text, -1, SQLITE_TRANSIENT);
        sqlite3_bind_double(stmt, 4, i % 1000 / 4.0);
        sqlite3_bind_double(stmt, 5, i % 977 + 0.25);
        sqlite3_bind_double(stmt, 6, i % 313 + 0.5);
        std::snprintf(text, sizeof text, "20%02d-%02d-%02d %02d:%02d:%02d", 10 + i % 15, 1 + i % 12, 1 + i % 28, i % 24,
                      i % 60, (i * 7) % 60);
        sqlite3_bind_text(stmt, 7, text, -1, SQLITE_TRANSIENT);
        sqlite3_bind_int(stmt, 8, i % 2);
        if (i % 10 == 0) sqlite3_bind_null(stmt, 9);
        else sqlite3_bind_text(stmt, 9, "备注, with a comma", -1, SQLITE_STATIC);
        sqlite3_bind_int(stmt, 10, i % 100);
        sqlite3_step(stmt);
        sqlite3_reset(stmt);
    }
    sqlite3_finalize(stmt);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
}

void benchBigRead(const std::string& db) {
    const Finished raw = runChildOnce("raw-read", db);
    const Finished cursor = runChildOnce("cursor-read", db);
    const Finished query = runChildOnce("query-read", db);
    row("select * 1M x 10, cursor, time", seconds(cursor.answer), seconds(raw.answer), cursor.answer / raw.answer, "<= 1.5x");
    row("select * 1M x 10, cursor, peak memory", megabytes(cursor.peakMb), megabytes(raw.peakMb), cursor.peakMb / raw.peakMb,
        "< 100 MB");
    row("select * 1M x 10, whole row set, time", seconds(query.answer), seconds(raw.answer), query.answer / raw.answer, "");
    row("select * 1M x 10, whole row set, peak memory", megabytes(query.peakMb), megabytes(raw.peakMb),
        query.peakMb / raw.peakMb, "");
}

void benchPrinting(const std::string& kivdb, const std::string& db) {
    struct Mode {
        const char* name;
        std::vector<std::string> kivdbArgs;
        std::vector<std::string> shellArgs;
    } modes[] = {
        {"kivdb sql 1M rows, tab", {kivdb, "sql", "--db", db, kSelectAll}, {"sqlite3", "-separator", "\t", db, kSelectAll}},
        {"kivdb sql 1M rows, --csv", {kivdb, "sql", "--csv", "--db", db, kSelectAll},
         {"sqlite3", "-csv", "-header", db, kSelectAll}},
    };
    for (const Mode& m : modes) {
        const Finished shell = runOnce(m.shellArgs, false);
        const Finished ours = runOnce(m.kivdbArgs, false);
        row((std::string(m.name) + ", wall").c_str(), seconds(ours.seconds), seconds(shell.seconds), ours.seconds / shell.seconds,
            "<= 1.5x");
        row((std::string(m.name) + ", peak memory").c_str(), megabytes(ours.peakMb), megabytes(shell.peakMb),
            ours.peakMb / shell.peakMb, "< 100 MB");
    }
}

// On the big file, and on the suite's own schema with the sample company (hundreds of tables).
void benchStartUp(const std::string& kivdb, const std::string& db, const std::string& suiteDb) {
    for (const auto& [name, file] : {std::pair{"1 table", db}, std::pair{"suite schema", suiteDb}}) {
        const Finished shell = median(kStartRuns, {"sqlite3", file, "select 1"});
        const Finished ours = median(kStartRuns, {kivdb, "call", "--db", file, "SelTableIntValue", "select 1"});
        row((std::string("kivdb call SelTableIntValue \"select 1\", ") + name).c_str(), millis(ours.seconds),
            millis(shell.seconds), ours.seconds / shell.seconds, "<= 2x");
    }
}

struct Shared {
    double reads = 0;   // per second, all readers
    double writes = 0;  // per second
    double peakMb = 0;  // the largest child
};

// Four readers while a fifth process writes.
Shared share(const char* reader, const char* writer, const std::string& db) {
    const std::string duration = std::to_string(kShareSeconds);
    std::vector<Process> readers;
    Process w = start({self, "child", writer, db, duration}, true);
    for (int i = 0; i < 4; ++i) readers.push_back(start({self, "child", reader, db, duration}, true));
    Shared s;
    for (auto& r : readers) {
        const Finished f = finish(r);
        s.reads += f.answer / kShareSeconds;
        s.peakMb = std::max(s.peakMb, f.peakMb);
    }
    const Finished f = finish(w);
    s.writes = f.answer / kShareSeconds;
    s.peakMb = std::max(s.peakMb, f.peakMb);
    return s;
}

void benchSharing(const std::string& db) {
    const Shared ours = share("kivdb-reader", "kivdb-writer", db);
    const Shared raw = share("raw-reader", "raw-writer", db);
    char mode[64] = "?";
    {
        sqlite3* handle = openRaw(db.c_str());
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(handle, "PRAGMA journal_mode", -1, &stmt, nullptr);
        if (sqlite3_step(stmt) == SQLITE_ROW)
            std::snprintf(mode, sizeof mode, "%s", reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
        sqlite3_finalize(stmt);
        sqlite3_close(handle);
    }
    const std::string journal = std::string(" (") + mode + ")";
    row(("4 readers + 1 writer, lookups" + journal).c_str(), perSecond(ours.reads), perSecond(raw.reads),
        raw.reads / ours.reads, "");
    row(("4 readers + 1 writer, commits" + journal).c_str(), perSecond(ours.writes), perSecond(raw.writes),
        raw.writes / ours.writes, "");
    row("4 readers + 1 writer, peak memory per process", megabytes(ours.peakMb), megabytes(raw.peakMb),
        ours.peakMb / raw.peakMb, "");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 3 && std::strcmp(argv[1], "child") == 0) {
        QCoreApplication app(argc, argv);
        pinLocalTimeZone();  // as the library's set-up does
        return runChild(argc, argv);
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    self = argv[0];
    const std::string kivdb = argc > 1 ? argv[1] : KIVDB_CLI_PATH;
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.db"));
    fillDatabase(path);
    // Opened once, so that whatever the connection sets in the file holds for every run.
    SqliteConnection(path, SqliteConnection::OpenMode::ExistingFile);
    const std::string db = path.toStdString();
    std::printf("| %-44s | %16s | %16s | %7s | %-9s |\n", "what (ratio: kivdb / baseline, in time)", "kivdb", "baseline", "ratio", "aim");
    benchBigRead(db);
    benchPrinting(kivdb, db);
    const std::string suiteDb = dir.filePath(QStringLiteral("suite.db")).toStdString();
    runOnce({kivdb, "init", "--db", suiteDb, "--sample"}, false);
    benchStartUp(kivdb, db, suiteDb);
    benchSharing(db);
    return 0;
}
