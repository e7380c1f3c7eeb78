#pragma once
// The CLI's view of the export table: every export whose arguments are plain values, with
// its parameter types, callable by name with arguments read from the command line. A string
// list argument is the CLI's own, passed empty; its items are printed after the result.
#include "platform/connection.h"
#include "platform/field_values.h"

#include <QStringList>
#include <QVariantList>
#include <functional>
#include <vector>

namespace kivdb::cli {

enum class ArgType { String, Int, Float, Bool, Date, Variant, VariantArray };

struct Param {
    const char* name;
    ArgType type;
};

// The arguments, read by the parameter types: integers, floats, true/false, dates
// yyyy-mm-dd, text, a variant as JSON or text, a variant array as a JSON array.
class CallArgs {
public:
    CallArgs(const std::vector<Param>& params, const QStringList& raw);  // throws ValueError
    QString asString(int i) const { return values_.at(i).toString(); }
    int asInt(int i) const { return values_.at(i).toInt(); }
    double asFloat(int i) const { return values_.at(i).toDouble(); }
    bool asBool(int i) const { return values_.at(i).toBool(); }
    OleDate asDate(int i) const { return values_.at(i).toDouble(); }
    Value asVariant(int i) const { return values_.at(i); }
    QVariantList asVariantArray(int i) const { return values_.at(i).toList(); }

private:
    QVariantList values_;
};

class CallContext {
public:
    virtual ~CallContext() = default;
    virtual Connection& connection() = 0;  // throws when the call has no database
};

// A result rendered for stdout, or nothing, and the lines of the string lists the export
// filled, printed after it.
class CallResult {
public:
    static CallResult none() { return CallResult(); }
    static CallResult ofString(const QString& v) { return CallResult(v); }
    static CallResult ofInt(int v) { return CallResult(QString::number(v)); }
    static CallResult ofBool(bool v) { return CallResult(v ? QStringLiteral("true") : QStringLiteral("false")); }
    static CallResult ofFloat(double v);
    static CallResult ofDate(OleDate v);
    static CallResult ofVariant(const Value& v);

    CallResult withLines(const QStringList& lines) const {
        CallResult r = *this;
        r.lines_ += lines;
        return r;
    }

    bool hasText() const { return hasText_; }
    const QString& text() const { return text_; }
    const QStringList& lines() const { return lines_; }

private:
    CallResult() = default;
    explicit CallResult(QString text) : hasText_(true), text_(std::move(text)) {}
    bool hasText_ = false;
    QString text_;
    QStringList lines_;
};

struct CallableExport {
    const char* name;
    const char* subsystem;
    bool needsConnection;
    std::vector<Param> params;
    std::function<CallResult(CallContext&, const CallArgs&)> invoke;
};

const std::vector<CallableExport>& callableExports();

// Every export as the export table declares it, for `kivdb exports`.
struct ExportDeclaration {
    const char* name;
    const char* declaration;  // "SelTableIntValue(Conn: conn, Sql: string) -> int [frame]"
    bool callable;            // listed in callableExports()
    const char* description;  // one line of English, UTF-8
};
const std::vector<ExportDeclaration>& exportDeclarations();
const CallableExport* findExport(const QString& name);  // compared without regard to case
// The callable exports nearest to a name that is none of them, nearest first, at most three:
// those a few edits away or whose name holds it, compared without regard to case. Empty for
// a declared export the command line cannot call.
QStringList nearestExports(const QString& name);

}  // namespace kivdb::cli
