// Old outer joins rewritten for SQL Server 2005 and later: the exact text sent matters, so
// these cases compare T-SQL text; the same statements' rows on the embedded engine are
// checked in tsql_translate_test.cpp.
#include "dialect/dialect.h"
#include "testing/sqlite_database.h"

#include <gtest/gtest.h>

namespace kivdb::dialect {
namespace {

using testing::SqliteTestDb;

TEST(OuterJoinRewrite, PrintsAnsiJoinsOrRefusesAsTheServerDoes) {
    // A catalog that knows the tables, so unqualified names resolve.
    SqliteTestDb db;
    db.script("create table Rp_RAcct (CustNo varchar(20), Type int, Amount money, HadPayAmt money)\n"
              "create table Rp_TypeCodeInfo (Type varchar(4), Code int, descript nvarchar(40))\n"
              "create table st_checkdtl (RefNo int, PartNo varchar(20), diffQty float)\n"
              "create table st_MonthPartCost (Period int, PartNo varchar(20), Cost decimal(18,4))\n"
              "create table st_onHand (PartNo varchar(20), LotNo varchar(20), Qty float)\n"
              "create table St_Lot (PartNo varchar(20), LotNo varchar(20), EffectDate datetime, RefNo int)\n");
    // expected: the text sent; "=" for a statement without old joins, which comes back byte
    // for byte; nullptr for one the server refuses.
    const struct {
        const char *name, *tsql, *expected;
    } cases[] = {
        {"CustomerAccounts",
         "select a.CustNo, a.Type, a.NoteRefNo,a.NoteNo,b.descript ,a.bInv,a.RefDate,a.Amount,a.HadPayAmt,"
         "a.Currency   from Rp_RAcct a , Rp_TypeCodeInfo b  where a.type*=b.Code and b.type='RE' and "
         "a.Amount<>a.HadPayAmt  and ((1 = 2) or (NoteNo like '%ab%'))",
         "select a.CustNo, a.Type, a.NoteRefNo,a.NoteNo,b.descript ,a.bInv,a.RefDate,a.Amount,a.HadPayAmt,"
         "a.Currency   from Rp_RAcct a left outer join Rp_TypeCodeInfo b on a.type=b.Code and b.type='RE'  "
         "where a.Amount<>a.HadPayAmt  and ((1 = 2) or (NoteNo like '%ab%'))"},
        {"VendorAccounts",
         "select a.VendNo, a.Type, a.NoteRefNo,a.NoteNo, b.descript,  a.bInv,a.RefDate,a.Amount,a.HadPayAmt,"
         "a.Currency   from Rp_PAcct a , Rp_TypeCodeInfo b  where a.type*=b.Code and b.type='PA' and "
         "a.Amount<>a.HadPayAmt  and (1=1)",
         "select a.VendNo, a.Type, a.NoteRefNo,a.NoteNo, b.descript,  a.bInv,a.RefDate,a.Amount,a.HadPayAmt,"
         "a.Currency   from Rp_PAcct a left outer join Rp_TypeCodeInfo b on a.type=b.Code and b.type='PA'  "
         "where a.Amount<>a.HadPayAmt  and (1=1)"},
        {"LotsByEffectiveDate",
         " select O.BatchNo, O.LotNo, O.Qty from st_onHand O, st_Lot L    where O.qty>=0 and O.PartNo *= "
         "L.PartNo and O.LotNo *= L.LotNo and O.Location='W1' and O.PartNo='P1' order by L.effectDate , "
         "O.BatchNo Desc ",
         " select O.BatchNo, O.LotNo, O.Qty from st_onHand O left outer join st_Lot L on O.PartNo = "
         "L.PartNo and O.LotNo = L.LotNo    where O.qty>=0 and O.Location='W1' and O.PartNo='P1' order by "
         "L.effectDate , O.BatchNo Desc "},
        {"CostOfLatestPeriod",
         " select  sum(a.Qty * a.slsize * a.factor * b.cost) from  sl_shipDtl as a ,st_MonthPartCost as b  "
         "where a.partno*=b.partNo and b.Period=(select max(period) from st_MonthPartCost ) and a.refno= 12",
         " select  sum(a.Qty * a.slsize * a.factor * b.cost) from  sl_shipDtl as a left outer join "
         "st_MonthPartCost as b on a.partno=b.partNo and b.Period=(select max(period) from st_MonthPartCost "
         ")  where a.refno= 12"},
        // refno is unqualified: the catalog places it in st_checkdtl, the outer table.
        {"UnqualifiedOuterColumnFilters",
         " select  sum(a.diffQty * b.cost) from  st_checkdtl as a ,st_MonthPartCost as b  where "
         "a.partno*=b.partNo and b.Period=(select max(period) from st_MonthPartCost ) and refno= 7",
         " select  sum(a.diffQty * b.cost) from  st_checkdtl as a left outer join st_MonthPartCost as b on "
         "a.partno=b.partNo and b.Period=(select max(period) from st_MonthPartCost )  where refno= 7"},
        {"UnknownTablesUnqualifiedSide",
         "select * from X_Head h, X_Line l where RefNo *= l.RefNo and l.Kind = 1",
         "select * from X_Head h left outer join X_Line l on RefNo = l.RefNo and l.Kind = 1 "},
        {"ChainOfInnerTables",
         "select * from Rp_RAcct a, Rp_TypeCodeInfo b, St_Lot l where a.Type *= b.Code and b.Code *= l.RefNo",
         "select * from Rp_RAcct a left outer join Rp_TypeCodeInfo b on a.Type = b.Code left outer join "
         "St_Lot l on b.Code = l.RefNo "},
        {"InnerWrittenFirst",
         "select * from Rp_TypeCodeInfo b, Rp_RAcct a where a.Type *= b.Code",
         "select * from Rp_TypeCodeInfo b right outer join Rp_RAcct a on a.Type = b.Code "},
        {"LeftOperatorWrittenLast",
         "select * from Rp_RAcct a, Rp_TypeCodeInfo b where b.Code =* a.Type",
         "select * from Rp_RAcct a left outer join Rp_TypeCodeInfo b on b.Code = a.Type "},
        {"OnlyJoinPredicates", "select * from Rp_RAcct a, Rp_TypeCodeInfo b where a.Type *= b.Code",
         "select * from Rp_RAcct a left outer join Rp_TypeCodeInfo b on a.Type = b.Code "},
        {"RightOperatorKeepsTableOrder",
         "select * from Rp_TypeCodeInfo b, Rp_RAcct a where b.Code =* a.Type and b.Type = 'PA'",
         "select * from Rp_TypeCodeInfo b right outer join Rp_RAcct a on b.Code = a.Type and b.Type = 'PA' "},
        {"ThirdTableStaysInnerJoined",
         "select * from st_onHand O, St_Lot L, Rp_RAcct r where O.LotNo *= L.LotNo and r.CustNo = O.PartNo",
         "select * from st_onHand O left outer join St_Lot L on O.LotNo = L.LotNo, Rp_RAcct r where "
         "r.CustNo = O.PartNo"},
        {"InsideSubquery",
         "select CustNo from Rp_RAcct where Type in (select b.Code from Rp_TypeCodeInfo b, St_Lot l where "
         "b.Code *= l.RefNo and l.LotNo = 'L1')",
         "select CustNo from Rp_RAcct where Type in (select b.Code from Rp_TypeCodeInfo b left outer join "
         "St_Lot l on b.Code = l.RefNo and l.LotNo = 'L1' )"},
        {"PlainSelect", "select 1 from Bs_BillCheckRec where BillId = 5and RefNo = 3 and CheckLevel = 1", "="},
        {"LeadingBlanks", "  select paraValue from bs_paralistB where ParFieldName = 'BatchControl'", "="},
        {"OperatorInTextAndLineComment", "select '*=' from t -- a.x *= b.y\n", "="},
        {"OperatorsInBlockCommentAndText", "select /* a *= b */ x from t where y = 'a =* b'", "="},
        {"InvalidTextPassedThrough", "select from nowhere where a = ", "="},
        {"ChineseAlias", "select PortCode as 海关编号 from CustomCode where 1=1", "="},
        // the missing "and" of the lot picker
        {"MissingAnd",
         " select O.BatchNo,O.LotNo,O.Qty,B.EffectDate from st_Onhand O,St_Lot B where  O.LotNo *= B.LotNO  "
         "O.PartNo = B.PartNO   and  O.Location='W1' and O.partNo='P1'",
         nullptr},
        {"JoinUnderOr", "select * from Rp_RAcct a, Rp_TypeCodeInfo b where a.Type *= b.Code or a.Type = 1", nullptr},
        {"MixedWithAnsiJoin",
         "select * from Rp_RAcct a join St_Lot l on 1=1, Rp_TypeCodeInfo b where a.Type *= b.Code", nullptr},
        {"BothDirections",
         "select * from Rp_RAcct a, Rp_TypeCodeInfo b where a.Type *= b.Code and b.Code *= a.Type", nullptr},
        {"AgainstAConstant", "select * from Rp_RAcct a, Rp_TypeCodeInfo b where a.Type *= 1", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QString text = QString::fromUtf8(c.tsql);
        if (!c.expected) {
            EXPECT_THROW(rewriteOuterJoins(text, db.catalog()), SqlError);
        } else if (std::string_view(c.expected) == "=") {
            EXPECT_FALSE(hasOldOuterJoin(text));
            EXPECT_EQ(rewriteOuterJoins(text, db.catalog()), text);
        } else {
            EXPECT_TRUE(hasOldOuterJoin(text));
            EXPECT_EQ(rewriteOuterJoins(text, db.catalog()).toStdString(), std::string(c.expected));
        }
    }
    EXPECT_TRUE(hasOldOuterJoin("select * from a, b where a.x=*b.y"));
}

}  // namespace
}  // namespace kivdb::dialect

