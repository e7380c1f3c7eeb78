// The master-data lookups that decide something: which exchange rate, which sales price,
// how much is owed, which table holds a kind of note. The plain lookups are rows of the
// reference-data export table.
#include "kivdb/exports.h"

#include "frame/sql_text.h"
#include "platform/oledate.h"

#include <cmath>

namespace kivdb {

namespace {

// A kind of note's header table and document-number column.
struct BillTable {
    int billId;
    const char* table;
    const char* noteField;
};

// 2110 names its numbers ShipNo and 2140 shares the receipt table: both as callers expect.
const BillTable kBillTables[] = {
    {1010, "sl_order", "Slordno"},   {2010, "po_order", "Pono"},    {2020, "Po_Recv", "RecvNo"},
    {2110, "Po_StkIn", "ShipNo"},    {2120, "Po_StkRtn", "NoteNo"}, {2140, "Po_Recv", "RecvNo"},
    {5020, "Pl_Jbmain", "JobNo"},
};

const BillTable* billTable(int billId) {
    for (const auto& t : kBillTables)
        if (t.billId == billId) return &t;
    return nullptr;
}

// What the partner owes from the latest closing entry (type 100) of any partner on, to four
// decimals; the ledger and the partner's column differ between receivables and payables.
double unpaidSum(Connection& conn, const QString& ledger, const QString& partnerField, const QString& partner) {
    const OleDate from = SelTableDateValue(conn, " select isnull(max(refDate),convert(smalldatetime,'1900-01-01')) from " + ledger + " where type=100 ");
    const double sum = SelTableFloatValue(conn, " select Sum(Amount) from " + ledger + " where " + partnerField + " = '" + quotedText(partner) + "'" +
                                                    " and RefDate >= '" + oleDayOf(from).toString(QStringLiteral("yyyy-MM-dd")) + "'");
    return std::round(sum * 10000.0) / 10000.0;
}

}  // namespace

double CurrencyExRate(Connection& Conn, const QString& Currency) {
    const QString condition = " from AC_Currency where Currency = '" + quotedText(Currency) + "'";
    const QString mode = SelTableStringValue(Conn, "select CalMode" + condition).trimmed();
    const double rate = SelTableFloatValue(Conn, (mode == "*" ? "select ExRate" : "select 1/ExRate") + condition);
    return rate == 0 ? 1 : rate;
}

QString ProdSalePrice(Connection& Conn, const QString& CustNo, const QString& PartNo, int, int, int, int, int) {
    double price = 0, taxRate = 0;
    bool taxFlag = false;
    const QString contract = " from bs_CustPrice where CustNo = '" + quotedText(CustNo) + "' and PartNo = '" + quotedText(PartNo) + "'";
    if (!SqlTableIsEmpty(Conn, " select price,taxflag" + contract)) {
        // A contract price stands as agreed: no coefficient, no exchange rate.
        price = SelTableFloatValue(Conn, " select Price" + contract);
        taxFlag = SelTableBooleanValue(Conn, " select taxFlag" + contract);
        taxRate = SelTableFloatValue(Conn, " select taxrate" + contract);
    } else {
        const int priceSys = GetCustSalePriceType(Conn, CustNo);
        const QString system = " from bs_ProdPriceSys where ProdNo = '" + quotedText(PartNo) + "'" + " and PriceSysNo= " + QString::number(priceSys);
        if (priceSys != -1 && !SqlTableIsEmpty(Conn, "select 1 from bs_ProdPriceSys where prodno = '" + quotedText(PartNo) +
                                                         "' and priceSysNo = " + QString::number(priceSys))) {
            price = SelTableFloatValue(Conn, " select Price" + system);
            taxFlag = SelTableBooleanValue(Conn, " select taxflag" + system);
        } else {
            price = SelTableFloatValue(Conn, " select Price from bs_ProdList where PartNo = '" + quotedText(PartNo) + "'");
            taxFlag = IsSalesByTax(Conn);
        }
        // A customer without a coefficient gets 0, and so price 0.
        price = GetCustSalePriceCoeffi(Conn, CustNo) * price / CurrencyExRate(Conn, CustCurrency(Conn, CustNo));
        taxRate = PartTaxRate(Conn, PartNo);
    }
    return QString::number(price, 'g', 15) + "," + QString::number(taxRate, 'g', 15) + (taxFlag ? ",1" : ",0");
}

double CustUnPaySum(Connection& Conn, const QString& CustNo) { return unpaidSum(Conn, "rp_racctRec", "CustNo", CustNo); }

double VendUnPaySum(Connection& Conn, const QString& VendNo) { return unpaidSum(Conn, "rp_PacctRec", "VendNo", VendNo); }

QString GetBillTableName(Connection&, int BillId) {
    const BillTable* t = billTable(BillId);
    return t ? QLatin1String(t->table) : QString();
}

QString GetBillNoteFieldName(Connection&, int BillId) {
    const BillTable* t = billTable(BillId);
    return t ? QLatin1String(t->noteField) : QString();
}

// An unknown kind of note sends the statement without its column and table, and the server's
// refusal reaches the caller.
QString RefNoToNoteNo(Connection& Conn, int BillId, int RefNo) {
    return SelTableStringValue(Conn, "select " + GetBillNoteFieldName(Conn, BillId) + " from " + GetBillTableName(Conn, BillId) +
                                         " where refNo = " + QString::number(RefNo));
}

QString GetPartMaxVersion(Connection& Conn, const QString& ProdNo) {
    const QString version = SelTableStringValue(Conn, "select Max(Version) from En_ProdVersion where ProdNo = '" + quotedText(ProdNo) + "'");
    return version.isEmpty() ? QStringLiteral("1") : version;
}

}  // namespace kivdb
