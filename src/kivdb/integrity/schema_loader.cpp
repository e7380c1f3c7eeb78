#include "integrity/schema_loader.h"

#include "dialect/dialect.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

// The scripts are resources of a static library, so nothing links them in unless asked for
// (the initialiser is declared outside any namespace).
static void initSchemaResources() { Q_INIT_RESOURCE(kivdb_schema); }

namespace kivdb::integrity {
namespace {

QString readText(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw SchemaError(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()).toStdString());
    return QString::fromUtf8(file.readAll());
}

QString firstLines(const QString& batch) {
    QStringList lines;
    for (const QString& line : batch.split(QLatin1Char('\n'))) {
        const QString t = line.trimmed();
        if (t.isEmpty() || t.startsWith(QLatin1String("--"))) continue;
        lines << t;
        if (lines.size() == 2) break;
    }
    return lines.join(QLatin1Char(' '));
}

}  // namespace

// The scripts the library was built with, carried inside it.
QString defaultSchemaDirectory() {
    static const bool registered = (initSchemaResources(), true);
    Q_UNUSED(registered);
    return QStringLiteral(":/schema");
}

QStringList tableScripts(const QString& schemaDir) {
    QDir dir(schemaDir + QStringLiteral("/mssql"));
    static const QRegularExpression numbered(QStringLiteral("^[0-9]+_.*\\.sql$"));
    QStringList scripts;
    for (const QString& name : dir.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name))
        if (numbered.match(name).hasMatch()) scripts << dir.filePath(name);
    return scripts;
}

std::vector<SchemaBatch> schemaBatches(const QString& schemaDir) {
    const QStringList scripts = tableScripts(schemaDir);
    if (scripts.isEmpty())
        throw SchemaError(QStringLiteral("no table scripts under %1/mssql").arg(schemaDir).toStdString());
    std::vector<SchemaBatch> batches;
    for (const QString& path : scripts)
        for (const QString& batch : dialect::splitBatches(readText(path)))
            batches.push_back({batch, QFileInfo(path).fileName() + QStringLiteral(": ") + firstLines(batch)});
    return batches;
}

void applySchema(Connection& conn, const QString& schemaDir) {
    const std::vector<SchemaBatch> batches = schemaBatches(schemaDir);
    conn.begin();
    const SchemaBatch* current = nullptr;
    try {
        for (const SchemaBatch& batch : batches) {
            current = &batch;
            conn.execute(batch.text);
        }
        current = nullptr;
        conn.commit();
    } catch (const std::exception& e) {
        if (conn.inTransaction()) conn.rollback();
        const QString origin = current ? current->origin : QStringLiteral("commit");
        throw SchemaError(QStringLiteral("%1: %2").arg(origin, QString::fromUtf8(e.what())).toStdString());
    }
}

std::vector<InventoryColumn> readInventory(const QString& path) {
    QString text = readText(path);
    text.remove(QLatin1Char('\r'));
    std::vector<InventoryColumn> columns;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (qsizetype i = 1; i < lines.size(); ++i) {  // line 0 names the fields
        if (lines[i].trimmed().isEmpty()) continue;
        const QStringList f = lines[i].split(QLatin1Char('\t'));
        const bool complete = f.size() == 4 && std::none_of(f.begin(), f.end(), [](const QString& s) {
                                  return s.trimmed().isEmpty();
                              });
        if (!complete)
            throw SchemaError(QStringLiteral("%1:%2: expected table, column, type, module")
                                  .arg(path, QString::number(i + 1))
                                  .toStdString());
        columns.push_back({f[0].trimmed(), f[1].trimmed(), f[2].trimmed(), f[3].trimmed()});
    }
    return columns;
}

}  // namespace kivdb::integrity
