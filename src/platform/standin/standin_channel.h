#pragma once

#include "companyfile/company_file.h"
#include "platform/ports/quickbooks_session.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The channel to a stand-in company file, in this process.
class StandinChannel : public QBChannel {
public:
    /// What is done with each company file as soon as it is open (clock, versions, faults).
    using Prepare = std::function<void(companyfile::CompanyFile&)>;

    /// @param openFile  the company file that an empty name means, as the one that is open in the
    /// accounting package; empty: none is, and beginning without a name fails with kNotRunning.
    explicit StandinChannel(std::string openFile = {}, Prepare prepare = {})
        : openFile_(std::move(openFile)),
          prepare_(std::move(prepare)) {}

    void open(const std::string& appId, const std::string& appName) override;
    /// @param companyFile  name of the file in code page 1252; backslashes part folders, blanks at
    /// its ends do not count.
    void begin(const std::string& companyFile, int openMode) override;
    void end() override;
    void close() override;
    /// Asks the company file by a host query: one exchange.
    [[nodiscard]] std::vector<std::string> versions() override;
    std::string exchange(const std::string& document) override;

private:
    std::string openFile_;
    Prepare prepare_;
    std::optional<companyfile::CompanyFile> file_;
};

}  // namespace platform
