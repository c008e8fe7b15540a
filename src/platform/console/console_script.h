#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace platform {

/// A script that cannot be played: it names no control, or is no action. Ends the program with
/// status 2. Not derived from std::exception: no handler of the link may take it for an error of
/// its own.
struct ConsoleScriptError {
    std::string message;
};

/// One action of a script: a line such as `check chkExport(3)`.
struct ConsoleAction {
    std::string line;  ///< as it was written, for messages
    std::string verb;  ///< "check", "set", ...
    std::string rest;  ///< what follows the verb and one blank
};

/// A control as an action names it: `chkExport(3)`, and what follows after one blank.
struct ConsoleTarget {
    std::string name;
    int index = -1;
    std::string text;
};

/// Reads actions from a stream, one a line. Lines that are blank or begin with `#` are passed over;
/// a carriage return at the end of a line is dropped. Texts are turned from UTF-8 into the link's
/// code page.
class ConsoleScript {
public:
    explicit ConsoleScript(std::istream& in) : in_(&in) {}
    /// Waits for the next action; nothing at the end of the input.
    std::optional<ConsoleAction> next();

private:
    std::istream* in_;
};

/// Splits the rest of an action into control and text. @throws ConsoleScriptError for no name.
ConsoleTarget consoleTarget(const ConsoleAction& action);

/// The whole number that `text` is. @throws ConsoleScriptError, quoting the action.
int consoleNumber(const ConsoleAction& action, const std::string& text);

}  // namespace platform
