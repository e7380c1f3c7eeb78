#pragma once
// Exporting a dataset to a spreadsheet file from a form: the user chooses the file, a
// progress dialog with a cancel button shows while a long export runs, and the finished file
// opens in the desktop's spreadsheet application.
#include "platform/dataset.h"

namespace kivdb {

// Choosing no file exports nothing and raises nothing. Throws Error (kSpreadsheetExportFailed)
// when there is no GUI application, when the export fails or is cancelled (no file is left),
// and when the desktop cannot open the file (which then stays).
void DataSetExportToExcel(DataSet& dataSet);

}  // namespace kivdb
