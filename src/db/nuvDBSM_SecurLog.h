#pragma once

#include "util/date_time.h"
#include "util/fixed_text.h"

#include <cstdint>
#include <optional>

namespace db {

/// One entry of the security trail; only appended to. `aDate` and `aTime` hold the full moment.
struct LogInSecRecord {
    util::FixedText<8> SalesCode;
    std::optional<util::DateTime> aDate;
    std::optional<util::DateTime> aTime;
    util::FixedText<20> Detail;
    util::FixedText<1> Result;
    std::int32_t ID = 0;
    std::int16_t Station = 0;
    util::FixedText<10> Spare;
};

}  // namespace db

/// The entry that the next insert into table 11 writes.
extern db::LogInSecRecord gLogInSec;

namespace db {

/// Binds table 11: makes the table when it is missing.
void bindSecurLog();

}  // namespace db
