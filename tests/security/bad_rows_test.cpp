#include "security/clsEncryption.h"
#include "security/login_fixture.h"
#include "security/secret.h"
#include "security/sm_Encryption_Ops.h"
#include "support/table_file.h"
#include "util/conversions.h"

namespace {

using testing_support::Attempt;
using testing_support::kExpired;
using testing_support::kUnknown;
using testing_support::kWrong;
using testing_support::LoginTest;
using testing_support::tableRows;

class BadRows : public LoginTest {
protected:
    /// A stored form under the present key of the person in `gSalesCode` that says it holds
    /// `length` characters, where there are twelve.
    static std::string formThatSays(std::uint32_t length) {
        security::Bytes block(16, 'A');
        for (std::size_t at = 0; at < 4; ++at) {
            block[at] = static_cast<std::uint8_t>(length >> (8 * at));
        }
        clsEncryption cipher;
        cipher.gkey(4, 4, security::bytesOf(gfsUserKey()));
        cipher.Encrypt(block);
        std::string text;
        for (const std::uint8_t byte : block) {
            constexpr char kDigits[] = "0123456789ABCDEF";
            text += kDigits[byte / 16U];
            text += kDigits[byte % 16U];
        }
        return text;
    }
};

}  // namespace

TEST_F(BadRows, letNobodyInAndHinderNoChange) {
    open();
    addUser("ODD", "O1", "valid12");
    // What its column holds, or what the length field in it says.
    for (const auto& [given, text, says] : tableRows<3>("security/bad_columns.json")) {
        SCOPED_TRACE(given);
        user("ODD");
        const std::string column =
            says == "-" ? text : formThatSays(static_cast<std::uint32_t>(std::stoul(says)));
        gSalesCode.Password = column;
        update();
        logIn({{"ODD", "AAAAAAAAAAAA"}, {"ODD", ""}, {"O1", column}});
        EXPECT_FALSE(isIn());
        EXPECT_EQ(boxes(), std::string(kWrong) + kWrong + kWrong);
        logIn({{"", ""}});
        boxes();
        // In the history such a column matches nothing, and leaves with the others.
        user("ODD");
        EXPECT_EQ(gSalesCode.Password.trimmed(), column);
        gSalesCode.Password = gfsPassword_Encrypt("valid12", gfsUserKey());
        gSalesCode.LastPwd = column;
        gSalesCode.Last4thPwd = column;
        update();
        expireIn("ODD", 0);
        newPasswords = {{"AAAAAAAAAAAA", "AAAAAAAAAAAA"}};
        logIn({{"ODD", "valid12"}});
        EXPECT_TRUE(isIn());
        EXPECT_EQ(boxes(), kExpired);
        user("ODD");
        EXPECT_EQ(plainOf(gSalesCode.Password.trimmed()), "AAAAAAAAAAAA");
        EXPECT_EQ(gSalesCode.Last2ndPwd.trimmed(), column);
    }
}

TEST_F(BadRows, areThoseOfNobodyWithoutStoreNumberAndBlankWithoutValues) {
    // Given: a table in which every column may be missing.
    open();
    gSalesCode = db::SalesCodeRecord();
    gSalesCode.SalesCode = "FREE";
    gSalesCode.ShortCut = "F1";
    const std::string stored = gfsPassword_Encrypt("free1234", gfsUserKey());
    const std::string create = DBTableDescriptors[db::tableSalesCode].CreateSQL;
    execute("DROP TABLE SalesCode");
    execute(util::replaceAll(create, " NOT NULL", ""));
    execute(
        "INSERT INTO SalesCode (SalesCode, StoreNumber, ShortCut, Password) "
        "VALUES('FREE', NULL, 'F1', '" +
        stored + "')"
    );
    execute("INSERT INTO SalesCode (SalesCode, StoreNumber, ShortCut, FullName, Password, LastPwd, "
            "Last2ndPwd, Last3rdPwd, Last4thPwd, ResetPwdDate, Status) "
            "VALUES('BARE', 1, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)");
    for (const std::int16_t number : std::initializer_list<std::int16_t>{1, 0, -1}) {
        SCOPED_TRACE("store " + std::to_string(number));
        login.StoreNumber = number;
        // When
        logIn({{"FREE", "free1234"}, {"F1", "free1234"}, {"FREE", ""}});
        // Then
        EXPECT_FALSE(isIn());
        EXPECT_EQ(boxes(), std::string(kUnknown) + kUnknown + kUnknown);
        logIn({{"", ""}});
        boxes();
    }
    // The sixth failure finds no row that it could close.
    login.StoreNumber = 1;
    logIn(std::vector<Attempt>(6, {"FREE", "free1234"}));
    EXPECT_EQ(login.Cancel, kYes);
    EXPECT_EQ(column("SELECT SalesCode FROM SalesCode WHERE Status = 'I'"), "");
    // What has no value is blank: no password, no date, no history, an open account.
    boxes();
    logIn({{"BARE", ""}});
    EXPECT_TRUE(isIn());
    login.StrongPwdRequired = "Yes";
    newPasswords = {{"bare1234", "bare1234"}};
    logIn({{"BARE", ""}});
    EXPECT_TRUE(isIn());
    EXPECT_EQ(plainOf(user("BARE").Password.trimmed()), "bare1234");
    EXPECT_FALSE(util::aboveBlank(gSalesCode.LastPwd.trimmed()));
}
