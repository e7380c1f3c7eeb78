#pragma once
// Pieces both backends share: reading a column's field type from its declared type name,
// date-time text, and the transaction errors.
#include "platform/connection.h"

#include <optional>

namespace kivdb {

// The field type a declared type name stands for (T-SQL spelling or the embedded
// database's translated one); nullopt when the name says nothing the suite knows.
std::optional<FieldType> fieldTypeFromTypeName(const QString& typeName);

// "yyyy-mm-dd[ hh:mm[:ss[.fff]]]" (a 'T' between date and time is accepted too) as a
// local date-time; an invalid QDateTime when the text is not such a date.
QDateTime parseDateTimeText(const QString& text);

// The errors of begin/commit/rollback in the wrong state, worded alike on both backends.
DatabaseError transactionAlreadyOpen();
DatabaseError noTransactionToCommit();
DatabaseError noTransactionToRollBack();

}  // namespace kivdb
