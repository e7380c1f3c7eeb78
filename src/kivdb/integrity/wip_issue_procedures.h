#pragma once
// Pm_CheckWipIssQty and Pm_CheckWipAddIssQty on the embedded database: a material issue
// note (pm_IssWipDtl lines of @RefNo) checked per job component (the line's RefJobNo and
// PartNo against pl_JbBom's RefJobNo and CompNo) against what the job may still receive.
// The server runs the same procedures from schema/mssql/procedures.sql; both answer alike.
//
// Normal issue, Pm_CheckWipIssQty: the note's quantity may not exceed PlanIssQty less
// IssuedQty. Outputs @iRes, @OverPartNo (size 100), @IssQty, @PlanQty, @IssuedQty.
// Supplementary issue, Pm_CheckWipAddIssQty: the note's quantity may not exceed what is
// still owed, NeedAddQty less AddIssQty. Outputs @iRes, @OverPartNo, @IssQty, @DueQty.
//
// @iRes 0: within limits, the other outputs 0 and ''. @iRes 1: the first component over
// its limit, by job and then part, with its quantities. A part that is no component of its
// job has nothing planned or owed; lines without a job are not checked. Both return 0.
#include "platform/connection.h"

namespace kivdb::integrity {

void wipIssueCheckProcedure(Connection& conn, ProcedureCall& call);     // Pm_CheckWipIssQty
void wipAddIssueCheckProcedure(Connection& conn, ProcedureCall& call);  // Pm_CheckWipAddIssQty

}  // namespace kivdb::integrity
