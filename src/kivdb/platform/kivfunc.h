#pragma once
// The suite's small utility functions: messages, string lists, periods and dates, the
// registry and the SQL literal texts. Names keep the suite's spelling. The utilities that
// work on forms and show dialogs (SetSysScreen, SetFormPOsition, PickDate) belong to the
// user-interface layer: platform/ui/kivfunc_forms.h and platform/ui/pick_date.h.
//
// Dates are the suite's date-time doubles (platform/oledate.h); 0 means no date.
// Periods are integers year * 100 + month, years 100 to 9999; 0 means no period.
#include "platform/oledate.h"

#include <QString>

namespace kivdb::kivfunc {

// ---- Messages, through the current message sink (platform/message_sink.h) ----
void ShowMsgHint(const QString& text);
void ShowMsgWarn(const QString& text);
void ShowMsgError(const QString& text);
// True when the user answers yes.
bool Confirm(const QString& question);

// ---- String lists ----
// A list is cut at its separator, and every separator ends one piece:
//   "a,,b" has 3 pieces (the middle one empty), ",a" has 2 ("" and "a"),
//   "a,b," has 2 — a trailing separator closes the last piece instead of opening an empty
//   one, so lists built as "x," + "y," read back as written — and "a,b,," has 3 ("a","b","").
//   An empty text has no pieces; an empty separator leaves the whole text as one piece.
// Pieces are answered as they stand, blanks included. An index outside 0..count-1 gives "".
int GetStringIndexCount(const QString& text, const QString& separator);
// The piece at a 0-based index, cut at a single character (the value lists' code "," text).
QString GetStringIndexValue(const QString& text, QChar separator, int index);
// The same cut at a separator of any length; the companion of GetStringIndexCount.
QString GetStringIndexValue2(const QString& text, const QString& separator, int index);

// ---- Periods ----
// The period after `period`, December rolling into January of the next year.
// Not a period (month outside 1..12, year outside 100..9999, 0) or none after it: 0.
int NextPeriod(int period);
// Tax returns are filed month by month, so the tax period after a period is the next month,
// with the same rules as NextPeriod.
int NextTaxPeriod(int period);
// The last day of the period written in decimal (e.g. "200602" -> "2006-02-28"), as
// "yyyy-MM-dd", which GetDateFromString reads back. Text that is no period gives "".
QString GetPeriodLastDateFromSPeriod(const QString& period);

// ---- Dates ----
// Reads "yyyy-MM-dd" (month and day may have one digit; "/" or "." may separate them),
// optionally followed by a time "h:mm", "h:mm:ss" or "h:mm:ss.zzz", or "yyyyMMdd".
// Blank text is no date (0); any other text that is not a date throws DateConversionError.
double GetDateFromString(const QString& text);
// The same day one month later, clipped to the end of a shorter month (01-31 -> 02-28 or
// 02-29); the time of day is kept. No date stays 0. Throws DateConversionError past 9999.
double NextMonthDate(double date);
// Days of the month (Gregorian: 1900 is no leap year, 2000 and 2004 are); 0 for no month.
int MonthMaxDay(int year, int month);
// Parts of a date as the framework decodes it, so the zero date reads as 1899-12-30.
// A value that is no date-time at all (NaN, out of range) gives 0.
int Year(double date);
int Month(double date);
int Day(double date);

// ---- Registry ----
enum class RegistryRoot { CurrentUser, LocalMachine };
// A value under a key path written the registry's way ("software\Vendor\Prog\UserSet").
// Missing keys or values read as "". On Windows this is the registry itself, in its 32-bit
// view, where the suite's 32-bit programs keep their values. Elsewhere it is the QSettings
// INI store of organisation "kivsuite", application "registry" (user or system scope for
// the two roots); key paths and value names are compared without regard to case there too.
QString ReadRegistry(const QString& keyPath, const QString& valueName,
                     RegistryRoot root = RegistryRoot::LocalMachine);
// The writing counterpart, for hosts that publish values such as "MainWindowsHand".
void WriteRegistry(const QString& keyPath, const QString& valueName, const QString& value,
                   RegistryRoot root = RegistryRoot::LocalMachine);

// ---- SQL literal texts, pasted into statements ----
QString TrueValue_str();       // "1", what a bit column compares equal to for true
QString FalseValue_str();      // "0"
QString DATAESPERATOR_STR();   // "'", the delimiter of a date literal
QString LIKE_STR();            // "%", the any-characters wildcard of LIKE patterns
// DATAESPERATOR_STR + the date as "yyyy-MM-dd" + DATAESPERATOR_STR; the zero date is written
// as 1899-12-30, as the suite's statements always have.
QString SqlDateLiteral(double date);

}  // namespace kivdb::kivfunc
