#pragma once
// Rows written to a spreadsheet file (.xlsx) as a grid shows them: a header row of display
// labels, then one row per record with numbers, dates and truth values as the spreadsheet's
// own, numbers in their display format. Rows stream to disk as they come, so a long result
// costs disk space, not memory.
#include "platform/connection.h"
#include "platform/dataset.h"

#include <functional>

namespace kivdb {

// Told the rows written so far and the rows in all (-1 when not known before the end): at
// the start, every few hundred rows and at the end. Answering false cancels the export.
using ExportProgress = std::function<bool(qint64 written, qint64 total)>;

// What every failed export raises (an Error keeping the kind of its cause, Database when
// it had none), a cancelled one included.
inline constexpr const char kSpreadsheetExportFailed[] = "转入到EXCEL文件失败，请检查系统中是否已经安装EXCEL";

// The visible fields of an active dataset, in field order, every row from the first, to
// `path` (an existing file is replaced). Moving through the rows posts a pending edit, as
// any navigation does; controls stay disabled meanwhile and the current row is restored.
// A dataset that reads on demand reads and keeps every row, as recordCount does: for a
// long result, export a cursor instead.
// The file is written beside `path` and renamed into place when complete: on failure
// nothing is left and an existing file stays as it was. Throws Error (kSpreadsheetExportFailed).
void DataSetExportToExcel(DataSet& dataSet, const QString& path, const ExportProgress& progress = {});

// Every column of the cursor's remaining rows, labelled by column name, typed and formatted
// as a dataset's fields would be. Throws Error (kSpreadsheetExportFailed) as above.
void exportCursorToSpreadsheet(Cursor& cursor, const QString& path, const ExportProgress& progress = {});

}  // namespace kivdb
