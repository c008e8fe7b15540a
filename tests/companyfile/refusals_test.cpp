#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

std::string journalLine(const std::string& side, const std::string& account) {
    return "<Journal" + side + "Line>" + ref("AccountRef", account) +
           "<Amount>5.00</Amount></Journal" + side + "Line>";
}

class Refusals : public CompanyTest {};

/// Adds that are refused; the answer carries no data and nothing of them is kept.
TEST_F(Refusals, carryTheirCodeAndSentence) {
    const std::string before = file_.dump();
    for (const char* table :
         {"refused_values.txt", "refused_entries.txt", "refused_transactions.txt"}) {
        for (Case& row : casesOf(table)) {
            SCOPED_TRACE(row["given"]);
            std::string fields;
            for (int times = row["times"].empty() ? 1 : std::stoi(row["times"]); times > 0;
                 --times) {
                fields += row["fields"];
            }
            const Reply reply = send(row["send"], fields);
            EXPECT_EQ(std::to_string(reply.code), row["code"]);
            EXPECT_EQ(reply.message, row["message"]);
            EXPECT_EQ(reply.severity, "Error");
            EXPECT_EQ(reply.body, "");
        }
    }
    EXPECT_EQ(file_.dump(), before);
}

TEST_F(Refusals, areWarningsWhereOnlyAFieldOfAnotherEditionIsLeftOut) {
    const Reply reply = send(
        "JournalEntryAdd",
        journalLine("Debit", "Checking") + journalLine("Credit", "Returns") + "<Memo>why</Memo>"
    );
    EXPECT_EQ(reply.code, 530);
    EXPECT_EQ(reply.severity, "Warn");
    EXPECT_EQ(reply.message, "The field \"Memo\" is not supported by this implementation.");
    EXPECT_NE(textsOf(reply.body, "TxnID"), "");
    expectSound();
}

}  // namespace

}  // namespace companyfile
