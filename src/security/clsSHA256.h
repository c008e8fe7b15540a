#pragma once

#include <string>

/// The hash function SHA-256 (FIPS 180-4) over a text taken as one byte a character.
class clsSHA256 {
public:
    /// The hash as 64 hexadecimal digits in small letters.
    [[nodiscard]] static std::string SHA256(const std::string& message);
};
