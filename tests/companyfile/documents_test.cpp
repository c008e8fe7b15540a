#include "companyfile/company_fixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace companyfile {

namespace {

constexpr char kCustomer[] =
    "<CustomerAddRq><CustomerAdd><Name>New</Name></CustomerAdd></CustomerAddRq>";

std::string nested(int levels) {
    std::string elements;
    for (int level = 0; level < levels; ++level) {
        elements += "<a>";
    }
    for (int level = 0; level < levels; ++level) {
        elements += "</a>";
    }
    return elements;
}

class Documents : public CompanyTest {};

TEST_F(Documents, thatAreNotUnderstoodFailAsAWholeAndChangeNothing) {
    const std::string before = file_.dump();
    const auto expectFailure = [&](const std::string& document, std::int32_t number) {
        try {
            file_.exchange(document);
            ADD_FAILURE() << "was accepted";
        } catch (const CallError& error) {
            EXPECT_EQ(error.hresult, number);
            EXPECT_FALSE(error.text.empty());
        }
    };
    const auto customer = [](const std::string& fields) {
        return kCustomer + ("<CustomerAddRq><CustomerAdd>" + fields) +
               "</CustomerAdd></CustomerAddRq>";
    };
    for (Case& row : casesOf("refused_documents.txt")) {
        SCOPED_TRACE(row["given"]);
        const std::string& number = row["number"];
        row.insert({{"version", "6.0"}, {"attributes", "onError=\"continueOnError\""}});
        expectFailure(
            documentOf(
                row.contains("customer") ? customer(row["customer"]) : row["requests"],
                row["version"],
                row["attributes"]
            ),
            number.empty() ? hresult::kUnparsable : std::stoi(number)
        );
    }
    for (const std::string& document :
         {std::string("hello"),
          std::string("<QBXML><QBXMLMsgsRq onError=\"stopOnError\"/></QBXML>"),
          documentOf("<HostQueryRq/>", "6.0", ""),
          documentOf(customer("<Name>B</Name>" + nested(100000)))}) {
        SCOPED_TRACE(document.substr(0, 200));
        expectFailure(document, hresult::kUnparsable);
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

/// A document of the link with some of its values, or of its bytes, exchanged.
std::string spoiled(std::string document, std::mt19937& random) {
    constexpr const char* kBits[] = {
        "",
        "-0.01",
        "9999999999999.99",
        "1-1",
        "ABC",
        "A:B",
        "<a>",
        "</Name>",
        "&#1;",
        "]]>",
        "\""};
    for (auto times = random() % 4; times > 0; --times) {
        const auto start = document.find('>', random() % document.size());
        const auto end = document.find('<', start);
        if (end != std::string::npos) {
            document.replace(start + 1, end - start - 1, kBits[random() % std::size(kBits)]);
        }
    }
    return random() % 8 == 0 ? document.substr(0, random() % document.size()) : document;
}

TEST_F(Documents, ofAnyKindGetAnAnswerOrAPlainFailure) {
    std::vector<std::string> documents;
    for (const auto& entry : std::filesystem::directory_iterator(BREVANE_TEST_DATA "/qb")) {
        if (entry.path().extension() == ".xml") {
            std::ostringstream text;
            text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            documents.push_back(text.str());
        }
    }
    std::sort(documents.begin(), documents.end());
    std::mt19937 random(1);
    int answered = 0;
    for (int number = 0; number < 1000; ++number) {
        const std::string document = spoiled(documents.at(random() % documents.size()), random);
        SCOPED_TRACE(document);
        try {
            EXPECT_GE(replyIn(file_.exchange(document)).code, 0);
            ++answered;
        } catch (const CallError& error) {
            EXPECT_EQ(error.hresult, hresult::kUnparsable);
        }
    }
    EXPECT_GT(answered, 300);
    EXPECT_LT(answered, 900);
    expectSound();
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
    const std::string longId = "<HostQueryRq requestID=\"" + std::string(51, 'x') + "\"/>";
    EXPECT_EQ(replyIn(file_.exchange(documentOf(longId))).code, 1060);
}

}  // namespace

}  // namespace companyfile
