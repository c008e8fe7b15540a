#include "support/tds_server.h"

#include "platform/odbc/odbc_text.h"
#include "util/text_codec.h"

#include <cstring>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace testing_support {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr char kBatch = 0x01;
constexpr char kLoginRequest = 0x10;
constexpr char kPrelogin = 0x12;
constexpr char kAnswer = 0x04;
/// Latin1 general, letter case ignored: code page 1252.
constexpr char kCollation[] = {0x09, 0x04, '\xD0', 0x00, 0x34};

template <class Number>
std::string little(Number number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

std::string ucs2(const std::string& text) {
    const std::u16string wide = platform::utf16FromUtf8(util::toUtf8(text));
    return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(char16_t)};
}

std::string byte(std::size_t value) {
    return std::string(1, static_cast<char>(value));
}

std::string word(std::size_t value) {
    return little(static_cast<std::uint16_t>(value));
}

std::string shortName(const std::string& text) {
    return byte(text.size()) + ucs2(text);
}

std::string collated(char type, std::uint16_t width) {
    return std::string(1, type) + word(width) + std::string(kCollation, sizeof kCollation);
}

std::string done(std::uint16_t status, std::uint32_t count) {
    return std::string(1, '\xFD') + little(status) + word(0xC1) + little(count);
}

std::string message(char token, std::int32_t number, const std::string& text) {
    const std::string body = little(number) + byte(1) + byte(token == '\xAA' ? 16 : 0) +
                             word(text.size()) + ucs2(text) + shortName("SHOP") + shortName("") +
                             word(1);
    return std::string(1, token) + word(body.size()) + body;
}

std::string loginAnswer() {
    const std::string version("\x71\x00\x00\x01", 4);
    const std::string body =
        byte(1) + version + shortName("Microsoft SQL Server") + std::string("\x08\x00\x07\xF7", 4);
    const std::string size = byte(4) + shortName("4096") + shortName("4096");
    return "\xE3" + word(size.size()) + size + "\xAD" + word(body.size()) + body + done(0, 0);
}

/// Version, no encryption, no instance, no thread.
std::string preloginAnswer() {
    const std::string table(
        "\x00\x00\x15\x00\x06"
        "\x01\x00\x1B\x00\x01"
        "\x02\x00\x1C\x00\x01"
        "\x03\x00\x1D\x00\x00"
        "\xFF",
        21
    );
    return table + std::string("\x08\x00\x07\xF7\x00\x00\x02\x00", 8);
}

std::string rowsOf(const TdsAnswer& answer) {
    std::string bytes = "\x81" + word(answer.columns.size());
    for (const TdsColumn& column : answer.columns) {
        bytes += word(0) + word(column.isNullable ? 9 : 8) + column.type + shortName(column.name);
    }
    for (const auto& row : answer.rows) {
        bytes += '\xD1';
        for (const std::string& value : row) {
            bytes += value;
        }
    }
    return bytes;
}

std::string answerBytes(const TdsAnswer& answer) {
    constexpr std::uint16_t kFailed = 2;
    constexpr std::uint16_t kCounted = 0x10;
    if (answer.error != 0) {
        return message('\xAA', answer.error, answer.message) +
               message('\xAB', 3621, "The statement has been terminated.") + done(kFailed, 0);
    }
    std::string bytes = answer.message.empty() ? "" : message('\xAB', 15477, answer.message);
    if (answer.columns.empty()) {
        return bytes + done(kCounted, answer.affected);
    }
    return bytes + rowsOf(answer) + done(kCounted, static_cast<std::uint32_t>(answer.rows.size()));
}

bool receive(int client, char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = recv(client, bytes, size, 0);
        if (count <= 0) {
            return false;
        }
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

struct Request {
    char type = 0;
    std::string body;
};

/// One request out of all its packets.
std::optional<Request> receiveRequest(int client) {
    Request request;
    char header[kHeaderSize] = {};
    do {
        if (!receive(client, header, sizeof header)) {
            return std::nullopt;
        }
        const std::size_t size = static_cast<std::uint8_t>(header[2]) * 256U +
                                 static_cast<std::uint8_t>(header[3]) - kHeaderSize;
        std::string part(size, '\0');
        if (!receive(client, part.data(), size)) {
            return std::nullopt;
        }
        request.type = header[0];
        request.body += part;
    } while ((header[1] & 1) == 0);
    return request;
}

void sendAnswer(int client, const std::string& body) {
    constexpr std::size_t kMost = 4000;
    std::size_t at = 0;
    do {
        const std::string part = body.substr(at, kMost);
        at += part.size();
        const std::size_t size = part.size() + kHeaderSize;
        const std::string packet = byte(kAnswer) + byte(at >= body.size() ? 1 : 0) +
                                   byte(size / 256) + byte(size % 256) + std::string(4, '\0') +
                                   part;
        send(client, packet.data(), packet.size(), MSG_NOSIGNAL);
    } while (at < body.size());
}

std::string statementOf(const Request& request) {
    std::u16string text(request.body.size() / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), request.body.data(), text.size() * sizeof(char16_t));
    return platform::textFromUtf16(text);
}

}  // namespace

TdsColumn TdsColumn::character(const std::string& name, std::uint16_t width) {
    return {name, collated('\xAF', width)};
}
TdsColumn TdsColumn::variable(const std::string& name, std::uint16_t width) {
    return {name, collated('\xA7', width)};
}
TdsColumn TdsColumn::integer(const std::string& name, std::uint8_t bytes) {
    return {name, "\x26" + byte(bytes)};
}
TdsColumn TdsColumn::decimal(const std::string& name, std::uint8_t precision, std::uint8_t scale) {
    return {name, "\x6A" + byte(9) + byte(precision) + byte(scale)};
}
TdsColumn TdsColumn::single(const std::string& name) {
    return {name, "\x6D" + byte(4)};
}
TdsColumn TdsColumn::moment(const std::string& name) {
    return {name, "\x6F" + byte(8)};
}

namespace tds {

std::string text(const std::string& bytes) {
    return word(bytes.size()) + bytes;
}
std::string noText() {
    return word(0xFFFF);
}
std::string integer(std::int64_t value, std::uint8_t bytes) {
    return byte(bytes) + little(value).substr(0, bytes);
}
std::string decimal(std::uint64_t digits, bool isNegative) {
    return byte(9) + byte(isNegative ? 0 : 1) + little(digits);
}
std::string single(float value) {
    return byte(4) + little(value);
}
std::string moment(std::int32_t daysSince1900, std::uint32_t seconds) {
    return byte(8) + little(daysSince1900) + little(seconds * 300);
}
std::string none() {
    return byte(0);
}

}  // namespace tds

TdsServer::TdsServer(std::function<TdsAnswer(const std::string& statement)> answer)
    : answer_(std::move(answer)) {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const bool isReady = bind(listener_, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                         listen(listener_, 4) == 0 &&
                         getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    if (!isReady) {
        throw std::runtime_error("no port for the server");
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
}

TdsServer::~TdsServer() {
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    for (const int client : clients_) {
        shutdown(client, SHUT_RDWR);
    }
    for (std::thread& talk : talks_) {
        talk.join();
    }
    for (const int client : clients_) {
        close(client);
    }
    close(listener_);
}

std::vector<std::string> TdsServer::statements() const {
    const std::lock_guard lock(mutex_);
    return statements_;
}

void TdsServer::serve() {
    while (true) {
        const int client = accept(listener_, nullptr, nullptr);
        if (client < 0) {
            return;
        }
        clients_.push_back(client);
        talks_.emplace_back([this, client] { talk(client); });
    }
}

void TdsServer::talk(int client) {
    while (const auto request = receiveRequest(client)) {
        if (request->type == kPrelogin) {
            sendAnswer(client, preloginAnswer());
        } else if (request->type == kLoginRequest) {
            const TdsAnswer answer = answer_(kLogin);
            sendAnswer(client, answer.error == 0 ? loginAnswer() : answerBytes(answer));
        } else if (request->type == kBatch) {
            const std::string statement = statementOf(*request);
            {
                const std::lock_guard lock(mutex_);
                statements_.push_back(statement);
            }
            const TdsAnswer answer = answer_(statement);
            if (answer.hangsUp) {
                break;
            }
            sendAnswer(client, answerBytes(answer));
        } else {
            sendAnswer(client, done(0, 0));
        }
    }
    shutdown(client, SHUT_RDWR);
}

}  // namespace testing_support
