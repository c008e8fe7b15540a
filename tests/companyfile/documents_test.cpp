#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

constexpr char kCustomer[] =
    "<CustomerAddRq><CustomerAdd><Name>New</Name></CustomerAdd></CustomerAddRq>";

class Documents : public CompanyTest {};

struct RefusedDocument {
    const char* given;
    std::string document;
    std::int32_t number;
};

TEST_F(Documents, thatAreNotUnderstoodFailAsAWholeAndChangeNothing) {
    const std::string host = "<HostQueryRq/>";
    const auto customer = [](const std::string& fields) {
        return documentOf(
            kCustomer + ("<CustomerAddRq><CustomerAdd>" + fields) + "</CustomerAdd></CustomerAddRq>"
        );
    };
    const RefusedDocument cases[] = {
        {"no XML", "hello", hresult::kUnparsable},
        {"without the instruction",
         "<QBXML><QBXMLMsgsRq onError=\"stopOnError\"/></QBXML>",
         hresult::kUnparsable},
        {"an unknown version", documentOf(host, "99.0"), hresult::kUnknownVersion},
        {"without onError", documentOf(host, "6.0", ""), hresult::kUnparsable},
        {"rollback", documentOf(host, "6.0", "onError=\"rollbackOnError\""), hresult::kNoRollback},
        {"no request", documentOf(""), hresult::kUnparsable},
        {"an unknown request", documentOf("<PlumberAddRq/>"), hresult::kUnparsable},
        {"a byte above 127", customer("<Name>Caf\xC3\xA9</Name>"), hresult::kUnparsable},
        {"a control character", customer("<Name>a&#1;b</Name>"), hresult::kUnparsable},
        {"a bare ampersand", customer("<Name>a & b</Name>"), hresult::kUnparsable},
        {"elements out of order",
         customer("<FirstName>A</FirstName><Name>B</Name>"),
         hresult::kUnparsable},
        {"an unknown element",
         customer("<Name>B</Name><Colour>red</Colour>"),
         hresult::kUnparsable},
        {"a required element that is missing",
         customer("<FirstName>A</FirstName>"),
         hresult::kUnparsable},
        {"the same element twice", customer("<Name>A</Name><Name>B</Name>"), hresult::kUnparsable},
        {"a field younger than the version",
         documentOf(
             "<SalesReceiptAddRq><SalesReceiptAdd><Other>x</Other><SalesReceiptLineAdd/>"
             "</SalesReceiptAdd></SalesReceiptAddRq>",
             "5.0"
         ),
         hresult::kUnparsable},
        {"a journal without lines",
         documentOf("<JournalEntryAddRq><JournalEntryAdd/></JournalEntryAddRq>"),
         hresult::kUnparsable},
        {"two ways of asking",
         documentOf("<CustomerQueryRq><ListID>1-1</ListID><FullName>A</FullName>"
                    "</CustomerQueryRq>"),
         hresult::kUnparsable},
    };
    const std::string before = file_.dump();
    for (const auto& [given, document, number] : cases) {
        SCOPED_TRACE(given);
        try {
            file_.exchange(document);
            ADD_FAILURE() << "was accepted";
        } catch (const CallError& error) {
            EXPECT_EQ(error.hresult, number);
            EXPECT_FALSE(error.text.empty());
        }
    }
    EXPECT_EQ(file_.dump(), before);
}

TEST_F(Documents, getOneAnswerForEachRequestInTheTextFormOfTheDesktop) {
    const std::string answer = file_.exchange(documentOf(
        "<CustomerQueryRq requestID=\"a&quot;1\" metaData=\"MetaDataOnly\">"
        "<FullName>abc</FullName></CustomerQueryRq>"
        "<CustomerAddRq requestID=\"2\"><CustomerAdd><Name>Caf&#233;</Name></CustomerAdd>"
        "</CustomerAddRq>"
        "<CustomerQueryRq><NameFilter><MatchCriterion>StartsWith</MatchCriterion>"
        "<Name>CAF&#201;</Name></NameFilter><IncludeRetElement>Name</IncludeRetElement>"
        "</CustomerQueryRq>"
    ));
    EXPECT_EQ(
        answer.substr(0, answer.find("<CustomerRet>")),
        "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n"
        "<CustomerQueryRs requestID=\"a&quot;1\" statusCode=\"0\" statusSeverity=\"Info\" "
        "statusMessage=\"Status OK\" retCount=\"1\" />\n"
        "<CustomerAddRs requestID=\"2\" statusCode=\"0\" statusSeverity=\"Info\" "
        "statusMessage=\"Status OK\">\n"
    );
    EXPECT_NE(
        answer.find("<CustomerRet><Name>Caf&#233;</Name></CustomerRet>\n</CustomerQueryRs>"),
        std::string::npos
    );
}

struct StopCase {
    const char* given;
    const char* onError;
    std::vector<int> codes;
};

TEST_F(Documents, stopAtAnErrorOnlyWhenTold) {
    const StopCase cases[] = {
        {"the rest is not processed", "onError=\"stopOnError\"", {1, 3140, 3231}},
        {"the rest goes on", "onError=\"continueOnError\"", {1, 3140, 0}},
    };
    for (const auto& [given, onError, codes] : cases) {
        SCOPED_TRACE(given);
        const std::string answer = file_.exchange(documentOf(
            std::string("<CustomerQueryRq><NameFilter><MatchCriterion>Contains</MatchCriterion>"
                        "<Name>nobody</Name></NameFilter></CustomerQueryRq>"
                        "<CustomerAddRq><CustomerAdd><Name>X</Name><TermsRef>"
                        "<FullName>Never</FullName></TermsRef></CustomerAdd></CustomerAddRq>"
            ) + kCustomer,
            "6.0",
            onError
        ));
        for (std::size_t i = 0; i < codes.size(); ++i) {
            EXPECT_EQ(replyIn(answer, i).code, codes[i]) << i;
        }
    }
}

TEST_F(Documents, hostQueryReportsTheVersionsThatAreSet) {
    file_.setVersions({"1.0", "CA3.0", "6.0"});
    const Reply full = ask("HostQuery", "");
    EXPECT_EQ(textsOf(full.body, "SupportedQBXMLVersion"), "1.0|CA3.0|6.0");
    EXPECT_EQ(textsOf(full.body, "Country"), "US");
    const Reply old = replyIn(file_.exchange(documentOf("<HostQueryRq/>", "1.0")));
    EXPECT_EQ(textsOf(old.body, "SupportedQBXMLVersion"), "1.0|CA3.0|6.0");
    EXPECT_EQ(textsOf(old.body, "QBFileMode"), "");
    EXPECT_THROW(file_.exchange(documentOf("<HostQueryRq/>", "7.0")), CallError);
}

}  // namespace

}  // namespace companyfile
