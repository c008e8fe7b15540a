#pragma once

#include "qb/gateway_fixture.h"
#include "support/fault_channel.h"
#include "support/temp_folder.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

/// The gateway over a real company file: a shop's, as new, with the session open. What its channel
/// does wrong is planned in `faults`.
class BooksTest : public GatewayTest {
protected:
    BooksTest();
    ~BooksTest() override;

    /// What the company file has got ("+"), lost ("-") and changed ("~", with the new values) since
    /// the last call, a line for each record. Accounts are left out: their balances follow from the
    /// bookings of a transaction.
    std::string changes();
    /// The file is sound and its trial balance balances.
    void expectSound() const;

    std::shared_ptr<FaultPlan> faults = std::make_shared<FaultPlan>();

private:
    [[nodiscard]] std::vector<std::string> records() const;
    [[nodiscard]] std::string companyFile() const { return (folder_.path() / "shop.qbw").string(); }

    TempFolder folder_;
    std::vector<std::string> known_;
};

/// A failure of the call to the company file, and how the gateway tells it.
inline constexpr std::int32_t kServerGone = -2147023174;
inline constexpr char kGoneText[] = "Error: -2147023174 The server is gone.";
platform::PlatformError serverGone();

}  // namespace testing_support
