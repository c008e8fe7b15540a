#pragma once

#include "util/fixed_text.h"
#include "util/money.h"

#include <cstdint>

namespace db {

/// One customer of the store: `ARCode` is the account code, `NameID` the number. Dates yyyymmdd.
struct NamesRecord {
    std::int32_t NameID = 0;
    util::FixedText<15> ARCode;
    util::FixedText<40> BUSINESS;
    util::FixedText<15> LASTNAME;
    util::FixedText<10> ZIP;
    util::FixedText<2> MAIL;
    util::FixedText<15> FIRSTNAME;
    util::FixedText<40> ADDRESS;
    util::FixedText<20> CITY;
    util::FixedText<3> STATE;
    util::FixedText<14> PHONE;
    util::FixedText<14> FAX;
    std::int16_t DISCOUNT = 0;
    util::Money TOTALSALES;
    util::FixedText<8> LASTDATE;
    util::Money BALANCE;
    util::FixedText<1> TAXCODE;
    util::Money LIMIT;
    util::FixedText<1> NOTES;
    util::FixedText<8> PREVSTDATE;
    util::FixedText<8> STMNTDATE;
    util::FixedText<6> MINPAYMENT;
    util::FixedText<8> PriceLevelExpDate;
    util::FixedText<1> PRICELEVEL;
    util::FixedText<1> MODIFIED;
    std::int16_t STORENUM = 0;
    util::Money BalLastStmnt;
    util::FixedText<12> Country;
    util::FixedText<1> DELETEFLAG;
    std::int16_t PAYMENTTERM = 0;
    util::Money RECURAMOUNT;
    util::FixedText<12> RECURAMOUNTDESC;
    util::FixedText<8> NEXTINVDATE;
    util::FixedText<1> POLL;
    util::FixedText<1> FreqBuyer;
    util::Money ConsolidatedBalance;
    util::Money BalanceFwd;
    util::FixedText<30> ADDRESS2;
    util::FixedText<40> EMAIL;
    util::FixedText<5> TITLE;
    std::int16_t COSTPLUS = 0;
    util::FixedText<6> FLAGS;
    util::FixedText<6> PHONEEXTN;
    util::FixedText<8> ADDEDDATE;
    util::FixedText<14> CELLPHONE;
    util::FixedText<20> TAXID;
    util::Money LayawayBalance;
    util::FixedText<1> MEMBERSHIP;
    util::FixedText<1> MEMBTYPE;
    util::FixedText<8> MSTARTDATE;
    util::FixedText<8> MEXPIRYDATE;
    util::FixedText<12> PHONEINDEX;
};

}  // namespace db

/// The customer of the last operation on table 2.
extern db::NamesRecord gNames;

namespace db {

enum NamesKey : std::int16_t { keyNamesNameID = 0, keyNamesARCode = 1 };

/// Binds table 2: makes the table when it is missing, renames "ConSalesTotal" of an older one to
/// "LayawayBalance" and sets that to 0.
void bindNames();

}  // namespace db
