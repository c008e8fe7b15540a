#pragma once

#include "util/date_time.h"
#include "util/fixed_text.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace db {

/// One of the store's people: code, short-cut, rights and the stored form of the passwords.
/// `ResetPwdDate` is the day on which the password expires; `Status` "I" marks a locked account.
struct SalesCodeRecord {
    std::int32_t UserID = 0;
    util::FixedText<8> SalesCode;
    std::int16_t StoreNumber = 0;
    util::FixedText<8> ShortCut;
    util::FixedText<30> FullName;
    util::FixedText<65> Password;
    util::FixedText<8> Commission;
    util::FixedText<250> Permissions;
    util::FixedText<15> ARCode;
    util::FixedText<25> StaffDept;
    util::FixedText<65> LastPwd;
    util::FixedText<65> Last2ndPwd;
    util::FixedText<65> Last3rdPwd;
    util::FixedText<65> Last4thPwd;
    std::optional<util::DateTime> ResetPwdDate;
    util::FixedText<1> Status;
    std::int16_t ResetQ1 = 0;
    util::FixedText<20> QA1;
    std::int16_t ResetQ2 = 0;
    util::FixedText<20> QA2;
    std::int16_t ResetQ3 = 0;
    util::FixedText<20> QA3;
};

}  // namespace db

/// The sales code of the last operation on table 3.
extern db::SalesCodeRecord gSalesCode;

/// Inserts the rows of "DefaultSalesCodes.txt" of the program's folder (fields split by "|", in
/// column order, missing ones by default); without that file nothing happens. The row whose
/// short-cut is "H" gets a first password that has expired already.
void gpSalesCodes_AddDefaults();

namespace db {

enum SalesCodeKey : std::int16_t {
    keySalesCodeShortCut = 0,
    keySalesCodeSalesCode = 1,
    keySalesCodeUserID = 2
};

/// Gives the stored form of a plain password for the sales code in `gSalesCode`. The security floor
/// fills it; while it is unset the defaults get a blank password.
std::function<std::string(const std::string& plain)>& passwordCipher();

/// Binds table 3: makes the table and its first rows when it is missing, adds the columns of the
/// password questions to an older one.
void bindSalesCodes();

}  // namespace db
