#pragma once
// Pieces both backends share: reading a column's field type from its declared type name,
// date-time text, and the transaction errors.
#include "dialect/dialect.h"
#include "platform/connection.h"

#include <algorithm>
#include <optional>

namespace kivdb {

// The field type a declared type name stands for (T-SQL spelling or the embedded
// database's translated one); nullopt when the name says nothing the suite knows.
std::optional<FieldType> fieldTypeFromTypeName(const QString& typeName);
// The field type of a column kind; none for an unknown kind.
std::optional<FieldType> fieldTypeOfColumnKind(dialect::ColumnKind kind);

// "yyyy-mm-dd[ hh:mm[:ss[.fff]]]" (a 'T' between date and time is accepted too) as a
// local date-time; an invalid QDateTime when the text is not such a date.
QDateTime parseDateTimeText(const QString& text);

// What running a text of one or more statements answered.
struct TextOutcome {
    RowSet rows;          // of the last statement (or result) that returned rows
    qint64 changed = -1;  // rows changed by all of them; -1 when none could change any

    void addChanged(qint64 count) { changed = std::max<qint64>(changed, 0) + count; }
};

// A cursor handing out rows already read.
std::unique_ptr<Cursor> cursorOverRows(RowSet rows);

// The errors of begin/commit/rollback in the wrong state, worded alike on both backends.
DatabaseError transactionAlreadyOpen();
DatabaseError noTransactionToCommit();
DatabaseError noTransactionToRollBack();

}  // namespace kivdb
