#pragma once
// Syntax tree -> SQLite text that gives SQL Server's results on the embedded database,
// with the runtime functions and collations of registerRuntime.
#include "dialect/dialect.h"
#include "dialect/tsql_ast.h"

#include <QHash>

namespace kivdb::dialect {

// The database's catalog plus the tables a batch creates before they exist, so later
// statements of the same batch are typed too.
class BatchCatalog : public Catalog {
public:
    explicit BatchCatalog(const Catalog& base) : base_(base) {}
    std::optional<std::vector<CatalogColumn>> tableColumns(const QString& table) const override;
    void define(const QString& table, std::optional<std::vector<CatalogColumn>> columns);

private:
    const Catalog& base_;
    QHash<QString, std::optional<std::vector<CatalogColumn>>> local_;
};

// Declared SQLite type for a T-SQL column type (see sqlite_catalog.h), with its collation.
struct DeclaredType {
    QString sqliteType;
    ColumnKind kind = ColumnKind::Unknown;
    QString collation;  // TSQL_CI, TSQL_DATE or empty
    NumericType numeric = {};
};
DeclaredType declaredType(const DataType& type);

// Statements of the translation of one T-SQL statement (a DDL statement may need several).
// For a select that returns rows, resultKinds receives the kinds of its columns when known,
// resultScales the scales of its money and decimal columns (-1 for the others).
QStringList printSqlite(const Statement& statement, BatchCatalog& catalog,
                        std::optional<std::vector<ColumnKind>>* resultKinds = nullptr,
                        std::optional<std::vector<int>>* resultScales = nullptr);

}  // namespace kivdb::dialect
