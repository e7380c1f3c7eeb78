#include "platform/message_sink.h"

#include <QCoreApplication>

#include <atomic>

namespace kivdb {

MessageSink::~MessageSink() = default;

namespace {

// Atomic: hosts call the library from several threads, and one may install a sink while
// another asks for it.
std::atomic<MessageSink*> currentSink{nullptr};
std::atomic<MessageSink*> guiSink{nullptr};

const char* lineWord(MessageKind kind) {
    switch (kind) {
    case MessageKind::Hint: return "hint";
    case MessageKind::Warn: return "warn";
    case MessageKind::Error: return "error";
    }
    return "error";
}

}  // namespace

MessageSink& messageSink() {
    if (MessageSink* sink = currentSink.load()) return *sink;
    static ConsoleMessageSink consoleSink;
    const QCoreApplication* app = QCoreApplication::instance();
    MessageSink* gui = guiSink.load();
    if (gui && app && app->inherits("QApplication")) return *gui;
    return consoleSink;
}

void setGuiMessageSink(MessageSink* sink) { guiSink = sink; }

MessageSink* setMessageSink(MessageSink* sink) { return currentSink.exchange(sink); }

QString messageLine(MessageKind kind, const QString& text) {
    return QStringLiteral("MSG %1: %2").arg(QLatin1String(lineWord(kind)), text);
}

QString confirmLine(const QString& question) { return QStringLiteral("CONFIRM: ") + question; }

void ConsoleMessageSink::writeLine(const QString& line) {
    std::fputs((line + QLatin1Char('\n')).toUtf8().constData(), out_);
    std::fflush(out_);
}

void ConsoleMessageSink::show(MessageKind kind, const QString& text) { writeLine(messageLine(kind, text)); }

bool ConsoleMessageSink::confirm(const QString& question) {
    writeLine(confirmLine(question));
    return answer_;
}

void RecordingMessageSink::show(MessageKind kind, const QString& text) {
    messages_.push_back({kind, text});
    transcript_ << messageLine(kind, text);
}

bool RecordingMessageSink::confirm(const QString& question) {
    questions_ << question;
    transcript_ << confirmLine(question);
    if (script_.empty()) return defaultAnswer_;
    bool answer = script_.front();
    script_.pop_front();
    return answer;
}

void RecordingMessageSink::scriptAnswers(std::initializer_list<bool> answers) {
    script_.insert(script_.end(), answers.begin(), answers.end());
}

QStringList RecordingMessageSink::texts() const {
    QStringList result;
    for (const auto& m : messages_) result << m.text;
    return result;
}

void RecordingMessageSink::clear() {
    messages_.clear();
    questions_.clear();
    transcript_.clear();
    script_.clear();
}

}  // namespace kivdb
