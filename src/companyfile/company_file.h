#pragma once

#include "companyfile/call_error.h"
#include "util/money.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace companyfile {

/// What an exchange can be told to do instead of working.
enum class Fault : std::uint8_t {
    notRunning,            ///< fails with kNotRunning, nothing done
    fileInUse,             ///< fails with kFileInUse, nothing done
    connectionLostBefore,  ///< fails with kConnectionLost, nothing done
    connectionLostAfter,   ///< the work is done and kept, then the call fails with kConnectionLost
    slow,                  ///< works, but calls the slow callback first
};

/// One booking of a transaction. Exactly one side is other than zero.
struct PostingSummary {
    std::string account;  ///< full name
    util::Money debit;
    util::Money credit;
};

/// One line of a transaction, as far as a reconciliation looks at it.
struct LineSummary {
    std::string kind;  ///< as in the request without "Add": "SalesReceiptLine", "JournalDebitLine"
    std::string item;  ///< full name; empty on a line without an item
    std::string account;      ///< full name; journal and expense lines
    std::string entity;       ///< full name of the customer or vendor of a journal line
    std::string description;  ///< Desc, or Memo of a journal line
    std::string quantity;     ///< decimal text; empty when none was sent
    std::string taxCode;
    util::Money amount;  ///< as sent or derived; a payment item's counts negative in the total
};

/// One transaction of the file. Texts are UTF-8.
struct TransactionSummary {
    std::string
        type;  ///< as in the request without "Add", or "OpeningBalance", "InventoryAdjustment"
    std::string txnId;
    std::int64_t txnNumber = 0;  ///< running number over all types, from 1
    std::string date;            ///< YYYY-MM-DD
    std::string refNumber;
    std::string name;  ///< full name of the customer or vendor; empty: none
    std::string memo;
    util::Money total;  ///< with tax; a journal's is the sum of its debits
    util::Money tax;    ///< tax that the file computed itself
    std::vector<LineSummary> lines;
    std::vector<PostingSummary> postings;
};

/// One account of the trial balance.
struct AccountBalance {
    std::string account;  ///< full name
    std::string type;     ///< AccountType word
    util::Money debit;    ///< sum of all debits
    util::Money credit;   ///< sum of all credits
};

class Ledger;

/// The stand-in company file: a real small ledger in one SQLite file that answers qbXML documents.
/// One object is one session with the file. Several may be open on one file; each sees what the
/// others have finished. Not for use by several threads at once.
class CompanyFile {
public:
    /// Seconds since 1970-01-01 UTC.
    using Clock = std::function<std::int64_t()>;

    /// Makes a new file at `path` (name ends .qbw) and opens it.
    /// @param templateName  "" (what every new company has), "retail" (a shop's accounts and lists)
    /// or "retail-summary" (for a shop that posts daily totals only).
    /// @param mappingText  text of an account mapping (INI), whose accounts, terms and tax payee
    /// are made where they are missing; empty: none. Code page 1252.
    /// @throws CallError kCannotOpen when a file is there already or cannot be written, and for an
    /// unknown template or a mapping that cannot be carried out; no file is left behind then.
    static CompanyFile create(
        const std::string& path,
        std::string_view templateName = "",
        std::string_view mappingText = ""
    );
    /// Opens an existing file.
    /// @throws CallError kCannotOpen (missing, or it may not be read and written), kNotUsable (no
    /// company file, damaged, of a newer format), kFileInUse (another program is writing to it or
    /// holds it for itself).
    static CompanyFile open(const std::string& path);

    CompanyFile(CompanyFile&&) noexcept;
    CompanyFile& operator=(CompanyFile&&) noexcept;
    CompanyFile(const CompanyFile&) = delete;
    CompanyFile& operator=(const CompanyFile&) = delete;
    ~CompanyFile();

    /// Carries out one request document (pure ASCII) and gives the answer document (pure ASCII).
    /// Everything that the document changed is on disk when it returns.
    /// @throws CallError when the call itself fails: then nothing was changed, but for
    /// connectionLostAfter.
    std::string exchange(const std::string& requestDocument);

    /// The version list that the host query reports and that documents may name.
    void setVersions(std::vector<std::string> versions);
    /// The clock for times, edit sequences and default dates. Default: a clock of the file's own
    /// that begins at 2015-01-05 12:00 and goes on by one second with each change, the same in
    /// every run.
    void setClock(Clock clock);
    /// Makes the `n`-th exchange from now on (1: the next) meet `fault`, once. `milliseconds` is
    /// for slow.
    void failAt(int n, Fault fault, int milliseconds = 0);
    /// What a slow exchange calls with its milliseconds; without it nothing happens.
    void onSlow(std::function<void(int)> callback);

    /// All transactions in order of entry.
    std::vector<TransactionSummary> transactions();
    /// All accounts in order of creation. The sums of both sides are equal at any time.
    std::vector<AccountBalance> trialBalance();
    /// The whole file as one JSON object (UTF-8), described in docs/companyfile.md.
    std::string dump();
    /// What is wrong in the file, one sentence each; empty: sound.
    std::vector<std::string> check();

private:
    explicit CompanyFile(std::unique_ptr<Ledger> ledger);
    void meetFault(bool afterwards);

    std::unique_ptr<Ledger> ledger_;
    std::vector<std::pair<int, std::pair<Fault, int>>>
        faults_;  ///< exchange number, fault, milliseconds
    int exchanges_ = 0;
    std::function<void(int)> slow_;
};

/// Makes a company file from the template "retail" plus what `mappingText` names; see
/// CompanyFile::create.
void createRetail(const std::string& path, std::string_view mappingText);

}  // namespace companyfile
