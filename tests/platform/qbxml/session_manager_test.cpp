#include "platform/qbxml/logging_channel.h"
#include "platform/qbxml/response_document.h"
#include "platform/qbxml/session_manager.h"
#include "support/temp_folder.h"

#include <functional>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using platform::PlatformError;
using platform::QbxmlSessionManager;

constexpr char kHostAnswer[] =
    "<QBXML><QBXMLMsgsRs><HostQueryRs statusCode=\"0\"/></QBXMLMsgsRs></QBXML>";

/// The far end of a channel: notes the calls and answers with one text.
struct FarEnd {
    std::string calls;
    std::string answer = kHostAnswer;
    bool failsEnd = false;
};

class NotingChannel : public platform::QBChannel {
public:
    explicit NotingChannel(FarEnd& farEnd) : farEnd_(farEnd) {}
    void open(const std::string&, const std::string&) override { farEnd_.calls += "open "; }
    void begin(const std::string&, int) override { farEnd_.calls += "begin "; }
    void end() override {
        farEnd_.calls += "end ";
        if (farEnd_.failsEnd) {
            throw PlatformError(-1, "lost");
        }
    }
    void close() override { farEnd_.calls += "close "; }
    std::vector<std::string> versions() override { return {"13.0"}; }
    std::string exchange(const std::string&) override {
        if (farEnd_.answer == "lost") {
            throw PlatformError(-1, "lost");
        }
        return farEnd_.answer;
    }

private:
    FarEnd& farEnd_;
};

void run(QbxmlSessionManager& session, const std::string& calls) {
    const auto set = session.CreateMsgSetRequest("US", 1, 0);
    set->append("HostQuery");
    for (const char call : calls) {
        switch (call) {
        case 'o':
            session.OpenConnection("id", "name");
            break;
        case 'b':
            session.BeginSession("", 0);
            break;
        case 'r':
            session.DoRequests(*set);
            break;
        case 'v':
            EXPECT_EQ(session.QBXMLVersionsForSession(), std::vector<std::string>{"13.0"});
            break;
        case 'e':
            session.EndSession();
            break;
        default:
            session.CloseConnection();
            break;
        }
    }
}

TEST(SessionManager, keepsTheOrderOfCalls) {
    struct Case {
        const char* given;
        const char* calls;  ///< open, begin, requests, versions, end, close by their first letters
        std::int32_t error;
        const char* reached;
    };
    const Case cases[] = {
        {"the whole order twice", "obvrecobec", 0, "open begin end close open begin end close "},
        {"closing ends the session", "obc", 0, "open begin end close "},
        {"closing what is not open", "cocc", 0, "open close "},
        {"beginning without a connection", "b", platform::kNoConnection, ""},
        {"opening twice", "oo", platform::kConnectionOpenedTwice, "open "},
        {"beginning twice", "obb", platform::kSessionBegunTwice, "open begin "},
        {"requests without a session", "or", platform::kNoSession, "open "},
        {"requests after the end", "ober", platform::kNoSession, "open begin end "},
        {"versions without a session", "ov", platform::kNoSession, "open "},
        {"ending twice", "obee", platform::kSessionOver, "open begin end "},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.given);
        FarEnd farEnd;
        QbxmlSessionManager session(std::make_unique<NotingChannel>(farEnd));
        std::int32_t error = 0;
        try {
            run(session, row.calls);
        } catch (const PlatformError& failure) {
            error = failure.number();
        }
        EXPECT_EQ(error, row.error);
        EXPECT_EQ(farEnd.calls, row.reached);
    }
}

TEST(SessionManager, isOverWhenItsEndFails) {
    FarEnd farEnd;
    farEnd.failsEnd = true;
    QbxmlSessionManager session(std::make_unique<NotingChannel>(farEnd));
    run(session, "ob");
    EXPECT_THROW(session.EndSession(), PlatformError);
    run(session, "cobc");
    EXPECT_EQ(farEnd.calls, "open begin end close open begin end close ");
}

class DocumentLog : public ::testing::Test {
protected:
    void exchange(const std::string& document) {
        platform::LoggingChannel channel(
            std::make_unique<NotingChannel>(farEnd), folder.str() + "/log.xml"
        );
        channel.exchange(document);
    }

    testing_support::TempFolder folder;
    FarEnd farEnd;
};

TEST_F(DocumentLog, holdsWhatWasSentAndReceivedForItsOwnerOnly) {
    folder.write("log.xml", "");
    ::chmod((folder.path() / "log.xml").c_str(), 0644);
    farEnd.answer = "<a/>\n";
    exchange("<q/>");
    farEnd.answer = "lost";
    EXPECT_THROW(exchange("<r/>\n"), PlatformError);
    EXPECT_EQ(
        folder.read("log.xml"),
        "<!-- sent -->\n<q/>\n<!-- received -->\n<a/>\n<!-- sent -->\n<r/>\n"
    );
    struct stat status {};
    ASSERT_EQ(::stat((folder.path() / "log.xml").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(DocumentLog, isKeptWhenTheEnvironmentNamesIt) {
    for (const std::string& name : {std::string(), folder.str() + "/named.xml"}) {
        ::setenv("BREVANE_QBXML_LOG", name.c_str(), 1);
        const auto channel = platform::withDocumentLog(std::make_unique<NotingChannel>(farEnd));
        ::unsetenv("BREVANE_QBXML_LOG");
        EXPECT_EQ(channel->exchange("<q/>"), kHostAnswer);
        EXPECT_EQ(std::filesystem::exists(folder.path() / "named.xml"), !name.empty());
    }
    EXPECT_EQ(
        folder.read("named.xml"),
        std::string("<!-- sent -->\n<q/>\n<!-- received -->\n") + kHostAnswer + "\n"
    );
}

TEST_F(DocumentLog, neverDisturbsTheExchange) {
    std::filesystem::create_directory(folder.path() / "log.xml");
    EXPECT_NO_THROW(exchange("<q/>"));
}

}  // namespace
