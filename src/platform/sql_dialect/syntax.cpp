#include "platform/sql_dialect/syntax.h"

#include "platform/sql_dialect/parser.h"
#include "platform/sql_dialect/server_error.h"

#include <algorithm>

namespace platform {

namespace {

std::vector<std::string> readNames(TokenReader& reader) {
    std::vector<std::string> names;
    reader.expect("(");
    do {
        names.push_back(reader.name());
    } while (reader.accept(","));
    reader.expect(")");
    return names;
}

void readInsert(TokenReader& reader, Statement& statement) {
    statement.kind = StatementKind::insert;
    reader.accept("INTO");
    reader.tableName(statement);
    if (reader.peek().is("(")) {
        statement.columns = readNames(reader);
    }
    reader.expect("VALUES");
    reader.expect("(");
    do {
        statement.values.push_back(reader.literal());
    } while (reader.accept(","));
    reader.expect(")");
}

void readUpdate(TokenReader& reader, Statement& statement) {
    statement.kind = StatementKind::update;
    reader.tableName(statement);
    reader.expect("SET");
    do {
        Assignment assignment;
        assignment.column = reader.name();
        reader.expect("=");
        if (reader.atLiteral()) {
            assignment.value = reader.literal();
        } else {
            assignment.source = reader.name();
        }
        statement.assignments.push_back(std::move(assignment));
    } while (reader.accept(","));
    if (reader.accept("WHERE")) {
        statement.where = readCondition(reader);
    }
}

void readDelete(TokenReader& reader, Statement& statement) {
    statement.kind = StatementKind::remove;
    reader.accept("FROM");
    reader.tableName(statement);
    if (reader.accept("WHERE")) {
        statement.where = readCondition(reader);
    }
}

void refuseTwins(const Statement& statement) {
    for (std::size_t at = 0; at < statement.definitions.size(); ++at) {
        const auto& name = statement.definitions[at].name;
        for (std::size_t other = 0; other < at; ++other) {
            if (sameSqlName(statement.definitions[other].name, name)) {
                throw serverError(errorColumnExists, {name, statement.table});
            }
        }
    }
}

void readCreate(TokenReader& reader, Statement& statement) {
    if (reader.accept("TABLE")) {
        statement.kind = StatementKind::createTable;
        reader.tableName(statement);
        reader.expect("(");
        do {
            statement.definitions.push_back(reader.columnDefinition());
        } while (reader.accept(","));
        reader.expect(")");
        refuseTwins(statement);
        return;
    }
    statement.kind = StatementKind::createIndex;
    statement.unique = reader.accept("UNIQUE");
    if (!reader.accept("CLUSTERED")) {  // where rows lie is the store's own affair
        reader.accept("NONCLUSTERED");
    }
    reader.expect("INDEX");
    statement.name = reader.name();
    reader.expect("ON");
    reader.tableName(statement);
    statement.columns = readNames(reader);
}

void readDrop(TokenReader& reader, Statement& statement) {
    if (reader.accept("TABLE")) {
        statement.kind = StatementKind::dropTable;
        reader.tableName(statement);
        return;
    }
    statement.kind = StatementKind::dropIndex;
    reader.expect("INDEX");
    reader.tableName(statement);
    const auto point = statement.tableAsGiven.rfind('.');
    if (point == std::string::npos) {
        reader.refuse();
    }
    statement.name = statement.table;
    statement.tableAsGiven.resize(point);
    const auto before = statement.tableAsGiven.rfind('.');
    statement.table = statement.tableAsGiven.substr(before == std::string::npos ? 0 : before + 1);
}

void readAlter(TokenReader& reader, Statement& statement) {
    reader.expect("TABLE");
    reader.tableName(statement);
    if (reader.accept("ADD")) {
        statement.kind = StatementKind::addColumn;
    } else {
        statement.kind = StatementKind::alterColumn;
        reader.expect("ALTER");
        reader.expect("COLUMN");
    }
    statement.definitions.push_back(reader.columnDefinition());
}

void readRename(TokenReader& reader, Statement& statement) {
    statement.kind = StatementKind::renameColumn;
    const std::string path = reader.textLiteral();
    reader.expect(",");
    std::string newName = reader.textLiteral();
    reader.expect(",");
    if (!sameSqlName(reader.textLiteral(), "COLUMN")) {
        reader.refuse();
    }
    const auto point = path.rfind('.');
    if (point == std::string::npos || newName.find_first_not_of(' ') == std::string::npos) {
        reader.refuse();
    }
    statement.tableAsGiven = path.substr(0, point);
    const auto before = statement.tableAsGiven.rfind('.');
    statement.table = statement.tableAsGiven.substr(before == std::string::npos ? 0 : before + 1);
    statement.name = path.substr(point + 1);
    newName.erase(newName.find_last_not_of(' ') + 1);
    newName.erase(0, newName.find_first_not_of(' '));
    statement.newName = newName;
}

template <StatementKind Kind>
void readTransaction(TokenReader& reader, Statement& statement) {
    statement.kind = Kind;
    if (!reader.accept("TRANSACTION")) {
        reader.accept("TRAN");
    }
}

struct StatementRow {
    std::string_view word;
    void (*read)(TokenReader&, Statement&);
};

constexpr StatementRow kStatements[] = {
    {"SELECT", readSelect},
    {"INSERT", readInsert},
    {"UPDATE", readUpdate},
    {"DELETE", readDelete},
    {"CREATE", readCreate},
    {"DROP", readDrop},
    {"ALTER", readAlter},
    {"sp_RENAME", readRename},
    {"BEGIN", readTransaction<StatementKind::begin>},
    {"COMMIT", readTransaction<StatementKind::commit>},
    {"ROLLBACK", readTransaction<StatementKind::rollBack>},
};

}  // namespace

Statement parseStatement(std::string_view text) {
    TokenReader reader(text);
    Statement statement;
    if (!reader.accept("EXEC")) {
        reader.accept("EXECUTE");
    }
    const auto* row = std::find_if(
        std::begin(kStatements),
        std::end(kStatements),
        [&](const StatementRow& entry) { return reader.peek().is(entry.word); }
    );
    if (row == std::end(kStatements)) {
        reader.refuse();
    }
    reader.take();
    row->read(reader, statement);
    reader.expectEnd();
    return statement;
}

Literal parseLiteral(std::string_view text) {
    TokenReader reader(text);
    while (reader.accept("(")) {}
    return reader.atLiteral() ? reader.literal() : Literal{true, false, {}};
}

}  // namespace platform
