#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

class Entries : public CompanyTest {
protected:
    /// The answer to a query by the name; sales reps are looked for in the whole list.
    Reply find(Case& row) {
        const bool byName = row["nameField"] == "Name";
        return ask(row["query"], byName ? "<FullName>" + row["name"] + "</FullName>" : "");
    }
    Reply remove(const std::string& kind, const std::string& listId) {
        return ask(
            "ListDel", "<ListDelType>" + kind + "</ListDelType><ListID>" + listId + "</ListID>"
        );
    }
};

TEST_F(Entries, ofEveryKindAreFoundUsedAndDeleted) {
    const auto idIn = [](const std::string& record) {
        return textsOf(record.substr(0, record.find("<TimeCreated>")), "ListID");
    };
    for (Case& row : casesOf("entries.txt")) {
        const std::string kind = row["given"];
        SCOPED_TRACE(kind);
        const std::string listId = idIn(make(kind + "Add", row["fields"]));
        EXPECT_EQ(send(kind + "Add", row["fields"]).code, 3100);
        const Reply found = find(row);
        EXPECT_EQ(found.code, 0) << found.message;
        const std::string names = "|" + textsOf(found.body, row["nameField"]) + "|";
        EXPECT_NE(names.find("|" + row["name"] + "|"), std::string::npos) << names;

        EXPECT_EQ(remove(kind, listId).code, 0);
        EXPECT_EQ(remove(kind, listId).code, 3120);
        const Reply unknown = send(row["user"], row["userFields"]);
        EXPECT_EQ(unknown.code, 3140) << unknown.message;

        const std::string again = idIn(make(kind + "Add", row["fields"]));
        make(row["user"], row["userFields"]);
        EXPECT_EQ(remove(kind, again).code, 3160);
        expectSound();
    }
}

}  // namespace

}  // namespace companyfile
