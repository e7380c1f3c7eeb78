// Document numbering: the reference number of a new note, stamped on its header and lines.
#include "kivdb/exports.h"

namespace kivdb {

// The counter is set to CurSeqNo + 1, not incremented: two callers holding the same value
// both write and stamp the same number. The master row is left in the caller's edit state.
// The detail ends on its first row, whichever row was current before.
void updateTableRefNo(Connection& Conn, DataSet& Master, DataSet& Detail, int CurSeqNo) {
    const QString refNo = QString::number(CurSeqNo + 1);
    ExecTmpQuery(Conn, " update BillCode set SeqNo = " + refNo + " where BillId = 0 ");
    Master.fieldByName(QStringLiteral("refNo")).setAsString(refNo);
    if (&Detail == &Master) return;

    Detail.first();
    const Bookmark firstRow = Detail.bookmark();
    Detail.disableControls();
    const auto restore = [&] {
        if (firstRow) {
            Detail.gotoBookmark(firstRow);
            Detail.releaseBookmark(firstRow);
        }
        Detail.enableControls();
    };
    try {
        for (; !Detail.eof(); Detail.next()) {
            Detail.edit();
            Detail.fieldByName(QStringLiteral("RefNo")).setAsString(refNo);
            Detail.post();
        }
    } catch (...) {
        restore();
        throw;
    }
    restore();
}

}  // namespace kivdb
