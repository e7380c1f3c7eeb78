#pragma once
// The catalog of an embedded database, read from SQLite's own table information.
//
// Declared types: the DDL translator writes each T-SQL type as a SQLite type name that
// keeps the T-SQL name readable and picks the storage affinity the suite needs:
//   varchar(n), nvarchar(n), char(n), text ...  as written      TEXT affinity
//   int, smallint, tinyint, bigint              as written      INTEGER affinity
//   bit                                         bit             NUMERIC (0/1)
//   float, real                                 as written      REAL
//   money, smallmoney                           money_real ...  REAL
//   decimal(p,s), numeric(p,s)                  decimal_real(p,s) ...  REAL
//   datetime, smalldatetime                     datetime_text ...      TEXT (dates are text)
// columnKindFromDeclType reads both spellings (the T-SQL one and the translated one).
#include "dialect/dialect.h"

#include <QHash>

namespace kivdb::dialect {

ColumnKind columnKindFromDeclType(const QString& declType);
// Precision and scale of an exact numeric declared type (int, money_real, decimal_real(18,4) ...).
NumericType numericTypeFromDeclType(const QString& declType);
// nchar, nvarchar, ntext and sysname (an nvarchar).
bool isNationalDeclType(const QString& declType);

// sysobjects lists the user tables, as the server's catalog view does for type 'U'. It is a
// temporary view made when a statement first names it (the catalog's lookup of it, or a
// statement that finds it gone after a rollback): making it reads the whole schema, which a
// connection that never asks for it should not pay for when it opens.
void createSysobjects(sqlite3* db);

class SqliteCatalog : public Catalog {
public:
    explicit SqliteCatalog(sqlite3* db) : db_(db) {}
    std::optional<std::vector<CatalogColumn>> tableColumns(const QString& table) const override;
    // Forget what was read; call after the schema changed.
    void invalidate() { cache_.clear(); }
    // How many times it answered that there is no such table, so a caller can tell a
    // translation that relied on a table being absent.
    int absentAnswers() const { return absentAnswers_; }

private:
    sqlite3* db_;
    mutable QHash<QString, std::optional<std::vector<CatalogColumn>>> cache_;
    mutable int absentAnswers_ = 0;
};

}  // namespace kivdb::dialect
