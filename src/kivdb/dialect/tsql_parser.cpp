#include "dialect/tsql_parser.h"

#include "dialect/dialect.h"
#include "dialect/tsql_lexer.h"

#include <QSet>

#include <deque>

namespace kivdb::dialect {

namespace {

const QSet<QString>& reservedWords() {
    static const QSet<QString> words = {
        "add", "all", "alter", "and", "any", "as", "asc", "between", "by", "case", "cast", "check",
        "clustered", "constraint", "convert", "create", "cross", "default", "delete", "desc", "distinct",
        "drop", "else", "end", "escape", "exists", "foreign", "from", "full", "group", "having",
        "identity", "in", "index", "inner", "insert", "into", "is", "join", "key", "left", "like",
        "nonclustered", "not", "null", "on", "or", "order", "outer", "percent", "primary", "references",
        "right", "select", "set", "table", "then", "top", "union", "unique", "update", "values", "when",
        "where", "with"};
    return words;
}

bool isReserved(const Token& t) {
    return t.type == TokenType::Identifier && reservedWords().contains(t.text.toLower());
}

bool startsStatement(const Token& t) {
    for (const char* w : {"select", "insert", "update", "delete", "create", "drop", "alter", "set"})
        if (t.isKeyword(w)) return true;
    return false;
}

// Deep enough for any real statement, shallow enough that the recursion stays bounded.
constexpr int kMaxNesting = 150;

class Parser {
public:
    explicit Parser(const QString& sql) : sql_(sql), lexer_(sql) {}

    std::vector<StatementPtr> batch() {
        std::vector<StatementPtr> result;
        try {
            for (;;) {
                while (peek().type == TokenType::Semicolon) next();
                if (peek().type == TokenType::End) break;
                result.push_back(statement());
                const Token& after = peek();
                if (after.type != TokenType::Semicolon && after.type != TokenType::End && !startsStatement(after))
                    fail(after);
            }
        } catch (const SqlError&) {
            // The server reads the whole text before it parses: an unclosed quote further on
            // is the error it reports.
            while (lexer_.next().type != TokenType::End) {}
            throw;
        }
        if (result.empty()) throw SqlError("Command text was not set for the command object.");
        return result;
    }

private:
    const QString& sql_;
    // Tokens are read as the parser comes to them and dropped some way behind it, so a
    // long statement never holds all of its tokens.
    mutable Lexer lexer_;
    mutable std::deque<Token> window_;
    mutable size_t windowBase_ = 0;  // the position of window_.front()
    static constexpr size_t kTokensKeptBehind = 16;
    size_t pos_ = 0;
    Token last_;  // the token before pos_
    int depth_ = 0;

    struct DepthGuard {
        Parser& p;
        explicit DepthGuard(Parser& parser) : p(parser) {
            if (++p.depth_ > kMaxNesting) throw SqlError(kNestedTooDeeply);
        }
        ~DepthGuard() { --p.depth_; }
    };

    // The token `ahead` places on; End past the end.
    const Token& peek(size_t ahead = 0) const {
        while (windowBase_ + window_.size() <= pos_ + ahead) {
            if (!window_.empty() && window_.back().type == TokenType::End) return window_.back();
            window_.push_back(lexer_.next());
        }
        return window_[pos_ + ahead - windowBase_];
    }
    Token next() {
        Token t = peek();
        if (t.type != TokenType::End) {
            ++pos_;
            last_ = t;
        }
        while (pos_ - windowBase_ > kTokensKeptBehind) {
            window_.pop_front();
            ++windowBase_;
        }
        return t;
    }
    int lastEnd() const { return pos_ == 0 ? 0 : last_.end; }

    [[noreturn]] void fail(const Token& t) const {
        if (t.type == TokenType::End) {
            const QString last = pos_ > 0 ? sql_.mid(last_.begin, last_.end - last_.begin) : QString();
            throw SqlError(QStringLiteral("Incorrect syntax near '%1'.").arg(quotedExcerpt(last)).toStdString());
        }
        const QString text = sql_.mid(t.begin, t.end - t.begin);
        if (isReserved(t))
            throw SqlError(QStringLiteral("Incorrect syntax near the keyword '%1'.").arg(t.text.toLower()).toStdString());
        throw SqlError(QStringLiteral("Incorrect syntax near '%1'.").arg(quotedExcerpt(text)).toStdString());
    }

    bool acceptKeyword(const char* w) {
        if (peek().isKeyword(w)) { next(); return true; }
        return false;
    }
    void expectKeyword(const char* w) {
        if (!acceptKeyword(w)) fail(peek());
    }
    bool acceptOp(const char* op) {
        if (peek().isOp(op)) { next(); return true; }
        return false;
    }
    void expectOp(const char* op) {
        if (!acceptOp(op)) fail(peek());
    }

    bool isName(const Token& t) const {
        return t.type == TokenType::QuotedIdentifier || (t.type == TokenType::Identifier && !isReserved(t));
    }
    QString name() {
        if (!isName(peek())) fail(peek());
        return next().text;
    }
    // A possibly qualified object name; the schema and database parts are dropped.
    QString objectName() {
        QString n = name();
        while (peek().isOp(".")) {
            next();
            n = name();
        }
        return n;
    }

    qint64 integerLiteral() {
        bool negative = acceptOp("-");
        if (peek().type != TokenType::Number) fail(peek());
        bool ok = false;
        const qint64 v = next().text.toLongLong(&ok);
        if (!ok) fail(last_);
        return negative ? -v : v;
    }

    // ---- statements

    StatementPtr statement() {
        const Token& t = peek();
        const int begin = t.begin;
        StatementPtr s;
        if (t.isKeyword("select")) {
            s = std::make_unique<Statement>();
            s->kind = StmtKind::Select;
            s->select = select();
        } else if (t.isKeyword("insert")) {
            s = insert();
        } else if (t.isKeyword("update")) {
            s = update();
        } else if (t.isKeyword("delete")) {
            s = deleteStatement();
        } else if (t.isKeyword("create")) {
            s = create();
        } else if (t.isKeyword("drop")) {
            s = drop();
        } else if (t.isKeyword("alter")) {
            s = alter();
        } else if (t.isKeyword("set")) {
            s = setOption();
        } else {
            fail(t);
        }
        s->span = {begin, lastEnd()};
        return s;
    }

    StatementPtr insert() {
        auto s = std::make_unique<Statement>();
        s->kind = StmtKind::Insert;
        next();
        acceptKeyword("into");
        s->table = objectName();
        if (peek().isOp("(") && !peek(1).isKeyword("select")) {
            next();
            do s->columns << name();
            while (acceptOp(","));
            expectOp(")");
        }
        if (acceptKeyword("values")) {
            do {
                expectOp("(");
                std::vector<ExprPtr> row;
                do row.push_back(expression());
                while (acceptOp(","));
                expectOp(")");
                s->values.push_back(std::move(row));
            } while (acceptOp(","));
        } else if (peek().isKeyword("select") || (peek().isOp("(") && peek(1).isKeyword("select"))) {
            const bool parenthesized = acceptOp("(");
            s->select = select();
            if (parenthesized) expectOp(")");
        } else {
            fail(peek());
        }
        return s;
    }

    StatementPtr update() {
        auto s = std::make_unique<Statement>();
        s->kind = StmtKind::Update;
        next();
        s->table = objectName();
        expectKeyword("set");
        do {
            QString column = name();
            while (acceptOp(".")) column = name();
            expectOp("=");
            s->assignments.emplace_back(column, expression());
        } while (acceptOp(","));
        fromAndWhere(*s);
        return s;
    }

    StatementPtr deleteStatement() {
        auto s = std::make_unique<Statement>();
        s->kind = StmtKind::Delete;
        next();
        acceptKeyword("from");
        s->table = objectName();
        fromAndWhere(*s);
        return s;
    }

    // T-SQL's own "from" list of update and delete, and the condition.
    void fromAndWhere(Statement& s) {
        if (acceptKeyword("from")) s.from = tableSources();
        if (acceptKeyword("where")) s.where = expression();
    }

    StatementPtr create() {
        next();
        auto s = std::make_unique<Statement>();
        if (acceptKeyword("table")) {
            s->kind = StmtKind::CreateTable;
            s->table = objectName();
            expectOp("(");
            do {
                if (peek().isKeyword("constraint") || peek().isKeyword("primary") || peek().isKeyword("unique") ||
                    peek().isKeyword("check") || peek().isKeyword("foreign"))
                    s->constraints.push_back(tableConstraint());
                else
                    s->columnDefs.push_back(columnDef(*s));
            } while (acceptOp(","));
            expectOp(")");
            fileGroupClause();
            return s;
        }
        s->kind = StmtKind::CreateIndex;
        s->unique = acceptKeyword("unique");
        if (!acceptKeyword("clustered")) acceptKeyword("nonclustered");
        expectKeyword("index");
        s->indexName = name();
        expectKeyword("on");
        s->table = objectName();
        orderedColumns(s->columns, s->descending);
        fileGroupClause();
        return s;
    }

    // "on [PRIMARY]" and "textimage_on [PRIMARY]" of generated scripts mean nothing here.
    void fileGroupClause() {
        while (peek().isKeyword("on") || peek().isKeyword("textimage_on")) {
            next();
            name();
        }
    }

    void orderedColumns(QStringList& columns, QStringList& descending) {
        expectOp("(");
        do {
            const QString column = name();
            columns << column;
            if (acceptKeyword("desc")) descending << column;
            else acceptKeyword("asc");
        } while (acceptOp(","));
        expectOp(")");
    }

    DataType dataType() {
        DataType type;
        type.name = objectName().toLower();
        if (acceptOp("(")) {
            if (acceptKeyword("max")) {
                type.max = true;
            } else {
                type.length = int(integerLiteral());
                if (acceptOp(",")) type.scale = int(integerLiteral());
            }
            expectOp(")");
        }
        return type;
    }

    ColumnDef columnDef(Statement& table) {
        ColumnDef c;
        c.name = name();
        c.type = dataType();
        for (;;) {
            if (acceptKeyword("null")) continue;
            if (peek().isKeyword("not") && peek(1).isKeyword("null")) {
                next();
                next();
                c.notNull = true;
                continue;
            }
            if (acceptKeyword("identity")) {
                c.identity = true;
                if (acceptOp("(")) {
                    c.identitySeed = integerLiteral();
                    expectOp(",");
                    integerLiteral();  // the step; the embedded engine always counts by one
                    expectOp(")");
                }
                continue;
            }
            if (acceptKeyword("constraint")) {
                name();
                continue;
            }
            if (acceptKeyword("default")) {
                c.defaultValue = unary();
                continue;
            }
            if (acceptKeyword("primary")) {
                expectKeyword("key");
                if (!acceptKeyword("clustered")) acceptKeyword("nonclustered");
                c.primaryKey = true;
                continue;
            }
            if (acceptKeyword("unique")) {
                if (!acceptKeyword("clustered")) acceptKeyword("nonclustered");
                c.unique = true;
                continue;
            }
            if (peek().isKeyword("references") || peek().isKeyword("foreign")) {
                // An inline foreign key: kept as a table constraint on this one column.
                TableConstraint key;
                key.kind = TableConstraint::ForeignKey;
                if (acceptKeyword("foreign")) expectKeyword("key");
                expectKeyword("references");
                key.columns << c.name;
                key.refTable = objectName();
                if (peek().isOp("(")) orderedColumns(key.refColumns, key.descending);
                table.constraints.push_back(std::move(key));
                continue;
            }
            if (peek().isKeyword("collate")) {
                next();
                name();
                continue;
            }
            if (peek().isKeyword("check")) {
                TableConstraint check;
                check.kind = TableConstraint::Check;
                next();
                expectOp("(");
                check.check = expression();
                expectOp(")");
                table.constraints.push_back(std::move(check));
                continue;
            }
            break;
        }
        return c;
    }

    TableConstraint tableConstraint() {
        TableConstraint c;
        if (acceptKeyword("constraint")) c.name = name();
        if (acceptKeyword("primary")) {
            expectKeyword("key");
            c.kind = TableConstraint::PrimaryKey;
        } else if (acceptKeyword("unique")) {
            c.kind = TableConstraint::Unique;
        } else if (acceptKeyword("check")) {
            c.kind = TableConstraint::Check;
            expectOp("(");
            c.check = expression();
            expectOp(")");
            return c;
        } else if (acceptKeyword("foreign")) {
            expectKeyword("key");
            c.kind = TableConstraint::ForeignKey;
            orderedColumns(c.columns, c.descending);
            expectKeyword("references");
            c.refTable = objectName();
            if (peek().isOp("(")) orderedColumns(c.refColumns, c.descending);
            return c;
        } else {
            fail(peek());
        }
        if (!acceptKeyword("clustered")) acceptKeyword("nonclustered");
        orderedColumns(c.columns, c.descending);
        return c;
    }

    StatementPtr drop() {
        next();
        auto s = std::make_unique<Statement>();
        if (acceptKeyword("table")) {
            s->kind = StmtKind::DropTable;
            do s->names << objectName();
            while (acceptOp(","));
            return s;
        }
        expectKeyword("index");
        s->kind = StmtKind::DropIndex;
        // Both "drop index t.ix" and "drop index ix on t".
        QString first = name();
        if (acceptOp(".")) {
            s->table = first;
            s->indexName = name();
        } else {
            s->indexName = first;
            if (acceptKeyword("on")) s->table = objectName();
        }
        return s;
    }

    StatementPtr alter() {
        next();
        expectKeyword("table");
        auto s = std::make_unique<Statement>();
        s->kind = StmtKind::AlterAdd;
        s->table = objectName();
        // "with nocheck" of generated scripts: existing rows are not checked here anyway.
        if (acceptKeyword("with") && !acceptKeyword("nocheck")) expectKeyword("check");
        expectKeyword("add");
        do {
            if (peek().isKeyword("constraint") && peek(2).isKeyword("default"))
                throw SqlError("The embedded database cannot add a default to an existing column.");
            if (peek().isKeyword("constraint") || peek().isKeyword("primary") || peek().isKeyword("unique") ||
                peek().isKeyword("check") || peek().isKeyword("foreign")) {
                s->constraints.push_back(tableConstraint());
                fileGroupClause();
            } else {
                s->columnDefs.push_back(columnDef(*s));
            }
        } while (acceptOp(","));
        return s;
    }

    // Session options of scripts (set ansi_nulls on, set nocount on ...) mean nothing on
    // the embedded engine; variables are not part of the dialect.
    StatementPtr setOption() {
        static const QSet<QString> options = {
            "ansi_nulls", "ansi_padding", "ansi_warnings", "ansi_null_dflt_on", "arithabort", "concat_null_yields_null",
            "numeric_roundabort", "quoted_identifier", "nocount", "xact_abort", "dateformat", "datefirst", "language",
            "transaction", "implicit_transactions", "lock_timeout", "textsize", "deadlock_priority"};
        next();
        if (peek().type != TokenType::Identifier || !options.contains(peek().text.toLower())) fail(peek());
        auto s = std::make_unique<Statement>();
        s->kind = StmtKind::SetOption;
        next();
        while (peek().type == TokenType::Identifier || peek().type == TokenType::Number) {
            if (startsStatement(peek())) break;
            next();
        }
        return s;
    }

    // ---- select

    SelectPtr select() {
        DepthGuard guard(*this);
        auto s = std::make_unique<SelectStmt>();
        s->span.begin = peek().begin;
        s->cores.push_back(selectCore());
        while (peek().isKeyword("union")) {
            next();
            s->unionAll.push_back(acceptKeyword("all"));
            if (!peek().isKeyword("select")) fail(peek());
            s->cores.push_back(selectCore());
        }
        if (acceptKeyword("order")) {
            expectKeyword("by");
            do {
                OrderItem item;
                item.expr = expression();
                if (acceptKeyword("desc")) item.descending = true;
                else acceptKeyword("asc");
                s->orderBy.push_back(std::move(item));
            } while (acceptOp(","));
        }
        s->span.end = lastEnd();
        return s;
    }

    SelectCore selectCore() {
        SelectCore core;
        core.span.begin = peek().begin;
        expectKeyword("select");
        if (acceptKeyword("distinct")) core.distinct = true;
        else acceptKeyword("all");
        if (acceptKeyword("top")) {
            if (acceptOp("(")) {
                core.top = expression();
                expectOp(")");
            } else {
                if (peek().type != TokenType::Number) fail(peek());
                core.top = primary();
            }
            core.topPercent = acceptKeyword("percent");
        }
        do core.items.push_back(selectItem());
        while (acceptOp(","));
        if (acceptKeyword("into")) core.into = objectName();
        if (peek().isKeyword("from")) {
            core.fromSpan.begin = next().begin;
            core.from = tableSources();
            core.fromSpan.end = lastEnd();
        }
        if (peek().isKeyword("where")) {
            core.whereSpan.begin = next().begin;
            core.where = expression();
            core.whereSpan.end = lastEnd();
        }
        if (acceptKeyword("group")) {
            expectKeyword("by");
            do core.groupBy.push_back(expression());
            while (acceptOp(","));
        }
        if (acceptKeyword("having")) core.having = expression();
        core.span.end = lastEnd();
        return core;
    }

    SelectItem selectItem() {
        SelectItem item;
        item.span.begin = peek().begin;
        // T-SQL's "alias = expression" form.
        if ((isName(peek()) || peek().type == TokenType::String) && peek(1).isOp("=")) {
            item.alias = next().text;
            next();
            item.expr = expression();
        } else {
            item.expr = expression();
            if (acceptKeyword("as")) {
                if (peek().type == TokenType::String) item.alias = next().text;
                else item.alias = name();
            } else if (isName(peek()) || peek().type == TokenType::String) {
                item.alias = next().text;
            }
        }
        item.span.end = lastEnd();
        return item;
    }

    std::vector<TableSourcePtr> tableSources() {
        std::vector<TableSourcePtr> list;
        do list.push_back(joinedSource());
        while (acceptOp(","));
        return list;
    }

    TableSourcePtr joinedSource() {
        TableSourcePtr left = primarySource();
        for (int joins = 0;; ++joins) {
            if (joins > kMaxExpressionDepth) throw SqlError(kNestedTooDeeply);
            JoinType type;
            const Token& t = peek();
            if (t.isKeyword("join")) {
                type = JoinType::Inner;
            } else if (t.isKeyword("inner") && peek(1).isKeyword("join")) {
                type = JoinType::Inner;
                next();
            } else if (t.isKeyword("cross") && peek(1).isKeyword("join")) {
                type = JoinType::Cross;
                next();
            } else if (t.isKeyword("left") || t.isKeyword("right") || t.isKeyword("full")) {
                type = t.isKeyword("left") ? JoinType::Left : t.isKeyword("right") ? JoinType::Right : JoinType::Full;
                next();
                acceptKeyword("outer");
                if (!peek().isKeyword("join")) fail(peek());
            } else {
                break;
            }
            next();  // join
            auto join = std::make_unique<TableSource>();
            join->kind = TableSource::Join;
            join->joinType = type;
            join->left = std::move(left);
            join->right = primarySource();
            if (type != JoinType::Cross) {
                expectKeyword("on");
                join->on = expression();
            }
            join->span = {join->left->span.begin, lastEnd()};
            left = std::move(join);
        }
        return left;
    }

    TableSourcePtr primarySource() {
        auto source = std::make_unique<TableSource>();
        source->span.begin = peek().begin;
        if (peek().isOp("(")) {
            next();
            source->kind = TableSource::Derived;
            source->derived = select();
            expectOp(")");
        } else {
            source->name = objectName();
        }
        if (acceptKeyword("as")) source->alias = name();
        else if (isName(peek())) source->alias = next().text;
        if (source->kind == TableSource::Derived && source->alias.isEmpty()) fail(peek());
        skipTableHints();
        source->span.end = lastEnd();
        return source;
    }

    // Table hints change nothing on the embedded engine: `with (nolock)`, and the older
    // form without `with`, `T (nolock)`, told from other parentheses by its first word.
    void skipTableHints() {
        static const QStringList kHints = {"nolock", "holdlock", "updlock", "rowlock", "tablock", "tablockx",
                                           "paglock", "xlock", "readpast", "readuncommitted", "readcommitted",
                                           "repeatableread", "serializable", "nowait", "index", "fastfirstrow"};
        const bool withHints = peek().isKeyword("with") && peek(1).isOp("(");
        const bool oldHints = peek().isOp("(") && peek(1).type == TokenType::Identifier &&
                              kHints.contains(peek(1).text, Qt::CaseInsensitive);
        if (!withHints && !oldHints) return;
        if (withHints) next();
        next();  // (
        for (int depth = 1; depth > 0;) {
            if (peek().type == TokenType::End) fail(peek());
            if (peek().isOp("(")) ++depth;
            else if (peek().isOp(")")) --depth;
            next();
        }
    }

    // ---- expressions

    ExprPtr make(ExprKind kind, int begin) {
        auto e = std::make_unique<Expr>();
        e->kind = kind;
        e->span = {begin, begin};
        return e;
    }
    // Long operator chains nest as deeply as parentheses do; both are bounded so printing
    // and freeing the tree stay within the stack.
    static constexpr int kMaxExpressionDepth = 256;

    ExprPtr finish(ExprPtr e) {
        e->span.end = lastEnd();
        for (const auto& a : e->args)
            if (a) e->depth = std::max(e->depth, a->depth + 1);
        if (e->depth > kMaxExpressionDepth) throw SqlError(kNestedTooDeeply);
        return e;
    }

    ExprPtr expression() {
        DepthGuard guard(*this);
        return orExpr();
    }

    ExprPtr binary(ExprPtr left, const Token& op, ExprPtr right) {
        auto e = make(ExprKind::Binary, left->span.begin);
        e->text = op.text.toLower();
        e->opSpan = {op.begin, op.end};
        e->args.push_back(std::move(left));
        e->args.push_back(std::move(right));
        return finish(std::move(e));
    }

    // A left-associative chain of the operators of one precedence level over the next level
    // down, as one node: a where clause of a thousand conditions or a sum of a hundred terms
    // is no deeper than one of two.
    template <typename IsOperator>
    ExprPtr chain(ExprPtr (Parser::*operand)(), IsOperator isOperator) {
        ExprPtr first = (this->*operand)();
        if (!isOperator(peek())) return first;
        auto e = make(ExprKind::Binary, first->span.begin);
        e->opSpan = {peek().begin, peek().end};
        e->args.push_back(std::move(first));
        while (isOperator(peek())) {
            e->ops << next().text.toLower();
            e->args.push_back((this->*operand)());
        }
        e->text = e->ops.front();
        return finish(std::move(e));
    }

    ExprPtr orExpr() {
        return chain(&Parser::andExpr, [](const Token& t) { return t.isKeyword("or"); });
    }
    ExprPtr andExpr() {
        return chain(&Parser::notExpr, [](const Token& t) { return t.isKeyword("and"); });
    }

    ExprPtr notExpr() {
        if (peek().isKeyword("not")) {
            DepthGuard guard(*this);
            const int begin = next().begin;
            auto e = make(ExprKind::Unary, begin);
            e->text = QStringLiteral("not");
            e->args.push_back(notExpr());
            return finish(std::move(e));
        }
        return predicate();
    }

    ExprPtr predicate() {
        ExprPtr left = additive();
        const Token& t = peek();
        static const char* const comparisons[] = {"=", "<>", "!=", "<", ">", "<=", ">=", "!<", "!>", "*=", "=*"};
        for (const char* op : comparisons) {
            if (t.isOp(op)) {
                const Token& opToken = next();
                return binary(std::move(left), opToken, additive());
            }
        }
        bool negated = false;
        if (t.isKeyword("not") && (peek(1).isKeyword("like") || peek(1).isKeyword("between") || peek(1).isKeyword("in"))) {
            next();
            negated = true;
        }
        const int begin = left->span.begin;
        if (acceptKeyword("like")) {
            auto e = make(ExprKind::Like, begin);
            e->negated = negated;
            e->args.push_back(std::move(left));
            e->args.push_back(additive());
            if (acceptKeyword("escape")) e->args.push_back(additive());
            return finish(std::move(e));
        }
        if (acceptKeyword("between")) {
            auto e = make(ExprKind::Between, begin);
            e->negated = negated;
            e->args.push_back(std::move(left));
            e->args.push_back(additive());
            expectKeyword("and");
            e->args.push_back(additive());
            return finish(std::move(e));
        }
        if (acceptKeyword("in")) {
            expectOp("(");
            if (peek().isKeyword("select")) {
                auto e = make(ExprKind::InSelect, begin);
                e->negated = negated;
                e->args.push_back(std::move(left));
                e->subquery = select();
                expectOp(")");
                return finish(std::move(e));
            }
            auto e = make(ExprKind::InList, begin);
            e->negated = negated;
            e->args.push_back(std::move(left));
            // An empty list is a syntax error on the server.
            do {
                if (!literalItem(*e)) e->args.push_back(expression());
            } while (acceptOp(","));
            expectOp(")");
            return finish(std::move(e));
        }
        if (negated) fail(peek());
        if (acceptKeyword("is")) {
            auto e = make(ExprKind::IsNull, begin);
            e->negated = acceptKeyword("not");
            expectKeyword("null");
            e->args.push_back(std::move(left));
            return finish(std::move(e));
        }
        return left;
    }

    // A string or number standing alone as an item of an in list joins the list's literals.
    bool literalItem(Expr& list) {
        const Token& t = peek();
        if ((t.type != TokenType::String && t.type != TokenType::Number) || !(peek(1).isOp(",") || peek(1).isOp(")")))
            return false;
        if (!list.literals) list.literals = std::make_unique<LiteralItems>();
        LiteralItems& items = *list.literals;
        if (!items.sql.isEmpty()) items.sql += QStringLiteral(", ");
        const Token item = next();
        if (item.type == TokenType::String) {
            ++items.strings;
            items.sql += QLatin1Char('\'');
            for (QChar c : item.text) {
                if (c == u'\'') items.sql += c;
                items.sql += c;
            }
            items.sql += QLatin1Char('\'');
        } else {
            ++items.numbers;
            bool fits = false;
            const qlonglong value = item.text.toLongLong(&fits);
            if (item.text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) items.floats = true;
            else if (!fits || value > 2147483647LL) items.decimals = true;
            items.sql += item.text;
        }
        return true;
    }

    ExprPtr additive() {
        return chain(&Parser::multiplicative, [](const Token& t) {
            return t.isOp("+") || t.isOp("-") || t.isOp("&") || t.isOp("|") || t.isOp("^");
        });
    }

    ExprPtr multiplicative() {
        return chain(&Parser::unary, [](const Token& t) { return t.isOp("*") || t.isOp("/") || t.isOp("%"); });
    }

    ExprPtr unary() {
        const Token& t = peek();
        if (t.isOp("-") || t.isOp("+") || t.isOp("~")) {
            DepthGuard guard(*this);
            const Token& op = next();
            auto e = make(ExprKind::Unary, op.begin);
            e->text = op.text;
            e->args.push_back(unary());
            return finish(std::move(e));
        }
        return primary();
    }

    ExprPtr primary() {
        const Token& t = peek();
        const int begin = t.begin;
        switch (t.type) {
        case TokenType::Number: {
            auto e = make(ExprKind::Number, begin);
            e->text = next().text;
            return finish(std::move(e));
        }
        case TokenType::String: {
            auto e = make(ExprKind::String, begin);
            e->national = t.national;
            e->text = next().text;
            return finish(std::move(e));
        }
        case TokenType::Operator:
            if (t.isOp("(")) {
                DepthGuard guard(*this);
                next();
                ExprPtr e;
                if (peek().isKeyword("select")) {
                    e = make(ExprKind::Subquery, begin);
                    e->subquery = select();
                } else {
                    e = expression();
                }
                expectOp(")");
                e->span = {begin, lastEnd()};  // the parentheses belong to the operand's text
                return e;
            }
            if (t.isOp("*")) {
                next();
                return finish(make(ExprKind::Star, begin));
            }
            fail(t);
        case TokenType::QuotedIdentifier:
        case TokenType::Identifier:
            return namedPrimary();
        default:
            fail(t);
        }
    }

    ExprPtr namedPrimary() {
        const Token& t = peek();
        const int begin = t.begin;
        if (t.isKeyword("null")) {
            next();
            return finish(make(ExprKind::Null, begin));
        }
        if (t.isKeyword("case")) return caseExpr();
        if (t.isKeyword("exists")) {
            next();
            expectOp("(");
            auto e = make(ExprKind::Exists, begin);
            if (!peek().isKeyword("select")) fail(peek());
            e->subquery = select();
            expectOp(")");
            return finish(std::move(e));
        }
        if (t.isKeyword("convert") || t.isKeyword("cast")) return convertExpr();
        if (t.type == TokenType::Identifier && peek(1).isOp("(")) return functionCall();
        if (!isName(t)) fail(t);
        auto e = make(ExprKind::Column, begin);
        e->quoted = t.doubleQuoted;
        e->parts << next().text;
        while (peek().isOp(".")) {
            next();
            if (peek().isOp("*")) {
                next();
                e->kind = ExprKind::Star;
                return finish(std::move(e));
            }
            e->quoted = peek().doubleQuoted;
            e->parts << name();
        }
        return finish(std::move(e));
    }

    ExprPtr functionCall() {
        DepthGuard guard(*this);
        const int begin = peek().begin;
        auto e = make(ExprKind::Function, begin);
        e->text = next().text.toLower();
        expectOp("(");
        if (!peek().isOp(")")) {
            if (acceptKeyword("distinct")) e->distinct = true;
            else acceptKeyword("all");
            do e->args.push_back(expression());
            while (acceptOp(","));
        }
        expectOp(")");
        return finish(std::move(e));
    }

    ExprPtr convertExpr() {
        DepthGuard guard(*this);
        const int begin = peek().begin;
        auto e = make(ExprKind::Convert, begin);
        e->isCast = next().isKeyword("cast");
        expectOp("(");
        if (e->isCast) {
            e->args.push_back(expression());
            expectKeyword("as");
            e->type = dataType();
        } else {
            e->type = dataType();
            expectOp(",");
            e->args.push_back(expression());
            if (acceptOp(",")) e->args.push_back(expression());
        }
        expectOp(")");
        return finish(std::move(e));
    }

    ExprPtr caseExpr() {
        DepthGuard guard(*this);
        const int begin = next().begin;
        auto e = make(ExprKind::Case, begin);
        if (!peek().isKeyword("when")) {
            e->hasCaseOperand = true;
            e->args.push_back(expression());
        }
        if (!peek().isKeyword("when")) fail(peek());
        while (acceptKeyword("when")) {
            e->args.push_back(expression());
            expectKeyword("then");
            e->args.push_back(expression());
        }
        if (acceptKeyword("else")) {
            e->hasElse = true;
            e->args.push_back(expression());
        }
        expectKeyword("end");
        return finish(std::move(e));
    }
};

}  // namespace

std::vector<StatementPtr> parseBatch(const QString& sql) { return Parser(sql).batch(); }

}  // namespace kivdb::dialect
