#pragma once
// Splits T-SQL text into tokens the way SQL Server reads it: a number ends where the first
// character that cannot continue it stands ("5and" is 5 then and), [bracketed] and
// "double-quoted" names are identifiers (QUOTED_IDENTIFIER ON), #t and ##t are names.
#include <QString>

namespace kivdb::dialect {

enum class TokenType { Identifier, QuotedIdentifier, Number, String, Operator, Semicolon, End };

struct Token {
    TokenType type = TokenType::End;
    QString text;   // identifier name without brackets, string value without quotes, operator
    int begin = 0;  // offsets into the source text
    int end = 0;
    bool national = false;     // N'...'
    bool doubleQuoted = false;  // "name" rather than [name]

    bool isKeyword(const char* word) const {
        return type == TokenType::Identifier && text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    }
    bool isOp(const char* op) const { return type == TokenType::Operator && text == QLatin1String(op); }
};

// Reads the tokens of a text one at a time, so that a long statement never holds all of
// them at once. After the last token it answers End for ever. Throws SqlError for an
// unterminated quote, bracket or comment.
class Lexer {
public:
    explicit Lexer(const QString& sql) : sql_(sql) {}
    Token next();

private:
    const QString& sql_;
    int pos_ = 0;
};


}  // namespace kivdb::dialect
