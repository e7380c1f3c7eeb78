#include "integrity/sample_data.h"

namespace kivdb::integrity {
namespace {

// The schema loader reads schemaDir/mssql/NN_*.sql; the sample keeps the same layout so
// that one loader serves both. Its own message says which scripts were missing.
void requireScripts(const QString& sampleDir) {
    if (tableScripts(sampleDir).isEmpty())
        throw SchemaError(
            QStringLiteral("no sample data scripts under %1/mssql").arg(sampleDir).toStdString());
}

}  // namespace

QString defaultSampleDirectory() { return defaultSchemaDirectory() + QStringLiteral("/sample"); }

std::vector<SchemaBatch> sampleDataBatches(const QString& sampleDir) {
    requireScripts(sampleDir);
    return schemaBatches(sampleDir);
}

void applySampleData(Connection& conn, const QString& sampleDir) {
    requireScripts(sampleDir);
    try {
        applySchema(conn, sampleDir);
    } catch (const SchemaError& e) {
        throw SchemaError(QStringLiteral("sample data: %1").arg(QString::fromUtf8(e.what())).toStdString());
    }
}

}  // namespace kivdb::integrity
