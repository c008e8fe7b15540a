#include "db/nuvDBSM_SalesCodes.h"
#include "security/clsSHA256.h"
#include "security/sm_Encryption_Ops.h"
#include "support/table_file.h"
#include "util/conversions.h"

#include <cstdlib>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

using testing_support::tableRows;

/// The sales code ANN, short-cut AN, of a store.
void holdUser(std::int16_t store) {
    gSalesCode = db::SalesCodeRecord();
    gSalesCode.SalesCode = "ANN";
    gSalesCode.ShortCut = "AN";
    gSalesCode.StoreNumber = store;
}

/// 20,000 cases in the daily run; `make fuzz` asks for a million.
int fuzzCases() {
    const char* const wanted = std::getenv("BREVANE_FUZZ_CASES");  // NOLINT(concurrency-mt-unsafe)
    return wanted == nullptr ? 20000 : std::atoi(wanted);          // NOLINT(cert-err34-c)
}

/// The form of "abc1234" under the key.
constexpr char kStored[] = "E8F0E68B818B054A7A1C109B52E49D4A";
constexpr char kKey[] = "89b412431ac25d2f8a6068c8272ab2afa599011b35a4402ce3f256c267aed0e6";

}  // namespace

TEST(StoredForm, isTheCiphersOutputInDigits) {
    holdUser(1);
    EXPECT_EQ(gfsUserKey(), kKey);
    // Made by another cipher and hash from the same rules.
    for (const auto& [plain, stored] : tableRows<2>("security/stored_forms.json")) {
        SCOPED_TRACE(plain);
        EXPECT_EQ(gfsPassword_Encrypt(plain, kKey), stored);
        EXPECT_EQ(gfsPassword_Decrypt(stored, kKey), plain);
    }
    EXPECT_EQ(gfsPassword_Encrypt("  abc1234 ", kKey), kStored);
    EXPECT_EQ(gfsPassword_Decrypt(" e8f0e68b818b054a7a1c109b52e49d4a  ", kKey), "abc1234");
    EXPECT_EQ(gfsPassword_Encrypt("", kKey) + gfsPassword_Encrypt("abc1234", ""), "");
    EXPECT_EQ(gfsPassword_Decrypt("", kKey) + gfsPassword_Decrypt(kStored, ""), "");
}

TEST(StoredForm, comesBackForEveryLengthAndCharacter) {
    for (std::size_t length = 0; length <= security::kLongestPassword; ++length) {
        for (int code = 0; code < 256; ++code) {
            // The character stands at both ends, where a trim would take it, and all through.
            const std::string plain(length, static_cast<char>(code));
            const std::string stored = gfsPassword_Encrypt(plain, kKey);
            const bool isBlank = code == ' ' && length > 0;
            ASSERT_EQ(
                stored.size(),
                length == 0               ? 0U
                : length <= 12 || isBlank ? 32U
                                          : 64U
            ) << length
              << " characters of code " << code;
            ASSERT_EQ(gfsPassword_Decrypt(stored, kKey), isBlank ? std::string() : plain)
                << length << " characters of code " << code;
        }
    }
}

TEST(StoredForm, isRefusedWhenItIsNone) {
    for (const auto& [given, stored] : tableRows<2>("security/refused_forms.json")) {
        SCOPED_TRACE(given);
        EXPECT_EQ(gfsPassword_Decrypt(stored, kKey), "");
    }
}

TEST(StoredForm, fuzz) {
    std::mt19937 random(20260310);  // NOLINT: the same cases in every run
    const auto below = [&random](std::size_t end) {
        return static_cast<std::size_t>(random()) % end;
    };
    const auto noise = [&](std::size_t length, bool digits) {
        std::string text;
        for (std::size_t at = 0; at < length; ++at) {
            text += digits ? "0123456789ABCDEFabcdef"[below(22)] : static_cast<char>(below(256));
        }
        return text;
    };
    for (int number = fuzzCases(); number > 0; --number) {
        const std::string key = noise(1 + below(70), false);
        const std::string plain = util::trim(noise(below(40), false));
        std::string stored = gfsPassword_Encrypt(plain, key);
        ASSERT_EQ(gfsPassword_Decrypt(stored, key), plain) << number;
        // What was damaged, or never was a stored form, gives a text no longer than it can hold.
        const std::size_t damage = below(4);
        if (damage == 0 && !stored.empty()) {
            stored[below(stored.size())] = static_cast<char>(below(256));
        } else if (damage == 1 && !stored.empty()) {
            stored.resize(below(stored.size()));
        } else {
            stored = noise(below(100), damage == 2);
        }
        ASSERT_LE(gfsPassword_Decrypt(stored, key).size(), stored.size() / 2) << number;
    }
}

TEST(UserKey, followsCodeShortCutAndFirstDigitOfTheStore) {
    const auto older = [](std::int16_t store) {
        holdUser(store);
        return gfsUserKeyOld();
    };
    // Of two or five digits, negative and the least of all.
    for (const auto& [store, same] :
         {std::pair<std::int16_t, std::int16_t>{12, 1}, {32767, 3}, {-5, 0}, {-32768, 0}}) {
        EXPECT_EQ(older(store), older(same)) << store;
    }
    for (std::int16_t store = 1; store < 10; ++store) {
        EXPECT_NE(older(store), older(static_cast<std::int16_t>(store - 1)));
    }
    EXPECT_EQ(older(1).size(), 7U);
    EXPECT_TRUE(older(1).starts_with("ANN") && older(1).ends_with("AN")) << older(1);
    const std::string before = gfsUserKey();
    EXPECT_EQ(before, clsSHA256().SHA256(gfsUserKeyOld()));
    gSalesCode.ShortCut = "AB";
    EXPECT_NE(gfsUserKey(), before);
    holdUser(1);
    gSalesCode.SalesCode = "ANNA";
    EXPECT_NE(gfsUserKey(), before);
}
