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
