#pragma once

#include "companyfile/company_file.h"
#include "support/temp_folder.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace companyfile {

/// What came back for one request.
struct Reply {
    int code = -1;
    std::string severity;
    std::string message;
    std::string body;  ///< what stands in the answer element
};

/// A case of a table: its sentence under "given", its values by their names; "" where one is not
/// told.
using Case = std::map<std::string, std::string>;
/// The cases in the file `name` below tests/data/companyfile: "[sentence]", then lines "name =
/// value", which indented lines go on.
std::vector<Case> casesOf(const std::string& name);

/// A request document around `requests`.
std::string documentOf(
    const std::string& requests,
    const std::string& version = "6.0",
    const std::string& attributes = "onError=\"continueOnError\""
);
/// A reference by name, and an added line with an item: elements of a request.
std::string ref(const std::string& field, const std::string& name);
std::string line(const std::string& kind, const std::string& item, const std::string& rest);
/// What a TxnDel tells.
std::string deletion(const std::string& type, const std::string& txnId);
/// The `index`-th answer of a document.
Reply replyIn(const std::string& answer, std::size_t index = 0);
/// The texts of all elements called `name` in an answer, joined by "|".
std::string textsOf(const std::string& body, const std::string& name);
/// Bookings as "account debit" and "account -credit", joined by "; ".
std::string bookingsOf(const TransactionSummary& transaction);

/// A shop's company file with a customer, a vendor and items on top of the template.
class CompanyTest : public ::testing::Test {
protected:
    CompanyTest();

    /// Sends one add or modify whose fields are `fields`.
    Reply send(const std::string& name, const std::string& fields);
    /// Sends one query or delete.
    Reply ask(const std::string& name, const std::string& fields);
    /// Sends an add that must succeed; gives its answer.
    std::string make(const std::string& name, const std::string& fields);
    /// All that was booked since the last call is in balance and the file is sound.
    void expectSound();

    testing_support::TempFolder folder_;
    std::string path_;
    CompanyFile file_;
};

}  // namespace companyfile
