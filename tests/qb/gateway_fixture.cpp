#include "qb/gateway_fixture.h"

#include "core/brv_op.h"
#include "db/nuvDBSM_Common.h"
#include "qb/smQB_Utilities.h"
#include "util/qbxml_schema.h"

#include <algorithm>
#include <pugixml.hpp>
#include <sstream>

namespace testing_support {

namespace {

using platform::PlatformError;
using platform::QBElement;
using platform::ResponseType;

const std::map<std::string, ResponseType> kTypes = {
    {"AccountQueryRs", ResponseType::accountQuery},
    {"CreditMemoQueryRs", ResponseType::creditMemoQuery},
    {"CustomerQueryRs", ResponseType::customerQuery},
    {"EmployeeQueryRs", ResponseType::employeeQuery},
    {"InvoiceQueryRs", ResponseType::invoiceQuery},
    {"ItemQueryRs", ResponseType::itemQuery},
    {"OtherNameQueryRs", ResponseType::otherNameQuery},
    {"PurchaseOrderQueryRs", ResponseType::purchaseOrderQuery},
    {"ReceivePaymentQueryRs", ResponseType::receivePaymentQuery},
    {"SalesReceiptQueryRs", ResponseType::salesReceiptQuery},
    {"VendorQueryRs", ResponseType::vendorQuery},
};

void copyInto(QBElement& element, const pugi::xml_node& node) {
    element.setText(node.child_value());
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_element) {
            copyInto(element.append(child.name()), child);
        }
    }
}

/// Writes a request in the order of its filling. An element that the format does not know is an
/// error of the tables.
void copyInto(
    pugi::xml_node node, const QBElement& element, const std::vector<util::SchemaField>& fields
) {
    if (element.children().empty()) {
        node.text().set(element.text().c_str());
    }
    for (const QBElement& child : element.children()) {
        static const std::vector<util::SchemaField> kNone;
        const util::SchemaField* field = util::schemaField(fields, child.name());
        const bool isForeign = child.name() == "Memo" || child.name() == "Name" ||
                               child.name() == "Addr3";  // of a journal, of an employee
        EXPECT_TRUE(field != nullptr || isForeign) << child.name() << " in " << element.name();
        copyInto(
            node.append_child(child.name().c_str()), child, field != nullptr ? field->fields : kNone
        );
    }
}

struct ScriptedRequests : platform::IMsgSetRequest {
    std::string version;
    std::vector<QBElement> requests;
    platform::OnError onError = platform::OnError::stop;

    void setOnError(platform::OnError value) override { onError = value; }
    void ClearRequests() override { requests.clear(); }
    QBElement& append(std::string_view request) override {
        return requests.emplace_back(std::string(request));
    }
    [[nodiscard]] int count() const override { return static_cast<int>(requests.size()); }

    [[nodiscard]] std::string document() const {
        EXPECT_EQ(onError, platform::OnError::continueOn);
        std::ostringstream text;
        for (const QBElement& request : requests) {
            const util::SchemaRequest* schema = util::schemaRequest(request.name());
            EXPECT_NE(schema, nullptr) << request.name();
            pugi::xml_document document;
            if (schema != nullptr) {
                copyInto(
                    document.append_child((request.name() + "Rq").c_str()), request, schema->fields
                );
            }
            document.save(text, "  ", pugi::format_indent | pugi::format_no_declaration);
        }
        return text.str();
    }
};

class ScriptedSession : public platform::IQBSessionManager {
public:
    explicit ScriptedSession(ScriptedCompany& company) : company_(company) {}

    void OpenConnection(const std::string& appId, const std::string& appName) override {
        record("open", " " + appId + "|" + appName);
    }
    void BeginSession(const std::string& qbFile, int openMode) override {
        EXPECT_EQ(openMode, 0);
        record("begin", " " + qbFile);
        begun_ = true;
    }
    void EndSession() override {
        record("end");
        if (!begun_) {
            throw PlatformError(-2147220467, "not begun");
        }
        begun_ = false;
    }
    void CloseConnection() override { record("close"); }
    std::vector<std::string> QBXMLVersionsForSession() override { return company_.sessionVersions; }
    std::shared_ptr<platform::IMsgSetRequest>
    CreateMsgSetRequest(const std::string& country, int major, int minor) override {
        auto set = std::make_shared<ScriptedRequests>();
        set->version = country + " " + std::to_string(major) + "." + std::to_string(minor);
        return set;
    }
    std::shared_ptr<platform::IMsgSetResponse> DoRequests(const platform::IMsgSetRequest& requests
    ) override;

private:
    void record(const std::string& step, const std::string& detail = "") {
        company_.calls.push_back(step + detail);
        company_.failIfTold(step);
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
    bool begun_ = false;
};

std::shared_ptr<platform::IMsgSetResponse> readAnswers(const std::string& text) {
    auto set = std::make_shared<platform::IMsgSetResponse>();
    pugi::xml_document document;
    document.load_string(("<all>" + text + "</all>").c_str());
    for (const pugi::xml_node& node : document.first_child().children()) {
        platform::IResponse& response = set->ResponseList.emplace_back();
        response.name = node.name();
        const auto type = kTypes.find(response.name);
        response.Type = type == kTypes.end() ? ResponseType::none : type->second;
        response.StatusCode = node.attribute("statusCode").as_int();
        response.StatusSeverity = node.attribute("statusSeverity").value();
        response.StatusMessage = node.attribute("statusMessage").value();
        copyInto(response.Detail, node);
    }
    return set;
}

std::shared_ptr<platform::IMsgSetResponse>
ScriptedSession::DoRequests(const platform::IMsgSetRequest& requests) {
    const auto& set = dynamic_cast<const ScriptedRequests&>(requests);
    company_.failIfTold("exchange");
    if (!set.requests.empty() && set.requests.front().name() == "HostQuery") {
        EXPECT_EQ(set.version, "US 1.0");
        ++company_.hostQueries;
        return readAnswers(hostAnswer());
    }
    if (company_.failSends) {
        throw PlatformError(-7, "gone");
    }
    company_.spoken = set.version;
    company_.sent.push_back(set.document());
    auto answers = readAnswers(nextAnswer());
    answers->hasResponseList = !company_.withoutList;
    return answers;
}

}  // namespace

struct GatewayTest::World : platform::DesktopPort,
                            platform::ProcessPort,
                            platform::FilePort,
                            platform::ClockPort {
    explicit World(ScriptedCompany& company) : company_(company) {}

    // desktop
    void showModal(ui::Form&) override {}
    void showModeless(ui::Form&) override {}
    platform::BoxAnswer messageBox(
        const std::string& text, const std::string& title, platform::BoxButtons, platform::BoxIcon
    ) override {
        boxes.push_back(title + "|" + text);
        if (company_.onMessageBox) {
            company_.onMessageBox();
        }
        return platform::BoxAnswer::ok;
    }
    void pendingEvents() override {}
    void setBusyCursor(bool) override {}
    void openDocument(const std::string&) override {}
    std::string chooseFile(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    [[nodiscard]] bool hasOperator() const override { return company_.operatorPresent; }

    // processes
    void run(const std::string&) override {}
    void runHidden(const std::string&) override {}
    [[nodiscard]] std::string computerName() const override { return "PC"; }
    [[nodiscard]] std::string programName() const override { return "brevane"; }
    [[noreturn]] void endProgram() override { throw platform::ProgramEnd{}; }

    // files: only the run log is written
    [[nodiscard]] bool fileExists(const std::string&) const override { return false; }
    [[nodiscard]] bool folderExists(const std::string&) const override { return true; }
    void makeFolder(const std::string&) override {}
    void remove(const std::string&) override {}
    void copy(const std::string&, const std::string&) override {}
    [[nodiscard]] std::string read(const std::string&) const override { return {}; }
    void write(const std::string&, const std::string&) override {}
    void append(const std::string&, const std::string& bytes) override {
        constexpr std::size_t kDateAndTime = sizeof "yyyymmdd hh:mm";
        log.push_back(bytes.substr(kDateAndTime, bytes.find('\r') - kDateAndTime));
    }
    void truncate(const std::string&, bool) override {}
    [[nodiscard]] std::vector<std::string>
    list(const std::string&, const std::string&) const override {
        return {};
    }
    [[nodiscard]] bool isWritable(const std::string&) const override { return true; }
    [[nodiscard]] std::string programFolder() const override { return "C:\\Prog"; }
    [[nodiscard]] std::optional<std::string> driveRemote(char) const override { return {}; }

    // clock
    [[nodiscard]] util::DateTime now() const override { return {45351, 43200}; }
    void sleep(int) override {}

    std::vector<std::string> boxes;
    std::vector<std::string> log;

private:
    ScriptedCompany& company_;
};

namespace {

std::string takeAll(std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : " / ") + text;
    }
    texts.clear();
    return joined;
}

}  // namespace

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
        return std::make_unique<ScriptedSession>(company);
    };
    all.desktop = world_.get();
    all.processes = world_.get();
    all.files = world_.get();
    all.clock = world_.get();
    platform::install(all);
    qb::resetGateway();
    core::resetOp();
    gCommon.USEurope = std::string_view(" ");
}

GatewayTest::~GatewayTest() {
    qb::resetGateway();
    platform::install({});
}

std::string GatewayTest::lastRequest() const {
    pugi::xml_document document;
    document.load_string(company.sent.back().c_str());
    std::ostringstream text;
    document.save(text, "", pugi::format_raw | pugi::format_no_declaration);
    return text.str();
}

std::string GatewayTest::boxes() {
    return takeAll(world_->boxes);
}

std::string GatewayTest::logLines() {
    return takeAll(world_->log);
}

}  // namespace testing_support
