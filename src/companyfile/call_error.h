#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace companyfile {

/// Result numbers with which a call itself fails: no answer document comes back.
namespace hresult {
constexpr std::int32_t signedForm(std::uint32_t value) {
    return static_cast<std::int32_t>(value);
}

inline constexpr std::int32_t kUnparsable =
    signedForm(0x80040400U);  ///< not well formed, or against the schema
inline constexpr std::int32_t kCannotOpen =
    signedForm(0x80040403U);  ///< the file is missing or cannot be opened
inline constexpr std::int32_t kNotUsable =
    signedForm(0x80040406U);  ///< no company file, damaged, or newer than we are
inline constexpr std::int32_t kNoRollback = signedForm(0x80040413U);  ///< rollbackOnError asked for
inline constexpr std::int32_t kNotRunning =
    signedForm(0x80040416U);  ///< nothing runs and no company file was named
inline constexpr std::int32_t kFileInUse =
    signedForm(0x80040422U);  ///< another program holds the file
inline constexpr std::int32_t kUnknownVersion =
    signedForm(0x80040423U);  ///< the document's version is not supported
inline constexpr std::int32_t kConnectionLost = signedForm(0x80010105U);  ///< the server went away
}  // namespace hresult

/// A call that failed as a whole, where a refused request would only carry a status.
class CallError : public std::runtime_error {
public:
    CallError(std::int32_t number, std::string description)
        : std::runtime_error(description),
          hresult(number),
          text(std::move(description)) {}

    std::int32_t hresult;  ///< one of companyfile::hresult
    std::string text;      ///< one plain sentence
};

}  // namespace companyfile
