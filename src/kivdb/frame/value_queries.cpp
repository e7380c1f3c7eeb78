// Single-value and existence queries: one statement, field 0 of the first row, and a
// fixed answer when there is no row or the value is null.
#include "kivdb/exports.h"

#include "frame/sql_text.h"
#include "platform/kivfunc.h"

namespace kivdb {

namespace {

// Field 0 of the first row; null when the result has no row.
Value firstValue(Connection& conn, const QString& sql) {
    const RowSet rows = conn.query(sql);
    if (rows.empty() || rows.rows.front().empty()) return {};
    return rows.rows.front().front();
}

bool isNull(const Value& v) { return !v.isValid() || v.isNull(); }

}  // namespace

bool SqlTableIsEmpty(Connection& Conn, const QString& Sql) { return Conn.query(Sql).empty(); }

QString SelTableStringValue(Connection& Conn, const QString& Sql) { return fieldText(firstValue(Conn, Sql)); }

OleDate SelTableDateValue(Connection& Conn, const QString& Sql) { return fieldDate(firstValue(Conn, Sql)); }

bool SelTableBooleanValue(Connection& Conn, const QString& Sql) { return fieldBool(firstValue(Conn, Sql)); }

int SelTableIntValue(Connection& Conn, const QString& Sql) { return fieldInt(firstValue(Conn, Sql)); }

// -1 lets a caller tell an absent or null value from a stored 0.
int SelTableIntegerValue2(Connection& Conn, const QString& Sql) {
    const Value v = firstValue(Conn, Sql);
    return isNull(v) ? -1 : fieldInt(v);
}

double SelTableFloatValue(Connection& Conn, const QString& Sql) { return fieldFloat(firstValue(Conn, Sql)); }

Value SelTableVariantValue(Connection& Conn, const QString& Sql) {
    const Value v = firstValue(Conn, Sql);
    return isNull(v) ? Value() : v;
}

void ExecTmpQuery(Connection& Conn, const QString& Sql) { Conn.execute(Sql); }

// FieldNames and Values are parallel lists; the values are SQL as the caller wrote it
// (text already in quotes). There are as many conditions as field names.
bool TableExistValues(Connection& Conn, const QString& TableName, const QString& FieldNames,
                      const QString& Values) {
    const QString fields = sqlName(FieldNames);
    const QString values = sqlName(Values);
    QString conditions;
    const int count = kivfunc::GetStringIndexCount(fields, QStringLiteral(","));
    for (int i = 0; i < count; ++i) {
        if (i > 0) conditions += QLatin1String(" and ");
        conditions += kivfunc::GetStringIndexValue(fields, QLatin1Char(','), i) + QLatin1String(" = ") +
                      kivfunc::GetStringIndexValue(values, QLatin1Char(','), i);
    }
    return SelTableIntValue(Conn, "select 1 from " + sqlName(TableName) + " where " + conditions) == 1;
}

// A detail line whose field is null is not found (Ltrim of null is null): only empty or
// blank values count. Only the first offending line is named.
bool IsExitNoInputStkInBillInfor(Connection& Conn, const QString& TableName, int RefNo,
                                 const QString& FieldName) {
    const RowSet rows = Conn.query(" select LineId from " + sqlName(TableName) + " where RefNo = " +
                                   QString::number(RefNo) + " and Ltrim(" + sqlName(FieldName) + ")='" + "'");
    if (rows.empty()) return false;
    kivfunc::ShowMsgHint(QStringLiteral("明细中序号 %1 行，未指定临时单号。").arg(fieldText(rows.rows.front().front())));
    return true;
}

}  // namespace kivdb
