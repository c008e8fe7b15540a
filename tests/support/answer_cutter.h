#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace testing_support {

/// A way to a server on loopback that can lose the server's next answer, and the connection with
/// it; the server has done its work by then.
class AnswerCutter {
public:
    /// @param serverPort  0: nobody is behind it, and nothing is ever answered.
    explicit AnswerCutter(int serverPort);
    ~AnswerCutter();
    AnswerCutter(const AnswerCutter&) = delete;
    AnswerCutter& operator=(const AnswerCutter&) = delete;
    AnswerCutter(AnswerCutter&&) = delete;
    AnswerCutter& operator=(AnswerCutter&&) = delete;

    [[nodiscard]] std::string port() const { return std::to_string(port_); }
    void cutNextAnswer() { cuts_ = true; }
    /// Pieces that went to the server so far: one for each time that somebody waits for an answer.
    [[nodiscard]] long requests() const { return requests_; }

private:
    void serve();
    void connect(int client);
    void forward(int client, int server);

    int serverPort_;
    int listener_ = -1;
    int port_ = 0;
    int wake_[2] = {-1, -1};
    std::atomic<bool> cuts_ = false;
    std::atomic<long> requests_ = 0;
    std::vector<std::thread> connections_;
    std::thread thread_;
};

}  // namespace testing_support
