#pragma once
// How `kivdb sql` prints a result: every format keeps a value holding a separator, a line
// break or the text NULL apart from the structure and from SQL NULL.
#include "platform/connection.h"

#include <QByteArray>

namespace kivdb::cli {

enum class RowFormat {
    Text,  // no header; a line per row, tab-separated; \t \n \r \\ escaped, NULL, text 'NULL' as \NULL
    Csv,   // RFC 4180: header row, CRLF, quoted when needed; NULL empty, empty text ""
    Json,  // an array of objects keyed by column name, in column order
};

// The rows as UTF-8, ready for stdout.
QByteArray formatRows(const RowSet& rows, RowFormat format);

}  // namespace kivdb::cli
