#include "util/qbxml_schema.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

std::ptrdiff_t place(const std::vector<util::SchemaField>& fields, const std::string& name) {
    const auto found =
        std::find_if(fields.begin(), fields.end(), [&](const util::SchemaField& field) {
            return field.name == name;
        });
    return found == fields.end() ? -1 : found - fields.begin();
}

}  // namespace

TEST(QbxmlSchema, keepsTheOrderOfTheWire) {
    const util::SchemaRequest* receipt = util::schemaRequest("SalesReceiptAdd");
    ASSERT_NE(receipt, nullptr);
    EXPECT_EQ(receipt->body, "SalesReceiptAdd");
    const char* const kOrder[] = {
        "CustomerRef",
        "TxnDate",
        "RefNumber",
        "BillAddress",
        "ShipAddress",
        "IsPending",
        "CheckNumber",
        "PaymentMethodRef",
        "DueDate",
        "SalesRepRef",
        "SalesReceiptLineAdd"};
    std::ptrdiff_t last = -1;
    for (const char* name : kOrder) {
        SCOPED_TRACE(name);
        const std::ptrdiff_t at = place(receipt->fields, name);
        EXPECT_GT(at, last);
        last = at;
    }
    const util::SchemaField* reference = util::schemaField(receipt->fields, "RefNumber");
    ASSERT_NE(reference, nullptr);
    EXPECT_EQ(reference->maxLength, 11);
}

TEST(QbxmlSchema, readsChoicesAndWords) {
    const util::SchemaRequest* query = util::schemaRequest("CustomerQuery");
    ASSERT_NE(query, nullptr);
    EXPECT_TRUE(query->body.empty());
    const util::SchemaField* status = util::schemaField(query->fields, "ActiveStatus");
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(status->words, (std::vector<std::string>{"ActiveOnly", "InactiveOnly", "All"}));
    const util::SchemaField* filter = util::schemaField(query->fields, "NameFilter");
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(filter->choice, "c2");
    ASSERT_EQ(query->choices.size(), 2U);
    EXPECT_EQ(query->choices.front().insideChoice, "c1");
    EXPECT_EQ(util::schemaRequest("NoSuchRequest"), nullptr);
}
