#include "platform/ui/library_setup.h"

#include "frame/embedded_procedures.h"
#include "platform/oledate.h"
#include "platform/ui/widget_message_sink.h"

#include <mutex>

namespace kivdb {

void setUpLibrary() {
    static std::once_flag once;
    std::call_once(once, [] {
        pinLocalTimeZone();
        installEmbeddedProcedures();
        installWidgetMessageSink();
    });
}

}  // namespace kivdb
