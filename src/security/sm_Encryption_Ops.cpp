#include "security/sm_Encryption_Ops.h"

#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "platform/ports/data.h"
#include "security/clsEncryption.h"
#include "security/clsSHA256.h"
#include "security/secret.h"
#include "util/conversions.h"

#include <algorithm>
#include <array>
#include <iterator>

using security::Bytes;
using security::Secret;
using security::WipedAtEnd;

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

/// One word for each first digit of a store number. A store's passwords depend on them: never
/// change an entry.
constexpr std::array<std::string_view, 10> kStoreWords = {
    "mu", "ra", "vo", "ti", "ze", "lo", "pa", "ne", "gu", "si"};

std::string_view storeWord(std::int16_t storeNumber) {
    const std::string number = std::to_string(storeNumber);
    return storeNumber < 0 ? kStoreWords.front()
                           : kStoreWords.at(static_cast<std::size_t>(number.front() - '0'));
}

/// Value of a hexadecimal digit; -1 for every other character.
int digitValue(char character) {
    const std::size_t at = kDigits.find(util::upper(std::string_view(&character, 1)).front());
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

/// The bytes of a text of hexadecimal digits; none when it is no such text.
Bytes bytesOfDigits(const std::string& text) {
    Bytes bytes;
    if (text.size() % 2 != 0) {
        return bytes;
    }
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const int high = digitValue(text[at]);
        const int low = digitValue(text[at + 1]);
        if (high < 0 || low < 0) {
            return {};
        }
        bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return bytes;
}

std::string digitsOf(const Bytes& bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        text += kDigits[byte / 16U];
        text += kDigits[byte % 16U];
    }
    return text;
}

/// Puts the plain text of a stored form into `plain`; empty when the key does not fit.
void decrypt(const std::string& stored, const std::string& key, std::string& plain) {
    plain.clear();
    if (stored.empty() || key.empty()) {
        return;
    }
    Bytes keyBytes = security::bytesOf(key);
    const WipedAtEnd wipedKey(keyBytes);
    clsEncryption cipher;
    Bytes data = cipher.DecryptData(bytesOfDigits(util::trim(stored)), keyBytes);
    const WipedAtEnd wipedData(data);
    plain.resize(data.size());  // assigning bytes would go by way of another text
    std::copy(data.begin(), data.end(), plain.begin());
}

/// The present key and those of earlier programs, in the order in which they are tried.
constexpr std::string (*kKeys[])() = {
    gfsUserKey,
    gfsUserKeyOld,
    [] { return gSalesCode.SalesCode.trimmed(); },
};
constexpr std::size_t kPresentKey = 0;

/// Puts the plain text under the first key that fits into `plain`. @return that key's number.
std::size_t decryptByAnyKey(const std::string& stored, std::string& plain) {
    std::size_t number = 0;
    for (; number < std::size(kKeys) && plain.empty(); ++number) {
        const Secret key(kKeys[number]());
        decrypt(stored, key.text(), plain);
    }
    return number - 1;
}

/// Puts the present form of a password into the record and its row.
void storeAnew(const std::string& plain) {
    const Secret key(gfsUserKey());
    const std::string stored = gfsPassword_Encrypt(plain, key.text());
    gSalesCode.Password = stored;
    const std::string code = gSalesCode.SalesCode.trimmed();
    db::connection().execute(
        "UPDATE " + DBTableDescriptors[db::tableSalesCode].TableName + " SET Password = '" +
        stored + "'" + security::whereUser(code, gSalesCode.StoreNumber)
    );
}

}  // namespace

std::string gfsPassword_Encrypt(const std::string& plain, const std::string& key) {
    if (plain.empty() || key.empty()) {
        return {};
    }
    Bytes data = security::bytesOf(security::trimmed(plain));
    const WipedAtEnd wipedData(data);
    Bytes keyBytes = security::bytesOf(key);
    const WipedAtEnd wipedKey(keyBytes);
    clsEncryption cipher;
    return digitsOf(cipher.EncryptData(data, keyBytes));
}

std::string gfsPassword_Decrypt(const std::string& stored, const std::string& key) {
    std::string plain;
    decrypt(stored, key, plain);
    return plain;
}

std::string gfsUserKeyOld() {
    const std::string_view code = security::trimmed(gSalesCode.SalesCode.view());
    const std::string_view word = storeWord(gSalesCode.StoreNumber);
    const std::string_view shortCut = security::trimmed(gSalesCode.ShortCut.view());
    std::string joined;
    joined.reserve(code.size() + word.size() + shortCut.size());
    joined.append(code).append(word).append(shortCut);
    return joined;
}

std::string gfsUserKey() {
    const Secret joined(gfsUserKeyOld());
    return clsSHA256::SHA256(joined.text());
}

std::string gfsPassword_Stored(const std::string& stored) {
    std::string plain;
    const std::size_t key = decryptByAnyKey(stored, plain);
    if (!plain.empty() && key != kPresentKey) {
        try {
            storeAnew(plain);
        } catch (...) {
            security::wipe(plain);
            throw;
        }
    }
    return plain;
}

namespace security {

std::string historyPassword(const std::string& stored) {
    std::string plain;
    decryptByAnyKey(stored, plain);
    return plain;
}

bool isInHistory(const std::string& plain) {
    bool found = false;
    for (const auto& entry :
         {gSalesCode.LastPwd,
          gSalesCode.Last2ndPwd,
          gSalesCode.Last3rdPwd,
          gSalesCode.Last4thPwd}) {
        const Secret earlier(historyPassword(entry.trimmed()));
        const bool isSame = sameSecret(earlier.text(), plain);
        found = found || (isSame && !earlier.empty());
    }
    return found;
}

std::string whereUser(const std::string& code, std::int16_t storeNumber) {
    const std::string cut = util::FixedText<8>(code).trimmed();
    return " WHERE  SalesCode = '" + util::replaceAll(cut, "'", "''") +
           "' AND storenumber =" + std::to_string(storeNumber);
}

void installPasswordCipher() {
    db::passwordCipher() = [](const std::string& plain) {
        const Secret key(gfsUserKeyOld());
        return gfsPassword_Encrypt(plain, key.text());
    };
}

}  // namespace security
