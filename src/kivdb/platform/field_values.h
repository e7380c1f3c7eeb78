#pragma once
// Reading a field value the way the data layer's field accessors do: as text, integer,
// float, date or boolean. A conversion the value does not allow raises ValueError.
#include "platform/connection.h"

#include <stdexcept>

namespace kivdb {

// The framework's date-time: days since 1899-12-30, time of day as the fraction; 0 = no date.
using OleDate = double;

class ValueError : public std::runtime_error {
public:
    explicit ValueError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

QString fieldText(const Value& value);     // null gives ""
int fieldInt(const Value& value);          // null gives 0; floats round half away from zero
double fieldFloat(const Value& value);     // null gives 0
OleDate fieldDate(const Value& value);     // null gives 0
bool fieldBool(const Value& value);        // null gives false; text must be a Boolean word or number

}  // namespace kivdb
