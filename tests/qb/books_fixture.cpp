#include "qb/books_fixture.h"

#include "companyfile/company_file.h"
#include "core/brv_op.h"
#include "platform/qbxml/session_manager.h"
#include "platform/standin/standin_channel.h"
#include "qb/smQB_Utilities.h"

#include <algorithm>
#include <sstream>

namespace testing_support {

namespace {

/// Lines of `left` that `right` has not, each behind `sign`.
std::string
without(const std::vector<std::string>& left, const std::vector<std::string>& right, char sign) {
    std::string lines;
    for (const std::string& line : left) {
        if (std::find(right.begin(), right.end(), line) == right.end()) {
            lines.append(1, sign).append(" ").append(line).append("\n");
        }
    }
    return lines;
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
    std::vector<std::string> now = records();
    std::string lines = without(known_, now, '-') + without(now, known_, '+');
    known_ = std::move(now);
    return lines;
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
