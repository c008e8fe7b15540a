#pragma once

#include <filesystem>
#include <string>

#include <sys/types.h>

namespace testing_support {

/// A PostgreSQL server of this test program's own: on loopback, with its files in the build folder,
/// as an ordinary user. It starts when it is first asked for and ends with the program.
class PostgresServer {
public:
    static PostgresServer& running();

    /// Settings "Driver" and "Port" with which the link finds it, whatever the server's name.
    [[nodiscard]] static std::string driver();
    [[nodiscard]] std::string port() const { return std::to_string(port_); }
    /// The login to which everything belongs.
    static constexpr char kOwner[] = "qz";
    /// A login that wants its password; made by the test that needs it.
    static constexpr char kGuarded[] = "guarded";

private:
    PostgresServer();
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;
    PostgresServer(PostgresServer&&) = delete;
    PostgresServer& operator=(PostgresServer&&) = delete;

    void makeCluster() const;
    void start();

    std::filesystem::path folder_;
    std::filesystem::path programs_;
    int port_ = 0;
    pid_t process_ = -1;
};

}  // namespace testing_support
