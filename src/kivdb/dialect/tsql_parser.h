#pragma once
// T-SQL text -> syntax tree. Rejects what SQL Server rejects, with the server's wording
// ("Incorrect syntax near ..."), and never repairs a statement.
#include "dialect/tsql_ast.h"

namespace kivdb::dialect {

// All statements of one batch; throws SqlError for an empty batch or bad syntax.
std::vector<StatementPtr> parseBatch(const QString& sql);

}  // namespace kivdb::dialect
