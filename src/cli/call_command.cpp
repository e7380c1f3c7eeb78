// kivdb call [--db FILE | --url URL] [--trace] [--confirm yes|no] EXPORT [ARG...]
//
// stdout: the result on one line (nothing for an export without result), then the items of
// each string list the export filled, one a line.
// stderr, in order: "SQL: " + each statement as built and "PROC: " + each procedure (with
// --trace), "MSG hint|warn|error: " + each message and "CONFIRM: " + each question.
#include "cli/call_command.h"

#include "cli/call_table.h"
#include "cli/usage.h"
#include "platform/message_sink.h"

#include <cstdio>

namespace kivdb::cli {

namespace {

class CommandLineContext : public CallContext {
public:
    explicit CommandLineContext(QString url) : url_(std::move(url)) {}
    Connection& connection() override {
        if (!conn_) {
            if (url_.isEmpty()) throw ValueError(QStringLiteral("this export needs a database: give --db FILE"), ErrorKind::Argument);
            conn_ = Connection::open(url_);
            if (trace_)
                conn_->addObserver([](const StatementEvent& e) {
                    if (e.insideProcedure) return;  // the server's business
                    const QString line = (e.kind == StatementEvent::Procedure ? "PROC: " : "SQL: ") + e.text;
                    std::fprintf(stderr, "%s\n", line.toUtf8().constData());
                    std::fflush(stderr);
                });
        }
        return *conn_;
    }
    void setTrace(bool on) { trace_ = on; }

private:
    QString url_;
    bool trace_ = false;
    std::unique_ptr<Connection> conn_;
};

void printLine(FILE* stream, const QString& text) {
    std::fprintf(stream, "%s\n", text.toUtf8().constData());
}

}  // namespace

int runCall(const QStringList& arguments) {
    QString url;
    bool trace = false;
    bool confirmAnswer = false;
    QStringList rest;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& a = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (rest.isEmpty() && a == QLatin1String("--help")) {
            std::fputs(commandUsage(*findCommand(QStringLiteral("call"))).toUtf8().constData(), stdout);
            return 0;
        } else if (rest.isEmpty() && a == QLatin1String("--db") && hasValue) url = "sqlite:" + arguments[++i];
        else if (rest.isEmpty() && a == QLatin1String("--url") && hasValue) url = arguments[++i];
        else if (rest.isEmpty() && a == QLatin1String("--trace")) trace = true;
        else if (rest.isEmpty() && a == QLatin1String("--confirm") && hasValue) {
            const QString answer = arguments[++i];
            if (answer != QLatin1String("yes") && answer != QLatin1String("no")) {
                printLine(stderr, QStringLiteral("error: --confirm takes yes or no"));
                return 1;
            }
            confirmAnswer = answer == QLatin1String("yes");
        } else rest << a;
    }
    if (rest.isEmpty()) {
        printLine(stderr, QStringLiteral("error: usage: kivdb call [--db FILE] [--trace] [--confirm yes|no] EXPORT [ARG...]"));
        return 1;
    }
    const QString name = rest.takeFirst();
    const CallableExport* target = findExport(name);
    if (!target) {
        const QStringList nearest = nearestExports(name);
        printLine(stderr, QStringLiteral("error: no export callable from the command line by that name") +
                              (nearest.isEmpty() ? QString() : "; nearest: " + nearest.join(QLatin1String(", "))));
        return 1;
    }

    ConsoleMessageSink sink(confirmAnswer);
    ScopedMessageSink guard(&sink);
    CommandLineContext context(url);
    context.setTrace(trace);
    try {
        const CallArgs args(target->params, rest);
        const CallResult result = target->invoke(context, args);
        if (result.hasText()) printLine(stdout, result.text());
        for (const QString& line : result.lines()) printLine(stdout, line);
        return 0;
    } catch (const std::exception& e) {
        printLine(stderr, "error: " + QString::fromUtf8(e.what()));
        return 1;
    }
}

}  // namespace kivdb::cli
