// Messages, string lists and SQL literal texts.
#include "platform/kivfunc.h"
#include "platform/message_sink.h"

#include <QStringView>

namespace kivdb::kivfunc {

void ShowMsgHint(const QString& text) { messageSink().show(MessageKind::Hint, text); }
void ShowMsgWarn(const QString& text) { messageSink().show(MessageKind::Warn, text); }
void ShowMsgError(const QString& text) { messageSink().show(MessageKind::Error, text); }
bool Confirm(const QString& question) { return messageSink().confirm(question); }

namespace {

// The pieces of a list under the rules in the header: every separator ends a piece, and
// what follows the last separator is a piece only when it is not empty.
QList<QStringView> pieces(QStringView text, QStringView separator) {
    if (text.isEmpty()) return {};
    if (separator.isEmpty()) return {text};
    QList<QStringView> result = text.split(separator);
    if (result.size() > 1 && result.last().isEmpty()) result.removeLast();
    return result;
}

QString pieceAt(QStringView text, QStringView separator, int index) {
    QList<QStringView> all = pieces(text, separator);
    if (index < 0 || index >= all.size()) return {};
    return all[index].toString();
}

}  // namespace

int GetStringIndexCount(const QString& text, const QString& separator) {
    return int(pieces(text, separator).size());
}

QString GetStringIndexValue(const QString& text, QChar separator, int index) {
    return pieceAt(text, QStringView(&separator, 1), index);
}

QString GetStringIndexValue2(const QString& text, const QString& separator, int index) {
    return pieceAt(text, separator, index);
}

// Literals for SQL Server and the embedded database alike: bit columns hold 0 and 1, date
// literals are quoted text, and LIKE patterns use % for any run of characters.
QString TrueValue_str() { return QStringLiteral("1"); }
QString FalseValue_str() { return QStringLiteral("0"); }
QString DATAESPERATOR_STR() { return QStringLiteral("'"); }
QString LIKE_STR() { return QStringLiteral("%"); }

QString SqlDateLiteral(double date) {
    return DATAESPERATOR_STR() + formatOleDate(date, QStringLiteral("yyyy-MM-dd")) + DATAESPERATOR_STR();
}

}  // namespace kivdb::kivfunc
