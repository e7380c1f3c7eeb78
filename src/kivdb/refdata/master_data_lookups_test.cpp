// The master-data lookups: each export reads its own column of its own row, a missing row or a
// null value gives the default; the lookups that decide something are tested on their paths.
#include "kivdb/exports.h"
#include "testing/answers.h"
#include "testing/suite_database.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>

namespace kivdb {
namespace {

using testing::Answer;
using testing::answer;
using testing::StatementRecorder;

using Lookup = std::function<Answer(const QString& key)>;

template <typename R>
Lookup byCode(R (*ask)(Connection&, const QString&)) {
    return [ask](const QString& key) { return answer(ask, key); };
}

template <typename R>
Lookup byNumber(R (*ask)(Connection&, int)) {
    return [ask](const QString& key) { return answer(ask, key.toInt()); };
}

// Each lookup on its key 41 among neighbours 40 and 42 whose columns are null; then key 49,
// then its own row with the column null.
TEST(MasterDataLookups, EachExportReadsItsRow) {
    const struct {
        Lookup ask;
        const char* table;
        const char* key;
        const char* column;
        const char* value;
        const char* expected;
        const char* unset;
    } cases[] = {
        {byCode(GetEquipStkNo), "En_Equip", "EquipNo", "StkNo", "'WH1'", "WH1", ""},
        {byCode(GetEquipDepartNo), "En_Equip", "EquipNo", "DepartNo", "'D1'", "D1", ""},
        {byCode(PartName), "Bs_ProdList", "PartNo", "PartName", "'螺栓'", "螺栓", ""},
        {byCode(PartStdPrice), "Bs_ProdList", "PartNo", "Price", "7.5", "7.5", "0"},
        {byCode(EquipName), "En_Equip", "EquipNo", "CName", "'车床'", "车床", ""},
        {byCode(IsEquipSubcontract), "En_Equip", "EquipNo", "bSubType", "1", "1", "0"},
        {byCode(WcName), "En_WorkCent", "WcNo", "WcName", "'装配'", "装配", ""},
        {byCode(IsWcNoNeedPqc), "En_WorkCent", "WcNo", "Pqc", "1", "1", "0"},
        {byCode(PartBatchProType), "Bs_ProdList", "PartNo", "LotType", "7", "7", "0"},
        {byCode(isPartNeedLotProd), "Bs_ProdList", "PartNo", "bLotProc", "1", "1", "0"},
        {byCode(isPartNeedBatchProd), "Bs_ProdList", "PartNo", "bBatchProc", "1", "1", "0"},
        {byCode(PartTaxRate), "Bs_ProdList", "PartNo", "TaxRate", "17", "17", "0"},
        {byCode(PayTypeName), "Bs_PayType", "PayType", "Descrip", "'现金'", "现金", ""},
        {byCode(BankName), "Rp_Bank", "BankNo", "BankName", "'工行'", "工行", ""},
        {byCode(GetUserName), "Bs_User", "UserId", "UserName", "'张三'", "张三", ""},
        {byCode(BankCurrency), "Rp_Bank", "BankNo", "Currency", "'USD'", "USD", ""},
        {byCode(BankSubId), "Rp_Bank", "BankNo", "SubId", "'1002'", "1002", ""},
        {byCode(BankBalance), "Rp_Bank", "BankNo", "balance", "7.5", "7.5", "0"},
        {byCode(PartSpec), "Bs_ProdList", "PartNo", "PartSpec", "'M8'", "M8", ""},
        {byCode(PartBaseUnit), "Bs_ProdList", "PartNo", "Unit", "'PCS'", "PCS", ""},
        {byCode(PartStdCost), "Bs_ProdList", "PartNo", "StdCost", "7.5", "7.5", "0"},
        {byCode(IsPartNeedSerialControl), "Bs_ProdList", "PartNo", "SerialControl", "1", "1", "0"},
        {byCode(IsPartNeedEffectDateControl), "Bs_ProdList", "PartNo", "bEffectProc", "1", "1", "0"},
        {byCode(IsPartNeedBatchControl), "Bs_ProdList", "PartNo", "bBatchProc", "1", "1", "0"},
        {byCode(GetPartBatchProcType), "Bs_ProdList", "PartNo", "BatchType", "7", "7", "0"},
        {byCode(StkDepartNo), "Bs_Location", "StkNo", "DepartNo", "'D1'", "D1", ""},
        {byCode(EmpDepartNo), "Bs_Employee", "EmpId", "DepartNo", "'D1'", "D1", ""},
        {byCode(DepartName), "Bs_Depart", "DepartNo", "DepartName", "'销售部'", "销售部", ""},
        {byCode(VendBuyer), "Bs_Vendor", "VendNo", "Buyer", "'E1'", "E1", ""},
        {byCode(VendorName), "Bs_Vendor", "VendNo", "VendName", "'甲公司'", "甲公司", ""},
        {byCode(VendShortName), "Bs_Vendor", "VendNo", "ShortName", "'甲'", "甲", ""},
        {byCode(VendCurrency), "Bs_Vendor", "VendNo", "Currency", "'USD'", "USD", ""},
        {byCode(VendDepartNo), "Bs_Vendor", "VendNo", "DepartNo", "'D1'", "D1", ""},
        {byCode(VendPayCode), "Bs_Vendor", "VendNo", "PayCode", "7", "7", "0"},
        {byCode(VendPayType), "Bs_Vendor", "VendNo", "PayType", "7", "7", "0"},
        {byCode(VendTradeType), "Bs_Vendor", "VendNo", "TradeType", "7", "7", "0"},
        {byCode(VendAddres), "Bs_Vendor", "VendNo", "RegAddr", "'北京'", "北京", ""},
        {byCode(IsVendPoPriceByTax), "Bs_Vendor", "VendNo", "SaleByTax", "1", "1", "0"},
        {byCode(EmployName), "Bs_Employee", "EmpId", "EmpName", "'李四'", "李四", ""},
        {byCode(CurrencyFactor), "AC_Currency", "Currency", "Factor", "7.5", "7.5", "0"},
        {byCode(CurrencyName), "AC_Currency", "Currency", "CyName", "'美元'", "美元", ""},
        {byCode(CustFullName), "Bs_Customer", "CustNo", "CustName", "'乙公司'", "乙公司", ""},
        {byCode(CustShortName), "Bs_Customer", "CustNo", "ShortName", "'乙'", "乙", ""},
        {byCode(CustDepartNo), "Bs_Customer", "CustNo", "DepartNo", "'D1'", "D1", ""},
        {byCode(CustPayCode), "Bs_Customer", "CustNo", "PayCode", "7", "7", "0"},
        {byCode(CustPayType), "Bs_Customer", "CustNo", "PayType", "7", "7", "0"},
        {byCode(CustTradeType), "Bs_Customer", "CustNo", "TradeType", "7", "7", "0"},
        {byCode(CustCurrency), "Bs_Customer", "CustNo", "Currency", "'USD'", "USD", ""},
        {byCode(CustSalesId), "Bs_Customer", "CustNo", "SalesId", "'E1'", "E1", ""},
        {byCode(CustAddres), "Bs_Customer", "CustNo", "RegAddr", "'上海'", "上海", ""},
        {byCode(CustCreditSum), "Bs_Customer", "CustNo", "Credit", "7.5", "7.5", "0"},
        {byCode(GetCustSalePriceType), "Bs_Customer", "CustNo", "PriceType", "7", "7", "0"},
        {byCode(GetCustSalePriceCoeffi), "Bs_Customer", "CustNo", "Coeffi", "0.9", "0.9", "0"},
        {byCode(PartMaxStk), "Bs_ProdList", "PartNo", "MaxStk", "7.5", "7.5", "0"},
        {byCode(PartMinPoQty), "Bs_ProdList", "PartNo", "MinPoQty", "7.5", "7.5", "0"},
        {byCode(PartMinPur), "Bs_ProdList", "PartNo", "MinPur", "7.5", "7.5", "0"},
        {byCode(SalePeriodRate), "crm_SalePeriod", "SalePeriodNo", "SalePeriodRate", "0.25", "0.25", "0"},
        {byNumber(GetJobSlordNo), "pl_jbmain", "RefNo", "Slordno", "'SO1'", "SO1", ""},
        {byNumber(GetJobProdNo), "pl_jbmain", "RefNo", "ProdNo", "'P1'", "P1", ""},
        {byNumber(GetJobProdVersion), "pl_jbmain", "RefNo", "ProdVersion", "'B'", "B", ""},
        {byNumber(GetJObIssuedSuitQty), "pl_jbmain", "RefNo", "QtyIssued", "7.5", "7.5", "0"},
        {byNumber(GetJobProdQty), "pl_jbmain", "RefNo", "ProdQty", "7.5", "7.5", "0"},
        {byNumber(IsShipNoteHasPaid), "sl_ship", "RefNo", "PaidAmt", "-0.5", "1", "0"},
        {byNumber(IsSlComSumNoteHasPaid), "sl_ComSum", "RefNo", "PaidAmt", "7.5", "1", "0"},
        {byNumber(IsSlRtnNoteHasPaid), "sl_Rtn", "RefNo", "PaidAmt", "7.5", "1", "0"},
        {byNumber(IsRecvNoteHasPaid), "Po_recv", "RefNo", "PaidAmt", "7.5", "1", "0"},
        {byNumber(IsPoRtnNoteHasPaid), "Po_Rtn", "RefNo", "PaidAmt", "7.5", "1", "0"},
        {byNumber(IsPoSubCloseNoteHasPaid), "Po_SubClose", "RefNo", "PaidAmt", "7.5", "1", "0"},
        {byNumber(GetCurPeriodStkSaveFlag), "AC_AccYM", "Period", "StoreIni", "1", "1", "0"},
        {byNumber(GetCurPeriodRpSaveFlag), "AC_AccYM", "Period", "CustIni", "1", "1", "0"},
        {byNumber(GetCurPeriodAccountSaveFlag), "AC_AccYM", "Period", "AcctIni", "1", "1", "0"},
        {byNumber(GetCurPeriodSalaryPostFlag), "AC_AccYM", "Period", "SalaryIni", "1", "1", "0"},
        {byNumber(GetPriceSysTypeName), "bs_PriceSys", "PriceSysNo", "PriceSysName", "'批发'", "批发", ""},
        {byNumber(TaskDescription), "crm_TaskPlan", "TaskId", "TaskSub", "'回访'", "回访", ""},
        {byNumber(TaskCustNo), "crm_TaskPlan", "TaskId", "CustNo", "'C1'", "C1", ""},
    };
    testing::SuiteDatabaseFile file;
    const auto conn = file.connect();
    conn->begin();  // every case's writes in one transaction: committing each to the file takes seconds
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.table) + "." + c.column);
        const QString table = QString::fromLatin1(c.table);
        const QString key = QString::fromLatin1(c.key), column = QString::fromLatin1(c.column);
        conn->execute(QStringLiteral("delete from %1 where %2 in ('40', '41', '42')").arg(table, key));
        conn->execute(QStringLiteral("insert into %1 (%2, %3) values ('40', null), ('41', %4), ('42', null)")
                          .arg(table, key, column, QString::fromUtf8(c.value)));
        EXPECT_EQ(c.ask("41")(*conn), QString::fromUtf8(c.expected));
        EXPECT_EQ(c.ask("49")(*conn), c.unset);
        conn->execute(QStringLiteral("update %1 set %2 = null").arg(table, column));
        EXPECT_EQ(c.ask("41")(*conn), c.unset);
    }
    conn->rollback();
}

// The lookups that decide, join or count, on one set of rows.
TEST(MasterDataLookups, Decisions) {
    testing::SuiteDatabaseFile file;
    const auto conn = file.connect();
    testing::executeAll(*conn, {
             "insert into AC_Currency (Currency, CalMode, ExRate, LoCurFlag) values ('RMB', '*', 1, 1), "
             "('USD', '*', 6.5, 0), ('EUR', '/', 0.125, 0), ('JPY', '*', 0, 0)",
             "insert into Bs_ProdList (PartNo, PartName, Price, TaxRate) values ('P1', '螺栓', 30, 17)",
             "insert into Bs_Customer (CustNo, ShortName, PriceType, Coeffi, Currency) values "
             "('C1', '乙', 2, 0.9, 'USD'), ('C2', '丙', 2, 0.5, 'EUR'), ('C3', '丁', 5, 2, 'RMB'), ('C4', '戊', 5, null, 'RMB')",
             "insert into bs_CustPrice (CustNo, PartNo, Price, taxFlag, TaxRate) values ('C1', 'P1', 10, 1, 13)",
             "insert into bs_ProdPriceSys (ProdNo, PriceSysNo, Price, taxflag) values ('P1', 2, 20, 0)",
             "insert into bs_paralistB (ParFieldName, paraValue) values ('SaleByTax', 1), ('NoAllowBatchInStk', 1), "
             "('bNoAllowInStkAtInnerStk ', 1)",
             "insert into bs_paralistI (ParFieldName, paraValue) values ('SalePriceType', 2)",
             // The latest closing entry of any customer starts every customer's sum.
             "insert into rp_racctRec (CustNo, Type, RefDate, Amount) values ('C1', 100, '2026-01-31', 0), "
             "('C2', 100, '2026-02-10', 0), ('C1', 1, '2026-01-15', 100), ('C1', 1, '2026-02-10', 5), ('C1', 1, '2026-02-11', 10.12346)",
             "insert into rp_PacctRec (VendNo, Type, RefDate, Amount) values ('V1', 1, '1900-01-01', 1), ('V1', 1, '2026-01-01', 2)",
             "insert into sl_order (RefNo, Slordno, CustNo) values (5, 'SO5', 'C1')",
             "insert into pl_jbmain (RefNo, Slordno, ProdNo, RefOrderNo) values (42, 'SO5 ', 'P1', 5), (43, 'SO6', 'P9', 6)",
             "insert into pl_JbRout (RefJobNo, SeqNo, WcNo) values (42, 1, 'WC1'), (42, 2, 'WC2'), (43, 1, 'WC1')",
             "insert into En_ProdVersion (ProdNo, Version) values ('P1', 'A'), ('P1', 'C'), ('P1', 'B')",
             "insert into en_WcEquip (WcNo, EquipNo) values ('WC1', 'EQ1')",
             "insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('RE', 1, '应收'), ('PA', 1, '应付')",
             "insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 3, '4', '本部门'), "
             "(1, 3, '5', 'x'), (0, 2, '5', 'y')",
             "insert into AC_AccYM (Period, AcctStatus) values (202601, 1), (202602, 1), (202603, 0)",
             "insert into pm_FQcCode (FqcCode) values ('F1')",
             "insert into po_IQcCode (IqcCode) values ('I1')",
             "insert into sl_orderDtl (RefNo, LineId) values (1, 1), (1, 3)",
             "insert into Bs_ProdList (PartNo, Unit) values ('P2', 'PCS')",
             "insert into Bs_PartUnit (PartNo, Unit, ExRate, Factor) values ('P2', 'BOX', 12, 0.5), ('P2', 'KG', null, null)",
             "insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('P2', 'B1', '', 'WH1', 3), "
             "('P2', 'B2', '', 'WH1', 4.5), ('P2', '', '', 'WH2', 2), ('P3', '', '', 'WH1', null)",
             "insert into bs_PuPart (VendNo, PartNo, Price, TaxFlag, TaxRate, NeedIqc) values ('V1', 'P2', 8.5, 1, 13, 1), "
             "('V1', 'P3', null, null, null, null)",
             "insert into en_bom (ProdNo, Version, LineId, CompNo) values ('P1', 'A', 1, 'P2')",
    });
    const struct {
        Answer ask;
        const char* expected;
        const char* what;
    } cases[] = {
        {answer(CurrencyExRate, "USD"), "6.5", "multiplying currency: its rate"},
        {answer(CurrencyExRate, "EUR"), "8", "dividing currency: the inverse of its rate"},
        {answer(CurrencyExRate, "JPY"), "1", "zero rate"},
        {answer(CurrencyExRate, "GBP"), "1", "unknown currency"},
        {answer(ProdSalePrice, "C1", "P1", 0, 0, 0, 0, 0), "10,13,1", "contract price, no coefficient or rate"},
        {answer(ProdSalePrice, "C2", "P1", 1, 2, 3, 4, 5), "1.25,17,0", "price system 2 times 0.5 over 8"},
        {answer(ProdSalePrice, "C3", "P1", 0, 0, 0, 0, 0), "60,17,1", "no row in price system 5: list price"},
        {answer(ProdSalePrice, "C4", "P1", 0, 0, 0, 0, 0), "0,17,1", "no coefficient: price 0"},
        {answer(CustUnPaySum, "C1"), "15.1235", "from the closing day on, to four decimals"},
        {answer(CustUnPaySum, "C9"), "0", "unknown customer"},
        {answer(VendUnPaySum, "V1"), "3", "no closing entry: from 1900-01-01"},
        {answer(GetBillTableName, 2110), "Po_StkIn", "stock-in"},
        {answer(GetBillNoteFieldName, 2110), "ShipNo", "stock-in numbers"},
        {answer(GetBillTableName, 2140), "Po_Recv", "shares the receipt table"},
        {answer(GetBillNoteFieldName, 9999), "", "unknown kind"},
        {answer(RefNoToNoteNo, 1010, 5), "SO5", "sales order"},
        {answer(RefNoToNoteNo, 1010, 6), "", "missing order"},
        {answer(GetPartMaxVersion, "P1"), "C", "highest version"},
        {answer(GetPartMaxVersion, "P9"), "1", "no version"},
        {answer(BaseCurrency), "RMB", "flagged currency"},
        {answer(RpTypeInfo, "PA", 1), "应付", "type and code"},
        {answer(RpTypeInfo, "PA", 2), "", "missing code"},
        {answer(AuthIdDesc, 4), "本部门", "data scope"},
        {answer(AuthIdDesc, 5), "", "another list or language"},
        {answer(IsRJobNoSingleRout, 42), "0", "two work centres"},
        {answer(IsRJobNoSingleRout, 43), "1", "one work centre"},
        {answer(IsRJobNoSingleRout, 44), "1", "no routing"},
        {answer(JObNoFirstWcNo, 42), "WC1", "lowest step"},
        {answer(JObNoLastWcNo, 42), "WC2", "highest step"},
        {answer(JObNoLastWcNo, 44), "", "no routing"},
        {answer(IsWcNoLastOne, 42, "WC2"), "1", "last step"},
        {answer(IsWcNoLastOne, 42, "WC1"), "0", "earlier step"},
        {answer(GetJobPreWcNo, 42, "WC2"), "WC1", "step before"},
        {answer(GetJobPreWcNo, 42, "WC1"), "", "first step"},
        {answer(GetJobNextWcNo, 42, "WC1"), "WC2", "step after"},
        {answer(GetJobNextWcNo, 42, "WC9"), "", "centre outside the routing"},
        {answer(GetLastSavePeriod), "202602", "latest closed period"},
        {answer(IsFqcCodeExist, "F1"), "1", "final inspection"},
        {answer(IsFqcCodeExist, "F2"), "0", "no final inspection"},
        {answer(IsIqcCodeExist, "I1"), "1", "incoming inspection"},
        {answer(IsIqcCodeExist, "F1"), "0", "no incoming inspection"},
        {answer(GetJobDescription, 42), "SO5,P1,螺栓", "order, product, name"},
        {answer(GetJobDescription, 43), "", "product that is no part"},
        {answer(GetJobCustName, 42), "乙", "customer of the job's order"},
        {answer(GetJobCustName, 43), "", "job without order"},
        {answer(WcNoFirstEquipNo, "WC1"), "EQ1", "equipment of the centre"},
        {answer(WcNoFirstEquipNo, "WC2"), "", "centre without equipment"},
        {answer(GetMaxSeqIdFromRefNo, "sl_orderDtl", 1), "3", "last line"},
        {answer(GetMaxSeqIdFromRefNo, "sl_orderDtl", 2), "0", "note without lines"},
        {answer(isCheckLotEffectDateInStk, ""), "1", "switch set"},
        {answer(isCheckLotEffectInnerStk, ""), "1", "switch named with its trailing blank"},
        {answer(isCheckLotEffectDateInStk, " and paraValue = 0"), "0", "the caller's tail counts"},
        {answer(SalePriceType, ""), "2", "number set"},
        {answer(PartUnitFactor, "P2", "BOX"), "0.5", "unit row: its factor"},
        {answer(PartUnitSize, "P2", "BOX"), "12", "unit row: its rate"},
        {answer(PartUnitFactor, "P2", "PCS"), "1", "the part's own unit"},
        {answer(PartUnitSize, "P2", "PCS"), "1", "the part's own unit"},
        {answer(PartUnitFactor, "P2", "KG"), "0", "unit row with null factor"},
        {answer(PartUnitSize, "P2", "M"), "0", "unknown unit"},
        {answer(GetPartOnhandQty, "P2", "WH1"), "7.5", "every batch at the location"},
        {answer(GetPartOnhandQty, "P2", "WH3"), "0", "nothing at the location"},
        {answer(GetPartOnhandQty, "P3", "WH1"), "0", "null quantity"},
        {answer(PartStoreCount, "P2"), "9.5", "every location"},
        {answer(PartStoreCount, "P9"), "0", "no stock"},
        {answer(PartPoPrice, "V1", "P2"), "8.5", "vendor's price"},
        {answer(PartPoTaxFlag, "V1", "P2"), "1", "price with tax"},
        {answer(PartPoTaxRate, "V1", "P2"), "13", "vendor's rate"},
        {answer(IsVendPartNeedIqc, "V1", "P2"), "1", "inspected on arrival"},
        {answer(PartPoPrice, "V2", "P2"), "0", "another vendor"},
        {answer(PartPoTaxFlag, "V1", "P3"), "0", "null flag"},
        {answer(PartPoTaxRate, "V1", "P3"), "0", "null rate"},
        {answer(IsVendPartNeedIqc, "V1", "P9"), "0", "no purchase row"},
        {answer(IsProdHasBom, "P1"), "1", "component line"},
        {answer(IsProdHasBom, "P2"), "0", "no component line"},
        {answer(GetDefaultEmptyDate), "2", "1900-01-01"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.ask(*conn), QString::fromUtf8(c.expected)) << c.what;
}

// Statements whose exact text is the contract, and what is refused.
TEST(MasterDataLookups, StatementsAsSent) {
    testing::SuiteDatabaseFile file;
    const auto conn = file.connect();
    StatementRecorder recorder(*conn);
    const struct {
        std::function<void()> call;
        const char* statement;
    } cases[] = {
        {[&] { isCheckLotEffectInnerStk(*conn, " and 1 = 1"); },
         " select paraValue from bs_paraListB where parFieldName='bNoAllowInStkAtInnerStk ' and 1 = 1"},
        {[&] { SalePriceType(*conn, ""); }, " select paraValue from bs_paralistI where ParFieldName = 'SalePriceType' "},
        {[&] { CurrencyExRate(*conn, "EUR"); }, "select 1/ExRate from AC_Currency where Currency = 'EUR'"},
        {[&] { CustUnPaySum(*conn, "C1"); }, " select Sum(Amount) from rp_racctRec where CustNo = 'C1' and RefDate >= '1900-01-01'"},
        {[&] { BaseCurrency(*conn); }, " Select Currency  from  Ac_Currency  where LoCurFlag  = 1"},
        {[&] { AuthIdDesc(*conn, 4); }, " select Description from Bs_QueryList where lang = 0 and  FieldValue = 4 and ListType = 3"},
        {[&] { GetJobSlordNo(*conn, 42); }, " Select Slordno from pl_jbmain where RefNo = 42"},
    };
    for (const auto& c : cases) {
        c.call();
        EXPECT_EQ(recorder.statements().last(), QString::fromUtf8(c.statement));
    }
    // An unknown kind of note sends a statement the server refuses.
    EXPECT_THROW(RefNoToNoteNo(*conn, 9999, 5), Error);
    EXPECT_EQ(recorder.statements().last(), "select  from  where refNo = 5");
    const int sent = recorder.statements().size();
    EXPECT_THROW(ProdSalePrice(*conn, "C'1", "P1", 0, 0, 0, 0, 0), ValueError);
    EXPECT_THROW(isCheckLotEffectDateInStk(*conn, "; delete from bs_paralistB"), ValueError);
    EXPECT_EQ(recorder.statements().size(), sent);
}

}  // namespace
}  // namespace kivdb
