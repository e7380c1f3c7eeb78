#include "dialect/sqlite_catalog.h"

#include "dialect/sqlite_statement.h"

#include <algorithm>
#include <sqlite3.h>

namespace kivdb::dialect {

ColumnKind columnKindFromDeclType(const QString& declType) {
    const QString t = declType.trimmed().toLower();
    auto startsWithAny = [&](std::initializer_list<const char*> prefixes) {
        for (const char* p : prefixes)
            if (t.startsWith(QLatin1String(p))) return true;
        return false;
    };
    if (t.isEmpty()) return ColumnKind::Unknown;
    if (startsWithAny({"money", "smallmoney"})) return ColumnKind::Money;
    if (startsWithAny({"decimal", "numeric"})) return ColumnKind::Decimal;
    if (startsWithAny({"float", "real", "double"})) return ColumnKind::Float;
    if (startsWithAny({"datetime", "smalldatetime", "date"})) return ColumnKind::DateTime;
    if (startsWithAny({"bit"})) return ColumnKind::Bit;
    if (startsWithAny({"int", "smallint", "tinyint", "bigint", "integer"})) return ColumnKind::Integer;
    if (startsWithAny({"varchar", "nvarchar", "char", "nchar", "text", "ntext", "sysname"}))
        return ColumnKind::Text;
    return ColumnKind::Unknown;
}

NumericType numericTypeFromDeclType(const QString& declType) {
    const QString t = declType.trimmed().toLower();
    switch (columnKindFromDeclType(t)) {
    case ColumnKind::Bit: return {1, 0};
    case ColumnKind::Integer:
        if (t.startsWith(QLatin1String("tinyint"))) return {3, 0};
        if (t.startsWith(QLatin1String("smallint"))) return {5, 0};
        if (t.startsWith(QLatin1String("bigint"))) return {19, 0};
        return {10, 0};
    case ColumnKind::Money: return t.startsWith(QLatin1String("smallmoney")) ? NumericType{10, 4} : NumericType{19, 4};
    case ColumnKind::Decimal: {
        // decimal_real(p,s); without a scale it is 0, without a precision 18.
        NumericType n{18, 0};
        const int open = int(t.indexOf(QLatin1Char('('))), close = int(t.indexOf(QLatin1Char(')')));
        if (open < 0 || close < open) return n;
        const QStringList parts = t.mid(open + 1, close - open - 1).split(QLatin1Char(','));
        n.precision = std::clamp(parts[0].trimmed().toInt(), 1, 38);
        if (parts.size() > 1) n.scale = std::clamp(parts[1].trimmed().toInt(), 0, n.precision);
        return n;
    }
    default: return {};
    }
}

bool isNationalDeclType(const QString& declType) {
    const QString t = declType.trimmed().toLower();
    return t.startsWith(QLatin1String("nchar")) || t.startsWith(QLatin1String("nvarchar")) || t.startsWith(QLatin1String("ntext")) ||
           t.startsWith(QLatin1String("sysname"));
}

void createSysobjects(sqlite3* db) {
    sqlite3_exec(db,
                 "CREATE TEMP VIEW IF NOT EXISTS sysobjects AS SELECT name COLLATE TSQL_CI AS name, rowid AS id, "
                 "'U' COLLATE TSQL_CI AS type, 'U' COLLATE TSQL_CI AS xtype FROM main.sqlite_master "
                 "WHERE type = 'table' AND substr(name, 1, 7) <> 'sqlite_'",
                 nullptr, nullptr, nullptr);
}

std::optional<std::vector<CatalogColumn>> SqliteCatalog::tableColumns(const QString& table) const {
    const QString key = table.toLower();
    if (auto it = cache_.constFind(key); it != cache_.constEnd()) {
        if (!*it) ++absentAnswers_;
        return *it;
    }
    if (key == QLatin1String("sysobjects")) createSysobjects(db_);

    std::optional<std::vector<CatalogColumn>> result;
    std::vector<CatalogColumn> columns;
    try {
        // table_xinfo searches temp first, then main, as unqualified names resolve.
        SqliteStatement stmt(db_, "select name, type, pk from pragma_table_xinfo(?1)");
        stmt.bind(1, table);
        while (stmt.step()) {
            const QString type = stmt.text(1);
            // The DDL translation declares identity columns, and only them, as INTEGER keys.
            const bool identity = type == QLatin1String("INTEGER") && stmt.integer(2) == 1;
            columns.push_back({stmt.text(0), columnKindFromDeclType(type), identity, numericTypeFromDeclType(type),
                               isNationalDeclType(type), type.startsWith(QLatin1String("smalldatetime"), Qt::CaseInsensitive)});
        }
    } catch (const EngineError&) {
        // An engine that fails to answer ends the list where it stopped.
    }
    if (!columns.empty()) result = std::move(columns);
    else ++absentAnswers_;
    cache_.insert(key, result);
    return result;
}

}  // namespace kivdb::dialect
