#pragma once
// Spreadsheet files (.xlsx) read back in tests: the file is a zip archive of XML parts, read
// through its central directory and inflated with zlib; a sheet's cells come back as text
// with their type and number format, so a test compares them as strings.
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <map>

namespace kivdb::testing {

// The archive's entries by name; empty when the file is no zip archive.
std::map<QString, QByteArray> readZipEntries(const QString& path);

// The cells of sheet `sheet` (1-based), row by row, each as:
//   'text              a text
//   12.5               a number in the general format
//   12.5 @ #,##0.00    a number with its number format
//   TRUE, FALSE        a truth value
//   (empty)            no cell
// A row ends at its last cell. Empty when the file or the sheet is missing.
QList<QStringList> readSheet(const QString& path, int sheet = 1);

}  // namespace kivdb::testing
