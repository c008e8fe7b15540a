#include "qb/posted_transactions.h"

#include "qb/smQB_Utilities.h"
#include "util/basic_error.h"
#include "util/conversions.h"

namespace qb {

namespace {

constexpr std::int32_t kNoneFound = 1;

}  // namespace

std::vector<PostedTransaction>
postedTransactions(const std::string& kind, const std::string& refNumber) {
    const auto request = gfoMsgSetRequest_latest(session());
    request->append(kind + "Query").at("RefNumber").setText(util::rtrim(refNumber));
    const auto answers = session().DoRequests(*request);
    if (answers == nullptr || answers->ResponseList.empty()) {
        throw util::BasicError::of(91);
    }
    const platform::IResponse& answer = answers->ResponseList.front();
    if (answer.StatusCode != 0 && answer.StatusCode != kNoneFound) {
        throw platform::PlatformError(answer.StatusCode, answer.StatusMessage);
    }
    std::vector<PostedTransaction> posted;
    for (const platform::QBElement* found : answer.Detail.all(kind + "Ret")) {
        PostedTransaction& transaction = posted.emplace_back();
        transaction.DueDate = found->find("DueDate").text();
        std::erase(transaction.DueDate, '-');
    }
    return posted;
}

}  // namespace qb
