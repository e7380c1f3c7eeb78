#pragma once
// sy_BackupNote on the embedded database: copies the rows of one note table whose RefNo is
// @iRefNo into that table's backup store T_Bak under the new key @iNewRefNo, and records
// the copy in Sy_NoteBackup with @iType. The server runs the same procedure from
// schema/mssql/procedures.sql; both answer alike.
//
//   @RETURN_VALUE  return value  a BackupNoteStatus
//   @iRefNo        integer in    the note's RefNo
//   @iNewRefNo     integer in    the key of the copy
//   @sTableName    string in     the table, size 100
//   @iType         integer in    the table's position in the caller's list (0 the header)
//
// No rows under @iRefNo is no failure: nothing is copied and the copy is still recorded.
#include "platform/connection.h"

namespace kivdb::approval {

enum class BackupNoteStatus {
    Copied = 0,
    NoSuchTable = 1,      // the name is empty or names no user table
    NotNoteTable = 2,     // no RefNo column, or an identity column
    StoreNotCreated = 3,  // the backup store could not be created
    CopyFailed = 4,       // the store's columns no longer match the table, or the copy failed
    AlreadyBackedUp = 5,  // this table was already backed up under @iNewRefNo
};

void backupNoteProcedure(Connection& conn, ProcedureCall& call);

}  // namespace kivdb::approval
