#include "platform/sql_dialect/translator.h"

#include "platform/sql_dialect/query_writer.h"
#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/tokens.h"
#include "util/text_codec.h"

#include <algorithm>

namespace platform {

namespace {

class Translator {
public:
    Translator(Statement statement, const SchemaView& schema, const Dialect& dialect)
        : schema_(schema),
          dialect_(dialect),
          writer_(schema, dialect) {
        result_.statement = std::move(statement);
    }

    Translation run() {
        (this->*handlerOf(statement().kind))();
        if (result_.text.empty()) {
            result_.text = writer_.text();
        }
        result_.values = writer_.values();
        result_.sources = writer_.sources();
        return std::move(result_);
    }

private:
    using Handler = void (Translator::*)();

    static Handler handlerOf(StatementKind kind) {
        static constexpr Handler kHandlers[] = {
            &Translator::select,
            &Translator::insert,
            &Translator::update,
            &Translator::remove,
            &Translator::createTable,
            &Translator::createIndex,
            &Translator::dropIndex,
            &Translator::dropTable,
            &Translator::addColumn,
            &Translator::alterColumn,
            &Translator::renameColumn,
            &Translator::transaction,
            &Translator::transaction,
            &Translator::transaction,
        };
        return kHandlers[static_cast<std::size_t>(kind)];
    }

    Statement& statement() { return result_.statement; }

    const TableSchema& table() {
        const TableSchema& table = writer_.tableOf(statement());
        statement().table = table.name;
        return table;
    }

    /// The table of an ALTER or CREATE INDEX statement, for which the server has another error.
    const TableSchema& tableToChange() {
        const auto* table = schema_.table(statement().table);
        if (table == nullptr) {
            throw serverError(
                statement().kind == StatementKind::createIndex ? errorObjectMissing
                                                               : errorAlterMissing,
                {statement().tableAsGiven}
            );
        }
        statement().table = table->name;
        return *table;
    }

    std::string quoted(std::string_view name) { return dialect_.quoteName(name); }

    void select() {
        const TableSchema& source = table();
        if (statement().isCount) {
            result_.columns = ColumnList({ColumnInfo{"", "INTEGER", ColumnKind::integer}});
            writer_.count(source, statement());
            return;
        }
        std::vector<ColumnInfo> columns;
        if (statement().columns.empty()) {
            columns = source.columns;
        }
        for (const auto& column : statement().columns) {
            columns.push_back(source.column(column));
        }
        result_.columns = ColumnList(std::move(columns));
        writer_.select(source, statement());
    }

    void refuseNull(const ColumnInfo& column, const Stored& value, std::string_view action) {
        if (!column.nullable && std::holds_alternative<std::monostate>(value)) {
            throw serverError(errorNullRefused, {column.name, "dbo." + statement().table, action});
        }
    }

    void insert() {
        const TableSchema& target = table();
        auto& names = statement().columns;
        if (names.empty()) {
            for (const auto& column : target.columns) {
                names.push_back(column.name);
            }
        }
        if (names.size() != statement().values.size()) {
            throw serverError(errorValueCount);
        }
        for (const auto& name : names) {
            static_cast<void>(target.column(name));
        }
        writer_.add("INSERT INTO " + quoted(target.name) + " VALUES(");
        std::string_view between;
        for (const auto& column : target.columns) {
            const auto named = std::find_if(names.begin(), names.end(), [&](const auto& name) {
                return sameSqlName(name, column.name);
            });
            const Literal literal =
                named == names.end()
                    ? parseLiteral(column.defaultText)
                    : statement().values[static_cast<std::size_t>(named - names.begin())];
            Stored value = writer_.stored(column, literal);
            refuseNull(column, value, "INSERT");
            writer_.add(between);
            writer_.value(column, std::move(value));
            between = ",";
        }
        writer_.add(")");
    }

    void update() {
        const TableSchema& target = table();
        writer_.add("UPDATE " + quoted(target.name));
        std::string_view between = " SET ";
        for (const auto& assignment : statement().assignments) {
            const ColumnInfo& column = target.column(assignment.column);
            writer_.add(between);
            writer_.add(quoted(column.name) + "=");
            if (!assignment.source.empty()) {
                writer_.add(quoted(target.column(assignment.source).name));
            } else {
                Stored value = writer_.stored(column, assignment.value);
                refuseNull(column, value, "UPDATE");
                writer_.value(column, std::move(value));
            }
            between = ",";
        }
        writer_.where(target, statement().where);
    }

    void remove() {
        const TableSchema& target = table();
        writer_.add("DELETE FROM " + quoted(target.name));
        writer_.where(target, statement().where);
    }

    void createTable() {
        if (schema_.table(statement().table) != nullptr) {
            throw serverError(errorObjectExists, {statement().table});
        }
        std::string columns;
        for (const auto& column : statement().definitions) {
            columns += (columns.empty() ? "" : ", ") + columnDeclaration(column, dialect_);
        }
        result_.text = fillTemplate(
            dialect_.createTable, {{"table", quoted(statement().table)}, {"columns", columns}}
        );
    }

    void createIndex() {
        const TableSchema& target = tableToChange();
        if (target.findIndex(statement().name) != nullptr) {
            throw serverError(errorIndexExists, {statement().name, target.name});
        }
        for (const auto& column : statement().columns) {
            if (target.find(column) == nullptr) {
                throw serverError(errorIndexColumn, {column});
            }
        }
        result_.text = indexStatement(
            target, {statement().name, statement().unique, statement().columns}, dialect_
        );
    }

    void dropIndex() {
        const auto* target = schema_.table(statement().table);
        const auto* index = target == nullptr ? nullptr : target->findIndex(statement().name);
        if (index == nullptr) {
            throw serverError(
                errorDropMissing, {"index", statement().tableAsGiven + "." + statement().name}
            );
        }
        statement().table = target->name;
        const std::string name = index->storeName.empty()
                                     ? dialect_.indexName(target->name, index->name)
                                     : index->storeName;
        result_.text = fillTemplate(dialect_.dropIndex, {{"index", quoted(name)}});
    }

    void dropTable() {
        const auto* target = schema_.table(statement().table);
        if (target == nullptr) {
            throw serverError(errorDropMissing, {"table", statement().tableAsGiven});
        }
        result_.text = fillTemplate(dialect_.dropTable, {{"table", quoted(target->name)}});
    }

    void addColumn() {
        const TableSchema& target = tableToChange();
        const ColumnInfo& column = statement().definitions.front();
        if (target.find(column.name) != nullptr) {
            throw serverError(errorColumnExists, {column.name, target.name});
        }
        result_.text = fillTemplate(
            dialect_.addColumn,
            {{"table", quoted(target.name)}, {"definition", columnDeclaration(column, dialect_)}}
        );
    }

    void alterColumn() {
        const TableSchema& target = tableToChange();
        ColumnInfo& column = statement().definitions.front();
        const auto* present = target.find(column.name);
        if (present == nullptr) {
            throw serverError(errorAlterColumnMissing, {column.name, target.name});
        }
        column.name = present->name;
        column.defaultText = present->defaultText;  // a default is a thing of its own
        statement().table = target.name;
        if (dialect_.alterColumn != nullptr) {
            result_.text = fillTemplate(
                dialect_.alterColumn,
                {{"table", quoted(target.name)},
                 {"column", quoted(column.name)},
                 {"type", dialect_.typeText(column)},
                 {"nullable", column.nullable ? "DROP NOT NULL" : "SET NOT NULL"}}
            );
        }
    }

    void renameColumn() {
        const auto* target = schema_.table(statement().table);
        const auto* column = target == nullptr ? nullptr : target->find(statement().name);
        if (column == nullptr) {
            throw serverError(
                errorRenameMissing, {statement().tableAsGiven + "." + statement().name}
            );
        }
        const auto* twin = target->find(statement().newName);
        if (twin != nullptr && twin != column) {
            throw serverError(errorRenameExists, {statement().newName});
        }
        statement().table = target->name;
        result_.text = fillTemplate(
            dialect_.renameColumn,
            {{"table", quoted(target->name)},
             {"column", quoted(column->name)},
             {"name", quoted(statement().newName)}}
        );
    }

    void transaction() {
        const StatementKind kind = statement().kind;
        result_.text = kind == StatementKind::begin    ? dialect_.begin
                       : kind == StatementKind::commit ? dialect_.commit
                                                       : dialect_.rollBack;
    }

    const SchemaView& schema_;
    const Dialect& dialect_;
    QueryWriter writer_;
    Translation result_;
};

}  // namespace

Translation
translate(std::string_view statement, const SchemaView& schema, const Dialect& dialect) {
    return Translator(parseStatement(statement), schema, dialect).run();
}

std::string columnDeclaration(const ColumnInfo& column, const Dialect& dialect) {
    std::string text = dialect.quoteName(column.name) + " " + dialect.typeText(column) +
                       (column.nullable ? "" : " NOT NULL");
    if (!column.defaultText.empty()) {
        text += " DEFAULT ";
        text += dialect.literal == nullptr
                    ? util::toUtf8(column.defaultText)
                    : dialect.literal(column, toStored(column, parseLiteral(column.defaultText)));
    }
    return text;
}

std::string
indexStatement(const TableSchema& table, const IndexInfo& index, const Dialect& dialect) {
    std::string terms;
    std::string identities;
    for (const auto& name : index.columns) {
        const ColumnInfo& column = table.column(name);
        const std::string quoted = dialect.quoteName(column.name);
        const bool byKey = column.kind == ColumnKind::text && dialect.orderKey != nullptr;
        terms += (terms.empty() ? "" : ",") + (byKey ? dialect.orderKey(quoted) : quoted) +
                 dialect.ascending;
        if (byKey && index.unique) {
            identities += "," + dialect.identity(quoted);
        }
    }
    return fillTemplate(
        dialect.createIndex,
        {{"unique", index.unique ? "UNIQUE " : ""},
         {"index", dialect.quoteName(dialect.indexName(table.name, index.name))},
         {"table", dialect.quoteName(table.name)},
         {"columns", terms + identities}}
    );
}

}  // namespace platform
