#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace testing_support {

/// A column of an answer, with its type as the wire tells it.
struct TdsColumn {
    std::string name;
    std::string type;  ///< bytes of the type's description
    bool isNullable = true;

    static TdsColumn character(const std::string& name, std::uint16_t width);
    static TdsColumn variable(const std::string& name, std::uint16_t width);
    static TdsColumn integer(const std::string& name, std::uint8_t bytes);
    static TdsColumn decimal(const std::string& name, std::uint8_t precision, std::uint8_t scale);
    static TdsColumn single(const std::string& name);
    static TdsColumn moment(const std::string& name);
};

/// Values of a row as the wire carries them.
namespace tds {
std::string text(const std::string& bytes);  ///< in the server's code page
std::string noText();
std::string integer(std::int64_t value, std::uint8_t bytes);
std::string decimal(std::uint64_t digits, bool isNegative);
std::string single(float value);
std::string moment(std::int32_t daysSince1900, std::uint32_t seconds);
std::string none();  ///< no value, of every type but texts
}  // namespace tds

/// What the server answers to a statement.
struct TdsAnswer {
    std::vector<TdsColumn> columns{};
    std::vector<std::vector<std::string>> rows{};
    std::uint32_t affected = 0;
    std::int32_t error = 0;
    std::string message{};  ///< of the error, or an information when there is none
    bool hangsUp = false;
};

/// The server's side of SQL Server's protocol, as much of it as a driver needs for a login and
/// statements: notes the statements as they arrive and answers as the test says.
class TdsServer {
public:
    /// What the answer is asked for when somebody logs in; only its error counts.
    static constexpr char kLogin[] = "(login)";

    /// @param answer  gives the answer to a statement.
    explicit TdsServer(std::function<TdsAnswer(const std::string& statement)> answer);
    ~TdsServer();
    TdsServer(const TdsServer&) = delete;
    TdsServer& operator=(const TdsServer&) = delete;
    TdsServer(TdsServer&&) = delete;
    TdsServer& operator=(TdsServer&&) = delete;

    [[nodiscard]] std::string port() const { return std::to_string(port_); }
    /// Statements so far, in code page 1252.
    [[nodiscard]] std::vector<std::string> statements() const;

private:
    void serve();
    void talk(int client);

    std::function<TdsAnswer(const std::string&)> answer_;
    int listener_ = -1;
    int port_ = 0;
    mutable std::mutex mutex_;
    std::vector<std::string> statements_;
    std::vector<int> clients_;
    std::vector<std::thread> talks_;
    std::thread thread_;
};

}  // namespace testing_support
