#pragma once
// The sample company for demonstrations and trials: a gear-box maker in 江苏 and its 2006
// books, written as T-SQL insert scripts beside the schema (schema/sample/mssql/NN_area.sql,
// laid out as schema/mssql so that sqlcmd and the schema loader read them alike).
#include "integrity/schema_loader.h"

#include <QString>
#include <vector>


namespace kivdb::integrity {

// schema/sample of the source tree.
QString defaultSampleDirectory();

// Every batch of the sample scripts, in the order they run, for a connection that runs
// T-SQL itself (a server database). Throws SchemaError when there are no scripts or one
// cannot be read.
std::vector<SchemaBatch> sampleDataBatches(const QString& sampleDir);

// Fills an embedded database that holds the schema and nothing else, as `kivdb init
// --sample` does right after the schema. All or nothing: the first failing batch (a key
// already present, a column the schema lacks) rolls back every sample row and throws
// SchemaError naming the script and the statement. Opens its own transaction.
void applySampleData(Connection& conn, const QString& sampleDir);

}  // namespace kivdb::integrity
