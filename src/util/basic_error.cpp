#include "util/basic_error.h"

namespace util {

namespace {

struct ErrorText {
    int number;
    const char* description;
};

constexpr ErrorText kErrorTexts[] = {
    {5, "Invalid procedure call or argument"},
    {6, "Overflow"},
    {9, "Subscript out of range"},
    {11, "Division by zero"},
    {13, "Type mismatch"},
    {52, "Bad file name or number"},
    {53, "File not found"},
    {91, "Object variable or With block variable not set"},
};

}  // namespace

BasicError BasicError::of(int number) {
    for (const ErrorText& entry : kErrorTexts) {
        if (entry.number == number) {
            return {number, entry.description};
        }
    }
    return {number, "Application-defined or object-defined error"};
}

}  // namespace util
