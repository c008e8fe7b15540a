#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace companyfile {

/// Outcome of one request, as the answer's attributes carry it.
struct Status {
    int code = 0;
    std::string message = "Status OK";

    /// "Info" (below 500), "Warn" (500 to 999) or "Error".
    [[nodiscard]] std::string_view severity() const;
    /// True when the answer carries data.
    [[nodiscard]] bool hasData() const { return code == 0 || (code >= 500 && code < 1000); }
};

/// A request that is refused: nothing of it is kept, the exchange goes on.
class StatusError : public std::runtime_error {
public:
    StatusError(int code, const std::string& message)
        : std::runtime_error(message),
          status{code, message} {}
    Status status;
};

/// The second half of a refusal by a rule of the file: what the program itself says about it.
std::string programSays(std::string_view text);
/// 3120: no record has the id.
StatusError unknownId(std::string_view id);
/// 3150: an element that the request needs is not there.
StatusError missingElement(std::string_view field);
/// 3180: saving a `what` was refused because of `reason`.
StatusError cannotSave(std::string_view what, std::string_view reason);
/// 3101: an amount that no field can hold.
StatusError tooLarge();
/// `text` in straight double quotes.
std::string quoted(std::string_view text);

}  // namespace companyfile
