#include "refdata/parameter_statements.h"

#include "frame/sql_text.h"

#include <iterator>

namespace kivdb {

QString codeStatement(const char* column, const char* table, const char* key, const QString& code) {
    return QStringLiteral("select %1 from %2 where %3 = '%4'")
        .arg(QLatin1String(column), QLatin1String(table), QLatin1String(key), quotedText(code));
}

QString parameterStatement(const char* column, const char* table, const char* name) {
    return codeStatement(column, table, "ParFieldName", QLatin1String(name));
}

QString switchStatement(const char* name, const char* table) {
    return QLatin1String("  ") + parameterStatement("paraValue", table, name);
}

QString digitParameter(int kind) {
    static const char* const kNames[] = {"QtyDigital",    "PriceDigital", "AmtDigital",
                                         "QtyPerDigital", "CostDigital",  "VoucherDigital"};
    if (kind < 0 || kind >= int(std::size(kNames))) return {};
    return QLatin1String(kNames[kind]);
}

QString lineStatement(const char* selectList, const char* table, int refNo, int lineId) {
    return QStringLiteral(" select %1 from %2 where RefNo = %3 and LineId = %4")
        .arg(QLatin1String(selectList), QLatin1String(table), QString::number(refNo), QString::number(lineId));
}

}  // namespace kivdb
