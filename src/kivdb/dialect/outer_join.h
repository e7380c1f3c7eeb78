#pragma once
// The old outer-join operators *= and =* turned into joins, with the meaning SQL Server
// 2000 gives them: a predicate on the inner table alone belongs to the join, so every row
// of the outer table is kept. One pass over the tree, shared by the SQLite printer and by
// the T-SQL printer for servers that no longer accept the operators.
#include "dialect/dialect.h"
#include "dialect/tsql_ast.h"

namespace kivdb::dialect {

class Scope;

// Rewrites every select level of the statement (subqueries included). Throws SqlError for
// uses the server refuses (an operator inside OR, next to ANSI joins, or in a cycle).
void rewriteOldOuterJoins(Statement& statement, const Catalog& catalog);
void rewriteOldOuterJoins(SelectStmt& select, const Catalog& catalog, const Scope* parent);

// T-SQL text of a batch after rewriteOldOuterJoins: the rewritten FROM and WHERE clauses
// are printed anew, everything else is copied from the source text.
QString printRewrittenTsql(const QString& source, const std::vector<StatementPtr>& statements);

}  // namespace kivdb::dialect
