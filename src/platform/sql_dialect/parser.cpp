#include "platform/sql_dialect/parser.h"

#include "platform/sql_dialect/server_error.h"

#include <algorithm>

namespace platform {

namespace {

/// Words that are no names unless they stand in brackets.
constexpr std::string_view kReserved[] = {
    "SELECT",
    "FROM",
    "WHERE",
    "ORDER",
    "BY",
    "AND",
    "OR",
    "NOT",
    "INTO",
    "SET",
    "VALUES",
    "TOP",
    "DISTINCT",
    "GROUP",
    "HAVING",
    "UNION",
    "JOIN",
    "ON",
};

bool isReserved(const Token& token) {
    return std::any_of(std::begin(kReserved), std::end(kReserved), [&](std::string_view word) {
        return token.is(word);
    });
}

constexpr std::string_view kComparisons[] = {"=", "<", ">", "<=", ">=", "<>", "!="};

std::string readComparison(TokenReader& reader) {
    for (const auto sign : kComparisons) {
        if (reader.accept(sign)) {
            return sign == "!=" ? "<>" : std::string(sign);
        }
    }
    reader.refuse();
}

CountQuery readCount(TokenReader& reader) {
    Statement query;
    reader.expect("SELECT");
    readSelect(reader, query);
    if (!query.isCount) {
        reader.refuse();
    }
    reader.expect(")");
    CountQuery count{query.table, nullptr};
    if (query.where) {
        count.where = std::make_shared<const Condition>(std::move(*query.where));
    }
    return count;
}

void readColumnTest(TokenReader& reader, Condition& leaf) {
    if (reader.accept("IS")) {
        leaf.kind = reader.accept("NOT") ? Condition::Kind::isNotNull : Condition::Kind::isNull;
        reader.expect("NULL");
        return;
    }
    if (reader.accept("IN")) {
        leaf.kind = Condition::Kind::oneOf;
        reader.expect("(");
        do {
            leaf.values.push_back(reader.literal());
        } while (reader.accept(","));
        reader.expect(")");
        return;
    }
    leaf.comparison = readComparison(reader);
    leaf.values.push_back(reader.literal());
}

Condition readLeaf(TokenReader& reader) {
    Condition leaf;
    if (reader.accept("NOT")) {
        leaf.kind = Condition::Kind::negated;
        leaf.children.push_back(readLeaf(reader));
    } else if (reader.peek().is("(") && reader.peekNext().is("SELECT")) {
        reader.expect("(");
        leaf.count = readCount(reader);
        leaf.comparison = readComparison(reader);
        leaf.values.push_back(reader.literal());
    } else if (reader.accept("(")) {
        leaf = readCondition(reader);
        reader.expect(")");
    } else {
        leaf.leftTrimmed = reader.peek().is("ltrim") && reader.peekNext().is("(");
        if (leaf.leftTrimmed) {
            reader.take();
            reader.take();
        }
        leaf.column = reader.name();
        if (leaf.leftTrimmed) {
            reader.expect(")");
        }
        readColumnTest(reader, leaf);
    }
    return leaf;
}

using ReadPart = Condition (*)(TokenReader&);

Condition
readJoined(TokenReader& reader, ReadPart part, std::string_view word, Condition::Kind kind) {
    Condition first = part(reader);
    if (!reader.peek().is(word)) {
        return first;
    }
    Condition joined;
    joined.kind = kind;
    joined.children.push_back(std::move(first));
    while (reader.accept(word)) {
        joined.children.push_back(part(reader));
    }
    return joined;
}

Condition readAll(TokenReader& reader) {
    return readJoined(reader, readLeaf, "AND", Condition::Kind::all);
}

std::vector<OrderItem> readOrder(TokenReader& reader) {
    std::vector<OrderItem> order;
    do {
        OrderItem item;
        item.leftTrimmed = reader.peek().is("ltrim") && reader.peekNext().is("(");
        if (item.leftTrimmed) {
            reader.take();
            reader.take();
        }
        item.column = reader.name();
        if (item.leftTrimmed) {
            reader.expect(")");
        }
        item.descending = reader.accept("DESC");
        if (!item.descending) {
            reader.accept("ASC");
        }
        order.push_back(std::move(item));
    } while (reader.accept(","));
    return order;
}

void readSelectList(TokenReader& reader, Statement& statement) {
    if (reader.accept("*")) {
        return;
    }
    if (reader.peek().is("COUNT") && reader.peekNext().is("(")) {
        reader.take();
        reader.take();
        reader.expect("*");
        reader.expect(")");
        statement.isCount = true;
        return;
    }
    do {
        statement.columns.push_back(reader.name());
    } while (reader.accept(","));
}

}  // namespace

TokenReader::TokenReader(std::string_view statement)
    : statement_(statement),
      tokens_(tokenize(statement)) {}

const Token& TokenReader::peekNext() const {
    return tokens_[std::min(at_ + 1, tokens_.size() - 1)];
}

Token TokenReader::take() {
    const Token& token = tokens_[at_];
    textsTaken_ += token.kind == TokenKind::text ? 1 : 0;
    at_ = std::min(at_ + 1, tokens_.size() - 1);
    return token;
}

bool TokenReader::accept(std::string_view text) {
    if (!peek().is(text)) {
        return false;
    }
    take();
    return true;
}

void TokenReader::expect(std::string_view text) {
    if (!accept(text)) {
        refuse();
    }
}

void TokenReader::refuse() const {
    throw serverError(errorSyntax, {peek().text, statement_});
}

void TokenReader::expectEnd() {
    while (accept(";")) {}
    if (peek().kind != TokenKind::end) {
        refuse();
    }
}

std::string TokenReader::name() {
    if (peek().kind != TokenKind::word || isReserved(peek())) {
        refuse();
    }
    return take().text;
}

void TokenReader::tableName(Statement& statement) {
    statement.table = name();
    statement.tableAsGiven = statement.table;
    while (accept(".")) {
        statement.table = name();
        statement.tableAsGiven += "." + statement.table;
    }
}

bool TokenReader::atLiteral() const {
    const bool isSigned =
        (peek().is("-") || peek().is("+")) && peekNext().kind == TokenKind::number;
    return peek().kind == TokenKind::text || peek().kind == TokenKind::number || isSigned ||
           peek().is("NULL");
}

Literal TokenReader::literal() {
    if (!atLiteral()) {
        refuse();
    }
    if (accept("NULL")) {
        return {true, false, {}};
    }
    if (peek().kind == TokenKind::text) {
        const int place = textsTaken_;
        return {false, true, take().text, place};
    }
    const std::string sign = accept("-") ? "-" : "";
    accept("+");
    return {false, false, sign + take().text};
}

std::string TokenReader::textLiteral() {
    if (peek().kind != TokenKind::text) {
        refuse();
    }
    return take().text;
}

ColumnInfo TokenReader::columnDefinition() {
    ColumnInfo column;
    column.name = name();
    const std::size_t typeStart = peek().offset;
    if (peek().kind != TokenKind::word) {
        refuse();
    }
    const Token type = take();
    std::size_t typeEnd = type.offset + type.length;
    if (accept("(")) {
        while (peek().kind == TokenKind::number || peek().is(",")) {
            take();
        }
        typeEnd = peek().offset + 1;
        expect(")");
    }
    column.type = statement_.substr(typeStart, typeEnd - typeStart);
    if (!readType(column)) {
        throw serverError(errorTypeUnknown, {column.name, type.text});
    }
    while (peek().is("NOT") || peek().is("NULL") || peek().is("DEFAULT")) {
        if (accept("DEFAULT")) {
            const std::size_t start = peek().offset;
            literal();
            const Token& last = tokens_[at_ - 1];
            column.defaultText = statement_.substr(start, last.offset + last.length - start);
            continue;
        }
        column.nullable = !accept("NOT");
        expect("NULL");
    }
    return column;
}

Condition readCondition(TokenReader& reader) {
    return readJoined(reader, readAll, "OR", Condition::Kind::any);
}

void readSelect(TokenReader& reader, Statement& statement) {
    statement.kind = StatementKind::select;
    if (reader.accept("TOP")) {
        const Literal count = reader.literal();
        const ColumnInfo counter{"TOP", "BIGINT", ColumnKind::bigInt};
        statement.top = std::get<std::int64_t>(toStored(counter, count));
    }
    readSelectList(reader, statement);
    reader.expect("FROM");
    reader.tableName(statement);
    if (reader.accept("WHERE")) {
        statement.where = readCondition(reader);
    }
    if (reader.accept("ORDER")) {
        reader.expect("BY");
        statement.order = readOrder(reader);
    }
}

}  // namespace platform
