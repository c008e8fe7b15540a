#include "platform/qbxml/session_manager.h"
#include "platform/standin/standin_channel.h"
#include "support/temp_folder.h"

#include <functional>

#include <gtest/gtest.h>

namespace {

using companyfile::CompanyFile;
using platform::PlatformError;
using platform::QbxmlSessionManager;

/// A company file in a scratch folder, and sessions with it.
class Standin : public ::testing::Test {
protected:
    Standin() { CompanyFile::create(path); }

    [[nodiscard]] std::unique_ptr<QbxmlSessionManager>
    begun(platform::StandinChannel::Prepare prepare = {}) const {
        auto opened = std::make_unique<QbxmlSessionManager>(
            std::make_unique<platform::StandinChannel>(path, std::move(prepare))
        );
        opened->OpenConnection("id", "name");
        opened->BeginSession("", 0);
        return opened;
    }
    static platform::IResponse
    send(QbxmlSessionManager& session, const char* request, const char* path, const char* text) {
        const auto set = session.CreateMsgSetRequest("US", 6, 0);
        set->append(request).at(path).setText(text);
        return session.DoRequests(*set)->ResponseList.at(0);
    }

    testing_support::TempFolder folder;
    std::string path = folder.str() + "/shop.qbw";
};

std::int32_t errorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const PlatformError& error) {
        return error.number();
    }
    return 0;
}

TEST_F(Standin, carriesTextsThereAndBackUnchanged) {
    const auto first = begun();
    EXPECT_EQ(send(*first, "CustomerAdd", "Name", "Caf\xE9 \x80 & <Co>").StatusCode, 0);
    first->CloseConnection();
    const auto second = begun();
    const auto answer = send(*second, "CustomerQuery", "FullName", "CAF\xC9 \x80 & <Co>");
    EXPECT_EQ(answer.Type, platform::ResponseType::customerQuery);
    EXPECT_EQ(answer.Detail.find("CustomerRet/Name").text(), "Caf\xE9 \x80 & <Co>");
}

TEST_F(Standin, reportsTheVersionsOfItsFile) {
    const std::vector<std::string> versions = {"1.0", "CA3.0", "6.0"};
    const auto canadian = begun([&](CompanyFile& file) { file.setVersions(versions); });
    EXPECT_EQ(canadian->QBXMLVersionsForSession(), versions);
}

TEST_F(Standin, tellsWhyASessionDoesNotBegin) {
    folder.write("notes.qbw", "these are notes");
    struct Case {
        const char* given;
        std::string openFile;
        std::string named;
        std::int32_t expected;
    };
    const Case cases[] = {
        {"no file named and none open", "", "  ", platform::kNotRunning},
        {"the open file", path, "", 0},
        {"the named one before the open one",
         path,
         folder.str() + "/none.qbw",
         companyfile::hresult::kCannotOpen},
        {"a name with backslashes and blanks", "", " " + folder.file("shop.qbw") + " ", 0},
        {"no company file", "", folder.str() + "/notes.qbw", companyfile::hresult::kNotUsable},
        {"a name that no file can have",
         "",
         std::string(5000, 'x'),
         companyfile::hresult::kCannotOpen},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.given);
        platform::StandinChannel channel(row.openFile);
        EXPECT_EQ(errorOf([&] { channel.begin(row.named, 0); }), row.expected);
        EXPECT_EQ(
            errorOf([&] { channel.versions(); }), row.expected == 0 ? 0 : platform::kNotRunning
        );
    }
}

TEST_F(Standin, passesAFailedCallOnWithItsNumber) {
    platform::StandinChannel channel(path, [](CompanyFile& file) {
        file.failAt(2, companyfile::Fault::connectionLostBefore);
    });
    channel.begin("", 0);
    EXPECT_EQ(errorOf([&] { channel.exchange("<QBXML/>"); }), platform::kParseFailed);
    EXPECT_EQ(errorOf([&] { channel.versions(); }), companyfile::hresult::kConnectionLost);
    EXPECT_FALSE(channel.versions().empty());
}

}  // namespace
