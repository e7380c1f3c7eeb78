#pragma once
// The suite's schema lives once, as the T-SQL scripts a DBA runs on SQL Server
// (schema/mssql/NN_module.sql). The embedded database is built from the same scripts,
// batch by batch through the dialect.
#include "platform/connection.h"

#include <QString>
#include <QStringList>
#include <stdexcept>
#include <vector>


namespace kivdb::integrity {

class SchemaError : public Error {
public:
    explicit SchemaError(const std::string& message) : Error(message, ErrorKind::Schema) {}
};

// The schema/ tree the library was built with, carried as resources (":/schema").
QString defaultSchemaDirectory();

// The table scripts under schemaDir/mssql, in the order they are run (by file name).
// Only NN_*.sql files qualify: procedures.sql is for SQL Server alone, the embedded
// engine implements those procedures itself.
QStringList tableScripts(const QString& schemaDir);

// One batch of a table script, with where it comes from for messages ("02_po.sql:
// create table Po_Order (").
struct SchemaBatch {
    QString text;
    QString origin;
};

// Every batch of the table scripts, in the order they run. Throws SchemaError when there
// are no scripts or one cannot be read. For a connection that runs T-SQL itself.
std::vector<SchemaBatch> schemaBatches(const QString& schemaDir);

// Runs every table script on a connection, in a transaction of its own. All or nothing: the
// first failing batch rolls back the whole schema and throws SchemaError naming the script
// and the start of the batch.
void applySchema(Connection& conn, const QString& schemaDir);

// One line of schemaDir/inventory.tsv.
struct InventoryColumn {
    QString table;
    QString column;
    QString type;    // T-SQL type as the scripts declare it, e.g. decimal(18,4)
    QString module;  // table-name prefix family: Bs, Po, sl, St, pl, pm, En, Rp, Ac, T, Crm, Sy
};

// Reads the inventory (tab-separated, a header line first). Throws SchemaError on a
// missing file or a line that does not have exactly four non-empty fields.
std::vector<InventoryColumn> readInventory(const QString& path);

}  // namespace kivdb::integrity
