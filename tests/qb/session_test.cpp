#include "core/brv_op.h"
#include "qb/gateway_fixture.h"
#include "qb/smQB_Utilities.h"
#include "support/table_file.h"

namespace {

using platform::PlatformError;
using testing_support::answer;

class Session : public testing_support::GatewayTest {
protected:
    static LegacyBool open() {
        std::string name;
        return gfbOpenConnectionBeginSession(name);
    }
    /// Version in the last document sent; a country other than the United States stands in front.
    [[nodiscard]] std::string spokenVersion() const {
        const std::string mark = "<?qbxml version=\"";
        const std::size_t start = company.sent.back().find(mark) + mark.size();
        return company.sent.back().substr(start, company.sent.back().find('"', start) - start);
    }
};

TEST_F(Session, choosesTheNumericMaximumAndComparesItAsText) {
    struct Case {
        std::vector<std::string> reported;
        const char* latest;
        const char* spoken;
        bool warns;
    };
    const Case cases[] = {
        {{"9.0", "13.0", "6.0"}, "13.0", "6.0", false},
        {{"2.0"}, "2.0", "6.0", false},
        {{"1.1"}, "1.1", "6.0", false},
        {{"13.0", "13.00"}, "13.0", "6.0", false},
        {{"05.5"}, "05.5", "5.0", false},
        {{"02.0"}, "02.0", "2.0", false},
        {{"02.5"}, "02.5", "1.0", true},
        {{"none"}, "", "1.0", true},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.reported.front());
        company.hostVersions = row.reported;
        EXPECT_EQ(open(), kYes);
        EXPECT_EQ(gsQBVersion, row.latest);
        EXPECT_EQ(
            gsQBMajorVersion + gsQBMinorVersion,
            std::string(row.latest).substr(0, 1) +
                (*row.latest == '\0' ? "" : std::string(1, std::string(row.latest).back()))
        );
        EXPECT_EQ(boxes().find("2002 Release 1") != std::string::npos, row.warns);
        EXPECT_EQ(gfbRequestMsgSet_reset(), kYes);
        requestMsgSet->append("AccountQuery");
        gfbRequests_do();
        EXPECT_EQ(spokenVersion(), row.spoken);
        boxes();
        EndSessionCloseConnection();
    }
}

TEST_F(Session, opensUnderTheFixedIdentifierAndStaysUnitedStatesForACanadianFile) {
    gsQBFileName = "C:\\Books\\Shop.qbw";
    company.sessionVersions = {"1.0", "CA3.0"};
    EXPECT_EQ(open(), kYes);
    EXPECT_EQ(company.calls[0], "open Nuv BRV|NUV Brevane");
    EXPECT_EQ(company.calls[1], "begin C:\\Books\\Shop.qbw");
    EXPECT_EQ(gsQBCountry, "Canada");
    gfbRequestMsgSet_reset();
    requestMsgSet->append("AccountQuery");
    EXPECT_EQ(gfbRequests_do(), kYes);
    EXPECT_EQ(spokenVersion(), "6.0");
}

TEST_F(Session, tellsWhyItDidNotOpen) {
    for (const auto& [given, step, number, box, ends, lastCall] :
         testing_support::tableRows<6>("qb/unopened_sessions.json")) {
        SCOPED_TRACE(given);
        qb::resetGateway();
        company.calls.clear();
        company.failures.clear();
        company.failures.emplace(step, PlatformError(std::stoi(number), "why"));
        gbConnectionReady = kYes;
        bool ended = false;
        try {
            EXPECT_EQ(open(), kNo);
        } catch (const platform::ProgramEnd&) {
            ended = true;
        }
        EXPECT_EQ(ended, ends == "yes");
        EXPECT_EQ(gbConnectionReady, kNo);
        EXPECT_EQ(boxes(), box);
        EXPECT_EQ(company.calls.empty() ? "" : company.calls.back(), lastCall);
    }
}

TEST_F(Session, reportsASecondEnd) {
    open();
    gbQBReady = kYes;
    EndSessionCloseConnection();
    EXPECT_EQ(gbQBReady, kNo);
    EXPECT_EQ(boxes(), "");
    gbQBReady = kYes;
    EndSessionCloseConnection();
    EXPECT_EQ(boxes().find("NUV Brevane|Error in EndSessionCloseConnection\r\nHRESULT = "), 0U);
    EXPECT_EQ(gbQBReady, kYes);
}

TEST_F(Session, isTriedUntilItStandsOrNobodyIsLeftToAnswer) {
    company.failures.emplace("begin", PlatformError(7, "down"));
    int attempts = 0;
    company.onMessageBox = [&] {
        if (++attempts == 3) {
            company.failures.clear();
        }
    };
    gpSessionReady_ensure();
    EXPECT_EQ(attempts, 3);
    EXPECT_EQ(gbQBReady, kYes);

    for (const bool byStop : {true, false}) {
        SCOPED_TRACE(byStop);
        gbQBReady = kNo;
        company.failures.emplace("begin", PlatformError(7, "down"));
        gbStopRequested = legacyBool(byStop);
        company.operatorPresent = byStop;
        gpSessionReady_ensure();
        EXPECT_EQ(gbQBReady, kNo);
    }
}

TEST_F(Session, looksAtTheFirstAnswerOnly) {
    struct Case {
        const char* given;
        std::string answers;
        LegacyBool result;
        const char* box;
        const char* status;
    };
    const Case cases[] = {
        {"success",
         answer("AccountQuery", 0, "Status OK") + answer("AccountQuery", 1, "second"),
         kYes,
         "",
         ""},
        {"not found",
         answer("AccountQuery", 1, "none here"),
         kNo,
         "NUV Brevane|none hereGetting Request",
         "none here"},
        {"warning",
         answer("AccountQuery", 530, "odd"),
         kNo,
         "NUV Brevane|oddGetting Request",
         "odd"},
        {"no answer",
         "",
         kNo,
         "NUV Brevane|Error: 9 Subscript out of range",
         "Error: 9 Subscript out of range"},
    };
    open();
    for (const Case& row : cases) {
        SCOPED_TRACE(row.given);
        gfbRequestMsgSet_reset();
        requestMsgSet->append("AccountQuery");
        company.answers = {row.answers};
        EXPECT_EQ(gfbRequests_do(), kYes);
        EXPECT_EQ(gfbResponse_get(), row.result);
        EXPECT_EQ(boxes(), row.box);
        EXPECT_EQ(gsQBStatusMessage, row.status);
    }
    company.withoutList = true;
    EXPECT_EQ(gfbRequests_do(), kYes);
    EXPECT_EQ(gfbResponse_get(), kNo);
    EXPECT_EQ(boxes(), "NUV Brevane|Set responseList-Failed");
    EXPECT_EQ(response, nullptr);
}

TEST_F(Session, keepsAFailedSendAsErrorText) {
    open();
    gfbRequestMsgSet_reset();
    requestMsgSet->append("AccountQuery");
    company.failures.emplace("exchange", PlatformError(platform::kParseFailed, "bad stream"));
    EXPECT_EQ(gfbRequests_do(), kNo);
    EXPECT_EQ(gsQBStatusMessage, "Error: -2147220480 bad stream");
    EXPECT_EQ(gnQBErrorNumber, -2147220480);
    EXPECT_EQ(boxes(), "NUV Brevane|Error: -2147220480 bad stream");
}

TEST_F(Session, listsTheInitialsOfTheSalesReps) {
    open();
    company.answers = {answer(
        "SalesRepQuery",
        0,
        "Status OK",
        "<SalesRepRet><Initial>H</Initial></SalesRepRet><SalesRepRet><Initial>BK</Initial>"
        "</SalesRepRet>"
    )};
    qb::querySalesReps();
    EXPECT_EQ(gaQBSalesReps, (std::vector<std::string>{"", "H", "BK"}));
    company.answers = {answer("SalesRepQuery", 1, "none")};
    qb::querySalesReps();
    EXPECT_EQ(gaQBSalesReps.size(), 1U);
    EXPECT_EQ(gsQBStatusMessage, "none");
    EXPECT_EQ(boxes(), "");
}

}  // namespace
