#include "integrity/wip_issue_procedures.h"

#include "platform/embedded_procedure_support.h"

#include <vector>

namespace kivdb::integrity {
namespace {

// A quantity of the over-issued component beyond the note's own (@IssQty): the output
// parameter and the column of pl_JbBom's totals that fills it.
struct ComponentOutput {
    const char* param;
    const char* column;
};

struct IssueCheck {
    // Select list of the per job and component totals of pl_JbBom, after RefJobNo, CompNo.
    const char* componentTotals;
    // What the note may still issue, from the totals b (null when not a component).
    const char* allowance;
    std::vector<ComponentOutput> outputs;
};

const IssueCheck kNormalIssue{
    "sum(isnull(PlanIssQty, 0)) as PlanIssQty, sum(isnull(IssuedQty, 0)) as IssuedQty",
    "isnull(b.PlanIssQty, 0) - isnull(b.IssuedQty, 0)",
    {{"@PlanQty", "PlanIssQty"}, {"@IssuedQty", "IssuedQty"}},
};

const IssueCheck kSupplementaryIssue{
    "sum(isnull(NeedAddQty, 0)) - sum(isnull(AddIssQty, 0)) as DueQty",
    "isnull(b.DueQty, 0)",
    {{"@DueQty", "DueQty"}},
};

// The quantity columns are decimal(18,4); the embedded engine sums them in binary floating
// point, so the comparison is made on the difference rounded to that scale, where the
// server's exact arithmetic has no stray last bits (0.3 planned, 0.1 issued, 0.2 is within).
constexpr int kQuantityScale = 4;

QString firstOverIssueQuery(const IssueCheck& check, qint64 refNo) {
    QString componentColumns;
    for (const ComponentOutput& output : check.outputs)
        componentColumns += QStringLiteral(", isnull(b.%1, 0) as %1").arg(QLatin1String(output.column));
    return QStringLiteral(
               "select top 1 i.PartNo, i.Qty as IssQty%1"
               " from (select RefJobNo, PartNo, sum(isnull(Qty, 0)) as Qty"
               " from pm_IssWipDtl"
               " where RefNo = %2 and isnull(RefJobNo, 0) <> 0"
               " group by RefJobNo, PartNo) i"
               " left outer join"
               " (select RefJobNo, CompNo, %3"
               " from pl_JbBom"
               " group by RefJobNo, CompNo) b"
               " on b.RefJobNo = i.RefJobNo and b.CompNo = i.PartNo"
               " where round(i.Qty - (%4), %5) > 0"
               " order by i.RefJobNo, i.PartNo")
        .arg(componentColumns, QString::number(refNo), QLatin1String(check.componentTotals),
             QLatin1String(check.allowance), QString::number(kQuantityScale));
}

void runIssueCheck(const IssueCheck& check, Connection& conn, ProcedureCall& call) {
    const std::optional<qint64> refNo = integerArgument(call, QStringLiteral("@RefNo"));
    ProcedureParam& result = call.param(QStringLiteral("@iRes"));
    ProcedureParam& overPartNo = call.param(QStringLiteral("@OverPartNo"));
    result.value = qlonglong(0);
    overPartNo.value = QString();
    ProcedureParam& issQty = call.param(QStringLiteral("@IssQty"));
    issQty.value = 0.0;
    for (const ComponentOutput& output : check.outputs) call.param(QLatin1String(output.param)).value = 0.0;
    setReturnCode(call, 0);
    if (!refNo) return;  // a note without RefNo has no lines

    const RowSet over = conn.query(firstOverIssueQuery(check, *refNo));
    if (over.empty()) return;
    const std::vector<Value>& row = over.rows.front();
    result.value = qlonglong(1);
    // A line without a part number is over as well; the server then answers null.
    overPartNo.value = row[0].isNull() ? Value() : Value(row[0].toString());
    issQty.value = row[1].toDouble();
    for (size_t i = 0; i < check.outputs.size(); ++i)
        call.param(QLatin1String(check.outputs[i].param)).value = row[2 + i].toDouble();
}

}  // namespace

void wipIssueCheckProcedure(Connection& conn, ProcedureCall& call) { runIssueCheck(kNormalIssue, conn, call); }

void wipAddIssueCheckProcedure(Connection& conn, ProcedureCall& call) {
    runIssueCheck(kSupplementaryIssue, conn, call);
}

}  // namespace kivdb::integrity
