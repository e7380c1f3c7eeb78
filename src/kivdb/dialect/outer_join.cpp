#include "dialect/outer_join.h"

#include "dialect/tsql_scope.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

namespace kivdb::dialect {

namespace {

bool isOldJoinOp(const QString& op) { return op == QLatin1String("*=") || op == QLatin1String("=*"); }

void forEachSubquery(const Expr& e, const std::function<void(SelectStmt&)>& visit) {
    if (e.subquery) visit(*e.subquery);
    for (const auto& a : e.args)
        if (a) forEachSubquery(*a, visit);
}

void forEachSubquery(SelectCore& core, const std::function<void(SelectStmt&)>& visit) {
    for (auto& item : core.items) forEachSubquery(*item.expr, visit);
    if (core.where) forEachSubquery(*core.where, visit);
    if (core.having) forEachSubquery(*core.having, visit);
    for (auto& g : core.groupBy) forEachSubquery(*g, visit);
    std::function<void(TableSource&)> sources = [&](TableSource& s) {
        if (s.derived) visit(*s.derived);
        if (s.on) forEachSubquery(*s.on, visit);
        if (s.left) sources(*s.left);
        if (s.right) sources(*s.right);
    };
    for (auto& s : core.from) sources(*s);
}

bool containsOldJoin(const Expr& e) {
    if (e.kind == ExprKind::Binary && isOldJoinOp(e.text)) return true;
    for (const auto& a : e.args)
        if (a && containsOldJoin(*a)) return true;
    return false;
}

void splitConjuncts(ExprPtr e, std::vector<ExprPtr>& out) {
    if (e->kind == ExprKind::Binary && e->text == QLatin1String("and")) {
        for (auto& a : e->args) splitConjuncts(std::move(a), out);
        return;
    }
    out.push_back(std::move(e));
}

// One and-chain of the conjuncts, or the single one, or nothing.
ExprPtr joinConjuncts(std::vector<ExprPtr> conjuncts) {
    if (conjuncts.size() < 2) return conjuncts.empty() ? nullptr : std::move(conjuncts.front());
    auto e = std::make_unique<Expr>();
    e->kind = ExprKind::Binary;
    e->text = QStringLiteral("and");
    e->synthesized = true;
    e->span = {conjuncts.front()->span.begin, conjuncts.back()->span.end};
    for (auto& c : conjuncts) {
        if (!e->args.empty()) e->ops << e->text;
        e->args.push_back(std::move(c));
    }
    return e;
}

// Which tables of one select level an expression reads; subqueries count through their
// correlated references only.
struct TableRefs {
    std::set<int> tables;
    bool unknown = false;
};

class RefCollector {
public:
    RefCollector(const Scope& target, TableRefs& refs) : target_(target), refs_(refs) {}

    void expr(const Expr& e, const Scope& scope) {
        if (e.kind == ExprKind::Column) {
            const auto r = scope.resolve(e.parts);
            if (r.ambiguous && &scope == &target_)
                throw SqlError(QStringLiteral("Ambiguous column name '%1'.").arg(quotedExcerpt(e.parts.last())).toStdString());
            if (r.scope == &target_) refs_.tables.insert(r.tableIndex);
            else if (!r.scope && &scope == &target_) refs_.unknown = true;
        }
        for (const auto& a : e.args)
            if (a) expr(*a, scope);
        if (e.subquery) select(*e.subquery, scope);
    }

private:
    void select(const SelectStmt& s, const Scope& parent) {
        for (const auto& core : s.cores) {
            Scope scope(parent.catalog(), &parent);
            scope.addSources(core.from);
            for (const auto& item : core.items) expr(*item.expr, scope);
            if (core.where) expr(*core.where, scope);
            if (core.having) expr(*core.having, scope);
            for (const auto& g : core.groupBy) expr(*g, scope);
        }
    }

    const Scope& target_;
    TableRefs& refs_;
};

TableRefs tablesOf(const Expr& e, const Scope& scope) {
    TableRefs refs;
    RefCollector(scope, refs).expr(e, scope);
    return refs;
}

[[noreturn]] void notPermitted() {
    throw SqlError("The query contains an outer-join request that is not permitted.");
}

TableSourcePtr makeJoin(JoinType type, TableSourcePtr left, TableSourcePtr right, ExprPtr on) {
    auto join = std::make_unique<TableSource>();
    join->kind = TableSource::Join;
    join->synthesized = true;
    join->joinType = type;
    join->span = {std::min(left->span.begin, right->span.begin), std::max(left->span.end, right->span.end)};
    join->left = std::move(left);
    join->right = std::move(right);
    join->on = std::move(on);
    return join;
}

void rewriteCore(SelectCore& core, const Scope& scope) {
    if (!core.where || !containsOldJoin(*core.where)) return;
    for (const auto& source : core.from)
        if (source->kind == TableSource::Join)
            throw SqlError("Outer join operators cannot be specified in a query containing joined tables.");

    std::vector<ExprPtr> conjuncts;
    splitConjuncts(std::move(core.where), conjuncts);

    const int tableCount = int(core.from.size());
    struct Inner {
        bool used = false;
        std::set<int> outers;
        std::vector<ExprPtr> on;
    };
    std::vector<Inner> inners(static_cast<size_t>(tableCount));
    std::vector<ExprPtr> remaining;
    std::vector<ExprPtr> others;

    for (auto& c : conjuncts) {
        if (!(c->kind == ExprKind::Binary && isOldJoinOp(c->text))) {
            if (containsOldJoin(*c)) notPermitted();
            others.push_back(std::move(c));
            continue;
        }
        TableRefs left = tablesOf(*c->args[0], scope);
        TableRefs right = tablesOf(*c->args[1], scope);
        // Between two tables a name the catalog cannot place belongs to the other one.
        if (tableCount == 2) {
            auto other = [](const TableRefs& known) { return std::set<int>{1 - *known.tables.begin()}; };
            if (left.unknown && left.tables.empty() && right.tables.size() == 1 && !right.unknown)
                left = {other(right), false};
            else if (right.unknown && right.tables.empty() && left.tables.size() == 1 && !left.unknown)
                right = {other(left), false};
        }
        if (left.unknown || right.unknown || left.tables.size() != 1 || right.tables.size() != 1 ||
            *left.tables.begin() == *right.tables.begin())
            notPermitted();
        const bool rightJoin = c->text == QLatin1String("=*");
        const int outer = rightJoin ? *right.tables.begin() : *left.tables.begin();
        const int inner = rightJoin ? *left.tables.begin() : *right.tables.begin();
        Inner& in = inners[size_t(inner)];
        in.used = true;
        in.outers.insert(outer);
        c->text = QStringLiteral("=");
        in.on.push_back(std::move(c));
    }
    for (int i = 0; i < tableCount; ++i)
        for (int o : inners[size_t(i)].outers)
            if (o == i) notPermitted();

    // Predicates on one inner table alone belong to its join; everything else filters.
    for (auto& c : others) {
        const TableRefs refs = tablesOf(*c, scope);
        if (!refs.unknown && refs.tables.size() == 1 && inners[size_t(*refs.tables.begin())].used)
            inners[size_t(*refs.tables.begin())].on.push_back(std::move(c));
        else
            remaining.push_back(std::move(c));
    }

    // Groups of tables joined so far; a group's position is that of its first table.
    struct Group {
        TableSourcePtr tree;
        std::set<int> members;
        int first = 0;
    };
    std::vector<Group> groups;
    std::vector<TableSourcePtr> sources = std::move(core.from);
    core.from.clear();
    std::vector<int> groupOf(size_t(tableCount), -1);
    for (int i = 0; i < tableCount; ++i) {
        if (inners[size_t(i)].used) continue;
        groupOf[size_t(i)] = int(groups.size());
        groups.push_back({std::move(sources[size_t(i)]), {i}, i});
    }
    auto mergeInto = [&](int target, int from) {
        Group& t = groups[size_t(target)];
        Group& f = groups[size_t(from)];
        const bool fromFirst = f.first < t.first;
        t.tree = fromFirst ? makeJoin(JoinType::Cross, std::move(f.tree), std::move(t.tree), nullptr)
                           : makeJoin(JoinType::Cross, std::move(t.tree), std::move(f.tree), nullptr);
        for (int m : f.members) {
            t.members.insert(m);
            groupOf[size_t(m)] = target;
        }
        t.first = std::min(t.first, f.first);
        f.members.clear();
    };
    int placed = 0;
    int toPlace = 0;
    for (const auto& in : inners) toPlace += in.used ? 1 : 0;
    bool progress = true;
    while (placed < toPlace && progress) {
        progress = false;
        for (int i = 0; i < tableCount; ++i) {
            Inner& in = inners[size_t(i)];
            if (!in.used || groupOf[size_t(i)] >= 0) continue;
            if (std::any_of(in.outers.begin(), in.outers.end(), [&](int o) { return groupOf[size_t(o)] < 0; }))
                continue;
            const int target = groupOf[size_t(*in.outers.begin())];
            for (int o : in.outers)
                if (groupOf[size_t(o)] != target) mergeInto(target, groupOf[size_t(o)]);
            Group& g = groups[size_t(target)];
            ExprPtr on = joinConjuncts(std::move(in.on));
            // An inner table written before its single outer table becomes a right join, so
            // select * keeps the written column order.
            if (g.members.size() == 1 && i < g.first)
                g.tree = makeJoin(JoinType::Right, std::move(sources[size_t(i)]), std::move(g.tree), std::move(on));
            else
                g.tree = makeJoin(JoinType::Left, std::move(g.tree), std::move(sources[size_t(i)]), std::move(on));
            g.members.insert(i);
            g.first = std::min(g.first, i);
            groupOf[size_t(i)] = target;
            ++placed;
            progress = true;
        }
    }
    if (placed < toPlace) notPermitted();
    std::vector<Group*> ordered;
    for (auto& g : groups)
        if (!g.members.empty()) ordered.push_back(&g);
    std::sort(ordered.begin(), ordered.end(), [](const Group* a, const Group* b) { return a->first < b->first; });
    for (Group* g : ordered) core.from.push_back(std::move(g->tree));
    core.where = joinConjuncts(std::move(remaining));
    core.outerJoinsRewritten = true;
}

}  // namespace

void rewriteOldOuterJoins(SelectStmt& select, const Catalog& catalog, const Scope* parent) {
    for (auto& core : select.cores) {
        Scope scope(catalog, parent);
        scope.addSources(core.from);
        forEachSubquery(core, [&](SelectStmt& sub) { rewriteOldOuterJoins(sub, catalog, &scope); });
        rewriteCore(core, scope);
    }
}

void rewriteOldOuterJoins(Statement& statement, const Catalog& catalog) {
    if (statement.select) rewriteOldOuterJoins(*statement.select, catalog, nullptr);
    if (statement.kind == StmtKind::Update || statement.kind == StmtKind::Delete) {
        Scope scope(catalog, nullptr);
        scope.addTable(statement.table, statement.table);
        scope.addSources(statement.from);
        auto visit = [&](SelectStmt& sub) { rewriteOldOuterJoins(sub, catalog, &scope); };
        if (statement.where) forEachSubquery(*statement.where, visit);
        for (auto& a : statement.assignments) forEachSubquery(*a.second, visit);
        // The statement's own FROM list and condition join as a select's do.
        if (!statement.from.empty()) {
            SelectCore core;
            core.from = std::move(statement.from);
            core.where = std::move(statement.where);
            Scope own(catalog, nullptr);
            own.addSources(core.from);
            rewriteCore(core, own);
            statement.from = std::move(core.from);
            statement.where = std::move(core.where);
        }
    }
    for (auto& row : statement.values)
        for (auto& v : row) forEachSubquery(*v, [&](SelectStmt& sub) { rewriteOldOuterJoins(sub, catalog, nullptr); });
}

namespace {

class TsqlPrinter {
public:
    explicit TsqlPrinter(const QString& source) : source_(source) {}

    void statement(const Statement& s) {
        if (s.select) select(*s.select);
        auto visit = [&](SelectStmt& sub) { select(sub); };
        if (s.where) forEachSubquery(*s.where, visit);
        for (const auto& a : s.assignments) forEachSubquery(*a.second, visit);
        for (const auto& row : s.values)
            for (const auto& v : row) forEachSubquery(*v, visit);
    }

    QString text(Span span) const {
        std::vector<const Replacement*> inside;
        for (const auto& r : replacements_)
            if (r.span.begin >= span.begin && r.span.end <= span.end) inside.push_back(&r);
        std::sort(inside.begin(), inside.end(), [](const Replacement* a, const Replacement* b) {
            return a->span.begin != b->span.begin ? a->span.begin < b->span.begin : a->span.end > b->span.end;
        });
        QString out;
        int cursor = span.begin;
        for (const Replacement* r : inside) {
            if (r->span.begin < cursor) continue;  // nested in one already applied
            out += source_.mid(cursor, r->span.begin - cursor);
            out += r->text;
            cursor = r->span.end;
        }
        out += source_.mid(cursor, span.end - cursor);
        return out;
    }

private:
    struct Replacement {
        Span span;
        QString text;
    };
    const QString& source_;
    std::vector<Replacement> replacements_;

    void select(const SelectStmt& s) {
        for (const auto& core : s.cores) {
            forEachSubquery(const_cast<SelectCore&>(core), [&](SelectStmt& sub) { select(sub); });
            if (!core.outerJoinsRewritten) continue;
            QStringList groups;
            for (const auto& source : core.from) groups << tableText(*source);
            replacements_.push_back({core.fromSpan, keyword(core.fromSpan.begin, 4) + groups.join(QStringLiteral(", "))});
            replacements_.push_back({core.whereSpan, core.where ? keyword(core.whereSpan.begin, 5) + exprText(*core.where) : QString()});
        }
    }

    // A clause keyword as written, with the blanks that follow it.
    QString keyword(int begin, int length) const {
        int end = begin + length;
        while (end < source_.size() && source_[end].isSpace()) ++end;
        return source_.mid(begin, end - begin);
    }

    QString exprText(const Expr& e) const {
        if (e.synthesized) {
            // Neighbours in the source keep the text between them; others are joined anew.
            QString out = exprText(*e.args[0]);
            for (size_t i = 1; i < e.args.size(); ++i) {
                const Expr& l = *e.args[i - 1];
                const Expr& r = *e.args[i];
                QString separator = QStringLiteral(" and ");
                if (l.span.end <= r.span.begin) {
                    const QString between = source_.mid(l.span.end, r.span.begin - l.span.end);
                    if (between.trimmed().compare(QLatin1String("and"), Qt::CaseInsensitive) == 0) separator = between;
                }
                out += separator + exprText(r);
            }
            return out;
        }
        if (e.kind == ExprKind::Binary && e.opSpan.end > e.opSpan.begin &&
            isOldJoinOp(source_.mid(e.opSpan.begin, e.opSpan.end - e.opSpan.begin)))
            return text({e.span.begin, e.opSpan.begin}) + e.text + text({e.opSpan.end, e.span.end});
        return text(e.span);
    }

    QString tableText(const TableSource& s) const {
        if (!s.synthesized) return text(s.span);
        const QString left = tableText(*s.left);
        const QString right = tableText(*s.right);
        switch (s.joinType) {
        case JoinType::Cross: return left + QStringLiteral(" cross join ") + right;
        case JoinType::Right: return left + QStringLiteral(" right outer join ") + right + QStringLiteral(" on ") + exprText(*s.on);
        default: return left + QStringLiteral(" left outer join ") + right + QStringLiteral(" on ") + exprText(*s.on);
        }
    }
};

}  // namespace

QString printRewrittenTsql(const QString& source, const std::vector<StatementPtr>& statements) {
    TsqlPrinter printer(source);
    for (const auto& s : statements) printer.statement(*s);
    return printer.text({0, int(source.size())});
}

}  // namespace kivdb::dialect
