// The installation's parameters and settings: each export reads its own row, and a missing
// row or a null value gives the default.
#include "kivdb/exports.h"
#include "testing/answers.h"
#include "testing/suite_database.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>

#include <functional>

namespace kivdb {
namespace {

using testing::Answer;
using testing::answer;
using testing::StatementRecorder;
using testing::text;

// Each parameter export against its name in its table: unset, set, then null.
TEST(SystemParameters, EachExportReadsItsOwnParameter) {
    const struct {
        const char* table;
        const char* name;
        Answer ask;
    } cases[] = {
        {"bs_paralistB", "SerialControl", answer(IsSysNeedSerialControl)},
        {"bs_paralistB", "EffectDateControl", answer(IsSysNeedEffectDateControl)},
        {"bs_paralistB", "bLoosenSerialControl", answer(IsLoosenSerialControl)},
        {"bs_paralistB", "BatchControl", answer(IsSysNeedBatchControl)},
        {"bs_paralistB", "PlanType", answer(IsSysPlanByOrder)},
        {"bs_paralistB", "PoType", answer(IsSysPoByOrder)},
        {"bs_paralistB", "PoOneByOne", answer(IsSysPoOneByOne)},
        {"bs_paralistB", "bCheckArriveDate", answer(IsCheckArriveDate)},
        {"bs_paralistB", "bCheckRPayArriveDate", answer(IsCheckRPayArriveDate)},
        {"bs_paralistB", "CheckRpAccount", answer(IsCheckRPAccount)},
        {"bs_paralistB", "AllowInvDiffTaxRate", answer(IsAllowInvDiffTaxRate)},
        {"bs_paralistB", "bCheckPPayArriveDate", answer(IsCheckPPayArriveDate)},
        {"bs_paralistB", "UnitFactor", answer(IsUnitUseFactor)},
        {"bs_paralistB", "QtyPerFactor", answer(IsQtyPerUseFactor)},
        {"bs_paralistB", "CurFactor", answer(IsCurrUseFactor)},
        {"bs_paralistB", "FormByUser", answer(IsFormDiffByUser)},
        {"bs_paralistB", "FlowCheck", answer(IsSysNeedFlowCheck)},
        {"bs_paralistB", "AllowDiffDepart", answer(IsSysAllowDiffOp)},
        {"bs_paralistB", "PayByInv", answer(IsPayNeedInvoice)},
        {"bs_paralistB", "SaveSucMsg", answer(IsShowSaveSucMsg)},
        {"bs_paralistB", "bUpdateStkInBill", answer(IsSysNeedUpdateStkInBill)},
        {"bs_paralistB", "LotControl", answer(IsSysNeedLotControl)},
        {"bs_paralistB", "NoteVersion", answer(IsSysNoteVersionCtrl)},
        {"bs_paralistB", "VersionControl", answer(IsSysVersionControl)},
        {"bs_paralistB", "bFqc", answer(IsSysFqcControl)},
        {"bs_paralistB", "AutoFqcCode", answer(IsSysAutoFqcCode)},
        {"bs_paralistB", "JobOverProdQty", answer(IsSysAllowOverProdRep)},
        {"bs_paralistB", "SaleByTax", answer(IsSalesByTax)},
        {"bs_paralistB", "BuyByTax", answer(IsPoByTax)},
        {"bs_paralistB", "bSysPriceIsTaxPrice", answer(IsSysPriceIsTaxPrice)},
        {"bs_paralistB", "bAutoRout", answer(IsSysAutoRout)},
        {"bs_paralistB", "bAcctModSimu", answer(IsAcctModSimuRun)},
        {"bs_paralistB", "bTaxModSimu", answer(IsTaxModSimuRun)},
        {"bs_paralistB", "bCustPoNo", answer(IsRepByCustPoNo)},
        {"bs_paralistB", "bAcctModUsed", answer(IsAcctModBeUsed)},
        {"bs_paralistB", "bTaxModUsed", answer(IsTaxModBeUsed)},
        {"bs_paralistB", "bRecvQtyEqDueQty", answer(IsRecvQtyEqDueQty)},
        {"bs_paralistB", "bShipQtyEqDueQty", answer(IsShipQtyEqDueQty)},
        {"bs_paralistB", "bSlRtnNeedAdd", answer(IsShipRtnDefaultNeedAdd)},
        {"bs_paralistB", "bPoRtnNeedAdd", answer(IsPoRtnDefaultNeedAdd)},
        {"bs_paralistB", "FQCNgToPart", answer(IsFQCNgProdRtnToWip)},
        {"bs_paralistB", "bNullWipRepRtnToStk", answer(IsWipRepNullPartRtnToStk)},
        {"bs_paralistB", "DisCostByWorkTime", answer(IsDisCostByWorkTime)},
        {"bs_paralistB", "PoRecvDelayParts", answer(IsSysCanRecvDelayPoParts)},
        {"bs_paralistB", "PoRecvPreShipParts", answer(IsSysCanRecvPreShipPoParts)},
        {"bs_paralistB", "PoDefaultIqc", answer(IsSysDefaultIqc)},
        {"bs_paralistB", "AutoIqcCode", answer(IsSysAutoIqcCode)},
        {"bs_paralistB", "ConfirmDateBeforeEnter", answer(IsConfirmDateBeforeEnter)},
        {"bs_paralistB", "AllowAdjustNote", answer(IsSysAllowAdjustNote)},
        {"bs_paralistB", "RpAcctIni", answer(IsInitRpAcct)},
        {"bs_paralistB", "FormByUser", answer(IsDiffFormByUser)},
        {"bs_paralistI", "DefaultTaxRate", answer(ProdDefaultTaxRate)},
        {"bs_paralistI", "PriceDigital", answer(GetPriceDigital)},
        {"bs_paralistI", "AmtDigital", answer(GetAmountDigital)},
        {"bs_paralistS", "DefSlShipStk", answer(GetDefaultShipStk)},
        {"bs_paralistS", "DefSlRtnStk", answer(GetDefaultSlRtnStk)},
        {"bs_paralistS", "DefPoRecvStk", answer(GetDefaultPoRecvStk)},
        {"bs_paralistS", "DefPoRtnStk", answer(GetDefaultPoRtnStk)},
        {"bs_paralistS", "DefIssStk", answer(GetDefaultIssueStk)},
        {"bs_paralistS", "DefFinStk", answer(GetDefaultFinStk)},
        {"bs_paralistS", "DefWipRtnStk", answer(GetDefWipRtnStk)},
    };
    testing::SuiteDatabaseFile file;
    const auto conn = file.connect();
    conn->begin();  // every case's writes in one transaction: committing each to the file takes seconds
    for (const auto& c : cases) {
        const QString table = QString::fromLatin1(c.table);
        const bool isText = table.endsWith('S');
        const QString value = table.endsWith('B') ? "1" : isText ? "'WH7'" : "7";
        const QString unset = isText ? "" : "0";
        SCOPED_TRACE(c.name);
        conn->execute("delete from " + table);
        // Another parameter set to the value must not count.
        conn->execute(QStringLiteral("insert into %1 (ParFieldName, paraValue) values ('Other', %2)").arg(table, value));
        EXPECT_EQ(c.ask(*conn), unset);
        conn->execute(QStringLiteral("insert into %1 (ParFieldName, paraValue) values ('%2', %3)").arg(table, c.name, value));
        EXPECT_EQ(c.ask(*conn), isText ? "WH7" : value);
        conn->execute(QStringLiteral("update %1 set %2 = null").arg(table, isText ? "paraValue" : "ParaValue"));
        EXPECT_EQ(c.ask(*conn), unset);
    }
    conn->rollback();
}

TEST(SystemParameters, GetSysDigitalReadsTheKindsParameter) {
    testing::SuiteDatabaseFile file;
    const auto conn = file.connect();
    conn->execute("insert into bs_paralistI (ParFieldName, ParaValue) values ('QtyDigital', 10), ('PriceDigital', 11), "
                  "('AmtDigital', 12), ('QtyPerDigital', 13), ('CostDigital', 14), ('VoucherDigital', 15), ('Other', 16)");
    StatementRecorder recorder(*conn);
    const struct {
        int kind;
        int expected;
    } cases[] = {{0, 10}, {1, 11}, {2, 12}, {3, 13}, {4, 14}, {5, 15}, {6, 0}, {-1, 0}};
    for (const auto& c : cases) EXPECT_EQ(GetSysDigital(*conn, c.kind), c.expected) << c.kind;
    // An unknown kind asks for the empty name rather than failing.
    EXPECT_EQ(recorder.statements().last(), "select ParaValue from bs_paralistI where ParFieldName= ''");
}

// The settings of a kind of note, a customer, the installed modules and the system.
TEST(SystemParameters, SettingsStoredElsewhere) {
    testing::SuiteDatabaseFile emptyFile, fullFile;
    const auto empty = emptyFile.connect();
    const auto full = fullFile.connect();
    testing::executeAll(*full, {
             "insert into Bs_BillSet (BillId, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) "
             "values (5, 1, 0, 1, 0), (6, 0, 1, 0, 1), (7, null, null, null, null)",
             "insert into bs_Customer (CustNo, SaleByTax) values ('C1', 1), ('C2', null)",
             // Only the first row counts.
             "insert into s_ModInsted (AcctModInsted, TaxModInsted, PayModInsted, ProdModInsted) "
             "values (1, 0, 1, 0), (0, 1, 0, 1)",
             "insert into bs_sysPar (CostPerHour) values (18.5)",
    });
    const struct {
        Answer ask;
        bool empty;  // on the tables without rows
        const char* expected;
    } cases[] = {
        {[](Connection& c) { return text(IsBillAlowNegQty(c, 5)); }, false, "1"},
        {[](Connection& c) { return text(IsBillAlowNegQty(c, 6)); }, false, "0"},
        {[](Connection& c) { return text(IsBillAlowNegQty(c, 7)); }, false, "0"},
        {[](Connection& c) { return text(IsBillAlowNegQty(c, 8)); }, false, "0"},
        {[](Connection& c) { return text(IsBillNeedCheckNoteNo(c, 6)); }, false, "1"},
        {[](Connection& c) { return text(IsBillNeedCheckNoteNo(c, 5)); }, false, "0"},
        {[](Connection& c) { return text(IsBillNeedCheckOpId(c, 5)); }, false, "1"},
        {[](Connection& c) { return text(IsBillNeedCheckOpId(c, 7)); }, false, "0"},
        {[](Connection& c) { return text(IsNoteNeedBackUp(c, 6)); }, false, "1"},
        {[](Connection& c) { return text(IsNoteNeedBackUp(c, 5)); }, false, "0"},
        {[](Connection& c) { return text(IsCustSalesByTax(c, "C1")); }, false, "1"},
        {[](Connection& c) { return text(IsCustSalesByTax(c, "C2")); }, false, "0"},
        {[](Connection& c) { return text(IsCustSalesByTax(c, "C9")); }, false, "0"},
        {answer(IsAcctModInsted), false, "1"},
        {answer(IsTaxModInsted), false, "0"},
        {answer(IsPayModInsted), false, "1"},
        {answer(IsProdModInsted), false, "0"},
        {answer(IsAcctModInsted), true, "0"},
        {answer(GetManCostPerHour), false, "18.5"},
        {answer(GetManCostPerHour), true, "0"},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(cases[i].ask(cases[i].empty ? *empty : *full), cases[i].expected) << "case " << i;
}

}  // namespace
}  // namespace kivdb
