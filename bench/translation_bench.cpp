// Cold translation: every statement of the dialect corpus translated without the cache, beside
// SQLite preparing the translated text, on one database holding all the corpus's fixtures.
// Rows print as: what, kivdb, baseline, ratio, aim (as call_bench prints them).
#include "dialect/dialect.h"
#include "dialect/sqlite_catalog.h"
#include "platform/sqlite_connection.h"

#include <QDir>
#include <QFile>
#include <QTextStream>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>

using namespace kivdb;

namespace {

struct Corpus {
    QStringList fixtureStatements;
    QStringList statements;
};

// The corpus format as far as this needs it: fixture bodies, and each case's statement, the
// lines between its header and its expectation.
Corpus readCorpus(const QString& dir) {
    Corpus corpus;
    for (const QString& name : QDir(dir).entryList({QStringLiteral("*.tsql")}, QDir::Files, QDir::Name)) {
        QFile file(dir + QLatin1Char('/') + name);
        if (!file.open(QIODevice::ReadOnly)) continue;
        enum { Top, Fixture, Case } state = Top;
        QStringList* into = nullptr;
        QTextStream in(&file);
        while (!in.atEnd()) {
            const QString line = in.readLine();
            if (line.startsWith(QLatin1String("-- fixture:"))) {
                if (state != Case) state = Fixture, into = &corpus.fixtureStatements;
                continue;
            }
            if (line.startsWith(QLatin1String("-- case:"))) {
                state = Case, into = &corpus.statements;
                into->append(QString());
                continue;
            }
            if (line.startsWith(QLatin1String("--"))) {
                if (state == Case) state = Top, into = nullptr;
                continue;
            }
            if (!into || line.trimmed().isEmpty()) continue;
            if (state == Fixture && !line.front().isSpace()) into->append(line);
            else if (!into->isEmpty()) into->last() += (into->last().isEmpty() ? QString() : QStringLiteral("\n")) + line;
        }
    }
    corpus.statements.removeAll(QString());
    return corpus;
}

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const QString dir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(KIVDB_CORPUS_DIR);
    const Corpus corpus = readCorpus(dir);
    SqliteConnection conn(QStringLiteral(":memory:"), SqliteConnection::OpenMode::CreateIfMissing);
    for (const QString& s : corpus.fixtureStatements) {
        try {
            conn.execute(s);
        } catch (const std::exception&) {
            // Fixtures are made for separate databases: a second definition of a table fails.
        }
    }
    dialect::SqliteCatalog catalog(conn.handle());
    QStringList translatable;
    std::vector<QByteArray> translated;
    for (const QString& s : corpus.statements) {
        try {
            translated.push_back(dialect::translateToSqlite(s, catalog).toUtf8());
            translatable << s;
        } catch (const std::exception&) {
            // Cases that expect the server's refusal.
        }
    }
    constexpr int kRounds = 20;
    const auto start = std::chrono::steady_clock::now();
    for (int r = 0; r < kRounds; ++r)
        for (const QString& s : translatable) dialect::translateToSqlite(s, catalog);
    const double translateSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const auto prepareStart = std::chrono::steady_clock::now();
    for (int r = 0; r < kRounds; ++r)
        for (const QByteArray& sql : translated) {
            const char* next = sql.constData();
            const char* const end = next + sql.size();
            while (next < end) {
                sqlite3_stmt* stmt = nullptr;
                const char* tail = end;
                // A statement the fixtures cannot prepare (a table of another fixture) still costs its parse.
                sqlite3_prepare_v2(conn.handle(), next, int(end - next) + 1, &stmt, &tail);
                sqlite3_finalize(stmt);
                if (tail == next) break;
                next = tail;
            }
        }
    const double prepareSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - prepareStart).count();
    const double count = double(translatable.size()) * kRounds;
    const double perSecond = count / translateSeconds;
    // A row of the table bench/run gathers from every program.
    std::printf("cold translation: %lld statements of the corpus\n", static_cast<long long>(translatable.size()));
    std::printf("| %-44s | %12.1f k/s | %12.1f k/s | %6.2fx | ≥ 100 k/s%s |\n", "cold translation of the dialect corpus",
                perSecond / 1000, count / prepareSeconds / 1000, prepareSeconds > 0 ? translateSeconds / prepareSeconds : 0.0,
                perSecond >= 100000 ? "" : " MISS");
    return 0;
}
