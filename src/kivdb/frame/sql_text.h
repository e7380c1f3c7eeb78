#pragma once
// Text values spliced into SQL between single quotes. Statements are built by plain
// concatenation, so a value holding a quote would end the literal early and change the
// statement; such a value is refused before anything is sent.
#include "platform/field_values.h"

namespace kivdb {

// The value, unchanged, for use between the single quotes of a statement fragment.
// Throws ValueError when it holds a single quote.
QString quotedText(const QString& value);

}  // namespace kivdb
