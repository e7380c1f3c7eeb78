#include "platform/ui/library_setup.h"

#include "frame/core_setup.h"
#include "platform/ui/widget_message_sink.h"

#include <mutex>

namespace kivdb {

void setUpLibrary() {
    static std::once_flag once;
    std::call_once(once, [] {
        setUpCore();
        installWidgetMessageSink();
    });
}

}  // namespace kivdb
