// The `kivdb call` contract that acceptance checks rely on: the result on stdout, the
// statements, procedures, messages and questions on stderr in order, errors with status 1.
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct CliRun {
    int status;
    QString out;
    QString err;
};

CliRun kivdb(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral(KIVDB_CLI_PATH), args);
    p.waitForFinished(30000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

class CallCommand : public ::testing::Test {
protected:
    void SetUp() override {
        db_ = dir_.filePath("call.kivdb");
        ASSERT_EQ(kivdb({"init", "--db", db_}).status, 0);
        for (const char* sql : {
                 "create table ProbeParts (PartNo varchar(20), PartName varchar(40), Price float, "
                 "Qty int, Made datetime, bLot bit)",
                 "insert into ProbeParts values ('P1', '齿轮', 12.5, 3, '2006-03-31', 1)",
                 "insert into ProbeParts values ('P2', '轴承', 0.1, 4, '2006-04-01 08:30:00', 0)",
                 "create table StkDtl (RefNo int, LineId int, TmpNo varchar(20))",
                 "insert into StkDtl values (7, 4, '')",
             })
            ASSERT_EQ(kivdb({"sql", "--db", db_, QString::fromUtf8(sql)}).status, 0) << sql;
    }
    QStringList call(const QStringList& rest) const { return QStringList{"call", "--db", db_} + rest; }

    QTemporaryDir dir_;
    QString db_;
};

TEST_F(CallCommand, PrintsEachResultTypeInItsOwnForm) {
    const struct {
        QStringList args;
        const char* expected;
    } cases[] = {
        {{"SelTableStringValue", "select PartName from ProbeParts where PartNo = 'P1'"}, "齿轮\n"},
        {{"SelTableIntValue", "select Qty from ProbeParts where PartNo = 'P2'"}, "4\n"},
        {{"SelTableIntegerValue2", "select Qty from ProbeParts where PartNo = 'none'"}, "-1\n"},
        {{"SelTableFloatValue", "select Price from ProbeParts where PartNo = 'P1'"}, "12.5\n"},
        {{"SelTableFloatValue", "select Price from ProbeParts where PartNo = 'P2'"}, "0.1\n"},
        {{"SelTableFloatValue", "select Qty from ProbeParts where PartNo = 'P1'"}, "3\n"},
        {{"SelTableBooleanValue", "select bLot from ProbeParts where PartNo = 'P1'"}, "true\n"},
        {{"SelTableDateValue", "select Made from ProbeParts where PartNo = 'P1'"}, "2006-03-31\n"},
        {{"SelTableDateValue", "select Made from ProbeParts where PartNo = 'P2'"}, "2006-04-01 08:30:00\n"},
        {{"SelTableDateValue", "select Made from ProbeParts where PartNo = 'none'"}, "0\n"},
        {{"SelTableVariantValue", "select PartName from ProbeParts where PartNo = 'none'"}, "null\n"},
        {{"TableExistIntValue", "ProbeParts", "Qty", "4"}, "true\n"},
        {{"GetSpErrorMsg", "-5"}, "返回存储过程错误信息 -5\n"},
        {{"ExecTmpQuery", "update ProbeParts set Qty = 5 where PartNo = 'P9'"}, ""},
        // The list the export fills, one item a line after the (absent) result.
        {{"SqlAddPickList", "select PartName from ProbeParts order by PartNo"}, "齿轮\n轴承\n"},
        {{"SqlAddPickList", "select PartName from ProbeParts where 1 = 0"}, ""},
    };
    for (const auto& c : cases) {
        const CliRun r = kivdb(call(c.args));
        EXPECT_EQ(r.status, 0) << c.args.join(' ').toStdString() << "\n" << r.err.toStdString();
        EXPECT_EQ(r.out, QString::fromUtf8(c.expected)) << c.args.join(' ').toStdString();
    }
}

TEST_F(CallCommand, TraceShowsStatementsAsBuiltAndMessagesInOrder) {
    const CliRun r = kivdb({"call", "--db", db_, "--trace", "IsExitNoInputStkInBillInfor", "StkDtl", "7", "TmpNo"});
    EXPECT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, "true\n");
    EXPECT_EQ(r.err, QStringLiteral("SQL:  select LineId from StkDtl where RefNo = 7 and Ltrim(TmpNo)=''\n"
                                     "MSG hint: 明细中序号 4 行，未指定临时单号。\n"));
}

TEST_F(CallCommand, ErrorsPrintOneLineAndExitWithOne) {
    const char* const unknown = "error: no export callable from the command line by that name";
    const struct {
        QStringList args;
        QString err;  // the whole line, when the case is about its text
    } bad[] = {
        {{"NoSuchExport"}, unknown},
        // A name a typo away, or part of a name, is answered with the nearest names.
        {{"IsSysNeedBachControl"}, QString(unknown) + "; nearest: IsSysNeedBatchControl, IsSysNeedLotControl, IsPartNeedBatchControl"},
        {{"GetSysDigit"}, QString(unknown) + "; nearest: GetSysDigital"},
        {{"PostDataSet"}, unknown},                            // needs a live dataset
        {{"SelTableIntValue"}, {}},                            // missing argument
        {{"TableExistIntValue", "ProbeParts", "Qty", "four"}, {}},  // not an integer
        {{"SelTableIntValue", "select nothing from nowhere"}, {}},   // the database refuses
        {{"TableExistStringValue", "ProbeParts", "PartNo", "P1' or '1'='1"}, {}},  // quote guard
    };
    for (const auto& c : bad) {
        const CliRun r = kivdb(call(c.args));
        EXPECT_EQ(r.status, 1) << c.args.join(' ').toStdString();
        EXPECT_TRUE(r.out.isEmpty());
        EXPECT_TRUE(r.err.startsWith("error: ")) << r.err.toStdString();
        EXPECT_EQ(r.err.count('\n'), 1) << r.err.toStdString();
        if (!c.err.isEmpty()) EXPECT_EQ(r.err, c.err + "\n");
    }
}

}  // namespace
