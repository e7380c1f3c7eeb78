#include "frame/core_setup.h"

#include "frame/embedded_procedures.h"
#include "platform/oledate.h"

#include <mutex>

namespace kivdb {

void setUpCore() {
    static std::once_flag once;
    std::call_once(once, [] {
        pinLocalTimeZone();
        installEmbeddedProcedures();
    });
}

}  // namespace kivdb
