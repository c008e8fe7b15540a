#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_SalesHead.h"
#include "export/sale_conversion.h"
#include "export/sale_state.h"
#include "qb/smQB_Utilities.h"
#include "ui/form.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

#include <cmath>

namespace {

constexpr char kSetup[] = "frmSetup";
constexpr char kUntaxed[] = "Non";
constexpr int kFirstRate = 1;
constexpr int kLastRate = 6;
constexpr std::int32_t kNonStock = 1;
constexpr std::int32_t kFirstStockItem = 11;

/// What a special item number becomes on a line of the transaction; empty: left as it is.
struct SpecialItem {
    std::int32_t invUid;
    const char* item;
    const char* description;
    bool taxedLine;  ///< also told apart on a taxed line
};

constexpr SpecialItem kSpecialItems[] = {
    {3, "~Sales", "", false},
    {4, "~Sales", "Dollar Discount", true},
    {5, "~Sales", "", false},
    {6, "~POUT", "Paid Out", true},
    {7, "~Sales", "Coupon", true},
    {8, "~Sales", "Coupon", true},
    {9, "~Sales", "", false},
    {10, "~Sales", "", false},
};

const SpecialItem* specialItem(std::int32_t invUid) {
    for (const SpecialItem& special : kSpecialItems) {
        if (special.invUid == invUid) {
            return &special;
        }
    }
    return nullptr;
}

void applySpecial(QBSaleLine& line, const SpecialItem& special) {
    line.Item = special.item;
    if (*special.description != '\0') {
        line.Description = special.description;
    }
}

bool readInventoryBySL(const std::string& sl) {
    const std::string table = DBTableDescriptors.at(db::tableInventory).TableName;
    const std::string statement =
        "SELECT * from " + table + " WHERE SL = '" + gfsDB_QuoteKey(sl, kYes) + "'";
    if (gfbDB_OpenBySQL(statement, db::tableInventory) == kNo) {
        return false;
    }
    db_pRecord_fromRow(db::tableInventory);
    return true;
}

void convertStockLine(QBSaleLine& line, const db::SalesItemRecord& item) {
    line.Item = util::rtrim(gfsItem_name(item.SL.str()));
    if (readInventoryBySL(item.SL.str())) {
        line.Description = util::rtrim(gInventory.Description.str());
        const std::string code = gInventory.TaxCode.trimmed();
        line.TaxCode = code == "0" ? kUntaxed : code;
    } else {
        line.Description = util::rtrim(item.Description.str());
        line.TaxCode = kUntaxed;
    }
}

/// An untaxed line, or a line of a stock item.
void convertPlainLine(QBSaleLine& line, const db::SalesItemRecord& item) {
    if (item.InvUID >= kFirstStockItem) {
        convertStockLine(line, item);
    } else {
        line.TaxCode = kUntaxed;
        if (const SpecialItem* special = specialItem(item.InvUID)) {
            applySpecial(line, *special);
        } else {
            line.Item = util::rtrim(gfsItem_name(item.SL.str()));
        }
    }
    // Kept: a fraction of the quantity is lost here, while the amount stays that of the sale.
    const double shipped = item.Shipped;
    line.Quantity =
        static_cast<float>(std::floor(shipped) == shipped ? shipped : gfdRound(shipped, 0));
}

/// Tax code of a taxed special line: that of the rate which its tax comes to.
std::string taxCodeOfLine(const db::SalesItemRecord& item) {
    std::string rate;
    if (item.Linetax <= util::Money()) {
        rate = util::format(ui::formText(kSetup, "txtTaxRate", kFirstRate), "0.00");
    } else if (!item.LineTotal.isZero()) {
        const double percent = item.Linetax.toDouble() / item.LineTotal.toDouble() * 100;
        rate = util::format(percent, "0.00");
    }
    for (int row = kFirstRate; !rate.empty() && row <= kLastRate; ++row) {
        if (util::format(ui::formText(kSetup, "txtTaxRate", row), "0.00") == rate) {
            return ui::formText(kSetup, "txtAR_Sales_TaxID", row);
        }
    }
    return ui::formText(kSetup, "txtAR_Sales_TaxID", 0);
}

void convertTaxedSpecial(QBSaleLine& line, const db::SalesItemRecord& item) {
    const std::string code = taxCodeOfLine(item);
    const SpecialItem* special = specialItem(item.InvUID);
    if (special != nullptr && special->taxedLine) {
        applySpecial(line, *special);
        line.TaxCode = "Tax";
    } else if (item.InvUID == kNonStock) {
        line.TaxCode = code;
    }
    // Kept: any other taxed special line goes out without an item and is refused by name.
}

void convertLine(QBSaleLine& line, const db::SalesItemRecord& item) {
    line.Amount = item.LineTotal;
    if (item.InvUID == kNonStock) {
        line.Description = util::rtrim(item.Description.str());
        line.Item = "~NONSTK";
    }
    const bool taxedSpecial = item.Taxed.view() == "Y" && item.InvUID < kFirstStockItem;
    if (taxedSpecial) {
        convertTaxedSpecial(line, item);
    } else {
        convertPlainLine(line, item);
    }
}

/// The sales tax item of the sale: the identifier of its first rate.
std::string taxItemOfSale() {
    if (gSalesHead.TaxRate1 == 0.0F) {
        return kUntaxed;
    }
    for (int row = kFirstRate; row <= kLastRate; ++row) {
        const double rate = util::val(ui::formText(kSetup, "txtTaxRate", row));
        if (static_cast<float>(rate) == gSalesHead.TaxRate1) {
            return ui::formText(kSetup, "txtAR_Sales_TaxID", row);
        }
    }
    return kUntaxed;
}

}  // namespace

void mpSaleLines_convert() {
    gaSaleLines.assign(gaSaleItems.size(), QBSaleLine());
    for (std::size_t index = 1; index < gaSaleItems.size(); ++index) {
        convertLine(gaSaleLines[index], gaSaleItems[index]);
    }
    gsSaleTaxItem = taxItemOfSale();
}
