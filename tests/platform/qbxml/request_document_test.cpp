#include "platform/qbxml/request_document.h"

#include <gtest/gtest.h>

namespace {

using platform::OnError;
using platform::QbxmlRequestSet;

/// The names and texts of the elements between "QBXMLMsgsRq" tags, without line breaks and indents.
std::string inside(const QbxmlRequestSet& set) {
    std::string text = set.document();
    text = text.substr(text.find("<QBXMLMsgsRq"));
    text = text.substr(text.find('\n'), text.find("</QBXMLMsgsRq>") - text.find('\n'));
    for (auto at = text.find('\n'); at != std::string::npos; at = text.find('\n', at)) {
        text.erase(at, text.find_first_not_of(" \n", at) - at);
    }
    return text;
}

TEST(RequestDocument, framesTheRequestsAndNumbersThem) {
    QbxmlRequestSet set("6.0");
    set.setOnError(OnError::continueOn);
    set.append("CustomerAdd").at("Name").setText("Jo");
    auto& query = set.append("AccountQuery");
    query.at("ActiveStatus").setText("ActiveOnly");
    set.append("HostQuery");
    EXPECT_EQ(set.count(), 3);
    EXPECT_EQ(
        set.document(),
        R"(<?xml version="1.0" encoding="utf-8"?>
<?qbxml version="6.0"?>
<QBXML>
<QBXMLMsgsRq onError="continueOnError">
<CustomerAddRq requestID="0">
<CustomerAdd>
  <Name>Jo</Name>
</CustomerAdd>
</CustomerAddRq>
<AccountQueryRq requestID="1">
  <ActiveStatus>ActiveOnly</ActiveStatus>
</AccountQueryRq>
<HostQueryRq requestID="2">
</HostQueryRq>
</QBXMLMsgsRq>
</QBXML>
)"
    );
    set.ClearRequests();
    EXPECT_EQ(set.count(), 0);
}

TEST(RequestDocument, namesWhatFollowsAFailedRequest) {
    const std::pair<OnError, const char*> cases[] = {
        {OnError::stop, "onError=\"stopOnError\""},
        {OnError::continueOn, "onError=\"continueOnError\""},
        {OnError::rollback, "onError=\"rollbackOnError\""},
    };
    for (const auto& [given, expected] : cases) {
        QbxmlRequestSet set("CA3.0");
        set.setOnError(given);
        EXPECT_NE(set.document().find(expected), std::string::npos) << expected;
        EXPECT_NE(set.document().find("<?qbxml version=\"CA3.0\"?>"), std::string::npos);
    }
}

TEST(RequestDocument, putsElementsIntoTheWiresOrder) {
    struct Case {
        const char* given;
        const char* request;
        std::vector<std::string> filling;  ///< paths; one that begins with "+" is a further element
        const char* expected;              ///< of the names inside the body
    };
    const Case cases[] = {
        {"fields on two levels",
         "CustomerAdd",
         {"Phone", "BillAddress/City", "BillAddress/Addr1", "Name"},
         "<Name></Name><BillAddress><Addr1></Addr1><City></City></BillAddress><Phone></Phone>"},
        {"lines behind the head, in their own sequence",
         "InvoiceAdd",
         {"+InvoiceLineAdd", "+InvoiceLineGroupAdd", "+InvoiceLineAdd", "CustomerRef/FullName"},
         "<CustomerRef><FullName></FullName></CustomerRef><InvoiceLineAdd></InvoiceLineAdd>"
         "<InvoiceLineGroupAdd></InvoiceLineGroupAdd><InvoiceLineAdd></InvoiceLineAdd>"},
        {"both sides of a journal, mixed as they were filled",
         "JournalEntryAdd",
         {"+JournalCreditLine", "+JournalDebitLine", "+JournalCreditLine", "TxnDate"},
         "<TxnDate></TxnDate><JournalCreditLine></JournalCreditLine><JournalDebitLine>"
         "</JournalDebitLine><JournalCreditLine></JournalCreditLine>"},
        {"a field of another edition behind its neighbour",
         "JournalEntryAdd",
         {"+JournalDebitLine", "RefNumber", "Memo", "TxnDate"},
         "<TxnDate></TxnDate><RefNumber></RefNumber><Memo></Memo><JournalDebitLine>"
         "</JournalDebitLine>"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.given);
        QbxmlRequestSet set("6.0");
        auto& request = set.append(row.request);
        for (const std::string& path : row.filling) {
            path.front() == '+' ? request.append(path.substr(1)) : request.at(path);
        }
        EXPECT_NE(
            inside(set).find(std::string(row.request) + ">" + row.expected + "</"),
            std::string::npos
        ) << inside(set);
    }
}

TEST(RequestDocument, writesEveryTextInAscii) {
    struct Case {
        const char* given;
        std::string text;
        const char* expected;
    };
    const Case cases[] = {
        {"marks of the format", "A & B <\"c\"> 'd'", "A &amp; B &lt;&quot;c&quot;&gt; 'd'"},
        {"a letter above 127", "Caf\xE9", "Caf&#233;"},
        {"a character that the code page alone has there", "\x80 5", "&#8364; 5"},
        {"a place that the code page leaves free", "\x81", "&#129;"},
        {"the last character of seven bits", "\x7F", "&#127;"},
        {"blanks belong to the value", " a ", " a "},
        {"lines", "a\r\nb\tc", "a&#13;\nb\tc"},
        {"control characters", std::string("a\0b\x1F", 4), "a b "},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.given);
        QbxmlRequestSet set("6.0");
        set.append("CustomerAdd").at("Name").setText(row.text);
        const std::string expected = std::string("<Name>") + row.expected + "</Name>";
        EXPECT_NE(set.document().find(expected), std::string::npos) << set.document();
    }
}

}  // namespace
