#pragma once
// A dataset over a statement on a connection: it reads the result through a cursor a page
// at a time, as navigation reaches rows not yet read, and writes changes back to the one
// table the rows come from, by key.
//
// recordCount, last, append and a locate that finds nothing read the rest of the result
// first, so the count is always that of the whole result; fetchedCount tells how many rows
// have been read so far without reading more. While rows remain unread on the embedded
// database, its file stays open for reading: the dataset's own connection writes freely,
// but another connection's write to the file waits (up to its busy timeout) until the rest
// is read or the dataset is closed.
//
// Changes are written as T-SQL insert, update (the changed columns only) and delete
// statements through Connection::execute, so observers see them. Immediate mode runs each
// when it is posted or deleted; a failure leaves the dataset as it was before the post.
// Batch mode keeps them, one change for each row, until applyUpdates runs them in one
// transaction.
#include "platform/dataset.h"

namespace kivdb {

class QueryDataSet : public DataSet {
public:
    enum class UpdateMode { Immediate, Batch };

    // The connection must outlive the dataset.
    explicit QueryDataSet(Connection& conn, const QString& sql = {});
    ~QueryDataSet() override;

    Connection& connection() const { return conn_; }
    const QString& sql() const { return sql_; }
    void setSql(const QString& sql);  // closes the dataset

    // A statement without rows; answers the rows it changed (-1 when unknown). Throws DatabaseError.
    qint64 execute();
    // Reads the result again, keeping the fields' settings and, where it can, the row number.
    // Pending batch changes are dropped.
    void refresh();

    int pageRows() const { return pageRows_; }
    void setPageRows(int rows) { pageRows_ = std::max(rows, 1); }
    int fetchedCount() const { return int(rows().size()); }
    bool canReadMore() const override { return cursor_ != nullptr; }

    // The table changes go to: unless set, the one table of a plain "select ... from T
    // [where ...] [order by ...]". Key fields separated by ';': unless set, the embedded
    // database's primary key of that table; over ODBC they must be set. Writing a change
    // without table or key throws DatabaseError saying which is missing.
    void setTableName(const QString& table) { tableName_ = table; }
    void setKeyFields(const QString& fields) { keyFields_ = fields; }

    UpdateMode updateMode() const { return updateMode_; }
    void setUpdateMode(UpdateMode mode);  // throws while batch changes are pending
    bool updatesPending() const { return !pending_.empty(); }
    // Runs the pending changes in order in one transaction (inside the caller's, when one is
    // open). When one fails, everything is rolled back, the changes stay pending and the
    // rows stay as they are; the error is thrown. Throws DatabaseError.
    void applyUpdates();
    // Drops the pending changes and reads the result again.
    void cancelUpdates();

protected:
    void openData() override;
    void closeData() override;
    bool fetchMore() override;
    void writeChange(ChangeKind kind, Bookmark row, const std::vector<Value>& before,
                     const std::vector<Value>& after) override;

private:
    QString updateTable() const;
    QStringList keyColumns(const QString& table) const;
    QString changeStatement(ChangeKind kind, const std::vector<Value>& before, const std::vector<Value>& after) const;

    Connection& conn_;
    QString sql_;
    std::unique_ptr<Cursor> cursor_;
    int pageRows_ = 100;
    QString tableName_;
    QString keyFields_;
    UpdateMode updateMode_ = UpdateMode::Immediate;
    // A row's batch changes folded into one: an inserted row later edited is inserted with
    // its last values, one inserted and deleted is never written, an edited row is updated
    // from the values it was read with.
    struct PendingChange {
        Bookmark row;
        ChangeKind kind;
        std::vector<Value> original, current;
    };
    std::vector<PendingChange> pending_;
};

}  // namespace kivdb
