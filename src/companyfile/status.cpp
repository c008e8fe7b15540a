#include "companyfile/status.h"

namespace companyfile {

std::string_view Status::severity() const {
    if (code < 500) {
        return "Info";
    }
    return code < 1000 ? "Warn" : "Error";
}

std::string quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

std::string programSays(std::string_view text) {
    return "  QuickBooks error message: " + std::string(text);
}

StatusError unknownId(std::string_view id) {
    return {
        3120,
        "Object " + quoted(id) + " specified in the request cannot be found." +
            programSays("Invalid argument.  The specified record does not exist in the list.")};
}

StatusError missingElement(std::string_view field) {
    return {3150, "There is a missing element: " + quoted(field) + "."};
}

StatusError tooLarge() {
    return {3101, "The resulting amount is too large."};
}

StatusError cannotSave(std::string_view what, std::string_view reason) {
    return {
        3180, "There was an error when saving a " + std::string(what) + "." + programSays(reason)};
}

}  // namespace companyfile
