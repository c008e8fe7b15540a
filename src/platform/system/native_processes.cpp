#include "platform/system/native_processes.h"

#include "platform/system/file_names.h"
#include "util/conversions.h"
#include "util/text_codec.h"

#include <array>
#include <cerrno>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace platform {

namespace {

constexpr std::string_view kSuffix = ".exe";
constexpr char kCommandVariable[] = "BREVANE_COMMAND_LINE=";

bool isFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

[[noreturn]] void failNotFound() {
    throw PlatformError(53, "File not found");
}

/// The file that a name stands for: as it is, with ".exe", or without.
std::optional<std::string> programFile(std::string_view name) {
    if (util::trim(name).empty() || name.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    const std::string plain = nativeName(name);
    std::string suffixed = nativeName(std::string(name) + std::string(kSuffix));
    if (isFile(plain)) {
        return plain;
    }
    if (isFile(suffixed)) {
        return suffixed;
    }
    if (util::lower(name).ends_with(kSuffix)) {
        std::string bare = nativeName(name.substr(0, name.size() - kSuffix.size()));
        if (isFile(bare)) {
            return bare;
        }
    }
    return std::nullopt;
}

/// A command line taken apart; texts for the child are UTF-8.
struct Command {
    std::string program;
    std::vector<std::string> arguments;  ///< the program's name first
    std::string rest;                    ///< what follows the name, as it stood
};

Command commandOf(std::string program, std::string_view rest) {
    Command command{std::move(program), {}, util::toUtf8(util::ltrim(rest))};
    command.arguments.push_back(command.program);
    for (const std::string& word : util::split(command.rest, ' ')) {
        if (!word.empty()) {
            command.arguments.push_back(word);
        }
    }
    return command;
}

/// Takes a command line apart at the end of the longest beginning that names a file.
Command parse(std::string_view line) {
    if (line.starts_with('"')) {
        const std::size_t quote = line.find('"', 1);
        const auto program = programFile(line.substr(1, quote == line.npos ? quote : quote - 1));
        if (program && quote != std::string_view::npos) {
            return commandOf(*program, line.substr(quote + 1));
        }
        failNotFound();
    }
    for (std::size_t end = line.size(); end != std::string_view::npos && end > 0;
         end = line.rfind(' ', end - 1)) {
        if (const auto program = programFile(line.substr(0, end))) {
            return commandOf(*program, line.substr(end));
        }
    }
    failNotFound();
}

/// What a child finds at its standard files.
class ChildFiles {
public:
    ChildFiles() { posix_spawn_file_actions_init(&actions_); }
    ~ChildFiles() { posix_spawn_file_actions_destroy(&actions_); }
    ChildFiles(const ChildFiles&) = delete;
    ChildFiles& operator=(const ChildFiles&) = delete;
    ChildFiles(ChildFiles&&) = delete;
    ChildFiles& operator=(ChildFiles&&) = delete;

    void closeOff(int handle) {
        const int flags = handle == STDIN_FILENO ? O_RDONLY : O_WRONLY;
        posix_spawn_file_actions_addopen(&actions_, handle, "/dev/null", flags, 0);
    }
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

std::vector<std::string> environmentFor(const Command& command) {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (!std::string_view(*variable).starts_with(kCommandVariable)) {
            variables.emplace_back(*variable);
        }
    }
    variables.push_back(kCommandVariable + command.rest);
    return variables;
}

/// Pointers for the call into the system, closed by a null pointer.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

pid_t start(const std::string& commandLine, const ChildFiles& files) {
    Command command = parse(util::trim(commandLine));
    std::vector<std::string> variables = environmentFor(command);
    const std::vector<char*> arguments = pointersTo(command.arguments);
    const std::vector<char*> environment = pointersTo(variables);
    pid_t child = 0;
    const int failure = posix_spawn(
        &child, command.program.c_str(), files.get(), nullptr, arguments.data(), environment.data()
    );
    if (failure != 0) {
        failNotFound();
    }
    return child;
}

}  // namespace

void NativeProcesses::run(const std::string& commandLine) {
    ChildFiles files;
    if (::isatty(STDIN_FILENO) == 0) {
        files.closeOff(STDIN_FILENO);  // an operator's script is not the child's to read
    }
    const pid_t child = start(commandLine, files);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {}
}

void NativeProcesses::runHidden(const std::string& commandLine) {
    std::erase_if(hidden_, [](pid_t child) {
        int status = 0;
        return ::waitpid(child, &status, WNOHANG) != 0;
    });
    ChildFiles files;
    for (const int handle : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        files.closeOff(handle);
    }
    hidden_.push_back(start(commandLine, files));
}

std::string NativeProcesses::computerName() const {
    std::array<char, 256> name{};
    if (::gethostname(name.data(), name.size() - 1) != 0) {
        return {};
    }
    return util::upper(util::fromUtf8(util::split(name.data(), '.').front()));
}

std::string NativeProcesses::programName() const {
    const std::string file = executableFile();
    return util::fromUtf8(file.substr(file.rfind('/') + 1));
}

void NativeProcesses::endProgram() {
    throw ProgramEnd{};
}

}  // namespace platform
