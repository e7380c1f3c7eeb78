#pragma once
// SQL Server through unixODBC (normally the FreeTDS driver).
//
// SQL Server 2005 and later refuse the old outer joins (*= and =*) at compatibility level
// 90 and above. The level is read at connect: at 80 or lower statements go to the server
// unchanged; at 90 or above statements with old outer joins are rewritten to ANSI joins.
// The connection-string option KivdbOuterJoins=ansi|legacy forces either mode; it is
// removed before the string reaches the driver.
#include "dialect/dialect.h"
#include "platform/connection.h"
#include "platform/connection_support.h"

#include <QHash>
#include <memory>
#include <optional>

namespace kivdb {

enum class OuterJoinMode { Legacy, Ansi };

class OdbcCatalog;
class OdbcCursor;

class OdbcConnection final : public Connection {
public:
    // Throws DatabaseError with the driver's message.
    explicit OdbcConnection(const QString& connectionString);
    ~OdbcConnection() override;

    bool inTransaction() const override { return inTransaction_; }
    Backend backend() const override { return Backend::Odbc; }

    OuterJoinMode outerJoinMode() const { return outerJoinMode_; }
    // Why that mode: the compatibility level read, the forcing option, or why the level
    // could not be read.
    QString outerJoinModeReason() const { return outerJoinModeReason_; }
    // The text the server receives for a statement as built. Throws DatabaseError.
    QString serverText(const QString& sql);
    // One statement with '?' markers bound to the parameters in their order, as procedure
    // calls are bound; output values are read back after it ran. Answers the rows changed
    // (-1 if unknown). Observers see the statement. Throws DatabaseError.
    qint64 executeBound(const QString& sql, std::vector<ProcedureParam>& params);
    // The server's tables as the ANSI rewrite sees them; read on first use.
    const dialect::Catalog& catalog();

    // Splits our own option off a connection string: the driver's part, and the mode the
    // option forces (nullopt when absent). Throws DatabaseError on an unknown mode.
    struct ConnectionOptions {
        QString driverString;
        std::optional<OuterJoinMode> forcedOuterJoins;
    };
    static ConnectionOptions parseConnectionString(const QString& connectionString);

protected:
    RowSet runQuery(const QString& sql) override;
    std::unique_ptr<Cursor> runOpenCursor(const QString& sql) override;
    qint64 runExecute(const QString& sql) override;
    void runProcedure(ProcedureCall& call) override;
    void runBegin() override;
    void runCommit() override;
    void runRollback() override;

private:
    friend class OdbcCatalog;
    friend class OdbcCursor;
    // The connection handle for a new statement or a transaction's end. A server connection
    // carries one result at a time: a cursor with rows still unread reads them all first.
    void* statementSlot();
    TextOutcome run(const QString& sql);
    qint64 runBound(QString text, const std::vector<ProcedureParam*>& markers);
    void chooseOuterJoinMode(std::optional<OuterJoinMode> forced);
    void endTransaction(short completion);
    void disconnect();

    void* env_ = nullptr;
    void* dbc_ = nullptr;
    bool inTransaction_ = false;
    OuterJoinMode outerJoinMode_ = OuterJoinMode::Legacy;
    QString outerJoinModeReason_;
    std::unique_ptr<OdbcCatalog> catalog_;  // read lazily, for the ANSI rewrite only
    // Rewritten texts by their text, for as long as the catalog is kept; emptied past kMaxRewriteBytes.
    QHash<QString, QString> rewrites_;
    qsizetype rewriteBytes_ = 0;
    static constexpr qsizetype kMaxRewriteBytes = 4 * 1024 * 1024;
    OdbcCursor* openCursor_ = nullptr;      // the cursor whose result the connection carries
};

}  // namespace kivdb
