#include "qb/books_fixture.h"

#include "companyfile/company_file.h"
#include "core/brv_op.h"
#include "platform/qbxml/session_manager.h"
#include "platform/standin/standin_channel.h"
#include "qb/smQB_Utilities.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <string_view>

namespace testing_support {

namespace {

/// The text between `before` and the next quotation mark or comma; empty when it is not there.
std::string valueBehind(const std::string& line, const std::string& before) {
    const std::size_t at = line.find(before);
    return at == std::string::npos
               ? std::string()
               : line.substr(
                     at + before.size(),
                     line.find_first_of("\",", at + before.size()) - at - before.size()
                 );
}

/// List and identity of a record, the same before and after a change.
std::string identityOf(const std::string& line) {
    const std::string id = valueBehind(line, R"("ListID": ")");
    return line.substr(0, line.find(' ')) + " " +
           (id.empty() ? valueBehind(line, R"("txnNumber": )") : id);
}

/// Ids depend on how much the template holds.
bool isShown(const std::string& member) {
    return !member.starts_with("ListID\"") && !member.starts_with("EditSequence\"");
}

/// The members of a record in their order, without the ids, each without its first quotation mark.
std::vector<std::string> membersOf(const std::string& line) {
    constexpr std::string_view kBetween = ", \"";
    std::vector<std::string> members;
    std::size_t from = line.find('{') + 2;
    for (std::size_t to = 0; to != std::string::npos; from = to + kBetween.size()) {
        to = line.find(kBetween, from);
        const std::string member = line.substr(from, to - from);
        if (isShown(member)) {
            members.push_back(member);
        }
    }
    return members;
}

std::string recordOf(const std::string& line) {
    std::string text = line.substr(0, line.find(' '));
    for (const std::string& member : membersOf(line)) {
        text += " \"" + member;
    }
    return text + "\n";
}

/// The name of a record and those of its members that differ from the `old` ones.
std::string changeOf(const std::string& old, const std::string& line) {
    const std::vector<std::string> before = membersOf(old);
    std::string text =
        "~ " + line.substr(0, line.find(' ')) + " " + valueBehind(line, R"("Name": ")") + ":";
    for (const std::string& member : membersOf(line)) {
        if (std::find(before.begin(), before.end(), member) == before.end()) {
            text += " \"" + member;
        }
    }
    return text + "\n";
}

}  // namespace

platform::PlatformError serverGone() {
    return {kServerGone, "The server is gone."};
}

BooksTest::BooksTest() {
    companyfile::createRetail(companyFile(), "");
    platform::Platform adapters = platform::current();
    adapters.makeSessionManager = [this] {
        return std::make_unique<platform::QbxmlSessionManager>(
            std::make_unique<FaultChannel>(std::make_unique<platform::StandinChannel>(), faults)
        );
    };
    platform::install(std::move(adapters));
    gsQBFileName = companyFile();
    std::string name;
    EXPECT_EQ(gfbOpenConnectionBeginSession(name), kYes);
    known_ = records();
}

BooksTest::~BooksTest() {
    qb::resetGateway();
}

std::vector<std::string> BooksTest::records() const {
    std::istringstream dump(companyfile::CompanyFile::open(companyFile()).dump());
    std::vector<std::string> records;
    std::string list;
    for (std::string line; std::getline(dump, line);) {
        if (line.starts_with("  \"")) {
            list = line.substr(3, line.find('"', 3) - 3);
        } else if (line.starts_with("    {") && list != "accounts") {
            const std::size_t end = line.find_last_of('}');
            records.push_back(list + " " + line.substr(4, end - 3));
        }
    }
    return records;
}

std::string BooksTest::changes() {
    std::map<std::string, std::string> before;
    for (const std::string& line : known_) {
        before[identityOf(line)] = line;
    }
    known_ = records();
    std::string text;
    for (const std::string& line : known_) {
        const std::string id = identityOf(line);
        const auto old = before.find(id);
        if (old == before.end()) {
            text += "+ " + recordOf(line);
        } else if (old->second != line) {
            text += changeOf(old->second, line);
        }
        before.erase(id);
    }
    for (const auto& [id, line] : before) {
        text += "- " + recordOf(line);
    }
    return text;
}

void BooksTest::expectSound() const {
    auto file = companyfile::CompanyFile::open(companyFile());
    util::Money difference;
    for (const companyfile::AccountBalance& account : file.trialBalance()) {
        difference += account.debit - account.credit;
    }
    EXPECT_TRUE(difference.isZero()) << difference.text(2);
    EXPECT_EQ(file.check(), std::vector<std::string>());
}

}  // namespace testing_support
