#pragma once
// Where the library's messages and yes/no questions go. One sink is current for the whole
// process: a message box when the host runs a GUI, plain lines on stderr in the command-line
// tool, a recorder in tests. Calls arrive on the user-interface thread only.
#include <QString>
#include <QStringList>
#include <cstdio>
#include <deque>
#include <initializer_list>
#include <vector>

namespace kivdb {

enum class MessageKind { Hint, Warn, Error };

class MessageSink {
public:
    virtual ~MessageSink();
    virtual void show(MessageKind kind, const QString& text) = 0;
    // The user's answer: true for yes.
    virtual bool confirm(const QString& question) = 0;
};

// The current sink. Unless one was set, the default: the GUI sink (message boxes, installed
// by the user-interface layer) while a QApplication exists, the console sink otherwise
// (decided on each call, so a GUI created later counts).
MessageSink& messageSink();
// Installs the sink that shows messages in a GUI (not owned; it must outlive its use).
void setGuiMessageSink(MessageSink* sink);
// Makes `sink` current (not owned; it must outlive its use). nullptr returns to the default.
// Answers the sink that was set before, nullptr for the default.
MessageSink* setMessageSink(MessageSink* sink);

// Installs a sink for the lifetime of the guard and puts the previous one back afterwards.
class ScopedMessageSink {
public:
    explicit ScopedMessageSink(MessageSink* sink) : previous_(setMessageSink(sink)) {}
    ~ScopedMessageSink() { setMessageSink(previous_); }
    ScopedMessageSink(const ScopedMessageSink&) = delete;
    ScopedMessageSink& operator=(const ScopedMessageSink&) = delete;

private:
    MessageSink* previous_;
};

// The one-line forms the console prints and the recorder transcribes:
// "MSG hint: TEXT", "MSG warn: TEXT", "MSG error: TEXT" and "CONFIRM: QUESTION".
QString messageLine(MessageKind kind, const QString& text);
QString confirmLine(const QString& question);

// Writes one UTF-8 line per message; nobody can answer on a console, so every question gets
// the preset answer (no unless told otherwise). The text is written as given.
class ConsoleMessageSink : public MessageSink {
public:
    explicit ConsoleMessageSink(bool confirmAnswer = false, std::FILE* out = stderr)
        : answer_(confirmAnswer), out_(out) {}
    void setConfirmAnswer(bool answer) { answer_ = answer; }
    void show(MessageKind kind, const QString& text) override;
    bool confirm(const QString& question) override;

private:
    void writeLine(const QString& line);
    bool answer_;
    std::FILE* out_;
};

struct RecordedMessage {
    MessageKind kind;
    QString text;
    bool operator==(const RecordedMessage&) const = default;
};

// Keeps every message and question in order; questions are answered from a script, then by
// the default answer (no unless told otherwise).
class RecordingMessageSink : public MessageSink {
public:
    void show(MessageKind kind, const QString& text) override;
    bool confirm(const QString& question) override;

    // Answers for the next questions, used first to last.
    void scriptAnswers(std::initializer_list<bool> answers);
    void setDefaultAnswer(bool answer) { defaultAnswer_ = answer; }

    const std::vector<RecordedMessage>& messages() const { return messages_; }
    const QStringList& questions() const { return questions_; }
    // Messages and questions interleaved as they came, in the console's line form.
    const QStringList& transcript() const { return transcript_; }
    // The texts alone, for the common "which messages were shown" check.
    QStringList texts() const;
    void clear();

private:
    std::vector<RecordedMessage> messages_;
    QStringList questions_;
    QStringList transcript_;
    std::deque<bool> script_;
    bool defaultAnswer_ = false;
};

}  // namespace kivdb
