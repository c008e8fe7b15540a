#include "platform/ports/quickbooks_session.h"

#include <gtest/gtest.h>

TEST(QBElement, makesMissingElementsOnTheWayAndKeepsTheLastText) {
    platform::QBElement request("InvoiceAdd");
    request.at("ItemSalesTaxRef/FullName").setText("A");
    request.at("ItemSalesTaxRef/FullName").setText("Non");
    request.at("BillAddress/Addr1").setText("");
    EXPECT_EQ(request.children().size(), 2U);
    EXPECT_EQ(request.find("ItemSalesTaxRef/FullName").text(), "Non");
    EXPECT_TRUE(request.has("BillAddress/Addr1"));
    EXPECT_FALSE(request.has("BillAddress/Addr2"));
    EXPECT_EQ(request.find("BillAddress/Addr2/Deeper").text(), "");
}

TEST(QBElement, keepsRepeatedLinesApart) {
    platform::QBElement request("InvoiceAdd");
    for (const char* amount : {"1.00", "-2.50"}) {
        request.append("InvoiceLineAdd").at("Amount").setText(amount);
    }
    const auto lines = request.all("InvoiceLineAdd");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0]->find("Amount").text(), "1.00");
    EXPECT_EQ(lines[1]->find("Amount").text(), "-2.50");
}
