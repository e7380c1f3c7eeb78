// Exports that work on a dataset or string list the caller holds: posting, emptying, scans
// for a greatest value, filling a pick list, masking prices. None of them catches an error.
#include "kivdb/exports.h"

#include <algorithm>

namespace kivdb {

int AdoQueryGetMaxSeqNo(DataSet& DataSet, int FieldIndex) {
    int greatest = 0;  // so an empty dataset, or one of negative values only, gives 0
    for (DataSet.first(); !DataSet.eof(); DataSet.next()) greatest = std::max(greatest, DataSet.field(FieldIndex).asInteger());
    return greatest;
}

// Unlike AdoQueryGetMaxSeqNo it starts from the first row's value, so negative values count,
// and it returns to the row that was current.
int AdoQueryGetMaxInteger(DataSet& DataSet, const QString& FieldName) {
    const Bookmark current = DataSet.bookmark();
    DataSet.first();
    if (DataSet.isEmpty()) return 0;
    DataSet.disableControls();
    Field& field = DataSet.fieldByName(FieldName);
    int greatest = field.asInteger();
    for (; !DataSet.eof(); DataSet.next()) greatest = std::max(greatest, field.asInteger());
    DataSet.enableControls();
    DataSet.gotoBookmark(current);
    DataSet.releaseBookmark(current);
    return greatest;
}

OleDate AdoQueryGetMaxDate(DataSet& DataSet, const QString& FieldName) {
    OleDate latest = 0;
    for (DataSet.first(); !DataSet.eof(); DataSet.next()) {
        const OleDate date = DataSet.fieldByName(FieldName).asDateTime();
        if (date > latest) latest = date;
    }
    return latest;
}

void UpdateQueryDtlValue(DataSet& DataSet, const QString& FieldName, const QString& Value) {
    for (DataSet.first(); !DataSet.eof(); DataSet.next()) {
        DataSet.edit();
        DataSet.fieldByName(FieldName).setAsString(Value);
        DataSet.post();
    }
}

void xRunQuery(QueryDataSet& Query, const QString& Sql, bool IsOpen) {
    Query.close();
    Query.setSql(Sql);
    if (IsOpen)
        Query.open();
    else
        Query.execute();
}

// Set-key counts as editing: its key buffer is posted too.
void PostDataSet(DataSet& DataSet) {
    const DataSetState state = DataSet.state();
    if (state == DataSetState::Edit || state == DataSetState::Insert || state == DataSetState::SetKey) DataSet.post();
}

void MasterTableEDit(DataSet& Master, DataSet& Detail) {
    const Bookmark detailRow = Detail.bookmark();
    Master.edit();
    if (detailRow) {
        Detail.gotoBookmark(detailRow);
        Detail.releaseBookmark(detailRow);
    }
}

// The controls come back also when a deletion throws.
void DeleteTable(DataSet& DataSet) {
    if (DataSet.isEmpty()) return;
    DataSet.disableControls();
    try {
        for (DataSet.first(); !DataSet.eof();) DataSet.deleteRecord();
    } catch (...) {
        DataSet.enableControls();
        throw;
    }
    DataSet.enableControls();
}

void SqlAddPickList(Connection& Conn, const QString& Sql, StringList& List) {
    List.clear();
    for (const auto& row : Conn.query(Sql).rows) List.add(fieldText(row.front()));
}

// The query stays open, past its last row.
void QueryItemPickList(QueryDataSet& Query, StringList& List) {
    List.clear();
    Query.close();
    Query.open();
    for (Query.first(); !Query.eof(); Query.next()) List.add(Query.field(0).asString());
}

// Elements before a name that is no numeric field keep their mask.
void DisVisablePrice(DataSet& DataSet, const QVariantList& FieldNames) {
    for (const QVariant& name : FieldNames) {
        Field& field = DataSet.fieldByName(fieldText(name));
        if (!field.isNumeric())
            throw DatabaseError(QStringLiteral("Invalid type cast: field '%1' is not numeric").arg(field.name()),
                                ErrorKind::Value);
        field.displayFormat = QStringLiteral("****");
    }
}

}  // namespace kivdb
