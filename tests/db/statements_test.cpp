#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Notes.h"
#include "db/store_fixture.h"
#include "support/expected_file.h"
#include "support/json.h"
#include "util/conversions.h"

#include <map>
#include <set>

namespace {

using testing_support::Json;

class Statements : public StoreTest {};

INSTANTIATE_TEST_SUITE_P(Store, Statements, ::testing::ValuesIn(storeAdapters()), adapterName);

constexpr std::int16_t kKeyedOperations[] = {
    db::opEqual, db::opGreater, db::opGreaterEqual, db::opLess, db::opLessEqual};

/// Stores a key of `parts` parts for Common, whose own key routine is none.
void setParts(std::int16_t parts) {
    std::vector<db::KeyPair> pairs;
    for (std::int16_t part = 0; part < parts; ++part) {
        const bool isNumber = part == 1;
        pairs.push_back({part, isNumber ? util::Value(std::int64_t{7}) : std::string("O'Hara")});
    }
    gpDB_SetKey(db::tableCommon, parts, pairs);
}

/// The operation's statement; what the server says to it is of no matter here.
std::string sent(testing_support::StoreWatch& watch, std::int16_t operation) {
    watch.statements.clear();
    platform::ignoringErrors([&] { gfiDB_Operation(db::tableCommon, operation, 0, kNo); });
    return watch.statements.empty() ? "" : watch.statements.front();
}

TEST_P(Statements, standLetterForLetterForEveryCountOfParts) {
    openStore();
    std::string text;
    for (std::int16_t parts = 0; parts <= 7; ++parts) {
        text += "# " + std::to_string(parts) + " parts\n";
        setParts(parts);
        for (const std::int16_t operation : kKeyedOperations) {
            text += sent(watch, operation) + "\n";
        }
        for (const std::int16_t operation :
             {db::opGetFirst, db::opGetLast, db::opGetNext, db::opGetPrevious}) {
            text +=
                std::string(db::operationName(operation)) + ": " + sent(watch, operation) + "\n";
        }
    }
    testing_support::expectFile("db/statements.txt", text);
}

TEST_P(Statements, ofTheNotesTableTakeOnePartForNone) {
    openStore();
    db::bindNotes();
    gfbDB_OpenTable(db::tableNotes);
    gpDB_SetKey(db::tableNotes, 0, {{1, std::int64_t{5}}});
    watch.statements.clear();
    constexpr std::int16_t kNoSuchKey = 9;  // leaves the stored key as it is
    gfiDB_Operation(db::tableNotes, db::opEqual, kNoSuchKey);
    EXPECT_EQ(watch.statements.front(), "SELECT TOP 1 * FROM Notes WHERE RefID='5' ORDER BY RefID");
}

/// The observed rows: what a server gave for each statement over the same rows.
class ObservedRows : public StoreTest {
protected:
    void SetUp() override {
        openStore();
        observed_ = testing_support::parseJsonFile(BREVANE_TEST_DATA "/rows.json");
        for (const auto& [name, table] : observed_["tables"].members()) {
            fill(name, table);
        }
    }

    static std::int16_t numberOf(const std::string& table) {
        return table == "Names" ? db::tableNames : db::tableSalesHead;
    }
    [[nodiscard]] std::string uidOf(const std::string& table) const {
        return observed_["tables"][table]["uid"][std::size_t{0}].text();
    }
    /// Puts the key values of a case into the table's record.
    static void stand(std::int16_t table, std::int16_t key, const Json& values) {
        ASSERT_NE(gfiDB_Operation(table, db::opGetFirst, -1), kNo);
        db_pRecordKey_prepare(table, key);
        const auto ordinals = DBKeyFields;
        for (std::size_t part = 0; part < values.items().size(); ++part) {
            const Json& value = values[part];
            const bool isText = value.kind() == Json::Kind::text;
            const util::Value held = isText ? util::Value(value.bytes()) : value.integer();
            gpDB_SetField(table, ordinals.at(part), held);
        }
        db_pRecord_fromRow(table);
    }

    Json observed_;

private:
    static void fill(const std::string& name, const Json& table) {
        for (const Json& row : table["rows"].items()) {
            std::string values;
            for (std::size_t column = 0; column < row.items().size(); ++column) {
                const std::string& type = table["types"][column].text();
                const std::string text = row[column].bytes();
                const bool isText = util::upper(type).starts_with("CHAR");
                values += values.empty() ? "" : ",";
                values += isText ? "'" + util::replaceAll(text, "'", "''") + "'" : text;
            }
            execute("INSERT INTO " + name + " VALUES(" + values + ")");
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Store, ObservedRows, ::testing::ValuesIn(storeAdapters()), adapterName);

struct Shape {
    std::int16_t operation;
    bool isDirect = false;
};

const std::map<std::string, Shape> kShapes = {
    {"=", {db::opEqual}},
    {">", {db::opGreater}},
    {">=", {db::opGreaterEqual}},
    {"<", {db::opLess}},
    {"<=", {db::opLessEqual}},
    {"first", {db::opGetFirst}},
    {"last", {db::opGetLast}},
    {"next", {db::opGetNext}},
    {"previous", {db::opGetPrevious}},
    {"field=", {db::opEqual, true}},
    {"field>=", {db::opGreaterEqual, true}},
    {"field<", {db::opLess, true}},
};

/// A statement whose texts lack the blanks at their ends; a blank between a comparison and its text
/// stays.
std::string withoutPadding(const std::string& statement) {
    std::string text;
    for (const char character : statement) {
        while (character == '\'' && text.ends_with(' ') && !text.ends_with("> ") &&
               !text.ends_with("< ")) {
            text.pop_back();
        }
        text += character;
    }
    return text;
}

TEST_P(ObservedRows, comeBackForTheSameStatements) {
    int exact = 0;
    for (const Json& query : observed_["queries"].items()) {
        SCOPED_TRACE(query["sql"].text());
        const std::string name = query["table"].text();
        const std::int16_t table = numberOf(name);
        const Shape shape = kShapes.at(query["shape"].text());
        auto key = static_cast<std::int16_t>(query["key"].integer());
        // Given
        if (shape.isDirect) {
            db_pRecordKey_prepare(table, key);
            key = DBKeyFields[0];
            const std::string uid = std::to_string(query["pos"][std::size_t{0}].integer());
            ASSERT_NE(
                gfbDB_OpenBySQL(
                    "SELECT * FROM " + name + " WHERE " + uidOf(name) + "=" + uid, table
                ),
                kNo
            );
        } else {
            stand(table, key, query["values"]);
        }
        watch.statements.clear();
        // When
        const LegacyBool found =
            gfiDB_Operation(table, shape.operation, key, legacyBool(shape.isDirect));
        // Then
        const std::string& sent = watch.statements.front();
        ASSERT_EQ(withoutPadding(sent), withoutPadding(query["sql"].text()));
        exact += sent == query["sql"].text() ? 1 : 0;
        ASSERT_EQ(found != kNo, !query["uid"].isNull());
        if (found != kNo) {
            const std::string uid = db::statementText(gfvDB_GetField(table, uidOf(name)));
            std::set<std::string> right = {query["uid"][std::size_t{0}].text()};
            for (const Json& tie : query["ties"].items()) {
                right.insert(tie[std::size_t{0}].text());
            }
            ASSERT_TRUE(right.contains(uid)) << uid;
        }
    }
    // Some statements were observed with texts that no record pads; all others are the same.
    EXPECT_GE(exact, 1600);
}

TEST_P(ObservedRows, followEachOtherInWalks) {
    for (const Json& walk : observed_["walks"].items()) {
        if (!walk["deterministic"].truth()) {
            continue;
        }
        const std::string name = walk["table"].text();
        const std::int16_t table = numberOf(name);
        const auto key = static_cast<std::int16_t>(walk["key"].integer());
        const bool isForward = walk["direction"].text() == "next";
        SCOPED_TRACE(name + " key " + std::to_string(key) + " " + walk["direction"].text());
        std::vector<std::string> expected;
        for (const Json& uid : walk["sequence"].items()) {
            expected.push_back(uid[std::size_t{0}].text());
        }
        std::vector<std::string> seen;
        LegacyBool found = gfiDB_Operation(table, isForward ? db::opGetFirst : db::opGetLast, key);
        while (found != kNo && seen.size() <= expected.size()) {
            seen.push_back(db::statementText(gfvDB_GetField(table, uidOf(name))));
            found = gfiDB_Operation(table, isForward ? db::opGetNext : db::opGetPrevious, key);
        }
        EXPECT_EQ(seen, expected);
    }
}

}  // namespace
