#include "dialect/dialect.h"

#include "dialect/outer_join.h"
#include "dialect/sqlite_printer.h"
#include "dialect/tsql_lexer.h"
#include "dialect/tsql_parser.h"

#include <QRegularExpression>
#include <algorithm>
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

namespace {

constexpr qsizetype kEntryOverhead = 128;  // a hash node's own share

qsizetype entryBytes(const QString& tsql, const SqliteTranslation& translation) {
    return (tsql.size() + translation.sql.size()) * qsizetype(sizeof(QChar)) +
           qsizetype(translation.resultKinds.size() * sizeof(ColumnKind) + translation.resultScales.size() * sizeof(int)) +
           kEntryOverhead;
}

qsizetype templateBytes(const QString& shape, const TranslationCache::Template& t) {
    qsizetype chars = shape.size();
    for (const QString& piece : t.pieces) chars += piece.size();
    return chars * qsizetype(sizeof(QChar)) +
           qsizetype(t.holes.size() * sizeof(int) + t.resultKinds.size() * sizeof(ColumnKind) + t.resultScales.size() * sizeof(int)) +
           kEntryOverhead;
}

// Stands for a lifted literal in a shape; the tokenizer refuses it outside a literal.
constexpr QChar kHole = QChar(1);

// A statement with its liftable literals taken out: the texts around them and their values.
struct Shape {
    QStringList around;
    QStringList literals;
    QString key() const { return around.join(kHole); }
};

// False for a text no number reading takes (most names and codes), without reading it as one.
bool mayBeNumber(const QString& v) {
    for (const QChar c : v)
        if (!c.isDigit() && !c.isSpace() && c != u'+' && c != u'-' && c != u'.' && c != u'e' && c != u'E')
            return v.contains(QLatin1String("inf"), Qt::CaseInsensitive) || v.contains(QLatin1String("nan"), Qt::CaseInsensitive);
    return true;
}

// A plain text literal whose value no translation reads: not a number, a truth value or
// blank (converted where a number is wanted), no like pattern, no quote or control character.
bool liftable(const Token& t) {
    if (t.type != TokenType::String || t.national) return false;
    const QString v = t.text.trimmed();
    bool number = false;
    if (mayBeNumber(v)) v.toDouble(&number);
    if (v.isEmpty() || number || v.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 ||
        v.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
        return false;
    for (const QChar c : t.text)
        if (c == u'%' || c == u'_' || c == u'[' || c == u']' || c == u'\'' || c.unicode() < 0x20) return false;
    return true;
}

// The shape of a select, insert, update or delete with liftable literals, all different (the
// translator compares equal literals, as grouping does); nothing for any other text.
std::optional<Shape> shapeOf(const QString& tsql) {
    try {
        Lexer lexer(tsql);
        Token t = lexer.next();
        if (!t.isKeyword("select") && !t.isKeyword("insert") && !t.isKeyword("update") && !t.isKeyword("delete"))
            return std::nullopt;
        Shape shape;
        int copied = 0;
        for (; t.type != TokenType::End; t = lexer.next()) {
            if (!liftable(t)) continue;
            if (shape.literals.contains(t.text)) return std::nullopt;
            shape.around << tsql.mid(copied, t.begin - copied);
            shape.literals << t.text;
            copied = t.end;
        }
        if (shape.literals.isEmpty()) return std::nullopt;
        shape.around << tsql.mid(copied);
        return shape;
    } catch (const SqlError&) {
        return std::nullopt;  // the translation reports it
    }
}

QString marker(qsizetype slot) { return kHole + QString::number(slot) + kHole; }

SqliteTranslation fill(const TranslationCache::Template& t, const QStringList& literals) {
    SqliteTranslation out{t.pieces.front(), t.resultKinds, t.resultScales, t.pieces.front(), {}};
    for (size_t i = 0; i < t.holes.size(); ++i) {
        const QString& piece = t.pieces[qsizetype(i) + 1];
        const QString& literal = literals[t.holes[i]];
        out.sql += QLatin1Char('\'') + literal + QLatin1Char('\'') + piece;
        out.parameterizedSql += QLatin1Char('?') + QString::number(i + 1) + piece;
        out.parameters << literal;
    }
    return out;
}

// The shape translated with a marker for each literal; lifted when the markers come out as
// literals copied into the text and putting the statement's own literals back gives exactly
// its translation.
TranslationCache::Template templateOf(const Shape& shape, const SqliteTranslation& translation, const Catalog& catalog) {
    TranslationCache::Template t;
    QString marked = shape.around.front();
    for (qsizetype i = 0; i < shape.literals.size(); ++i)
        marked += QLatin1Char('\'') + marker(i) + QLatin1Char('\'') + shape.around[i + 1];
    SqliteTranslation withMarkers;
    try {
        withMarkers = translateForSqlite(marked, catalog);
    } catch (const SqlError&) {
        return t;
    }
    const QString& s = withMarkers.sql;
    std::vector<int> uses(size_t(shape.literals.size()), 0);
    qsizetype from = 0;
    for (qsizetype i = s.indexOf(kHole); i >= 0; i = s.indexOf(kHole, from)) {
        const qsizetype close = s.indexOf(kHole, i + 1);
        bool number = false;
        const int slot = close < 0 ? -1 : s.mid(i + 1, close - i - 1).toInt(&number);
        if (!number || slot < 0 || slot >= shape.literals.size() || i == 0 || s[i - 1] != u'\'' || close + 1 >= s.size() ||
            s[close + 1] != u'\'')
            return t;
        t.pieces << s.mid(from, i - 1 - from);
        t.holes.push_back(slot);
        ++uses[size_t(slot)];
        from = close + 2;
    }
    t.pieces << s.mid(from);
    if (std::find(uses.begin(), uses.end(), 0) != uses.end()) return t;
    t.resultKinds = withMarkers.resultKinds;
    t.resultScales = withMarkers.resultScales;
    const SqliteTranslation again = fill(t, shape.literals);
    t.lifted = again.sql == translation.sql && again.resultKinds == translation.resultKinds &&
               again.resultScales == translation.resultScales;
    return t;
}

}  // namespace

std::optional<SqliteTranslation> TranslationCache::find(const QString& tsql) const {
    if (const auto it = entries_.constFind(tsql); it != entries_.constEnd()) return *it;
    const std::optional<Shape> shape = shapeOf(tsql);
    if (!shape) return std::nullopt;
    const auto it = shapes_.constFind(shape->key());
    if (it == shapes_.constEnd() || !it->lifted) return std::nullopt;
    return fill(*it, shape->literals);
}

void TranslationCache::forget(const QString& tsql) {
    if (const auto it = entries_.constFind(tsql); it != entries_.constEnd()) {
        bytes_ -= entryBytes(tsql, *it);
        entries_.erase(it);
    }
    const std::optional<Shape> shape = shapeOf(tsql);
    if (!shape) return;
    const QString key = shape->key();
    if (const auto it = shapes_.constFind(key); it != shapes_.constEnd()) {
        bytes_ -= templateBytes(key, *it);
        shapes_.erase(it);
    }
}

SqliteTranslation TranslationCache::translateTyped(const QString& tsql, const Catalog& catalog) {
    if (auto it = entries_.constFind(tsql); it != entries_.constEnd()) return *it;
    const std::optional<Shape> shape = shapeOf(tsql);
    const QString key = shape ? shape->key() : QString();
    if (shape)
        if (const auto it = shapes_.constFind(key); it != shapes_.constEnd() && it->lifted) return fill(*it, shape->literals);
    SqliteTranslation translation = translateForSqlite(tsql, catalog);
    if (shape && !shapes_.contains(key)) {
        Template t = templateOf(*shape, translation, catalog);
        if (t.lifted) translation = fill(t, shape->literals);  // the same text, with its parameters
        const bool lifted = t.lifted;
        keepShape(key, std::move(t));
        if (lifted) return translation;
    }
    keep(tsql, translation);
    return translation;
}

void TranslationCache::keep(const QString& tsql, const SqliteTranslation& translation) {
    const qsizetype size = entryBytes(tsql, translation);
    if (size > kMaxBytes) return;
    if (bytes_ + size > kMaxBytes) clear();
    entries_.insert(tsql, translation);
    bytes_ += size;
}

void TranslationCache::keepShape(const QString& shape, Template shapeTemplate) {
    const qsizetype size = templateBytes(shape, shapeTemplate);
    if (size > kMaxBytes) return;
    if (bytes_ + size > kMaxBytes) clear();
    shapes_.insert(shape, std::move(shapeTemplate));
    bytes_ += size;
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
