#pragma once
// Exact numbers on the embedded database. Money and decimal values are stored as the
// nearest double of a decimal rounded to the column's scale; every operation on them
// recovers that decimal (the shortest text that reads back as the double), computes
// exactly, applies the server's result type and answers the nearest double of the result.
// Integers keep the range of their T-SQL type. See DESIGN.md, "Numbers".
#include <QString>
#include <optional>
#include <string_view>

struct sqlite3;

namespace kivdb::dialect {

// mantissa × 10^-scale; the scale is negative for trailing zeros (1e30 is 1, scale -30).
struct Decimal {
    __int128 mantissa = 0;
    int scale = 0;
};

// The decimal a finite double stands for: its shortest round-trip text.
std::optional<Decimal> decimalOfDouble(double d);
// [blanks][+-]digits[.digits][e[+-]digits][blanks]; nothing for anything else.
std::optional<Decimal> decimalOfText(std::string_view text);
// Money text as a number: the server takes commas between the digits before the point
// ('1,234.5' is 1234.5) and ignores where they stand.
QString moneyTextDigits(const QString& text);
// The value with exactly `scale` digits after the point, as the server prints it.
QString decimalText(double value, int scale);

// The functions of the exact arithmetic: tsql_arith, tsql_cast_num, tsql_round,
// tsql_decimal_text and the aggregates tsql_sum and tsql_avg.
void registerNumberFunctions(sqlite3* db);

}  // namespace kivdb::dialect
