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

using security::Bytes;
using security::Secret;

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

/// The keys of earlier programs, in the order in which they are tried.
constexpr std::string (*kOlderKeys[])() = {
    gfsUserKeyOld,
    [] { return gSalesCode.SalesCode.trimmed(); },
};

/// The plain text under one of the older keys.
std::string decryptOlder(const std::string& stored) {
    for (const auto& olderKey : kOlderKeys) {
        const Secret key(olderKey());
        std::string plain = gfsPassword_Decrypt(stored, key.text());
        if (!plain.empty()) {
            return plain;
        }
    }
    return {};
}

std::string decryptCurrent(const std::string& stored) {
    const Secret key(gfsUserKey());
    return gfsPassword_Decrypt(stored, key.text());
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
    const Secret trimmed(util::trim(plain));
    Bytes data = security::bytesOf(trimmed.text());
    Bytes keyBytes = security::bytesOf(key);
    clsEncryption cipher;
    std::string stored = digitsOf(cipher.EncryptData(data, keyBytes));
    security::wipe(data);
    security::wipe(keyBytes);
    return stored;
}

std::string gfsPassword_Decrypt(const std::string& stored, const std::string& key) {
    if (stored.empty() || key.empty()) {
        return {};
    }
    Bytes keyBytes = security::bytesOf(key);
    clsEncryption cipher;
    Bytes data = cipher.DecryptData(bytesOfDigits(util::trim(stored)), keyBytes);
    std::string plain(data.begin(), data.end());
    security::wipe(data);
    security::wipe(keyBytes);
    return plain;
}

std::string gfsUserKeyOld() {
    return gSalesCode.SalesCode.trimmed() + std::string(storeWord(gSalesCode.StoreNumber)) +
           gSalesCode.ShortCut.trimmed();
}

std::string gfsUserKey() {
    const Secret joined(gfsUserKeyOld());
    return clsSHA256().SHA256(util::trim(joined.text()));
}

std::string gfsPassword_Stored(const std::string& stored) {
    std::string plain = decryptCurrent(stored);
    if (plain.empty()) {
        plain = decryptOlder(stored);
        if (!plain.empty()) {
            storeAnew(plain);
        }
    }
    return plain;
}

namespace security {

std::string historyPassword(const std::string& stored) {
    std::string plain = decryptCurrent(stored);
    return plain.empty() ? decryptOlder(stored) : plain;
}

bool isInHistory(const std::string& plain) {
    bool found = false;
    for (const auto& entry :
         {gSalesCode.LastPwd,
          gSalesCode.Last2ndPwd,
          gSalesCode.Last3rdPwd,
          gSalesCode.Last4thPwd}) {
        const Secret earlier(historyPassword(entry.trimmed()));
        found = found || (!earlier.empty() && sameSecret(earlier.text(), plain));
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
