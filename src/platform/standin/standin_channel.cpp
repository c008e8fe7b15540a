#include "platform/standin/standin_channel.h"

#include "platform/qbxml/request_document.h"
#include "platform/qbxml/response_document.h"
#include "util/conversions.h"
#include "util/text_codec.h"

#include <algorithm>

namespace platform {

namespace {

/// Runs `body`; a failed call of the company file becomes the platform's.
template <class Body>
auto translated(const Body& body) {
    try {
        return body();
    } catch (const companyfile::CallError& error) {
        throw PlatformError(error.hresult, util::fromUtf8(error.text), "company file");
    }
}

std::string nativeName(const std::string& name) {
    std::string native = util::toUtf8(util::trim(name));
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

}  // namespace

void StandinChannel::open(const std::string& appId, const std::string& appName) {
    static_cast<void>(appId);
    static_cast<void>(appName);
}

void StandinChannel::begin(const std::string& companyFile, int openMode) {
    static_cast<void>(openMode);
    const std::string given = nativeName(companyFile);
    const std::string name = given.empty() ? nativeName(openFile_) : given;
    if (name.empty()) {
        throw PlatformError(
            kNotRunning, "No company file is open and none was named.", "company file"
        );
    }
    translated([&] {
        file_ = companyfile::CompanyFile::open(name);
        if (prepare_) {
            prepare_(*file_);
        }
    });
}

void StandinChannel::end() {
    file_.reset();
}

void StandinChannel::close() {
    file_.reset();
}

std::vector<std::string> StandinChannel::versions() {
    QbxmlRequestSet set("1.0");
    set.append("HostQuery");
    const auto answer = readResponseDocument(exchange(set.document()));
    std::vector<std::string> versions;
    for (const IResponse& response : answer->ResponseList) {
        for (const QBElement* version :
             response.Detail.find("HostRet").all("SupportedQBXMLVersion")) {
            versions.push_back(version->text());
        }
    }
    return versions;
}

std::string StandinChannel::exchange(const std::string& document) {
    if (!file_) {
        throw PlatformError(
            kNotRunning, "No company file is open and none was named.", "company file"
        );
    }
    return translated([&] { return file_->exchange(document); });
}

}  // namespace platform
