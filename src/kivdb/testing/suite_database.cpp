#include "testing/suite_database.h"

#include "integrity/schema_loader.h"
#include "platform/sqlite_connection.h"

#include <QFile>

namespace kivdb::testing {
namespace {

// Running every table script takes a while, so it is done once and the file copied.
QString schemaTemplatePath() {
    static QTemporaryDir dir;
    static const QString path = [] {
        const QString file = dir.filePath(QStringLiteral("schema.db"));
        SqliteConnection conn(file, SqliteConnection::OpenMode::CreateIfMissing);
        try {
            integrity::applySchema(conn, integrity::defaultSchemaDirectory());
        } catch (const integrity::SchemaError& e) {
            throw DatabaseError(QString::fromUtf8(e.what()), e.kind());
        }
        return file;
    }();
    return path;
}

}  // namespace

SuiteDatabaseFile::SuiteDatabaseFile() : path_(dir_.filePath(QStringLiteral("suite.db"))) {
    if (!dir_.isValid() || !QFile::copy(schemaTemplatePath(), path_))
        throw DatabaseError(QStringLiteral("could not copy the schema database to %1").arg(path_));
}

QString SuiteDatabaseFile::url() const { return QStringLiteral("sqlite:") + path_; }

std::unique_ptr<Connection> SuiteDatabaseFile::connect() const { return Connection::open(url()); }

}  // namespace kivdb::testing
