// What exporting a long result to a spreadsheet file costs, measured in one run on one
// database file: the library's export of a T-SQL statement through the embedded
// connection's cursor (as kivdb export does) and of a dataset (as a form does, the dataset
// holding the rows it walks), beside a hand-written loop stepping plain SQLite into
// libxlsxwriter and python3-xlsxwriter's constant-memory writer on the same rows. Each runs
// in a process of its own, so its peak memory is its own. Times are ratios to the
// hand-written loop.
//
// usage: spreadsheet_bench [ROWS]          (default 1000000 rows of 10 columns)
#include "platform/query_dataset.h"
#include "platform/sqlite_connection.h"
#include "presentation/spreadsheet_export.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <sqlite3.h>
#include <xlsxwriter.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;

using namespace kivdb;

namespace {

const char* const kSelect = "select id, partno, partname, qty, price, amount, rate, made, posted, memo from note";

// The rows, made by SQLite itself on the embedded connection (its collations and checks).
void makeDatabase(const QString& path, int rows) {
    SqliteConnection conn(path, SqliteConnection::OpenMode::CreateIfMissing);
    conn.execute("create table note (id int primary key, partno varchar(20), partname nvarchar(40), qty int, "
                 "price decimal(18,4), amount money, rate float, made datetime, posted bit, memo nvarchar(60))");
    const QByteArray fill = QStringLiteral(
        "with recursive n(i) as (select 1 union all select i + 1 from n where i < %1) "
        "insert into note select i, 'P' || i, '零件' || i, i % 1000, (i % 9973) / 4.0, i * 1.25, i / 7.0, "
        "strftime('%Y-%m-%d %H:%M:%S', 1500000000 + i * 60, 'unixepoch'), i % 2, "
        "case when i % 3 = 0 then null else '备注：第' || i || '行' end from n").arg(rows).toUtf8();
    char* error = nullptr;
    if (sqlite3_exec(conn.handle(), fill.constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        std::fprintf(stderr, "cannot fill the database: %s\n", error);
        std::exit(1);
    }
}

void exportThroughLibrary(const char* db, const char* out) {
    SqliteConnection conn(QString::fromUtf8(db), SqliteConnection::OpenMode::ExistingFile);
    exportCursorToSpreadsheet(*conn.openCursor(QString::fromUtf8(kSelect)), QString::fromUtf8(out));
}

// A form's export: the dataset holds every row it walks through.
void exportDataSet(const char* db, const char* out) {
    SqliteConnection conn(QString::fromUtf8(db), SqliteConnection::OpenMode::ExistingFile);
    QueryDataSet dataSet(conn, QString::fromUtf8(kSelect));
    dataSet.open();
    DataSetExportToExcel(dataSet, QString::fromUtf8(out));
}

// What a careful hand-written export does: plain SQLite stepped into libxlsxwriter's
// constant-memory writer, each column written as its known type.
void exportByHand(const char* db, const char* out) {
    sqlite3* handle = nullptr;
    sqlite3_open_v2(db, &handle, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(handle, kSelect, -1, &stmt, nullptr);
    lxw_workbook_options options = {LXW_TRUE, nullptr, LXW_FALSE};
    lxw_workbook* workbook = workbook_new_opt(out, &options);
    lxw_worksheet* sheet = workbook_add_worksheet(workbook, nullptr);
    lxw_format* money = workbook_add_format(workbook);
    format_set_num_format(money, "#,##0.00");
    lxw_format* dateTime = workbook_add_format(workbook);
    format_set_num_format(dateTime, "yyyy-mm-dd hh:mm:ss");
    const int columns = sqlite3_column_count(stmt);
    for (int c = 0; c < columns; ++c) worksheet_write_string(sheet, 0, lxw_col_t(c), sqlite3_column_name(stmt, c), nullptr);
    for (lxw_row_t row = 1; sqlite3_step(stmt) == SQLITE_ROW; ++row) {
        for (int c = 0; c < columns; ++c) {
            const int type = sqlite3_column_type(stmt, c);
            if (type == SQLITE_NULL) continue;
            if (c == 7) {
                lxw_datetime when = {};
                std::sscanf(reinterpret_cast<const char*>(sqlite3_column_text(stmt, c)), "%d-%d-%d %d:%d:%lf", &when.year,
                            &when.month, &when.day, &when.hour, &when.min, &when.sec);
                worksheet_write_datetime(sheet, row, lxw_col_t(c), &when, dateTime);
            } else if (c == 8) {
                worksheet_write_boolean(sheet, row, lxw_col_t(c), sqlite3_column_int(stmt, c), nullptr);
            } else if (type == SQLITE_TEXT) {
                worksheet_write_string(sheet, row, lxw_col_t(c), reinterpret_cast<const char*>(sqlite3_column_text(stmt, c)),
                                       nullptr);
            } else {
                worksheet_write_number(sheet, row, lxw_col_t(c), sqlite3_column_double(stmt, c), c == 5 ? money : nullptr);
            }
        }
    }
    sqlite3_finalize(stmt);
    sqlite3_close(handle);
    workbook_close(workbook);
}

// The same loop in Python with XlsxWriter's constant-memory mode.
const char* const kPythonExport = R"(
import sqlite3, sys, datetime, xlsxwriter
db, out, select = sys.argv[1:4]
rows = sqlite3.connect(db).execute(select)
book = xlsxwriter.Workbook(out, {'constant_memory': True})
sheet = book.add_worksheet()
money = book.add_format({'num_format': '#,##0.00'})
stamp = book.add_format({'num_format': 'yyyy-mm-dd hh:mm:ss'})
for c, d in enumerate(rows.description):
    sheet.write_string(0, c, d[0])
for r, values in enumerate(rows, 1):
    for c, v in enumerate(values):
        if v is None:
            continue
        if c == 7:
            sheet.write_datetime(r, c, datetime.datetime.fromisoformat(v), stamp)
        elif c == 8:
            sheet.write_boolean(r, c, bool(v))
        elif isinstance(v, str):
            sheet.write_string(r, c, v)
        else:
            sheet.write_number(r, c, v, money if c == 5 else None)
book.close()
)";

// An interpreter that has the xlsxwriter module, or nullptr.
const char* pythonWithXlsxWriter() {
    static const char* candidates[] = {std::getenv("KIVDB_BENCH_PYTHON"), "/usr/bin/python3", "python3"};
    for (const char* python : candidates) {
        if (!python) continue;
        const std::string probe = std::string(python) + " -c 'import xlsxwriter' 2>/dev/null";
        if (std::system(probe.c_str()) == 0) return python;
    }
    return nullptr;
}

struct Measure {
    double seconds = 0;
    double peakMegabytes = 0;
    bool ok = false;
};

// Runs argv in a child process: its wall time and peak resident memory.
Measure runChild(std::vector<const char*> argv) {
    argv.push_back(nullptr);
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], nullptr, nullptr, const_cast<char**>(argv.data()), environ) != 0) return {};
    int status = 0;
    rusage usage = {};
    wait4(pid, &status, 0, &usage);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return {seconds, usage.ru_maxrss / 1024.0, WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    if (argc == 5 && std::strcmp(argv[1], "--child") == 0) {
        try {
            const std::string mode = argv[2];
            (mode == "cursor" ? exportThroughLibrary : mode == "dataset" ? exportDataSet : exportByHand)(argv[3], argv[4]);
        } catch (const std::exception& e) {
            std::fprintf(stderr, "%s\n", e.what());
            return 1;
        }
        return 0;
    }
    const int rows = argc > 1 ? std::atoi(argv[1]) : 1000000;
    QTemporaryDir dir;
    const QByteArray db = dir.filePath(QStringLiteral("bench.db")).toUtf8();
    makeDatabase(QString::fromUtf8(db), rows);
    std::printf("export of %d rows x 10 columns from an embedded database file (%.0f MB)\n", rows,
                QFileInfo(QString::fromUtf8(db)).size() / 1048576.0);

    struct Run {
        const char* name;
        QByteArray out;
        std::vector<const char*> argv;
    };
    const QByteArray self = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath().toUtf8();
    std::vector<Run> runs = {{"plain SQLite + libxlsxwriter", dir.filePath("hand.xlsx").toUtf8(), {}},
                             {"kivdb export of a cursor", dir.filePath("cursor.xlsx").toUtf8(), {}},
                             {"kivdb export of a dataset", dir.filePath("dataset.xlsx").toUtf8(), {}}};
    const char* const modes[] = {"hand", "cursor", "dataset"};
    for (size_t i = 0; i < runs.size(); ++i)
        runs[i].argv = {self.constData(), "--child", modes[i], db.constData(), runs[i].out.constData()};
    const char* python = pythonWithXlsxWriter();
    if (python) {
        runs.push_back({"python3-xlsxwriter", dir.filePath("python.xlsx").toUtf8(), {}});
        runs.back().argv = {"/bin/sh", "-c", "exec \"$0\" -c \"$1\" \"$2\" \"$3\" \"$4\"", python, kPythonExport,
                            db.constData(), runs.back().out.constData(), kSelect};
    }
    std::printf("%-32s %10s %10s %8s %10s\n", "", "seconds", "peak MB", "ratio", "file MB");
    double baseline = 0;
    std::vector<Measure> measures;
    for (const Run& run : runs) {
        const Measure m = measures.emplace_back(runChild(run.argv));
        if (!m.ok) {
            std::printf("%-32s failed\n", run.name);
            continue;
        }
        if (baseline == 0) baseline = m.seconds;
        std::printf("%-32s %10.2f %10.1f %7.2fx %10.1f\n", run.name, m.seconds, m.peakMegabytes, m.seconds / baseline,
                    QFileInfo(QString::fromUtf8(run.out)).size() / 1048576.0);
    }
    if (!python) std::printf("%-32s skipped: no python3 with the xlsxwriter module\n", "python3-xlsxwriter");
    // The rows of the table bench/run gathers from every program: the cursor path beside the hand loop.
    const Measure& hand = measures[0];
    const Measure& cursor = measures[1];
    if (hand.ok && cursor.ok) {
        std::printf("| %-44s | %14.2f s | %14.2f s | %6.2fx | %-9s |\n", "1M x 10 exported to .xlsx, cursor, time",
                    cursor.seconds, hand.seconds, cursor.seconds / hand.seconds, "<= 1.3x");
        std::printf("| %-44s | %13.1f MB | %13.1f MB | %6.2fx | %-9s |\n", "1M x 10 exported to .xlsx, cursor, peak memory",
                    cursor.peakMegabytes, hand.peakMegabytes, cursor.peakMegabytes / hand.peakMegabytes, "< 100 MB");
    }
    return 0;
}
