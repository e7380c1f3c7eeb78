#pragma once
// The statements that read the installation's parameters from the three name/value tables
// (switches, numbers, texts), for the rows of the reference-data export table.
#include <QString>

namespace kivdb {

// "select <column> from <table> where ParFieldName = '<name>'".
QString parameterStatement(const char* column, const char* table, const char* name);

// A switch's statement: its value in the switch table, written with two leading blanks. Two
// switches spell the table in lower case; the server compares names without regard to case.
QString switchStatement(const char* name, const char* table = "bs_paralistB");

// The number parameter holding the decimal places of a kind of quantity: 0 quantity, 1 price,
// 2 amount, 3 usage per unit, 4 cost, 5 voucher; empty for any other kind.
QString digitParameter(int kind);

}  // namespace kivdb
