#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// Passwords in their stored form: hexadecimal text of the cipher's output, 32 digits for up to 12
/// characters, 64 for up to 28. The keys belong to the sales code in `gSalesCode`.

/// The stored form of a plain password (trimmed); empty when `plain` or `key` is empty.
std::string gfsPassword_Encrypt(const std::string& plain, const std::string& key);
/// The plain password of a stored form; empty when either is empty, when the text is no stored form
/// (an odd count of digits, other characters, no whole blocks), and with a wrong key.
std::string gfsPassword_Decrypt(const std::string& stored, const std::string& key);

/// The key of the sales code in `gSalesCode`: 64 hexadecimal digits. It follows from the code, the
/// short-cut and the store number, so a change of any of them makes the stored password unreadable.
std::string gfsUserKey();
/// The key under which older programs stored passwords: the same text before it is hashed.
std::string gfsUserKeyOld();

/// The plain password of a stored column of the sales code in `gSalesCode`. One that was stored
/// under an older key is stored anew: in `gSalesCode.Password` and, by a statement, in its row.
/// @return empty when none of the keys fits. @throws platform::PlatformError when the store refuses
/// the statement.
std::string gfsPassword_Stored(const std::string& stored);

namespace security {

/// Characters of the longest password whose stored form fits its column.
inline constexpr std::size_t kLongestPassword = 28;

/// As gfsPassword_Stored, for an entry of the history: nothing is stored anew.
std::string historyPassword(const std::string& stored);
/// True when the password is one of the four in the history of the sales code in `gSalesCode`.
bool isInHistory(const std::string& plain);
/// The condition by which direct statements find a person's row; the code is cut to its column.
std::string whereUser(const std::string& code, std::int16_t storeNumber);
/// Lets the table of sales codes make the first passwords of a new store.
void installPasswordCipher();

}  // namespace security
