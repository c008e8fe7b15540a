#include "support/answer_cutter.h"

#include <array>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace testing_support {

namespace {

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

}  // namespace

AnswerCutter::AnswerCutter(int serverPort) : serverPort_(serverPort) {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    const bool isReady =
        bind(listener_, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
        listen(listener_, 4) == 0 &&
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) == 0 &&
        pipe(wake_) == 0;
    if (!isReady) {
        throw std::runtime_error("no way to the server");
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
}

AnswerCutter::~AnswerCutter() {
    close(wake_[1]);
    thread_.join();
    for (std::thread& connection : connections_) {
        connection.join();
    }
    close(wake_[0]);
    close(listener_);
}

void AnswerCutter::serve() {
    while (true) {
        std::array<pollfd, 2> waiting = {{{listener_, POLLIN, 0}, {wake_[0], POLLIN, 0}}};
        poll(waiting.data(), waiting.size(), -1);
        if (waiting[1].revents != 0) {
            return;
        }
        const int client = accept(listener_, nullptr, nullptr);
        connections_.emplace_back([this, client] { connect(client); });
    }
}

void AnswerCutter::connect(int client) {
    int server = -1;
    if (serverPort_ != 0) {
        server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_in address = loopback(serverPort_);
        ::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    }
    forward(client, server);
    close(client);
    if (server >= 0) {
        close(server);
    }
}

void AnswerCutter::forward(int client, int server) {
    std::array<char, 8192> piece{};
    while (true) {
        std::array<pollfd, 3> waiting = {
            {{client, POLLIN, 0}, {server, POLLIN, 0}, {wake_[0], POLLIN, 0}}};
        poll(waiting.data(), waiting.size(), -1);
        if (waiting[2].revents != 0) {
            return;
        }
        const bool isAnswer = waiting[1].revents != 0;
        const ssize_t size = recv(isAnswer ? server : client, piece.data(), piece.size(), 0);
        if (size <= 0 || (isAnswer && cuts_.exchange(false))) {
            return;
        }
        requests_ += isAnswer ? 0 : 1;
        if (server >= 0) {
            send(isAnswer ? client : server, piece.data(), static_cast<std::size_t>(size), 0);
        }
    }
}

}  // namespace testing_support
