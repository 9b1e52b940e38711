#pragma once

#include <string>
#include <string_view>

#include "platform/sql/lexer.h"

namespace sql {

// The tokens of a statement, one looked at and the others ahead. What is asked for and does not stand there
// is a SyntaxError that names the place.
class TokenReader {
 public:
    // Whatever may stand inside something of its own kind counts itself in here, so that no statement can
    // exhaust the stack.
    class Nesting {
     public:
        explicit Nesting(TokenReader& tokens);
        ~Nesting() { --tokens_.nesting_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

     private:
        TokenReader& tokens_;
    };

    explicit TokenReader(std::string_view source);

    std::string_view source() const { return lexer_.source(); }
    const Token& token() const { return token_; }  // the one looked at
    std::size_t position() const { return token_.position; }

    [[noreturn]] void fail(const std::string& sentence, std::size_t position) const;
    // The sentence ends with what stands there, in quotes.
    [[noreturn]] void failAt(const std::string& beginning, std::size_t position) const;
    [[noreturn]] void failHere(const std::string& expected) const;  // which is missing
    [[noreturn]] void refuse(const std::string& what) const;        // which is not supported

    bool isEnd() const { return token_.kind == Token::Kind::End; }
    bool isWord(std::string_view word) const;
    bool isSymbol(std::string_view symbol) const;
    bool isName() const;  // in brackets, or a word that means nothing else
    bool takeWord(std::string_view word);
    bool takeSymbol(std::string_view symbol);
    void expectWord(std::string_view word);
    void expectSymbol(std::string_view symbol);
    void expectEnd();
    void advance();

    std::string name(std::string_view what);  // `what`: what is missing where no name stands
    // Empty where none stands. `wordNeeded`: only behind AS.
    std::string aliasOf(bool wordNeeded);
    // `*`, `Table.*` and `[Table].*`; `qualifier`: the table's name, where one stands.
    bool takeStar(std::string& qualifier);
    // Whoever has read on in the source by himself goes on there.
    void skipTo(std::size_t position);

 private:
    Lexer lexer_;
    Token token_;
    int nesting_ = 0;
};

}  // namespace sql
