#pragma once

#include "store/Value.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace pontrel::statement {

enum class TokenKind { Name, Bracketed, Literal, Symbol, End };

/// A piece of a statement's text. A literal names its place among the statement's literals; a symbol of two
/// characters
/// ("<=", ">=", "<>") is one token.
struct Token {
    TokenKind kind = TokenKind::End;
    QStringView text;
    int literal = -1;
};

/// A statement cut into tokens, with its literals lifted out. Two texts of one shape differ in the values of
/// their literals alone, not in the literals' kinds.
struct Lexed {
    QString shape;
    std::vector<Value> literals;
    std::vector<Token> tokens; ///< Views into the text that was cut; ends with an End token.
};

/// What is wanted of a text: its shape and literals, which is all that a statement made ready before needs,
/// or its tokens as well.
enum class Cut { ShapeAlone, Tokens };

/// Cuts the text, which must outlive the tokens. Throws a syntax error (3075) for a literal that does not
/// end, a text between number signs that is no date or time, and a character that has no meaning.
void lex(QStringView text, Lexed& result, Cut cut = Cut::Tokens);

} // namespace pontrel::statement
