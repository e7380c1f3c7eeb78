#include "frame/sql_text.h"

#include "dialect/dialect.h"

#include <QSet>

namespace kivdb {

QString quotedText(const QString& value) {
    if (value.contains(QLatin1Char('\'')))
        throw ValueError(QStringLiteral("文本值中含有单引号，语句未执行: %1").arg(dialect::quotedExcerpt(value)),
                         ErrorKind::Argument);
    return value;
}

namespace {

// Reserved words that begin a statement. Being reserved, none can stand unquoted for a
// table or column, so refusing them costs no legitimate name.
bool startsStatement(const QString& word) {
    static const QSet<QString> words = {
        "alter",     "backup",  "begin",    "bulk",     "checkpoint", "close",    "commit",  "create",
        "dbcc",      "deallocate", "declare", "delete", "deny",       "drop",     "exec",    "execute",
        "fetch",     "goto",    "grant",    "if",       "insert",     "kill",     "merge",   "open",
        "print",     "raiserror", "readtext", "reconfigure", "restore", "return", "revert",  "revoke",
        "rollback",  "save",    "set",      "shutdown", "truncate",   "update",   "updatetext", "use",
        "waitfor",   "while",   "writetext",
    };
    return words.contains(word.toLower());
}

bool isWordChar(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'@' || c == u'#' || c == u'$'; }

[[noreturn]] void refuseName(const QString& name, const char* why) {
    throw ValueError(QStringLiteral("名称参数%1，语句未执行: %2").arg(QString::fromUtf8(why), name), ErrorKind::Argument);
}

}  // namespace

QString sqlName(const QString& name) {
    const qsizetype n = name.size();
    int depth = 0;
    for (qsizetype i = 0; i < n;) {
        const QChar c = name[i];
        const QChar next = i + 1 < n ? name[i + 1] : QChar();
        if (c == u'\'' || c == u'"' || c == u'[') {
            // Quoted text or a quoted name; a doubled closing character stays inside.
            const QChar close = c == u'[' ? QChar(u']') : c;
            qsizetype k = i + 1;
            for (;; ++k) {
                if (k >= n) refuseName(name, "中引号或方括号未闭合");
                if (name[k] != close) continue;
                if (k + 1 < n && name[k + 1] == close) { ++k; continue; }
                break;
            }
            i = k + 1;
        } else if (c == u';') {
            refuseName(name, "中含有语句分隔符");
        } else if ((c == u'-' && next == u'-') || (c == u'/' && next == u'*') || (c == u'*' && next == u'/')) {
            refuseName(name, "中含有注释");
        } else if (c == u'(' || c == u')') {
            depth += c == u'(' ? 1 : -1;
            if (depth < 0) refuseName(name, "中括号不配对");
            ++i;
        } else if (isWordChar(c)) {
            qsizetype k = i;
            while (k < n && isWordChar(name[k])) ++k;
            const QString word = name.mid(i, k - i);
            if (startsStatement(word) || (depth == 0 && word.compare(QLatin1String("select"), Qt::CaseInsensitive) == 0))
                refuseName(name, "中含有另一条语句");
            i = k;
        } else {
            ++i;
        }
    }
    if (depth != 0) refuseName(name, "中括号不配对");
    return name;
}

}  // namespace kivdb
