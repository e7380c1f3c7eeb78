#include "integrity/sample_data.h"

#include "platform/sqlite_connection.h"
#include "testing/sqlite_database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <vector>

namespace kivdb::integrity {
namespace {

// An embedded database, read back as text, each row's cells joined by '|'; a query that
// fails is reported and answers no rows.
struct MemoryDb {
    SqliteConnection conn{QStringLiteral(":memory:"), SqliteConnection::OpenMode::CreateIfMissing};
    testing::SqliteTestDb raw{conn.handle()};

    QStringList rows(const QString& sql) {
        try {
            return raw.runSqlite(sql);
        } catch (const std::exception& e) {
            ADD_FAILURE() << e.what() << "\n" << sql.toStdString();
            return {};
        }
    }
    qint64 count(const QString& table) {
        const QStringList r = rows(QStringLiteral("select count(*) from %1").arg(table));
        return r.isEmpty() ? -1 : r.front().toLongLong();
    }
};

// Columns of every table of the schema, lower-cased, by lower-cased table name.
using Catalogue = std::map<QString, QSet<QString>>;

Catalogue readCatalogue() {
    Catalogue tables;
    for (const InventoryColumn& c :
         readInventory(defaultSchemaDirectory() + QStringLiteral("/inventory.tsv")))
        tables[c.table.toLower()].insert(c.column.toLower());
    return tables;
}

// Tables holding every one of the columns.
QStringList tablesWith(const Catalogue& catalogue, const QStringList& columns) {
    QStringList found;
    for (const auto& [table, cols] : catalogue) {
        bool all = true;
        for (const QString& c : columns) all = all && cols.contains(c.toLower());
        if (all) found << table;
    }
    return found;
}

// Note headers carry RefNo, their state flag and who prepared them (vouchers have a flag
// too but are numbered by the ledger, not by our counter); note lines RefNo, LineId and
// SeqNo (the stock ledger has no SeqNo: it is no note).
QStringList noteHeaders(const Catalogue& catalogue) {
    return tablesWith(catalogue,
                      {QStringLiteral("RefNo"), QStringLiteral("flag"), QStringLiteral("PreparedBy")});
}
QStringList noteLines(const Catalogue& catalogue) {
    return tablesWith(catalogue,
                      {QStringLiteral("RefNo"), QStringLiteral("LineId"), QStringLiteral("SeqNo")});
}

class SampleData : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        db_ = std::make_unique<MemoryDb>();
        try {
            applySchema(db_->conn, defaultSchemaDirectory());
            applySampleData(db_->conn, defaultSampleDirectory());
        } catch (const std::exception& e) {
            loadError_ = QString::fromUtf8(e.what());
        }
        catalogue_ = readCatalogue();
    }
    static void TearDownTestSuite() { db_.reset(); }
    void SetUp() override { ASSERT_TRUE(loadError_.isEmpty()) << loadError_.toStdString(); }

    // A rule written as a query for the rows that break it.
    struct Rule {
        QString what;
        QString offending;
    };
    static void expectNoneBroken(const std::vector<Rule>& rules) {
        for (const Rule& rule : rules) {
            const QStringList broken = db_->rows(rule.offending);
            EXPECT_TRUE(broken.isEmpty())
                << rule.what.toStdString() << ": " << broken.join(QStringLiteral("; ")).toStdString();
        }
    }

    static inline std::unique_ptr<MemoryDb> db_;
    static inline QString loadError_;
    static inline Catalogue catalogue_;
};

// Note backups live beside stores that the backup procedure creates on first use.
const QSet<QString> kLeftEmpty = {QStringLiteral("sy_notebackup")};

TEST_F(SampleData, EveryTableHoldsRowsExceptNoteBackups) {
    for (const auto& [table, columns] : catalogue_) {
        const qint64 n = db_->count(table);
        if (kLeftEmpty.contains(table))
            EXPECT_EQ(n, 0) << table.toStdString() << " is listed as left empty";
        else
            EXPECT_GT(n, 0) << table.toStdString();
    }
}

// A code column names a row of its master table wherever it appears (blank means none).
struct CodeColumn {
    const char* column;
    const char* master;
    const char* masterColumn;
};
const CodeColumn kCodeColumns[] = {
    {"PartNo", "Bs_ProdList", "PartNo"},   {"CompNo", "Bs_ProdList", "PartNo"},
    {"ProdNo", "Bs_ProdList", "PartNo"},   {"AltPartNo", "Bs_ProdList", "PartNo"},
    {"CustNo", "Bs_Customer", "CustNo"},   {"VendNo", "Bs_Vendor", "VendNo"},
    {"DepartNo", "Bs_Depart", "DepartNo"}, {"StkNo", "Bs_Location", "StkNo"},
    {"Location", "Bs_Location", "StkNo"},  {"FromLoc", "Bs_Location", "StkNo"},
    {"ToLoc", "Bs_Location", "StkNo"},     {"Currency", "AC_Currency", "Currency"},
    {"BankNo", "Rp_Bank", "BankNo"},       {"Frombank", "Rp_Bank", "BankNo"},
    {"ToBank", "Rp_Bank", "BankNo"},       {"WcNo", "En_WorkCent", "WcNo"},
    {"EquipNo", "En_Equip", "EquipNo"},    {"UserId", "Bs_User", "UserId"},
    {"PreparedBy", "Bs_User", "UserId"},   {"CheckUser", "Bs_User", "UserId"},
    {"SalesId", "Bs_Employee", "EmpId"},   {"Buyer", "Bs_Employee", "EmpId"},
    {"TaskBy", "Bs_Employee", "EmpId"},    {"ChargeMan", "Bs_Employee", "EmpId"},
    {"PayCode", "bs_Paycode", "PayCode"},  {"ProdCode", "bs_ProdCode", "ProdCode"},
    {"SubId", "ac_subject", "SubId"},      {"PriceSysNo", "bs_PriceSys", "PriceSysNo"},
    {"Slordno", "sl_order", "Slordno"},    {"PoNo", "Po_Order", "PoNo"},
    {"RefJobNo", "pl_jbmain", "RefNo"},    {"IqcNo", "po_IQcCode", "IqcCode"},
    {"Dealer", "Bs_Employee", "EmpId"},    {"BillId", "Bs_BillSet", "BillId"},
};

// Columns named like a code that hold something else: the RefNo counter's row BillId 0.
const QSet<QString> kNotCodes = {QStringLiteral("billcode.billid")};

// Where each code column appears, apart from its master's own key.
std::vector<std::pair<QString, const CodeColumn*>> codeUses(const Catalogue& catalogue) {
    std::vector<std::pair<QString, const CodeColumn*>> uses;
    for (const CodeColumn& code : kCodeColumns)
        for (const QString& table : tablesWith(catalogue, {QString::fromLatin1(code.column)}))
            if (table != QString::fromLatin1(code.master).toLower() ||
                QLatin1String(code.column) != QLatin1String(code.masterColumn))
                if (!kNotCodes.contains(table + QLatin1Char('.') +
                                        QString::fromLatin1(code.column).toLower()))
                    uses.emplace_back(table, &code);
    return uses;
}

QString nonBlank(const QString& column) {
    return QStringLiteral("%1 is not null and trim(cast(%1 as text)) <> ''").arg(column);
}

TEST_F(SampleData, EveryCodeANoteOrSettingNamesExistsInItsMaster) {
    std::vector<Rule> rules;
    for (const auto& [table, code] : codeUses(catalogue_))
        rules.push_back({QStringLiteral("%1.%2").arg(table, QLatin1String(code->column)),
                         QStringLiteral("select %2 from %1 where %3 and %2 not in (select %5 from %4)")
                             .arg(table, QLatin1String(code->column), nonBlank(QLatin1String(code->column)),
                                  QLatin1String(code->master), QLatin1String(code->masterColumn))});
    for (const QString& header : tablesWith(catalogue_, {QStringLiteral("AcctVouchNo")}))
        rules.push_back({header + QStringLiteral(" voucher"),
                         QStringLiteral("select RefNo from %1 where AcctVouchNo <> 0 and AcctVouchNo not in "
                                        "(select RefNo from ac_vouchHea)")
                             .arg(header)});
    rules.insert(
        rules.end(),
        {
            {"job's sales order",
             "select RefNo from pl_jbmain where RefOrderNo not in (select RefNo from sl_order)"},
            {"job's product version",
             "select RefNo from pl_jbmain j where not exists (select 1 from En_ProdVersion v "
             "where v.ProdNo = j.ProdNo and v.Version = j.ProdVersion)"},
            {"default stock locations",
             "select ParFieldName from bs_paralistS where paraValue not in (select StkNo from Bs_Location)"},
            {"common tax items",
             "select TaxCode from T_useTaxCode where TaxCode not in (select SysTaxCode from ht_taxCode)"},
            {"logged operations",
             "select OpId from Sy_Log where cast(OpId as text) not in "
             "(select FieldValue from Bs_QueryList where lang = 0 and ListType = 2)"},
            {"data scopes",
             "select UserId from Bs_User where cast(AuthId as text) not in "
             "(select FieldValue from Bs_QueryList where lang = 0 and ListType = 3)"},
            {"chart styles",
             "select ChatName from s_chartshow where cast(ChatType as text) not in "
             "(select FieldValue from Bs_QueryList where lang = 0 and ListType = 13)"},
            {"customer price systems",
             "select CustNo from Bs_Customer where PriceType <> -1 and PriceType not in "
             "(select PriceSysNo from bs_PriceSys)"},
            {"receivable entry types",
             "select Type from rp_racctRec where Type not in "
             "(select Code from Rp_TypeCodeInfo where Type = 'RE')"},
            {"payable entry types",
             "select Type from rp_PacctRec where Type not in "
             "(select Code from Rp_TypeCodeInfo where Type = 'PA')"},
            {"shipments owed",
             "select a.NoteRefNo from Rp_RAcct a where a.Type = 1 and not exists (select 1 from sl_ship s "
             "where s.RefNo = a.NoteRefNo and s.Amount = a.Amount and s.PaidAmt = a.HadPayAmt)"},
            {"receipts owed",
             "select a.NoteRefNo from Rp_PAcct a where a.Type = 1 and not exists (select 1 from Po_Recv r "
             "where r.RefNo = a.NoteRefNo and r.Amount = a.Amount and r.PaidAmt = a.HadPayAmt)"},
        });
    expectNoneBroken(rules);
}

TEST_F(SampleData, EveryNoteLineHasItsHeaderAndEveryHeaderItsLines) {
    std::vector<Rule> rules;
    for (const QString& lines : noteLines(catalogue_)) {
        QString header = lines.endsWith(QLatin1String("dtl")) ? lines.chopped(3) : QString();
        if (lines == QLatin1String("st_inet")) header = QStringLiteral("st_inhead");
        ASSERT_TRUE(catalogue_.count(header)) << "no header table for " << lines.toStdString();
        rules.push_back(
            {lines, QStringLiteral("select RefNo, LineId from %1 where RefNo not in (select RefNo from %2)")
                        .arg(lines, header)});
        rules.push_back({header + QStringLiteral(" without lines"),
                         QStringLiteral("select RefNo from %1 where RefNo not in (select RefNo from %2)")
                             .arg(header, lines)});
    }
    rules.insert(
        rules.end(),
        {
            {"job components",
             "select RefJobNo from pl_JbBom where RefJobNo not in (select RefNo from pl_jbmain)"},
            {"job routing",
             "select RefJobNo from pl_JbRout where RefJobNo not in (select RefNo from pl_jbmain)"},
            {"substitutes",
             "select a.RefJobNo, a.LineId from pl_JbBomAlt a where not exists (select 1 from pl_JbBom b "
             "where b.RefJobNo = a.RefJobNo and b.LineId = a.LineId)"},
            {"jobs without components",
             "select RefNo from pl_jbmain where RefNo not in (select RefJobNo from pl_JbBom)"},
        });
    expectNoneBroken(rules);
}

TEST_F(SampleData, LinesUseTheirPartsUnitsWithTheUnitsConversion) {
    std::vector<Rule> rules;
    for (const QString& table : tablesWith(catalogue_, {QStringLiteral("PartNo"), QStringLiteral("Unit")})) {
        if (table == QLatin1String("bs_prodlist") || table == QLatin1String("bs_partunit")) continue;
        rules.push_back(
            {table + QStringLiteral(" unit"),
             QStringLiteral("select d.RefNo, d.LineId, d.Unit from %1 d where not exists (select 1 from "
                            "Bs_ProdList p where p.PartNo = d.PartNo and p.Unit = d.Unit) and not exists "
                            "(select 1 from Bs_PartUnit u where u.PartNo = d.PartNo and u.Unit = d.Unit)")
                 .arg(table)});
    }
    for (const QString& table : tablesWith(catalogue_, {QStringLiteral("PartNo"), QStringLiteral("Unit"),
                                                        QStringLiteral("slsize"), QStringLiteral("Factor")}))
        rules.push_back(
            {table + QStringLiteral(" conversion"),
             QStringLiteral(
                 "select d.RefNo, d.LineId from %1 d left join Bs_PartUnit u on u.PartNo = d.PartNo and u.Unit "
                 "= d.Unit where coalesce(u.ExRate, 1) <> d.slsize or coalesce(u.Factor, 1) <> d.Factor")
                 .arg(table)});
    expectNoneBroken(rules);
}

// Quantities and amounts the suite keeps on headers and order lines add up from the lines.
TEST_F(SampleData, QuantitiesAndAmountsAddUp) {
    std::vector<Rule> rules = {
        {"discounts",
         "select h.RefNo from Rp_RDisc h where h.Amount <> (select sum(d.Amount) from rp_RDiscDtl d where "
         "d.RefNo = h.RefNo) union all select h.RefNo from Rp_PDisc h where h.Amount <> (select "
         "sum(d.Amount) from rp_PDiscDtl d where d.RefNo = h.RefNo)"},
        {"job components issued less returned",
         "select b.RefJobNo, b.CompNo from pl_JbBom b where abs(b.IssuedQty + b.AddIssQty - (select "
         "coalesce(sum(i.Qty * i.slsize / i.Factor), 0) from pm_IssWipDtl i where i.RefJobNo = b.RefJobNo and "
         "i.PartNo = b.CompNo) + (select coalesce(sum(r.Qty * r.slsize / r.Factor), 0) from pm_IssWipRtnDtl r "
         "where r.RefJobNo = b.RefJobNo and r.PartNo = b.CompNo)) > 0.0001"},
        {"job components planned from the usage",
         "select b.RefJobNo, b.CompNo from pl_JbBom b join pl_jbmain j on j.RefNo = b.RefJobNo "
         "where abs(b.PlanIssQty - j.ProdQty * b.Qtyper / b.Factor) > 0.0001"},
        {"job components follow the bill of the job's version",
         "select b.RefJobNo, b.CompNo from pl_JbBom b join pl_jbmain j on j.RefNo = b.RefJobNo where not "
         "exists (select 1 from en_bom e where e.ProdNo = j.ProdNo and e.Version = j.ProdVersion and e.CompNo "
         "= b.CompNo and e.Qtyper = b.Qtyper)"},
        {"jobs' finished quantity",
         "select j.RefNo from pl_jbmain j where abs(j.ReadyQty - (select coalesce(sum(f.Qty), 0) from "
         "pm_FinRepDtl f where f.RefJobNo = j.RefNo)) > 0.0001"},
        {"invoiced within the quantity",
         "select RefNo, LineId from sl_ShipDtl where InvQty > Qty union all select RefNo, LineId from "
         "Po_RecvDtl where InvQty > Qty"},
    };
    // A line quantity kept on order lines, from the lines of the notes that carry it out.
    const char* const carriedOut[][5] = {
        {"sl_order", "Slordno", "ShipQty", "sl_ShipDtl", "shipped"},
        {"Po_Order", "PoNo", "RecvQty", "Po_RecvDtl", "received"},
        {"sl_order", "Slordno", "RtnQty", "sl_RtnDtl", "returned"},
        {"Po_Order", "PoNo", "RtnQty", "Po_RtnDtl", "returned"},
    };
    for (const auto& [order, number, qty, lines, what] : carriedOut)
        rules.push_back(
            {QStringLiteral("%1 lines' %2 quantity").arg(QLatin1String(order), QLatin1String(what)),
             QStringLiteral("select o.%2, d.PartNo from %1 o join %1Dtl d on d.RefNo = o.RefNo where abs(d.%3 - "
                            "(select coalesce(sum(r.Qty * r.slsize / r.Factor), 0) from %4 r where r.%2 = o.%2 "
                            "and r.PartNo = d.PartNo)) > 0.0001")
                 .arg(QLatin1String(order), QLatin1String(number), QLatin1String(qty), QLatin1String(lines))});
    const char* const priced[][2] = {{"sl_order", "OrderQty"}, {"sl_ship", "Qty"},       {"sl_Rtn", "Qty"},
                                     {"sl_ComSum", "Qty"},     {"Po_Order", "OrderQty"}, {"Po_Recv", "Qty"},
                                     {"Po_Rtn", "Qty"},        {"Po_SubClose", "Qty"}};
    for (const auto& [header, qty] : priced) {
        rules.push_back(
            {QStringLiteral("%1 amount").arg(QLatin1String(header)),
             QStringLiteral(
                 "select h.RefNo from %1 h where abs(h.Amount - (select sum(d.%2 * d.Price) from "
                 "%1Dtl d where d.RefNo = h.RefNo)) > 0.005 or abs(h.Amount - h.SlAmt - h.TaxAmt) > 0.005")
                 .arg(QLatin1String(header), QLatin1String(qty))});
    }
    expectNoneBroken(rules);
}

// Every stock line of a posted note, as the movement ledger must record it.
struct Movement {
    const char* billIds;  // ledger rows of these bill types
    const char* lines;    // note line table
    const char* header;
    const char* condition;  // on header h and line d
    const char* location;
    const char* direction;  // batchType
    const char* quantity;   // in the part's unit
};

// A line's quantity in the part's unit.
constexpr const char* kLineQty = "d.Qty * d.slsize / d.Factor";
const Movement kMovements[] = {
    {"3010", "st_Inet", "St_InHead", "h.BillId = 3010", "d.ToLoc", "I", kLineQty},
    {"3130", "st_Inet", "St_InHead", "h.BillId = 3130", "d.FromLoc", "O", kLineQty},
    {"3130", "st_Inet", "St_InHead", "h.BillId = 3130", "d.ToLoc", "I", kLineQty},
    {"3400", "st_checkdtl", "St_check", "d.diffQty < 0", "d.Location", "C", "-d.diffQty"},
    {"3400", "st_checkdtl", "St_check", "d.diffQty > 0", "d.Location", "I", "d.diffQty"},
    {"2020", "Po_RecvDtl", "Po_Recv", "1 = 1", "d.ToLoc", "I", kLineQty},
    {"6040, 6060", "pm_IssWipDtl", "pm_IssWip", "1 = 1", "d.FromLoc", "O", kLineQty},
    {"6050", "pm_IssWipRtnDtl", "pm_IssWipRtn", "1 = 1", "d.ToLoc", "I", kLineQty},
    {"6080", "pm_FinRepDtl", "pm_FinRep", "1 = 1", "d.ToLoc", "I", kLineQty},
    {"1020", "sl_ShipDtl", "sl_ship", "1 = 1", "d.FromLoc", "O",
     "(d.Qty + d.LargessQty) * d.slsize / d.Factor"},
    {"1030", "sl_RtnDtl", "sl_Rtn", "1 = 1", "d.ToLoc", "I", kLineQty},
    {"1610", "sl_OutDtl", "sl_Out", "1 = 1", "d.FromLoc", "O", kLineQty},
    {"2030", "Po_RtnDtl", "Po_Rtn", "1 = 1", "d.FromLoc", "O", kLineQty},
    {"2110", "Po_StkInDtl", "Po_StkIn", "1 = 1", "d.ToLoc", "I", kLineQty},
    {"2120", "Po_StkRtnDtl", "Po_StkRtn", "1 = 1", "d.FromLoc", "O", kLineQty},
    {"1620", "sl_OutRtnDtl", "sl_OutRtn", "1 = 1", "d.ToLoc", "I", kLineQty},
};

TEST_F(SampleData, StockLedgerRecordsEveryStockLineAndAddsUpToOnHand) {
    std::vector<Rule> rules;
    QStringList covered;
    for (const Movement& m : kMovements) {
        const QString fromLines =
            QStringLiteral(
                "select d.RefNo, d.LineId, d.PartNo, %1, d.BatchNo, d.LotNo, round(%2, 4) "
                "from %3 d join %4 h on h.RefNo = d.RefNo where h.flag = '2' and %5")
                .arg(QLatin1String(m.location), QLatin1String(m.quantity), QLatin1String(m.lines),
                     QLatin1String(m.header), QLatin1String(m.condition));
        const QString fromLedger =
            QStringLiteral(
                "select RefNo, LineId, PartNo, Location, BatchNo, LotNo, round(Qty, 4) from st_partRec "
                "where BillId in (%1) and batchType = '%2' and RefNo in (select RefNo from %3)")
                .arg(QLatin1String(m.billIds), QLatin1String(m.direction), QLatin1String(m.header));
        const QString what =
            QStringLiteral("%1 %2 %3")
                .arg(QLatin1String(m.lines), QLatin1String(m.location), QLatin1String(m.direction));
        rules.push_back({what + QStringLiteral(" not in the ledger"),
                         fromLines + QStringLiteral(" except ") + fromLedger});
        rules.push_back({what + QStringLiteral(" ledger rows without a line"),
                         fromLedger + QStringLiteral(" except ") + fromLines});
        covered << QLatin1String(m.billIds);
    }
    rules.push_back({"ledger rows of other bill types",
                     QStringLiteral("select BillId, RefNo from st_partRec where BillId not in (%1)")
                         .arg(covered.join(", "))});
    rules.push_back(
        {"on-hand against the ledger",
         "with ledger as (select PartNo, BatchNo, LotNo, Location, sum(case when batchType = 'I' then Qty "
         "else -Qty end) as Qty from st_partRec group by PartNo, BatchNo, LotNo, Location) "
         "select o.PartNo, o.BatchNo, o.LotNo, o.Location from St_onhand o left join ledger l on "
         "l.PartNo = o.PartNo and l.BatchNo = o.BatchNo and l.LotNo = o.LotNo and l.Location = o.Location "
         "where l.Qty is null or abs(l.Qty - o.Qty) > 0.0001 union all select l.PartNo, l.BatchNo, l.LotNo, "
         "l.Location from ledger l where l.Qty <> 0 and not exists (select 1 from St_onhand o where "
         "o.PartNo = l.PartNo and o.BatchNo = l.BatchNo and o.LotNo = l.LotNo and o.Location = l.Location)"});
    expectNoneBroken(rules);
}

TEST_F(SampleData, BatchesLotsAndSerialsFollowTheirParts) {
    expectNoneBroken({
        {"picker rows mirror on-hand",
         "select PartNo, BatchNo, LotNo, Location, Qty from St_onhand except select PartNo, BatchNo, LotNo, "
         "Location, "
         "Qty from st_OnHandAndBatchNoAndLotNo union all select PartNo, BatchNo, LotNo, Location, Qty from "
         "st_OnHandAndBatchNoAndLotNo except select PartNo, BatchNo, LotNo, Location, Qty from St_onhand"},
        {"picker rows carry their lot's date",
         "select b.PartNo, b.LotNo from st_OnHandAndBatchNoAndLotNo b left join st_Lot l on l.PartNo = "
         "b.PartNo and l.LotNo = b.LotNo where coalesce(l.EffectDate, '') <> coalesce(b.EffectDate, '')"},
        {"lots in stock are known",
         "select PartNo, LotNo from St_onhand o where LotNo <> '00' and not exists "
         "(select 1 from st_Lot l where l.PartNo = o.PartNo and l.LotNo = o.LotNo)"},
        {"lot control",
         "select o.PartNo, o.LotNo from St_onhand o join Bs_ProdList p on p.PartNo = o.PartNo "
         "where (p.bLotProc = 1) <> (o.LotNo <> '00')"},
        {"batch control",
         "select o.PartNo, o.BatchNo from St_onhand o join Bs_ProdList p on p.PartNo = o.PartNo "
         "where (p.bBatchProc = 1) <> (o.BatchNo <> '')"},
        {"expiring lots have a date",
         "select l.PartNo, l.LotNo from st_Lot l join Bs_ProdList p on p.PartNo = l.PartNo "
         "where p.bEffectProc = 1 and l.EffectDate is null"},
        {"serials in stock match on-hand",
         "select o.PartNo, o.Location from St_onhand o join Bs_ProdList p on p.PartNo = o.PartNo where "
         "p.SerialControl = 1 and o.Qty <> (select count(*) from St_PartSerial s where s.PartNo = o.PartNo and "
         "s.Location = o.Location)"},
        {"serials only for serial parts",
         "select s.SerialNo from St_PartSerial s join Bs_ProdList p on "
         "p.PartNo = s.PartNo where p.SerialControl = 0"},
        {"below zero only where allowed",
         "select o.PartNo, o.Location from St_onhand o join Bs_Location l on "
         "l.StkNo = o.Location where o.Qty < 0 and l.AllowNeg = 0"},
        {"a location that may go below zero",
         "select 1 where not exists (select 1 from Bs_Location where AllowNeg = 1)"},
        {"a location that may not",
         "select 1 where not exists (select 1 from Bs_Location where AllowNeg = 0)"},
    });
}

// Component expansion walks parent-child pairs without a guard against cycles.
TEST_F(SampleData, BillsOfMaterialsFormATreeSeveralLevelsDeep) {
    expectNoneBroken({
        {"a part among its own components",
         "with recursive below(top, part, depth) as (select ProdNo, CompNo, 1 from en_bom union "
         "select b.top, e.CompNo, b.depth + 1 from below b join en_bom e on e.ProdNo = b.part "
         "where b.depth < 50) select distinct top from below where part = top or depth >= 50"},
        {"a bill of more than one level",
         "select 1 where not exists (select 1 from en_bom a join en_bom b on b.ProdNo = a.CompNo)"},
    });
}

TEST_F(SampleData, PeriodsCloseInOrderAroundOneOpeningPeriod) {
    expectNoneBroken({
        {"one opening period", "select count(*) from Ac_AccYm where iniFlag = 1 having count(*) <> 1"},
        {"the twelve months of 2006",
         "select count(*) from Ac_AccYm where Period between 200601 and 200612 having count(*) <> 12"},
        {"a closed month of 2006",
         "select 1 where not exists (select 1 from Ac_AccYm where Period > 200600 and AcctStatus = 1)"},
        {"an open month", "select 1 where not exists (select 1 from Ac_AccYm where AcctStatus = 0)"},
        {"no closed month after an open one",
         "select p.Period from Ac_AccYm p where p.AcctStatus = 1 and exists "
         "(select 1 from Ac_AccYm q where q.Period < p.Period and q.AcctStatus = 0)"},
        {"a closed month is closed in every ledger",
         "select Period from Ac_AccYm where AcctStatus <> AcctIni or "
         "AcctStatus <> CustIni or AcctStatus <> storeIni"},
    });
}

// Bill types whose notes the approval records name, with their header table and number.
struct BillType {
    int billId;
    const char* header;
    const char* number;
    const char* condition;  // on the header, for types that share a table
};
const BillType kBillTypes[] = {
    {1010, "sl_order", "Slordno", "1 = 1"},
    {1020, "sl_ship", "NoteNo", "1 = 1"},
    {2010, "Po_Order", "PoNo", "1 = 1"},
    {2020, "Po_Recv", "RecvNo", "1 = 1"},
    {3010, "St_InHead", "NoteNo", "h.BillId = 3010"},
    {3130, "St_InHead", "NoteNo", "h.BillId = 3130"},
    {3400, "St_check", "NoteNo", "1 = 1"},
    {5020, "pl_jbmain", "JobNo", "1 = 1"},
    {6040, "pm_IssWip", "NoteNo", "1 = 1"},
    {6050, "pm_IssWipRtn", "NoteNo", "1 = 1"},
    {6060, "pm_IssWip", "NoteNo", "1 = 1"},
    {6080, "pm_FinRep", "NoteNo", "1 = 1"},
    {1030, "sl_Rtn", "NoteNo", "1 = 1"},
    {1610, "sl_Out", "SendNo", "1 = 1"},
    {2030, "Po_Rtn", "NoteNo", "1 = 1"},
    {2110, "Po_StkIn", "ShipNo", "1 = 1"},
    {7040, "Rp_RDisc", "NoteNo", "1 = 1"},
    {7240, "Rp_PDisc", "NoteNo", "1 = 1"},
    {1620, "sl_OutRtn", "NoteNo", "1 = 1"},
    {1630, "sl_ComSum", "NoteNo", "1 = 1"},
    {2120, "Po_StkRtn", "NoteNo", "1 = 1"},
    {2145, "Po_SubClose", "CloseNo", "1 = 1"},
    {7030, "rp_rpay", "NoteNo", "1 = 1"},
    {7230, "rp_PPay", "NoteNo", "1 = 1"},
    {7330, "Rp_bankTrans", "NoteNo", "1 = 1"},
};

TEST_F(SampleData, ApprovalsFollowTheConfiguredLevelsAndApprovers) {
    std::vector<Rule> rules = {
        {"named levels",
         "select BillId from Bs_BillSet b where CheckLevel > 0 and CheckLevel <> (select count(*) from "
         "bs_billcheck c where c.BillId = b.BillId and c.CheckLevel between 1 and b.CheckLevel)"},
        {"an approver per level",
         "select BillId, CheckLevel from bs_billcheck c where not exists (select 1 from "
         "Bs_BillCheckUser u where u.BillId = c.BillId and u.CheckLevel = c.CheckLevel)"},
        {"one record per level",
         "select r.BillId, r.RefNo from Bs_BillCheckRec r join Bs_BillSet b on b.BillId = "
         "r.BillId group by r.BillId, r.RefNo, b.CheckLevel having count(*) <> b.CheckLevel"},
        {"approved by the level's approver",
         "select r.BillId, r.RefNo, r.CheckLevel from Bs_BillCheckRec r where r.Checked = 1 and not exists "
         "(select 1 from Bs_BillCheckUser u where u.BillId = r.BillId and u.CheckLevel = r.CheckLevel and "
         "u.CheckUser = r.CheckUser)"},
        {"a note waiting for approval",
         "select 1 where not exists (select 1 from Bs_BillCheckRec where Checked = 0)"},
    };
    for (const BillType& t : kBillTypes) {
        const QString header = QLatin1String(t.header);
        rules.push_back(
            {QStringLiteral("%1 records name its notes").arg(t.billId),
             QStringLiteral("select RefNo from Bs_BillCheckRec where BillId = %1 and RefNo not in "
                            "(select h.RefNo from %2 h where %3)")
                 .arg(t.billId)
                 .arg(header, QLatin1String(t.condition))});
        rules.push_back(
            {QStringLiteral("%1 posted notes fully approved").arg(t.billId),
             QStringLiteral("select h.RefNo from %2 h join Bs_BillSet b on b.BillId = %1 where h.flag = '2' "
                            "and %3 and b.CheckLevel <> (select count(*) from Bs_BillCheckRec r where "
                            "r.BillId = %1 and r.RefNo = h.RefNo and r.Checked = 1)")
                 .arg(t.billId)
                 .arg(header, QLatin1String(t.condition))});
    }
    expectNoneBroken(rules);
}

TEST_F(SampleData, CountersStandAtTheLastNumbersHandedOut) {
    std::vector<Rule> rules;
    QStringList refNos;
    for (const QString& header : noteHeaders(catalogue_))
        refNos << QStringLiteral("select RefNo from %1").arg(header);
    const QString allRefNos = refNos.join(QStringLiteral(" union all "));
    rules.push_back(
        {"RefNo unique over all notes",
         QStringLiteral("select RefNo from (%1) group by RefNo having count(*) > 1").arg(allRefNos)});
    rules.push_back(
        {"RefNo counter", QStringLiteral("select SeqNo from BillCode where BillId = 0 and SeqNo <> "
                                         "(select max(RefNo) from (%1))")
                              .arg(allRefNos)});
    rules.push_back(
        {"a rule per bill type",
         "select BillId from Bs_BillSet where BillId not in (select BillId from bs_billsetItem)"});
    for (const BillType& t : kBillTypes) {
        // Numbers of the rule's current month: Prefix, yymm, then SeqWidth digits from 1 up.
        const QString ofPeriod =
            QStringLiteral("from %1 h where %2 and h.%3 like r.Prefix || substr(r.CurPeriod, 3, 4) || '%'")
                .arg(QLatin1String(t.header), QLatin1String(t.condition), QLatin1String(t.number));
        rules.push_back(
            {QStringLiteral("%1 counter").arg(t.billId),
             QStringLiteral("select r.CurSeq from bs_billsetItem r where r.BillId = %1 and (r.CurSeq <> "
                            "(select count(*) %2) or r.CurSeq <> coalesce((select max(cast(substr(h.%3, "
                            "length(r.Prefix) + 5) as integer)) %2), 0))")
                 .arg(t.billId)
                 .arg(ofPeriod, QLatin1String(t.number))});
    }
    expectNoneBroken(rules);
}

TEST_F(SampleData, ConfigurationNamesTablesAndColumnsThatExist) {
    auto hasColumn = [&](const QString& table, const QString& column) {
        const auto it = catalogue_.find(table.trimmed().toLower());
        return it != catalogue_.end() && it->second.contains(column.trimmed().toLower());
    };
    for (const QString& row : db_->rows("select RefTableName, RefFieldNameList from s_tabledelCheck")) {
        const QStringList f = row.split(QLatin1Char('|'));
        EXPECT_TRUE(hasColumn(f[0], f[1])) << "guard " << row.toStdString();
    }
    for (const QString& row :
         db_->rows("select RefTableName, RefFieldNameList, RefFieldTypeList from s_TableDelMulCheck")) {
        const QStringList f = row.split(QLatin1Char('|'));
        const QStringList columns = f[1].split(QLatin1Char(','));
        EXPECT_EQ(columns.size(), f[2].split(QLatin1Char(',')).size()) << "types of " << row.toStdString();
        for (const QString& column : columns)
            EXPECT_TRUE(hasColumn(f[0], column)) << "guard " << row.toStdString();
    }
    for (const QString& row : db_->rows("select TableName, FieldName from s_IniField"))
        EXPECT_TRUE(hasColumn(row.section(QLatin1Char('|'), 0, 0), row.section(QLatin1Char('|'), 1, 1)))
            << row.toStdString();

    QSet<QString> allColumns;
    for (const auto& [table, columns] : catalogue_) allColumns += columns;
    for (const QString& field : db_->rows(
             "select sFieldName from s_FieldChDef union select FieldName from "
             "Sy_GridFieldDis union select XField from s_chartshow union select YField from s_chartshow"))
        EXPECT_TRUE(allColumns.contains(field.toLower())) << "no column " << field.toStdString();
}

TEST_F(SampleData, InitialisationCatalogueListsEveryNoteTable) {
    std::map<QString, int> listed;
    for (const QString& row : db_->rows("select TableName, Type from s_tableList"))
        listed[row.section(QLatin1Char('|'), 0, 0).toLower()] = row.section(QLatin1Char('|'), 1, 1).toInt();
    for (const auto& [table, type] : listed) {
        EXPECT_TRUE(catalogue_.count(table)) << "no table " << table.toStdString();
        // The check for notes that were entered asks every type 1 table for its flag.
        if (type == 1) EXPECT_TRUE(catalogue_[table].contains(QStringLiteral("flag"))) << table.toStdString();
    }
    for (const QString& header : noteHeaders(catalogue_))
        EXPECT_EQ(listed[header], 1) << header.toStdString();
    for (const QString& lines : noteLines(catalogue_)) EXPECT_EQ(listed[lines], 2) << lines.toStdString();
}

// A part, customer, vendor or location may not be deleted while anything names it: some
// guard must look at every column that can hold one (the picker copy of on-hand and the
// ledger follow the notes, whose guards already hold).
TEST_F(SampleData, DeletionGuardsCoverEveryPlaceACodeIsKept) {
    const QHash<QString, QString> guardKeyOfMaster = {
        {QStringLiteral("Bs_ProdList"), QStringLiteral("PartNo")},
        {QStringLiteral("Bs_Customer"), QStringLiteral("CustNo")},
        {QStringLiteral("Bs_Vendor"), QStringLiteral("VendNo")},
        {QStringLiteral("Bs_Location"), QStringLiteral("StkNo")}};
    QSet<QString> guarded;
    for (const QString& row :
         db_->rows("select KeyFieldsList, RefTableName, RefFieldNameList from s_tabledelCheck"))
        guarded << row.toLower();
    for (const auto& [table, code] : codeUses(catalogue_)) {
        const QString key = guardKeyOfMaster.value(QLatin1String(code->master));
        if (key.isEmpty() || table.startsWith(QLatin1String("st_onhandand")) ||
            table == QLatin1String("st_partrec"))
            continue;
        const QString column = QLatin1String(code->column);
        EXPECT_TRUE(guarded.contains(QStringLiteral("%1|%2|%3").arg(key, table, column).toLower()))
            << key.toStdString() << " kept in " << table.toStdString() << "." << column.toStdString();
    }
}

// The loader's promise: the sample goes in whole or not at all, with a message naming the
// script and statement that failed.
struct LoadCase {
    const char* name;
    std::vector<std::pair<const char*, const char*>> scripts;  // file under mssql/, text
    const char* messagePart;
};

TEST(SampleDataLoader, LoadsAllOrNothing) {
    const std::vector<LoadCase> cases = {
        {"unknown column in a later script",
         {{"01_a.sql", "insert into Bs_Depart (DepartNo, DepartName) values ('T1', N'试制部')\ngo\n"},
          {"02_b.sql", "insert into Bs_Depart (DepartNo, NoSuchColumn) values ('T2', 'x')\ngo\n"}},
         "02_b.sql: insert into Bs_Depart (DepartNo, NoSuchColumn)"},
        {"key given twice",
         {{"01_a.sql",
           "insert into Bs_Depart (DepartNo, DepartName) values ('T1', N'试制部')\ngo\n"
           "insert into Bs_Depart (DepartNo, DepartName) values ('T1', N'试制二部')\ngo\n"}},
         "01_a.sql: insert into Bs_Depart (DepartNo, DepartName) values ('T1', N'试制二部')"},
        {"no scripts", {}, "no sample data scripts"},
    };
    for (const LoadCase& c : cases) {
        SCOPED_TRACE(c.name);
        QTemporaryDir dir;
        ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("mssql")));
        for (const auto& [name, text] : c.scripts) {
            QFile file(dir.filePath(QStringLiteral("mssql/") + QLatin1String(name)));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(text);
        }
        MemoryDb db;
        applySchema(db.conn, defaultSchemaDirectory());
        try {
            applySampleData(db.conn, dir.path());
            ADD_FAILURE() << "loaded";
        } catch (const SchemaError& e) {
            EXPECT_TRUE(QString::fromUtf8(e.what()).contains(QString::fromUtf8(c.messagePart))) << e.what();
        }
        EXPECT_EQ(db.count(QStringLiteral("Bs_Depart")), 0);
    }
}

TEST(SampleDataLoader, LoadingTwiceFailsOnTheKeysAndKeepsTheFirstLoad) {
    MemoryDb db;
    applySchema(db.conn, defaultSchemaDirectory());
    applySampleData(db.conn, defaultSampleDirectory());
    const QStringList tables = {QStringLiteral("bs_paralistB"), QStringLiteral("sl_ShipDtl"),
                                QStringLiteral("St_onhand")};
    std::vector<qint64> before;
    for (const QString& t : tables) before.push_back(db.count(t));
    EXPECT_THROW(applySampleData(db.conn, defaultSampleDirectory()), SchemaError);
    for (size_t i = 0; i < tables.size(); ++i)
        EXPECT_EQ(db.count(tables[int(i)]), before[i]) << tables[int(i)].toStdString();
}

TEST(SampleDataLoader, BatchesComeInScriptOrderWithTheirOrigin) {
    const std::vector<SchemaBatch> batches = sampleDataBatches(defaultSampleDirectory());
    ASSERT_FALSE(batches.empty());
    EXPECT_TRUE(batches.front().origin.startsWith(QLatin1String("01_")))
        << batches.front().origin.toStdString();
    QString previous;
    for (const SchemaBatch& b : batches) {
        const QString script = b.origin.section(QLatin1Char(':'), 0, 0);
        EXPECT_LE(previous, script);
        previous = script;
        // Data only: inserts that SQL Server 2000 accepts, one row each.
        for (const QString& line : b.text.split(QLatin1Char('\n'))) {
            const QString t = line.trimmed();
            if (t.isEmpty() || t.startsWith(QLatin1String("--"))) continue;
            EXPECT_TRUE(t.startsWith(QLatin1String("insert into ")) &&
                        t.contains(QLatin1String(") values (")) && t.endsWith(QLatin1Char(')')) &&
                        !t.contains(QLatin1String("), (")))
                << b.origin.toStdString() << ": " << t.toStdString();
        }
    }
}

// `kivdb init --sample`: the schema and the sample in a new file, or no file at all.
TEST(SampleDataLoader, InitWithSampleFillsTheNewDatabaseOrLeavesNone) {
    QTemporaryDir dir;
    const QString brokenTree = dir.filePath(QStringLiteral("broken"));
    QDir().mkpath(brokenTree + QStringLiteral("/mssql"));
    QDir().mkpath(brokenTree + QStringLiteral("/sample/mssql"));
    const std::pair<const char*, const char*> brokenScripts[] = {
        {"mssql/01_bs.sql", "create table Bs_Depart (DepartNo varchar(20) not null primary key)\ngo\n"},
        {"sample/mssql/01_bs.sql", "insert into Bs_Depart (DepartNo, DepartName) values ('D01', N'总经办')\ngo\n"},
    };
    for (const auto& [name, text] : brokenScripts) {
        QFile file(QDir(brokenTree).filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    struct Case {
        const char* name;
        QStringList initArgs;
        int exitCode;
        const char* customer;  // C001's name afterwards; null: no database left
    };
    const Case cases[] = {
        {"with the sample", {QStringLiteral("--sample")}, 0, "南京江宁起重运输设备有限公司"},
        {"without it", {}, 0, ""},
        {"a sample the schema cannot take", {QStringLiteral("--schema"), brokenTree, QStringLiteral("--sample")}, 1,
         nullptr},
    };
    auto run = [](const QStringList& args) {
        QProcess process;
        process.start(QStringLiteral(KIVDB_CLI_PATH), args);
        EXPECT_TRUE(process.waitForFinished(60000)) << args.join(' ').toStdString();
        return std::make_pair(process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()).trimmed());
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const QString db = dir.filePath(QLatin1String(c.name) + QStringLiteral(".kivdb"));
        EXPECT_EQ(run(QStringList{QStringLiteral("init"), QStringLiteral("--db"), db} + c.initArgs).first,
                  c.exitCode);
        EXPECT_EQ(QFileInfo::exists(db), c.customer != nullptr);
        if (!c.customer) continue;
        EXPECT_EQ(run({QStringLiteral("sql"), QStringLiteral("--db"), db,
                       QStringLiteral("select CustName from Bs_Customer where CustNo = 'C001'")})
                      .second,
                  QString::fromUtf8(c.customer));
    }
}

}  // namespace
}  // namespace kivdb::integrity
