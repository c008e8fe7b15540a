#include "platform/odbc/odbc_store.h"

#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/tokens.h"
#include "util/conversions.h"
#include "util/text_codec.h"

#include <algorithm>

namespace platform {

namespace {

/// Errors of a statement that fits a table of another layout than the one that was read.
constexpr std::int32_t kStructureErrors[] = {
    errorColumnInvalid,
    errorObjectInvalid,
    errorValueCount,
    errorObjectMissing,
    errorIndexExists,
    errorIndexColumn,
    errorColumnExists,
    errorObjectExists,
    errorDropMissing,
    errorAlterMissing,
    errorAlterColumnMissing,
    errorRenameMissing,
    errorRenameExists,
};

bool isOfStructure(const PlatformError& error) {
    return std::find(std::begin(kStructureErrors), std::end(kStructureErrors), error.number()) !=
           std::end(kStructureErrors);
}

/// Statements that leave the layout of all tables as it is.
constexpr std::string_view kPlainStatements[] = {"SELECT", "INSERT", "UPDATE", "DELETE"};

bool keepsLayout(std::string_view statement) {
    const auto tokens = tokenize(statement);
    return std::any_of(
        std::begin(kPlainStatements),
        std::end(kPlainStatements),
        [&](std::string_view word) { return tokens.front().is(word); }
    );
}

/// The one table that a SELECT reads all its columns from; empty for every other statement.
std::string tableOf(std::string_view statement) {
    const auto tokens = tokenize(statement);
    auto token = std::find_if(tokens.begin(), tokens.end(), [](const Token& each) {
        return each.is("FROM");
    });
    const bool isCount =
        std::any_of(tokens.begin(), token, [](const Token& each) { return each.is("("); });
    if (token == tokens.end() || isCount || !tokens.front().is("SELECT")) {
        return {};
    }
    std::string name;
    for (++token; token->kind == TokenKind::word || token->is("."); ++token) {
        const bool isNext = !name.empty() && name.back() != '.' && !token->is(".");
        if (isNext) {
            break;
        }
        name += token->text;
    }
    return name;
}

std::string textOf(const Stored& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text == nullptr ? std::string() : *text;
}

bool isOne(const Stored& value) {
    const auto* number = std::get_if<std::int64_t>(&value);
    return number != nullptr && *number == 1;
}

std::string about(const char* query, std::string_view table) {
    return fillTemplate(query, {{"table", util::toUtf8(util::replaceAll(table, "'", "''"))}});
}

}  // namespace

const TableSchema* ServerSchema::table(std::string_view name) const {
    const std::string key = util::lower(name);
    const auto known = tables_.find(key);
    if (known != tables_.end()) {
        return known->second.get();
    }
    std::unique_ptr<TableSchema> read;
    const std::string present = presentName(name);
    if (!present.empty()) {
        read = std::make_unique<TableSchema>();
        read->name = present;
        readColumns(*read);
        readIndexes(*read);
    }
    return tables_.emplace(key, std::move(read)).first->second.get();
}

bool ServerSchema::forget() {
    const bool hadAny = !tables_.empty();
    tables_.clear();
    return hadAny;
}

void ServerSchema::note(const Statement& statement) {
    const auto known = tables_.find(util::lower(statement.table));
    const bool isKnown = known != tables_.end() && known->second != nullptr;
    if (statement.kind == StatementKind::createTable) {
        auto made = std::make_unique<TableSchema>();
        made->name = statement.table;
        made->columns = statement.definitions;
        tables_[util::lower(statement.table)] = std::move(made);
    } else if (statement.kind == StatementKind::createIndex && isKnown) {
        known->second->indexes.push_back({statement.name, statement.unique, statement.columns, {}});
    } else if (statement.kind == StatementKind::addColumn && isKnown) {
        known->second->columns.push_back(statement.definitions.front());
    } else {
        forget();
    }
}

/// A server that gets the statements as they stand also finds the name by itself.
std::string ServerSchema::presentName(std::string_view name) const {
    if (kind_.columns == nullptr) {
        return std::string(name);
    }
    const OdbcResult tables = session_.run(kind_.tables);
    for (std::size_t at = 0; at < tables.rows.size(); ++at) {
        std::string present = textOf(tables.rows.row(at).front());
        if (sameSqlName(present, name)) {
            return present;
        }
    }
    return {};
}

void ServerSchema::readColumns(TableSchema& table) const {
    if (kind_.columns == nullptr) {
        return;
    }
    const OdbcResult found = session_.run(about(kind_.columns, table.name));
    for (std::size_t at = 0; at < found.rows.size(); ++at) {
        const std::vector<Stored> row = found.rows.row(at);
        ColumnInfo column;
        column.name = textOf(row[0]);
        column.type = textOf(row[1]);
        column.nullable = isOne(row[2]);
        column.defaultText = textOf(row[3]);
        readType(column);
        table.columns.push_back(std::move(column));
    }
}

void ServerSchema::readIndexes(TableSchema& table) const {
    const OdbcResult found = session_.run(about(kind_.indexes, table.name));
    for (std::size_t at = 0; at < found.rows.size(); ++at) {
        const std::vector<Stored> row = found.rows.row(at);
        const std::string storeName = textOf(row[0]);
        if (table.indexes.empty() || table.indexes.back().storeName != storeName) {
            const std::string prefix = table.name + ".";
            const bool isPrefixed = storeName.starts_with(prefix);
            table.indexes.push_back(
                {isPrefixed ? storeName.substr(prefix.size()) : storeName,
                 isOne(row[1]),
                 {},
                 storeName}
            );
        }
        table.indexes.back().columns.push_back(textOf(row[2]));
    }
}

OdbcStore::OdbcStore(const ConnectionSettings& settings, const OdbcOptions& options)
    : OdbcStore(settings, connectionText(settings, options, installedDrivers())) {}

OdbcStore::OdbcStore(const ConnectionSettings& settings, const ConnectionText& text)
    : kind_(serverKind(text.driver)),
      session_(kind_, text.driver, text.text, settings.timeoutSeconds),
      schema_(kind_, session_) {}

StoreRows OdbcStore::run(std::string_view statement) {
    return kind_.dialect == nullptr ? runAsIs(statement) : runTranslated(statement);
}

StoreRows OdbcStore::runAsIs(std::string_view statement) {
    StoreRows rows{session_.run(util::toUtf8(statement)), {}};
    if (!rows.result.columns.empty()) {
        rows.table = tableOf(statement);
    } else if (!keepsLayout(statement)) {
        schema_.forget();
    }
    return rows;
}

Translation OdbcStore::translated(std::string_view statement) {
    try {
        return translate(statement, schema_, *kind_.dialect);
    } catch (const PlatformError& error) {
        throw PlatformError(error.number(), error.description(), session_.source());
    }
}

/// A statement that does not fit the tables as they were read is tried once more after they were
/// read anew: another station may have changed them.
StoreRows OdbcStore::runTranslated(std::string_view statement) {
    const auto attempt = [&] {
        const Translation translation = translated(statement);
        StoreRows rows{session_.run(translation.text), {}};
        if (translation.statement.kind == StatementKind::select) {
            rows.result.columns = translation.columns.infos();
            rows.table = translation.statement.isCount ? "" : translation.statement.table;
        } else if (!keepsLayout(statement)) {
            schema_.note(translation.statement);
        }
        return rows;
    };
    try {
        return attempt();
    } catch (const PlatformError& error) {
        if (!isOfStructure(error) || !session_.isOpen() || !schema_.forget()) {
            throw;
        }
    }
    return attempt();
}

std::int64_t OdbcStore::change(std::string_view statement, bool isCertain) {
    const std::string text =
        kind_.dialect == nullptr ? util::toUtf8(statement) : translated(statement).text;
    return isCertain ? session_.run(text).affected : session_.runOnce(text);
}

TableSchema OdbcStore::tableForCheck(const std::string& name) const {
    const auto* table = schema_.table(name);
    if (table == nullptr) {
        throw serverError(errorObjectInvalid, {name});
    }
    return *table;
}

}  // namespace platform
