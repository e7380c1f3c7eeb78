#pragma once
// Stored procedures of the embedded database. SQL Server keeps the suite's procedures on
// the server; the embedded engine has none, so the library carries their implementations
// and the embedded connection calls them by name.
//
// The library's own procedures are listed in frame/embedded_procedures.cpp and registered
// when the library is set up; a scoped registration serves tests and hosts that add one.
#include "platform/connection.h"

#include <functional>

namespace kivdb {

using EmbeddedProcedure = std::function<void(Connection&, ProcedureCall&)>;

// Names compare without regard to case, as SQL Server's do; an owner prefix "dbo." and
// brackets are ignored. Registering a name again replaces the earlier implementation.
void registerEmbeddedProcedure(const QString& name, EmbeddedProcedure procedure);
void unregisterEmbeddedProcedure(const QString& name);
// The implementation of a name; throws DatabaseError "Could not find stored procedure 'NAME'.".
EmbeddedProcedure findEmbeddedProcedure(const QString& name);

// Registers for as long as it lives.
class EmbeddedProcedureRegistration {
public:
    EmbeddedProcedureRegistration(const QString& name, EmbeddedProcedure procedure);
    ~EmbeddedProcedureRegistration();
    EmbeddedProcedureRegistration(const EmbeddedProcedureRegistration&) = delete;
    EmbeddedProcedureRegistration& operator=(const EmbeddedProcedureRegistration&) = delete;

private:
    QString name_;
};

}  // namespace kivdb
