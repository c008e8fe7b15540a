#include "platform/qbxml/response_document.h"

#include <gtest/gtest.h>

namespace {

using platform::PlatformError;
using platform::readResponseDocument;
using platform::ResponseType;

std::string framed(const std::string& answers) {
    return "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n" + answers +
           "\n</QBXMLMsgsRs>\n</QBXML>\n";
}

TEST(ResponseDocument, givesStatusKindAndElements) {
    const auto set = readResponseDocument(framed(
        R"(<CustomerQueryRs requestID="0" statusCode="0" statusSeverity="Info"
             statusMessage="Status OK">
           <CustomerRet><Name>Caf&#233; &amp; Sons</Name><Notes> </Notes>
             <BillAddress>
               <City>Troy</City>
             </BillAddress></CustomerRet>
           <CustomerRet><Name>&#8364; &#1046;</Name></CustomerRet>
           </CustomerQueryRs>
           <CustomerModRs statusCode="3140" statusSeverity="Error"
             statusMessage="no &quot;caf&#233;&quot;" />)"
    ));
    ASSERT_EQ(set->ResponseList.size(), 2U);
    const auto& query = set->ResponseList[0];
    EXPECT_EQ(query.name + " " + query.StatusSeverity, "CustomerQueryRs Info");
    EXPECT_EQ(query.Type, ResponseType::customerQuery);
    EXPECT_EQ(query.StatusCode, 0);
    const auto customers = query.Detail.all("CustomerRet");
    ASSERT_EQ(customers.size(), 2U);
    EXPECT_EQ(customers[0]->find("Name").text(), "Caf\xE9 & Sons");
    EXPECT_EQ(customers[0]->find("Notes").text(), " ");
    EXPECT_EQ(customers[0]->find("BillAddress/City").text(), "Troy");
    EXPECT_EQ(customers[1]->find("Name").text(), "\x80 ?");
    const auto& refused = set->ResponseList[1];
    EXPECT_EQ(refused.Type, ResponseType::customerModify);
    EXPECT_EQ(refused.StatusCode, 3140);
    EXPECT_EQ(refused.StatusMessage, "no \"caf\xE9\"");
    EXPECT_FALSE(refused.hasDetail());
}

TEST(ResponseDocument, tellsAMissingListFromAnEmptyOne) {
    EXPECT_FALSE(readResponseDocument("<QBXML></QBXML>")->hasResponseList);
    const auto empty = readResponseDocument(framed(""));
    EXPECT_TRUE(empty->hasResponseList);
    EXPECT_TRUE(empty->ResponseList.empty());
}

TEST(ResponseDocument, refusesWhatIsNoAnswer) {
    std::string deep;
    for (int level = 0; level < 100000; ++level) {
        deep += "<a>";
    }
    std::string closed = deep;
    for (int level = 0; level < 100000; ++level) {
        closed += "</a>";
    }
    struct Case {
        const char* given;
        std::string document;
        const char* expected;
    };
    const Case cases[] = {
        {"nothing", "", "is empty"},
        {"no XML", "HTTP/1.1 502 Bad Gateway", "cannot be read at byte"},
        {"the beginning of an answer", framed("").substr(0, 40), "cannot be read at byte"},
        {"another document", "<html><body>busy</body></html>", "is no QBXML document"},
        {"a status that is missing", framed("<CustomerAddRs />"), "has no status code"},
        {"a status that is no number",
         framed("<CustomerAddRs statusCode=\"0x1\"/>"),
         "has no status code in CustomerAddRs"},
        {"elements without an end", framed(deep), "cannot be read at byte"},
        {"endless nesting",
         framed("<CustomerAddRs statusCode=\"0\">" + closed + "</CustomerAddRs>"),
         "is nested too deeply"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.given);
        try {
            readResponseDocument(row.document);
            ADD_FAILURE() << "taken";
        } catch (const PlatformError& error) {
            EXPECT_EQ(error.number(), platform::kUnreadableAnswer);
            EXPECT_NE(error.description().find(row.expected), std::string::npos)
                << error.description();
        }
    }
}

}  // namespace
