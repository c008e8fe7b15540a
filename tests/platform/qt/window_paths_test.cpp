#include "config/clsDataPath.h"
#include "core/brv_op.h"
#include "core/summary_setup.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "screen.h"
#include "security/clsUserLogin.h"
#include "security/sm_Encryption_Ops.h"
#include "windows/FrmQuickSetUP.h"
#include "windows/FrmSelDate.h"
#include "windows/FrmSummaryExport.h"
#include "windows/SafeDialog.h"
#include "windows/frmPasswordEnter.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/frmSM_DATAPATH2.h"
#include "windows/frmSM_USER_LOGIN.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

/// What each window is for, done with the mouse and with the keyboard, and given up.
namespace {

using testing_support::Operator;

class WindowPaths : public testing_support::OnScreen {
protected:
    WindowPaths() : OnScreen(0, 1) {}
};

using Deed = void (*)(Operator&);

struct Path {
    const char* what;
    Deed deed;
    const char* result;
};

/// Shows the window while somebody acts in it. @return count of the boxes that came up.
int show(ui::Form& form, const Deed& deed) {
    Operator person;
    person.await(form.name());
    deed(person);
    platform::desktop().showModal(form);
    EXPECT_TRUE(person.isDone());
    return person.boxes;
}

void retype(const char* field, const std::string& text) {
    auto* edit = dynamic_cast<QLineEdit*>(Operator::find(field));
    ASSERT_NE(edit, nullptr) << field;
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, QString::fromStdString(text));
}

void focus(Operator& person, const char* control) {
    person.act([control] { Operator::find(control)->setFocus(); });
}

void closeBox(Operator& person, const char* window) {
    person.act([window] { Operator::window(window)->close(); });
}

const Path kSafePaths[] = {
    {"a button", [](Operator& person) { person.press("CmdRetry"); }, "R"},
    {"its letter", [](Operator& person) { person.key(Qt::Key_L); }, "L"},
    {"another letter is dropped",
     [](Operator& person) { person.key(Qt::Key_Q).key(Qt::Key_X); },
     "X"},
    {"the close box answers nothing", [](Operator& person) { closeBox(person, "SafeDialog"); }, ""},
};

TEST_F(WindowPaths, safeDialogGivesTheAnswer) {
    for (const Path& row : kSafePaths) {
        SCOPED_TRACE(row.what);
        SafeDialog window;
        show(window, row.deed);
        EXPECT_EQ(window.answer(), row.result);
    }
}

const Path kDataPathPaths[] = {
    {"OK by the mouse",
     [](Operator& person) {
         person.act([] { retype("txtEdit(1)", "/tmp"); }).press("cmdOkCancel(0)");
     },
     "/tmp kept"},
    {"OK by its key",
     [](Operator& person) { person.act([] { retype("txtEdit(1)", "/tmp"); }).key(Qt::Key_F10); },
     "/tmp kept"},
    {"Esc", [](Operator& person) { person.key(Qt::Key_Escape); }, "/before cancelled"},
    {"the close box",
     [](Operator& person) { closeBox(person, "frmSM_DATAPATH2"); },
     "/before cancelled"},
};

TEST_F(WindowPaths, dataPathIsTakenOrLeft) {
    for (const Path& row : kDataPathPaths) {
        SCOPED_TRACE(row.what);
        gDataPath.DataPath = "/before";
        gDataPath.Cancelled = kNo;
        frmSM_DATAPATH2 window;
        EXPECT_EQ(show(window, row.deed), 0);
        EXPECT_EQ(
            gDataPath.DataPath + (gDataPath.Cancelled == kNo ? " kept" : " cancelled"), row.result
        );
    }
}

const Path kBrowserPaths[] = {
    {"a file of the list, by the mouse",
     [](Operator& person) {
         person.press("fileBrowse");
         person.then([] { return QApplication::activePopupWidget() != nullptr; });
         person.key(Qt::Key_Down).key(Qt::Key_Return);
         person.then([] { return QApplication::activePopupWidget() == nullptr; });
         person.press("cmdOkCancel(0)");
     },
     "/company.qbw"},
    {"by the keyboard",
     [](Operator& person) {
         focus(person, "fileBrowse");
         person.key(Qt::Key_Down).key(Qt::Key_F10);
     },
     "/company.qbw"},
    {"given up", [](Operator& person) { person.key(Qt::Key_Escape); }, "nothing"},
};

TEST_F(WindowPaths, browserGivesTheFile) {
    for (const Path& row : kBrowserPaths) {
        SCOPED_TRACE(row.what);
        frmSMFILE_PATH window;
        window.setPath(folder());
        window.setMask("*.qbw");
        show(window, row.deed);
        const std::string answer = window.answer().value_or(folder() + "nothing");
        EXPECT_EQ(answer.substr(folder().size()), row.result);
    }
}

const Path kDatePaths[] = {
    {"Accept by the mouse", [](Operator& person) { person.press("cmdAccept"); }, "1/5/2015"},
    {"a month later, by the keyboard",
     [](Operator& person) {
         focus(person, "DTPicker1(0)");
         person.key(Qt::Key_Up);
         focus(person, "cmdAccept");
         person.key(Qt::Key_Return);
     },
     "2/5/2015"},
    {"given up", [](Operator& person) { person.key(Qt::Key_Escape); }, "1/5/2015"},
};

TEST_F(WindowPaths, datesAreTaken) {
    for (const Path& row : kDatePaths) {
        SCOPED_TRACE(row.what);
        gsFromDate = "1/5/2015";
        FrmSelDate window;
        show(window, row.deed);
        EXPECT_EQ(gsFromDate, row.result);
    }
}

const Path kSummaryPaths[] = {
    {"Exit by the mouse", [](Operator& person) { person.press("Cmdexport"); }, "Export Complete"},
    {"by its key", [](Operator& person) { person.key(Qt::Key_Escape); }, "Export Complete"},
};

TEST_F(WindowPaths, summaryIsPostedWhenItsWindowComesUp) {
    for (const Path& row : kSummaryPaths) {
        SCOPED_TRACE(row.what);
        gsQBFilePath = companyFile();
        FrmSummaryExport window;
        show(window, row.deed);
        EXPECT_EQ(window.control("LblStatus").caption, row.result);
    }
}

/// Goes to an account by its first letters.
void pickPettyCash(Operator& person) {
    person.then([] { return QApplication::activePopupWidget() != nullptr; });
    person.type("Pet").key(Qt::Key_Return);
    person.then([] { return Operator::find("cboAcct") == nullptr; });
}

const Path kQuickPaths[] = {
    {"nothing", [](Operator& person) { person.press("cmdAccept"); }, ""},
    {"an account by the mouse",
     [](Operator& person) {
         person.act([] {
             auto* grid = dynamic_cast<QTableWidget*>(Operator::find("fgrdList"));
             const QPoint place = grid->visualRect(grid->model()->index(1, 1)).center();
             QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, place);
         });
         pickPettyCash(person);
         person.press("cmdAccept");
     },
     "Petty Cash"},
    {"an account by the keyboard",
     [](Operator& person) {
         person.act([] {
             auto* grid = dynamic_cast<QTableWidget*>(Operator::find("fgrdList"));
             grid->setFocus();
             grid->setCurrentCell(0, 1);
         });
         person.key(Qt::Key_Down).key(Qt::Key_Return);
         pickPettyCash(person);
         focus(person, "cmdAccept");
         person.key(Qt::Key_Return);
     },
     "Petty Cash"},
};

TEST_F(WindowPaths, quickSetupMapsAccounts) {
    for (const Path& row : kQuickPaths) {
        SCOPED_TRACE(row.what);
        gsQBFilePath = companyFile();
        gsFromDate = "1/5/2015";
        FrmQuickSetUP window;
        EXPECT_EQ(show(window, row.deed), 0);
        EXPECT_EQ(window.control("fgrdList").rows[2][1], row.result);
        EXPECT_TRUE(window.isClosed());
    }
}

class LoginPaths : public WindowPaths {
protected:
    LoginPaths() {
        login.StoreNumber = 1;
        login.Application = "Brevane";
        gSalesCode.StoreNumber = 1;
        gSalesCode.SalesCode = "ANNA";
        gfiDB_Operation(db::tableSalesCode, db::opEqual, db::keySalesCodeSalesCode);
        gSalesCode.Password = gfsPassword_Encrypt("anna123", gfsUserKey());
        EXPECT_NE(gfiDB_Operation(db::tableSalesCode, db::opUpdate, 0), kNo);
    }
    clsUserLogin login;
};

const Path kLoginPaths[] = {
    {"typed, Accept by the mouse",
     [](Operator& person) {
         person.act([] { retype("txtUserID", "ANNA"); }
         ).act([] { retype("txtPassword", "anna123"); });
         person.press("cmdOkCancel(0)");
     },
     "in"},
    {"by the keyboard alone",
     [](Operator& person) {
         person.act([] { retype("txtUserID", "ANNA"); });
         person.key(Qt::Key_Tab).type("anna123").key(Qt::Key_Return);
     },
     "in"},
    {"a wrong password, then given up",
     [](Operator& person) {
         person.act([] { retype("txtUserID", "ANNA"); });
         person.key(Qt::Key_Tab).type("x").key(Qt::Key_Return);
         person.then([&person] { return person.boxes == 1; });
         person.then([] {
             auto* field = dynamic_cast<QLineEdit*>(Operator::find("txtPassword"));
             return field != nullptr && field->text().isEmpty() &&
                    field->window()->focusWidget() == field;
         });
         person.key(Qt::Key_Escape);
     },
     "out"},
    {"the close box", [](Operator& person) { closeBox(person, "frmSM_USER_LOGIN"); }, "out"},
};

TEST_F(LoginPaths, lastUserAndPasswordLogIn) {
    for (const Path& row : kLoginPaths) {
        SCOPED_TRACE(row.what);
        frmSM_USER_LOGIN window(login);
        show(window, row.deed);
        EXPECT_STREQ(login.Cancel == kNo && login.Valid() != kNo ? "in" : "out", row.result);
        EXPECT_EQ(window.title(), "Login: Brevane");
    }
}

const Path kPasswordPaths[] = {
    {"typed twice, OK by the mouse",
     [](Operator& person) {
         person.act([] { retype("txtNewPassword", "abcd123"); });
         person.act([] { retype("txtRepeatPassword", "abcd123"); }).press("cmdOkCancel(0)");
     },
     "abcd123"},
    {"by the keyboard alone",
     [](Operator& person) {
         person.type("abcd123").key(Qt::Key_Tab).type("abcd123").key(Qt::Key_Return);
     },
     "abcd123"},
    {"typed differently, then given up",
     [](Operator& person) {
         person.type("abcd123").key(Qt::Key_Tab).type("abcd124").key(Qt::Key_Return);
         person.then([&person] { return person.boxes == 1; }).key(Qt::Key_Escape);
     },
     ""},
};

TEST_F(LoginPaths, newPasswordIsTypedTwice) {
    for (const Path& row : kPasswordPaths) {
        SCOPED_TRACE(row.what);
        frmPasswordEnter window(login);
        show(window, row.deed);
        EXPECT_EQ(window.takePassword(), row.result);
    }
}

/// A form may outlive the desktop that showed it.
TEST_F(WindowPaths, formIsFreeAfterItsWindow) {
    SafeDialog window;
    SafeDialog other;  // of the same name
    show(window, [](Operator& person) { person.press("CmdRetry"); });
    screen->showModeless(other);
    platform::current().desktop = &desktop;
    screen.reset();
    window.setCaption("CmdRetry", "Again");
    other.setCaption("CmdRetry", "Again");
    EXPECT_EQ(window.control("CmdRetry").caption, "Again");
}

}  // namespace
