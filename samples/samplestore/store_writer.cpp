#include "samplestore/store_writer.h"

#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/NuvDBSM_TenderTypes.h"
#include "db/nuvDBSM_POHeader.h"
#include "db/nuvDBSM_POHistory.h"
#include "db/nuvDBSM_POLine.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "db/nuvDBSM_SecurLog.h"
#include "platform/ports/platform_error.h"
#include "samplestore/sale_maker.h"
#include "util/date_time.h"

#include <cstdio>

namespace samplestore {

namespace {

constexpr int kReceiptsPerDay = 3;

/// Inserts what the table's record holds.
void insert(std::int16_t table, int& rows) {
    if (gfiDB_Operation(table, db::opInsert, 0) == kNo) {
        throw platform::PlatformError(
            0, "a row of " + DBTableDescriptors.at(table).TableName + " was refused"
        );
    }
    ++rows;
}

void execute(const std::string& statement) {
    DBConnection->execute(statement);
}

util::CalendarDate dayBehind(const std::string& firstDay, int offset) {
    const util::CalendarDate first{
        std::stoi(firstDay.substr(0, 4)),
        std::stoi(firstDay.substr(4, 2)),
        std::stoi(firstDay.substr(6, 2))};
    return util::calendarDate(util::dayNumber(first) + offset);
}

std::string dayText(const std::string& firstDay, int offset) {
    const util::CalendarDate date = dayBehind(firstDay, offset);
    char text[16];
    std::snprintf(text, sizeof text, "%04d%02d%02d", date.year, date.month, date.day);
    return text;
}

void writeLists(const Shop& shop, int& rows) {
    for (const db::VendorsRecord& vendor : shop.vendors) {
        gVendors = vendor;
        insert(db::tableVendors, rows);
    }
    for (const db::InventoryRecord& item : shop.items) {
        gInventory = item;
        insert(db::tableInventory, rows);
    }
    for (const db::NamesRecord& customer : shop.customers) {
        gNames = customer;
        insert(db::tableNames, rows);
    }
}

void writePeople(const std::string& firstDay, int& rows) {
    for (const Person& person : kPeople) {
        gSalesCode = db::SalesCodeRecord();
        gSalesCode.UserID = static_cast<std::int32_t>(&person - kPeople) + 1;
        gSalesCode.SalesCode = person.code;
        gSalesCode.StoreNumber = 1;
        gSalesCode.ShortCut = std::string(person.code).substr(0, 2);
        gSalesCode.FullName = std::string(person.firstName) + " " + person.lastName;
        gSalesCode.StaffDept = "SALES";
        insert(db::tableSalesCode, rows);
        gLogInSec = db::LogInSecRecord();
        gLogInSec.SalesCode = person.code;
        gLogInSec.aDate = util::DateTime{
            util::dayNumber(
                {std::stoi(firstDay.substr(0, 4)),
                 std::stoi(firstDay.substr(4, 2)),
                 std::stoi(firstDay.substr(6, 2))}
            ),
            0};
        gLogInSec.aTime = gLogInSec.aDate;
        gLogInSec.Detail = "Login";
        gLogInSec.Result = "Y";
        gLogInSec.ID = gSalesCode.UserID;
        gLogInSec.Station = 1;
        insert(db::tableLogInSec, rows);
    }
}

/// One order and its receipts for a day; the first receipt of a day is a return to the vendor.
void writePurchases(const Shop& shop, const std::string& day, int number, int& rows) {
    const auto& vendor = shop.vendors[static_cast<std::size_t>(number) % shop.vendors.size()];
    const std::string order = "PO" + std::to_string(100 + number);
    gPOHeader = db::POHeaderRecord();
    gPOHeader.PO = order;
    gPOHeader.VendorPONum = "V" + order;
    gPOHeader.VENDORCODE = vendor.VENDCODE.view();
    gPOHeader.ORDERDATE = day;
    gPOHeader.ETADATE = day;
    gPOHeader.STATUS = "R";
    gPOHeader.Store = 1;
    for (int line = 1; line <= kReceiptsPerDay; ++line) {
        const auto place = static_cast<std::size_t>(kFirstGoods - 1 + number * 5 + line);
        const db::InventoryRecord& item = shop.items[place % shop.items.size()];
        gPOLine = db::POLineRecord();
        gPOLine.PO = order;
        gPOLine.LineNum = static_cast<std::int16_t>(line);
        gPOLine.OrderDate = day;
        gPOLine.InvUID = item.RecordNum;
        gPOLine.Cost = item.Cost;
        gPOLine.Quantity2Order = util::Money::fromWhole(line * 6);
        gPOLine.LineTotal = util::times(item.Cost, line * 6);
        gPOLine.Received = gPOLine.Quantity2Order;
        gPOLine.Store = 1;
        gPOHeader.TOTAL += gPOLine.LineTotal.rounded(2);
        insert(db::tablePOLine, rows);
        gPOHistory = db::POHistoryRecord();
        gPOHistory.UniqueID = number * kReceiptsPerDay + line;
        gPOHistory.DateReceived = day;
        gPOHistory.PONumber = order;
        gPOHistory.InvUID = item.RecordNum;
        gPOHistory.UnitQty = static_cast<float>(line * 6);
        gPOHistory.UnitCost = item.Cost;
        gPOHistory.Pack = 1;
        gPOHistory.VendorCode = vendor.VENDCODE.view();
        gPOHistory.Status = line == 1 && number % 5 == 4 ? "U" : "R";
        gPOHistory.DateOrdered = day;
        insert(db::tablePOHistory, rows);
    }
    insert(db::tablePOHeader, rows);
}

void writeSales(const Options& options, SaleMaker& maker, int& rows) {
    for (int index = 0; index < options.sales; ++index) {
        const int day = static_cast<int>(std::int64_t{index} * options.days / options.sales);
        const Sale sale = maker.next(dayText(options.firstDay, day));
        gSalesHead = sale.head;
        insert(db::tableSalesHead, rows);
        for (const db::SalesItemRecord& line : sale.items) {
            gSalesItem = line;
            insert(db::tableSalesItem, rows);
        }
    }
}

void bindTables() {
    db::bindInventory();
    db::bindSalesHead();
    db::bindSalesItem();
    db::bindNames();
    db::bindTenderTypes();
    db::bindSalesCodes();
    db::bindVendors();
    db::bindPOHeader();
    db::bindPOLine();
    db::bindPOHistory();
    db::bindSecurLog();
}

}  // namespace

std::string shortDay(const std::string& firstDay, int offset) {
    const util::CalendarDate date = dayBehind(firstDay, offset);
    return std::to_string(date.month) + "/" + std::to_string(date.day) + "/" +
           std::to_string(date.year);
}

int writeTables(const Options& options) {
    Random random(options.seed);
    const Shop shop = makeShop(random);
    SaleMaker maker(shop, random);
    int rows = 0;
    db::bindCommon();
    bindTables();
    execute("BEGIN TRANSACTION");
    gCommon = shop.common;
    if (options.summary) {
        gCommon.Accounting = "SE";
    }
    insert(db::tableCommon, rows);
    writeLists(shop, rows);
    writePeople(options.firstDay, rows);
    for (int day = 0; day < options.days; ++day) {
        writePurchases(shop, dayText(options.firstDay, day), day, rows);
    }
    writeSales(options, maker, rows);
    execute("COMMIT TRANSACTION");
    return rows;
}

}  // namespace samplestore
