#pragma once

#include "platform/ports/system.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Files of this machine under the suite's names. A part of a name that is not there in its own
/// letter case is looked for in any; a drive such as "C:" is a folder of that name, which normally
/// is not there. New files are readable for owner and group only (less what the umask takes).
class NativeFiles : public FilePort {
public:
    /// @param programFolder folder of the program's own files; empty: `BREVANE_PROGRAM_FOLDER`, or
    /// else where the executable lies.
    explicit NativeFiles(std::string programFolder = {});

    [[nodiscard]] bool fileExists(const std::string& name) const override;
    [[nodiscard]] bool folderExists(const std::string& name) const override;
    void makeFolder(const std::string& name) override;
    void remove(const std::string& name) override;
    void copy(const std::string& from, const std::string& to) override;
    [[nodiscard]] std::string read(const std::string& name) const override;
    void write(const std::string& name, const std::string& bytes) override;
    void append(const std::string& name, const std::string& bytes) override;
    void truncate(const std::string& name, bool ownerOnly) override;
    [[nodiscard]] std::vector<std::string>
    list(const std::string& folder, const std::string& pattern) const override;
    [[nodiscard]] std::vector<std::string> folders(const std::string& folder) const override;
    [[nodiscard]] bool isWritable(const std::string& name) const override;
    [[nodiscard]] std::unique_ptr<FileLock> lock(const std::string& name) override;
    [[nodiscard]] std::string programFolder() const override { return programFolder_; }
    [[nodiscard]] std::string traceFolder() const override;
    [[nodiscard]] std::optional<std::string> driveRemote(char letter) const override;

private:
    std::string programFolder_;
};

}  // namespace platform
