#pragma once
// Arguments spliced into SQL. Statements are built by plain concatenation, so an argument
// that could end the statement early or start another one is refused before anything is
// sent: a text value holding a quote, or a name holding a statement of its own.
#include "platform/field_values.h"

namespace kivdb {

// The value, unchanged, for use between the single quotes of a statement fragment.
// Throws ValueError when it holds a single quote.
QString quotedText(const QString& value);

// A name argument, unchanged, for use as SQL: a table or field name, a list of them, a
// table followed by a where clause of its own ("Note where Flag = 1"), or an expression.
// Throws ValueError when it holds a statement separator, a comment, a quote, bracket or
// parenthesis left open, or a keyword that starts another statement (a select only inside
// parentheses, as a subquery).
QString sqlName(const QString& name);

}  // namespace kivdb
