#include "approval/backup_procedure.h"

#include "platform/embedded_procedure_support.h"
#include "platform/sqlite_connection.h"

namespace kivdb::approval {
namespace {

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

    SqliteConnection& embedded = embeddedConnection(conn);
    if (requested.isEmpty()) return BackupNoteStatus::NoSuchTable;
    const std::optional<QString> table = embedded.userTableName(requested);
    if (!table) return BackupNoteStatus::NoSuchTable;
    const std::vector<dialect::CatalogColumn> columns = embedded.tableColumns(*table);
    if (!isNoteTable(columns)) return BackupNoteStatus::NotNoteTable;

    // Unlike the server, the store is made inside the unit of work: a copy that fails
    // afterwards leaves no empty store behind either.
    ProcedureScope scope(conn, "sy_BackupNote");
    if (!conn.query(QStringLiteral("select 1 from Sy_NoteBackup where NewRefNo = %1 and TableName = %2")
                        .arg(sqlValue(newRefNo), sqlTextLiteral(*table)))
             .empty())
        return BackupNoteStatus::AlreadyBackedUp;
    const QString store = *table + QStringLiteral("_Bak");
    if (!embedded.userTableName(store)) {
        try {
            conn.execute(QStringLiteral("select * into %1 from %2 where 1 = 0")
                             .arg(sqlBracketedName(store), sqlBracketedName(*table)));
        } catch (const DatabaseError&) {
            return BackupNoteStatus::StoreNotCreated;
        }
        if (!embedded.userTableName(store)) return BackupNoteStatus::StoreNotCreated;
    }
    if (!sameColumnNames(columns, embedded.tableColumns(store))) return BackupNoteStatus::CopyFailed;

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

}  // namespace

void backupNoteProcedure(Connection& conn, ProcedureCall& call) { setReturnCode(call, int(backupNote(conn, call))); }

}  // namespace kivdb::approval
