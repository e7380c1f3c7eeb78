#pragma once
// Syntax tree of the T-SQL the suite sends. Every node keeps the span of source text it
// was read from, so the T-SQL printer can give back untouched parts byte for byte.
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace kivdb::dialect {

struct Span {
    int begin = 0;
    int end = 0;
};

struct SelectStmt;
using SelectPtr = std::unique_ptr<SelectStmt>;

struct DataType {
    QString name;  // lower case, e.g. "varchar"
    int length = -1;  // or precision
    int scale = -1;
    bool max = false;
};

enum class ExprKind {
    Number, String, Null, Column, Star, Function, Unary, Binary,
    Like, Between, InList, InSelect, IsNull, Exists, Subquery, Case, Convert
};

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

// The items of an in (...) list that are plain literals, kept as the SQLite text that
// lists them ('a', 'b', 3), so a list of a hundred thousand values costs its text rather
// than a node per value.
struct LiteralItems {
    QString sql;  // the literals joined by ", ", strings in single quotes
    int strings = 0;
    int numbers = 0;
    bool decimals = false;  // some number is no int (a point, or beyond 2147483647)
    bool floats = false;  // some number has an exponent
};

struct Expr {
    ExprKind kind = ExprKind::Null;
    Span span;
    QString text;        // number text, string value, function name, operator (lower case)
    QStringList parts;   // column or star qualifier parts: {"a", "x"} for a.x
    bool quoted = false;  // column named in double quotes
    bool national = false;  // N'...' 
    bool negated = false;  // not like, not between, not in, is not null
    bool distinct = false;  // count(distinct x)
    bool isCast = false;
    std::vector<ExprPtr> args;  // operands; case: [operand?] when/then pairs, else last
    // An operator chain of one precedence level (and, or, + - & | ^, * / %) is one node
    // however long: ops[i] stands between args[i] and args[i + 1], and text is ops[0]. A
    // comparison has no ops, its operator is text.
    QStringList ops;
    bool hasCaseOperand = false;
    bool hasElse = false;
    SelectPtr subquery;
    std::unique_ptr<LiteralItems> literals;  // in list: its literal items; args holds the others
    DataType type;  // convert / cast target
    Span opSpan;  // operator token, for binary nodes (a chain's first one)
    bool synthesized = false;  // made by a rewrite, no source text of its own
    int depth = 1;  // height of the tree below, bounded by the parser
};

struct TableSource;
using TableSourcePtr = std::unique_ptr<TableSource>;

enum class JoinType { Inner, Left, Right, Full, Cross };

struct TableSource {
    enum Kind { Table, Derived, Join } kind = Table;
    Span span;
    QString name;   // table name as written, schema prefix dropped
    QString alias;  // empty when none
    SelectPtr derived;
    JoinType joinType = JoinType::Inner;
    TableSourcePtr left, right;
    ExprPtr on;
    bool synthesized = false;

    QString exposedName() const { return alias.isEmpty() ? name : alias; }
};

struct SelectItem {
    ExprPtr expr;
    QString alias;
    Span span;
};

struct OrderItem {
    ExprPtr expr;
    bool descending = false;
};

struct SelectCore {
    Span span;
    bool distinct = false;
    ExprPtr top;
    bool topPercent = false;
    std::vector<SelectItem> items;
    QString into;
    std::vector<TableSourcePtr> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    Span fromSpan;   // "from" keyword to the end of the table list; empty when no from
    Span whereSpan;  // "where" keyword to the end of the condition; empty when no where
    bool outerJoinsRewritten = false;
};

struct SelectStmt {
    Span span;
    std::vector<SelectCore> cores;
    std::vector<bool> unionAll;  // one per core after the first
    std::vector<OrderItem> orderBy;
};

struct ColumnDef {
    QString name;
    DataType type;
    bool notNull = false;
    bool identity = false;
    qint64 identitySeed = 1;
    bool primaryKey = false;
    bool unique = false;
    ExprPtr defaultValue;
};

struct TableConstraint {
    enum Kind { PrimaryKey, Unique, Check, ForeignKey } kind = PrimaryKey;
    QString name;
    QStringList columns;
    QStringList descending;  // columns ordered descending
    ExprPtr check;
    QString refTable;
    QStringList refColumns;
};

enum class StmtKind { Select, Insert, Update, Delete, CreateTable, CreateIndex, DropTable, DropIndex, AlterAdd, SetOption };

struct Statement {
    StmtKind kind = StmtKind::Select;
    Span span;
    // select
    SelectPtr select;
    // insert / update / delete / ddl target
    QString table;
    QString targetAlias;
    QStringList columns;  // insert column list, index columns
    std::vector<std::vector<ExprPtr>> values;
    std::vector<std::pair<QString, ExprPtr>> assignments;  // update set
    std::vector<TableSourcePtr> from;  // update / delete from
    ExprPtr where;
    // ddl
    std::vector<ColumnDef> columnDefs;
    std::vector<TableConstraint> constraints;
    QString indexName;
    bool unique = false;
    QStringList descending;
    QStringList names;  // drop table list
};
using StatementPtr = std::unique_ptr<Statement>;

}  // namespace kivdb::dialect
