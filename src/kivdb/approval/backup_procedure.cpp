#include "approval/backup_procedure.h"

#include "dialect/sqlite_catalog.h"
#include "platform/embedded_procedure_support.h"
#include "platform/procedure_registry.h"
#include "platform/sqlite_connection.h"

#include <sqlite3.h>

namespace kivdb::approval {
namespace {

// The name of the user table `name` stands for, as the schema spells it (names compare
// without regard to case, as the server's do); nullopt when there is none. Temporary and
// the engine's own tables are no user tables, and nor are views.
std::optional<QString> userTableName(sqlite3* db, const QString& name) {
    static const char* const sql =
        "select name from main.sqlite_master where type = 'table' and name = ?1 collate nocase "
        "and name not like 'sqlite\\_%' escape '\\'";
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
        const DatabaseError error(QString::fromUtf8(sqlite3_errmsg(db)));
        sqlite3_finalize(stmt);
        throw error;
    }
    const QByteArray utf8 = name.toUtf8();
    sqlite3_bind_text(stmt, 1, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    std::optional<QString> found;
    const int rc = sqlite3_step(stmt);
    if (rc == SQLITE_ROW) found = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
    sqlite3_finalize(stmt);
    if (rc != SQLITE_ROW && rc != SQLITE_DONE) throw DatabaseError(QString::fromUtf8(sqlite3_errmsg(db)));
    return found;
}

// Columns of a table as the schema has them now: a fresh catalog, since the store may have
// been created a moment ago.
std::vector<dialect::CatalogColumn> columnsOf(sqlite3* db, const QString& table) {
    return dialect::SqliteCatalog(db).tableColumns(table).value_or(std::vector<dialect::CatalogColumn>{});
}

bool isRefNo(const dialect::CatalogColumn& column) {
    return column.name.compare(QLatin1String("RefNo"), Qt::CaseInsensitive) == 0;
}

bool isNoteTable(const std::vector<dialect::CatalogColumn>& columns) {
    bool hasRefNo = false;
    for (const auto& column : columns) {
        if (column.identity) return false;  // a copy would be numbered anew
        hasRefNo = hasRefNo || isRefNo(column);
    }
    return hasRefNo;
}

// The copy goes column by column in declared order: both sides need the same names.
bool sameColumnNames(const std::vector<dialect::CatalogColumn>& table,
                     const std::vector<dialect::CatalogColumn>& store) {
    if (table.size() != store.size()) return false;
    for (size_t i = 0; i < table.size(); ++i)
        if (table[i].name.compare(store[i].name, Qt::CaseInsensitive) != 0) return false;
    return true;
}

QString sqlValue(const std::optional<qint64>& number) {
    return number ? QString::number(*number) : QStringLiteral("null");
}

BackupNoteStatus backupNote(Connection& conn, const ProcedureCall& call) {
    const std::optional<qint64> refNo = integerArgument(call, QStringLiteral("@iRefNo"));
    const std::optional<qint64> newRefNo = integerArgument(call, QStringLiteral("@iNewRefNo"));
    const QString requested = textArgument(call, QStringLiteral("@sTableName")).value_or(QString()).trimmed();
    const std::optional<qint64> type = integerArgument(call, QStringLiteral("@iType"));

    sqlite3* db = embeddedConnection(conn).handle();
    if (requested.isEmpty()) return BackupNoteStatus::NoSuchTable;
    const std::optional<QString> table = userTableName(db, requested);
    if (!table) return BackupNoteStatus::NoSuchTable;
    const std::vector<dialect::CatalogColumn> columns = columnsOf(db, *table);
    if (!isNoteTable(columns)) return BackupNoteStatus::NotNoteTable;

    // Unlike the server, the store is made inside the unit of work: a copy that fails
    // afterwards leaves no empty store behind either.
    ProcedureScope scope(conn, "sy_BackupNote");
    if (!conn.query(QStringLiteral("select 1 from Sy_NoteBackup where NewRefNo = %1 and TableName = %2")
                        .arg(sqlValue(newRefNo), sqlTextLiteral(*table)))
             .empty())
        return BackupNoteStatus::AlreadyBackedUp;
    const QString store = *table + QStringLiteral("_Bak");
    if (!userTableName(db, store)) {
        try {
            conn.execute(QStringLiteral("select * into %1 from %2 where 1 = 0")
                             .arg(sqlBracketedName(store), sqlBracketedName(*table)));
        } catch (const DatabaseError&) {
            return BackupNoteStatus::StoreNotCreated;
        }
        if (!userTableName(db, store)) return BackupNoteStatus::StoreNotCreated;
    }
    if (!sameColumnNames(columns, columnsOf(db, store))) return BackupNoteStatus::CopyFailed;

    QStringList names, values;
    for (const auto& column : columns) {
        names << sqlBracketedName(column.name);
        values << (isRefNo(column) ? sqlValue(newRefNo) : sqlBracketedName(column.name));
    }
    try {
        const qint64 copied = conn.execute(QStringLiteral("insert into %1 (%2) select %3 from %4 where RefNo = %5")
                                               .arg(sqlBracketedName(store), names.join(QStringLiteral(", ")),
                                                    values.join(QStringLiteral(", ")), sqlBracketedName(*table),
                                                    sqlValue(refNo)));
        conn.execute(QStringLiteral("insert into Sy_NoteBackup (NewRefNo, TableName, iType, RefNo, RowsCopied, "
                                    "BackupDate) values (%1, %2, %3, %4, %5, getdate())")
                         .arg(sqlValue(newRefNo), sqlTextLiteral(*table), sqlValue(type), sqlValue(refNo),
                              QString::number(std::max<qint64>(copied, 0))));
    } catch (const DatabaseError&) {
        return BackupNoteStatus::CopyFailed;
    }
    scope.commit();
    return BackupNoteStatus::Copied;
}

const EmbeddedProcedureRegistration registration(QStringLiteral("sy_BackupNote"),
                                                 [](Connection& conn, ProcedureCall& call) {
                                                     setReturnCode(call, int(backupNote(conn, call)));
                                                 });

}  // namespace
}  // namespace kivdb::approval
