#pragma once
// For the connection tests: what a failing call says.
#include "platform/connection.h"

#include <string>

namespace kivdb {

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

}  // namespace kivdb
