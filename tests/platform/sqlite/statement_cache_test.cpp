#include "one_table.h"
#include "platform/ports/platform_error.h"
#include "platform/sql_dialect/statement_cache.h"

#include <gtest/gtest.h>

namespace {

/// A translation as text: statement, values, or the error.
std::string shown(const std::string& text, const std::vector<platform::Stored>& values) {
    std::string all = text;
    for (const auto& value : values) {
        all += " | ";
        if (const auto* whole = std::get_if<std::int64_t>(&value)) {
            all += "whole " + std::to_string(*whole);
        } else if (const auto* number = std::get_if<double>(&value)) {
            all += "number " + std::to_string(*number);
        } else if (const auto* characters = std::get_if<std::string>(&value)) {
            all += "text " + *characters;
        } else {
            all += "none";
        }
    }
    return all;
}

std::string error(const platform::PlatformError& error) {
    return std::to_string(error.number()) + " " + error.description();
}

std::string step(const char* code, const char* town, const char* town2) {
    const std::string c = std::string("'") + code + "'";
    return "SELECT  TOP 1 * FROM T WHERE (SELECT COUNT(*) FROM T WHERE Code=" + c +
           ") > 1 AND Code=" + c + " AND Town>'" + town + "' OR Code>'" + town2 +
           "' ORDER BY Code,Town";
}

/// Statements one after the other; each is like one before it, and in many a text that stays or
/// changes decides about more than a value.
const std::string kStatements[] = {
    "SELECT TOP 1 * FROM T WHERE Code='A' AND Town>='B' ORDER BY Code",
    "SELECT TOP 1 * FROM T WHERE Code='O''Neil' AND Town>='''' ORDER BY Code",
    "SELECT TOP 1 * FROM T WHERE Code='' AND Town>='\xe9t~  ' ORDER BY Code",
    "SELECT TOP 1 * FROM T WHERE Code='A' AND Town>='A' ORDER BY Code",
    "SELECT TOP 1 * FROM T WHERE Code='1' AND Town>='1' ORDER BY Code",
    step("A", "B", "A"),  // the row behind the key: asked alternative by alternative
    step("C", "D", "C"),  // the same of another key
    step("C", "D", "E"),  // no step: the alternatives overlap
    step("C", "C", "C"),  // a step whose parts are alike by chance
    step("F", "F", "F"),
    step("F", "G", "F"),
    "SELECT * FROM T WHERE N='7' AND LIMIT='1.005'",
    "SELECT * FROM T WHERE N=' 8 ' AND LIMIT='-2.5'",
    "SELECT * FROM T WHERE N='x' AND LIMIT='1'",
    "SELECT * FROM T WHERE N='9' AND LIMIT='y'",
    "SELECT * FROM T WHERE N='9' AND LIMIT='3'",
    "SELECT * FROM T WHERE N=7",
    "SELECT * FROM T WHERE N=8",
    "SELECT * FROM T WHERE N='8'",
    "SELECT * FROM T WHERE Code=NULL AND Town='B'",
    "SELECT * FROM T WHERE Code IN ('A','B') AND NOT Town='C'",
    "SELECT * FROM T WHERE Code IN ('B','B') AND NOT Town='C'",
    "SELECT TOP '1' * FROM T WHERE Code='A'",
    "SELECT TOP '2' * FROM T WHERE Code='A'",
    "SELECT * FROM T WHERE (SELECT COUNT(*) FROM T WHERE Code='A') > '1' AND Town='B'",
    "SELECT * FROM T WHERE (SELECT COUNT(*) FROM T WHERE Code='A') > '2' AND Town='B'",
    "SELECT * FROM T WHERE [Code]='A''B' AND \"Town\"='C'",
    "SELECT COUNT(*) FROM T WHERE Code='A'",
    "SELECT COUNT(*) FROM T WHERE Code='B'",
    "SELECT * FROM T WHERE Code='A",
    "SELECT * FROM T WHERE Code='A'''",
    "SELECT * FROM U WHERE Code='A'",
    "SELECT * FROM U WHERE Code='B'",
    "INSERT INTO T VALUES('A','B',1,2)",
    "INSERT INTO T VALUES('C','D',1,2)",
    "UPDATE T SET Code='A' WHERE Town='B'",
    "UPDATE T SET Code='C' WHERE Town='D'",
    "sp_RENAME 'T.Code', 'City ', 'COLUMN'",
    "sp_RENAME 'T.Town', 'City ', 'COLUMN'",
};

TEST(StatementCache, givesWhatATranslationOfItsOwnGives) {
    const OneTable schema;
    const platform::Dialect dialect = readable();
    platform::StatementCache cache(schema, dialect);
    for (const int round : {1, 2}) {
        for (const auto& statement : kStatements) {
            SCOPED_TRACE(std::to_string(round) + " " + statement);
            std::string own;
            std::string kept;
            try {
                const auto translation = platform::translate(statement, schema, dialect);
                own = shown(translation.text, translation.values);
            } catch (const platform::PlatformError& refused) {
                own = error(refused);
            }
            try {
                const auto filled = cache.translated(statement, 1);
                kept = shown(filled.translation->text, filled.values);
            } catch (const platform::PlatformError& refused) {
                kept = error(refused);
            }
            EXPECT_EQ(kept, own);
        }
    }
}

TEST(StatementCache, keepsAQueryUntilTheTablesChange) {
    const OneTable schema;
    platform::StatementCache cache(schema, platform::kEmbeddedDialect);
    const auto first = cache.translated(step("A", "B", "A"), 1).translation;
    EXPECT_EQ(cache.translated(step("C", "D", "C"), 1).translation, first);
    EXPECT_NE(cache.translated(step("A", "B", "A"), 2).translation, first);
}

}  // namespace
