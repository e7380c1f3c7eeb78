#include "dialect/tsql_lexer.h"

#include "dialect/dialect.h"

#include <QStringList>
#include <cctype>

namespace kivdb::dialect {

namespace {

bool isNameStart(QChar c) { return c.isLetter() || c == u'_' || c == u'#' || c == u'@'; }
bool isNamePart(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'#' || c == u'@' || c == u'$'; }

[[noreturn]] void unclosedQuote(const QString& rest) {
    throw SqlError(QStringLiteral("Unclosed quotation mark after the character string '%1'.").arg(quotedExcerpt(rest)).toStdString());
}

// One shared text per operator, so the commas of a long list allocate nothing.
QString singleCharOperator(QChar c) {
    static const QString operators = QStringLiteral("=<>+-*/%(),.&|^~!");
    static const QStringList texts = [] {
        QStringList list;
        for (QChar op : operators) list << QString(op);
        return list;
    }();
    const qsizetype index = operators.indexOf(c);
    if (index < 0) throw SqlError(QStringLiteral("Incorrect syntax near '%1'.").arg(c).toStdString());
    return texts[index];
}

}  // namespace

Token Lexer::next() {
    const QString& sql = sql_;
    const int n = int(sql.size());
    int& i = pos_;
    auto at = [&](int k) { return k < n ? sql[k] : QChar(); };
    while (i < n) {
        const QChar c = sql[i];
        if (c.isSpace()) {
            ++i;
            continue;
        }
        if (c == u'-' && at(i + 1) == u'-') {
            while (i < n && sql[i] != u'\n') ++i;
            continue;
        }
        if (c == u'/' && at(i + 1) == u'*') {
            // T-SQL block comments nest.
            int depth = 0;
            int k = i;
            while (k < n) {
                if (sql[k] == u'/' && at(k + 1) == u'*') { ++depth; k += 2; }
                else if (sql[k] == u'*' && at(k + 1) == u'/') { --depth; k += 2; if (depth == 0) break; }
                else ++k;
            }
            if (depth != 0) throw SqlError("Missing end comment mark '*/'.");
            i = k;
            continue;
        }
        Token t;
        t.begin = i;
        const bool national = (c == u'N' || c == u'n') && at(i + 1) == u'\'';
        if (c == u'\'' || national) {
            int k = national ? i + 2 : i + 1;
            QString value;
            for (;;) {
                if (k >= n) unclosedQuote(value);
                if (sql[k] == u'\'') {
                    if (at(k + 1) == u'\'') { value += u'\''; k += 2; continue; }
                    ++k;
                    break;
                }
                value += sql[k++];
            }
            t.type = TokenType::String;
            t.text = value;
            t.national = national;
            i = k;
        } else if (c == u'[' || c == u'"') {
            const QChar close = c == u'[' ? u']' : u'"';
            int k = i + 1;
            QString name;
            for (;;) {
                if (k >= n) {
                    unclosedQuote(name);
                }
                if (sql[k] == close) {
                    if (at(k + 1) == close) { name += close; k += 2; continue; }
                    ++k;
                    break;
                }
                name += sql[k++];
            }
            t.type = TokenType::QuotedIdentifier;
            t.text = name;
            t.doubleQuoted = c == u'"';
            i = k;
        } else if (c == u'0' && (at(i + 1) == u'x' || at(i + 1) == u'X')) {
            // A binary constant: 0x and its hexadecimal digits, one number token.
            int k = i + 2;
            while (k < n && isxdigit(sql[k].unicode() < 128 ? char(sql[k].unicode()) : 'g')) ++k;
            t.type = TokenType::Number;
            t.text = sql.mid(i, k - i);
            i = k;
        } else if (c.isDigit() || (c == u'.' && at(i + 1).isDigit()) ||
                   (c == u'$' && (at(i + 1).isDigit() || (at(i + 1) == u'.' && at(i + 2).isDigit()) ||
                                  ((at(i + 1) == u'-' || at(i + 1) == u'+') && (at(i + 2).isDigit() || at(i + 2) == u'.'))))) {
            // A money constant is $ and a number, its sign after the $ too: $-1.5.
            int k = i;
            if (c == u'$') k += at(i + 1) == u'-' || at(i + 1) == u'+' ? 2 : 1;
            while (k < n && sql[k].isDigit()) ++k;
            if (at(k) == u'.') {
                ++k;
                while (k < n && sql[k].isDigit()) ++k;
            }
            // An exponent only when digits follow: "1e5" is a float, "1end" is 1 then end.
            if ((at(k) == u'e' || at(k) == u'E')) {
                int e = k + 1;
                if (at(e) == u'+' || at(e) == u'-') ++e;
                if (at(e).isDigit()) {
                    while (e < n && sql[e].isDigit()) ++e;
                    k = e;
                }
            }
            t.type = TokenType::Number;
            t.text = sql.mid(i, k - i);
            i = k;
        } else if (isNameStart(c) || c.isHighSurrogate()) {
            int k = i;
            while (k < n && (isNamePart(sql[k]) || sql[k].isSurrogate())) ++k;
            if (k == i) k = i + 1;
            t.type = TokenType::Identifier;
            t.text = sql.mid(i, k - i);
            i = k;
        } else if (c == u';') {
            t.type = TokenType::Semicolon;
            t.text = QStringLiteral(";");
            ++i;
        } else {
            static const char* const twoChar[] = {"*=", "=*", "<>", "!=", "<=", ">=", "!<", "!>"};
            t.type = TokenType::Operator;
            for (const char* op : twoChar) {
                if (c == QLatin1Char(op[0]) && at(i + 1) == QLatin1Char(op[1])) {
                    t.text = QLatin1String(op);
                    break;
                }
            }
            if (t.text.isEmpty()) t.text = singleCharOperator(c);
            i += int(t.text.size());
        }
        t.end = i;
        return t;
    }
    Token end;
    end.begin = end.end = n;
    return end;
}


}  // namespace kivdb::dialect
