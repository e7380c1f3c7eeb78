// The operation log and the stored-procedure error texts.
#include "kivdb/exports.h"

#include "frame/sql_text.h"
#include "platform/kivfunc.h"

namespace kivdb {

// RefNo and NoteNo come before ModId and OpId in the arguments but after them in the
// insert. Remark is accepted and not written: the column receives the time of day,
// read from the clock after the date.
void WriteToLog(Connection& Conn, const QString& UserId, const QString& Computer, int RefNo,
                const QString& NoteNo, int ModId, int OpId, const QString& /*Remark*/) {
    const QString today = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
    const QString now = QTime::currentTime().toString(QStringLiteral("hh:mm:ss"));
    const QString sql =
        QLatin1String(" insert into Sy_Log (UserId,Computer,ModId,OpId,RefNo,NoteNo,OpDate,Remark) values ('") +
        quotedText(UserId) + "'," + "'" + quotedText(Computer) + "'," + QString::number(ModId) + "," +
        QString::number(OpId) + "," + QString::number(RefNo) + "," + "'" + quotedText(NoteNo) + "'," +
        kivfunc::DATAESPERATOR_STR() + today + kivfunc::DATAESPERATOR_STR() + "," + "'" + now + "')";
    ExecTmpQuery(Conn, sql);
}

// Hosts call it freely; it records nothing.
void WriteToExceptLog(Connection&, const QString&, const QString&, int, int, const QString&) {}

QString GetSpErrorMsg(int ErrorCode) {
    return QStringLiteral("返回存储过程错误信息 ") + QString::number(ErrorCode);
}

QString SpErrorInfo(Connection& Conn, int ErrorCode) {
    return SelTableStringValue(Conn, "select Description from s_SpErrorcode where ErrorCode = " +
                                         QString::number(ErrorCode));
}

}  // namespace kivdb
