#pragma once

#include <stdexcept>
#include <string>

namespace util {

/// A failed conversion or array access, with the language's error number: 6 overflow, 9 subscript
/// out of range, 13 type mismatch, 91 no object, 52 bad file name.
class BasicError : public std::runtime_error {
public:
    BasicError(int number, const std::string& description)
        : std::runtime_error(description),
          number_(number) {}

    [[nodiscard]] int number() const { return number_; }

    /// The error of `number` with the language's own description, as "Overflow".
    static BasicError of(int number);

private:
    int number_;
};

}  // namespace util
