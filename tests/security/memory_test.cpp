#include "security/login_fixture.h"
#include "security/memory_search.h"
#include "security/secret.h"
#include "security/sm_Encryption_Ops.h"

#include <array>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using testing_support::Backwards;
using testing_support::inMemory;
using testing_support::LoginTest;
using testing_support::typeInto;

/// Short texts lie in the string object itself, long ones behind it: both must go.
struct Passwords {
    const char* given;
    Backwards present;
    Backwards wrong;
    Backwards next;
};

constexpr Passwords kPasswords[] = {
    {"short ones", "17eulbyks", "18neergby", "29dertsur"},
    {"long ones",
     "17eulbyks-retcarahcneetxi",
     "18neergby-retcarahcneetxi",
     "29dertsur-retcarahcneetxi"},
};

/// The end of a text: what is given back to the heap loses its first sixteen bytes.
constexpr Backwards endOf(Backwards text) {
    return text.substr(0, 9);
}

/// Of ZOE's present key the part that is the cipher's and what follows it; her older key.
constexpr Backwards kKeys[] = {"89cb89630860b5eb", "faac8df9432979", "1ZarEOZ"};

void expectNoneOf(const char* when, const Passwords& passwords) {
    SCOPED_TRACE(std::string(when) + ", " + passwords.given);
    EXPECT_EQ(
        inMemory(
            {endOf(passwords.present),
             endOf(passwords.wrong),
             endOf(passwords.next),
             kKeys[0],
             kKeys[1],
             kKeys[2]}
        ),
        std::set<Backwards>()
    );
}

std::string typed(Backwards text) {
    std::string plain;
    typeInto(plain, text);
    return plain;
}

/// One routine that handles secrets; what it gives is wiped by the caller.
struct Routine {
    const char* name;
    std::string (*run)(const std::string& plain);
};

const Routine kRoutines[] = {
    {"the older key", [](const std::string&) { return gfsUserKeyOld(); }},
    {"the present key", [](const std::string&) { return gfsUserKey(); }},
    {"enciphering",
     [](const std::string& plain) {
         const security::Secret key(gfsUserKey());
         return gfsPassword_Encrypt(plain, key.text());
     }},
    {"a stored column",
     [](const std::string&) { return gfsPassword_Stored(gSalesCode.Password.trimmed()); }},
    {"an entry of the history of an older key",
     [](const std::string&) { return security::historyPassword(gSalesCode.LastPwd.trimmed()); }},
    {"the history",
     [](const std::string& plain) {
         return std::string(security::isInHistory(plain) ? "found" : "");
     }},
    {"the rule for strong passwords",
     [](const std::string& plain) {
         LegacyBool met = kNo;
         clsUserLogin::gfb_PwdStandardMet(plain, met);
         return std::string(met != kNo ? "met" : "");
     }},
};

std::string storedUnder(std::string (*keyOf)(), Backwards password) {
    const security::Secret plain(typed(password));
    const security::Secret key(keyOf());
    return gfsPassword_Encrypt(plain.text(), key.text());
}

/// Runs a routine far down the stack, where nobody else comes by before the search.
std::size_t runDeepDown(const Routine& routine, Backwards password) {
    std::array<volatile char, std::size_t{1} << 16> room;  // NOLINT(*-member-init)
    room.front() = 1;
    const security::Secret plain(typed(password));
    const security::Secret result(routine.run(plain.text()));
    return result.text().size() * static_cast<std::size_t>(room.front());
}

/// ZOE's row, with one column of each key.
void holdUser(const Passwords& passwords) {
    gSalesCode = db::SalesCodeRecord();
    gSalesCode.SalesCode = "ZOE";
    gSalesCode.ShortCut = "Z1";
    gSalesCode.StoreNumber = 1;
    gSalesCode.Password = storedUnder(gfsUserKey, passwords.present);
    gSalesCode.LastPwd = storedUnder(gfsUserKeyOld, passwords.present);
}

void expectNoneAfter(const Routine& routine, const Passwords& passwords) {
    EXPECT_GT(runDeepDown(routine, passwords.present), 0U) << routine.name;
    expectNoneOf(routine.name, passwords);
}

/// The login of ZOE, whose hands leave no trace: every text is put where a desktop puts it, and
/// nowhere else.
class Memory : public LoginTest {
protected:
    void openShop() {
        open();
        addUser("ZOE", "Z1", "");
    }
    /// Stores ZOE's password under a key, in the history too.
    static void givePassword(Backwards password, std::string (*key)()) {
        user("ZOE");
        gSalesCode.Password = storedUnder(key, password);
        gSalesCode.Last3rdPwd = gSalesCode.Password;
        gSalesCode.ResetPwdDate.reset();
        update();
    }
    /// Types into the login window and presses Accept.
    static void attempt(ui::Form& window, Backwards password) {
        typeInto(window.control("txtUserID").text, "EOZ");
        typeInto(window.control("txtPassword").text, password);
        window.raise("cmdOkCancel", ui::Signal::click, 0);
    }
    /// Types into the window of the new password and presses OK.
    static void enter(ui::Form& window, Backwards password, Backwards repeated) {
        typeInto(window.control("txtNewPassword").text, password);
        typeInto(window.control("txtRepeatPassword").text, repeated);
        window.raise("cmdOkCancel", ui::Signal::click, 0);
    }
    /// Shows the login window. @return whether somebody came in.
    bool atTheWindow(const std::function<void(ui::Form&)>& hands) {
        frmSM_USER_LOGIN window(login);
        desktop.onForm["frmSM_USER_LOGIN"] = hands;
        desktop.showModal(window);
        return isIn();
    }
};

}  // namespace

TEST_F(Memory, isSearchedThroughAndWiped) {
    constexpr Backwards kLong = "skcolc yb dnuof eb ot txet a";
    constexpr Backwards kShort = "txet trohs";
    EXPECT_EQ(inMemory({kLong, kShort}), (std::set<Backwards>()));
    static std::string global;
    std::string local;
    typeInto(global, kLong);
    typeInto(local, kShort);
    EXPECT_EQ(inMemory({kLong, kShort}), (std::set<Backwards>{kLong, kShort}));
    security::wipe(global);
    EXPECT_EQ(inMemory({kLong, kShort}), (std::set<Backwards>{kShort}));
    security::wipe(local);
    EXPECT_EQ(inMemory({kLong, kShort}), (std::set<Backwards>()));
}

TEST(SecurityRoutines, leaveNeitherPasswordNorKeyInMemory) {
    for (const Passwords& row : kPasswords) {
        holdUser(row);
        for (const Routine& routine : kRoutines) {
            expectNoneAfter(routine, row);
        }
    }
}

TEST_F(Memory, holdsNoPasswordAndNoKeyOnceTheyWereUsed) {
    openShop();
    for (const Passwords& row : kPasswords) {
        // A column of an older key, a wrong password, the right one; the store may fail meanwhile.
        givePassword(row.present, gfsUserKeyOld);
        EXPECT_TRUE(atTheWindow([&](ui::Form& form) {
            store.failures.emplace("UPDATE SalesCode", platform::PlatformError(1205, "deadlock"));
            attempt(form, row.present);
            store.failures.clear();
            security::wipe(form.control("txtPassword").text);  // the operator empties the field
            expectNoneOf("after a failure of the store", row);
            attempt(form, row.wrong);
            expectNoneOf("after a wrong password, in the open window", row);
            attempt(form, row.present);
        }));
        expectNoneOf("after a login that stored the password anew", row);
        // A change with a slip, a repeated password and one that passes.
        expireIn("ZOE", 0);
        desktop.onForm["frmPasswordEnter"] = [&](ui::Form& form) {
            enter(form, row.next, row.wrong);
            enter(form, row.present, row.present);
            enter(form, row.next, row.next);
        };
        EXPECT_TRUE(atTheWindow([&](ui::Form& form) { attempt(form, row.present); }));
        expectNoneOf("after a change", row);
        EXPECT_TRUE(atTheWindow([&](ui::Form& form) { attempt(form, row.next); }));
        expectNoneOf("after a login with the new password", row);
        // A change that is given up, and a login that is.
        expireIn("ZOE", 0);
        desktop.onForm["frmPasswordEnter"] = [&](ui::Form& form) {
            enter(form, row.present, row.wrong);
            form.close();
        };
        EXPECT_FALSE(atTheWindow([&](ui::Form& form) {
            attempt(form, row.next);
            typeInto(form.control("txtPassword").text, row.next);
            form.close();
        }));
        expectNoneOf("after the windows were closed", row);
    }
}

TEST(SecretDeathTest, isComparedToItsEndWhereverItDiffers) {
    // The last byte of the typed text cannot be read: who stops at the first difference lives.
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    void* const place =
        ::mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(place, MAP_FAILED);
    char* const first = static_cast<char*>(place);
    ASSERT_EQ(::mprotect(first + page, page, PROT_NONE), 0);
    const std::string_view text(first, page + 1);
    GTEST_FLAG_SET(death_test_style, "fast");
    for (const std::size_t size : {page + 1, page, std::size_t{0}}) {
        EXPECT_DEATH(security::sameSecret(std::string(size, 'x'), text), "") << size;
    }
    ::munmap(place, 2 * page);
}
