#include "approval/backup_procedure.h"

#include "platform/sqlite_connection.h"
#include "testing/suite_database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kivdb::approval {
namespace {

// The call as the library's BackupTables makes it.
int backup(Connection& conn, const Value& refNo, const Value& newRefNo, const Value& table, int type) {
    ProcedureCall call{QStringLiteral("sy_BackupNote"), {}};
    call.add(QStringLiteral("@RETURN_VALUE"), FieldType::Integer, ParamDirection::ReturnValue)
        .add(QStringLiteral("@iRefNo"), FieldType::Integer, ParamDirection::Input, 0, refNo)
        .add(QStringLiteral("@iNewRefNo"), FieldType::Integer, ParamDirection::Input, 0, newRefNo)
        .add(QStringLiteral("@sTableName"), FieldType::String, ParamDirection::Input, 100, table)
        .add(QStringLiteral("@iType"), FieldType::Integer, ParamDirection::Input, 0, type);
    conn.call(call);
    return call.param(QStringLiteral("@RETURN_VALUE")).value.toInt();
}

class BackupProcedureTest : public ::testing::Test {
protected:
    void SetUp() override {
        conn_ = file_.connect();
        // Note 7 with two lines, note 8 with one.
        conn_->execute(
            "insert into pm_IssWipDtl (RefNo, LineId, PartNo, PartName, RefJobNo, Qty, EffectDate) values "
            "(7, 1, 'P-1', '螺丝', 70, 2.5, '2026-03-01 08:30:00'), "
            "(7, 2, 'P-2', null, 70, 4, null), "
            "(8, 1, 'P-1', '螺丝', 80, 1, null)");
    }

    QStringList rows(const QString& sql) {
        QStringList result;
        for (const auto& row : conn_->query(sql).rows) {
            QStringList fields;
            for (const Value& v : row) fields << (v.isNull() ? QStringLiteral("NULL") : v.toString());
            result << fields.join(QLatin1Char('|'));
        }
        return result;
    }
    bool tableExists(const QString& name) {
        return !conn_->query("select 1 from sqlite_master where name = '" + name + "'").empty();
    }
    QStringList backupLog() { return rows("select NewRefNo, TableName, iType, RefNo, RowsCopied from Sy_NoteBackup"); }

    testing::SuiteDatabaseFile file_;
    std::unique_ptr<Connection> conn_;
};

TEST_F(BackupProcedureTest, CopiesTheNoteUnderItsNewKey) {
    // An empty note still creates the store and is recorded.
    EXPECT_EQ(backup(*conn_, 12345, 899, "pm_IssWipDtl", 0), int(BackupNoteStatus::Copied));
    EXPECT_EQ(rows("select count(*) from pm_IssWipDtl_Bak"), QStringList{"0"});

    EXPECT_EQ(backup(*conn_, 7, 900, "pm_IssWipDtl", 1), int(BackupNoteStatus::Copied));
    EXPECT_EQ(rows("select RefNo, LineId, PartNo, PartName, RefJobNo, Qty, EffectDate from pm_IssWipDtl_Bak "
                   "order by LineId"),
              QStringList({"900|1|P-1|螺丝|70|2.5|2026-03-01T08:30:00.000", "900|2|P-2|NULL|70|4|NULL"}));
    EXPECT_EQ(rows("select count(*) from pm_IssWipDtl where RefNo = 7"), QStringList{"2"});
    EXPECT_EQ(backupLog(), QStringList({"899|pm_IssWipDtl|0|12345|0", "900|pm_IssWipDtl|1|7|2"}));
    EXPECT_EQ(rows("select count(*) from Sy_NoteBackup where BackupDate is null"), QStringList{"0"});

    // The store keeps earlier copies; a name in other case is the same table; a new key
    // already used is refused.
    EXPECT_EQ(backup(*conn_, 8, 901, "  PM_ISSWIPDTL ", 0), int(BackupNoteStatus::Copied));
    EXPECT_EQ(backup(*conn_, 8, 900, "pm_IssWipDtl", 0), int(BackupNoteStatus::AlreadyBackedUp));
    EXPECT_EQ(rows("select RefNo, count(*) from pm_IssWipDtl_Bak group by RefNo order by RefNo"),
              QStringList({"900|2", "901|1"}));
    EXPECT_EQ(backupLog().last(), "901|pm_IssWipDtl|0|8|1");
    EXPECT_EQ(backupLog().size(), 3);
}

TEST_F(BackupProcedureTest, RefusalsCopyAndRecordNothing) {
    conn_->execute("create table NoKey (Code varchar(10))");
    conn_->execute("create table Numbered (Id int identity(1, 1) primary key, RefNo int)");
    conn_->execute("insert into Numbered (RefNo) values (7)");
    // The suite's T-SQL makes no views, but a database file may hold one.
    sqlite3_exec(dynamic_cast<SqliteConnection&>(*conn_).handle(),
                 "create view IssueView as select * from pm_IssWipDtl", nullptr, nullptr, nullptr);
    struct Case {
        Value table;
        int newRefNo;
        BackupNoteStatus status;
    };
    const Case cases[] = {
        {Value(), 900, BackupNoteStatus::NoSuchTable},
        {"   ", 900, BackupNoteStatus::NoSuchTable},
        {"pm_NoSuchTable", 900, BackupNoteStatus::NoSuchTable},
        {"IssueView", 900, BackupNoteStatus::NoSuchTable},
        {"sqlite_master", 900, BackupNoteStatus::NoSuchTable},
        {"NoKey", 900, BackupNoteStatus::NotNoteTable},
        {"Numbered", 900, BackupNoteStatus::NotNoteTable},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.table.toString().toStdString());
        EXPECT_EQ(backup(*conn_, 7, c.newRefNo, c.table, 0), int(c.status));
        EXPECT_TRUE(backupLog().isEmpty());
        EXPECT_FALSE(conn_->inTransaction());
    }
    EXPECT_FALSE(tableExists("NoKey_Bak"));
    EXPECT_FALSE(tableExists("Numbered_Bak"));
}

TEST_F(BackupProcedureTest, AFailedCopyLeavesNoRowsBehind) {
    // A store whose columns went their own way.
    conn_->execute("create table pm_IssWipRtn_Bak (RefNo int, Other int)");
    EXPECT_EQ(backup(*conn_, 7, 900, "pm_IssWipRtn", 0), int(BackupNoteStatus::CopyFailed));
    // No new key: the rows would copy, the record of the copy cannot be written.
    EXPECT_EQ(backup(*conn_, 7, Value(), "pm_IssWipDtl", 0), int(BackupNoteStatus::CopyFailed));
    EXPECT_FALSE(tableExists("pm_IssWipDtl_Bak"));
    EXPECT_TRUE(backupLog().isEmpty());
    EXPECT_FALSE(conn_->inTransaction());
}

TEST_F(BackupProcedureTest, InsideTheCallersTransactionOnlyTheFailedCopyIsUndone) {
    conn_->begin();
    ASSERT_EQ(backup(*conn_, 7, 900, "pm_IssWipDtl", 0), 0);
    conn_->execute("alter table pm_IssWipDtl_Bak add Extra int");
    EXPECT_EQ(backup(*conn_, 8, 901, "pm_IssWipDtl", 1), int(BackupNoteStatus::CopyFailed));
    EXPECT_EQ(backup(*conn_, 7, Value(), "pm_IssWipDtl", 1), int(BackupNoteStatus::CopyFailed));
    ASSERT_TRUE(conn_->inTransaction());
    EXPECT_EQ(rows("select count(*) from pm_IssWipDtl_Bak"), QStringList{"2"});
    EXPECT_EQ(backupLog(), QStringList{"900|pm_IssWipDtl|0|7|2"});
    conn_->rollback();
    EXPECT_FALSE(tableExists("pm_IssWipDtl_Bak"));
    EXPECT_TRUE(backupLog().isEmpty());
}

TEST_F(BackupProcedureTest, DatabaseErrorsReachTheCaller) {
    conn_->execute("drop table Sy_NoteBackup");
    EXPECT_THROW(backup(*conn_, 7, 900, "pm_IssWipDtl", 0), DatabaseError);
    EXPECT_THROW(backup(*conn_, 7, "new", "pm_IssWipDtl", 0), DatabaseError);
    EXPECT_FALSE(conn_->inTransaction());
    EXPECT_FALSE(tableExists("pm_IssWipDtl_Bak"));
}

}  // namespace
}  // namespace kivdb::approval
