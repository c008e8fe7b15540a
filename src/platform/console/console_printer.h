#pragma once

#include "platform/ports/desktop.h"
#include "ui/form.h"

#include <iosfwd>
#include <string>

namespace platform {

/// The lines that the console operator reads. Texts leave as UTF-8; a line break is printed as
/// `\n`, a backslash as `\\`, a `|` as `\|`.
class ConsolePrinter {
public:
    explicit ConsolePrinter(std::ostream& out) : out_(&out) {}

    /// `[window] frmSetup "NUV Brevane"`
    void window(const ui::Form& form);
    /// `[status] Ready`
    void status(const std::string& text);
    /// `[box] title | text | yes/no -> yes`
    void
    box(const std::string& title, const std::string& text, BoxButtons buttons, BoxAnswer answer);
    /// `[open] C:\data\QBLINK.LOG`
    void document(const std::string& name);
    /// `[file] title | where it began -> file`; an empty file is printed as `cancel`.
    void
    fileChoice(const std::string& title, const std::string& startPath, const std::string& file);
    /// `[refused] click cmdStop: disabled`
    void refused(const std::string& action, const std::string& reason);
    /// `[control] chkExport(3) checkBox 1 enabled visible`; texts stand in quotes. A grid shows its
    /// number of rows, and a line `[row] cell | cell` for each follows.
    void control(ui::Form& form, const ui::ControlState& state);

private:
    void line(const std::string& text);
    std::ostream* out_;
};

/// "yes", "no", "ok", "cancel".
const char* answerWord(BoxAnswer answer);

}  // namespace platform
