#include "db/nuvDBSM_SalesCodes.h"

#include "core/brv_op.h"
#include "db/connection.h"
#include "db/table_module.h"
#include "platform/ports/platform.h"
#include "util/basic_error.h"
#include "util/conversions.h"

#include <algorithm>

db::SalesCodeRecord gSalesCode;

namespace db {

namespace {

constexpr auto kSalesCode = table(
    "SalesCode",
    column("UserID", "INTEGER NOT NULL", &SalesCodeRecord::UserID),
    column("SalesCode", "CHAR (8) NOT NULL", &SalesCodeRecord::SalesCode),
    column("StoreNumber", "SMALLINT NOT NULL", &SalesCodeRecord::StoreNumber),
    column("ShortCut", "CHAR (8) DEFAULT ' '", &SalesCodeRecord::ShortCut),
    column("FullName", "CHAR (30) DEFAULT ' '", &SalesCodeRecord::FullName),
    column("Password", "CHAR (65) DEFAULT ' '", &SalesCodeRecord::Password),
    column("Commission", "CHAR (8) DEFAULT ' '", &SalesCodeRecord::Commission),
    column("Permissions", "CHAR (250) DEFAULT ' '", &SalesCodeRecord::Permissions),
    column("ARCode", "CHAR (15) DEFAULT ' '", &SalesCodeRecord::ARCode),
    column("StaffDept", "CHAR (25) DEFAULT ' '", &SalesCodeRecord::StaffDept),
    column("LastPwd", "CHAR (65) DEFAULT ' '", &SalesCodeRecord::LastPwd),
    column("Last2ndPwd", "CHAR (65) DEFAULT ' '", &SalesCodeRecord::Last2ndPwd),
    column("Last3rdPwd", "CHAR (65) DEFAULT ' '", &SalesCodeRecord::Last3rdPwd),
    column("Last4thPwd", "CHAR (65) DEFAULT ' '", &SalesCodeRecord::Last4thPwd),
    column("ResetPwdDate", "DATE DEFAULT '12:00:00 AM'", &SalesCodeRecord::ResetPwdDate),
    column("Status", "CHAR (1) DEFAULT ' '", &SalesCodeRecord::Status),
    column("ResetQ1", "SMALLINT NOT NULL", &SalesCodeRecord::ResetQ1),
    column("QA1", "CHAR (20) DEFAULT ' '", &SalesCodeRecord::QA1),
    column("ResetQ2", "SMALLINT NOT NULL", &SalesCodeRecord::ResetQ2),
    column("QA2", "CHAR (20) DEFAULT ' '", &SalesCodeRecord::QA2),
    column("ResetQ3", "SMALLINT NOT NULL", &SalesCodeRecord::ResetQ3),
    column("QA3", "CHAR (20) DEFAULT ' '", &SalesCodeRecord::QA3)
);

constexpr KeyPart kSalesCodeKeys[] = {
    {0, "ShortCut"},
    {0, "StoreNumber"},
    {1, "SalesCode"},
    {1, "StoreNumber"},
    {2, "UserID"},
};

constexpr std::string_view kSalesCodeIndexes[] = {
    "Create UNIQUE Index idx_0 On <table>(UserID);",
    "Create UNIQUE CLUSTERED Index idx_1 On <table>(Salescode, storenumber);",
    "Create UNIQUE Index idx_2 On <table>(Shortcut,storenumber);",
};

constexpr TableTitles kSalesCodeTitles = {"SALES CODES", "SalesCode.NUV"};

struct AddedColumn {
    const char* name;
    const char* type;
};

/// Columns that an older table lacks, in the order in which they are added.
constexpr AddedColumn kQuestionColumns[] = {
    {"ResetQ1", "SMALLINT "},
    {"QA1", "CHAR(20) DEFAULT  ' '"},
    {"ResetQ2", "SMALLINT "},
    {"QA2", "CHAR(20) DEFAULT  ' '"},
    {"ResetQ3", "SMALLINT "},
    {"QA3", "CHAR(20) DEFAULT  ' '"},
};

constexpr char kFirstPassword[] = "qrx7351";
constexpr std::string_view kFirstShortCut = "H";
/// The day on which the first password expired: 1 January 2000.
constexpr util::CalendarDate kFirstPasswordEnd = {2000, 1, 1};

/// Adds the missing columns. @return true when there were some and the last addition succeeded.
bool addQuestionColumns(const std::string& name) {
    bool succeeded = false;
    for (const AddedColumn& column : kQuestionColumns) {
        if (!hasColumn(name, column.name)) {
            succeeded = gfbDB_AddColumn(tableSalesCode, column.name, column.type) == kNo;
        }
    }
    return succeeded;
}

void upgrade() {
    if (gfbDB_OpenTable(tableSalesCode) == kNo) {
        return;
    }
    std::string name = DBTableDescriptors[tableSalesCode].TableName;
    if (!addQuestionColumns(name)) {
        return;
    }
    gfiDB_ExecuteSQL("UPDATE " + name + " SET resetQ1= 0 ,resetQ2= 0,resetQ3= 0  ");
    if (gfiDB_RecordCount(tableSalesCode, name) > 0) {
        gfiDB_ExecuteSQL("UPDATE " + name + " SET QA1= ' ' ,QA2= ' ',QA3= ' '  ");
    }
}

/// Fills the record from the fields of one line, in column order.
void fillFrom(const std::vector<std::string>& fields) {
    gSalesCode = SalesCodeRecord();
    const std::span<const RecordField> own = layoutOf<kSalesCode>().fields;
    for (std::size_t at = 0; at < std::min(own.size(), fields.size()); ++at) {
        fillField(&gSalesCode, own[at], fields[at]);
    }
}

void giveFirstPassword() {
    const auto& cipher = passwordCipher();
    gSalesCode.Password = cipher ? cipher(kFirstPassword) : std::string();
    gSalesCode.ResetPwdDate = util::DateTime{util::dayNumber(kFirstPasswordEnd), 0};
}

void addDefault(const std::string& line) {
    fillFrom(util::split(line, '|'));
    if (gSalesCode.ShortCut.trimmed() == kFirstShortCut) {
        giveFirstPassword();
    }
    gfiDB_Operation(tableSalesCode, opInsert, keySalesCodeUserID);
}

}  // namespace

const TableRoutines& salesCodeRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kSalesCode, kSalesCodeKeys, gSalesCode>();
    return kRoutines;
}

std::function<std::string(const std::string& plain)>& passwordCipher() {
    static std::function<std::string(const std::string& plain)> cipher;
    return cipher;
}

void bindSalesCodes() {
    define(tableSalesCode, kSalesCode, kSalesCodeTitles, kSalesCodeIndexes);
    if (makeIfMissing(tableSalesCode)) {
        gpSalesCodes_AddDefaults();
    } else {
        upgrade();
    }
}

}  // namespace db

void gpSalesCodes_AddDefaults() {
    const std::string file = platform::files().programFolder() + "\\DefaultSalesCodes.txt";
    if (!platform::files().fileExists(file)) {
        return;
    }
    const std::string text = util::replaceAll(platform::files().read(file), "\r", "");
    for (const std::string& line : util::split(text, '\n')) {
        if (util::trim(line).empty()) {
            continue;
        }
        try {
            db::addDefault(line);
        } catch (const util::BasicError& error) {  // a number is too large for its column
            core::showMessage(
                "DefaultSalesCodes.txt: " + std::string(error.what()) + "\r\n" + line
            );
        }
    }
}
