#pragma once
// Name resolution of one select level: the tables of its FROM clause (by alias or name),
// with their columns when the catalog knows them, and the enclosing levels behind it.
#include "dialect/dialect.h"
#include "dialect/tsql_ast.h"

namespace kivdb::dialect {

struct ScopeTable {
    QString exposed;  // alias, or the table name when there is none
    QString table;    // empty for a derived table
    std::optional<std::vector<CatalogColumn>> columns;
};

class Scope {
public:
    Scope(const Catalog& catalog, const Scope* parent) : catalog_(catalog), parent_(parent) {}

    // Adds every table of a FROM list, joins included.
    void addSources(const std::vector<TableSourcePtr>& from);
    void addSource(const TableSource& source);
    void addTable(const QString& exposed, const QString& table);
    // A derived table's columns with their types (a * expanded), known once its select is
    // translated.
    void typeDerived(const QString& exposed, const std::vector<CatalogColumn>& columns);

    struct Resolution {
        const Scope* scope = nullptr;  // the level the name belongs to; null when unresolved
        int tableIndex = -1;
        ColumnKind kind = ColumnKind::Unknown;
        NumericType numeric;
        bool national = false;
        bool ambiguous = false;
    };
    // parts: {"x"} or {"a", "x"} (longer names use their last two parts).
    Resolution resolve(const QStringList& parts) const;

    // True when every table of this level has known columns, so a name missing from all of
    // them is surely not a column here.
    bool fullyKnown() const;

    const std::vector<ScopeTable>& tables() const { return tables_; }
    const Catalog& catalog() const { return catalog_; }
    const Scope* parent() const { return parent_; }

private:
    const Catalog& catalog_;
    const Scope* parent_;
    std::vector<ScopeTable> tables_;
};

// Column names of a derived table or select into: the alias, or the column's own name.
QString selectItemName(const SelectItem& item);

}  // namespace kivdb::dialect
