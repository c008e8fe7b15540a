#include "db/nuvDBSM_SecurLog.h"

#include "db/table_module.h"

db::LogInSecRecord gLogInSec;

namespace db {

namespace {

constexpr auto kLogInSec = table(
    "LogInSec",
    column("SalesCode", "CHAR (8) NOT NULL", &LogInSecRecord::SalesCode),
    column("aDate", "DATETIME", &LogInSecRecord::aDate),
    column("aTime", "DATETIME", &LogInSecRecord::aTime),
    column("Detail", "CHAR (20) DEFAULT ' '", &LogInSecRecord::Detail),
    column("Result", "CHAR (1) DEFAULT ' '", &LogInSecRecord::Result),
    column("ID", "INTEGER", &LogInSecRecord::ID),
    column("Station", "SMALLINT", &LogInSecRecord::Station),
    column("Spare", "CHAR (10) DEFAULT ' '", &LogInSecRecord::Spare)
);

constexpr std::string_view kLogInSecIndexes[] = {
    "Create UNIQUE CLUSTERED Index idx_1 On <table>(ID);",
    "Create UNIQUE Index idx_2 On <table>(adate,SalesCode,ID);",
    "Create UNIQUE Index idx_3 On <table>(SalesCode,adate,ID);",
    "Create UNIQUE Index idx_4 On <table>(adate,atime,ID);",
};

constexpr TableTitles kLogInSecTitles = {"LOGIN SECURITY", "Login.NUV"};

}  // namespace

const TableRoutines& logInSecRoutines() {
    static constexpr TableRoutines kRoutines =
        appendOnly(routinesOf<kLogInSec, kNoKeys, gLogInSec>());
    return kRoutines;
}

void bindSecurLog() {
    define(tableLogInSec, kLogInSec, kLogInSecTitles, kLogInSecIndexes);
    makeIfMissing(tableLogInSec);
}

}  // namespace db
