#pragma once

#include "operator.h"
#include "platform/ports/platform.h"
#include "platform/qbxml/session_manager.h"
#include "platform/qt/qt_desktop.h"
#include "platform/standin/standin_channel.h"
#include "platform/system/file_names.h"
#include "support/link_fixture.h"

#include <functional>
#include <memory>
#include <string>

#include <QUrl>

namespace testing_support {

/// A channel whose answers wait as long as the test wants it.
class WaitingChannel : public platform::StandinChannel {
public:
    explicit WaitingChannel(std::function<bool(const std::string&)> waits)
        : waits_(std::move(waits)) {}
    std::string exchange(const std::string& document) override {
        while (waits_(document)) {
            platform::desktop().pendingEvents();
        }
        return StandinChannel::exchange(document);
    }

private:
    std::function<bool(const std::string&)> waits_;
};

/// The link with its windows, on a small store.
class OnScreen : public LinkFixture {
protected:
    OnScreen(int sales, int days) {
        application();
        platform::QtHost host;
        host.nativeName = [](const std::string& name) { return platform::nativeName(name); };
        host.openUrl = [this](const QUrl& url) {
            opened = url;
            return true;
        };
        screen = std::make_unique<platform::QtDesktop>(host);
        makeStore(sales, days);
        platform::current().desktop = screen.get();
    }

    /// Lets the requests that hold `part` wait until answer() is called.
    void holdBack(const std::string& part) {
        letWait();
        platform::current().makeSessionManager = [this, part] {
            return std::make_unique<platform::QbxmlSessionManager>(
                std::make_unique<WaitingChannel>([this, part](const std::string& document) {
                    waits_ += document.find(part) != std::string::npos ? 1 : 0;
                    return document.find(part) != std::string::npos && !answered_;
                })
            );
        };
    }
    [[nodiscard]] bool isWaiting() const { return waits_ > 1 && !answered_; }
    void answer() { answered_ = true; }
    void letWait() {
        waits_ = 0;
        answered_ = false;
    }

    static platform::FormWindow* formWindow(const std::string& name) {
        return dynamic_cast<platform::FormWindow*>(Operator::window(name));
    }

    std::unique_ptr<platform::QtDesktop> screen;
    QUrl opened;

private:
    int waits_ = 0;
    bool answered_ = false;
};

}  // namespace testing_support
