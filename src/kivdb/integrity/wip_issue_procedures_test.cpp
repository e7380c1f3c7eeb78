#include "integrity/wip_issue_procedures.h"

#include "testing/suite_database.h"

#include <gtest/gtest.h>

namespace kivdb::integrity {
namespace {

// Outputs after the call, "iRes|part|quantities..." in the parameters' order.
std::string check(Connection& conn, const char* procedure, const QStringList& quantities, int refNo) {
    ProcedureCall call{QLatin1String(procedure), {}};
    call.add(QStringLiteral("@RETURN_VALUE"), FieldType::Integer, ParamDirection::ReturnValue)
        .add(QStringLiteral("@RefNo"), FieldType::Integer, ParamDirection::Input, 0, refNo)
        .add(QStringLiteral("@iRes"), FieldType::Integer, ParamDirection::Output)
        .add(QStringLiteral("@OverPartNo"), FieldType::String, ParamDirection::Output, 100);
    for (const QString& quantity : quantities) call.add(quantity, FieldType::Float, ParamDirection::Output);
    conn.call(call);
    QStringList outputs{call.param(QStringLiteral("@iRes")).value.toString(),
                        call.param(QStringLiteral("@OverPartNo")).value.toString()};
    for (const QString& quantity : quantities) outputs << QString::number(call.param(quantity).value.toDouble());
    EXPECT_EQ(call.param(QStringLiteral("@RETURN_VALUE")).value.toInt(), 0);
    return outputs.join(QLatin1Char('|')).toStdString();
}

const QStringList kIssueOutputs{"@IssQty", "@PlanQty", "@IssuedQty"};
const QStringList kAddIssueOutputs{"@IssQty", "@DueQty"};

struct Case {
    const char* name;
    // pl_JbBom rows: RefJobNo, LineId, CompNo, PlanIssQty, IssuedQty, NeedAddQty, AddIssQty
    QStringList bom;
    // pm_IssWipDtl rows of the checked note 7 (and others): RefNo, LineId, PartNo, RefJobNo, Qty
    QStringList lines;
    std::string issue;     // Pm_CheckWipIssQty outputs
    std::string addIssue;  // Pm_CheckWipAddIssQty outputs
};

const Case kCases[] = {
    {"within plan and owed", {"1, 1, 'A', 10, 4, 5, 2"}, {"7, 1, 'A', 1, 3"}, "0||0|0|0", "0||0|0"},
    {"exactly what is left", {"1, 1, 'A', 10, 4, 5, 2"}, {"7, 1, 'A', 1, 6"}, "0||0|0|0", "1|A|6|3"},
    {"one over", {"1, 1, 'A', 10, 4, 9, 2"}, {"7, 1, 'A', 1, 7"}, "1|A|7|10|4", "0||0|0"},
    {"lines of one component add up", {"1, 1, 'A', 10, 4, 5, 2"}, {"7, 1, 'A', 1, 3", "7, 2, 'A', 1, 1"},
     "0||0|0|0", "1|A|4|3"},
    {"component lines of a job add up", {"1, 1, 'A', 5, 0, 2, 0", "1, 2, 'A', 5, 1, 2, 1"},
     {"7, 1, 'A', 1, 9"}, "0||0|0|0", "1|A|9|3"},
    {"not a component of its job", {"1, 1, 'A', 10, 0, 10, 0"}, {"7, 1, 'B', 1, 1"}, "1|B|1|0|0", "1|B|1|0"},
    {"component of another job only", {"2, 1, 'A', 10, 0, 10, 0"}, {"7, 1, 'A', 1, 1"}, "1|A|1|0|0",
     "1|A|1|0"},
    {"lines without a job are not checked", {}, {"7, 1, 'A', null, 5", "7, 2, 'A', 0, 5"}, "0||0|0|0", "0||0|0"},
    {"other notes do not count", {"1, 1, 'A', 10, 9, 1, 1"}, {"8, 1, 'A', 1, 50", "7, 1, 'A', 1, 1"},
     "0||0|0|0", "1|A|1|0"},
    {"first over by job, then part", {},
     {"7, 1, 'Z', 2, 1", "7, 2, 'Y', 1, 1", "7, 3, 'X', 2, 1"}, "1|Y|1|0|0", "1|Y|1|0"},
    {"decimal quantities compare exactly", {"1, 1, 'A', 0.3, 0.1, 0.3, 0.1"}, {"7, 1, 'A', 1, 0.2"},
     "0||0|0|0", "0||0|0"},
    {"a note without lines", {"1, 1, 'A', 10, 0, 10, 0"}, {}, "0||0|0|0", "0||0|0"},
};

TEST(WipIssueProceduresTest, IssueNoteAgainstItsJobs) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        testing::SuiteDatabaseFile file;
        auto conn = file.connect();
        for (const QString& row : c.bom)
            conn->execute("insert into pl_JbBom (RefJobNo, LineId, CompNo, PlanIssQty, IssuedQty, NeedAddQty, "
                          "AddIssQty) values (" + row + ")");
        for (const QString& row : c.lines)
            conn->execute("insert into pm_IssWipDtl (RefNo, LineId, PartNo, RefJobNo, Qty) values (" + row + ")");
        EXPECT_EQ(check(*conn, "Pm_CheckWipIssQty", kIssueOutputs, 7), c.issue);
        EXPECT_EQ(check(*conn, "Pm_CheckWipAddIssQty", kAddIssueOutputs, 7), c.addIssue);
    }
}

TEST(WipIssueProceduresTest, DatabaseErrorsReachTheCaller) {
    testing::SuiteDatabaseFile file;
    auto conn = file.connect();
    conn->execute("drop table pl_JbBom");
    EXPECT_THROW(check(*conn, "Pm_CheckWipIssQty", kIssueOutputs, 7), DatabaseError);
    // A call without the outputs it must fill.
    EXPECT_THROW(check(*conn, "Pm_CheckWipAddIssQty", {"@IssQty"}, 7), DatabaseError);
}

}  // namespace
}  // namespace kivdb::integrity
