#pragma once
// Test support: an export's answer as text, so that one table of cases can hold exports of
// every result type. Truth values read "1" or "0", numbers and dates their shortest decimal.
#include "platform/connection.h"

#include <QString>
#include <functional>

namespace kivdb::testing {

using Answer = std::function<QString(Connection&)>;

inline QString text(bool b) { return b ? "1" : "0"; }
inline QString text(int n) { return QString::number(n); }
inline QString text(double d) { return QString::number(d); }
inline QString text(const QString& s) { return s; }

// The answer of an export called with the given arguments after the connection.
template <typename R, typename... P, typename... A>
Answer answer(R (*ask)(Connection&, P...), A... args) {
    return [=](Connection& conn) { return text(ask(conn, args...)); };
}

}  // namespace kivdb::testing
