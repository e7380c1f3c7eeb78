// Every stored procedure the embedded database carries, one row each: the name the suite
// calls it by, and the function that does the server's work on the embedded engine. A new
// procedure is a new row here.
#include "frame/embedded_procedures.h"

#include "approval/backup_procedure.h"
#include "documents/bill_seq_procedure.h"
#include "integrity/wip_issue_procedures.h"
#include "platform/procedure_registry.h"

#include <mutex>

namespace kivdb {
namespace {

struct ProcedureRow {
    const char* name;
    void (*run)(Connection&, ProcedureCall&);
};

constexpr ProcedureRow kProcedures[] = {
    {"bs_Get_BillSeqNo",     documents::billSeqNoProcedure},
    {"Pm_CheckWipIssQty",    integrity::wipIssueCheckProcedure},
    {"Pm_CheckWipAddIssQty", integrity::wipAddIssueCheckProcedure},
    {"sy_BackupNote",        approval::backupNoteProcedure},
};

}  // namespace

void installEmbeddedProcedures() {
    static std::once_flag once;
    std::call_once(once, [] {
        for (const ProcedureRow& row : kProcedures) registerEmbeddedProcedure(QLatin1String(row.name), row.run);
    });
}

}  // namespace kivdb
