#include "platform/message_sink.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace kivdb {

MessageSink::~MessageSink() = default;

namespace {

MessageSink* currentSink = nullptr;

struct KindLook {
    const char* lineWord;
    QString caption;
    QMessageBox::Icon icon;
};

const KindLook& lookOf(MessageKind kind) {
    static const KindLook hint{"hint", QStringLiteral("提示"), QMessageBox::Information};
    static const KindLook warn{"warn", QStringLiteral("警告"), QMessageBox::Warning};
    static const KindLook error{"error", QStringLiteral("错误"), QMessageBox::Critical};
    switch (kind) {
    case MessageKind::Hint: return hint;
    case MessageKind::Warn: return warn;
    case MessageKind::Error: return error;
    }
    return error;
}

}  // namespace

MessageSink& messageSink() {
    if (currentSink) return *currentSink;
    static WidgetMessageSink widgetSink;
    static ConsoleMessageSink consoleSink;
    if (qobject_cast<QApplication*>(QCoreApplication::instance())) return widgetSink;
    return consoleSink;
}

MessageSink* setMessageSink(MessageSink* sink) {
    MessageSink* previous = currentSink;
    currentSink = sink;
    return previous;
}

QString messageLine(MessageKind kind, const QString& text) {
    return QStringLiteral("MSG %1: %2").arg(QLatin1String(lookOf(kind).lineWord), text);
}

QString confirmLine(const QString& question) { return QStringLiteral("CONFIRM: ") + question; }

void WidgetMessageSink::show(MessageKind kind, const QString& text) {
    const KindLook& look = lookOf(kind);
    QMessageBox box(look.icon, look.caption, text, QMessageBox::NoButton, QApplication::activeWindow());
    box.addButton(QStringLiteral("确定"), QMessageBox::AcceptRole);
    box.exec();
}

bool WidgetMessageSink::confirm(const QString& question) {
    QMessageBox box(QMessageBox::Question, QStringLiteral("确认"), question, QMessageBox::NoButton,
                    QApplication::activeWindow());
    QPushButton* yes = box.addButton(QStringLiteral("是(&Y)"), QMessageBox::YesRole);
    QPushButton* no = box.addButton(QStringLiteral("否(&N)"), QMessageBox::NoRole);
    // A stray Enter or Esc must not approve anything.
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

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
