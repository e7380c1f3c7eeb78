#pragma once
// bs_Get_BillSeqNo on the embedded database: the next document number of a bill type, from
// the type's numbering rule in bs_billsetItem. The server runs the same procedure from
// schema/mssql/procedures.sql; both answer alike.
//
//   @RETURN_VALUE  return value  a BillSeqStatus
//   @BillType      integer in    the bill type (bs_billsetItem.BillId)
//   @ResultStr     string out    the number (at most 20 characters), null unless numbered
//
// The counter moves in a transaction of its own, or, when the caller holds one, as part of
// the caller's: the caller's rollback then takes the number back as well.
#include "platform/connection.h"

namespace kivdb::documents {

enum class BillSeqStatus { Numbered = 0, NoRule = 1, TooLong = 2 };

constexpr int kMaxBillNumberLength = 20;

void billSeqNoProcedure(Connection& conn, ProcedureCall& call);

}  // namespace kivdb::documents
