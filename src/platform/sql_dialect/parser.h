#pragma once

#include "platform/sql_dialect/syntax.h"
#include "platform/sql_dialect/tokens.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Walks the tokens of one statement; the pieces that several statements share.
class TokenReader {
public:
    explicit TokenReader(std::string_view statement);

    [[nodiscard]] const Token& peek() const { return tokens_[at_]; }
    [[nodiscard]] const Token& peekNext() const;
    Token take();
    /// Takes the next token when it is this word or symbol.
    bool accept(std::string_view text);
    /// @throws PlatformError 102 when the next token is another one.
    void expect(std::string_view text);
    [[noreturn]] void refuse() const;
    /// Nothing but ";" may follow.
    void expectEnd();

    std::string name();
    /// "x", "nuv.x" or "catalog.dbo.x" into both of the statement's table names.
    void tableName(Statement& statement);
    Literal literal();
    [[nodiscard]] bool atLiteral() const;
    std::string textLiteral();
    /// Name, type and options of one column.
    ColumnInfo columnDefinition();

private:
    std::string statement_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    int textsTaken_ = 0;
};

/// Reads a condition up to the word or symbol that cannot belong to it.
Condition readCondition(TokenReader& reader);

/// Reads what follows "SELECT", ORDER BY included.
void readSelect(TokenReader& reader, Statement& statement);

}  // namespace platform
