#include "frame/sql_text.h"


namespace kivdb {

QString quotedText(const QString& value) {
    if (value.contains(QLatin1Char('\'')))
        throw ValueError(QStringLiteral("文本值中含有单引号，语句未执行: %1").arg(value));
    return value;
}

}  // namespace kivdb
