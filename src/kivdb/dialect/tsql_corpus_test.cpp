// The statement corpus: every statement the library sends, with the values it carries, run on
// the embedded engine against fixture rows, and compared with the rows SQL Server answers.
//
// The data files live in corpus/*.tsql beside this file. Their format:
//
//   -- fixture: receivables            defines a fixture: T-SQL statements, one per line;
//   create table Rp_RAcct (CustNo        a line that starts with a blank continues the
//       varchar(20) not null, Type int)  statement above it
//   insert into Rp_RAcct values ('C001', 100)
//
//   -- case: PickCustRAcct keeps receivables without a type row
//   -- fixture: receivables, types     optional; fixtures are named across all files
//   select ... from Rp_RAcct a , ...   exactly one statement, as the library sends it
//   -- expect unordered                or: ordered, no rows, error[: text], affected: N
//   C001	100                         expected rows, values separated by tabs
//   -- then select count(*) from t     optional checks of what a write left behind,
//   -- expect ordered                  each followed by its own expectation
//   1
//
// In rows NULL stands for a null and '' for an empty text; integers are written in decimal and
// reals in their shortest form (12.5, 0.1, 3). Blanks in rows are significant, so a row may be
// all blanks; empty lines are skipped. Other lines starting with "--" are comments.
// Each case runs on a fresh in-memory database: fixtures first, then the statement.
#include "dialect/dialect.h"
#include "dialect/sqlite_catalog.h"
#include "testing/sqlite_database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <charconv>
#include <memory>
#include <optional>
#include <stdexcept>

namespace kivdb::dialect {
namespace {

// ---------------------------------------------------------------------------------------------
// The data files

struct Expectation {
    enum Kind { OrderedRows, UnorderedRows, NoRows, Error, Affected };
    Kind kind = NoRows;
    QStringList rows;   // one text per row, values joined by tabs
    QString errorText;  // for Error: a substring of the message, compared without case; may be empty
    qint64 affected = 0;
    int line = 0;
};

struct AfterCheck {
    QString select;
    Expectation expected;
};

struct CorpusCase {
    QString file;
    int line = 0;
    QString name;
    QStringList fixtureNames;
    QString statement;
    Expectation expected;
    std::vector<AfterCheck> checks;
};

struct FixtureStatement {
    int line = 0;
    QString text;
};

struct Fixture {
    QString file;
    int line = 0;
    std::vector<FixtureStatement> statements;
};

struct Corpus {
    QHash<QString, Fixture> fixtures;  // by name; one namespace for all files
    std::vector<CorpusCase> cases;
};

class CorpusFormatError : public std::runtime_error {
public:
    CorpusFormatError(const QString& file, int line, const QString& what)
        : std::runtime_error(QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(what).toStdString()) {}
};

class CorpusParser {
public:
    CorpusParser(const QString& file, Corpus& corpus) : file_(file), corpus_(corpus) {}

    void parse(const QString& text) {
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (int i = 0; i < lines.size(); ++i) {
            lineNo_ = i + 1;
            QString line = lines[i];
            if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
            takeLine(line);
        }
        finishBlock();
    }

private:
    enum class State { Top, FixtureBody, CaseHeader, CaseStatement, Rows, CheckHeader };

    [[noreturn]] void fail(const QString& what) const { throw CorpusFormatError(file_, lineNo_, what); }

    static std::optional<QString> directiveArgument(const QString& line, QLatin1String keyword) {
        const QString prefix = QStringLiteral("-- ") + keyword;
        if (!line.startsWith(prefix)) return std::nullopt;
        // "-- expected by ..." is a comment, not "-- expect".
        if (!keyword.endsWith(QLatin1Char(':')) && line.size() > prefix.size() && line[prefix.size()] != QLatin1Char(' '))
            return std::nullopt;
        return line.mid(prefix.size()).trimmed();
    }

    void takeLine(const QString& line) {
        if (auto name = directiveArgument(line, QLatin1String("fixture:"))) {
            if (state_ == State::CaseHeader) return useFixtures(*name);
            finishBlock();
            return startFixture(*name);
        }
        if (auto name = directiveArgument(line, QLatin1String("case:"))) {
            finishBlock();
            return startCase(*name);
        }
        if (auto kind = directiveArgument(line, QLatin1String("expect"))) return expect(*kind);
        if (auto select = directiveArgument(line, QLatin1String("then"))) return startCheck(*select);
        if (line.startsWith(QLatin1String("--"))) return;  // comment
        if (line.isEmpty() || (line.trimmed().isEmpty() && state_ != State::Rows)) return;  // a row may be all blanks
        switch (state_) {
        case State::Top:
            fail(QStringLiteral("text outside a fixture or case"));
        case State::FixtureBody:
            return addFixtureLine(line);
        case State::CaseHeader:
        case State::CaseStatement:
            currentCase_.statement += (currentCase_.statement.isEmpty() ? QString() : QStringLiteral("\n")) + line;
            state_ = State::CaseStatement;
            return;
        case State::Rows:
            return addRow(line);
        case State::CheckHeader:
            fail(QStringLiteral("expected rows need an \"-- expect\" line after \"-- then\""));
        }
    }

    void startFixture(const QString& name) {
        if (name.isEmpty()) fail(QStringLiteral("a fixture needs a name"));
        if (corpus_.fixtures.contains(name)) {
            const Fixture& first = corpus_.fixtures[name];
            fail(QStringLiteral("fixture %1 is already defined at %2:%3").arg(name, first.file).arg(first.line));
        }
        fixtureName_ = name;
        fixture_ = Fixture{file_, lineNo_, {}};
        state_ = State::FixtureBody;
    }

    void addFixtureLine(const QString& line) {
        if (line.front().isSpace()) {
            if (fixture_.statements.empty()) fail(QStringLiteral("a continuation line needs a statement above it"));
            fixture_.statements.back().text += QLatin1Char('\n') + line;
        } else {
            fixture_.statements.push_back({lineNo_, line});
        }
    }

    void startCase(const QString& name) {
        if (name.isEmpty()) fail(QStringLiteral("a case needs a name"));
        currentCase_ = CorpusCase{};
        currentCase_.file = file_;
        currentCase_.line = lineNo_;
        currentCase_.name = name;
        state_ = State::CaseHeader;
    }

    void useFixtures(const QString& names) {
        if (!currentCase_.fixtureNames.isEmpty()) fail(QStringLiteral("a case names its fixtures on one line"));
        for (const QString& name : names.split(QLatin1Char(','), Qt::SkipEmptyParts))
            currentCase_.fixtureNames << name.trimmed();
        if (currentCase_.fixtureNames.isEmpty()) fail(QStringLiteral("\"-- fixture:\" names no fixture"));
    }

    void expect(const QString& kindText) {
        Expectation e;
        e.line = lineNo_;
        static const QRegularExpression affectedPattern(QStringLiteral("^affected:\\s*(\\d+)$"));
        if (kindText == QLatin1String("ordered")) {
            e.kind = Expectation::OrderedRows;
        } else if (kindText == QLatin1String("unordered")) {
            e.kind = Expectation::UnorderedRows;
        } else if (kindText == QLatin1String("no rows")) {
            e.kind = Expectation::NoRows;
        } else if (kindText == QLatin1String("error") || kindText.startsWith(QLatin1String("error:"))) {
            e.kind = Expectation::Error;
            e.errorText = kindText.mid(QStringLiteral("error:").size()).trimmed();
        } else if (auto m = affectedPattern.match(kindText); m.hasMatch()) {
            e.kind = Expectation::Affected;
            e.affected = m.captured(1).toLongLong();
        } else {
            fail(QStringLiteral("unknown expectation \"%1\"").arg(kindText));
        }

        if (state_ == State::CaseStatement) {
            if (currentCase_.expected.line != 0) fail(QStringLiteral("a case has one expectation; use \"-- then\""));
            currentCase_.expected = e;
        } else if (state_ == State::CheckHeader) {
            currentCase_.checks.back().expected = e;
        } else if (state_ == State::CaseHeader) {
            fail(QStringLiteral("an expectation needs a statement above it"));
        } else {
            fail(QStringLiteral("an expectation belongs to a case statement or a \"-- then\" check"));
        }
        state_ = State::Rows;
    }

    Expectation& currentExpectation() {
        return currentCase_.checks.empty() ? currentCase_.expected : currentCase_.checks.back().expected;
    }

    void addRow(const QString& line) {
        Expectation& e = currentExpectation();
        if (e.kind != Expectation::OrderedRows && e.kind != Expectation::UnorderedRows)
            fail(QStringLiteral("rows follow only \"-- expect ordered\" or \"-- expect unordered\""));
        e.rows << line;
    }

    void startCheck(const QString& select) {
        if (state_ != State::Rows) fail(QStringLiteral("\"-- then\" follows the expectation of a case"));
        if (select.isEmpty()) fail(QStringLiteral("\"-- then\" needs a select on the same line"));
        checkRowsPresent();
        currentCase_.checks.push_back({select, {}});
        state_ = State::CheckHeader;
    }

    void checkRowsPresent() {
        const Expectation& e = currentExpectation();
        if ((e.kind == Expectation::OrderedRows || e.kind == Expectation::UnorderedRows) && e.rows.isEmpty())
            fail(QStringLiteral("rows expected but none written (use \"-- expect no rows\")"));
    }

    void finishBlock() {
        switch (state_) {
        case State::Top:
            break;
        case State::FixtureBody:
            if (fixture_.statements.empty()) fail(QStringLiteral("fixture %1 holds no statement").arg(fixtureName_));
            corpus_.fixtures.insert(fixtureName_, fixture_);
            break;
        case State::CaseHeader:
        case State::CaseStatement:
            fail(QStringLiteral("case \"%1\" has no expectation").arg(currentCase_.name));
        case State::CheckHeader:
            fail(QStringLiteral("\"-- then\" of case \"%1\" has no expectation").arg(currentCase_.name));
        case State::Rows:
            checkRowsPresent();
            corpus_.cases.push_back(currentCase_);
            break;
        }
        state_ = State::Top;
    }

    QString file_;
    Corpus& corpus_;
    int lineNo_ = 0;
    State state_ = State::Top;
    QString fixtureName_;
    Fixture fixture_;
    CorpusCase currentCase_;
};

// Every case must name fixtures that exist somewhere in the corpus.
void checkFixtureNames(const Corpus& corpus) {
    for (const CorpusCase& c : corpus.cases)
        for (const QString& name : c.fixtureNames)
            if (!corpus.fixtures.contains(name))
                throw CorpusFormatError(c.file, c.line, QStringLiteral("unknown fixture %1").arg(name));
}

QString testNameOf(const CorpusCase& c) {
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9]+"));
    QString name = QFileInfo(c.file).completeBaseName() + QLatin1Char('_') + c.name;
    name.replace(unsafe, QStringLiteral("_"));
    while (name.endsWith(QLatin1Char('_'))) name.chop(1);
    return name;
}

// ---------------------------------------------------------------------------------------------
// Running statements on the embedded engine

// The value as the expected rows write it.
QString renderValue(sqlite3_stmt* stmt, int column) {
    switch (sqlite3_column_type(stmt, column)) {
    case SQLITE_NULL:
        return QStringLiteral("NULL");
    case SQLITE_INTEGER:
        return QString::number(sqlite3_column_int64(stmt, column));
    case SQLITE_FLOAT: {
        // Shortest text that reads back to the same double; an integral value prints as an integer.
        const double value = sqlite3_column_double(stmt, column);
        char buffer[64];
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
        return QString::fromLatin1(buffer, int(result.ptr - buffer));
    }
    case SQLITE_BLOB: {
        const QByteArray bytes(static_cast<const char*>(sqlite3_column_blob(stmt, column)),
                               sqlite3_column_bytes(stmt, column));
        return QStringLiteral("x'%1'").arg(QString::fromLatin1(bytes.toHex()));
    }
    default: {
        const QString text = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, column)),
                                               sqlite3_column_bytes(stmt, column));
        if (text.isEmpty()) return QStringLiteral("''");
        // Dates are stored as "yyyy-mm-dd" or "yyyy-mm-dd hh:mm:ss"; midnight reads as the bare
        // date either way, so the expected rows need not know which form the engine chose.
        static const QRegularExpression midnight(QStringLiteral("^(\\d{4}-\\d{2}-\\d{2})[ T]00:00:00(\\.0+)?$"));
        if (auto m = midnight.match(text); m.hasMatch()) return m.captured(1);
        return text;
    }
    }
}

struct Outcome {
    std::optional<QString> error;
    QString translated;
    QStringList rows;     // rows of the last statement that returned columns
    qint64 affected = 0;  // rows changed by the whole text
};

class EmbeddedDatabase {
public:
    // The statement as it is sent to SQL Server 2005 and later. Throws SqlError.
    QString rewriteOuterJoins(const QString& tsql) {
        SqliteCatalog catalog(db_);
        return dialect::rewriteOuterJoins(tsql, catalog);
    }

    // Translates one T-SQL statement and runs every SQLite statement of the translation.
    Outcome run(const QString& tsql) {
        Outcome outcome;
        try {
            SqliteCatalog catalog(db_);  // fresh each time: fixtures change the schema
            outcome.translated = translateToSqlite(tsql, catalog);
        } catch (const SqlError& e) {
            outcome.error = QString::fromUtf8(e.what());
            return outcome;
        }
        const sqlite3_int64 changesBefore = sqlite3_total_changes64(db_);
        const QByteArray sql = outcome.translated.toUtf8();
        const char* next = sql.constData();
        const char* end = next + sql.size();
        try {
            while (next < end) {
                SqliteStatement stmt(db_, next, end);
                if (!stmt) continue;  // blanks or a comment at the end of the text
                const int columns = stmt.columnCount();
                if (columns > 0) outcome.rows.clear();
                while (stmt.step()) {
                    QStringList values;
                    for (int i = 0; i < columns; ++i) values << renderValue(stmt.get(), i);
                    outcome.rows << values.join(QLatin1Char('\t'));
                }
            }
        } catch (const EngineError& e) {
            outcome.error = QString::fromUtf8(e.what());
        }
        outcome.affected = sqlite3_total_changes64(db_) - changesBefore;
        return outcome;
    }

private:
    testing::SqliteTestDb owner_;  // in memory, the runtime registered
    sqlite3* db_ = owner_.handle();
};

QString describe(const QStringList& rows) {
    if (rows.isEmpty()) return QStringLiteral("    (no rows)\n");
    QString text;
    for (const QString& row : rows) text += QStringLiteral("    ") + QString(row).replace(QLatin1Char('\t'), QStringLiteral(" | ")) + QLatin1Char('\n');
    return text;
}

// An empty answer when the outcome meets the expectation, else what went wrong.
QString mismatch(const Expectation& expected, const Outcome& outcome) {
    if (expected.kind == Expectation::Error) {
        if (!outcome.error) return QStringLiteral("expected an error, the statement ran and returned:\n") + describe(outcome.rows);
        if (!outcome.error->contains(expected.errorText, Qt::CaseInsensitive))
            return QStringLiteral("expected an error containing \"%1\", got: %2").arg(expected.errorText, *outcome.error);
        return {};
    }
    if (outcome.error) return QStringLiteral("the statement failed: ") + *outcome.error;
    if (expected.kind == Expectation::Affected) {
        if (outcome.affected != expected.affected)
            return QStringLiteral("expected %1 rows affected, got %2").arg(expected.affected).arg(outcome.affected);
        return {};
    }
    QStringList wanted = expected.rows;
    QStringList got = outcome.rows;
    if (expected.kind == Expectation::UnorderedRows) {
        wanted.sort();
        got.sort();
    }
    if (wanted != got)
        return QStringLiteral("expected rows:\n") + describe(wanted) + QStringLiteral("got rows:\n") + describe(got);
    return {};
}

// How a case's statement reaches the engine: as the library sends it, or first rewritten the way
// it is sent to SQL Server 2005 and later, which must not change the answer.
enum class Sending { AsWritten, OuterJoinsRewritten };

QString runCaseSent(const Corpus& corpus, const CorpusCase& c, Sending sending) {
    EmbeddedDatabase db;
    for (const QString& name : c.fixtureNames) {
        const Fixture& fixture = corpus.fixtures[name];
        for (const FixtureStatement& statement : fixture.statements) {
            const Outcome outcome = db.run(statement.text);
            if (outcome.error)
                return QStringLiteral("fixture %1 (%2:%3) failed: %4\n  T-SQL: %5\n  SQLite: %6")
                    .arg(name, fixture.file).arg(statement.line).arg(*outcome.error, statement.text, outcome.translated);
        }
    }
    QString statement = c.statement;
    Outcome outcome;
    try {
        if (sending == Sending::OuterJoinsRewritten) statement = db.rewriteOuterJoins(statement);
        outcome = db.run(statement);
    } catch (const SqlError& e) {
        outcome.error = QString::fromUtf8(e.what());
    }
    if (QString problem = mismatch(c.expected, outcome); !problem.isEmpty())
        return QStringLiteral("%1\n  T-SQL: %2\n  SQLite: %3").arg(problem, statement, outcome.translated);
    for (const AfterCheck& check : c.checks) {
        const Outcome after = db.run(check.select);
        if (QString problem = mismatch(check.expected, after); !problem.isEmpty())
            return QStringLiteral("after the statement, line %1: %2\n  T-SQL: %3\n  SQLite: %4")
                .arg(check.expected.line).arg(problem, check.select, after.translated);
    }
    return {};
}

// Runs one case on fresh databases; an empty answer means it passed.
QString runCase(const Corpus& corpus, const CorpusCase& c) {
    if (QString problem = runCaseSent(corpus, c, Sending::AsWritten); !problem.isEmpty()) return problem;
    if (!hasOldOuterJoin(c.statement)) return {};
    if (QString problem = runCaseSent(corpus, c, Sending::OuterJoinsRewritten); !problem.isEmpty())
        return QStringLiteral("with the old outer joins rewritten as ANSI joins: ") + problem;
    return {};
}

// ---------------------------------------------------------------------------------------------
// Registration: one test per case, named after its file and its name

class CorpusCaseTest : public ::testing::Test {
public:
    CorpusCaseTest(std::shared_ptr<const Corpus> corpus, const CorpusCase* c) : corpus_(std::move(corpus)), case_(c) {}
    void TestBody() override {
        const QString problem = runCase(*corpus_, *case_);
        if (!problem.isEmpty()) ADD_FAILURE_AT(case_->file.toStdString().c_str(), case_->line) << problem.toStdString();
    }

private:
    std::shared_ptr<const Corpus> corpus_;
    const CorpusCase* case_;
};

class FailureTest : public ::testing::Test {
public:
    explicit FailureTest(std::string message) : message_(std::move(message)) {}
    void TestBody() override { ADD_FAILURE() << message_; }

private:
    std::string message_;
};

void registerFailure(const char* name, const std::string& message) {
    ::testing::RegisterTest("TsqlCorpus", name, nullptr, nullptr, __FILE__, __LINE__,
                            [message]() -> ::testing::Test* { return new FailureTest(message); });
}

const QString corpusDirectory = QStringLiteral(KIVDB_SOURCE_DIR "/src/kivdb/dialect/corpus");

void parseFile(const QString& path, Corpus& corpus) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw CorpusFormatError(path, 0, QStringLiteral("cannot be read"));
    CorpusParser(path, corpus).parse(QString::fromUtf8(file.readAll()));
}

const bool corpusRegistered = [] {
    auto corpus = std::make_shared<Corpus>();
    const QStringList files = QDir(corpusDirectory).entryList({QStringLiteral("*.tsql")}, QDir::Files, QDir::Name);
    if (files.isEmpty()) {
        registerFailure("data_files_present", "no *.tsql file in " + corpusDirectory.toStdString());
        return false;
    }
    try {
        for (const QString& file : files) parseFile(corpusDirectory + QLatin1Char('/') + file, *corpus);
        checkFixtureNames(*corpus);
        QHash<QString, const CorpusCase*> byName;
        for (const CorpusCase& c : corpus->cases) {
            const QString name = testNameOf(c);
            if (const CorpusCase* other = byName.value(name))
                throw CorpusFormatError(c.file, c.line, QStringLiteral("case name %1 also used at %2:%3")
                                                            .arg(name, other->file).arg(other->line));
            byName.insert(name, &c);
        }
    } catch (const CorpusFormatError& e) {
        registerFailure("data_files_well_formed", e.what());
        return false;
    }
    for (const CorpusCase& c : corpus->cases) {
        const CorpusCase* theCase = &c;
        ::testing::RegisterTest("TsqlCorpus", testNameOf(c).toStdString().c_str(), nullptr, nullptr,
                              c.file.toStdString().c_str(), c.line,
                                [corpus, theCase]() -> ::testing::Test* { return new CorpusCaseTest(corpus, theCase); });
    }
    return true;
}();

// ---------------------------------------------------------------------------------------------
// The runner's own checks: a broken data file or a wrong expectation must never pass quietly.

Corpus parseText(const QString& text) {
    Corpus corpus;
    CorpusParser(QStringLiteral("sample.tsql"), corpus).parse(text);
    checkFixtureNames(corpus);
    return corpus;
}

struct MalformedText {
    const char* what;
    const char* text;
    int line;
};

class CorpusFormat : public ::testing::TestWithParam<MalformedText> {};

TEST_P(CorpusFormat, IsRefusedNamingFileAndLine) {
    const MalformedText& sample = GetParam();
    try {
        parseText(QString::fromUtf8(sample.text));
        FAIL() << "accepted: " << sample.text;
    } catch (const CorpusFormatError& e) {
        EXPECT_TRUE(QString::fromUtf8(e.what()).startsWith(QStringLiteral("sample.tsql:%1: ").arg(sample.line)))
            << e.what();
    }
}

INSTANTIATE_TEST_SUITE_P(
    MalformedFiles, CorpusFormat,
    ::testing::Values(
        MalformedText{"text before any block", "select 1\n", 1},
        MalformedText{"case without expectation", "-- case: a\nselect 1\n", 3},
        MalformedText{"expectation without statement", "-- case: a\n-- expect no rows\n", 2},
        MalformedText{"unknown expectation", "-- case: a\nselect 1\n-- expect some rows\n", 3},
        MalformedText{"rows announced, none written", "-- case: a\nselect 1\n-- expect ordered\n-- case: b\n", 4},
        MalformedText{"rows after an error expectation", "-- case: a\nselect 1\n-- expect error\n1\n", 4},
        MalformedText{"second expectation", "-- case: a\nselect 1\n-- expect ordered\n1\n-- expect ordered\n", 5},
        MalformedText{"then without expectation", "-- case: a\nselect 1\n-- expect affected: 1\n-- then select 1\n", 5},
        MalformedText{"then without select", "-- case: a\nselect 1\n-- expect no rows\n-- then\n", 4},
        MalformedText{"unknown fixture", "-- case: a\n-- fixture: nowhere\nselect 1\n-- expect no rows\n", 1},
        MalformedText{"fixture defined twice", "-- fixture: f\ncreate table t (a int)\n-- fixture: f\n", 3},
        MalformedText{"empty fixture", "-- fixture: f\n-- case: a\n", 2},
        MalformedText{"continuation first", "-- fixture: f\n  create table t (a int)\n", 2}),
    [](const ::testing::TestParamInfo<MalformedText>& info) {
        return QString::fromUtf8(info.param.what).replace(QRegularExpression(QStringLiteral("\\W+")), QStringLiteral("_")).toStdString();
    });

TEST(CorpusFormat, ReadsFixturesCasesAndChecks) {
    const Corpus corpus = parseText(QStringLiteral(
        "-- fixture: t\n"
        "create table t (a int,\n"
        "    b varchar(10))\n"
        "insert into t values (1, 'x')\n"
        "-- case: two lines\n"
        "-- fixture: t\n"
        " select a,\n"
        "  b from t \n"
        "-- a comment\n"
        "-- expect unordered\n"
        "1\tx\n"
        "NULL\t''\n"
        "-- then select count(*) from t\n"
        "-- expect affected: 0\n"));
    ASSERT_EQ(corpus.fixtures.value(QStringLiteral("t")).statements.size(), 2u);
    EXPECT_EQ(corpus.fixtures.value(QStringLiteral("t")).statements[0].text, QStringLiteral("create table t (a int,\n    b varchar(10))"));
    ASSERT_EQ(corpus.cases.size(), 1u);
    const CorpusCase& c = corpus.cases[0];
    EXPECT_EQ(c.statement, QStringLiteral(" select a,\n  b from t "));
    EXPECT_EQ(c.expected.rows, (QStringList{QStringLiteral("1\tx"), QStringLiteral("NULL\t''")}));
    ASSERT_EQ(c.checks.size(), 1u);
    EXPECT_EQ(c.checks[0].select, QStringLiteral("select count(*) from t"));
    EXPECT_EQ(c.checks[0].expected.kind, Expectation::Affected);
    EXPECT_EQ(testNameOf(c), QStringLiteral("sample_two_lines"));
}

// Plain SQL that any dialect runs unchanged: the comparison itself must see every difference.
TEST(CorpusRunner, ReportsEveryKindOfMismatch) {
    const QString fixture = QStringLiteral(
        "-- fixture: t\ncreate table t (a int, b float, c varchar(10))\n"
        "insert into t (a, b, c) values (1, 12.5, 'x')\ninsert into t (a, b, c) values (2, 3.0, '')\n");
    struct Sample {
        const char* body;
        bool passes;
    };
    const Sample samples[] = {
        {"select a, b, c from t order by a\n-- expect ordered\n1\t12.5\tx\n2\t3\t''\n", true},
        {"select a, b, c from t order by a\n-- expect ordered\n2\t3\t''\n1\t12.5\tx\n", false},
        {"select a, b, c from t order by a\n-- expect unordered\n2\t3\t''\n1\t12.5\tx\n", true},
        {"select a from t\n-- expect unordered\n1\n", false},
        {"select a from t where a > 5\n-- expect no rows\n", true},
        {"select a from t\n-- expect no rows\n", false},
        {"select nosuch from t\n-- expect error: nosuch\n", true},
        {"select nosuch from t\n-- expect error: something else\n", false},
        {"select a from t\n-- expect error\n", false},
        {"select nosuch from t\n-- expect ordered\n1\n", false},
        {"delete from t where a = 1\n-- expect affected: 1\n-- then select a from t\n-- expect ordered\n2\n", true},
        {"delete from t where a = 1\n-- expect affected: 2\n", false},
        {"delete from t where a = 1\n-- expect affected: 1\n-- then select a from t\n-- expect ordered\n1\n", false},
    };
    for (const Sample& sample : samples) {
        const Corpus corpus = parseText(fixture + QStringLiteral("-- case: c\n-- fixture: t\n") + QString::fromUtf8(sample.body));
        EXPECT_EQ(runCase(corpus, corpus.cases.at(0)).isEmpty(), sample.passes) << sample.body;
    }
}

}  // namespace
}  // namespace kivdb::dialect
