#include "platform/sql_dialect/tokens.h"

#include "platform/sql_dialect/server_error.h"

#include <algorithm>

namespace platform {

namespace {

char lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isWordStart(char c) {
    const char small = lowered(c);
    return (small >= 'a' && small <= 'z') || c == '_' || c == '@' || c == '#' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isWordPart(char c) {
    return isWordStart(c) || isDigit(c) || c == '$';
}

class Tokenizer {
public:
    explicit Tokenizer(std::string_view statement) : statement_(statement) {}

    std::vector<Token> run() {
        while (skipBlanks()) {
            next();
        }
        tokens_.push_back({TokenKind::end, "", false, statement_.size(), 0});
        return std::move(tokens_);
    }

private:
    [[nodiscard]] char peek(std::size_t ahead = 0) const {
        return at_ + ahead < statement_.size() ? statement_[at_ + ahead] : '\0';
    }

    bool skipBlanks() {
        while (at_ < statement_.size() && isBlank(statement_[at_])) {
            ++at_;
        }
        return at_ < statement_.size();
    }

    void next() {
        const char first = peek();
        if (first == '\'') {
            quoted('\'', TokenKind::text);
        } else if (first == '[') {
            quoted(']', TokenKind::word);
        } else if (first == '"') {
            quoted('"', TokenKind::word);
        } else if (isDigit(first) || (first == '.' && isDigit(peek(1)))) {
            number();
        } else if (isWordStart(first)) {
            take(TokenKind::word, wordLength());
        } else {
            const bool isDouble = (first == '<' && (peek(1) == '=' || peek(1) == '>')) ||
                                  ((first == '>' || first == '!') && peek(1) == '=');
            take(TokenKind::symbol, isDouble ? 2 : 1);
        }
    }

    void take(TokenKind kind, std::size_t length) {
        tokens_.push_back({kind, std::string(statement_.substr(at_, length)), false, at_, length});
        at_ += length;
    }

    [[nodiscard]] std::size_t wordLength() const {
        std::size_t length = 1;
        while (isWordPart(peek(length))) {
            ++length;
        }
        return length;
    }

    void number() {
        std::size_t length = 0;
        while (isDigit(peek(length)) || peek(length) == '.') {
            ++length;
        }
        if (lowered(peek(length)) == 'e') {
            const std::size_t sign = peek(length + 1) == '-' || peek(length + 1) == '+' ? 1 : 0;
            if (isDigit(peek(length + 1 + sign))) {
                length += 1 + sign;
                while (isDigit(peek(length))) {
                    ++length;
                }
            }
        }
        take(TokenKind::number, length);
    }

    void quoted(char closing, TokenKind kind) {
        Token token{kind, "", kind == TokenKind::word, at_, 0};
        for (++at_; at_ < statement_.size(); ++at_) {
            if (peek() != closing) {
                token.text += peek();
            } else if (peek(1) == closing) {
                token.text += closing;
                ++at_;
            } else {
                ++at_;
                token.length = at_ - token.offset;
                tokens_.push_back(std::move(token));
                return;
            }
        }
        throw serverError(errorUnclosedQuote, {token.text});
    }

    std::string_view statement_;
    std::size_t at_ = 0;
    std::vector<Token> tokens_;
};

}  // namespace

bool Token::is(std::string_view other) const {
    const bool plain = kind == TokenKind::symbol || (kind == TokenKind::word && !quoted);
    return plain && sameSqlName(text, other);
}

std::vector<Token> tokenize(std::string_view statement) {
    return Tokenizer(statement).run();
}

bool sameSqlName(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
        return lowered(a) == lowered(b);
    });
}

}  // namespace platform
