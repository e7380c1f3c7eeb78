#include "documents/bill_seq_procedure.h"

#include "platform/embedded_procedure_support.h"

#include <QDate>

#include <array>
#include <limits>

namespace kivdb::documents {
namespace {

// T-SQL rtrim: trailing blanks only.
QString trimmedRight(const QString& text) {
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1) == QLatin1Char(' ')) --end;
    return text.left(end);
}

struct DatePartFormat {
    const char* codeFormat;
    const char* qtFormat;
};
constexpr std::array<DatePartFormat, 6> kDatePartFormats{{
    {"yyyymmdd", "yyyyMMdd"},
    {"yymmdd", "yyMMdd"},
    {"yyyymm", "yyyyMM"},
    {"yymm", "yyMM"},
    {"yyyy", "yyyy"},
    {"yy", "yy"},
}};

struct RestartPeriod {
    char encodeType;
    const char* qtFormat;
};
constexpr std::array<RestartPeriod, 3> kRestartPeriods{{{'D', "yyyyMMdd"}, {'M', "yyyyMM"}, {'Y', "yyyy"}}};

// Any width over the whole number's length makes it too long; one more says so without
// padding further.
constexpr qint64 kWidestUsefulSequence = kMaxBillNumberLength + 1;
constexpr qint64 kDefaultSequenceWidth = 4;

// The date part a rule's Codeformat asks for; anything not in the table is none.
QString datePartOf(const QString& codeFormat, const QDate& day) {
    const QString format = trimmedRight(codeFormat).toLower();
    for (const DatePartFormat& f : kDatePartFormats)
        if (format == QLatin1String(f.codeFormat)) return day.toString(QLatin1String(f.qtFormat));
    return {};
}

QString textOrEmpty(const Value& value) { return value.isNull() ? QString() : value.toString(); }

// The rule's counter column is an int on the server: running past it is an error there.
qint64 checkedSequence(const Value& value, qint64 billType) {
    const qint64 seq = value.toLongLong();
    if (seq > std::numeric_limits<qint32>::max())
        throw DatabaseError(QStringLiteral("the numbering of bill type %1 has run out of numbers").arg(billType), ErrorKind::Sql);
    return seq;
}

// The text of the update's new period: the period of each restart kind today, picked by
// the rule's own EncodeType within the statement.
QString periodOfRuleToday(const QDate& today) {
    QString periodCase = QStringLiteral("case upper(rtrim(isnull(EncodeType, '')))");
    for (const RestartPeriod& p : kRestartPeriods)
        periodCase += QStringLiteral(" when '%1' then '%2'")
                          .arg(QString(QLatin1Char(p.encodeType)), today.toString(QLatin1String(p.qtFormat)));
    return periodCase + QStringLiteral(" else '' end");
}

BillSeqStatus nextBillNumber(Connection& conn, const ProcedureCall& call, QString& number) {
    const std::optional<qint64> billType = integerArgument(call, QStringLiteral("@BillType"));
    if (!billType) return BillSeqStatus::NoRule;
    const QString where = QStringLiteral(" where BillId = %1").arg(*billType);
    const QDate today = QDate::currentDate();

    ProcedureScope scope(conn, "bs_Get_BillSeqNo");
    // The update comes first: it takes the write lock before anything is read, so two
    // connections can never both read the same last number.
    const qint64 advanced = conn.execute(
        QStringLiteral("update bs_billsetItem set CurSeq = case when isnull(CurPeriod, '') = %1 "
                       "then isnull(CurSeq, 0) + 1 else 1 end, CurPeriod = %1")
            .arg(periodOfRuleToday(today)) +
        where);
    if (advanced < 1) return BillSeqStatus::NoRule;
    const RowSet rule =
        conn.query(QStringLiteral("select Prefix, Codeformat, SeqWidth, CurSeq from bs_billsetItem") + where);
    const std::vector<Value>& row = rule.rows.at(0);

    const QString prefix = trimmedRight(textOrEmpty(row[0]));
    const QString datePart = datePartOf(textOrEmpty(row[1]), today);
    const qint64 width = row[2].isNull() ? kDefaultSequenceWidth : std::min(row[2].toLongLong(), kWidestUsefulSequence);
    QString digits = QString::number(checkedSequence(row[3], *billType));
    // A sequence wider than the rule's width is written in full, to stay unique.
    if (digits.size() < width) digits = QString(width - digits.size(), QLatin1Char('0')) + digits;

    const QString candidate = prefix + datePart + digits;
    // Too long: the scope puts the counter back, inside a caller's transaction too.
    if (candidate.size() > kMaxBillNumberLength) return BillSeqStatus::TooLong;
    scope.commit();
    number = candidate;
    return BillSeqStatus::Numbered;
}

}  // namespace

void billSeqNoProcedure(Connection& conn, ProcedureCall& call) {
    ProcedureParam& result = call.param(QStringLiteral("@ResultStr"));
    result.value = Value();
    QString number;
    const BillSeqStatus status = nextBillNumber(conn, call, number);
    if (status == BillSeqStatus::Numbered) result.value = number;
    setReturnCode(call, int(status));
}

}  // namespace kivdb::documents
