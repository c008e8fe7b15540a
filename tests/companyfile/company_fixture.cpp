#include "companyfile/company_fixture.h"

#include <fstream>
#include <pugixml.hpp>
#include <sstream>

namespace companyfile {

namespace {

/// What the shop of the tests has on top of the template.
constexpr std::pair<const char*, const char*> kShop[] = {
    {"CustomerAdd", "<Name>ABC</Name><CompanyName>Abc &amp; Sons</CompanyName>"},
    {"CustomerAdd", "<Name>ABCD</Name>"},
    {"VendorAdd", "<Name>ACME</Name>"},
    {"ItemInventoryAdd",
     "<Name>1000001.1</Name><SalesTaxCodeRef><FullName>Tax</FullName></SalesTaxCodeRef>"
     "<SalesPrice>20.00</SalesPrice>"
     "<IncomeAccountRef><FullName>Merchandise Sales</FullName></IncomeAccountRef>"
     "<PurchaseCost>8.00</PurchaseCost>"
     "<COGSAccountRef><FullName>Cost of Goods Sold</FullName></COGSAccountRef>"
     "<AssetAccountRef><FullName>Inventory Asset</FullName></AssetAccountRef>"
     "<QuantityOnHand>10</QuantityOnHand>"},
    {"ItemOtherChargeAdd",
     "<Name>FREIGHT</Name><SalesTaxCodeRef><FullName>Non</FullName></SalesTaxCodeRef>"
     "<SalesOrPurchase><Price>5.00</Price>"
     "<AccountRef><FullName>Shipping Income</FullName></AccountRef></SalesOrPurchase>"},
    {"ItemSalesTaxAdd",
     "<Name>CA</Name><TaxRate>8.25</TaxRate>"
     "<TaxVendorRef><FullName>State</FullName></TaxVendorRef>"},
    {"ItemSalesTaxAdd", "<Name>NoVendor</Name><TaxRate>5</TaxRate>"},
};

constexpr char kMapping[] =
    "[BRV ID]\r\nNUV-QuickBook Link ID=QB SDK 10\r\n"
    "[SALES ACCOUNT]\r\nCash=Cash Drawer\r\nVisa=Card Clearing\r\nGift=Vouchers:Paper\r\n"
    "Petty Cash=Till Float\r\nShipping Income=\r\nTax Payee=State\r\n"
    "Vendors Account Payable=Accounts Payable\r\n"
    "[TAX]\r\nTax Rate A=Taxed Sales\r\nTax Rate 0=Caf\xE9 Sales\r\n[MISC]\r\nNet=45\r\n";

pugi::xml_node answers(pugi::xml_document& xml, const std::string& answer) {
    xml.load_string(answer.c_str());
    return xml.child("QBXML").child("QBXMLMsgsRs");
}

}  // namespace

std::vector<Case> casesOf(const std::string& name) {
    std::ifstream text(BREVANE_TEST_DATA "/companyfile/" + name);
    std::vector<Case> cases;
    std::string* value = nullptr;
    for (std::string line; std::getline(text, line);) {
        const std::size_t equals = line.find(" = ");
        if (line.starts_with('[')) {
            cases.push_back({{"given", line.substr(1, line.size() - 2)}});
        } else if (line.starts_with("    ")) {
            *value += line.substr(4);
        } else if (!line.starts_with('#') && equals != std::string::npos) {
            value = &cases.back()[line.substr(0, equals)];
            *value = line.substr(equals + 3);
        }
    }
    EXPECT_FALSE(cases.empty()) << name;
    return cases;
}

std::string
documentOf(const std::string& requests, const std::string& version, const std::string& attributes) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<?qbxml version=\"" + version +
           "\"?>\n<QBXML><QBXMLMsgsRq " + attributes + ">" + requests + "</QBXMLMsgsRq></QBXML>";
}

std::string ref(const std::string& field, const std::string& name) {
    return "<" + field + "><FullName>" + name + "</FullName></" + field + ">";
}

std::string line(const std::string& kind, const std::string& item, const std::string& rest) {
    return "<" + kind + "LineAdd>" + ref("ItemRef", item) + rest + "</" + kind + "LineAdd>";
}

std::string deletion(const std::string& type, const std::string& txnId) {
    return "<TxnDelType>" + type + "</TxnDelType><TxnID>" + txnId + "</TxnID>";
}

Reply replyIn(const std::string& answer, std::size_t index) {
    pugi::xml_document xml;
    pugi::xml_node node = answers(xml, answer).first_child();
    for (; index > 0; --index) {
        node = node.next_sibling();
    }
    std::ostringstream body;
    for (const pugi::xml_node& child : node.children()) {
        child.print(body, "", pugi::format_raw);
    }
    return {
        node.attribute("statusCode").as_int(-1),
        node.attribute("statusSeverity").value(),
        node.attribute("statusMessage").value(),
        body.str()};
}

std::string textsOf(const std::string& body, const std::string& name) {
    pugi::xml_document xml;
    xml.load_string(("<all>" + body + "</all>").c_str());
    std::string out;
    for (const pugi::xpath_node& found : xml.select_nodes(("//" + name).c_str())) {
        out += (out.empty() ? "" : "|") + std::string(found.node().child_value());
    }
    return out;
}

std::string bookingsOf(const TransactionSummary& transaction) {
    std::string out;
    for (const PostingSummary& posting : transaction.postings) {
        out += (out.empty() ? "" : "; ") + posting.account + " " +
               (posting.debit - posting.credit).text(2);
    }
    return out;
}

CompanyTest::CompanyTest()
    : path_((folder_.path() / "shop.qbw").string()),
      file_(CompanyFile::create(path_, "retail", kMapping)) {
    for (const auto& [name, fields] : kShop) {
        make(name, fields);
    }
}

Reply CompanyTest::send(const std::string& name, const std::string& fields) {
    return ask(name, "<" + name + ">" + fields + "</" + name + ">");
}

Reply CompanyTest::ask(const std::string& name, const std::string& fields) {
    return replyIn(file_.exchange(documentOf("<" + name + "Rq>" + fields + "</" + name + "Rq>")));
}

std::string CompanyTest::make(const std::string& name, const std::string& fields) {
    const Reply reply = send(name, fields);
    EXPECT_EQ(reply.code, 0) << name << ": " << reply.message;
    return reply.body;
}

void CompanyTest::expectSound() {
    util::Money difference;
    for (const AccountBalance& row : file_.trialBalance()) {
        difference += row.debit - row.credit;
    }
    EXPECT_TRUE(difference.isZero()) << difference.text(2);
    EXPECT_EQ(file_.check(), std::vector<std::string>());
}

}  // namespace companyfile
