#include "qb/gateway_fixture.h"

#include "config/clsDataPath.h"
#include "core/brv_op.h"
#include "core/run_log.h"
#include "db/nuvDBSM_Common.h"
#include "platform/qbxml/session_manager.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"
#include "qb/smQB_Utilities.h"
#include "support/fake_desktop.h"
#include "support/standing_clock.h"
#include "support/temp_folder.h"

#include <sstream>

namespace testing_support {

namespace {

using platform::PlatformError;

class ScriptedChannel : public platform::QBChannel {
public:
    explicit ScriptedChannel(ScriptedCompany& company) : company_(company) {}

    void open(const std::string& appId, const std::string& appName) override {
        company_.calls.push_back("open " + appId + "|" + appName);
    }
    void begin(const std::string& companyFile, int openMode) override {
        EXPECT_EQ(openMode, 0);
        company_.calls.push_back("begin " + companyFile);
        company_.failIfTold("begin");
    }
    void end() override { company_.calls.emplace_back("end"); }
    void close() override { company_.calls.emplace_back("close"); }
    std::vector<std::string> versions() override { return company_.sessionVersions; }
    std::string exchange(const std::string& document) override {
        company_.failIfTold("exchange");
        if (document.find("<HostQueryRq") != std::string::npos) {
            EXPECT_NE(document.find("<?qbxml version=\"1.0\"?>"), std::string::npos);
            ++company_.hostQueries;
            return framed(hostAnswer());
        }
        company_.sent.push_back(document);
        return company_.withoutList ? "<QBXML></QBXML>" : framed(nextAnswer());
    }

private:
    static std::string framed(const std::string& answers) {
        return "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n" + answers +
               "\n</QBXMLMsgsRs>\n</QBXML>\n";
    }
    [[nodiscard]] std::string hostAnswer() const {
        std::string versions;
        for (const std::string& version : company_.hostVersions) {
            versions += "<SupportedQBXMLVersion>" + version + "</SupportedQBXMLVersion>";
        }
        return found("HostQuery", "<HostRet>" + versions + "</HostRet>");
    }
    std::string nextAnswer() {
        if (company_.answers.empty()) {
            return answer("Any", 0, "Status OK");
        }
        std::string next = company_.answers.front();
        company_.answers.pop_front();
        return next;
    }

    ScriptedCompany& company_;
};

class ScriptedOperator : public RecordingDesktop {
public:
    explicit ScriptedOperator(ScriptedCompany& company) : company_(company) {}

    platform::BoxAnswer messageBox(
        const std::string& text,
        const std::string& title,
        platform::BoxButtons buttons,
        platform::BoxIcon icon
    ) override {
        const auto answered = RecordingDesktop::messageBox(text, title, buttons, icon);
        if (company_.onMessageBox) {
            company_.onMessageBox();
        }
        return answered;
    }
    [[nodiscard]] bool hasOperator() const override { return company_.operatorPresent; }

private:
    ScriptedCompany& company_;
};

void join(std::string& joined, const std::string& text) {
    joined += (joined.empty() ? "" : " / ") + text;
}

}  // namespace

struct GatewayTest::World {
    explicit World(ScriptedCompany& company) : desktop(company), files(folder.str()) {}

    TempFolder folder;
    ScriptedOperator desktop;
    platform::NativeFiles files;
    platform::NativeProcesses processes;
    StandingClock clock{{2024, 2, 29}};
};

void ScriptedCompany::failIfTold(const std::string& step) const {
    const auto failure = failures.find(step);
    if (failure != failures.end()) {
        throw PlatformError(failure->second);
    }
}

std::string
answer(const std::string& request, int code, const std::string& message, const std::string& body) {
    return "<" + request + "Rs statusCode=\"" + std::to_string(code) + "\" statusSeverity=\"" +
           (code < 2 ? "Info" : "Error") + "\" statusMessage=\"" + message + "\">" + body + "</" +
           request + "Rs>";
}

std::string found(const std::string& query, const std::string& body) {
    return answer(query, 0, "Status OK", body);
}

std::string notFound(const std::string& query) {
    return answer(query, 1, "none here");
}

GatewayTest::GatewayTest() : world_(std::make_unique<World>(company)) {
    platform::Platform all;
    all.makeSessionManager = [this] {
        company.failIfTold("make");
        return std::make_unique<platform::QbxmlSessionManager>(
            std::make_unique<ScriptedChannel>(company)
        );
    };
    all.desktop = &world_->desktop;
    all.processes = &world_->processes;
    all.files = &world_->files;
    all.clock = &world_->clock;
    platform::install(all);
    qb::resetGateway();
    core::resetOp();
    gDataPath.DataPath = world_->folder.str();
    gCommon.USEurope = std::string_view(" ");
}

GatewayTest::~GatewayTest() {
    qb::resetGateway();
    config::resetConfig();
    platform::install({});
}

std::string GatewayTest::lastRequest() const {
    std::istringstream document(company.sent.back());
    std::string joined;
    for (std::string line; std::getline(document, line);) {
        joined += line.substr(std::min(line.find_first_not_of(' '), line.size()));
    }
    return joined;
}

std::string GatewayTest::boxes() {
    std::string joined;
    for (const ShownBox& box : world_->desktop.boxes) {
        join(joined, box.title + "|" + box.text);
    }
    world_->desktop.boxes.clear();
    return joined;
}

std::string GatewayTest::logLines() {
    const std::string name = core::logFileName();
    if (!world_->files.fileExists(name)) {
        return {};
    }
    std::istringstream log(world_->files.read(name));
    std::string joined;
    for (std::string line; std::getline(log, line);) {
        constexpr std::size_t kDateAndTime = sizeof "yyyymmdd hh:mm";
        join(joined, line.substr(kDateAndTime, line.find('\r') - kDateAndTime));
    }
    world_->files.remove(name);
    return joined;
}

}  // namespace testing_support
