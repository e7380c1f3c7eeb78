#include "platform/ui/slot_guard.h"

#include "platform/message_sink.h"

namespace kivdb {

void showSlotError(const char* what) noexcept {
    try {
        messageSink().show(MessageKind::Error, what ? QString::fromUtf8(what) : QStringLiteral("unknown error"));
    } catch (...) {
        // Nothing is left to tell the user with; the form goes on.
    }
}

}  // namespace kivdb
