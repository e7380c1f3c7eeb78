#include "dialect/sqlite_printer.h"

#include "dialect/sqlite_catalog.h"
#include "dialect/tsql_numbers.h"
#include "dialect/tsql_runtime_values.h"
#include "dialect/tsql_scope.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <utility>

namespace kivdb::dialect {

std::optional<std::vector<CatalogColumn>> BatchCatalog::tableColumns(const QString& table) const {
    if (auto it = local_.constFind(table.toLower()); it != local_.constEnd()) return *it;
    return base_.tableColumns(table);
}

void BatchCatalog::define(const QString& table, std::optional<std::vector<CatalogColumn>> columns) {
    local_.insert(table.toLower(), std::move(columns));
}

DeclaredType declaredType(const DataType& type) {
    const QString& n = type.name;
    auto sized = [&](const QString& base) {
        if (type.max) return base + QStringLiteral("(max)");
        if (type.length < 0) return base;
        if (type.scale < 0) return base + QStringLiteral("(%1)").arg(type.length);
        return base + QStringLiteral("(%1,%2)").arg(type.length).arg(type.scale);
    };
    if (n == "int" || n == "integer" || n == "smallint" || n == "tinyint" || n == "bigint") {
        const NumericType digits{n == "tinyint" ? 3 : n == "smallint" ? 5 : n == "bigint" ? 19 : 10, 0};
        return {n == "integer" ? QStringLiteral("int") : n, ColumnKind::Integer, {}, digits};
    }
    if (n == "bit") return {n, ColumnKind::Bit, {}, {1, 0}};
    if (n == "float" || n == "real") return {n, ColumnKind::Float, {}};
    if (n == "money" || n == "smallmoney")
        return {n + QStringLiteral("_real"), ColumnKind::Money, {}, {n == "money" ? 19 : 10, 4}};
    if (n == "decimal" || n == "numeric") {
        // The server's default is decimal(18, 0).
        const int precision = type.length > 0 ? std::min(type.length, 38) : 18;
        const NumericType digits{precision, std::clamp(type.scale, 0, precision)};
        return {sized(n + QStringLiteral("_real")), ColumnKind::Decimal, {}, digits};
    }
    if (n == "datetime" || n == "smalldatetime" || n == "date" || n == "datetime2")
        return {n + QStringLiteral("_text"), ColumnKind::DateTime, QStringLiteral("TSQL_DATE")};
    if (n == "char" || n == "varchar" || n == "nchar" || n == "nvarchar")
        return {sized(n), ColumnKind::Text, QStringLiteral("TSQL_CI")};
    if (n == "text" || n == "ntext" || n == "sysname") return {n, ColumnKind::Text, QStringLiteral("TSQL_CI")};
    throw SqlError(QStringLiteral("Cannot find data type %1.").arg(quotedExcerpt(type.name)).toStdString());
}

namespace {

QString quoteName(const QString& name) {
    QString q = name;
    q.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + q + QLatin1Char('"');
}

QString quoteString(const QString& value) {
    QString q = value;
    q.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + q + QLatin1Char('\'');
}

bool isNumeric(ColumnKind k) {
    return k == ColumnKind::Integer || k == ColumnKind::Float || k == ColumnKind::Money ||
           k == ColumnKind::Decimal || k == ColumnKind::Bit;
}

// SQL Server's precedence of numeric types, highest last.
int numericRank(ColumnKind k) {
    switch (k) {
    case ColumnKind::Bit: return 0;
    case ColumnKind::Integer: return 1;
    case ColumnKind::Money: return 2;
    case ColumnKind::Decimal: return 3;
    case ColumnKind::Float: return 4;
    default: return -1;
    }
}

ColumnKind promote(ColumnKind a, ColumnKind b) {
    ColumnKind r = numericRank(a) >= numericRank(b) ? a : b;
    return r == ColumnKind::Bit ? ColumnKind::Integer : r;
}

// Name of a numeric kind as the conversion messages spell it.
QString conversionTarget(ColumnKind k) {
    switch (k) {
    case ColumnKind::Float: return QStringLiteral("float");
    case ColumnKind::Money: return QStringLiteral("money");
    case ColumnKind::Decimal: return QStringLiteral("numeric");
    case ColumnKind::Bit: return QStringLiteral("bit");
    default: return QStringLiteral("int");
    }
}

// #t and ##t both become temporary tables of the connection: the embedded database has one
// user, so a global temporary table has no one else to be shared with.
QString tempPrefix(const QString& table) { return table.startsWith(QLatin1Char('#')) ? QStringLiteral("temp.") : QString(); }

bool isNationalType(const DataType& type) { return isNationalDeclType(type.name); }

// Functions that translate one to one: the T-SQL name, the SQLite (or runtime) function,
// the number of arguments and the result's kind. A text result is nvarchar when an
// argument is.
constexpr int kAnyCount = 1 << 16;

struct FunctionMapping {
    const char* tsql;
    const char* sqlite;
    int minArgs;
    int maxArgs;
    ColumnKind kind;
    bool kindOfArguments;  // the type of the first argument, as the server types isnull, abs and round
};

const FunctionMapping kFunctionMappings[] = {
    {"isnull",    "ifnull",         2, 2,         ColumnKind::Unknown,  true},
    {"coalesce",  "coalesce",       2, kAnyCount, ColumnKind::Unknown,  true},
    {"getdate",   "tsql_getdate",   0, 0,         ColumnKind::DateTime, false},
    {"rtrim",     "rtrim",          1, 1,         ColumnKind::Text,     false},
    {"ltrim",     "ltrim",          1, 1,         ColumnKind::Text,     false},
    {"upper",     "tsql_upper",     1, 1,         ColumnKind::Text,     false},
    {"lower",     "tsql_lower",     1, 1,         ColumnKind::Text,     false},
    {"substring", "tsql_substring", 3, 3,         ColumnKind::Text,     false},
    {"left",      "tsql_left",      2, 2,         ColumnKind::Text,     false},
    {"right",     "tsql_right",     2, 2,         ColumnKind::Text,     false},
    {"replace",   "tsql_replace",   3, 3,         ColumnKind::Text,     false},
    {"stuff",     "tsql_stuff",     4, 4,         ColumnKind::Text,     false},
    {"replicate", "tsql_replicate", 2, 2,         ColumnKind::Text,     false},
    {"space",     "tsql_space",     1, 1,         ColumnKind::Text,     false},
    {"reverse",   "tsql_reverse",   1, 1,         ColumnKind::Text,     false},
    {"char",      "tsql_char",      1, 1,         ColumnKind::Text,     false},
    {"nchar",     "tsql_nchar",     1, 1,         ColumnKind::Text,     false},
    {"str",       "tsql_str",       1, 3,         ColumnKind::Text,     false},
    {"newid",     "tsql_newid",     0, 0,         ColumnKind::Text,     false},
    {"len",       "tsql_len",       1, 1,         ColumnKind::Integer,  false},
    {"charindex", "tsql_charindex", 2, 3,         ColumnKind::Integer,  false},
    {"patindex",  "tsql_patindex",  2, 2,         ColumnKind::Integer,  false},
    {"ascii",     "tsql_ascii",     1, 1,         ColumnKind::Integer,  false},
    {"unicode",   "tsql_unicode",   1, 1,         ColumnKind::Integer,  false},
    {"isnumeric", "tsql_isnumeric", 1, 1,         ColumnKind::Integer,  false},
    {"isdate",    "tsql_isdate",    1, 1,         ColumnKind::Integer,  false},
    // The suite's numbering statements call int(x), which the server lacks: kept for them.
    {"int",       "tsql_int",       1, 1,         ColumnKind::Integer,  false},
    {"abs",       "abs",            1, 1,         ColumnKind::Unknown,  true},
    {"round",     "tsql_round",     2, 3,         ColumnKind::Unknown,  true},
    {"ceiling",   "tsql_ceiling",   1, 1,         ColumnKind::Unknown,  true},
    {"floor",     "tsql_floor",     1, 1,         ColumnKind::Unknown,  true},
    {"sign",      "tsql_sign",      1, 1,         ColumnKind::Unknown,  true},
    {"power",     "tsql_power",     2, 2,         ColumnKind::Unknown,  true},
    {"sqrt",      "tsql_sqrt",      1, 1,         ColumnKind::Float,    false},
    {"exp",       "tsql_exp",       1, 1,         ColumnKind::Float,    false},
    {"log",       "tsql_log",       1, 2,         ColumnKind::Float,    false},
    {"log10",     "tsql_log10",     1, 1,         ColumnKind::Float,    false},
};

// Functions whose first argument names a date part: the part is a word, never a column.
struct DatePartFunction {
    const char* tsql;
    int args;  // the part included
    ColumnKind kind;
};

const DatePartFunction kDatePartFunctions[] = {
    {"datediff", 3, ColumnKind::Integer},
    {"dateadd",  3, ColumnKind::DateTime},
    {"datepart", 2, ColumnKind::Integer},
    {"datename", 2, ColumnKind::Text},
};

// The identity value the last insert made; null before any.
const char* const kLastIdentity = "nullif(last_insert_rowid(), 0)";

struct Typed {
    QString sql;
    ColumnKind kind = ColumnKind::Unknown;
    NumericType numeric = {};  // digits of an exact number, when known
    bool literalText = false;  // a string literal, convertible at translation time
    QString literalValue = {};  // its text; a number literal's text, signed
    bool literalNumber = false;
    // Inside an operator chain only: the binding strength of the bare SQLite operator at
    // the top of sql (0: sql is a single operand), and the runtime function whose call sql
    // is, open to more operands, with its operand count.
    int infix = 0;
    const char* openCall = nullptr;
    int callOperands = 0;
    int exactSteps = 0;  // steps of a tsql_arith call that may take more
    bool national = false;  // nchar, nvarchar or ntext
};

// SQLite's binding strengths of the operators the chains print; T-SQL binds & and | as
// tightly as + and -, SQLite less tightly.
constexpr int kConcatStrength = 4;
constexpr int kProductStrength = 3;
constexpr int kSumStrength = 2;
constexpr int kBitStrength = 1;

// SQLite refuses expression trees deeper than 1000 and functions of more than 127 arguments.
constexpr int kChainGroup = 100;
constexpr int kCallOperands = 100;

// Steps of one tsql_arith call: three arguments each, within SQLite's 127.
constexpr int kExactSteps = 40;

// ---- exact numbers: the server's types of integer, money and decimal values

// Digits of an exact value; what its kind implies when the value does not tell.
NumericType digitsOf(ColumnKind kind, NumericType n) {
    if (n.precision > 0) return n;
    switch (kind) {
    case ColumnKind::Bit: return {1, 0};
    case ColumnKind::Integer: return {10, 0};
    case ColumnKind::Money: return {19, 4};
    case ColumnKind::Decimal: return {38, 10};  // a decimal of unknown type keeps ten decimals
    default: return {};
    }
}

NumericType digitsOf(const Typed& t) { return digitsOf(t.kind, t.numeric); }

QString exactTypeName(ColumnKind kind, NumericType n) {
    switch (kind) {
    case ColumnKind::Money: return n.precision == 10 ? QStringLiteral("smallmoney") : QStringLiteral("money");
    case ColumnKind::Decimal: return QStringLiteral("numeric");
    case ColumnKind::Bit: return QStringLiteral("bit");
    default:
        return n.precision == 3 ? QStringLiteral("tinyint") : n.precision == 5 ? QStringLiteral("smallint")
               : n.precision == 19                         ? QStringLiteral("bigint")
                                                           : QStringLiteral("int");
    }
}

// An exact type as the runtime reads it: 'int', 'money', 'numeric(18,4)'.
QString exactTypeArgs(ColumnKind kind, NumericType n) {
    const NumericType d = digitsOf(kind, n);
    const QString name = exactTypeName(kind, d);
    if (kind != ColumnKind::Decimal) return QLatin1Char('\'') + name + QLatin1Char('\'');
    return QStringLiteral("'%1(%2,%3)'").arg(name, QString::number(d.precision), QString::number(d.scale));
}

// The type a value converts from, as the server's overflow messages name it.
QString sourceTypeName(const Typed& t) {
    switch (t.kind) {
    case ColumnKind::Integer:
    case ColumnKind::Bit:
    case ColumnKind::Money:
    case ColumnKind::Decimal: return exactTypeName(t.kind, digitsOf(t));
    case ColumnKind::Float: return QStringLiteral("float");
    case ColumnKind::Text: return QStringLiteral("varchar");
    default: return QStringLiteral("expression");
    }
}

// A precision above 38 is cut to 38 at the expense of the scale, which keeps what the
// integral part leaves, and at least six digits (or all it has) when that is less.
NumericType capped(int precision, int scale) {
    if (precision <= 38) return {precision, scale};
    const int integral = precision - scale;
    return {38, integral < 32 ? std::min(scale, 38 - integral) : std::min(scale, 6)};
}

// The server's result type of a op b on exact operands of the promoted kind: the wider
// integer; money unless both are smallmoney; decimals by precision and scale.
NumericType exactResult(QChar op, ColumnKind kind, NumericType a, NumericType b) {
    if (kind == ColumnKind::Integer) {
        auto width = [](NumericType n) { return n.precision == 1 ? 3 : n.precision; };  // bit ranks lowest
        return {std::max(width(a), width(b)), 0};
    }
    if (kind == ColumnKind::Money) {
        const bool money = (a.precision == 19 && a.scale == 4) || (b.precision == 19 && b.scale == 4);
        return {money ? 19 : 10, 4};
    }
    const int p1 = a.precision, s1 = a.scale, p2 = b.precision, s2 = b.scale;
    if (op == u'+' || op == u'-') {
        const int scale = std::max(s1, s2);
        return capped(std::max(p1 - s1, p2 - s2) + scale + 1, scale);
    }
    if (op == u'*') return capped(p1 + p2 + 1, s1 + s2);
    if (op == u'%') return capped(std::min(p1 - s1, p2 - s2) + std::max(s1, s2), std::max(s1, s2));
    const int scale = std::max(6, s1 + p2 + 1);
    return capped(p1 - s1 + s2 + scale, scale);
}

// The SQL of an operand the runtime reads exactly: a decimal literal past the 15 digits a
// double keeps goes as its text, so ranges and arithmetic see the digits written.
QString exactOperand(const Typed& t) {
    if (!t.literalNumber || t.kind != ColumnKind::Decimal) return t.sql;
    int digits = 0;
    for (const QChar c : t.literalValue) digits += c.isDigit() && (digits > 0 || c != u'0');
    return digits > 15 ? QLatin1Char('\'') + t.literalValue + QLatin1Char('\'') : t.sql;
}

// Whether a value of type `from` is already what a column of type `to` stores: a literal
// that is its own stored value, or a type whose every value the column holds unchanged.
bool storesUnchanged(const Typed& from, ColumnKind toKind, NumericType to) {
    if (from.literalNumber) {
        if (toKind == ColumnKind::Integer) {
            static const qint64 highest[] = {255, 32767, 2147483647LL, INT64_MAX};
            const int index = to.precision == 3 ? 0 : to.precision == 5 ? 1 : to.precision == 10 ? 2 : 3;
            bool ok = false;
            const qlonglong v = from.literalValue.toLongLong(&ok);
            return ok && v <= highest[index] && v >= (index == 0 ? 0 : -highest[index] - 1);
        }
        // Up to 15 digits the literal's double is the nearest one of its decimal.
        const QByteArray text = from.literalValue.toLatin1();
        const auto d = decimalOfText(std::string_view(text.constData(), size_t(text.size())));
        if (!d || d->scale > to.scale) return false;
        int digits = 0;
        for (auto m = d->mantissa; m != 0; m /= 10) ++digits;
        // Money's range ends within its last integral digit: one digit less is surely inside.
        const int integralDigits = to.precision - to.scale - (toKind == ColumnKind::Money ? 1 : 0);
        return digits <= 15 && digits - d->scale <= integralDigits;
    }
    const NumericType f = digitsOf(from);
    if (f.precision == 0) return false;
    switch (toKind) {
    case ColumnKind::Integer:
        return (from.kind == ColumnKind::Integer || from.kind == ColumnKind::Bit) && f.precision <= to.precision;
    case ColumnKind::Money:
        return (from.kind == ColumnKind::Money && f.precision <= to.precision) ||
               (from.kind == ColumnKind::Integer && f.precision <= to.precision - 4 && f.precision <= 15);
    case ColumnKind::Decimal:
        return (from.kind == ColumnKind::Decimal || from.kind == ColumnKind::Money || from.kind == ColumnKind::Integer) &&
               f.scale <= to.scale && f.precision - f.scale <= to.precision - to.scale;
    default: return false;
    }
}

class Printer {
public:
    explicit Printer(BatchCatalog& catalog) : catalog_(catalog) {}

    std::optional<std::vector<ColumnKind>> resultKinds;  // set for a select that returns rows
    std::optional<std::vector<int>> resultScales;

    QStringList statement(const Statement& s) {
        commonTables_.clear();
        hoistDerived_ = derivedDepth(s) > kInlineDerivedDepth;
        QStringList out = statementText(s);
        if (!commonTables_.isEmpty() && !out.isEmpty())
            out.last() = QStringLiteral("WITH ") + commonTables_.join(QStringLiteral(", ")) + QLatin1Char(' ') + out.last();
        return out;
    }

private:
    BatchCatalog& catalog_;
    bool orderingBy_ = false;  // translating an order by list, which may name select-list aliases

    // Derived tables nested deeper than this are printed as common table expressions of
    // the statement: SQLite's parser stack holds about 15 nested derived tables, and a
    // WITH list of any length costs it nothing. Shallower ones stay in place.
    static constexpr int kInlineDerivedDepth = 4;
    bool hoistDerived_ = false;
    QStringList commonTables_;
    bool checkFirstItem_ = false;  // the next select core's item is wrapped in tsql_single
    // The next select core's items are a result's columns: one the server leaves unnamed (no
    // alias, no plain column) is unnamed here too, never named after the SQLite text.
    bool unnamedItems_ = false;

    static int derivedDepth(const TableSource& s) {
        switch (s.kind) {
        case TableSource::Table: return 0;
        case TableSource::Derived: return 1 + derivedDepth(*s.derived);
        case TableSource::Join: return std::max(derivedDepth(*s.left), derivedDepth(*s.right));
        }
        return 0;
    }
    static int derivedDepth(const std::vector<TableSourcePtr>& from) {
        int depth = 0;
        for (const auto& source : from) depth = std::max(depth, derivedDepth(*source));
        return depth;
    }
    static int derivedDepth(const SelectStmt& s) {
        int depth = 0;
        for (const auto& core : s.cores) depth = std::max(depth, derivedDepth(core.from));
        return depth;
    }
    static int derivedDepth(const Statement& s) { return std::max(s.select ? derivedDepth(*s.select) : 0, derivedDepth(s.from)); }

    QStringList statementText(const Statement& s) {
        switch (s.kind) {
        case StmtKind::Select: return selectStatement(*s.select);
        case StmtKind::Insert: return {insert(s)};
        case StmtKind::Update: return {update(s)};
        case StmtKind::Delete: return {deleteStatement(s)};
        case StmtKind::CreateTable: return createTable(s);
        case StmtKind::CreateIndex: return {createIndex(s)};
        case StmtKind::DropTable: {
            QStringList out;
            for (const auto& n : s.names) {
                out << QStringLiteral("DROP TABLE ") + tempPrefix(n) + quoteName(n);
                catalog_.define(n, std::nullopt);
            }
            return out;
        }
        case StmtKind::DropIndex: return {QStringLiteral("DROP INDEX ") + quoteName(indexName(s.table, s.indexName))};
        case StmtKind::AlterAdd: return alterAdd(s);
        case StmtKind::SetOption: return {};
        }
        return {};
    }

    // ---- select

    QStringList selectStatement(const SelectStmt& s) {
        const SelectCore& first = s.cores.front();
        if (!first.into.isEmpty()) return selectInto(s);
        std::vector<ColumnKind> itemKinds;
        std::vector<NumericType> itemNumerics;
        unnamedItems_ = true;
        QString text = select(s, nullptr, &itemKinds, {}, &itemNumerics);
        if (const auto columns = resultColumns(first, itemKinds, itemNumerics)) {
            resultKinds.emplace();
            resultScales.emplace();
            for (const auto& c : *columns) {
                resultKinds->push_back(c.kind);
                resultScales->push_back(shownScale(c));
            }
        }
        return {text};
    }

    // Digits after the point the server shows for a column: money's four, a decimal's scale.
    static int shownScale(const CatalogColumn& c) {
        if (c.kind == ColumnKind::Money) return 4;
        return c.kind == ColumnKind::Decimal && c.numeric.precision > 0 ? c.numeric.scale : -1;
    }

    // The types of the result columns from those of the select items, * expanded; nothing
    // when a * covers an unknown table.
    std::optional<std::vector<CatalogColumn>> resultColumns(const SelectCore& core, const std::vector<ColumnKind>& itemKinds,
                                                            const std::vector<NumericType>& itemNumerics) {
        Scope scope(catalog_, nullptr);
        scope.addSources(core.from);
        std::vector<CatalogColumn> columns;
        for (size_t i = 0; i < core.items.size(); ++i) {
            const Expr& e = *core.items[i].expr;
            if (e.kind != ExprKind::Star) {
                columns.push_back({selectItemName(core.items[i]), itemKinds[i], false,
                                   i < itemNumerics.size() ? itemNumerics[i] : NumericType{}});
                continue;
            }
            for (const auto& t : scope.tables()) {
                if (!e.parts.isEmpty() && t.exposed.compare(e.parts.last(), Qt::CaseInsensitive) != 0) continue;
                if (!t.columns) return std::nullopt;
                for (const auto& c : *t.columns) columns.push_back({c.name, c.kind, false, c.numeric});
            }
        }
        return columns;
    }

    QString select(const SelectStmt& s, const Scope* parent, std::vector<ColumnKind>* kinds = nullptr,
                   const QString& firstColumnName = {}, std::vector<NumericType>* numerics = nullptr) {
        QStringList parts;
        std::unique_ptr<Scope> firstScope;
        const bool single = s.cores.size() == 1;
        const std::vector<ColumnKind> unionKinds = single ? std::vector<ColumnKind>{} : unionColumnKinds(s, parent);
        for (size_t i = 0; i < s.cores.size(); ++i) {
            const SelectCore& core = s.cores[i];
            auto scope = std::make_unique<Scope>(catalog_, parent);
            scope->addSources(core.from);
            QString text = coreText(core, *scope, i == 0 ? kinds : nullptr, i == 0 ? firstColumnName : QString(),
                                    i == 0 ? numerics : nullptr, &unionKinds);
            if (core.top && !single) text = QStringLiteral("SELECT * FROM (") + text + topClause(core) + QStringLiteral(")");
            if (i > 0) parts << (s.unionAll[i - 1] ? QStringLiteral(" UNION ALL ") : QStringLiteral(" UNION "));
            parts << text;
            if (i == 0) firstScope = std::move(scope);
        }
        QString out = parts.size() == 1 ? std::move(parts.front()) : parts.join(QString());
        if (!s.orderBy.empty()) {
            QStringList items;
            const bool outerOrderBy = orderingBy_;
            orderingBy_ = true;
            if (single && isGrouped(first(s)))
                for (const auto& o : s.orderBy) checkGroupedOrder(*o.expr, first(s), *firstScope);
            for (const auto& o : s.orderBy) {
                // The order of a union names result columns: a.x is the column x.
                const QString term = !single && o.expr->kind == ExprKind::Column
                                         ? quoteName(o.expr->parts.last())
                                         : collated(*o.expr, expr(*o.expr, *firstScope));
                items << term + (o.descending ? QStringLiteral(" DESC") : QString());
            }
            orderingBy_ = outerOrderBy;
            out += QStringLiteral(" ORDER BY ") + items.join(QStringLiteral(", "));
        }
        if (single && first(s).top) out += topClause(first(s));
        return out;
    }

    static const SelectCore& first(const SelectStmt& s) { return s.cores.front(); }

    // The server converts each column of a union to the type of highest precedence among
    // its cores: a number in any core makes the text of the others numbers, with the
    // server's conversion error for text that is none. The cores are translated once for
    // their types only, leaving nothing behind.
    std::vector<ColumnKind> unionColumnKinds(const SelectStmt& s, const Scope* parent) {
        for (const SelectCore& core : s.cores)  // a * leaves the columns' positions unknown here
            for (const auto& item : core.items)
                if (item.expr->kind == ExprKind::Star) return {};
        const qsizetype commonTables = commonTables_.size();
        const bool checkFirstItem = checkFirstItem_, unnamedItems = unnamedItems_;
        std::vector<ColumnKind> highest;
        for (const SelectCore& core : s.cores) {
            Scope scope(catalog_, parent);
            scope.addSources(core.from);
            std::vector<ColumnKind> kinds;
            checkFirstItem_ = unnamedItems_ = false;
            coreText(core, scope, &kinds);
            highest.resize(std::max(highest.size(), kinds.size()), ColumnKind::Unknown);
            for (size_t i = 0; i < kinds.size(); ++i)
                if (numericPrecedence(kinds[i]) > numericPrecedence(highest[i])) highest[i] = kinds[i];
        }
        commonTables_.resize(commonTables);
        checkFirstItem_ = checkFirstItem, unnamedItems_ = unnamedItems;
        return highest;
    }

    // The server's order of the numeric types, highest last; 0 for the others.
    static int numericPrecedence(ColumnKind k) {
        switch (k) {
        case ColumnKind::Bit: return 1;
        case ColumnKind::Integer: return 2;
        case ColumnKind::Money: return 3;
        case ColumnKind::Decimal: return 4;
        case ColumnKind::Float: return 5;
        default: return 0;
        }
    }

    QString topClause(const SelectCore& core) {
        if (core.topPercent) throw SqlError("TOP PERCENT is not supported on the embedded database.");
        Scope none(catalog_, nullptr);
        return QStringLiteral(" LIMIT ") + expr(*core.top, none).sql;
    }

    // unionKinds: the numeric kinds a union converts this core's text columns to.
    QString coreText(const SelectCore& core, Scope& scope, std::vector<ColumnKind>* kinds,
                     const QString& firstColumnName = {}, std::vector<NumericType>* numerics = nullptr,
                     const std::vector<ColumnKind>* unionKinds = nullptr) {
        // Taken before anything nested is printed: it belongs to this core.
        const bool checkFirstItem = std::exchange(checkFirstItem_, false);
        const bool unnamedItems = std::exchange(unnamedItems_, false);
        // The sources first: translating a derived table types its columns.
        QStringList sources;
        for (const auto& source : core.from) sources << sourceText(*source, scope);
        checkGrouping(core, scope);
        QString out = QStringLiteral("SELECT ");
        if (core.distinct) out += QStringLiteral("DISTINCT ");
        QStringList items;
        for (const auto& item : core.items) {
            const QString& alias = items.isEmpty() && !firstColumnName.isEmpty() ? firstColumnName : item.alias;
            if (item.expr->kind == ExprKind::Star) {
                items << starText(*item.expr);
                if (kinds) kinds->push_back(ColumnKind::Unknown);
                if (numerics) numerics->push_back({});
                continue;
            }
            Typed t = expr(*item.expr, scope);
            const size_t column = size_t(items.size());
            if (unionKinds && column < unionKinds->size() && t.kind == ColumnKind::Text && numericPrecedence((*unionKinds)[column]) > 0)
                t = Typed{toNumber(t, (*unionKinds)[column]), (*unionKinds)[column]};
            if (kinds) kinds->push_back(t.kind);
            if (numerics) numerics->push_back(t.numeric);
            const QString sql = checkFirstItem && items.isEmpty() ? QStringLiteral("tsql_single(") + t.sql + QLatin1Char(')')
                                                                  : collated(*item.expr, t);
            if (alias.isEmpty() && unnamedItems && item.expr->kind != ExprKind::Column) items << sql + QStringLiteral(" AS \"\"");
            else items << (alias.isEmpty() ? sql : sql + QStringLiteral(" AS ") + quoteName(alias));
        }
        out += items.join(QStringLiteral(", "));
        if (!sources.isEmpty()) out += QStringLiteral(" FROM ") + sources.join(QStringLiteral(", "));
        if (core.where) appendClause(out, QStringLiteral(" WHERE "), condition(*core.where, scope));
        if (!core.groupBy.empty()) {
            QStringList groups;
            for (const auto& g : core.groupBy) groups << collated(*g, expr(*g, scope));
            out += QStringLiteral(" GROUP BY ") + groups.join(QStringLiteral(", "));
        }
        if (core.having) appendClause(out, QStringLiteral(" HAVING "), condition(*core.having, scope));
        return out;
    }

    // A grouped select (group by, or an aggregate in its list or having) may read its own
    // columns only inside aggregates or as grouped expressions, as the server requires.
    // Only what surely breaks the rule is refused: subqueries and names not known to
    // belong to this level are left alone.
    static bool isAggregate(const Expr& e) {
        static const QStringList names = {"count", "sum", "avg", "min", "max", "count_big", "stdev", "stdevp",
                                          "var", "varp", "checksum_agg", "grouping"};
        return e.kind == ExprKind::Function && names.contains(e.text, Qt::CaseInsensitive);
    }
    static bool hasAggregate(const Expr& e) {
        if (isAggregate(e)) return true;
        for (const auto& a : e.args)
            if (a && hasAggregate(*a)) return true;
        return false;
    }
    static bool sameExpr(const Expr& a, const Expr& b, const Scope& scope) {
        if (a.kind != b.kind || a.negated != b.negated || a.distinct != b.distinct || a.ops != b.ops ||
            a.args.size() != b.args.size() || a.subquery || b.subquery || a.literals || b.literals)
            return false;
        if (a.kind == ExprKind::Column) {
            const auto ra = scope.resolve(a.parts), rb = scope.resolve(b.parts);
            return ra.scope && ra.scope == rb.scope && ra.tableIndex == rb.tableIndex &&
                   a.parts.last().compare(b.parts.last(), Qt::CaseInsensitive) == 0;
        }
        if (a.kind == ExprKind::String ? a.text != b.text : a.text.compare(b.text, Qt::CaseInsensitive) != 0) return false;
        if (a.kind == ExprKind::Convert && (a.type.name != b.type.name || a.type.length != b.type.length)) return false;
        for (size_t i = 0; i < a.args.size(); ++i) {
            if (!a.args[i] != !b.args[i]) return false;
            if (a.args[i] && !sameExpr(*a.args[i], *b.args[i], scope)) return false;
        }
        return true;
    }
    static void checkGrouped(const Expr& e, const SelectCore& core, const Scope& scope, const char* clause) {
        if (isAggregate(e)) return;
        for (const auto& g : core.groupBy)
            if (sameExpr(e, *g, scope)) return;
        if (e.kind == ExprKind::Column && !e.parts.isEmpty() && !e.parts.last().startsWith(QLatin1Char('@'))) {
            const auto r = scope.resolve(e.parts);
            if (r.scope == &scope && !r.ambiguous && r.tableIndex >= 0)
                throw SqlError(QStringLiteral("Column '%1.%2' is invalid in the %3 because it is not contained in either an "
                                              "aggregate function or the GROUP BY clause.")
                                   .arg(scope.tables()[size_t(r.tableIndex)].exposed, e.parts.last(), QLatin1String(clause))
                                   .toStdString());
            return;
        }
        for (const auto& a : e.args)
            if (a) checkGrouped(*a, core, scope, clause);
    }
    static bool isGrouped(const SelectCore& core) {
        bool grouped = !core.groupBy.empty() || (core.having && hasAggregate(*core.having));
        for (const auto& item : core.items) grouped = grouped || (item.expr && hasAggregate(*item.expr));
        return grouped;
    }
    // Order by may also name a result column, by alias, name or position, or repeat an item.
    static void checkGroupedOrder(const Expr& e, const SelectCore& core, const Scope& scope) {
        if (e.kind == ExprKind::Number) return;
        for (const auto& item : core.items) {
            if (!item.expr) continue;
            if (e.kind == ExprKind::Column && e.parts.size() == 1 &&
                (item.alias.compare(e.parts.last(), Qt::CaseInsensitive) == 0 ||
                 (item.expr->kind == ExprKind::Column && item.expr->parts.last().compare(e.parts.last(), Qt::CaseInsensitive) == 0)))
                return;
            if (sameExpr(e, *item.expr, scope)) return;
        }
        checkGrouped(e, core, scope, "ORDER BY clause");
    }
    static void checkGrouping(const SelectCore& core, const Scope& scope) {
        if (!isGrouped(core)) return;
        for (const auto& item : core.items)
            if (item.expr && item.expr->kind != ExprKind::Star) checkGrouped(*item.expr, core, scope, "select list");
        if (core.having) checkGrouped(*core.having, core, scope, "HAVING clause");
    }

    // A computed text or date keeps the server's comparison rules where SQLite would fall
    // back to bytes: union, distinct, group by, order by. Columns carry their own.
    static QString collated(const Expr& e, const Typed& t) {
        if (e.kind == ExprKind::Column) return t.sql;
        if (t.kind == ColumnKind::Text) return paren(t.sql) + QStringLiteral(" COLLATE TSQL_CI");
        if (t.kind == ColumnKind::DateTime) return paren(t.sql) + QStringLiteral(" COLLATE TSQL_DATE");
        return t.sql;
    }

    QString starText(const Expr& e) {
        if (e.parts.isEmpty()) return QStringLiteral("*");
        return quoteName(e.parts.last()) + QStringLiteral(".*");
    }

    QString sourceText(const TableSource& s, Scope& scope) {
        switch (s.kind) {
        case TableSource::Table: {
            QString out = quoteName(s.name);
            if (!s.alias.isEmpty()) out += QStringLiteral(" AS ") + quoteName(s.alias);
            return out;
        }
        case TableSource::Derived: {
            std::vector<ColumnKind> kinds;
            std::vector<NumericType> numerics;
            const QString body = select(*s.derived, scope.parent(), &kinds, {}, &numerics);
            if (const auto columns = resultColumns(s.derived->cores.front(), kinds, numerics)) scope.typeDerived(s.alias, *columns);
            // Only a derived table outside any subquery can move: one inside may read the
            // columns of the query around it.
            if (!hoistDerived_ || scope.parent()) return paren(body) + QStringLiteral(" AS ") + quoteName(s.alias);
            const QString name = quoteName(QStringLiteral("tsql_derived_") + QString::number(commonTables_.size() + 1));
            commonTables_ << name + QStringLiteral(" AS (") + body + QLatin1Char(')');
            return name + QStringLiteral(" AS ") + quoteName(s.alias);
        }
        case TableSource::Join: {
            static const char* const words[] = {" JOIN ", " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN ", " CROSS JOIN "};
            QString out = sourceText(*s.left, scope) + QLatin1String(words[int(s.joinType)]) + sourceText(*s.right, scope);
            if (s.on) out += QStringLiteral(" ON ") + condition(*s.on, scope);
            return out;
        }
        }
        return {};
    }

    // select ... into t: the table is declared from the select list's types, so its text
    // columns compare like every other text column.
    QStringList selectInto(const SelectStmt& s) {
        const SelectCore& core = s.cores.front();
        Scope scope(catalog_, nullptr);
        scope.addSources(core.from);
        std::vector<ColumnKind> kinds;
        std::vector<NumericType> numerics;
        const QString body = select(s, nullptr, &kinds, {}, &numerics);
        std::vector<CatalogColumn> columns;
        for (size_t i = 0; i < core.items.size(); ++i) {
            const SelectItem& item = core.items[i];
            if (item.expr->kind == ExprKind::Star) {
                for (const auto& t : scope.tables()) {
                    if (!item.expr->parts.isEmpty() &&
                        t.exposed.compare(item.expr->parts.last(), Qt::CaseInsensitive) != 0)
                        continue;
                    if (!t.columns) throw SqlError(QStringLiteral("Invalid object name '%1'.").arg(quotedExcerpt(t.table)).toStdString());
                    for (const auto& c : *t.columns) columns.push_back({c.name, c.kind, false, c.numeric});
                }
                continue;
            }
            const QString name = selectItemName(item);
            if (name.isEmpty())
                throw SqlError("An object or column name is missing or empty. For SELECT INTO statements, verify "
                               "each column has a name.");
            columns.push_back({name, kinds[i], false, digitsOf(kinds[i], numerics[i])});
        }
        QStringList defs;
        for (const auto& c : columns) defs << quoteName(c.name) + columnTypeFor(c);
        const bool temp = core.into.startsWith(QLatin1Char('#'));
        catalog_.define(core.into, columns);
        QStringList cols;
        for (const auto& c : columns) cols << quoteName(c.name);
        return {QStringLiteral("CREATE %1TABLE %2 (%3)")
                    .arg(temp ? QStringLiteral("TEMP ") : QString(), quoteName(core.into), defs.join(QStringLiteral(", "))),
                QStringLiteral("INSERT INTO %1 (%2) %3").arg(quoteName(core.into), cols.join(QStringLiteral(", ")), body)};
    }

    static QString columnTypeFor(const CatalogColumn& c) {
        switch (c.kind) {
        case ColumnKind::Text: return QStringLiteral(" varchar COLLATE TSQL_CI");
        case ColumnKind::Integer: return QLatin1Char(' ') + exactTypeName(c.kind, digitsOf(c.kind, c.numeric));
        case ColumnKind::Float: return QStringLiteral(" float");
        case ColumnKind::Money: return QLatin1Char(' ') + exactTypeName(c.kind, digitsOf(c.kind, c.numeric)) + QStringLiteral("_real");
        case ColumnKind::Decimal: {
            const NumericType d = digitsOf(c.kind, c.numeric);
            return QStringLiteral(" decimal_real(%1,%2)").arg(d.precision).arg(d.scale);
        }
        case ColumnKind::DateTime:
            return c.minutes ? QStringLiteral(" smalldatetime_text COLLATE TSQL_DATE") : QStringLiteral(" datetime_text COLLATE TSQL_DATE");
        case ColumnKind::Bit: return QStringLiteral(" bit");
        case ColumnKind::Unknown: return QString();
        }
        return {};
    }

    // ---- data changes

    // The columns a statement stores into, by name or all of them; unknown ones untyped.
    std::vector<CatalogColumn> targetColumns(const QString& table, const QStringList& names) {
        std::vector<CatalogColumn> targets;
        const auto columns = catalog_.tableColumns(table);
        if (!columns) return targets;
        if (names.isEmpty()) return *columns;
        for (const auto& n : names) {
            CatalogColumn target{n};
            for (const auto& c : *columns)
                if (c.name.compare(n, Qt::CaseInsensitive) == 0) target = c;
            targets.push_back(target);
        }
        return targets;
    }

    // A value stored into a numeric column is converted as the server converts it: an
    // integer column keeps its type's range, money and decimals are rounded to the
    // column's scale and kept within its precision.
    QString storedValue(const Expr& e, const Scope& scope, const CatalogColumn& target) {
        Typed t = expr(e, scope);
        if (target.kind == ColumnKind::Integer || target.kind == ColumnKind::Money || target.kind == ColumnKind::Decimal) {
            // Text too is converted by the runtime, with the server's messages.
            const NumericType to = digitsOf(target.kind, target.numeric);
            if (t.kind != ColumnKind::Text && storesUnchanged(t, target.kind, to)) return t.sql;
            return QStringLiteral("tsql_cast_num(%1, %2, '%3')").arg(exactOperand(t), exactTypeArgs(target.kind, to), sourceTypeName(t));
        }
        if (isNumeric(target.kind) && t.kind == ColumnKind::Text) t.sql = toNumber(t, target.kind);
        return storedDate(t, target).value_or(t.sql);
    }

    // Dates are stored in one of the two date forms, whatever form the text was in; a
    // number is days since 1900-01-01, the server's zero date. A smalldatetime column
    // takes every value to the minute.
    static std::optional<QString> storedDate(const Typed& t, const CatalogColumn& target) {
        if (target.kind != ColumnKind::DateTime) return std::nullopt;
        if (target.minutes) return QStringLiteral("tsql_store_date(%1, 1)").arg(t.sql);
        if (t.kind == ColumnKind::Text || isNumeric(t.kind)) return QStringLiteral("tsql_store_date(%1)").arg(t.sql);
        return std::nullopt;
    }

    // insert ... select: the selected values converted as a store converts them, through a
    // named row source so each column can be wrapped.
    QString insertSelect(const QString& head, const SelectStmt& source, const std::vector<CatalogColumn>& targets) {
        std::vector<ColumnKind> kinds;
        std::vector<NumericType> numerics;
        const QString body = select(source, nullptr, &kinds, {}, &numerics);
        const auto columns = resultColumns(source.cores.front(), kinds, numerics);
        if (!columns || columns->size() != targets.size()) return head + QLatin1Char(' ') + body;  // a * of unknown width
        QStringList names, values;
        bool converted = false;
        for (size_t i = 0; i < targets.size(); ++i) {
            const QString name = QStringLiteral("\"c%1\"").arg(i + 1);
            names << name;
            const CatalogColumn& target = targets[i];
            Typed value{name, (*columns)[i].kind, (*columns)[i].numeric};
            const bool exact = target.kind == ColumnKind::Integer || target.kind == ColumnKind::Money || target.kind == ColumnKind::Decimal;
            const NumericType to = digitsOf(target.kind, target.numeric);
            if (const auto date = storedDate(value, target)) {
                values << *date;
                converted = true;
                continue;
            }
            if (!exact || storesUnchanged(value, target.kind, to)) {
                values << name;
                continue;
            }
            values << QStringLiteral("tsql_cast_num(%1, %2, '%3')").arg(name, exactTypeArgs(target.kind, to), sourceTypeName(value));
            converted = true;
        }
        if (!converted) return head + QLatin1Char(' ') + body;
        return QStringLiteral("WITH \"tsql_rows\" (%1) AS (%2) %3 SELECT %4 FROM \"tsql_rows\"")
            .arg(names.join(QStringLiteral(", ")), body, head, values.join(QStringLiteral(", ")));
    }

    // Without a column list the server fills every column but the identity one; naming the
    // identity column is refused.
    QStringList insertColumns(const Statement& s) {
        const auto columns = catalog_.tableColumns(s.table);
        if (!columns) return s.columns;
        QStringList names;
        for (const auto& c : *columns) {
            if (c.identity && s.columns.contains(c.name, Qt::CaseInsensitive))
                throw SqlError(QStringLiteral("Cannot insert explicit value for identity column in table '%1' when "
                                              "IDENTITY_INSERT is set to OFF.").arg(s.table).toStdString());
            if (c.identity && s.columns.isEmpty()) {
                for (const auto& other : *columns)
                    if (!other.identity) names << other.name;
                return names;
            }
        }
        return s.columns;
    }

    QString insert(const Statement& s) {
        QString out = QStringLiteral("INSERT INTO ") + quoteName(s.table);
        const QStringList columns = insertColumns(s);
        if (!columns.isEmpty()) {
            QStringList cols;
            for (const auto& c : columns) cols << quoteName(c);
            out += QStringLiteral(" (") + cols.join(QStringLiteral(", ")) + QLatin1Char(')');
        }
        const auto targets = targetColumns(s.table, columns);
        if (s.select) return insertSelect(out, *s.select, targets);
        Scope none(catalog_, nullptr);
        QStringList rows;
        for (const auto& row : s.values) {
            QStringList values;
            for (size_t i = 0; i < row.size(); ++i)
                values << storedValue(*row[i], none, i < targets.size() ? targets[i] : CatalogColumn{});
            rows << QLatin1Char('(') + values.join(QStringLiteral(", ")) + QLatin1Char(')');
        }
        return out + QStringLiteral(" VALUES ") + rows.join(QStringLiteral(", "));
    }

    // T-SQL names the target of update/delete ... from by a name or alias of its FROM list.
    // A target in a join of the list is changed through its rowids (`joined`); one among the
    // list's comma-separated sources is taken out of the list and is the statement's own
    // table, which SQLite's update ... from joins with the rest; a target not in the list is
    // a table of its own, joined with all of it.
    struct Target {
        QString table;
        QString alias;
        bool joined = false;
        QString exposed() const { return alias.isEmpty() ? table : alias; }
    };
    static void tablesOf(const TableSource& source, bool inJoin, std::vector<std::pair<const TableSource*, bool>>& out) {
        if (source.kind == TableSource::Table) out.emplace_back(&source, inJoin);
        if (source.kind != TableSource::Join) return;
        tablesOf(*source.left, true, out);
        tablesOf(*source.right, true, out);
    }
    Target findTarget(const Statement& s, std::vector<const TableSource*>& rest) {
        std::vector<std::pair<const TableSource*, bool>> tables;  // with whether it sits in a join
        for (const auto& source : s.from) tablesOf(*source, false, tables);
        // By its exposed name first; else the one reference to the table, aliased or not.
        const std::pair<const TableSource*, bool>* match = nullptr;
        for (const auto& t : tables)
            if (t.first->exposedName().compare(s.table, Qt::CaseInsensitive) == 0) match = &t;
        if (!match) {
            int references = 0;
            for (const auto& t : tables)
                if (t.first->name.compare(s.table, Qt::CaseInsensitive) == 0) match = &t, ++references;
            if (references > 1) match = nullptr;
        }
        const bool joined = match && match->second;
        for (const auto& source : s.from)
            if (joined || !match || source.get() != match->first) rest.push_back(source.get());
        return match ? Target{match->first->name, match->first->alias, joined} : Target{s.table, {}, false};
    }

    // The FROM list and where condition of an update or delete, each printed once: a derived
    // table of the list registers its columns (or a common table expression) as it prints.
    struct PrintedFrom {
        QString sources;
        QString condition;  // empty without a where clause
        QString clauses() const {
            QString out = QStringLiteral(" FROM ") + sources;
            if (!condition.isEmpty()) appendClause(out, QStringLiteral(" WHERE "), condition);
            return out;
        }
    };
    PrintedFrom printFrom(const std::vector<const TableSource*>& sources, const Expr* where, Scope& scope) {
        QStringList texts;
        for (const TableSource* r : sources) texts << sourceText(*r, scope);
        return {texts.join(QStringLiteral(", ")), where ? condition(*where, scope) : QString()};
    }

    // The rowids of the target's rows the FROM list and where clause find.
    static QString targetRowids(const Target& target, const PrintedFrom& from) {
        return QStringLiteral("SELECT ") + quoteName(target.exposed()) + QStringLiteral(".rowid") + from.clauses();
    }

    QString update(const Statement& s) {
        std::vector<const TableSource*> rest;
        const Target target = findTarget(s, rest);
        Scope scope(catalog_, nullptr);
        if (!target.joined) scope.addTable(target.exposed(), target.table);
        for (const TableSource* r : rest) scope.addSource(*r);
        QStringList names;
        for (const auto& a : s.assignments) names << a.first;
        const auto targets = targetColumns(target.table, names);
        for (const CatalogColumn& c : targets)
            if (c.identity) throw SqlError(QStringLiteral("Cannot update identity column '%1'.").arg(c.name).toStdString());
        QStringList columns, values;
        for (size_t i = 0; i < s.assignments.size(); ++i) {
            columns << quoteName(s.assignments[i].first);
            values << storedValue(*s.assignments[i].second, scope, i < targets.size() ? targets[i] : CatalogColumn{});
        }
        if (target.joined) {
            // Each target row takes the values of the first row the join finds for it; the
            // statement's own table has a name no source of the list can hide.
            static const QString self = quoteName(QStringLiteral("tsql_target"));
            const PrintedFrom from = printFrom(rest, s.where.get(), scope);
            QString row = QStringLiteral("SELECT ") + values.join(QStringLiteral(", ")) + QStringLiteral(" FROM ") +
                          from.sources + QStringLiteral(" WHERE ") + quoteName(target.exposed()) + QStringLiteral(".rowid = ") +
                          self + QStringLiteral(".rowid");
            if (!from.condition.isEmpty()) row += QStringLiteral(" AND (") + from.condition + QLatin1Char(')');
            const QString assigned = columns.size() == 1 ? columns.front() : paren(columns.join(QStringLiteral(", ")));
            return QStringLiteral("UPDATE ") + quoteName(target.table) + QStringLiteral(" AS ") + self + QStringLiteral(" SET ") +
                   assigned + QStringLiteral(" = (") + row + QStringLiteral(") WHERE rowid IN (") + targetRowids(target, from) +
                   QLatin1Char(')');
        }
        QString out = QStringLiteral("UPDATE ") + quoteName(target.table);
        if (!target.alias.isEmpty()) out += QStringLiteral(" AS ") + quoteName(target.alias);
        QStringList sets;
        for (qsizetype i = 0; i < columns.size(); ++i) sets << columns[i] + QStringLiteral(" = ") + values[i];
        out += QStringLiteral(" SET ") + sets.join(QStringLiteral(", "));
        if (!rest.empty()) return out + printFrom(rest, s.where.get(), scope).clauses();
        if (s.where) appendClause(out, QStringLiteral(" WHERE "), condition(*s.where, scope));
        return out;
    }

    QString deleteStatement(const Statement& s) {
        if (s.from.empty()) {
            Scope scope(catalog_, nullptr);
            scope.addTable(s.table, s.table);
            QString out = QStringLiteral("DELETE FROM ") + quoteName(s.table);
            if (s.where) appendClause(out, QStringLiteral(" WHERE "), condition(*s.where, scope));
            return out;
        }
        // delete t from t, u where ...: the rows of t that the join finds.
        std::vector<const TableSource*> rest;
        const Target target = findTarget(s, rest);
        Scope scope(catalog_, nullptr);
        if (!target.joined) scope.addTable(target.exposed(), target.table);
        for (const TableSource* r : rest) scope.addSource(*r);
        TableSource own;
        own.name = target.table;
        own.alias = target.alias;
        if (!target.joined) rest.insert(rest.begin(), &own);
        return QStringLiteral("DELETE FROM ") + quoteName(target.table) + QStringLiteral(" WHERE rowid IN (") +
               targetRowids(target, printFrom(rest, s.where.get(), scope)) + QLatin1Char(')');
    }

    // ---- definitions

    QString columnSql(const ColumnDef& c, bool rowidKey) {
        if (c.identity)
            return quoteName(c.name) + (rowidKey ? QStringLiteral(" INTEGER PRIMARY KEY AUTOINCREMENT") : QStringLiteral(" int"));
        const DeclaredType d = declaredType(c.type);
        QString out = quoteName(c.name) + QLatin1Char(' ') + d.sqliteType;
        if (!d.collation.isEmpty()) out += QStringLiteral(" COLLATE ") + d.collation;
        if (c.notNull) out += QStringLiteral(" NOT NULL");
        // A text longer than its declared length is refused, as the server refuses it.
        if (d.kind == ColumnKind::Text && c.type.length > 0 && !c.type.max)
            out += QStringLiteral(" CHECK (tsql_fits(%1, %2, %3))")
                       .arg(quoteName(c.name), QString::number(c.type.length),
                            c.type.name.startsWith(QLatin1Char('n')) ? QStringLiteral("1") : QStringLiteral("0"));
        if (c.defaultValue) {
            Scope none(catalog_, nullptr);
            out += QStringLiteral(" DEFAULT (") + expr(*c.defaultValue, none).sql + QLatin1Char(')');
        }
        if (c.primaryKey) out += QStringLiteral(" PRIMARY KEY");
        if (c.unique) out += QStringLiteral(" UNIQUE");
        return out;
    }

    static QStringList quotedList(const QStringList& names, const QStringList& descending = {}) {
        QStringList out;
        for (const auto& n : names)
            out << quoteName(n) + (descending.contains(n) ? QStringLiteral(" DESC") : QString());
        return out;
    }

    QStringList createTable(const Statement& s) {
        const bool temp = s.table.startsWith(QLatin1Char('#'));
        // An identity column becomes the rowid key, the one column SQLite numbers itself; a
        // primary key on other columns is then kept as a unique constraint.
        const ColumnDef* identity = nullptr;
        for (const auto& c : s.columnDefs)
            if (c.identity) {
                if (identity) throw SqlError(QStringLiteral("Multiple identity columns specified for table '%1'. Only one "
                                                            "identity column per table is allowed.").arg(s.table).toStdString());
                identity = &c;
            }
        QStringList defs;
        std::vector<CatalogColumn> columns;
        for (const auto& c : s.columnDefs) {
            defs << columnSql(c, true);
            const DeclaredType d = c.identity ? DeclaredType{{}, ColumnKind::Integer, {}, {10, 0}} : declaredType(c.type);
            columns.push_back({c.name, d.kind, c.identity, d.numeric, isNationalType(c.type),
                               c.type.name.compare(QLatin1String("smalldatetime"), Qt::CaseInsensitive) == 0});
        }
        Scope none(catalog_, nullptr);
        for (const auto& k : s.constraints) {
            QString text = k.name.isEmpty() ? QString() : QStringLiteral("CONSTRAINT ") + quoteName(k.name) + QLatin1Char(' ');
            switch (k.kind) {
            case TableConstraint::PrimaryKey:
                if (identity && k.columns.size() == 1 && k.columns.front().compare(identity->name, Qt::CaseInsensitive) == 0)
                    continue;
                text += (identity ? QStringLiteral("UNIQUE (") : QStringLiteral("PRIMARY KEY (")) +
                        quotedList(k.columns, k.descending).join(QStringLiteral(", ")) + QLatin1Char(')');
                break;
            case TableConstraint::Unique:
                text += QStringLiteral("UNIQUE (") + quotedList(k.columns, k.descending).join(QStringLiteral(", ")) + QLatin1Char(')');
                break;
            case TableConstraint::Check:
                text += QStringLiteral("CHECK (") + condition(*k.check, none) + QLatin1Char(')');
                break;
            case TableConstraint::ForeignKey:
                text += QStringLiteral("FOREIGN KEY (") + quotedList(k.columns).join(QStringLiteral(", ")) +
                        QStringLiteral(") REFERENCES ") + quoteName(k.refTable);
                if (!k.refColumns.isEmpty()) text += QStringLiteral(" (") + quotedList(k.refColumns).join(QStringLiteral(", ")) + QLatin1Char(')');
                break;
            }
            defs << text;
        }
        catalog_.define(s.table, columns);
        QStringList out{QStringLiteral("CREATE %1TABLE %2 (%3)")
                            .arg(temp ? QStringLiteral("TEMP ") : QString(), quoteName(s.table), defs.join(QStringLiteral(", ")))};
        if (identity && identity->identitySeed != 1)
            out << QStringLiteral("INSERT INTO %1sqlite_sequence (name, seq) VALUES (%2, %3)")
                       .arg(tempPrefix(s.table), quoteString(s.table), QString::number(identity->identitySeed - 1));
        return out;
    }

    // Index names belong to their table on the server but to the whole database here: the
    // schema scripts give each index a name of its own.
    static QString indexName(const QString&, const QString& index) { return index; }

    QString createIndex(const Statement& s) {
        return QStringLiteral("CREATE %1INDEX %2 ON %3 (%4)")
            .arg(s.unique ? QStringLiteral("UNIQUE ") : QString(), tempPrefix(s.table) + quoteName(indexName(s.table, s.indexName)),
                 quoteName(s.table), quotedList(s.columns, s.descending).join(QStringLiteral(", ")));
    }

    QStringList alterAdd(const Statement& s) {
        QStringList out;
        // SQLite cannot add a key to a table; a unique index holds the same rule. Foreign
        // keys are not enforced by the embedded database, so adding one changes nothing.
        for (const auto& k : s.constraints) {
            if (k.kind == TableConstraint::Check)
                throw SqlError("The embedded database cannot add a check constraint to an existing table.");
            if (k.kind == TableConstraint::ForeignKey) continue;
            const QString name = k.name.isEmpty() ? QStringLiteral("UQ_%1_%2").arg(s.table, k.columns.join(QLatin1Char('_'))) : k.name;
            out << QStringLiteral("CREATE UNIQUE INDEX %1 ON %2 (%3)")
                       .arg(tempPrefix(s.table) + quoteName(name), quoteName(s.table),
                            quotedList(k.columns, k.descending).join(QStringLiteral(", ")));
        }
        auto columns = catalog_.tableColumns(s.table);
        for (const auto& c : s.columnDefs) {
            if (c.identity || c.primaryKey || c.unique)
                throw SqlError("The embedded database cannot add a key or identity column to an existing table.");
            out << QStringLiteral("ALTER TABLE ") + quoteName(s.table) + QStringLiteral(" ADD COLUMN ") + columnSql(c, false);
            if (columns) {
                const DeclaredType d = declaredType(c.type);
                columns->push_back({c.name, d.kind, false, d.numeric, isNationalType(c.type)});
            }
        }
        if (columns) catalog_.define(s.table, columns);
        return out;
    }

    // ---- expressions

    QString condition(const Expr& e, const Scope& scope) { return expr(e, scope).sql; }

    // Appends in place: a condition of megabytes (a long in list) is not copied again.
    static void appendClause(QString& out, const QString& keyword, const QString& clause) {
        out.reserve(out.size() + keyword.size() + clause.size());
        out += keyword;
        out += clause;
    }

    static QString paren(const QString& s) { return QLatin1Char('(') + s + QLatin1Char(')'); }

    // A text operand of a numeric operation: a literal is converted here, anything else by
    // tsql_num at run time (which raises the server's conversion error).
    QString toNumber(const Typed& t, ColumnKind numericKind, bool lenient = false) {
        const QString target = conversionTarget(numericKind);
        if (t.literalText) {
            const QString v = t.literalValue.trimmed();
            if (numericKind == ColumnKind::Bit && v.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) return QStringLiteral("1");
            if (numericKind == ColumnKind::Bit && v.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) return QStringLiteral("0");
            bool ok = false;
            if (target == QLatin1String("int") || target == QLatin1String("bit")) {
                const qlonglong n = v.toLongLong(&ok);
                if (ok) return QString::number(n);
                if (v.isEmpty()) return QStringLiteral("0");
            } else {
                const double d = v.toDouble(&ok);
                if (ok) return QString::number(d, 'g', 17);
            }
        }
        if (lenient) return QStringLiteral("tsql_num(%1, '%2', 1)").arg(t.sql, target);
        return QStringLiteral("tsql_num(%1, '%2')").arg(t.sql, target);
    }

    // The server types 12 as int, 5000000000 as numeric(10, 0), 1.50 as numeric(3, 2) and
    // 1e3 as float.
    static Typed numberLiteral(const QString& text) {
        if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) return binaryLiteral(text);
        if (text.startsWith(QLatin1Char('$'))) return moneyLiteral(text.mid(1));
        if (std::isinf(std::strtod(text.toLatin1().constData(), nullptr)))
            throw SqlError(QStringLiteral("The floating point value '%1' is out of the range of computer representation (8 bytes).")
                               .arg(quotedExcerpt(text))
                               .toStdString());
        Typed t{text, ColumnKind::Float};
        t.literalNumber = true;
        t.literalValue = text;
        if (text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) return t;
        const int point = int(text.indexOf(QLatin1Char('.')));
        const int scale = point < 0 ? 0 : int(text.size()) - point - 1;
        QString whole = point < 0 ? text : text.left(point);
        while (whole.startsWith(QLatin1Char('0'))) whole.remove(0, 1);
        bool fits = false;
        const qlonglong value = text.toLongLong(&fits);
        if (point < 0 && fits && value <= 2147483647LL) {
            t.kind = ColumnKind::Integer;
            t.numeric = {10, 0};
            return t;
        }
        t.kind = ColumnKind::Decimal;
        t.numeric = {std::clamp(int(whole.size()) + scale, 1, 38), std::min(scale, 38)};
        return t;
    }

    // 0x41FF: the embedded database keeps no binary values; a binary constant is the
    // integer of its bytes (16895), as the server reads it where a number is wanted.
    static Typed binaryLiteral(const QString& text) {
        const QString digits = text.mid(2);
        if (digits.isEmpty() || digits.size() > 16)
            throw SqlError(QStringLiteral("Binary constants of more than 8 bytes are not supported on the embedded database: "
                                          "'%1'.").arg(quotedExcerpt(text)).toStdString());
        const qint64 value = qint64(digits.toULongLong(nullptr, 16));
        Typed t{QString::number(value), ColumnKind::Integer, {digits.size() > 8 ? 19 : 10, 0}};
        t.literalNumber = true;
        t.literalValue = t.sql;
        return t;
    }

    // $1.23456 is money: rounded to four decimals, within money's range.
    static Typed moneyLiteral(const QString& number) {
        int digits = 0;
        for (const QChar c : number) digits += c.isDigit() && (digits > 0 || c != u'0');
        const QByteArray text = number.toLatin1();
        const auto d = decimalOfText(std::string_view(text.constData(), size_t(text.size())));
        Typed t{{}, ColumnKind::Money, {19, 4}};
        if (digits > 15 || !d) {
            t.sql = QStringLiteral("tsql_cast_num('%1', 'money', 'numeric')").arg(number);
            return t;
        }
        t.sql = decimalText(number.toDouble(), 4);
        t.literalNumber = true;
        t.literalValue = t.sql;
        return t;
    }

    Typed expr(const Expr& e, const Scope& scope) {
        switch (e.kind) {
        case ExprKind::Number: return numberLiteral(e.text);
        case ExprKind::String: {
            Typed t{quoteString(e.text), ColumnKind::Text};
            t.literalText = true;
            t.literalValue = e.text;
            t.national = e.national;
            return t;
        }
        case ExprKind::Null: return {QStringLiteral("NULL"), ColumnKind::Unknown};
        case ExprKind::Column: return column(e, scope);
        case ExprKind::Star: return {starText(e), ColumnKind::Unknown};
        case ExprKind::Function: return function(e, scope);
        case ExprKind::Unary: {
            Typed a = expr(*e.args[0], scope);
            if (e.text == QLatin1String("not")) return {QStringLiteral("(NOT ") + a.sql + QLatin1Char(')'), ColumnKind::Integer};
            if (a.kind == ColumnKind::Text) a.sql = toNumber(a, ColumnKind::Float);
            // The negative of the lowest integer of a type is past its range.
            if (e.text == QLatin1String("-") && a.kind == ColumnKind::Integer && !a.literalNumber)
                return {QStringLiteral("tsql_arith(0, '-', %1, %2)").arg(a.sql, exactTypeArgs(a.kind, a.numeric)), a.kind, a.numeric};
            Typed out{QLatin1Char('(') + e.text + a.sql + QLatin1Char(')'), a.kind == ColumnKind::Text ? ColumnKind::Float : a.kind,
                      a.numeric};
            if (a.literalNumber && (e.text == QLatin1String("-") || e.text == QLatin1String("+"))) {
                out.literalNumber = true;
                out.literalValue = e.text == QLatin1String("-") ? QLatin1Char('-') + a.literalValue : a.literalValue;
            }
            return out;
        }
        case ExprKind::Binary: return binary(e, scope);
        case ExprKind::Like: {
            std::vector<Typed> operands;
            bool national = false;
            for (const auto& a : e.args) {
                operands.push_back(expr(*a, scope));
                national = national || operands.back().national;
            }
            if (national) {
                // nvarchar's like keeps the value's trailing blanks: the runtime's own function.
                QString call = QStringLiteral("tsql_nlike(") + operands[1].sql + QStringLiteral(", ") + operands[0].sql;
                if (operands.size() > 2) call += QStringLiteral(", ") + operands[2].sql;
                return {paren((e.negated ? QStringLiteral("NOT ") : QString()) + call + QLatin1Char(')')), ColumnKind::Integer};
            }
            QString out = operands[0].sql + (e.negated ? QStringLiteral(" NOT LIKE ") : QStringLiteral(" LIKE ")) + operands[1].sql;
            if (operands.size() > 2) out += QStringLiteral(" ESCAPE ") + operands[2].sql;
            return {paren(out), ColumnKind::Integer};
        }
        case ExprKind::Between: {
            Typed v = expr(*e.args[0], scope);
            Typed lo = expr(*e.args[1], scope);
            Typed hi = expr(*e.args[2], scope);
            const QString value = comparedOperand(v, {&lo, &hi});
            return {paren(value + (e.negated ? QStringLiteral(" NOT BETWEEN ") : QStringLiteral(" BETWEEN ")) + lo.sql +
                          QStringLiteral(" AND ") + hi.sql),
                    ColumnKind::Integer};
        }
        case ExprKind::InList: return inList(e, scope);
        case ExprKind::InSelect: {
            Typed v = expr(*e.args[0], scope);
            QString value = v.sql;
            if (v.kind == ColumnKind::Text) value = paren(value) + QStringLiteral(" COLLATE TSQL_CI");
            else if (v.kind == ColumnKind::DateTime) value = paren(value) + QStringLiteral(" COLLATE TSQL_DATE");
            return {paren(value + (e.negated ? QStringLiteral(" NOT IN (") : QStringLiteral(" IN (")) +
                          select(*e.subquery, &scope) + QLatin1Char(')')),
                    ColumnKind::Integer};
        }
        case ExprKind::IsNull:
            return {paren(expr(*e.args[0], scope).sql + (e.negated ? QStringLiteral(" IS NOT NULL") : QStringLiteral(" IS NULL"))),
                    ColumnKind::Integer};
        case ExprKind::Exists:
            return {QStringLiteral("EXISTS (") + select(*e.subquery, &scope) + QLatin1Char(')'), ColumnKind::Integer};
        case ExprKind::Subquery: return scalarSubquery(e, scope);
        case ExprKind::Case: return caseExpr(e, scope);
        case ExprKind::Convert: return convert(e, scope);
        }
        return {};
    }

    // The session values the embedded database has: rows the last change touched, the last
    // identity value, and the error of the last statement (always none: an error ends the
    // batch). Any other @@ name is unknown to the server too, and a batch here declares no
    // @variables.
    static Typed variable(const QString& name) {
        const QString n = name.toLower();
        if (n == QLatin1String("@@rowcount")) return {QStringLiteral("changes()"), ColumnKind::Integer};
        if (n == QLatin1String("@@identity")) return {QLatin1String(kLastIdentity), ColumnKind::Integer};
        if (n == QLatin1String("@@error")) return {QStringLiteral("0"), ColumnKind::Integer};
        throw SqlError(QStringLiteral("Must declare the scalar variable \"%1\".").arg(name).toStdString());
    }

    static bool everyLevelKnown(const Scope& scope) {
        for (const Scope* s = &scope; s; s = s->parent())
            if (!s->fullyKnown()) return false;
        return true;
    }

    // The list's literal items count in the comparison's typing as one text and one number
    // operand, and print as the parser kept them unless a numeric value needs their texts
    // as numbers.
    Typed inList(const Expr& e, const Scope& scope) {
        Typed v = expr(*e.args[0], scope);
        std::vector<Typed> list;
        for (size_t i = 1; i < e.args.size(); ++i) list.push_back(expr(*e.args[i], scope));
        const size_t stated = list.size();
        const LiteralItems* literals = e.literals.get();
        if (literals && literals->strings) list.push_back(Typed{QString(), ColumnKind::Text});
        if (literals && literals->numbers)
            list.push_back(Typed{QString(), literals->floats     ? ColumnKind::Float
                                            : literals->decimals ? ColumnKind::Decimal
                                                                 : ColumnKind::Integer});
        std::vector<Typed*> refs;
        for (auto& t : list) refs.push_back(&t);
        QString value = comparedOperand(v, refs);
        // A date among numbers only: compared as its day count.
        if (v.kind == ColumnKind::DateTime && stated == 0 && literals && literals->numbers && !literals->strings)
            value = QStringLiteral("tsql_date_num(%1, 0)").arg(v.sql);
        QString out = QLatin1Char('(') + value + (e.negated ? QStringLiteral(" NOT IN (") : QStringLiteral(" IN ("));
        for (size_t i = 0; i < stated; ++i) out += (i ? QStringLiteral(", ") : QString()) + list[i].sql;
        if (literals) {
            if (stated) out += QStringLiteral(", ");
            out += isNumeric(v.kind) && literals->strings ? numericLiterals(*literals, v.kind) : literals->sql;
        }
        out += QStringLiteral("))");
        return {std::move(out), ColumnKind::Integer};
    }

    // The literal items with each text converted as a number of the given kind.
    QString numericLiterals(const LiteralItems& items, ColumnKind kind) {
        const QString& sql = items.sql;
        QStringList out;
        qsizetype i = 0;
        while (i < sql.size()) {
            qsizetype end;
            if (sql[i] == u'\'') {
                QString value;
                end = i + 1;
                for (;; ++end) {
                    if (sql[end] == u'\'') {
                        if (end + 1 < sql.size() && sql[end + 1] == u'\'') ++end;
                        else break;
                    }
                    value += sql[end];
                }
                ++end;
                Typed text{sql.mid(i, end - i), ColumnKind::Text};
                text.literalText = true;
                text.literalValue = value;
                out << toNumber(text, kind);
            } else {
                end = sql.indexOf(QLatin1Char(','), i);
                if (end < 0) end = sql.size();
                out << sql.mid(i, end - i);
            }
            i = end + 2;  // past ", "
        }
        return out.join(QStringLiteral(", "));
    }

    Typed column(const Expr& e, const Scope& scope) {
        if (e.parts.size() == 1 && e.parts.front().startsWith(QLatin1Char('@'))) return variable(e.parts.front());
        const auto r = scope.resolve(e.parts);
        // A name that no table of the statement has is the server's error; where a table's
        // columns are unknown the engine decides. Order by may name the select list's aliases.
        if (!r.scope && !e.quoted && !orderingBy_ && !scope.tables().empty() && everyLevelKnown(scope)) {
            if (e.parts.size() > 1)
                throw SqlError(QStringLiteral("The multi-part identifier \"%1\" could not be bound.")
                                   .arg(quotedExcerpt(e.parts.join(QLatin1Char('.'))))
                                   .toStdString());
            throw SqlError(QStringLiteral("Invalid column name '%1'.").arg(quotedExcerpt(e.parts.last())).toStdString());
        }
        // With QUOTED_IDENTIFIER ON "x" names a column; as text it is an error, not a literal.
        if (e.quoted && !r.scope && scope.fullyKnown() && !scope.tables().empty())
            throw SqlError(QStringLiteral("Invalid column name '%1'.").arg(quotedExcerpt(e.parts.last())).toStdString());
        if (e.quoted && scope.tables().empty())
            throw SqlError(QStringLiteral("Invalid column name '%1'.").arg(quotedExcerpt(e.parts.last())).toStdString());
        QStringList parts;
        const int from = std::max(0, int(e.parts.size()) - 2);
        for (int i = from; i < int(e.parts.size()); ++i) parts << quoteName(e.parts[i]);
        Typed t{parts.join(QLatin1Char('.')), r.kind, r.numeric};
        t.national = r.national;
        return t;
    }

    static QString dateOfNumber(const QString& sql) { return QStringLiteral("tsql_store_date(%1)").arg(sql); }

    // The operand that carries the comparison's collation or numeric conversion.
    QString comparedOperand(Typed& value, const std::vector<Typed*>& others) {
        bool otherNumeric = false, otherDate = false;
        ColumnKind numericKind = ColumnKind::Integer;
        for (Typed* o : others) {
            if (isNumeric(o->kind)) {
                otherNumeric = true;
                numericKind = promote(numericKind, o->kind);
            }
            if (o->kind == ColumnKind::DateTime) otherDate = true;
        }
        if (isNumeric(value.kind) && otherDate) return dateOfNumber(value.sql) + QStringLiteral(" COLLATE TSQL_DATE");
        if (value.kind == ColumnKind::DateTime)
            for (Typed* o : others)
                if (isNumeric(o->kind)) o->sql = dateOfNumber(o->sql);
        if (isNumeric(value.kind)) {
            for (Typed* o : others)
                if (o->kind == ColumnKind::Text) o->sql = toNumber(*o, value.kind);
            return value.sql;
        }
        if (value.kind == ColumnKind::Text && otherNumeric) return toNumber(value, numericKind);
        if (value.kind == ColumnKind::DateTime || otherDate) return paren(value.sql) + QStringLiteral(" COLLATE TSQL_DATE");
        bool anyText = value.kind == ColumnKind::Text;
        for (Typed* o : others) anyText = anyText || o->kind == ColumnKind::Text;
        if (anyText) return paren(value.sql) + QStringLiteral(" COLLATE TSQL_CI");
        return value.sql;
    }

    Typed binary(const Expr& e, const Scope& scope) {
        const QString& op = e.text;
        if (op == QLatin1String("*=") || op == QLatin1String("=*"))
            throw SqlError("The old outer-join operators may only join two tables in the WHERE clause.");
        if (op == QLatin1String("and") || op == QLatin1String("or")) return logicalChain(e, scope);
        if (!e.ops.isEmpty()) return arithmeticChain(e, scope);
        Typed l = expr(*e.args[0], scope);
        Typed r = expr(*e.args[1], scope);
        static const QStringList comparisons = {"=", "<>", "!=", "<", ">", "<=", ">=", "!<", "!>"};
        if (comparisons.contains(op)) {
            const QString sqlOp = op == QLatin1String("!<") ? QStringLiteral(">=") : op == QLatin1String("!>") ? QStringLiteral("<=") : op;
            // Text meets a number as a number; otherwise the collation goes on the right operand.
            // Between two columns (a join) a text that is no number matches nothing: which rows
            // the server converts depends on its plan, so it need not fail on rows that other
            // predicates drop; against a constant every row is converted and may fail.
            const bool join = e.args[0]->kind == ExprKind::Column && e.args[1]->kind == ExprKind::Column;
            QString left = l.sql, right = r.sql;
            if (isNumeric(l.kind) && r.kind == ColumnKind::Text) right = toNumber(r, l.kind, join);
            else if (isNumeric(r.kind) && l.kind == ColumnKind::Text) left = toNumber(l, r.kind, join);
            else if (l.kind == ColumnKind::DateTime || r.kind == ColumnKind::DateTime) {
                // A number meets a date as that many days after 1900-01-01.
                if (isNumeric(l.kind)) left = dateOfNumber(left);
                if (isNumeric(r.kind)) right = dateOfNumber(right);
                right = paren(right) + QStringLiteral(" COLLATE TSQL_DATE");
            }
            else if (l.kind == ColumnKind::Text || r.kind == ColumnKind::Text) right = paren(right) + QStringLiteral(" COLLATE TSQL_CI");
            return {paren(left + QLatin1Char(' ') + sqlOp + QLatin1Char(' ') + right), ColumnKind::Integer};
        }
        throw SqlError(QStringLiteral("Incorrect syntax near '%1'.").arg(op).toStdString());
    }

    // and/or print flat, as one chain, however the conditions were grouped: and and or are
    // associative. SQLite's tree nests one level per operator, so past kChainGroup terms
    // the chain is cut into parenthesized groups that nest far less.
    Typed logicalChain(const Expr& e, const Scope& scope) {
        const QString& op = e.text;
        std::vector<const Expr*> pending{&e};
        QStringList parts;
        while (!pending.empty()) {
            const Expr* node = pending.back();
            pending.pop_back();
            if (node->kind == ExprKind::Binary && node->text == op) {
                for (auto it = node->args.rbegin(); it != node->args.rend(); ++it) pending.push_back(it->get());
                continue;
            }
            parts << expr(*node, scope).sql;
        }
        return {groupedChain(std::move(parts), op == QLatin1String("and") ? QStringLiteral(" AND ") : QStringLiteral(" OR ")),
                ColumnKind::Integer};
    }

    // Operands of an associative operator, flat up to kChainGroup of them, in parenthesized
    // groups beyond.
    static QString groupedChain(QStringList parts, const QString& separator) {
        while (parts.size() > kChainGroup) {
            QStringList groups;
            for (qsizetype i = 0; i < parts.size(); i += kChainGroup) groups << paren(parts.mid(i, kChainGroup).join(separator));
            parts = std::move(groups);
        }
        return paren(parts.join(separator));
    }

    // An arithmetic or concatenation chain folds left, as the server evaluates it, with no
    // parenthesis per operator: SQLite's parser stack holds only some dozens of nested
    // parentheses or calls. Parentheses go only where SQLite would bind otherwise, and
    // the chain as a whole is one parenthesized operand to whatever uses it.
    Typed arithmeticChain(const Expr& e, const Scope& scope) {
        std::vector<Typed> operands;
        for (const auto& a : e.args) operands.push_back(expr(*a, scope));
        // Texts joined by + are associative, so a long join is grouped as and/or are.
        const bool texts = std::all_of(operands.begin(), operands.end(), [](const Typed& t) { return t.kind == ColumnKind::Text; });
        if (texts && e.ops.count(QStringLiteral("+")) == e.ops.size() && operands.size() > size_t(kChainGroup)) {
            QStringList parts;
            for (const auto& t : operands) parts << t.sql;
            return {groupedChain(std::move(parts), QStringLiteral(" || ")), ColumnKind::Text};
        }
        Typed result = std::move(operands.front());
        for (size_t i = 1; i < operands.size(); ++i) result = arithmetic(e.ops[i - 1], std::move(result), std::move(operands[i]));
        // The engine's float arithmetic answers inf where the server overflows.
        if (result.infix && result.kind == ColumnKind::Float) return {floatChecked(result.sql), result.kind};
        return {result.infix ? paren(result.sql) : result.sql, result.kind, result.numeric};
    }

    // The left operand of a chain's operator of the given strength: bare when its own
    // operator binds at least as tightly (left association does the rest).
    static QString leftOperand(const Typed& t, int strength) {
        return t.infix && t.infix < strength ? paren(t.sql) : t.sql;
    }
    static QString closed(const Typed& t) { return t.infix ? paren(t.sql) : t.sql; }
    static QString floatChecked(const QString& sql) { return QStringLiteral("tsql_float(") + sql + QLatin1Char(')'); }

    static Typed infix(const Typed& l, const QString& op, const Typed& r, int strength, ColumnKind kind) {
        Typed t{leftOperand(l, strength) + QLatin1Char(' ') + op + QLatin1Char(' ') + closed(r), kind};
        t.infix = strength;
        return t;
    }

    // An operator the runtime evaluates: one call of `function` takes a run of operands
    // (the function folds them left), rather than a nested call per operator.
    static Typed runtimeCall(const char* function, const Typed& l, const Typed& r, ColumnKind kind) {
        Typed t;
        if (l.openCall == function && l.callOperands < kCallOperands) {
            t.sql = l.sql.chopped(1) + QStringLiteral(", ") + r.sql + QLatin1Char(')');
            t.callOperands = l.callOperands + 1;
        } else {
            t.sql = QLatin1String(function) + QLatin1Char('(') + l.sql + QStringLiteral(", ") + r.sql + QLatin1Char(')');
            t.callOperands = 2;
        }
        t.openCall = function;
        t.kind = kind;
        return t;
    }
    static constexpr const char* kAdd = "tsql_add";
    static constexpr const char* kXor = "tsql_xor";

    // One step of exact arithmetic; the steps of a chain share one tsql_arith call.
    static Typed exactStep(const Typed& l, const QString& op, const Typed& r, ColumnKind kind, NumericType result) {
        const QString step = QStringLiteral("'%1', %2, %3").arg(op, exactOperand(r), exactTypeArgs(kind, result));
        Typed t{{}, kind, result};
        if (l.exactSteps && l.exactSteps < kExactSteps) {
            t.sql = l.sql.chopped(1) + QStringLiteral(", ") + step + QLatin1Char(')');
            t.exactSteps = l.exactSteps + 1;
        } else {
            t.sql = QStringLiteral("tsql_arith(") + exactOperand(l) + QStringLiteral(", ") + step + QLatin1Char(')');
            t.exactSteps = 1;
        }
        return t;
    }

    // One step of a chain: l is the chain so far, r an operand.
    Typed arithmetic(const QString& op, Typed l, Typed r) {
        const bool ln = isNumeric(l.kind), rn = isNumeric(r.kind);
        // A + chain that went to the runtime stays in its call for joins and untyped
        // operands: the runtime joins texts as || does.
        if (op == QLatin1String("+") && l.openCall == kAdd && !(ln && rn) && l.kind != ColumnKind::DateTime &&
            r.kind != ColumnKind::DateTime)
            return runtimeCall(kAdd, l, r, l.kind != ColumnKind::Unknown ? l.kind : r.kind);
        if (op == QLatin1String("+")) {
            if (l.kind == ColumnKind::Text && r.kind == ColumnKind::Text) {
                Typed joined = infix(l, QStringLiteral("||"), r, kConcatStrength, ColumnKind::Text);
                joined.national = l.national || r.national;
                return joined;
            }
            if (l.kind == ColumnKind::DateTime && rn) return {QStringLiteral("tsql_date_add(%1, %2)").arg(l.sql, r.sql), ColumnKind::DateTime};
            if (r.kind == ColumnKind::DateTime && ln) return {QStringLiteral("tsql_date_add(%1, %2)").arg(r.sql, l.sql), ColumnKind::DateTime};
        }
        if (op == QLatin1String("-") && l.kind == ColumnKind::DateTime && rn)
            return {QStringLiteral("tsql_date_add(%1, -(%2))").arg(l.sql, r.sql), ColumnKind::DateTime};
        // Two dates add and subtract as day counts; the result is a date again. Text meeting
        // a date converts to a date.
        const auto dateOrText = [](const Typed& t) { return t.kind == ColumnKind::DateTime || t.kind == ColumnKind::Text; };
        if ((op == QLatin1String("-") || op == QLatin1String("+")) && dateOrText(l) && dateOrText(r) &&
            (l.kind == ColumnKind::DateTime || r.kind == ColumnKind::DateTime))
            return {QStringLiteral("tsql_date_sum(%1, %2, %3)").arg(l.sql, r.sql, op == QLatin1String("-") ? QStringLiteral("-1") : QStringLiteral("1")),
                    ColumnKind::DateTime};
        if (ln && r.kind == ColumnKind::Text) r.sql = toNumber(r, l.kind);
        if (rn && l.kind == ColumnKind::Text) l = Typed{toNumber(l, r.kind), l.kind};
        const bool numeric = (ln || l.kind == ColumnKind::Text) && (rn || r.kind == ColumnKind::Text) && (ln || rn);
        const ColumnKind kind = numeric ? promote(ln ? l.kind : r.kind, rn ? r.kind : l.kind) : ColumnKind::Unknown;
        const bool exact = kind == ColumnKind::Integer || kind == ColumnKind::Money || kind == ColumnKind::Decimal;
        static const QStringList exactOperators = {"+", "-", "*", "/"};
        // Money has no remainder on the server; its % stays with the engine.
        if (exact && (exactOperators.contains(op) || (op == QLatin1String("%") && kind != ColumnKind::Money))) {
            // A text operand takes the type of the other.
            const NumericType result = exactResult(op.front(), kind, digitsOf(ln ? l : r), digitsOf(rn ? r : l));
            return exactStep(l, op, r, kind, result);
        }
        if (op == QLatin1String("/")) return {QStringLiteral("tsql_div(%1, %2)").arg(l.sql, r.sql), kind};
        if (op == QLatin1String("%")) return {QStringLiteral("tsql_mod(%1, %2)").arg(l.sql, r.sql), kind};
        if (op == QLatin1String("+") && !numeric) {
            // Types unknown here: the values decide at run time (text joins, numbers add).
            return runtimeCall(kAdd, l, r, l.kind != ColumnKind::Unknown ? l.kind : r.kind);
        }
        if (op == QLatin1String("^")) return runtimeCall(kXor, l, r, ColumnKind::Integer);
        const int strength = op == QLatin1String("*")                              ? kProductStrength
                             : op == QLatin1String("+") || op == QLatin1String("-") ? kSumStrength
                                                                                   : kBitStrength;
        return infix(l, op, r, strength, kind);
    }

    // Aggregates and single-row selects cannot return two rows; anything else is checked
    // at run time as the server checks it.
    static bool singleRow(const SelectStmt& s) {
        if (s.cores.size() != 1) return false;
        const SelectCore& c = s.cores.front();
        if (c.top && c.top->kind == ExprKind::Number && c.top->text == QLatin1String("1")) return true;
        if (!c.groupBy.empty() || c.items.size() != 1) return false;
        const Expr& e = *c.items.front().expr;
        static const QStringList aggregates = {"max", "min", "sum", "count", "avg"};
        if (e.kind == ExprKind::Function && aggregates.contains(e.text)) return true;
        if (e.kind == ExprKind::Function && e.text == QLatin1String("isnull") && !e.args.empty() &&
            e.args[0]->kind == ExprKind::Function && aggregates.contains(e.args[0]->text))
            return true;
        return c.from.empty();
    }

    // The check reads the subquery once (an aggregate over its rows), so nested subqueries
    // do not multiply the text, and adds one level of nesting only.
    Typed scalarSubquery(const Expr& e, const Scope& scope) {
        std::vector<ColumnKind> kinds;
        const SelectStmt& sub = *e.subquery;
        const bool checked = !singleRow(sub) && sub.cores.front().items.front().expr->kind != ExprKind::Star;
        static const QString value = QStringLiteral("tsql_value");
        const bool inPlace = checked && checksInPlace(sub, scope);
        checkFirstItem_ = inPlace;
        const QString inner = select(sub, &scope, &kinds, checked && !inPlace ? value : QString());
        const ColumnKind kind = kinds.empty() ? ColumnKind::Unknown : kinds.front();
        if (!checked || inPlace) return {paren(inner), kind};
        return {QStringLiteral("(SELECT tsql_single(%1) FROM (%2))").arg(quoteName(value), inner), kind};
    }

    // A subquery of one plain select whose item is a column of its own tables checks its
    // rows in place, as tsql_single(column) over them: one level of nesting less for
    // SQLite's parser. An item of outer columns only would make the aggregate the outer
    // query's, and grouping or distinct change which rows there are.
    bool checksInPlace(const SelectStmt& sub, const Scope& scope) {
        if (sub.cores.size() != 1 || !sub.orderBy.empty()) return false;
        const SelectCore& core = sub.cores.front();
        if (core.distinct || core.top || !core.groupBy.empty() || core.having || core.items.size() != 1 ||
            !core.into.isEmpty())
            return false;
        const Expr& item = *core.items.front().expr;
        if (item.kind != ExprKind::Column) return false;
        Scope inner(catalog_, &scope);
        inner.addSources(core.from);
        const auto r = inner.resolve(item.parts);
        return r.scope == &inner && !r.ambiguous;
    }

    Typed caseExpr(const Expr& e, const Scope& scope) {
        QString out = QStringLiteral("CASE");
        size_t i = 0;
        Typed operand;
        if (e.hasCaseOperand) {
            operand = expr(*e.args[0], scope);
            out += QLatin1Char(' ') + (operand.kind == ColumnKind::Text ? paren(operand.sql) + QStringLiteral(" COLLATE TSQL_CI") : operand.sql);
            i = 1;
        }
        ColumnKind kind = ColumnKind::Unknown;
        NumericType numeric;
        const size_t whenEnd = e.args.size() - (e.hasElse ? 1 : 0);
        for (; i + 1 < whenEnd; i += 2) {
            out += QStringLiteral(" WHEN ") + expr(*e.args[i], scope).sql;
            Typed then = expr(*e.args[i + 1], scope);
            if (kind == ColumnKind::Unknown) kind = then.kind, numeric = then.numeric;
            out += QStringLiteral(" THEN ") + then.sql;
        }
        if (e.hasElse) {
            Typed other = expr(*e.args.back(), scope);
            if (kind == ColumnKind::Unknown) kind = other.kind, numeric = other.numeric;
            out += QStringLiteral(" ELSE ") + other.sql;
        }
        return {out + QStringLiteral(" END"), kind, numeric};
    }

    Typed convert(const Expr& e, const Scope& scope) {
        Typed value = expr(*e.args[0], scope);
        const QString style = e.args.size() > 1 ? expr(*e.args[1], scope).sql : QStringLiteral("NULL");
        const DeclaredType target = declaredType(e.type);
        // A date is its day count; an integer takes the nearest day.
        if (value.kind == ColumnKind::DateTime && (target.kind == ColumnKind::Integer || target.kind == ColumnKind::Money ||
                                                   target.kind == ColumnKind::Decimal || target.kind == ColumnKind::Bit)) {
            const bool whole = target.kind == ColumnKind::Integer || target.kind == ColumnKind::Bit;
            value.sql = QStringLiteral("tsql_date_num(%1, %2)").arg(value.sql, whole ? QStringLiteral("1") : QStringLiteral("0"));
            value.kind = whole ? ColumnKind::Integer : ColumnKind::Float;
            value.numeric = {};
        }
        if (target.kind == ColumnKind::Integer || target.kind == ColumnKind::Money || target.kind == ColumnKind::Decimal)
            return {QStringLiteral("tsql_cast_num(%1, %2, '%3')").arg(exactOperand(value), exactTypeArgs(target.kind, target.numeric), sourceTypeName(value)),
                    target.kind, target.numeric};
        // A decimal shows the digits of its scale.
        if (target.kind == ColumnKind::Text && value.kind == ColumnKind::Decimal)
            value.sql = QStringLiteral("tsql_decimal_text(%1, %2)").arg(value.sql, QString::number(digitsOf(value).scale));
        Typed out{QStringLiteral("tsql_convert('%1', %2, %3, %4, %5, %6)")
                    .arg(e.type.name, QString::number(e.type.max ? -1 : e.type.length), QString::number(e.type.scale),
                         value.sql, style,
                         value.kind == ColumnKind::DateTime ? QStringLiteral("1")
                         : value.kind == ColumnKind::Money  ? QStringLiteral("2")
                         : value.kind == ColumnKind::Decimal ? QStringLiteral("3")
                                                             : QStringLiteral("0")),
                  target.kind};
        out.national = isNationalType(e.type);
        return out;
    }

    // datediff(day, a, b) and its kin; year(d), month(d) and day(d) are datepart's.
    std::optional<Typed> datePartFunction(const Expr& e, const Scope& scope) {
        static const QStringList shorthands = {"year", "month", "day"};
        const bool shorthand = shorthands.contains(e.text);
        const DatePartFunction* f = nullptr;
        for (const auto& d : kDatePartFunctions)
            if (QLatin1String(d.tsql) == (shorthand ? QStringLiteral("datepart") : e.text)) f = &d;
        if (!f) return std::nullopt;
        const int expected = shorthand ? 1 : f->args;
        if (int(e.args.size()) != expected)
            throw SqlError(QStringLiteral("The %1 function requires %2 argument(s).").arg(e.text).arg(expected).toStdString());
        QStringList args;
        if (shorthand) {
            args << quoteString(e.text);
        } else {
            const Expr& part = *e.args[0];
            if (part.kind != ExprKind::Column || part.quoted)
                throw SqlError(QStringLiteral("Invalid parameter 1 specified for %1.").arg(e.text).toStdString());
            const auto name = part.parts.size() == 1 ? canonicalDatePart(part.parts.front()) : std::nullopt;
            if (!name)
                throw SqlError(QStringLiteral("'%1' is not a recognized %2 option.")
                                   .arg(part.parts.join(QLatin1Char('.')), e.text)
                                   .toStdString());
            args << quoteString(*name);
        }
        for (size_t i = shorthand ? 0 : 1; i < e.args.size(); ++i) args << expr(*e.args[i], scope).sql;
        Typed out{QStringLiteral("tsql_%1(%2)").arg(QLatin1String(f->tsql), args.join(QStringLiteral(", "))), f->kind};
        out.national = f->kind == ColumnKind::Text;  // datename answers nvarchar
        return out;
    }

    // Bytes of the value's type: fixed for numbers and dates, counted for text.
    static int fixedSize(ColumnKind kind) {
        switch (kind) {
        case ColumnKind::Integer: return 4;
        case ColumnKind::Bit: return 1;
        case ColumnKind::Decimal: return 9;  // decimal(18, s), the common declaration
        case ColumnKind::Float:
        case ColumnKind::Money:
        case ColumnKind::DateTime: return 8;
        default: return 0;  // the runtime measures the value
        }
    }

    Typed function(const Expr& e, const Scope& scope) {
        if (auto datePart = datePartFunction(e, scope)) return *datePart;
        const QString& name = e.text;
        std::vector<Typed> args;
        if (!(name == QLatin1String("count") && e.args.size() == 1 && e.args[0]->kind == ExprKind::Star))
            for (const auto& a : e.args) args.push_back(expr(*a, scope));
        auto argList = [&]() {
            QStringList list;
            for (const auto& a : args) list << a.sql;
            return list.join(QStringLiteral(", "));
        };
        auto arity = [&](size_t lo, size_t hi) {
            if (args.size() < lo || args.size() > hi)
                throw SqlError(QStringLiteral("The %1 function requires %2 argument(s).").arg(name, QString::number(lo)).toStdString());
        };
        auto call = [&](const QString& fn, ColumnKind kind) { return Typed{fn + QLatin1Char('(') + argList() + QLatin1Char(')'), kind}; };
        if (name == QLatin1String("count") || name == QLatin1String("count_big")) {
            if (args.empty()) return {QStringLiteral("count(*)"), ColumnKind::Integer};
            return {QStringLiteral("count(") + (e.distinct ? QStringLiteral("DISTINCT ") : QString()) + argList() + QLatin1Char(')'),
                    ColumnKind::Integer};
        }
        if (name == QLatin1String("sum") || name == QLatin1String("max") || name == QLatin1String("min") ||
            name == QLatin1String("avg")) {
            arity(1, 1);
            QString arg = args[0].sql;
            ColumnKind kind = args[0].kind;
            if (kind == ColumnKind::Bit) kind = ColumnKind::Integer;
            if (name == QLatin1String("sum") || name == QLatin1String("avg")) {
                if (kind == ColumnKind::Text) arg = toNumber(args[0], ColumnKind::Float), kind = ColumnKind::Float;
            }
            QString out = name + QLatin1Char('(') + (e.distinct ? QStringLiteral("DISTINCT ") : QString()) + arg + QLatin1Char(')');
            // The server's average of integers is an integer.
            if (name == QLatin1String("avg") && kind == ColumnKind::Integer) out = QStringLiteral("CAST(%1 AS INTEGER)").arg(out);
            const bool total = name == QLatin1String("sum") || name == QLatin1String("avg");
            // A sum of integers is an int (a bigint of bigints) and overflows as one.
            if (name == QLatin1String("sum") && kind == ColumnKind::Integer && !e.distinct) {
                const NumericType result{digitsOf(args[0]).precision == 19 ? 19 : 10, 0};
                return {QStringLiteral("tsql_sum(%1, %2)").arg(arg, exactTypeArgs(kind, result)), kind, result};
            }
            if (total && (kind == ColumnKind::Money || kind == ColumnKind::Decimal)) {
                // Sums of money are money; of decimal(p, s) decimal(38, s), their averages at
                // least six decimals. Exact aggregates take one argument when distinct, so
                // the engine's sum is rounded to the result's scale instead.
                const NumericType digits = digitsOf(args[0]);
                const NumericType result = kind == ColumnKind::Money    ? NumericType{19, 4}
                                           : name == QLatin1String("sum") ? NumericType{38, digits.scale}
                                                                          : NumericType{38, std::max(digits.scale, 6)};
                const QString type = exactTypeArgs(kind, result);
                if (e.distinct) return {QStringLiteral("tsql_cast_num(%1, %2, 'numeric')").arg(out, type), kind, result};
                return {QStringLiteral("tsql_%1(%2, %3)").arg(name, arg, type), kind, result};
            }
            if (total && kind == ColumnKind::Float) return {floatChecked(out), kind};
            return {out, kind, name == QLatin1String("max") || name == QLatin1String("min") ? args[0].numeric : NumericType{}};
        }
        if (name == QLatin1String("datalength")) {
            arity(1, 1);
            return {QStringLiteral("tsql_datalength(%1, %2, %3)").arg(args[0].sql).arg(args[0].national ? 1 : 0).arg(fixedSize(args[0].kind)),
                    ColumnKind::Integer};
        }
        if (name == QLatin1String("scope_identity")) {
            arity(0, 0);
            return {QLatin1String(kLastIdentity), ColumnKind::Integer};
        }
        if (name == QLatin1String("nullif")) {
            arity(2, 2);
            // Compared as = compares: ignoring case for text, as points in time for dates.
            Typed out{QStringLiteral("nullif(%1, %2)").arg(comparedOperand(args[0], {&args[1]}), args[1].sql), args[0].kind};
            out.national = args[0].national;
            return out;
        }
        for (const auto& m : kFunctionMappings) {
            if (name != QLatin1String(m.tsql)) continue;
            arity(size_t(m.minArgs), size_t(m.maxArgs));
            // A text function reads a date as the server's implicit conversion writes it:
            // style 0 (Jan  5 2024  9:07PM).
            static const QStringList measuresText = {"len", "charindex", "patindex", "ascii", "unicode"};
            if (m.kind == ColumnKind::Text || measuresText.contains(name))
                for (auto& a : args)
                    if (a.kind == ColumnKind::DateTime)
                        a = Typed{QStringLiteral("tsql_convert('varchar', 30, 0, %1, 0, 1)").arg(a.sql), ColumnKind::Text};
            Typed out = call(QLatin1String(m.sqlite), m.kind);
            if (m.kindOfArguments && !args.empty()) out.kind = args[0].kind, out.numeric = args[0].numeric;
            // ceiling and floor of a decimal are a decimal of its precision without decimals.
            if ((name == QLatin1String("ceiling") || name == QLatin1String("floor")) && out.kind == ColumnKind::Decimal)
                out.numeric = {digitsOf(out).precision, 0};
            if (out.kind == ColumnKind::Integer && out.numeric.precision == 0) out.numeric = {10, 0};
            for (const auto& a : args) out.national = out.national || (out.kind == ColumnKind::Text && a.national);
            return out;
        }
        throw SqlError(QStringLiteral("'%1' is not a recognized built-in function name.").arg(name).toStdString());
    }
};

}  // namespace

QStringList printSqlite(const Statement& statement, BatchCatalog& catalog, std::optional<std::vector<ColumnKind>>* resultKinds,
                        std::optional<std::vector<int>>* resultScales) {
    Printer printer(catalog);
    QStringList out = printer.statement(statement);
    if (resultKinds && printer.resultKinds) *resultKinds = printer.resultKinds;
    if (resultScales && printer.resultScales) *resultScales = printer.resultScales;
    return out;
}

}  // namespace kivdb::dialect
