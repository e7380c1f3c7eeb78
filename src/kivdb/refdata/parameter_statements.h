#pragma once
// The statements of the reference-data export table: the installation's parameters in the
// three name/value tables (switches, numbers, texts), a master row's column by its code, and
// a note line's column by its note and line.
#include <QString>

namespace kivdb {

// "select <column> from <table> where <key> = '<code>'". Throws ValueError when the code holds
// a quote.
QString codeStatement(const char* column, const char* table, const char* key, const QString& code);

// "select <column> from <table> where ParFieldName = '<name>'".
QString parameterStatement(const char* column, const char* table, const char* name);

// A switch's statement: its value in the switch table, written with two leading blanks. Two
// switches spell the table in lower case; the server compares names without regard to case.
QString switchStatement(const char* name, const char* table = "bs_paralistB");

// The number parameter holding the decimal places of a kind of quantity: 0 quantity, 1 price,
// 2 amount, 3 usage per unit, 4 cost, 5 voucher; empty for any other kind.
QString digitParameter(int kind);

// " select <select list> from <table> where RefNo = <refNo> and LineId = <lineId>": one figure
// of one line of a note.
QString lineStatement(const char* selectList, const char* table, int refNo, int lineId);

}  // namespace kivdb
