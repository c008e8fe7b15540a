#pragma once

#include "platform/ports/system.h"

#include <string>
#include <vector>

#include <sys/types.h>

namespace platform {

/// Processes of this machine. A command line begins with the program's file name, blanks allowed:
/// the longest beginning that names a file counts, with or without ".exe". What follows is split at
/// blanks; the child finds it as it stood in `BREVANE_COMMAND_LINE`.
class NativeProcesses : public ProcessPort {
public:
    /// Blocks until the child has ended; its status is not looked at. The child reads from the
    /// terminal, if there is one, and else from nothing.
    /// @throws PlatformError 53 when the program cannot be found or started.
    void run(const std::string& commandLine) override;
    /// The child has no input or output. @throws PlatformError 53.
    void runHidden(const std::string& commandLine) override;
    /// First part of the host's name, in capitals.
    [[nodiscard]] std::string computerName() const override;
    [[nodiscard]] std::string programName() const override;
    [[noreturn]] void endProgram() override;

private:
    std::vector<pid_t> hidden_;  ///< children that were not waited for
};

}  // namespace platform
