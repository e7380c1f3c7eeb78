// The suite's T-SQL run on the embedded database: the rows must be SQL Server's rows.
#include "dialect/dialect.h"
#include "testing/sqlite_database.h"

#include <gtest/gtest.h>

namespace kivdb::dialect {
namespace {

using testing::SqliteTestDb;

// The schema as a DBA writes it for SQL Server, with a few rows per table.
const char* const kSchema = R"(
create table Rp_RAcct (CustNo varchar(20) not null, Type int, NoteRefNo int, NoteNo varchar(20),
    bInv bit default 0, RefDate datetime, Amount money, HadPayAmt money, Currency varchar(10))
create table Rp_TypeCodeInfo (Type varchar(4), Code int, descript nvarchar(40))
create table st_Onhand (PartNo varchar(20), BatchNo varchar(20), LotNo varchar(20), Location varchar(10), Qty float)
create table St_Lot (PartNo varchar(20), LotNo varchar(20), EffectDate datetime)
create table st_checkdtl (RefNo int, PartNo varchar(20), diffQty float)
create table st_MonthPartCost (Period int, PartNo varchar(20), Cost decimal(18,4))
go
create table bs_paralistB (ParFieldName varchar(40) not null, paraValue bit,
    constraint PK_paralistB primary key (ParFieldName))
create table AC_Currency (Currency varchar(10) not null primary key, ExRate float, CalMode varchar(2))
create table pl_jbmain (RefNo int identity(1,1) not null, slordno varchar(20), Prodno varchar(20),
    constraint PK_jbmain primary key (RefNo))
create table bs_prodlist (PartNo varchar(20) not null primary key, PartName nvarchar(60), Price money, Unit varchar(6))
create table Bs_PartUnit (PartNo varchar(20), Unit varchar(6), ExRate float, Factor float)
create table Ac_AccYm (Period int, AcctDate datetime, iniFlag bit, AcctStatus bit, StoreIni bit)
create table T_pinvhea (RefNo varchar(20), NoteNo varchar(20))
create table bs_QueryList (Lang int, ListType int, FieldValue varchar(10), Description nvarchar(40))
create table rp_racctRec (CustNo varchar(20), type int, refDate datetime, Amount money)
create table Bs_BillCheckRec (BillId int, RefNo int, CheckLevel int, Checked bit, CheckUser varchar(20), CheckDate smalldatetime)
create table bs_billcheck (BillId int, CheckLevel int, CheckName nvarchar(20))
go
insert into Rp_RAcct values ('C1', 1, 10, 'S001', 0, '2006-03-31', 100, 0, 'RMB')
insert into Rp_RAcct values ('C2', 2, 11, 'S002', 0, '2006-04-01 10:30:00', 50, 20, 'USD')
insert into Rp_RAcct values ('C3', 3, 12, 'S003', 1, '2006-04-02', 70, 70, 'RMB')
insert into Rp_TypeCodeInfo values ('RE', 1, '出货单')
insert into Rp_TypeCodeInfo values ('PA', 2, '收货单')
insert into st_Onhand values ('P1', 'B1', 'L1', 'W1', 5)
insert into st_Onhand values ('P1', 'B2', 'L2', 'W1', 3)
insert into st_Onhand values ('P1', 'B3', 'L9', 'W1', 1)
insert into St_Lot values ('P1', 'L1', '2006-05-01')
insert into St_Lot values ('P1', 'L2', '2006-01-01')
insert into st_checkdtl values (7, 'P1', 2)
insert into st_checkdtl values (7, 'P2', 4)
insert into st_MonthPartCost values (200601, 'P1', 1.5)
insert into st_MonthPartCost values (200602, 'P1', 2.5)
insert into bs_paralistB values ('bNoAllowInStkAtInnerStk ', 1)
insert into bs_paralistB values ('BatchControl', 0)
insert into AC_Currency values ('USD', 8.0, '/')
insert into AC_Currency values ('RMB', 1, '*')
insert into pl_jbmain (slordno, Prodno) values ('SO1  ', 'P1')
insert into pl_jbmain (slordno, Prodno) values ('SO2', 'p2 ')
insert into bs_prodlist values ('P1', '螺丝', 2.5, 'PCS')
insert into bs_prodlist values ('P2', 'Nut', 1, 'PCS')
insert into Bs_PartUnit values ('P1', 'BOX', 100, 1)
insert into Ac_AccYm values (200512, '2005-12-31', 1, 1, 1)
insert into Ac_AccYm values (200601, '2006-01-31 00:00:00', 0, 1, 0)
insert into T_pinvhea values ('00012', 'T1')
insert into T_pinvhea values ('9', 'T2')
insert into bs_QueryList values (0, 2, '1', '新增')
insert into bs_QueryList values (0, 2, '2', '修改')
insert into bs_QueryList values (0, 3, '1', '部门')
insert into Bs_BillCheckRec values (5, 3, 1, 1, 'U1', '2006-03-31')
insert into bs_billcheck values (5, 1, '一审')
insert into bs_billcheck values (5, 2, '二审')
)";

class TsqlTranslate : public ::testing::Test {
protected:
    void SetUp() override { db.script(QString::fromUtf8(kSchema)); }
    SqliteTestDb db;
};

struct RowsCase {
    const char* name;
    const char* tsql;
    QStringList rows;
};

void PrintTo(const RowsCase& c, std::ostream* os) { *os << c.name; }

class TsqlRows : public TsqlTranslate, public ::testing::WithParamInterface<RowsCase> {};

TEST_P(TsqlRows, ReturnsTheServersRows) {
    const RowsCase& c = GetParam();
    QStringList rows;
    try {
        rows = db.run(QString::fromUtf8(c.tsql));
    } catch (const std::exception& e) {
        FAIL() << e.what() << "\n"
               << translateToSqlite(QString::fromUtf8(c.tsql), db.catalog()).toStdString();
    }
    EXPECT_EQ(rows, c.rows) << translateToSqlite(QString::fromUtf8(c.tsql), db.catalog()).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    OldOuterJoins, TsqlRows,
    ::testing::Values(
        // The inner-table predicate b.type='RE' belongs to the join: C2's type 2 has a
        // row of type 'PA' only, so C2 is kept with no description.
        RowsCase{"InnerPredicateStaysInJoin",
                 "select a.CustNo, a.Type, a.NoteRefNo,a.NoteNo,b.descript ,a.bInv,a.RefDate,a.Amount,a.HadPayAmt,"
                 "a.Currency   from Rp_RAcct a , Rp_TypeCodeInfo b  where a.type*=b.Code and b.type='RE' and "
                 "a.Amount<>a.HadPayAmt ",
                 {"C1|1|10|S001|出货单|0|2006-03-31|100|0|RMB", "C2|2|11|S002|NULL|0|2006-04-01 10:30:00|50|20|USD"}},
        RowsCase{"RightHandOperator",
                 "select a.CustNo, b.descript from Rp_TypeCodeInfo b, Rp_RAcct a where b.Code =* a.type and "
                 "b.type = 'PA' order by a.CustNo",
                 {"C1|NULL", "C2|收货单", "C3|NULL"}},
        RowsCase{"TwoColumnsOneInnerTable",
                 " select O.BatchNo, O.LotNo, O.Qty from st_onHand O, st_Lot L    where O.qty>=0 and O.PartNo *= "
                 "L.PartNo and O.LotNo *= L.LotNo and O.Location='W1' and O.partNo='P1' order by L.effectDate , "
                 "O.BatchNo Desc ",
                 {"B3|L9|1", "B2|L2|3", "B1|L1|5"}},
        // Lines without a cost of the latest period drop out of the sum (null times qty).
        RowsCase{"InnerSubqueryPredicate",
                 " select  sum(a.diffQty * b.cost) from  st_checkdtl as a ,st_MonthPartCost as b  where "
                 "a.partno*=b.partNo and b.Period=(select max(period) from st_MonthPartCost ) and refno= 7",
                 {"5"}},
        RowsCase{"ChainOfOuterJoins",
                 "select a.CustNo, b.descript, c.Description from Rp_RAcct a, Rp_TypeCodeInfo b, bs_QueryList c "
                 "where a.Type *= b.Code and b.Code *= c.Lang and b.Type = 'PA' order by a.CustNo",
                 {"C1|NULL|NULL", "C2|收货单|NULL", "C3|NULL|NULL"}},
        RowsCase{"IsnullOverOuterJoin",
                 " select isnull( sum(a.diffQty * b.cost),0) from  st_checkdtl as a ,st_MonthPartCost as b  where "
                 "a.partno*=b.partNo and b.Period=(select max(period) from st_MonthPartCost )  and a.refno= 8",
                 {"0"}}));

INSTANTIATE_TEST_SUITE_P(
    TextComparison, TsqlRows,
    ::testing::Values(
        RowsCase{"TrailingBlankInKey",
                 " select paraValue from bs_paraListB where parFieldName='bNoAllowInStkAtInnerStk'", {"1"}},
        RowsCase{"TrailingBlankInLiteral",
                 " select paraValue from bs_paraListB where parFieldName='bNoAllowInStkAtInnerStk   '", {"1"}},
        RowsCase{"CaseIgnored", "  select paraValue from bs_paralistB where ParFieldName = 'BATCHCONTROL'", {"0"}},
        RowsCase{"InList", "select PartNo from bs_prodlist where PartNo in ('p1 ', 'x') ", {"P1"}},
        RowsCase{"JoinOnText",
                 "select a.RefNo, b.PartName from pl_jbmain a, bs_prodlist b where a.prodno = b.partno order by a.RefNo",
                 {"1|螺丝", "2|Nut"}},
        RowsCase{"GroupBy", "select count(*) from (select Prodno from pl_jbmain union all select PartNo from "
                            "bs_prodlist) x group by Prodno order by 1",
                 {"2", "2"}},
        RowsCase{"Distinct", "select count(*) from (select distinct Prodno from pl_jbmain union select 'P1 ') t", {"2"}},
        RowsCase{"UnionMergesEqualTexts", "select count(*) from (select 'A' as x union select 'a ') t", {"1"}},
        RowsCase{"ExpressionsCompareAlike", "select 1 where rtrim('ABC') = 'abc'", {"1"}},
        RowsCase{"OrderIgnoresCase", "select PartNo from bs_prodlist where PartNo < 'p2'", {"P1"}}));

INSTANTIATE_TEST_SUITE_P(
    Like, TsqlRows,
    ::testing::Values(
        RowsCase{"Substring", "select PartNo from bs_prodlist where PartName like '%u%'", {"P2"}},
        RowsCase{"CaseInsensitive", "select PartNo from bs_prodlist where PartNo like 'p%'", {"P1", "P2"}},
        RowsCase{"Range", "select NoteNo from Rp_RAcct where NoteNo like 'S00[1-2]'", {"S001", "S002"}},
        RowsCase{"NegatedClass", "select NoteNo from Rp_RAcct where NoteNo like 'S00[^1]'", {"S002", "S003"}},
        RowsCase{"SingleCharacter", "select NoteNo from Rp_RAcct where NoteNo like '_0_3'", {"S003"}},
        RowsCase{"NotLike", "select NoteNo from Rp_RAcct where NoteNo not like '%1'", {"S002", "S003"}},
        RowsCase{"Escape", "select 1 where '5%' like '5!%' escape '!'", {"1"}},
        RowsCase{"Chinese", "select PartNo from bs_prodlist where PartName like '%丝'", {"P1"}},
        RowsCase{"QuickSearchCondition",
                 "select CustNo from Rp_RAcct where 1=1 and ((1 = 2) or (NoteNo like '%s00%') or (CustNo like '%s00%'))",
                 {"C1", "C2", "C3"}}));

INSTANTIATE_TEST_SUITE_P(
    Arithmetic, TsqlRows,
    ::testing::Values(
        RowsCase{"ConcatenatedTexts",
                 " select rtrim(a.slordno)+','+rtrim(a.Prodno)+','+rtrim(b.partName)  from pl_jbmain a,bs_prodlist b "
                 "where a.prodno = b.partno  and a.Refno = 1",
                 {"SO1,P1,螺丝"}},
        RowsCase{"FieldValuePlusDescription",
                 "SELECT FieldValue + ',' + Description From bs_QueryList where Lang = 0 and ListType = 2",
                 {"1,新增", "2,修改"}},
        RowsCase{"DatePlusDays", "select AcctDate + 1 from Ac_AccYm where iniFlag = 1 ", {"2006-01-01"}},
        RowsCase{"DateTimePlusDays", "select AcctDate + 1 from Ac_AccYm where iniFlag = 0", {"2006-02-01 00:00:00"}},
        RowsCase{"NumbersAdd", "select Type + NoteRefNo, Amount + 1 from Rp_RAcct where CustNo = 'C1'", {"11|101"}},
        RowsCase{"FloatDivision", "select 1/ExRate from AC_Currency where Currency = 'USD'", {"0.125"}},
        RowsCase{"IntegerDivisionTruncates", "select 7/2, -7/2, 7%3, 7.0/2", {"3|-3|1|3.5"}},
        RowsCase{"SumOfQuantities",
                 " select PartNO,BatchNo,LotNo,Location,sum(Qty*2/4) from st_onhand where partno = 'P1' group by "
                 "PartNO,BatchNo,LotNo,Location order by BatchNo",
                 {"P1|B1|L1|W1|2.5", "P1|B2|L2|W1|1.5", "P1|B3|L9|W1|0.5"}},
        RowsCase{"NullDifference", "select Qty - NULL from st_onhand where BatchNo = 'B1'", {"NULL"}},
        RowsCase{"UnknownTypesDecideAtRunTime", "select x + y from (select 'a' as x, 'b' as y) t", {"ab"}}));

INSTANTIATE_TEST_SUITE_P(
    Functions, TsqlRows,
    ::testing::Values(
        RowsCase{"IntOfText", " select Max(int(refNo)) from T_pinvhea ", {"12"}},
        RowsCase{"IsnullConvertOnEmptyTable",
                 " select isnull(max(refDate),convert(smalldatetime,'1900-01-01')) from rp_racctRec where type=100 ",
                 {"1900-01-01 00:00:00"}},
        RowsCase{"MaxOfDates", "select max(RefDate) from Rp_RAcct", {"2006-04-02"}},
        RowsCase{"TopWithoutOrder", "select Top 1 PartNo from bs_prodlist where Unit = 'pcs'", {"P1"}},
        RowsCase{"TopWithOrder", "select top 2 NoteNo from Rp_RAcct order by NoteNo desc", {"S003", "S002"}},
        RowsCase{"TopThenUnion",
                 "select top 1 Partno , Unit, 1 aS ExRate, 1 as Factor from Bs_ProdList where PartNO = 'P1' union "
                 "select Partno, Unit , ExRate , Factor  from Bs_PartUnit where  PartNO = 'P1'",
                 {"P1|BOX|100|1", "P1|PCS|1|1"}},
        RowsCase{"UnionOrderedByQualifiedColumn",
                 "select a.PartNo from bs_prodlist a where a.PartNo = 'P2' union select b.PartNo from st_onhand b "
                 "order by a.PartNo desc",
                 {"P2", "P1"}},
        RowsCase{"StringFunctions",
                 "select len('ab  '), charindex('C', 'abcabc'), charindex('c', 'abcabc', 4), substring('abcdef', 2, 3), "
                 "upper('ab'), lower('AB'), ltrim('  x'), rtrim('x  ') + '|', left('abc', 2), right('abc ', 2) + '|'",
                 {"2|3|6|bcd|AB|ab|x|x||ab|c |"}},
        RowsCase{"DateParts", "select year(RefDate), month(RefDate), day(RefDate) from Rp_RAcct where CustNo = 'C2'",
                 {"2006|4|1"}},
        RowsCase{"ConvertStyles",
                 "select convert(varchar(10), RefDate, 120), convert(varchar, RefDate, 112), convert(varchar, RefDate, "
                 "111), convert(varchar, RefDate, 102), convert(varchar(19), RefDate, 120), convert(varchar, RefDate, 23) "
                 "from Rp_RAcct where CustNo = 'C2'",
                 {"2006-04-01|20060401|2006/04/01|2006.04.01|2006-04-01 10:30:00|2006-04-01"}},
        RowsCase{"ConvertStyle121AndZero",
                 "select convert(varchar(30), RefDate, 121), convert(varchar(30), RefDate, 0) from Rp_RAcct where "
                 "CustNo = 'C2'",
                 {"2006-04-01 10:30:00.000|Apr  1 2006 10:30AM"}},
        RowsCase{"ConvertMoneyToText", "select convert(varchar(20), Amount) from Rp_RAcct where CustNo = 'C2'", {"50.00"}},
        RowsCase{"ConvertNumbers",
                 "select convert(int, '42'), convert(float, '1.5'), convert(decimal(10,2), 2.345), cast(3.9 as int), "
                 "convert(varchar(3), 12345)",
                 {"42|1.5|2.35|3|*"}},  // an integer too long for its text shows as *
        RowsCase{"GetdateIsADateTime", "select 1 where getdate() > '2000-01-01' and len(getdate()) = 19", {"1"}},
        RowsCase{"CaseBetweenExists",
                 "select NoteNo, case when Amount between 60 and 100 then 'big' else 'small' end from Rp_RAcct a "
                 "where exists (select 1 from Rp_TypeCodeInfo b where b.Code = a.Type) order by NoteNo",
                 {"S001|big", "S002|small"}},
        RowsCase{"SubqueryInSelectList",
                 "select CustNo, (select count(*) from Rp_TypeCodeInfo b where b.Code = a.Type) from Rp_RAcct a "
                 "order by CustNo",
                 {"C1|1", "C2|1", "C3|0"}},
        RowsCase{"CorrelatedScalarSubquery",
                 "select CustNo, (select b.descript from Rp_TypeCodeInfo b where b.Code = a.Type) from Rp_RAcct a "
                 "order by CustNo",
                 {"C1|出货单", "C2|收货单", "C3|NULL"}},
        RowsCase{"InSubquery",
                 "select PartNo from bs_prodlist where PartNo in (Select PartNo from  st_onhand where Qty > 4)", {"P1"}},
        RowsCase{"GroupHaving",
                 " select serialNo from (select 'A' as serialNo union all select 'a ' union all select 'B') t "
                 "group by SerialNo having count(*) > 1 ",
                 {"A"}},
        RowsCase{"ChineseAliases", "select PartNo as 海关编号, PartName as 海关名称 from bs_prodlist where 1=1 "
                                   "and PartNo = 'P1'",
                 {"P1|螺丝"}},
        RowsCase{"BracketedNames", "select [PartNo], [Part Alias] = PartName from [bs_prodlist] where [PartNo]='P2'",
                 {"P2|Nut"}}));

INSTANTIATE_TEST_SUITE_P(
    ImplicitConversion, TsqlRows,
    ::testing::Values(
        RowsCase{"TextColumnAgainstNumber", "select NoteNo from T_pinvhea where RefNo = 12", {"T1"}},
        RowsCase{"NumberColumnAgainstText", "select CustNo from Rp_RAcct where Type = '2'", {"C2"}},
        RowsCase{"DateLiteralIsMidnight", "select Period from Ac_AccYm where AcctDate = '2006-01-31'", {"200601"}},
        RowsCase{"DateRange", "select count(*) from Rp_RAcct where RefDate >= '2006-04-01' and RefDate < '2006-04-02'",
                 {"1"}},
        RowsCase{"NumberRunIntoKeyword", "select 1 from Bs_BillCheckRec where BillId = 5and RefNo = 3 and CheckLevel = 1",
                 {"1"}},
        // Only the rows the other predicates keep need to convert.
        RowsCase{"JoinOfTextAndNumber",
                 "insert into bs_QueryList values (0, 13, 'Bar', 'x') select a.CustNo, b.Description from Rp_RAcct a, "
                 "bs_QueryList b where a.Type = b.FieldValue and b.Lang = 0 and b.ListType = 2 order by 1",
                 {"C1|新增", "C2|修改"}},
        RowsCase{"BitAgainstLiteral", "select count(*) from Ac_AccYm where StoreIni =  1", {"1"}},
        RowsCase{"BitAgainstWord", "select count(*) from Ac_AccYm where StoreIni = 'false'", {"1"}}));

INSTANTIATE_TEST_SUITE_P(
    Sysobjects, TsqlRows,
    ::testing::Values(RowsCase{"UserTables",
                               "select count(*) from sysobjects where type = 'U' and [NAME] in ('bs_prodlist', "
                               "'RP_RACCT', 'nosuch')",
                               {"2"}}));

// Table hints, with and without `with`, change nothing; an insert's column list is no hint.
INSTANTIATE_TEST_SUITE_P(
    TableHints, TsqlRows,
    ::testing::Values(
        RowsCase{"OldHintForm", "select count(*) from Rp_RAcct (nolock)", {"3"}},
        RowsCase{"HintsOnJoinedTables",
                 "select count(*) from Rp_RAcct a (nolock) join Rp_TypeCodeInfo b with (nolock) on a.Type = b.Code "
                 "left join T_pinvhea t (holdlock, rowlock) on t.NoteNo = a.NoteNo",
                 {"2"}},
        RowsCase{"IndexHint", "select CustNo from Rp_RAcct a (nolock, index(ix_cust)) where CustNo = 'c1'", {"C1"}},
        RowsCase{"InsertColumnList",
                 "insert into T_pinvhea (RefNo, NoteNo) select CustNo, NoteNo from Rp_RAcct (nolock) where CustNo = 'C1' "
                 "select RefNo from T_pinvhea where NoteNo = 'S001'",
                 {"C1"}},
        RowsCase{"HintsWithNestedParentheses", "select count(*) from T_pinvhea with (nolock, index(ix))", {"2"}},
        RowsCase{"LockHintsInACommaList", "select count(*) from T_pinvhea (readpast), Ac_AccYm a (tablock)", {"4"}},
        RowsCase{"HintInDeleteFrom",
                 "delete T_pinvhea from T_pinvhea t (rowlock) where t.NoteNo = 'T1' select NoteNo from T_pinvhea",
                 {"T2"}}));

// A statement the server rejects must fail here too, wherever the failure is found.
struct ErrorCase {
    const char* name;
    const char* tsql;
    const char* message;  // part of the error text
};

void PrintTo(const ErrorCase& c, std::ostream* os) { *os << c.name; }

class TsqlErrors : public TsqlTranslate, public ::testing::WithParamInterface<ErrorCase> {};

TEST_P(TsqlErrors, FailAsTheServerFails) {
    const ErrorCase& c = GetParam();
    const std::string message = db.errorOf(QString::fromUtf8(c.tsql));
    EXPECT_NE(message.find(c.message), std::string::npos) << "got: " << message;
}

INSTANTIATE_TEST_SUITE_P(
    Server, TsqlErrors,
    ::testing::Values(
        ErrorCase{"MissingAnd",
                  " select O.BatchNo,O.LotNo,O.Qty,B.EffectDate from st_Onhand O,St_Lot B where  O.LotNo *= B.LotNO  "
                  "O.PartNo = B.PartNO   and  O.Location='W1' and O.partNo='P1'",
                  "Incorrect syntax near 'O'"},
        ErrorCase{"UnterminatedQuote", "select 1 from bs_prodlist where PartNo = 'P1", "Unclosed quotation mark"},
        ErrorCase{"EmptySelectList", "Select  from Bs_UserAuth Where UserID='u' and ModId = 3",
                  "Incorrect syntax near the keyword 'from'"},
        ErrorCase{"EmptyStatement", "  ", "Command text was not set"},
        ErrorCase{"EmptyInList", "select 1 from bs_prodlist where PartNo in ()", "Incorrect syntax near ')'"},
        ErrorCase{"DivideByZero", "select 1/0", "Divide by zero error encountered."},
        ErrorCase{"TextThatIsNoDateStored", "insert into rp_racctRec values ('C7', 1, '2006-13-01', 1)",
                  "Conversion failed when converting date and/or time from character string."},
        ErrorCase{"DivideByZeroColumn", "select Amount / HadPayAmt from Rp_RAcct", "Divide by zero error encountered."},
        ErrorCase{"SubqueryManyRows", "select PartNo from bs_prodlist where PartNo = (select PartNo from st_onhand)",
                  "Subquery returned more than 1 value."},
        ErrorCase{"CorrelatedSubqueryManyRows",
                  "select CustNo, (select b.Code from Rp_TypeCodeInfo b where b.Code >= a.Type) from Rp_RAcct a",
                  "Subquery returned more than 1 value."},
        ErrorCase{"DoubleQuotedText", "select 1 from bs_prodlist where PartNo = \"P1\"", "Invalid column name 'P1'"},
        ErrorCase{"TextNotANumber", "select 1 from st_onhand where BatchNo = 5",
                  "Conversion failed when converting the varchar value 'B1' to data type int."},
        ErrorCase{"LiteralNotANumber", "select 1 from Rp_RAcct where Type = 'abc'",
                  "Conversion failed when converting the varchar value 'abc' to data type int."},
        ErrorCase{"BadDateText", "select year('notadate')", "Conversion failed when converting date"},
        ErrorCase{"UnknownTable", "select 1 from NoSuchTable", "Invalid object name 'NoSuchTable'."},
        ErrorCase{"ExplicitIdentityValue", "insert into pl_jbmain (RefNo, slordno) values (9, 'x')",
                  "Cannot insert explicit value for identity column"},
        ErrorCase{"NestedTooDeeply", "select 1 where 1 = ((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((("
                  "((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((("
                  "(((((((((((((((((((((((((((((((((((((((((((((((((((((1", "nested too deeply"},
        ErrorCase{"AssignmentIsNoOption", "select 1 set x = 1", "Incorrect syntax near 'x'"},
        ErrorCase{"TwoIdentityColumns", "create table Two (a int identity, b int identity)",
                  "Multiple identity columns specified"},
        ErrorCase{"UnknownColumnType", "create table Odd (a geometry)", "Cannot find data type geometry."},
        ErrorCase{"CheckConstraintHolds",
                  "create table Chk (Qty int not null, constraint CK_Qty check (Qty >= 0)) insert into Chk values (-1)",
                  "CHECK constraint failed"},
        ErrorCase{"NotNullHolds", "insert into Rp_RAcct (Type) values (1)", "NOT NULL constraint failed"},
        ErrorCase{"PrimaryKeyHolds", "insert into AC_Currency values ('usd ', 1, '*')", "UNIQUE constraint failed"},
        ErrorCase{"GoInsideBatch", "delete from T_pinvhea where NoteNo = 'T1'\ngo\n", "Incorrect syntax near 'go'"}));

// Data changes and temporary tables, checked by reading the rows back.
struct ChangeCase {
    const char* name;
    const char* tsql;   // the change
    const char* check;  // a select that shows its effect
    QStringList rows;
};

void PrintTo(const ChangeCase& c, std::ostream* os) { *os << c.name; }

class TsqlChanges : public TsqlTranslate, public ::testing::WithParamInterface<ChangeCase> {};

TEST_P(TsqlChanges, LeaveTheServersRows) {
    const ChangeCase& c = GetParam();
    try {
        db.run(QString::fromUtf8(c.tsql));
        EXPECT_EQ(db.run(QString::fromUtf8(c.check)), c.rows);
    } catch (const std::exception& e) {
        FAIL() << e.what();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Dml, TsqlChanges,
    ::testing::Values(
        ChangeCase{"UpdateWithoutWhere",
                   " update Bs_BillCheckRec set Checked = 0,CheckUser = 'U2',CheckDate = '2006-04-05'",
                   "select Checked, CheckUser, CheckDate from Bs_BillCheckRec", {"0|U2|2006-04-05"}},
        ChangeCase{"UpdateFromJoin",
                   "update a set a.HadPayAmt = b.Code from Rp_RAcct a, Rp_TypeCodeInfo b where a.Type = b.Code",
                   "select CustNo, HadPayAmt from Rp_RAcct order by CustNo", {"C1|1", "C2|2", "C3|70"}},
        ChangeCase{"UpdateFromListingTheTarget",
                   "update Rp_RAcct set NoteNo = 'X' from Rp_RAcct, Rp_TypeCodeInfo where Rp_RAcct.Type = "
                   "Rp_TypeCodeInfo.Code and Rp_TypeCodeInfo.Type = 'RE'",
                   "select NoteNo from Rp_RAcct order by CustNo", {"X", "S002", "S003"}},
        ChangeCase{"InsertSelectPerLevel",
                   "insert into bs_billcheckrec (BillId,RefNo,CheckLevel,Checked)select billId,9,CheckLevel,0 from "
                   "bs_billcheck where BillId = 5",
                   "select CheckLevel, Checked, CheckUser from Bs_BillCheckRec where RefNo = 9 order by 1",
                   {"1|0|NULL", "2|0|NULL"}},
        ChangeCase{"DeleteWithoutFrom", "delete Rp_RAcct where CustNo = 'c1'", "select count(*) from Rp_RAcct", {"2"}},
        ChangeCase{"DeleteFromJoin",
                   "delete Rp_RAcct from Rp_RAcct a, Rp_TypeCodeInfo b where a.Type = b.Code and b.Type = 'PA'",
                   "select CustNo from Rp_RAcct order by 1", {"C1", "C3"}},
        // A target in a join of the from clause: only the rows the join finds change.
        ChangeCase{"UpdateTableAliasedInJoin",
                   "update Rp_RAcct set NoteNo = 'X' from Rp_RAcct a join Rp_TypeCodeInfo b on a.Type = b.Code where b.Type = 'RE'",
                   "select NoteNo from Rp_RAcct order by CustNo", {"X", "S002", "S003"}},
        ChangeCase{"UpdateAliasInJoin",
                   "update a set HadPayAmt = b.Code + 5 from Rp_RAcct a inner join Rp_TypeCodeInfo b on b.Code = a.Type",
                   "select CustNo, HadPayAmt from Rp_RAcct order by CustNo", {"C1|6", "C2|7", "C3|70"}},
        ChangeCase{"UpdateUnaliasedTableInJoin",
                   "update Rp_RAcct set HadPayAmt = HadPayAmt + 1 from Rp_RAcct join Rp_TypeCodeInfo b "
                   "on b.Code = Rp_RAcct.Type where b.Type = 'PA'",
                   "select CustNo, HadPayAmt from Rp_RAcct order by CustNo", {"C1|0", "C2|21", "C3|70"}},
        ChangeCase{"UpdateReadsTheJoinedTargetsColumns",
                   "update Rp_RAcct set Amount = Amount * 2 from Rp_RAcct a join Rp_TypeCodeInfo b on b.Code = a.Type",
                   "select CustNo, Amount from Rp_RAcct order by CustNo", {"C1|200", "C2|100", "C3|70"}},
        ChangeCase{"UpdateLeftJoinUnmatchedRowsToo",
                   "update a set HadPayAmt = isnull(b.Code, -1) from Rp_RAcct a left join Rp_TypeCodeInfo b on b.Code = a.Type",
                   "select CustNo, HadPayAmt from Rp_RAcct order by CustNo", {"C1|1", "C2|2", "C3|-1"}},
        ChangeCase{"UpdateSelfJoin",
                   "update a set Amount = b.Amount from Rp_RAcct a join Rp_RAcct b on b.CustNo = 'C3' where a.CustNo = 'C1'",
                   "select CustNo, Amount from Rp_RAcct order by CustNo", {"C1|70", "C2|50", "C3|70"}},
        ChangeCase{"DeleteTableAliasedInJoin",
                   "delete Rp_RAcct from Rp_RAcct a join Rp_TypeCodeInfo b on a.Type = b.Code where b.Type = 'PA'",
                   "select CustNo from Rp_RAcct order by 1", {"C1", "C3"}},
        ChangeCase{"DeleteAliasInJoin", "delete from a from Rp_RAcct a join Rp_TypeCodeInfo b on a.Type = b.Code",
                   "select CustNo from Rp_RAcct order by 1", {"C3"}},
        ChangeCase{"DeleteJoinFindingNothing",
                   "delete Rp_RAcct from Rp_RAcct a join Rp_TypeCodeInfo b on a.Type = b.Code where b.Type = 'X'",
                   "select count(*) from Rp_RAcct", {"3"}},
        ChangeCase{"IncrementInPlace", "update Rp_RAcct set Type = Type + 10 where CustNo = 'c1'",
                   "select Type from Rp_RAcct order by 1", {"2", "3", "11"}},
        ChangeCase{"SeveralStatements",
                   "insert into T_pinvhea values ('3', 'T3'); delete from T_pinvhea where NoteNo = 'T1' "
                   "update T_pinvhea set RefNo = '4' where NoteNo = 'T3'",
                   "select RefNo, NoteNo from T_pinvhea order by NoteNo", {"9|T2", "4|T3"}},
        ChangeCase{"IdentityNumbersRows", "insert into pl_jbmain (slordno, Prodno) values ('SO3', 'P3')",
                   "select RefNo from pl_jbmain where slordno = 'SO3'", {"3"}},
        ChangeCase{"IdentityLeftOutOfValues", "insert into pl_jbmain values ('SO4', 'P4')",
                   "select RefNo, Prodno from pl_jbmain where slordno = 'SO4'", {"3|P4"}},
        ChangeCase{"DatesStoredInOneForm",
                   "insert into rp_racctRec values ('C9', 1, '20060105', 1) insert into rp_racctRec values ('C9', 2, "
                   "'2006/1/6 8:05', 1) update rp_racctRec set refDate = '2006-1-7T08:05:09.5' where type = 2",
                   "select refDate from rp_racctRec where CustNo = 'C9' order by type",
                   {"2006-01-05", "2006-01-07 08:05:09.500"}},
        ChangeCase{"ZeroDateStored", "insert into rp_racctRec values ('C8', 1, 0, 1)",
                   "select refDate from rp_racctRec where CustNo = 'C8'", {"1900-01-01"}},
        ChangeCase{"TextStoredIntoNumber", "insert into Rp_TypeCodeInfo values ('XX', '7', 'x')",
                   "select Code + 1 from Rp_TypeCodeInfo where Type = 'xx'", {"8"}}));

INSTANTIATE_TEST_SUITE_P(
    TempTables, TsqlChanges,
    ::testing::Values(
        ChangeCase{"SelectIntoKeepsTextRules",
                   "select PartNo, Price into #parts from bs_prodlist where Price > 1",
                   "select Price from #parts where PartNo = 'p1  '", {"2.5"}},
        ChangeCase{"CreateLocalTemp",
                   "create table #t (Code varchar(10), Qty int) insert into #t values ('A', 1) insert into #t values "
                   "('a', 2)",
                   "select Code, sum(Qty) from #t group by Code", {"A|3"}},
        ChangeCase{"GlobalTempIsConnectionLocal",
                   "create table ##Pm_GetJobWcPartNoTmp1 (LineId int, WcSeqNo int) insert into "
                   "##Pm_GetJobWcPartNoTmp1 values (1, 2)",
                   "select r.LineId from ##Pm_GetJobWcPartNoTmp1 r where r.WcSeqNo <=  isnull((select 5 where 1=0),3)",
                   {"1"}},
        ChangeCase{"DropTemp", "create table #gone (a int) drop table #gone",
                   "select count(*) from sqlite_temp_master where name = '#gone'", {"0"}}));

INSTANTIATE_TEST_SUITE_P(
    Ddl, TsqlChanges,
    ::testing::Values(
        ChangeCase{"AlterTableAdd", "alter table T_pinvhea add Remark nvarchar(40) null, Qty decimal(18,2) default 0",
                   "select NoteNo, Remark, Qty from T_pinvhea where NoteNo = 't1'", {"T1|NULL|0"}},
        ChangeCase{"CreateIndexThenFind", "create index IX_Lot on St_Lot (PartNo, LotNo desc)",
                   "select EffectDate from St_Lot where PartNo = 'p1' and LotNo = 'l2 '", {"2006-01-01"}},
        ChangeCase{"DropIndexOfATable", "create index IX_Part on St_Lot (PartNo) drop index St_Lot.IX_Part",
                   "select count(*) from sqlite_master where name = 'IX_Part'", {"0"}},
        ChangeCase{"IndexOnTemporaryTable",
                   "create table #k (a varchar(5)) create unique index UX_k on #k (a) insert into #k values ('x')",
                   "select count(*) from sqlite_temp_master where type = 'index'", {"1"}},
        ChangeCase{"IdentitySeed",
                   "create table Sy_Log2 (LogId int identity(100, 1), Remark varchar(10)) insert into Sy_Log2 (Remark) "
                   "values ('x')",
                   "select LogId from Sy_Log2", {"100"}},
        ChangeCase{"GeneratedScriptClauses",
                   "CREATE TABLE [dbo].[Bs_Depart] ([DepartNo] [varchar] (10) COLLATE Chinese_PRC_CI_AS NOT NULL ,"
                   "[DepartName] [nvarchar] (40) NULL, [Effect] [bit] NOT NULL CONSTRAINT [DF_Effect] DEFAULT (1)) ON "
                   "[PRIMARY] insert into Bs_Depart (DepartNo, DepartName) values ('D1', '财务部')",
                   "select DepartName, Effect from Bs_Depart where DepartNo = 'd1'", {"财务部|1"}},
        ChangeCase{"GeneratedScriptKeys",
                   "SET ANSI_NULLS ON SET QUOTED_IDENTIFIER ON ALTER TABLE [dbo].[St_Lot] WITH NOCHECK ADD CONSTRAINT "
                   "[PK_St_Lot] PRIMARY KEY CLUSTERED ([PartNo], [LotNo]) ON [PRIMARY]",
                   "select count(*) from sqlite_master where name = 'PK_St_Lot'", {"1"}},
        ChangeCase{"DefaultFromFunction",
                   "create table #Log (Id int identity(1,1), OpDate datetime default getdate(), Flag char(1) default "
                   "'0') insert into #Log (Flag) values ('2') insert into #Log (OpDate) values ('2006-01-01')",
                   "select Id, Flag, case when OpDate > '2000-01-01' then 'dated' end from #Log order by Id",
                   {"1|2|dated", "2|0|dated"}},
        ChangeCase{"DropTable", "drop table st_checkdtl",
                   "select count(*) from sysobjects where name = 'st_checkdtl'", {"0"}}));

TEST_F(TsqlTranslate, AddedKeyRefusesDuplicates) {
    db.run("alter table St_Lot add constraint PK_St_Lot primary key (PartNo, LotNo)");
    EXPECT_THROW(db.run("insert into St_Lot values ('p1', 'l1 ', '2007-01-01')"), std::runtime_error);
    EXPECT_THROW(db.run("alter table St_Lot add constraint DF_Lot default ('') for LotNo"), SqlError);
}

TEST_F(TsqlTranslate, UniqueIndexTreatsTextsAsTheServerDoes) {
    db.run("create unique index UX_Unit on Bs_PartUnit (PartNo, Unit)");
    EXPECT_THROW(db.run("insert into Bs_PartUnit values ('p1 ', 'box', 1, 1)"), std::runtime_error);
    EXPECT_THROW(db.run("insert into bs_paralistB values ('batchcontrol  ', 1)"), std::runtime_error);
    EXPECT_NO_THROW(db.run("insert into Bs_PartUnit values ('P1', 'CASE', 1, 1)"));
}

TEST_F(TsqlTranslate, DeclaredTypesGiveTheCatalogsKinds) {
    db.script("create table Kinds (t varchar(10), n nvarchar(5), i int, s smallint, b bit, f float, m money, "
              "d decimal(18,4), dt datetime, sd smalldatetime)");
    const auto columns = db.catalog().tableColumns("kinds");
    ASSERT_TRUE(columns.has_value());
    const std::vector<ColumnKind> expected = {ColumnKind::Text,  ColumnKind::Text,    ColumnKind::Integer,
                                              ColumnKind::Integer, ColumnKind::Bit,   ColumnKind::Float,
                                              ColumnKind::Money, ColumnKind::Decimal, ColumnKind::DateTime,
                                              ColumnKind::DateTime};
    ASSERT_EQ(columns->size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) EXPECT_EQ((*columns)[i].kind, expected[i]) << (*columns)[i].name.toStdString();
    // Money keeps its fraction and dates their text.
    db.run("insert into Kinds (m, dt) values (12.3456, '2006-03-31')");
    EXPECT_EQ(db.runSqlite("select typeof(m), m, dt from Kinds"), QStringList{"real|12.3456|2006-03-31"});
}

TEST_F(TsqlTranslate, ResultColumnsAreTypedByTheirExpressions) {
    using K = ColumnKind;
    const struct {
        const char* tsql;
        std::vector<ColumnKind> kinds;
    } cases[] = {
        {"select sum(Amount), count(*), max(RefDate), 1/ExRate from Rp_RAcct, AC_Currency group by ExRate",
         {K::Money, K::Integer, K::DateTime, K::Float}},
        {" select isnull(max(refDate),convert(smalldatetime,'1900-01-01')) from rp_racctRec where type=100 ",
         {K::DateTime}},
        {"select *, 'x', 1.5, Qty * 2 from st_onhand", {K::Text, K::Text, K::Text, K::Text, K::Float, K::Text,
                                                         K::Decimal, K::Float}},
        {"select a.*, b.Cost from st_checkdtl a, st_MonthPartCost b", {K::Integer, K::Text, K::Float, K::Decimal}},
        {"create table #x (a int) select a from #x", {K::Integer}},
        {"select * from NoSuchTable", {}},
        {"update T_pinvhea set NoteNo = 'x'", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(translateForSqlite(c.tsql, db.catalog()).resultKinds, c.kinds) << c.tsql;
}

TEST_F(TsqlTranslate, NestedScalarSubqueriesStayLinear) {
    QString tsql = QStringLiteral("1");
    for (int i = 0; i < 6; ++i) tsql = QStringLiteral("(select Type from Rp_RAcct where Type = %1)").arg(tsql);
    tsql = QStringLiteral("select ") + tsql;
    EXPECT_LT(translateToSqlite(tsql, db.catalog()).size(), 6 * 400);
    EXPECT_EQ(db.run(tsql), QStringList{"1"});
}

TEST_F(TsqlTranslate, LongConditionsRunOnTheEngine) {
    QStringList conditions;
    for (int i = 0; i < 150; ++i) conditions << QStringLiteral("CustNo <> 'x%1'").arg(i);
    EXPECT_EQ(db.run("select count(*) from Rp_RAcct where " + conditions.join(" and ")), QStringList{"3"});
    QStringList search{"(1=2)"};
    for (int i = 0; i < 150; ++i) search << QStringLiteral("(NoteNo like '%%1%')").arg(i);
    EXPECT_EQ(db.run("select count(*) from Rp_RAcct where " + search.join(" or ")), QStringList{"3"});
}

// Operator chains as long as hosts write them print without a parenthesis per operator,
// and keep T-SQL's left-to-right order where SQLite would bind otherwise.
TEST_F(TsqlTranslate, LongChainsRunOnTheEngine) {
    QStringList columns, values, joined;
    for (int i = 1; i <= 50; ++i) {
        columns << QStringLiteral("c%1 varchar(4)").arg(i);
        values << QStringLiteral("'v%1'").arg(i);
        joined << QStringLiteral("v%1").arg(i);
    }
    db.run("create table Wide (" + columns.join(", ") + ")");
    db.run("insert into Wide values (" + values.join(", ") + ")");
    auto chain = [](const QString& term, int count, const QString& op) {
        QStringList terms;
        for (int i = 1; i <= count; ++i) terms << (term.contains(QLatin1Char('%')) ? term.arg(i) : term);
        return terms.join(op);
    };
    const QString concatenation = chain("w.c%1", 50, " + ',' + ");
    const QString sum = chain("%1", 100, " + ");
    const struct {
        const char* name;
        QString tsql;
        QStringList rows;
    } cases[] = {
        {"50 columns joined", "select " + concatenation + " from Wide w", {joined.join(",")}},
        // Columns of a select * derived table have no known type: the runtime adds them.
        {"50 untyped columns joined", "select " + concatenation + " from (select * from Wide) w", {joined.join(",")}},
        {"100-term sum", "select " + sum, {"5050"}},
        {"1000-term sum", "select " + chain("%1", 1000, " + "), {"500500"}},
        {"100-term sum of a column", "select " + chain("Type", 100, " + ") + " from Rp_RAcct where CustNo = 'C2'", {"200"}},
        {"256 or terms", "select CustNo from Rp_RAcct where " + chain("CustNo = 'x%1'", 255, " or ") + " or CustNo = 'C3'",
         {"C3"}},
        {"3000 and terms", "select count(*) from Rp_RAcct where " + chain("CustNo <> 'x%1'", 3000, " and "), {"3"}},
        {"& binds as + does", "select 2 & 3 + 4, 1 + 2 | 4, 2 * 3 + 4 * 5, 6 ^ 3 + 1, 1 + 6 ^ 3", {"6|7|26|6|4"}},
        {"60 exclusive ors", "select " + chain("%1", 60, " ^ "), {"60"}},
        {"1500 texts joined", "select len(" + chain("'ab'", 1500, " + ") + ")", {"3000"}},
        {"left to right", "select 10 - 2 - 3, 12 / 2 / 3, 1 - (2 - 3), 'a' + 'b' + 'c'", {"5|2|2|abc"}},
        // ('5' + '0') + 1, not '5' + ('0' + 1).
        {"untyped operands fold left", "select w.c1 + '0' + 1 from (select c1 = '5') w", {"51"}},
    };
    for (const auto& c : cases) EXPECT_EQ(db.answer(c.tsql), c.rows) << c.name;
}

// The literals of an in list are kept as text, not a node each, and still compare as the
// server compares them.
TEST_F(TsqlTranslate, InListLiteralsCompareAsTheServerCompares) {
    const struct {
        const char* tsql;
        QStringList rows;
    } cases[] = {
        {"select CustNo from Rp_RAcct where Type in ('1', '3') order by CustNo", {"C1", "C3"}},
        {"select CustNo from Rp_RAcct where CustNo in ('c1 ', 'C2', CustNo + 'x') order by CustNo", {"C1", "C2"}},
        {"select NoteNo from T_pinvhea where RefNo in (12, 9) order by NoteNo", {"T1", "T2"}},
        {"select CustNo from Rp_RAcct where NoteNo in ('S''1', 'S001, S002', 'S001')", {"C1"}},
        {"select CustNo from Rp_RAcct where Type not in (1, 2.5) order by CustNo", {"C2", "C3"}},
        {"select CustNo from Rp_RAcct where Type in (Type - 1, '2', 7)", {"C2"}},
    };
    for (const auto& c : cases) EXPECT_EQ(db.answer(c.tsql), c.rows) << c.tsql;
}

// Derived tables nest as deep as the server's 32 levels; subqueries the embedded parser
// cannot hold are refused with the server's nesting message and the engine's limit.
TEST_F(TsqlTranslate, NestedQueriesReachTheServersLimitOrSaySo) {
    QString derived = QStringLiteral("select CustNo from Rp_RAcct where CustNo = 'C1'");
    for (int i = 0; i < 32; ++i) derived = QStringLiteral("select CustNo from (%1) d%2").arg(derived).arg(i);
    EXPECT_EQ(db.run(derived), QStringList{"C1"});
    auto exists = [](int levels) {
        QString tsql = QStringLiteral("select 1");
        for (int i = 0; i < levels; ++i) tsql = QStringLiteral("select 1 where exists (%1)").arg(tsql);
        return tsql;
    };
    EXPECT_EQ(db.run(exists(11)), QStringList{"1"});
    // A correlated scalar subquery checks its rows in place, a level of nesting each.
    QString scalar = QStringLiteral("select CustNo from Rp_RAcct");
    for (int i = 0; i < 9; ++i)
        scalar = QStringLiteral("select a%1.CustNo from Rp_RAcct a%1 where a%1.CustNo = (%2)").arg(i).arg(scalar);
    EXPECT_EQ(db.errorOf(scalar), "Subquery returned more than 1 value. This is not permitted when the subquery follows =, "
                                  "!=, <, <= , >, >= or when the subquery is used as an expression.");
    const std::string error = db.errorOf(exists(32));
    EXPECT_EQ(error, std::string(kNestedTooDeeply) + " The embedded database nests subqueries about 10 levels deep (the server 32) and takes about 1000 operators in "
                     "one expression.");
}

// Names and values that hold QString placeholders (%1, %3, %%) reach the engine as written.
// update/delete with a FROM list touch only the rows of the target's instance there that
// the joins and the condition find, each once.
TEST(TsqlDmlFrom, ChangesOnlyTheRowsTheJoinFinds) {
    struct Case {
        const char* tsql;
        QStringList rows;  // CustNo|Sumday|Price of Cu afterwards
    };
    const std::vector<Case> cases = {
        {"delete Cu from Cu c inner join Ord o on o.CustNo = c.CustNo where o.OrdNo = 'o1'",
         {"c2|0|20", "c3|0|30"}},
        {"update Cu set Sumday = 30 from Cu c inner join Ord o on o.CustNo = c.CustNo",
         {"c1|30|10", "c2|0|20", "c3|30|30"}},
        {"update c set Sumday = o.Qty from Cu c join Ord o on o.CustNo = c.CustNo", {"c1|5|10", "c2|0|20", "c3|7|30"}},
        {"update Cu set Sumday = o.Qty from Cu join Ord o on o.CustNo = Cu.CustNo", {"c1|5|10", "c2|0|20", "c3|7|30"}},
        {"delete from d from Cu d join Ord o on o.CustNo = d.CustNo", {"c2|0|20"}},
        {"delete Cu from Cu c join Ord o on o.CustNo = c.CustNo where o.Qty > 6", {"c1|0|10", "c2|0|20"}},
        {"update Cu set Price = Price * 1.1 from Cu d join Ord o on o.CustNo = d.CustNo where o.Qty > 6",
         {"c1|0|10", "c2|0|20", "c3|0|33"}},
        {"update a set Sumday = b.Price from Cu a join Cu b on b.Price = a.Price + 10",
         {"c1|20|10", "c2|30|20", "c3|0|30"}},
        {"update c set Sumday = isnull(o.Qty, -1) from Cu c left join Ord o on o.CustNo = c.CustNo",
         {"c1|5|10", "c2|-1|20", "c3|7|30"}},
        {"update c set Sumday = 1 from Ord o left join Cu c on c.CustNo = o.CustNo and c.Price > 15",
         {"c1|0|10", "c2|0|20", "c3|1|30"}},
        {"update Cu set Sumday = 2 from Cu, Ord where Cu.CustNo = Ord.CustNo", {"c1|2|10", "c2|0|20", "c3|2|30"}},
        {"update Cu set Sumday = 4 from Ord o where o.CustNo = Cu.CustNo", {"c1|4|10", "c2|0|20", "c3|4|30"}},
        {"delete Cu from Cu c, Ord o where o.CustNo *= c.CustNo", {"c2|0|20"}},
        {"update Cu set Sumday = 3 from Cu c, Ord o where c.CustNo *= o.CustNo and c.Price < 25",
         {"c1|3|10", "c2|3|20", "c3|0|30"}},
    };
    for (const Case& c : cases) {
        SqliteTestDb db;
        db.script(
            "create table Cu (CustNo varchar(5), Sumday int, Price decimal(9,2)) "
            "create table Ord (OrdNo varchar(5), CustNo varchar(5), Qty int) "
            "insert into Cu values ('c1', 0, 10) insert into Cu values ('c2', 0, 20) "
            "insert into Cu values ('c3', 0, 30) "
            "insert into Ord values ('o1', 'c1', 5) insert into Ord values ('o2', 'c3', 7)");
        EXPECT_EQ(db.answer(c.tsql), QStringList{}) << c.tsql;
        EXPECT_EQ(db.answer("select CustNo, Sumday, Price from Cu order by CustNo"), c.rows) << c.tsql;
    }
}

// A grouped select reads its own columns only inside aggregates or as grouped
// expressions; everything the server accepts still runs.
TEST(TsqlGrouping, ColumnsOutsideAggregatesMustBeGrouped) {
    struct Case {
        const char* tsql;
        QStringList answer;
    };
    const auto invalid = [](const char* column, const char* clause) {
        return QStringList{QStringLiteral("error: Column '%1' is invalid in the %2 because it is not contained in "
                                          "either an aggregate function or the GROUP BY clause.")
                               .arg(QLatin1String(column), QLatin1String(clause))};
    };
    const std::vector<Case> cases = {
        {"select nm, count(*) from (select 'a' as nm) x", invalid("x.nm", "select list")},
        {"select CustNo, Qty from Ord group by CustNo", invalid("Ord.Qty", "select list")},
        {"select o.CustNo, sum(Qty) from Ord o", invalid("o.CustNo", "select list")},
        {"select CustNo + OrdNo, count(*) from Ord group by CustNo", invalid("Ord.OrdNo", "select list")},
        {"select CustNo from Ord group by CustNo having Qty > 1", invalid("Ord.Qty", "HAVING clause")},
        {"select CustNo, count(*) from Ord group by CustNo order by Qty", invalid("Ord.Qty", "ORDER BY clause")},
        {"select CustNo c, sum(Qty) s from Ord group by CustNo order by s desc, c, 2, sum(Qty), upper(CustNo)",
         {"c1|7", "c3|7"}},
        {"select o.CustNo, sum(o.Qty) from Ord o group by CustNo order by 1", {"c1|7", "c3|7"}},
        {"select Qty * 2 + 1, count(*) from Ord group by Qty * 2 order by 1", {"5|1", "11|1", "15|1"}},
        {"select upper(CustNo), count(*) from Ord group by upper(CustNo) order by 1", {"C1|2", "C3|1"}},
        {"select 'k', 5, count(*), max(Qty) - min(Qty) from Ord", {"k|5|3|5"}},
        {"select CustNo from Ord group by CustNo having count(*) > 1", {"c1"}},
        {"select case when CustNo = 'c1' then 1 else 0 end, count(*) from Ord where Qty > 1 group by CustNo "
         "order by 1",
         {"0|1", "1|2"}},
        {"select CustNo, (select count(*) from Ord i where i.CustNo = Ord.CustNo and i.Qty > 3) from Ord "
         "group by CustNo order by 1",
         {"c1|1", "c3|1"}},
        {"select CustNo from Ord where Qty = (select max(Qty) from Ord)", {"c3"}},
    };
    SqliteTestDb db;
    db.script(
        "create table Ord (OrdNo varchar(5), CustNo varchar(5), Qty int) "
        "insert into Ord values ('o1', 'c1', 5) insert into Ord values ('o2', 'c3', 7) "
        "insert into Ord values ('o3', 'c1', 2)");
    for (const Case& c : cases) EXPECT_EQ(db.answer(c.tsql), c.answer) << c.tsql;
}

TEST(TsqlPlaceholders, NamesAndValuesKeepTheirPercentSigns) {
    const struct {
        const char* setup;
        const char* check;
        QStringList rows;
    } cases[] = {
        {"create table [Q%3] (id int identity(100,1), v int) insert into [Q%3] (v) values (1)",
         "select id, v from [Q%3]", {"100|1"}},
        {"create table [A%1%2] (id int identity(5,1), v int) insert into [A%1%2] (v) values (2)",
         "select id from [A%1%2]", {"5"}},
        {"create table [T%1] ([c%2] varchar(3), [d%%] int) insert into [T%1] values ('%1%', 7)",
         "select [c%2], [d%%] from [T%1]", {"%1%|7"}},
        {"", "select convert(varchar(10), '%1%3'), 'a%1' + '%2%%'", {"%1%3|a%1%2%%"}},
    };
    for (const auto& c : cases) {
        SqliteTestDb db;
        if (*c.setup) EXPECT_EQ(db.errorOf(QString::fromUtf8(c.setup)), "") << c.setup;
        EXPECT_EQ(db.answer(QString::fromUtf8(c.check)), c.rows) << c.setup;
    }
    // The declared length still holds for a column whose name holds a placeholder.
    SqliteTestDb db;
    db.run("create table [T%1] ([c%2] varchar(3))");
    EXPECT_NE(db.errorOf("insert into [T%1] values ('abcd')"), "");
}

// The wording users see in the host's error box is the server's.
TEST(TsqlSyntax, MessagesUseTheServersWording) {
    SqliteTestDb db;
    const struct {
        const char* tsql;
        const char* message;
    } cases[] = {
        {"select a b c from t", "Incorrect syntax near 'c'."},
        {"select 1 from t where", "Incorrect syntax near 'where'."},
        {"select 1 from t where x = 'abc", "Unclosed quotation mark after the character string 'abc'."},
        {"select [abc from t", "Unclosed quotation mark after the character string 'abc from t'."},
        {"select 1 /* open", "Missing end comment mark '*/'."},
        {"select * from t order x", "Incorrect syntax near 'x'."},
        {"select * from t where x in (select)", "Incorrect syntax near ')'."},
        {"update t x = 1", "Incorrect syntax near 'x'."},
        {"insert into t (a) go", "Incorrect syntax near 'go'."},
        {"select 1 where 2 = {3}", "Incorrect syntax near '{'."},
        {"select * from t group by", "Incorrect syntax near 'by'."},
        {"create table t (a int, constraint pk primary key)", "Incorrect syntax near ')'."},
    };
    for (const auto& c : cases) EXPECT_EQ(db.errorOf(c.tsql), std::string(c.message)) << c.tsql;
    // A literal that never ends is quoted by its start.
    const QString longText(1 << 20, QLatin1Char('x'));
    EXPECT_EQ(db.errorOf("select '" + longText),
              "Unclosed quotation mark after the character string '" + std::string(100, 'x') + "...'.");
}

TEST(TsqlBatches, GoLinesSeparateBatches) {
    struct Case {
        const char* name;
        QString script;
        QStringList batches;
    };
    const std::vector<Case> cases = {
        {"one statement, no separator", "create table a (x int)", {"create table a (x int)"}},
        {"separator in any case and with blanks",
         "create table a (x int)\n  GO \ncreate table b (y int)\ngo\n",
         {"create table a (x int)", "create table b (y int)"}},
        {"go inside a line does not separate", "select 'go' as go\ngo", {"select 'go' as go"}},
        {"a word starting with go does not separate",
         "create table a (x int)\ngoto\ngo",
         {"create table a (x int)\ngoto"}},
        {"blank and comment-only batches are left out",
         "-- header\n\ngo\ncreate table a (x int)\ngo\n\ngo\n",
         {"create table a (x int)"}},
        {"a go behind a comment marker does not separate",
         "insert into a values (1)\n-- go\nselect 'go'\ngo", {"insert into a values (1)\n-- go\nselect 'go'"}},
        {"only separators", "go\n\ngo\n", {}},
        {"comments stay with their statement",
         "-- parts\ncreate table a (x int)\r\ngo\r\n",
         {"-- parts\ncreate table a (x int)"}},
    };
    for (const Case& c : cases) EXPECT_EQ(splitBatches(c.script), c.batches) << c.name;
}

TEST(TsqlCache, RepeatedStatementIsTranslatedOnce) {
    SqliteTestDb db;
    db.run("create table t (x varchar(10))");
    TranslationCache cache;
    const QString sql = "select x + x from t";
    const QString first = cache.translate(sql, db.catalog());
    // The cached text stands until the cache is cleared, whatever the catalog says now.
    db.run("drop table t");
    db.run("create table t (x int)");
    EXPECT_EQ(cache.translate(sql, db.catalog()), first);
    EXPECT_EQ(cache.size(), 1);
    cache.clear();
    EXPECT_NE(cache.translate(sql, db.catalog()), first);
    EXPECT_THROW(cache.translate("select", db.catalog()), SqlError);
    EXPECT_EQ(cache.size(), 1);
    EXPECT_EQ(cache.translateTyped(sql, db.catalog()).resultKinds, std::vector<ColumnKind>{ColumnKind::Integer});
}

// A statement translated after another of the same shape gets the translation it would get
// alone: where a literal's value changes the translation, the kept one is not reused.
TEST(TsqlCache, ShapeSharedOnlyWhereLiteralsAreCopied) {
    SqliteTestDb db;
    db.run("create table Part (Code varchar(10), Qty int, Active bit, Name nvarchar(20), Made datetime)");
    db.run("create table Stock (Code varchar(10), Store varchar(10))");
    struct Case {
        const char* first;
        const char* second;
        bool shared;  // one kept translation serves both
    } cases[] = {
        {"select Name from Part where Code = 'A1'", "select Name from Part where Code = 'B22'", true},
        {"select Name from Part where Code = 'A1' and Made > 'x'", "select Name from Part where Code = 'B2' and Made > '2024-01-02'", true},
        // Text compared with a number is converted when the translation is made.
        {"select Code from Part where Qty = 'abc'", "select Code from Part where Qty = '12'", false},
        {"select Code from Part where Qty = 'abc'", "select Code from Part where Qty = ' '", false},
        {"select Code from Part where Active = 'yes'", "select Code from Part where Active = 'true'", false},
        {"select Code from Part where Code like 'ab'", "select Code from Part where Code like 'a%'", false},
        {"select Code from Part where Code like 'ab'", "select Code from Part where Code like '[ab]c'", false},
        // A quoted alias is a name, not a value.
        {"select 'Label' = Name from Part", "select 'Other' = Name from Part", false},
        {"select Code 'Label' from Part", "select Code 'Other' from Part", false},
        // Equal literals are compared by grouping.
        {"select 'a1', count(*) from Part group by Code, 'b1'", "select 'a1', count(*) from Part group by Code, 'a1'", false},
        {"select Name from Part where Name = N'A1'", "select Name from Part where Name = N'B1'", false},
        {"select Name from Part where Code = 'A1' and Code <> 'A''1'", "select Name from Part where Code = 'A1' and Code <> 'B1'", false},
        {"select p.Name from Part p, Stock s where p.Code *= s.Code and s.Store = 'S1'",
         "select p.Name from Part p, Stock s where p.Code *= s.Code and s.Store = 'S2'", true},
        {"insert into Stock (Code, Store) values ('A1', 'S1')", "insert into Stock (Code, Store) values ('B1', 'S2')", true},
        {"update Part set Name = 'x' where Code = 'A1'; select Qty from Part where Code = 'B1'",
         "update Part set Name = 'y' where Code = 'A2'; select Qty from Part where Code = 'B2'", true},
    };
    for (const Case& c : cases) {
        TranslationCache cache;
        EXPECT_EQ(cache.translateTyped(c.first, db.catalog()).sql, translateForSqlite(c.first, db.catalog()).sql) << c.first;
        const SqliteTranslation alone = translateForSqlite(c.second, db.catalog());
        const SqliteTranslation cached = cache.translateTyped(c.second, db.catalog());
        EXPECT_EQ(cached.sql, alone.sql) << c.second;
        EXPECT_EQ(cached.resultKinds, alone.resultKinds) << c.second;
        EXPECT_EQ(cache.size() == 1, c.shared) << c.second;
        // The same text with the literals as parameters: binding them gives the translation.
        QString bound = cached.parameterizedSql;
        for (qsizetype i = cached.parameters.size(); i > 0; --i)
            bound.replace(QStringLiteral("?%1").arg(i), QLatin1Char('\'') + cached.parameters[i - 1] + QLatin1Char('\''));
        if (c.shared) EXPECT_EQ(bound, alone.sql) << c.second;
        if (c.shared) EXPECT_FALSE(cached.parameters.isEmpty()) << c.second;
        ASSERT_TRUE(cache.find(c.second));
        EXPECT_EQ(cache.find(c.second)->sql, alone.sql) << c.second;
        cache.forget(c.second);
        EXPECT_FALSE(cache.find(c.second)) << c.second;
    }
}

TEST(TsqlCache, HoldsTextsUpToItsBound) {
    SqliteTestDb db;
    TranslationCache cache;
    const QString filler(128 * 1024, QLatin1Char('x'));
    for (int i = 0; i < 200; ++i) {
        cache.translate(QStringLiteral("select %1, '").arg(i) + filler + QLatin1Char('\''), db.catalog());
        ASSERT_LE(cache.bytes(), TranslationCache::kMaxBytes) << i;
    }
    EXPECT_GT(cache.size(), 10);
}

}  // namespace
}  // namespace kivdb::dialect
