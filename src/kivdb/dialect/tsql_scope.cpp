#include "dialect/tsql_scope.h"

namespace kivdb::dialect {

QString selectItemName(const SelectItem& item) {
    if (!item.alias.isEmpty()) return item.alias;
    if (item.expr && item.expr->kind == ExprKind::Column) return item.expr->parts.last();
    return QString();
}

void Scope::addSources(const std::vector<TableSourcePtr>& from) {
    for (const auto& source : from) addSource(*source);
}

void Scope::addSource(const TableSource& source) {
    switch (source.kind) {
    case TableSource::Table:
        addTable(source.exposedName(), source.name);
        break;
    case TableSource::Derived: {
        ScopeTable t;
        t.exposed = source.alias;
        std::vector<CatalogColumn> columns;
        bool known = true;
        for (const auto& item : source.derived->cores.front().items) {
            if (item.expr->kind == ExprKind::Star) known = false;
            columns.push_back({selectItemName(item), ColumnKind::Unknown});
        }
        if (known) t.columns = std::move(columns);
        tables_.push_back(std::move(t));
        break;
    }
    case TableSource::Join:
        addSource(*source.left);
        addSource(*source.right);
        break;
    }
}

void Scope::addTable(const QString& exposed, const QString& table) {
    tables_.push_back({exposed, table, catalog_.tableColumns(table)});
}

void Scope::typeDerived(const QString& exposed, const std::vector<CatalogColumn>& columns) {
    for (auto& t : tables_)
        if (t.table.isEmpty() && t.exposed.compare(exposed, Qt::CaseInsensitive) == 0) t.columns = columns;
}

bool Scope::fullyKnown() const {
    for (const auto& t : tables_)
        if (!t.columns) return false;
    return true;
}

Scope::Resolution Scope::resolve(const QStringList& parts) const {
    Resolution r;
    if (parts.isEmpty()) return r;
    const QString& column = parts.last();
    auto columnIn = [&](const ScopeTable& t, bool& found) {
        found = false;
        if (!t.columns) return CatalogColumn{};
        for (const auto& c : *t.columns)
            if (c.name.compare(column, Qt::CaseInsensitive) == 0) {
                found = true;
                return c;
            }
        return CatalogColumn{};
    };
    if (parts.size() >= 2) {
        const QString& qualifier = parts[parts.size() - 2];
        for (int i = 0; i < int(tables_.size()); ++i) {
            if (tables_[i].exposed.compare(qualifier, Qt::CaseInsensitive) != 0) continue;
            bool found = false;
            r.scope = this;
            r.tableIndex = i;
            const CatalogColumn c = columnIn(tables_[i], found);
            r.kind = c.kind;
            r.numeric = c.numeric;
            r.national = c.national;
            return r;
        }
        return parent_ ? parent_->resolve(parts) : r;
    }
    for (int i = 0; i < int(tables_.size()); ++i) {
        bool found = false;
        const CatalogColumn c = columnIn(tables_[i], found);
        if (!found) continue;
        if (r.scope) {
            r.ambiguous = true;
            return r;
        }
        r.scope = this;
        r.tableIndex = i;
        r.kind = c.kind;
        r.numeric = c.numeric;
        r.national = c.national;
    }
    if (r.scope || !fullyKnown()) return r;
    return parent_ ? parent_->resolve(parts) : r;
}

}  // namespace kivdb::dialect
