#include "support/postgres_server.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <grp.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace testing_support {

namespace {

namespace fs = std::filesystem;

constexpr char kInstalled[] = "/usr/lib/postgresql";

/// What makes the server quick, at the price of what a crash would cost.
constexpr char kConfiguration[] = R"(
listen_addresses = '127.0.0.1'
unix_socket_directories = ''
fsync = off
synchronous_commit = off
full_page_writes = off
wal_level = minimal
max_wal_senders = 0
autovacuum = off
jit = off
log_min_messages = log
)";

/// The user that the server runs as; root may not run one.
const passwd* serverUser() {
    if (geteuid() != 0) {
        return nullptr;
    }
    const passwd* user = getpwnam("postgres");
    return user != nullptr ? user : getpwnam("nobody");
}

bool isReachable(const fs::path& folder) {
    for (fs::path part = folder; part != part.root_path(); part = part.parent_path()) {
        const auto permissions = fs::status(part).permissions();
        if ((permissions & fs::perms::others_exec) == fs::perms::none) {
            return false;
        }
    }
    return true;
}

fs::path newFolder() {
    const fs::path build(BREVANE_TEST_BUILD);
    const bool isFit =
        access(build.c_str(), W_OK) == 0 && (serverUser() == nullptr || isReachable(build));
    const fs::path parent = isFit ? build : fs::temp_directory_path();
    std::string name = (parent / "postgres-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for the server: " + name);
    }
    if (const passwd* user = serverUser()) {
        if (chown(name.c_str(), user->pw_uid, user->pw_gid) != 0) {
            throw std::runtime_error("the server's folder cannot change hands");
        }
    }
    return name;
}

fs::path newestPrograms() {
    fs::path newest;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(kInstalled, failed)) {
        newest = std::max(newest, entry.path() / "bin");
    }
    if (newest.empty()) {
        throw std::runtime_error("PostgreSQL is not installed (scripts/install-deps does it)");
    }
    return newest;
}

int freePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    bind(socket, reinterpret_cast<sockaddr*>(&address), size);
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    close(socket);
    return ntohs(address.sin_port);
}

/// Starts a program as the server's user; `output` takes what it prints.
pid_t spawn(const std::vector<std::string>& command, int output) {
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    const passwd* user = serverUser();
    const pid_t child = fork();
    if (child != 0) {
        return child;
    }
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    const bool isUser = user == nullptr || (setgroups(0, nullptr) == 0 &&
                                            setgid(user->pw_gid) == 0 && setuid(user->pw_uid) == 0);
    prctl(PR_SET_PDEATHSIG, SIGQUIT);  // it does not outlive a test program that was killed
    if (isUser && chdir("/") == 0) {
        execv(arguments.front(), arguments.data());
    }
    _exit(127);
}

/// Reads until `words` have come. @return false when the output ends before.
bool readUntil(int descriptor, std::string_view words) {
    std::string seen;
    std::array<char, 512> piece{};
    while (seen.find(words) == std::string::npos) {
        const ssize_t size = read(descriptor, piece.data(), piece.size());
        if (size <= 0) {
            return false;
        }
        seen.append(piece.data(), static_cast<std::size_t>(size));
    }
    return true;
}

}  // namespace

PostgresServer& PostgresServer::running() {
    static PostgresServer server;
    return server;
}

std::string PostgresServer::driver() {
    return "PostgreSQL Unicode;Server=127.0.0.1";
}

PostgresServer::PostgresServer()
    : folder_(newFolder()),
      programs_(newestPrograms()),
      port_(freePort()) {
    makeCluster();
    start();
}

PostgresServer::~PostgresServer() {
    kill(process_, SIGQUIT);
    waitpid(process_, nullptr, 0);
    std::error_code failed;
    fs::remove_all(folder_, failed);
}

void PostgresServer::makeCluster() const {
    const std::string data = (folder_ / "data").string();
    const int silence = open("/dev/null", O_WRONLY | O_CLOEXEC);
    const pid_t child = spawn(
        {(programs_ / "initdb").string(),
         "--pgdata=" + data,
         std::string("--username=") + kOwner,
         "--auth=trust",
         "--encoding=UTF8",
         "--locale=C",
         "--no-sync",
         "--no-instructions"},
        silence
    );
    int status = 0;
    waitpid(child, &status, 0);
    close(silence);
    if (status != 0) {
        throw std::runtime_error("initdb failed");
    }
    std::ofstream(data + "/postgresql.conf", std::ios::app) << kConfiguration;
    std::ofstream(data + "/pg_hba.conf", std::ios::trunc)
        << "host all " << kGuarded << " 127.0.0.1/32 scram-sha-256\n"
        << "host all all 127.0.0.1/32 trust\n";
}

void PostgresServer::start() {
    std::array<int, 2> output{};
    if (pipe2(output.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    process_ = spawn(
        {(programs_ / "postgres").string(),
         "-D",
         (folder_ / "data").string(),
         "-p",
         std::to_string(port_)},
        output[1]
    );
    close(output[1]);
    if (!readUntil(output[0], "ready to accept connections")) {
        throw std::runtime_error("the server did not start");
    }
    std::thread([descriptor = output[0]] {
        while (readUntil(descriptor, "\n")) {}  // or the server would wait for a reader
        close(descriptor);
    }).detach();
}

}  // namespace testing_support
