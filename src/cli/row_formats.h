#pragma once
// How `kivdb sql` prints a result: every format keeps a value holding a separator, a line
// break or the text NULL apart from the structure and from SQL NULL.
#include "platform/connection.h"

#include <cstdio>

namespace kivdb::cli {

enum class RowFormat {
    Text,  // no header; a line per row, tab-separated; \t \n \r \\ escaped, NULL, text 'NULL' as \NULL
    Csv,   // RFC 4180: header row, CRLF, quoted when needed; NULL empty, empty text ""
    Json,  // an array of objects keyed by column name, in column order
};

// Writes the cursor's rows as UTF-8 to `out` as they are read, in pieces of about a megabyte,
// so memory stays flat however many rows come: a result that fails after the first piece has
// gone out leaves those rows written before the error. Throws what the cursor throws.
void writeRows(Cursor& rows, RowFormat format, FILE* out);

}  // namespace kivdb::cli
