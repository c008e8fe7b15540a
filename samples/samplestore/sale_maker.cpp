#include "samplestore/sale_maker.h"

#include "export/sale_columns.h"

#include <cmath>

namespace samplestore {

namespace {

constexpr std::int16_t kOnAccount = 0;
constexpr std::int16_t kCash = 1;
constexpr std::int16_t kCheck = 2;
constexpr std::int16_t kFirstCard = 3;
constexpr std::int16_t kLastCard = 7;
constexpr std::int16_t kLayawayAccount = 8;
constexpr int kSpecialEvery = 6;
constexpr std::int32_t kUnknownItem = 900001;

enum Special : std::int32_t {
    nonStock = 1,
    receivedOnAccount = 2,
    layaway = 3,
    dollarDiscount = 4,
    payroll = 5,
    paidOut = 6,
    vendorCoupon = 7,
    storeCoupon = 8,
    vendorDiscount = 9
};

std::string padded(std::int32_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return digits.size() >= width ? digits : std::string(width - digits.size(), '0') + digits;
}

/// Tax on `base` at a rate in hundredths of a per cent, to the cent.
util::Money taxOn(util::Money base, float rate) {
    const auto hundredths = std::int64_t{std::lround(rate * 100.0F)};
    return util::Money::fromRaw(base.raw() * hundredths / 10000).rounded(2);
}

}  // namespace

const SaleMaker::Recipe SaleMaker::kOrdinary[] = {
    {"cash", &SaleMaker::makeCash},
    {"card", &SaleMaker::makeCard},
    {"cash", &SaleMaker::makeCash},
    {"split tenders", &SaleMaker::makeSplit},
    {"card", &SaleMaker::makeCard},
    {"on account", &SaleMaker::makeOnAccount},
};

const SaleMaker::Recipe SaleMaker::kSpecial[] = {
    {"part paid", &SaleMaker::makePartPaid},
    {"credit on account", &SaleMaker::makeCreditOnAccount},
    {"refund", &SaleMaker::makeRefund},
    {"payment on account", &SaleMaker::makePaymentOnAccount},
    {"return on account", &SaleMaker::makeReturnOnAccount},
    {"layaway payment", &SaleMaker::makeLayawayPayment},
    {"layaway completed", &SaleMaker::makeLayawayComplete},
    {"payroll deduction", &SaleMaker::makePayrollDeduction},
    {"paid out", &SaleMaker::makePaidOut},
    {"cash drop", &SaleMaker::makeCashDrop},
    {"coupon", &SaleMaker::makeCoupon},
    {"taxed coupon", &SaleMaker::makeTaxedCoupon},
    {"dollar discount", &SaleMaker::makeDollarDiscount},
    {"non-stock item", &SaleMaker::makeNonStock},
    {"taxed non-stock item", &SaleMaker::makeTaxedNonStock},
    {"unknown item", &SaleMaker::makeUnknownItem},
    {"deleted item", &SaleMaker::makeDeletedItem},
    {"service with cost", &SaleMaker::makeService},
    {"shipping with tax", &SaleMaker::makeShipping},
    {"untaxed sale", &SaleMaker::makeUntaxed},
    {"several tax rates", &SaleMaker::makeMixedRates},
    {"unknown customer", &SaleMaker::makeUnknownCustomer},
    {"marked row", &SaleMaker::makeMarked},
    {"fractions of quantities", &SaleMaker::makeFractions},
    {"exchange", &SaleMaker::makeExchange},
    {"unlisted tax rate", &SaleMaker::makeUnlistedRate},
    {"special line without item", &SaleMaker::makeNamelessSpecial},
    {"sale of nothing", &SaleMaker::makeZeroSale},
    {"sale without lines", &SaleMaker::makeWithoutItems},
};

Sale SaleMaker::next(const std::string& date) {
    start(date);
    if (saleId_ % kSpecialEvery == 0) {
        const Recipe& recipe = kSpecial[static_cast<std::size_t>(specials_) % std::size(kSpecial)];
        ++specials_;
        (this->*recipe.make)();
    } else {
        (this->*random_.pick(std::span<const Recipe>(kOrdinary)).make)();
    }
    return sale_;
}

void SaleMaker::start(const std::string& date) {
    ++saleId_;
    invoice_ += random_.chance(5) ? 2 : 1;  // a number is lost now and then
    sale_ = Sale();
    taxCodes_.clear();
    db::SalesHeadRecord& head = sale_.head;
    head.SALEID = saleId_;
    head.HubUID = saleId_;
    head.SaleDate = date;
    head.time = static_cast<std::int16_t>(random_.between(540, 1080));
    head.Scode = kPeople[random_.below(static_cast<int>(std::size(kPeople)))].code;
    head.Invoice = padded(invoice_, 7);
    head.Store = 1;
    head.Station = static_cast<std::int16_t>(random_.between(1, 3));
    head.Taxed = "Y";
    if (random_.chance(40)) {
        needCustomer();
    }
}

void SaleMaker::needCustomer() {
    const auto index = random_.below(static_cast<int>(shop_.customers.size()) - kQuietCustomers);
    const db::NamesRecord& customer = shop_.customers[static_cast<std::size_t>(index)];
    sale_.head.ARCode = customer.ARCode.view();
    const std::string code = customer.TAXCODE.trimmed();
    sale_.head.Taxed = code == "N" || code == "0" ? "N" : "Y";  // schools and farms pay no tax
}

const db::InventoryRecord& SaleMaker::anyGoods() {
    const auto first = static_cast<std::size_t>(kFirstGoods) - 1;
    const int count = static_cast<int>(shop_.items.size() - first);
    return shop_.items[first + static_cast<std::size_t>(random_.below(count))];
}

db::SalesItemRecord&
SaleMaker::addLine(std::int32_t number, const std::string& sl, float quantity) {
    db::SalesItemRecord line;
    line.SaleID = sale_.head.SALEID;
    line.StoreNum = sale_.head.Store;
    line.Invoice = sale_.head.Invoice.view();
    line.LineNum = util::Money::fromWhole(static_cast<std::int64_t>(sale_.items.size()) + 1);
    line.SCode = sale_.head.Scode.view();
    line.InvUID = number;
    line.Ordered = quantity;
    line.Shipped = quantity;
    line.Taxed = "N";
    line.SaleDate = sale_.head.SaleDate.view();
    line.SL = sl;
    line.HubUID = line.SaleID * 100 + static_cast<std::int32_t>(sale_.items.size());
    sale_.items.push_back(line);
    taxCodes_.push_back('0');
    return sale_.items.back();
}

void SaleMaker::setTax(db::SalesItemRecord& line, char code) {
    taxCodes_.back() = code;
    if (code != '0' && sale_.head.Taxed.view() == "Y") {
        line.Taxed = "Y";
        line.TaxRate = rateOf(code);
        line.Linetax = util::Money::fromDouble(line.LineTotal.toDouble() * line.TaxRate / 100)
                           .rounded(3);  // the column has three decimals
    }
}

void SaleMaker::addItem(const db::InventoryRecord& item, float quantity) {
    db::SalesItemRecord& line = addLine(item.RecordNum, item.SL.str(), quantity);
    line.Dept = item.DeptCode.view();
    line.Vendor = item.VendorCode.view();
    line.Cost = item.Cost;
    line.ListCost = item.Cost;
    line.ListPrice = item.Price;
    line.ItemPrice = item.Price;
    line.LineTotal = util::times(item.Price, static_cast<double>(quantity)).rounded(2);
    line.Description = item.Description.view();
    setTax(line, item.TaxCode.view().front());
}

db::SalesItemRecord& SaleMaker::addSpecial(std::int32_t number, util::Money amount) {
    const db::InventoryRecord& row = shop_.items[static_cast<std::size_t>(number - 1)];
    db::SalesItemRecord& line = addLine(number, row.SL.str(), 1);
    line.ItemPrice = amount;
    line.ListPrice = amount;
    line.LineTotal = amount;
    line.Description = row.Description.view();
    return line;
}

void SaleMaker::addGoods(int lines, int sign) {
    for (int index = 0; index < lines; ++index) {
        const db::InventoryRecord* item = &anyGoods();
        // Most customers buy what bears one rate; several rates in one sale are a kind of their
        // own.
        while (item->TaxCode.view() != "A" && item->TaxCode.view() != "0") {
            item = &anyGoods();
        }
        addItem(*item, static_cast<float>(sign * random_.between(1, 3)));
    }
}

void SaleMaker::total() {
    db::SalesHeadRecord& head = sale_.head;
    std::size_t slot = 0;
    util::Money tax;
    for (char code = 'A'; code < 'A' + kTaxRateCount && slot < exporting::kTaxColumns.size();
         ++code) {
        util::Money base;
        for (std::size_t index = 0; index < sale_.items.size(); ++index) {
            base += taxCodes_[index] == code ? sale_.items[index].LineTotal : util::Money();
        }
        if (head.Taxed.view() != "Y" || base.isZero()) {
            continue;
        }
        const exporting::TaxColumns& columns = exporting::kTaxColumns.at(slot);
        head.*columns.rate = rateOf(code);
        head.*columns.amount = base;
        head.*columns.tax = taxOn(base, rateOf(code));
        tax += head.*columns.tax;
        ++slot;
    }
    head.Taxes = static_cast<std::int16_t>(slot);
    head.SubTotal = util::Money();
    for (const db::SalesItemRecord& line : sale_.items) {
        head.SubTotal += line.LineTotal;
    }
    head.TotalSale = head.SubTotal + tax;
}

void SaleMaker::pay(std::int16_t tender, util::Money amount) {
    db::SalesHeadRecord& head = sale_.head;
    const exporting::TenderColumns& columns =
        exporting::kTenderColumns.at(static_cast<std::size_t>(head.Tenders));
    head.*columns.type = tender;
    head.*columns.amount = amount;
    if (tender == kCheck) {
        head.*columns.reference = "CK" + std::to_string(random_.between(100, 999));
    }
    ++head.Tenders;
}

void SaleMaker::makeCash() {
    addGoods(random_.between(1, 4));
    total();
    pay(random_.chance(20) ? kCheck : kCash, sale_.head.TotalSale);
}

void SaleMaker::makeCard() {
    addGoods(random_.between(1, 5));
    total();
    pay(static_cast<std::int16_t>(random_.between(kFirstCard, kLastCard)), sale_.head.TotalSale);
}

void SaleMaker::makeSplit() {
    addGoods(random_.between(2, 4));
    total();
    const util::Money cash = util::Money::fromWhole(1);
    pay(kCash, cash);
    pay(kFirstCard, sale_.head.TotalSale - cash);
}

void SaleMaker::makeOnAccount() {
    needCustomer();
    addGoods(random_.between(1, 5));
    total();
    pay(kOnAccount, sale_.head.TotalSale);
}

void SaleMaker::makePartPaid() {
    needCustomer();
    addGoods(3);
    total();
    const util::Money onAccount =
        util::Money::fromRaw(sale_.head.TotalSale.raw() * 6 / 10).rounded(2);
    pay(kOnAccount, onAccount);
    pay(kCash, sale_.head.TotalSale - onAccount);
}

void SaleMaker::makeCreditOnAccount() {
    needCustomer();
    addGoods(random_.between(1, 2), -1);
    total();
    pay(kOnAccount, sale_.head.TotalSale);
}

void SaleMaker::makeRefund() {
    addGoods(random_.between(1, 2), -1);
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makePaymentOnAccount() {
    needCustomer();
    sale_.head.Description = "ROA";
    addSpecial(receivedOnAccount, random_.cents(2000, 30000));
    total();
    pay(random_.chance(50) ? kCash : kFirstCard, sale_.head.TotalSale);
}

void SaleMaker::makeReturnOnAccount() {
    needCustomer();
    sale_.head.Description = "ROA";
    addSpecial(receivedOnAccount, -random_.cents(1000, 9000));
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeLayawayPayment() {
    needCustomer();
    sale_.head.Description = "ROAL";
    sale_.head.Reference = "LAY" + std::to_string(saleId_);
    addSpecial(layaway, random_.cents(1000, 12000));
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeLayawayComplete() {
    needCustomer();
    sale_.head.Description = "Layaway Complete";
    addSpecial(layaway, random_.cents(5000, 20000));
    total();
    pay(kLayawayAccount, sale_.head.TotalSale);
}

void SaleMaker::makePayrollDeduction() {
    needCustomer();
    sale_.head.Description = "PAYROL";
    addSpecial(payroll, random_.cents(1000, 6000));
    total();
    pay(kOnAccount, sale_.head.TotalSale);
}

void SaleMaker::makePaidOut() {
    sale_.head.ARCode = "";
    sale_.head.Description = "Paid Out";
    addSpecial(paidOut, -random_.cents(500, 4000));
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeCashDrop() {
    sale_.head.ARCode = "";
    sale_.head.Description = "Cash Drop";
    addSpecial(paidOut, -util::Money::fromWhole(200));
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeCoupon() {
    addGoods(3);
    addSpecial(storeCoupon, -util::Money::fromWhole(2));
    addSpecial(vendorCoupon, -util::Money::fromRaw(5000));
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeTaxedCoupon() {
    addGoods(2);
    setTax(addSpecial(storeCoupon, -util::Money::fromWhole(2)), 'A');
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeDollarDiscount() {
    addGoods(3);
    addSpecial(dollarDiscount, -util::Money::fromWhole(1));
    total();
    pay(kFirstCard, sale_.head.TotalSale);
}

void SaleMaker::makeNonStock() {
    db::SalesItemRecord& line = addSpecial(nonStock, random_.cents(500, 5000));
    line.Description = "Odd lot \"as is\" & <boxed>";
    line.Cost = util::Money::fromWhole(2);
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeTaxedNonStock() {
    db::SalesItemRecord& line = addSpecial(nonStock, random_.cents(1500, 5000));
    line.Description = "Odd lot, taxed";
    setTax(line, 'A');
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeUnknownItem() {
    db::SalesItemRecord& line = addLine(kUnknownItem, "8000001A", 1);
    line.LineTotal = random_.cents(500, 5000);
    line.Description = "Item of a lost list";
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeDeletedItem() {
    addItem(shop_.items[kDeletedItem - 1], 1);
    sale_.items.back().Taxed = "N";
    taxCodes_.back() = '0';
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeService() {
    addItem(shop_.items[kServiceItem - 1], 2);
    addItem(shop_.items[kServiceItem], 1);
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeShipping() {
    needCustomer();
    addGoods(2);
    addItem(shop_.items[kFirstShippingItem - 1], 1);
    addItem(shop_.items[kFirstShippingItem], 1);
    total();
    pay(kFirstCard, sale_.head.TotalSale);
}

void SaleMaker::makeUntaxed() {
    sale_.head.Taxed = "N";
    addGoods(3);
    for (db::SalesItemRecord& line : sale_.items) {
        line.Taxed = "N";
        line.Linetax = {};
        line.TaxRate = 0;
    }
    total();
    pay(kCheck, sale_.head.TotalSale);
}

void SaleMaker::makeMixedRates() {
    for (const char* code : {"A", "B", "C", "D"}) {
        const db::InventoryRecord* item = &anyGoods();
        while (item->TaxCode.view() != code) {
            item = &anyGoods();
        }
        addItem(*item, 1);
    }
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeUnknownCustomer() {
    sale_.head.ARCode = "NOBODY" + std::to_string(saleId_ % 4);
    addGoods(2);
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeMarked() {
    makeCash();
    sale_.head.Status = random_.chance(50) ? "V" : "R";
}

void SaleMaker::makeFractions() {
    for (const float quantity : {1.5F, 0.25F, 2.75F}) {
        addItem(anyGoods(), quantity);
    }
    sale_.head.Taxed = "N";
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeExchange() {
    addGoods(1, -1);
    addGoods(3);
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeUnlistedRate() {
    makeCash();
    if (sale_.head.Taxes > 0) {
        sale_.head.TaxRate1 = 7.77F;
    }
}

void SaleMaker::makeNamelessSpecial() {
    addGoods(1);
    setTax(addSpecial(vendorDiscount, -util::Money::fromWhole(1)), 'A');
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeZeroSale() {
    const db::InventoryRecord& item = anyGoods();
    addItem(item, 1);
    addItem(item, -1);
    total();
    pay(kCash, sale_.head.TotalSale);
}

void SaleMaker::makeWithoutItems() {
    total();
    sale_.head.SubTotal = util::Money::fromWhole(3);
    sale_.head.TotalSale = sale_.head.SubTotal;
    pay(kCash, sale_.head.TotalSale);
}

}  // namespace samplestore
