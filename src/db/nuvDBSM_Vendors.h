#pragma once

#include "util/fixed_text.h"
#include "util/money.h"

#include <cstdint>

namespace db {

/// One supplier; `VENDCODE` is the code. Dates yyyymmdd.
struct VendorsRecord {
    std::int32_t VendorID = 0;
    util::FixedText<15> VENDCODE;
    util::FixedText<40> BUSINESS;
    util::FixedText<15> LASTNAME;
    util::FixedText<10> ZIP;
    util::FixedText<2> MAILCODE;
    util::FixedText<15> FIRSTNAME;
    util::FixedText<40> ADDRESS;
    util::FixedText<20> CITY;
    util::FixedText<3> STATE;
    util::FixedText<14> PHONE;
    util::FixedText<14> FAX;
    util::FixedText<8> DATE;
    util::Money BALANCE;
    util::FixedText<1> NOTES;
    util::FixedText<12> COUNTRY;
    util::Money LASTPAIDAMT;
    util::FixedText<30> REFERENCE;
    std::int16_t PAYMENTTERM = 0;
    util::FixedText<1> CODEFLAG;
    util::Money SPLITBALANC;
    util::Money RECURAMT;
    util::FixedText<1> POLL;
    util::FixedText<9> PHONEEXT;
    util::FixedText<6> DISCOUNTTERM;
    util::FixedText<25> ADDRESS2;
    util::FixedText<50> EMAIL;
    util::FixedText<14> CELLPHONE;
};

}  // namespace db

/// The supplier of the last operation on table 5.
extern db::VendorsRecord gVendors;

namespace db {

enum VendorsKey : std::int16_t { keyVendorsVendorID = 0, keyVendorsVendCode = 1 };

/// Binds table 5 (SQL name "Vendor"): makes the table when it is missing; its column "COUNTRY" is
/// renamed to "EXPENSECD".
void bindVendors();

}  // namespace db
