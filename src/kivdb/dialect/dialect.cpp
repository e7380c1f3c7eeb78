#include "dialect/dialect.h"

#include "dialect/outer_join.h"
#include "dialect/sqlite_printer.h"
#include "dialect/tsql_lexer.h"
#include "dialect/tsql_parser.h"

#include <QRegularExpression>

namespace kivdb::dialect {

QString translateToSqlite(const QString& tsql, const Catalog& catalog) {
    auto statements = parseBatch(tsql);
    BatchCatalog batch(catalog);
    QStringList out;
    for (auto& s : statements) {
        rewriteOldOuterJoins(*s, batch);
        out << printSqlite(*s, batch);
    }
    return out.join(QStringLiteral(";\n"));
}

bool hasOldOuterJoin(const QString& tsql) {
    try {
        for (const Token& t : tokenize(tsql))
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
    QStringList batches;
    QStringList current;
    auto flush = [&]() {
        const QString batch = current.join(QLatin1Char('\n'));
        if (!batch.trimmed().isEmpty()) batches << batch;
        current.clear();
    };
    for (const QString& line : script.split(QLatin1Char('\n'))) {
        if (separator.match(line).hasMatch()) flush();
        else current << line;
    }
    flush();
    return batches;
}

QString TranslationCache::translate(const QString& tsql, const Catalog& catalog) {
    if (auto it = entries_.constFind(tsql); it != entries_.constEnd()) return *it;
    // A bound on memory for hosts that build endless distinct statements.
    constexpr int kMaxEntries = 4096;
    if (entries_.size() >= kMaxEntries) entries_.clear();
    const QString sqlite = translateToSqlite(tsql, catalog);
    entries_.insert(tsql, sqlite);
    return sqlite;
}

}  // namespace kivdb::dialect
