#pragma once

#include "platform/ports/platform_error.h"
#include "util/date_time.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Port: the per-user settings store: sections of keys and values, below one application name.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    [[nodiscard]] virtual std::string
    get(const std::string& application,
        const std::string& section,
        const std::string& key,
        const std::string& defaultValue) const = 0;
    virtual void save(
        const std::string& application,
        const std::string& section,
        const std::string& key,
        const std::string& value
    ) = 0;
    virtual void
    remove(const std::string& application, const std::string& section, const std::string& key) = 0;
};

/// A file that is held for this program; it is given free when the object goes.
class FileLock {
public:
    FileLock() = default;
    virtual ~FileLock() = default;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    FileLock(FileLock&&) = delete;
    FileLock& operator=(FileLock&&) = delete;
};

/// Port: files and folders by the suite's names: backslashes, any letter case, a blank or a point
/// at the end that does not count. All calls throw PlatformError (52 bad name, 53 not found, 61
/// disk full, 70 permission denied, 75 path access error, 76 path not found) when they fail.
class FilePort {
public:
    virtual ~FilePort() = default;
    [[nodiscard]] virtual bool fileExists(const std::string& name) const = 0;
    [[nodiscard]] virtual bool folderExists(const std::string& name) const = 0;
    virtual void makeFolder(const std::string& name) = 0;
    virtual void remove(const std::string& name) = 0;
    virtual void copy(const std::string& from, const std::string& to) = 0;
    /// The whole file as bytes. One above 64 MB cannot be read (75).
    [[nodiscard]] virtual std::string read(const std::string& name) const = 0;
    /// Replaces the file as a whole; an interrupted call leaves the old or the new file.
    virtual void write(const std::string& name, const std::string& bytes) = 0;
    /// Adds bytes at the end, making the file when it is missing.
    virtual void append(const std::string& name, const std::string& bytes) = 0;
    /// Empties or makes the file, readable by its owner only when `ownerOnly`.
    virtual void truncate(const std::string& name, bool ownerOnly) = 0;
    /// Names (without folder) of the files in `folder` that fit `pattern` ("NUVDATA*.mdf"), sorted.
    [[nodiscard]] virtual std::vector<std::string>
    list(const std::string& folder, const std::string& pattern) const = 0;
    /// Names (without folder) of the folders in `folder`, sorted; those that begin with a point are
    /// the system's own and left out.
    [[nodiscard]] virtual std::vector<std::string> folders(const std::string& folder) const = 0;
    /// True when the file can be written, or made in an existing folder. Changes nothing.
    [[nodiscard]] virtual bool isWritable(const std::string& name) const = 0;
    /// Holds a file, which is made when it is missing; null while another holder has it. A program
    /// that ends by force gives it free.
    [[nodiscard]] virtual std::unique_ptr<FileLock> lock(const std::string& name) = 0;
    /// The folder of the program's own files, without a backslash at the end.
    [[nodiscard]] virtual std::string programFolder() const = 0;
    /// The folder for trace files: the program folder, or one of the user's own when that cannot be
    /// written (it is made when it is missing). Without a backslash at the end.
    [[nodiscard]] virtual std::string traceFolder() const { return programFolder(); }
    /// Remote name of a drive letter; nothing when it is no network drive.
    [[nodiscard]] virtual std::optional<std::string> driveRemote(char letter) const = 0;
};

/// Port: processes of the machine, and this one.
class ProcessPort {
public:
    virtual ~ProcessPort() = default;
    /// Starts a command line and returns when it has ended.
    virtual void run(const std::string& commandLine) = 0;
    /// Starts a command line without a window and does not wait.
    virtual void runHidden(const std::string& commandLine) = 0;
    [[nodiscard]] virtual std::string computerName() const = 0;
    /// Name of the running program's file.
    [[nodiscard]] virtual std::string programName() const = 0;
    /// Ends the program: throws ProgramEnd.
    [[noreturn]] virtual void endProgram() = 0;
};

/// Port: the clock of this computer, in local time.
class ClockPort {
public:
    virtual ~ClockPort() = default;
    [[nodiscard]] virtual util::DateTime now() const = 0;
    virtual void sleep(int milliseconds) = 0;
};

}  // namespace platform
