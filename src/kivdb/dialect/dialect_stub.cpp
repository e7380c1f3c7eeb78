// Placeholder until the translator lands: passes text through unchanged.
#include "dialect/dialect.h"

namespace kivdb::dialect {
QString translateToSqlite(const QString& tsql, const Catalog&) { return tsql; }
bool hasOldOuterJoin(const QString& tsql) { return tsql.contains(QLatin1String("*=")) || tsql.contains(QLatin1String("=*")); }
QString rewriteOuterJoins(const QString& tsql, const Catalog&) { return tsql; }
void registerRuntime(sqlite3*) {}
}  // namespace kivdb::dialect
