#pragma once
// Messages and questions as modal message boxes over the active window, with Chinese
// captions and buttons: the message sink of a GUI.
#include "platform/message_sink.h"

namespace kivdb {

class WidgetMessageSink : public MessageSink {
public:
    void show(MessageKind kind, const QString& text) override;
    bool confirm(const QString& question) override;  // "否" is the default button
};

// Makes the message boxes the default sink whenever a QApplication exists.
void installWidgetMessageSink();

}  // namespace kivdb
