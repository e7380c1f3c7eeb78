#include "dialect/dialect.h"

#include "dialect/outer_join.h"
#include "dialect/sqlite_printer.h"
#include "dialect/tsql_lexer.h"
#include "dialect/tsql_parser.h"

#include <QRegularExpression>
#include <sqlite3.h>

namespace kivdb::dialect {

SqliteTranslation translateForSqlite(const QString& tsql, const Catalog& catalog) {
    auto statements = parseBatch(tsql);
    BatchCatalog batch(catalog);
    QStringList out;
    std::optional<std::vector<ColumnKind>> kinds;
    std::optional<std::vector<int>> scales;
    for (auto& s : statements) {
        rewriteOldOuterJoins(*s, batch);
        kinds.reset();
        scales.reset();
        out << printSqlite(*s, batch, &kinds, &scales);
        s.reset();  // a long statement's tree goes before the texts are joined
    }
    return {out.size() == 1 ? std::move(out.front()) : out.join(QStringLiteral(";\n")),
            kinds.value_or(std::vector<ColumnKind>{}), scales.value_or(std::vector<int>{})};
}

QString translateToSqlite(const QString& tsql, const Catalog& catalog) { return translateForSqlite(tsql, catalog).sql; }

bool hasOldOuterJoin(const QString& tsql) {
    try {
        Lexer lexer(tsql);
        for (Token t = lexer.next(); t.type != TokenType::End; t = lexer.next())
            if (t.isOp("*=") || t.isOp("=*")) return true;
    } catch (const SqlError&) {
        // Text the tokenizer refuses cannot be rewritten either; the server reports it.
    }
    return false;
}

QString rewriteOuterJoins(const QString& tsql, const Catalog& catalog) {
    if (!hasOldOuterJoin(tsql)) return tsql;
    auto statements = parseBatch(tsql);
    for (auto& s : statements) rewriteOldOuterJoins(*s, catalog);
    return printRewrittenTsql(tsql, statements);
}

QStringList splitBatches(const QString& script) {
    static const QRegularExpression separator(QStringLiteral("^\\s*go\\s*$"),
                                              QRegularExpression::CaseInsensitiveOption);
    // A batch of blanks and "--" comments alone has nothing to run.
    auto onlyComments = [](const QStringList& lines) {
        for (const QString& line : lines) {
            const QString t = line.trimmed();
            if (!t.isEmpty() && !t.startsWith(QLatin1String("--"))) return false;
        }
        return true;
    };
    QStringList batches;
    QStringList current;
    auto flush = [&]() {
        if (!onlyComments(current)) batches << current.join(QLatin1Char('\n'));
        current.clear();
    };
    QString text = script;
    text.remove(QLatin1Char('\r'));  // scripts saved with Windows line ends
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (separator.match(line).hasMatch()) flush();
        else current << line;
    }
    flush();
    return batches;
}

SqliteTranslation TranslationCache::translateTyped(const QString& tsql, const Catalog& catalog) {
    if (auto it = entries_.constFind(tsql); it != entries_.constEnd()) return *it;
    SqliteTranslation translation = translateForSqlite(tsql, catalog);
    // Both texts, the kinds and the hash node's own share.
    constexpr qsizetype kEntryOverhead = 128;
    const qsizetype entryBytes = (tsql.size() + translation.sql.size()) * qsizetype(sizeof(QChar)) +
                                 qsizetype(translation.resultKinds.size() * sizeof(ColumnKind) + translation.resultScales.size() * sizeof(int)) + kEntryOverhead;
    if (entryBytes > kMaxBytes) return translation;
    if (bytes_ + entryBytes > kMaxBytes) clear();
    entries_.insert(tsql, translation);
    bytes_ += entryBytes;
    return translation;
}

QString quotedExcerpt(const QString& text) {
    constexpr qsizetype kMaxQuoted = 100;
    if (text.size() <= kMaxQuoted) return text;
    qsizetype cut = kMaxQuoted;
    if (text[cut - 1].isHighSurrogate()) --cut;  // never half a character
    return text.left(cut) + QStringLiteral("...");
}

QString serverMessage(const QString& engineMessage) {
    // SQLite's parser stack holds fewer nested subqueries than the server's 32: 8 levels of
    // subqueries compared with text in a where clause, 12 of plain exists (derived tables
    // are printed so that they do not count). It also ends a sum of some 1300 terms, whose
    // runtime calls nest, and its expression trees end at depth 1000.
    if (engineMessage == QLatin1String("parser stack overflow") ||
        engineMessage.startsWith(QLatin1String("Expression tree is too large")))
        return QLatin1String(kNestedTooDeeply) +
               QStringLiteral(" The embedded database nests subqueries about 10 levels deep (the server 32) and "
                              "takes about 1000 operators in one expression.");
    // The engine's own words, in the server's: names it does not know, statements that do
    // not fit the table. Each row reads the engine's message and words the server's.
    using Match = QRegularExpressionMatch;
    struct Wording {
        QRegularExpression engine;
        QString (*server)(const Match&);
    };
    static const auto name = [](const Match& m, int i) { return quotedExcerpt(m.captured(i)); };
    static const Wording kWordings[] = {
        {QRegularExpression(QStringLiteral("^no such table: (.*)$")),
         [](const Match& m) { return QStringLiteral("Invalid object name '%1'.").arg(name(m, 1)); }},
        {QRegularExpression(QStringLiteral("^no such column: (.*)$")),
         [](const Match& m) {
             return m.captured(1).contains(QLatin1Char('.'))
                        ? QStringLiteral("The multi-part identifier \"%1\" could not be bound.").arg(name(m, 1))
                        : QStringLiteral("Invalid column name '%1'.").arg(name(m, 1));
         }},
        {QRegularExpression(QStringLiteral("^table .* has no column named (.*)$")),
         [](const Match& m) { return QStringLiteral("Invalid column name '%1'.").arg(name(m, 1)); }},
        {QRegularExpression(QStringLiteral("^no such function: (.*)$")),
         [](const Match& m) { return QStringLiteral("'%1' is not a recognized built-in function name.").arg(name(m, 1)); }},
        {QRegularExpression(QStringLiteral("^ambiguous column name: (.*)$")),
         [](const Match& m) { return QStringLiteral("Ambiguous column name '%1'.").arg(name(m, 1)); }},
        {QRegularExpression(QStringLiteral("^near \"(.*)\": syntax error$"), QRegularExpression::DotMatchesEverythingOption),
         [](const Match& m) { return QStringLiteral("Incorrect syntax near '%1'.").arg(name(m, 1)); }},
        {QRegularExpression(QStringLiteral("^(?:table|view) \"?(.*?)\"? already exists$")),
         [](const Match& m) { return QStringLiteral("There is already an object named '%1' in the database.").arg(name(m, 1)); }},
        {QRegularExpression(QStringLiteral("^table .* has \\d+ columns but \\d+ values were supplied$")),
         [](const Match&) { return QStringLiteral("Column name or number of supplied values does not match table definition."); }},
        {QRegularExpression(QStringLiteral("^(\\d+) values for (\\d+) columns$")),
         [](const Match& m) {
             const bool moreColumns = m.captured(1).toLongLong() < m.captured(2).toLongLong();
             return QStringLiteral("There are %1 columns in the INSERT statement than values specified in the VALUES "
                                   "clause. The number of values in the VALUES clause must match the number of columns "
                                   "specified in the INSERT statement.")
                 .arg(moreColumns ? QStringLiteral("more") : QStringLiteral("fewer"));
         }},
    };
    for (const Wording& w : kWordings)
        if (const Match m = w.engine.match(engineMessage); m.hasMatch()) return w.server(m);
    return engineMessage;
}

ErrorKind engineErrorKind(int resultCode) {
    switch (resultCode & 0xff) {
    case SQLITE_ERROR:
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG:
    case SQLITE_RANGE: return ErrorKind::Sql;
    default: return ErrorKind::Database;
    }
}

}  // namespace kivdb::dialect
