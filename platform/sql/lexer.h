#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/sql/types.h"

namespace sql {

struct Token {
    enum class Kind : std::uint8_t {
        End,
        Name,         // a bare word: a name or a keyword
        BracketName,  // [any text]: always a name; text is what stands inside
        Integer,
        Number,
        Text,  // value: without quotes, doubled ones made single
        Date,
        Symbol,  // text: one of ( ) , ; . ! * / \ + - & ^ = <> < > <= >=
    };
    Kind kind = Kind::End;
    std::size_t position = 0;  // first byte
    std::size_t end = 0;       // behind the last byte
    std::string_view text;     // Name, BracketName, Symbol
    std::string value;         // Text
    std::int64_t integer = 0;  // Integer
    double number = 0;         // Integer, Number, Date
};

// Cuts a statement into tokens, one at a time. Throws SyntaxError for what is no token.
class Lexer {
 public:
    explicit Lexer(std::string_view source) : source_(source) {}

    Token next();
    std::string_view source() const { return source_; }
    // The next token is read from this byte on.
    void moveTo(std::size_t position) { at_ = position; }

 private:
    void skipBlanks();
    Token word();
    Token bracketName();
    Token number();
    Token quoted(char quote);
    Token date();
    Token symbol();

    std::string_view source_;
    std::size_t at_ = 0;
};

bool isBlank(char c);
bool isDigit(char c);
bool isNameStart(char c);  // letters, the underscore, and every byte of a letter outside ASCII
bool isNamePart(char c);

// A piece of the statement from a position on, short enough to be shown in a message.
std::string fragment(std::string_view source, std::size_t position);

}  // namespace sql
