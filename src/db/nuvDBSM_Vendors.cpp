#include "db/nuvDBSM_Vendors.h"

#include "db/clear_record.h"
#include "db/table_module.h"

db::VendorsRecord gVendors;

namespace db {

namespace {

constexpr auto kVendors = table(
    "Vendor",
    column("VendorID", "INTEGER NOT NULL", &VendorsRecord::VendorID),
    column("VENDCODE", "CHAR (15) NOT NULL", &VendorsRecord::VENDCODE),
    column("BUSINESS", "CHAR (40) DEFAULT ' '", &VendorsRecord::BUSINESS),
    column("LASTNAME", "CHAR (15) DEFAULT ' '", &VendorsRecord::LASTNAME),
    column("ZIP", "CHAR (10) DEFAULT ' '", &VendorsRecord::ZIP),
    column("MAILCODE", "CHAR (2) DEFAULT ' '", &VendorsRecord::MAILCODE),
    column("FIRSTNAME", "CHAR (15) DEFAULT ' '", &VendorsRecord::FIRSTNAME),
    column("ADDRESS", "CHAR (40) DEFAULT ' '", &VendorsRecord::ADDRESS),
    column("CITY", "CHAR (20) DEFAULT ' '", &VendorsRecord::CITY),
    column("STATE", "CHAR (3) DEFAULT ' '", &VendorsRecord::STATE),
    column("PHONE", "CHAR (14) DEFAULT ' '", &VendorsRecord::PHONE),
    column("FAX", "CHAR (14) DEFAULT ' '", &VendorsRecord::FAX),
    column("DATE", "CHAR (8) DEFAULT ' '", &VendorsRecord::DATE),
    column("BALANCE", "DECIMAL (10,2)", &VendorsRecord::BALANCE),
    column("NOTES", "CHAR (1) DEFAULT ' '", &VendorsRecord::NOTES),
    column("COUNTRY", "CHAR (12) DEFAULT ' '", &VendorsRecord::COUNTRY),
    column("LASTPAIDAMT", "DECIMAL(10,2)", &VendorsRecord::LASTPAIDAMT),
    column("REFERENCE", "CHAR (30) DEFAULT ' '", &VendorsRecord::REFERENCE),
    column("PAYMENTTERM", "SMALLINT", &VendorsRecord::PAYMENTTERM),
    column("CODEFLAG", "CHAR (1) DEFAULT ' '", &VendorsRecord::CODEFLAG),
    column("SPLITBALANC", "Decimal (8,2)", &VendorsRecord::SPLITBALANC),
    column("RECURAMT", "DECIMAL (10,2)", &VendorsRecord::RECURAMT),
    column("POLL", "CHAR (1) DEFAULT ' '", &VendorsRecord::POLL),
    column("PHONEEXT", "CHAR (9) DEFAULT ' '", &VendorsRecord::PHONEEXT),
    column("DISCOUNTTERM", "CHAR (6) DEFAULT ' '", &VendorsRecord::DISCOUNTTERM),
    column("ADDRESS2", "CHAR (25) DEFAULT ' '", &VendorsRecord::ADDRESS2),
    column("EMAIL", "CHAR (50) DEFAULT ' '", &VendorsRecord::EMAIL),
    column("CELLPHONE", "CHAR (14) DEFAULT ' '", &VendorsRecord::CELLPHONE)
);

constexpr KeyPart kVendorsKeys[] = {
    {0, "VendorID"},
    {1, "VENDCODE"},
    {2, "BUSINESS"},
    {2, "VENDCODE"},
    {3, "LASTNAME"},
    {3, "VENDCODE"},
    {4, "ZIP"},
    {5, "MAILCODE"},
};

constexpr std::string_view kVendorsIndexes[] = {
    "Create UNIQUE Index idx_0 On <table>(VendorID);",
    "Create UNIQUE CLUSTERED Index idx_1 On <table>(VENDCODE);",
    "Create UNIQUE Index idx_2 On <table>(Business, VENDCODE);",
    "Create unique Index idx_3 On <table>(Lastname, VENDCODE);",
    "Create Index idx_4 On <table>(Zip);",
    "Create Index idx_5 On <table>(MailCode);",
};

constexpr TableTitles kVendorsTitles = {"VENDORS", "VENDOR.NUV"};

}  // namespace

const TableRoutines& vendorsRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kVendors, kVendorsKeys, gVendors>();
    return kRoutines;
}

VendorsRecord clearedVendors() {
    return clearedRecord<kVendors>();
}

void bindVendors() {
    define(tableVendors, kVendors, kVendorsTitles, kVendorsIndexes);
    makeIfMissing(tableVendors);
    // Kept: a new table is made with the old name of the column and renamed at once; the other
    // programs of the suite look for the new one.
    const std::string& name = DBTableDescriptors[tableVendors].TableName;
    if (hasColumn(name, "COUNTRY")) {
        gfbDB_RenameColumn(name, "COUNTRY", "EXPENSECD");
    }
}

}  // namespace db
