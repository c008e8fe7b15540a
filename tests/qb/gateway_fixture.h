#pragma once

#include "platform/ports/platform.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace testing_support {

/// A company file that answers what a test says: host queries from `hostVersions`, every other set
/// with the next of `answers`, else with a plain success. Answers are texts made by answer().
struct ScriptedCompany {
    std::vector<std::string> calls;  ///< "open APP|NAME", "begin FILE", "end", "close"
    std::vector<std::string> sent;   ///< documents other than host queries
    int hostQueries = 0;
    std::vector<std::string> sessionVersions = {"1.0", "6.0", "13.0"};
    std::vector<std::string> hostVersions = {"1.0", "6.0", "13.0"};
    std::deque<std::string> answers;
    bool withoutList = false;  ///< what comes back has no list of answers
    std::map<std::string, platform::PlatformError> failures;  ///< by step: "make", "begin",
                                                              ///< "exchange"
    std::function<void()> onMessageBox;
    bool operatorPresent = true;

    void failIfTold(const std::string& step) const;
};

/// One answer with a status.
std::string answer(
    const std::string& request, int code, const std::string& message, const std::string& body = ""
);
/// Answer of a query that found `body`, and of one that found nothing ("none here").
std::string found(const std::string& query, const std::string& body);
std::string notFound(const std::string& query);

/// The gateway over the real session, whose channel leads to a scripted company file. The run log
/// is a real file in a scratch folder.
class GatewayTest : public ::testing::Test {
protected:
    GatewayTest();
    ~GatewayTest() override;

    /// The last document sent, without line breaks and indents.
    [[nodiscard]] std::string lastRequest() const;
    /// The boxes shown since the last call as "title|text", joined by " / ".
    std::string boxes();
    /// Lines of the run log since the last call, without date and time, joined by " / ".
    std::string logLines();

    ScriptedCompany company;

private:
    struct World;
    std::unique_ptr<World> world_;
};

}  // namespace testing_support
