#include "refdata/parameter_statements.h"

#include <iterator>

namespace kivdb {

QString parameterStatement(const char* column, const char* table, const char* name) {
    return QStringLiteral("select %1 from %2 where ParFieldName = '%3'")
        .arg(QLatin1String(column), QLatin1String(table), QLatin1String(name));
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

}  // namespace kivdb
