#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace platform {

/// A failure of the world outside the link: provider, file system, session, process. Adapters raise
/// it, and nothing else, with the provider's own number and text; the routine that has a handler
/// turns it into its result, message or log line.
class PlatformError : public std::runtime_error {
public:
    PlatformError(std::int32_t number, const std::string& description, std::string source = {})
        : std::runtime_error(description),
          number_(number),
          source_(std::move(source)) {}

    /// The provider's number, as -2147217864; shown as signed decimal.
    [[nodiscard]] std::int32_t number() const { return number_; }
    [[nodiscard]] std::string description() const { return what(); }
    /// Who raised it, as "Microsoft OLE DB Provider"; may be empty.
    [[nodiscard]] const std::string& source() const { return source_; }

private:
    std::int32_t number_;
    std::string source_;
};

/// Thrown by ProcessPort::endProgram to unwind to the program's `main`. Not an error: handlers must
/// let it pass.
struct ProgramEnd {
    int status = 0;
};

/// Runs `body` and drops a PlatformError: for steps whose failure is meant to be passed over.
template <class Body>
void ignoringErrors(Body&& body) {
    try {
        body();
    } catch (const PlatformError& error) {
        static_cast<void>(error);  // the step may fail; what follows does not depend on it
    }
}

}  // namespace platform
