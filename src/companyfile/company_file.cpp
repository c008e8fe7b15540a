#include "companyfile/company_file.h"

#include "companyfile/dump.h"
#include "companyfile/ledger.h"
#include "companyfile/templates.h"

#include <algorithm>

namespace companyfile {

namespace {

/// What a fault does before the work (or instead of it).
struct FaultError {
    Fault fault;
    std::int32_t number;
    std::string_view text;
};
constexpr FaultError kFaultErrors[] = {
    {Fault::notRunning,
     hresult::kNotRunning,
     "QuickBooks is not running and no company file was named."},
    {Fault::fileInUse, hresult::kFileInUse, "The company file is in use by another program."},
    {Fault::connectionLostBefore,
     hresult::kConnectionLost,
     "The connection to the company file was lost."},
    {Fault::connectionLostAfter,
     hresult::kConnectionLost,
     "The connection to the company file was lost."},
};

[[noreturn]] void fail(Fault fault) {
    const auto* found =
        std::find_if(std::begin(kFaultErrors), std::end(kFaultErrors), [&](const FaultError& each) {
            return each.fault == fault;
        });
    throw CallError(found->number, std::string(found->text));
}

}  // namespace

CompanyFile::CompanyFile(std::unique_ptr<Ledger> ledger) : ledger_(std::move(ledger)) {}
CompanyFile::CompanyFile(CompanyFile&&) noexcept = default;
CompanyFile& CompanyFile::operator=(CompanyFile&&) noexcept = default;
CompanyFile::~CompanyFile() = default;

CompanyFile CompanyFile::create(
    const std::string& path, std::string_view templateName, std::string_view mappingText
) {
    if (!isTemplate(templateName)) {
        throw CallError(
            hresult::kCannotOpen, "There is no template " + std::string(templateName) + "."
        );
    }
    auto ledger = std::make_unique<Ledger>(path, Database::Mode::create);
    try {
        ledger->change([&] { fillFromTemplate(*ledger, templateName, mappingText); });
    } catch (const StatusError& error) {
        ledger.reset();
        removeFile(path);
        throw CallError(hresult::kCannotOpen, error.status.message);
    } catch (...) {
        ledger.reset();
        removeFile(path);
        throw;
    }
    return CompanyFile(std::move(ledger));
}

CompanyFile CompanyFile::open(const std::string& path) {
    return CompanyFile(std::make_unique<Ledger>(path, Database::Mode::open));
}

void CompanyFile::meetFault(bool afterwards) {
    const auto due = std::find_if(faults_.begin(), faults_.end(), [&](const auto& each) {
        return each.first == exchanges_ &&
               (each.second.first == Fault::connectionLostAfter) == afterwards;
    });
    if (due == faults_.end()) {
        return;
    }
    const auto [fault, milliseconds] = due->second;
    faults_.erase(due);
    if (fault != Fault::slow) {
        fail(fault);
    }
    if (slow_) {
        slow_(milliseconds);
    }
}

std::string CompanyFile::exchange(const std::string& requestDocument) {
    ++exchanges_;
    meetFault(false);
    std::string answer = ledger_->exchange(requestDocument);
    meetFault(true);
    return answer;
}

void CompanyFile::setVersions(std::vector<std::string> versions) {
    ledger_->versions = std::move(versions);
}

void CompanyFile::setClock(Clock clock) {
    ledger_->clock = std::move(clock);
}

void CompanyFile::failAt(int n, Fault fault, int milliseconds) {
    faults_.emplace_back(exchanges_ + n, std::pair(fault, milliseconds));
}

void CompanyFile::onSlow(std::function<void(int)> callback) {
    slow_ = std::move(callback);
}

std::vector<TransactionSummary> CompanyFile::transactions() {
    std::vector<TransactionSummary> result;
    ledger_->look([&] {
        for (const std::int64_t id : ledger_->transactions().ofType("")) {
            result.push_back(summaryOf(*ledger_, ledger_->transactions().load(id)));
        }
    });
    return result;
}

std::vector<AccountBalance> CompanyFile::trialBalance() {
    std::vector<AccountBalance> result;
    ledger_->look([&] {
        const auto sums = ledger_->transactions().accountSums();
        for (const auto& [id, entry] : ledger_->lists().all()) {
            if (entry.kind->space == NameSpace::accounts) {
                const auto found = sums.find(id);
                const auto [debit, credit] =
                    found == sums.end() ? std::pair<util::Money, util::Money>() : found->second;
                result.push_back(
                    {entry.fullName, std::string(entry.fields.at("AccountType")), debit, credit}
                );
            }
        }
    });
    return result;
}

std::string CompanyFile::dump() {
    std::string text;
    ledger_->look([&] { text = dumpOf(*ledger_); });
    return text;
}

std::vector<std::string> CompanyFile::check() {
    return findingsIn(*ledger_);
}

void createRetail(const std::string& path, std::string_view mappingText) {
    CompanyFile::create(path, "retail", mappingText);
}

}  // namespace companyfile
