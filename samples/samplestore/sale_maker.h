#pragma once

#include "db/nuvDBSM_SalesHead.h"
#include "db/nuvDBSM_SalesItem.h"
#include "samplestore/random.h"
#include "samplestore/shop.h"

#include <string>
#include <vector>

namespace samplestore {

/// One sale as the tables hold it.
struct Sale {
    db::SalesHeadRecord head;
    std::vector<db::SalesItemRecord> items;
};

/// Makes the shop's sales one after another: mostly ordinary ones, every sixth of a kind that the
/// books treat in a way of its own, all of these in turn.
class SaleMaker {
public:
    SaleMaker(const Shop& shop, Random& random) : shop_(shop), random_(random) {}

    /// The next sale. @param date  yyyymmdd.
    Sale next(const std::string& date);

private:
    using Maker = void (SaleMaker::*)();
    struct Recipe {
        const char* name;
        Maker make;
    };
    static const Recipe kOrdinary[];
    static const Recipe kSpecial[];

    void makeCash();
    void makeCard();
    void makeSplit();
    void makeOnAccount();
    void makePartPaid();
    void makeCreditOnAccount();
    void makeRefund();
    void makePaymentOnAccount();
    void makeReturnOnAccount();
    void makeLayawayPayment();
    void makeLayawayComplete();
    void makePayrollDeduction();
    void makePaidOut();
    void makeCashDrop();
    void makeCoupon();
    void makeTaxedCoupon();
    void makeDollarDiscount();
    void makeNonStock();
    void makeTaxedNonStock();
    void makeUnknownItem();
    void makeDeletedItem();
    void makeService();
    void makeShipping();
    void makeUntaxed();
    void makeMixedRates();
    void makeUnknownCustomer();
    void makeMarked();
    void makeFractions();
    void makeExchange();
    void makeUnlistedRate();
    void makeNamelessSpecial();
    void makeZeroSale();
    void makeWithoutItems();

    void start(const std::string& date);
    void addGoods(int lines, int sign = 1);
    void addItem(const db::InventoryRecord& item, float quantity);
    db::SalesItemRecord& addSpecial(std::int32_t number, util::Money amount);
    db::SalesItemRecord& addLine(std::int32_t number, const std::string& sl, float quantity);
    void setTax(db::SalesItemRecord& line, char code);
    /// Taxes by code and the totals of the head.
    void total();
    void pay(std::int16_t tender, util::Money amount);
    void needCustomer();
    const db::InventoryRecord& anyGoods();

    const Shop& shop_;
    Random& random_;
    Sale sale_;
    std::vector<char> taxCodes_;  ///< of the lines
    std::int32_t saleId_ = 0;
    std::int32_t invoice_ = 1000;
    int specials_ = 0;
};

}  // namespace samplestore
