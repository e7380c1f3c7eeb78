#pragma once
// For the connection tests: an empty database file, a table with every field type, and what
// a failing call says.
#include "platform/connection.h"

#include <QFile>
#include <QTemporaryDir>

#include <clocale>
#include <string>

namespace kivdb::testing {

// Every field type, declared as the DDL translator writes the suite's types: for a
// connection that runs SQLite's own DDL (the SQLite ODBC driver).
inline constexpr const char* kNoteTable =
    "create table note (code nvarchar(20) not null primary key, qty int, amount money_real, "
    "price decimal_real(18,4), rate float, made datetime_text, posted bit)";
// The same table in the suite's T-SQL, for the embedded connection, which translates it.
inline constexpr const char* kNoteTableTsql =
    "create table note (code nvarchar(20) not null primary key, qty int, amount money, "
    "price decimal(18,4), rate float, made datetime, posted bit)";

// An empty database file (an empty file is an empty SQLite database) in a directory of its
// own, removed with it.
struct TemporaryDatabase {
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("erp.db"));

    TemporaryDatabase() { QFile(path).open(QIODevice::WriteOnly); }
};

// unixODBC converts wide text for a narrow-character driver, as the SQLite ODBC driver is,
// through the locale's character set; a Qt application runs with it as UTF-8.
inline void useUtf8Locale() { std::setlocale(LC_ALL, "C.UTF-8"); }

// The message of the DatabaseError the action raises, or "(no error)". A std::string, so a
// failed comparison prints readable text.
template <typename Action>
std::string databaseErrorOf(Action&& action) {
    try {
        action();
    } catch (const DatabaseError& e) {
        return e.message().toStdString();
    }
    return "(no error)";
}

}  // namespace kivdb::testing
