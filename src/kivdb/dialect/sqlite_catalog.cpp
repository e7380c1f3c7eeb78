#include "dialect/sqlite_catalog.h"

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

std::optional<std::vector<CatalogColumn>> SqliteCatalog::tableColumns(const QString& table) const {
    const QString key = table.toLower();
    if (auto it = cache_.constFind(key); it != cache_.constEnd()) return *it;

    std::optional<std::vector<CatalogColumn>> result;
    sqlite3_stmt* stmt = nullptr;
    // table_xinfo searches temp first, then main, as unqualified names resolve.
    if (sqlite3_prepare_v2(db_, "select name, type, pk from pragma_table_xinfo(?1)", -1, &stmt, nullptr) ==
        SQLITE_OK) {
        const QByteArray name = table.toUtf8();
        sqlite3_bind_text(stmt, 1, name.constData(), int(name.size()), SQLITE_TRANSIENT);
        std::vector<CatalogColumn> columns;
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            auto text = [&](int i) {
                return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, i)));
            };
            // The DDL translation declares identity columns, and only them, as INTEGER keys.
            const bool identity = text(1) == QLatin1String("INTEGER") && sqlite3_column_int(stmt, 2) == 1;
            columns.push_back({text(0), columnKindFromDeclType(text(1)), identity, numericTypeFromDeclType(text(1)),
                               isNationalDeclType(text(1)), text(1).startsWith(QLatin1String("smalldatetime"), Qt::CaseInsensitive)});
        }
        if (!columns.empty()) result = std::move(columns);
    }
    sqlite3_finalize(stmt);
    cache_.insert(key, result);
    return result;
}

}  // namespace kivdb::dialect
