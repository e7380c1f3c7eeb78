// The figures of a note line: each export reads its own line of its own table, and a missing
// line or a null value gives the default.
#include "kivdb/exports.h"
#include "testing/answers.h"
#include "testing/suite_database.h"

#include <gtest/gtest.h>

namespace kivdb {
namespace {

using testing::Answer;
using testing::answer;

TEST(NoteLineLookups, EachExportReadsItsLine) {
    using Line = std::function<Answer(int, int)>;
    auto line = [](auto ask) -> Line { return [ask](int refNo, int lineId) { return answer(ask, refNo, lineId); }; };
    const struct {
        Line ask;
        const char* table;
        const char* columns;
        const char* values;  // of line 2 of note 1
        const char* expected;
        const char* unset;  // for a missing line and for null columns
    } cases[] = {
        {line(GetPartOrderQty), "sl_orderDtl", "OrderQty", "7.5", "7.5", "0"},
        {line(GetPartShippedQty), "sl_orderDtl", "ShipQty", "7.5", "7.5", "0"},
        {line(GetShipNoPartQty), "sl_ShipDtl", "Qty", "7.5", "7.5", "0"},
        {line(GetShipNoPartInvQty), "sl_ShipDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetSlRtnNoPartQty), "sl_RtnDtl", "Qty", "7.5", "7.5", "0"},
        {line(GetRecvNoPartQty), "po_RecvDtl", "Qty", "7.5", "7.5", "0"},
        {line(GetRecvNoPartInvQty), "po_RecvDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetSubFinQty), "pm_FinRepDtl", "Qty", "7.5", "7.5", "0"},
        {line(GetSubFinInvQty), "pm_FinRepDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetPoRtnNoPartInvQty), "Po_RtnDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetPoRtnNoPartQty), "Po_RtnDtl", "Qty", "7.5", "7.5", "0"},
        {line(GetSlRtnPartInvQty), "sl_RtnDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetRDiscInvQty), "rp_RDiscDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetPDiscInvQty), "rp_PDiscDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetSlComSumQty), "sl_ComSumDtl", "Qty", "7.5", "7.5", "0"},
        {line(GetSlComSumInvQty), "sl_ComSumDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetPoSubCloseQty), "Po_SubCloseDtl", "Qty", "7.5", "7.5", "0"},
        {line(GetPoSubCloseInvQty), "Po_SubCloseDtl", "InvQty", "7.5", "7.5", "0"},
        {line(GetOrderProdNo), "sl_orderDtl", "PartNo", "'P1'", "P1", ""},
        {line(GetOrderProdVersion), "sl_orderDtl", "Version", "'V2'", "V2", ""},
        // More shipped than ordered: the server's negative difference.
        {line(GetPartUnShipQty), "sl_orderDtl", "OrderQty, ShipQty", "2, 5", "-3", "0"},
        // A null shipped quantity leaves nothing to ship, not the ordered quantity.
        {line(GetPartUnShipQty), "sl_orderDtl", "OrderQty, ShipQty", "7, null", "0", "0"},
        {line(GetOrderPartRtnQty), "sl_orderDtl", "RtnQty", "7.5", "7.5", "0"},
        {line(GetOrderPartRtnShipQty), "sl_orderDtl", "RtnShipQty", "7.5", "7.5", "0"},
        {line(GetPartUnRtnShipQty), "sl_orderDtl", "RtnQty, RtnShipQty", "7, 2", "5", "0"},
        {line(GetPoPartOrderQty), "Po_orderDtl", "OrderQty", "7.5", "7.5", "0"},
        {line(GetStkInPartUnDisQty), "Po_StkInDtl", "Qty, RtnQty, DisQty", "9, 2, 3", "4", "0"},
        {line(GetStkInPartShipQty), "Po_StkInDtl", "Qty", "7.5", "7.5", "0"},
        {line(GetStkInPartDisQty), "Po_StkInDtl", "DisQty", "7.5", "7.5", "0"},
        {line(GetStkInPartRtnQty), "Po_StkInDtl", "RtnQty", "7.5", "7.5", "0"},
        {line(GetStkInPartUnRtnQty), "Po_StkInDtl", "Qty, RtnQty, DisQty", "9, 2, 3", "4", "0"},
        {line(GetPoPartReceivedQty), "Po_orderDtl", "RecvQty", "7.5", "7.5", "0"},
        {line(GetPoPartRtnQty), "Po_orderDtl", "RtnQty", "7.5", "7.5", "0"},
        {line(GetPoPartRtnRecvQty), "Po_orderDtl", "RtnRecvQty", "7.5", "7.5", "0"},
        {line(GetPartUnRecvQty), "Po_orderDtl", "OrderQty, RecvQty", "7, 2", "5", "0"},
        {line(GetPartUnRtnRecvQty), "Po_orderDtl", "RtnQty, RtnRecvQty", "7, 2", "5", "0"},
        {line(PoItemDueShipDate), "Po_orderDtl", "shipDate", "'2026-03-04'", "46085", "0"},
    };
    testing::SuiteDatabaseFile file;
    const auto conn = file.connect();
    conn->begin();  // every case's writes in one transaction: committing each to the file takes seconds
    for (const auto& c : cases) {
        const QString table = QString::fromLatin1(c.table);
        const QStringList columns = QString::fromLatin1(c.columns).split(", ");
        SCOPED_TRACE(std::string(c.table) + " " + c.columns + " = " + c.values);
        conn->execute("delete from " + table);
        // Neighbours of the line, with nothing in the columns, come first: only the line itself counts.
        const QString nulls = QStringList(columns.size(), "null").join(", ");
        conn->execute(QStringLiteral("insert into %1 (RefNo, LineId, %2) values (1, 1, %3), (0, 2, %3), (1, 2, %4)")
                          .arg(table, columns.join(", "), nulls, QString::fromLatin1(c.values)));
        EXPECT_EQ(c.ask(1, 2)(*conn), c.expected);
        EXPECT_EQ(c.ask(1, 3)(*conn), c.unset);
        conn->execute("update " + table + " set " + columns.join(" = null, ") + " = null");
        EXPECT_EQ(c.ask(1, 2)(*conn), c.unset);
    }
    conn->rollback();
}

}  // namespace
}  // namespace kivdb
