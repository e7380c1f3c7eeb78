#pragma once
// The server's stored procedures that the embedded database carries implementations of.
namespace kivdb {

// Registers every one of them with the embedded connection's procedure registry. Once per
// process is enough; later calls do nothing.
void installEmbeddedProcedures();

}  // namespace kivdb
