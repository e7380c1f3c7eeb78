#pragma once
// Reading a field value the way the data layer's field accessors do: as text, integer,
// float, date or boolean. A conversion the value does not allow raises ValueError.
#include "platform/connection.h"

#include <stdexcept>

namespace kivdb {

// The framework's date-time: days since 1899-12-30, time of day as the fraction; 0 = no date.
using OleDate = double;

// A value not of the type asked for; text that is not in the host's encoding is the
// caller's input refused (kind Argument).
class ValueError : public Error {
public:
    explicit ValueError(const QString& message, ErrorKind kind = ErrorKind::Value)
        : Error(message.toStdString(), kind) {}
};

QString fieldText(const Value& value);     // null gives ""
int fieldInt(const Value& value);          // null gives 0; floats round half away from zero
double fieldFloat(const Value& value);     // null gives 0
OleDate fieldDate(const Value& value);     // null gives 0
bool fieldBool(const Value& value);        // null gives false; text must be a Boolean word or number

}  // namespace kivdb
