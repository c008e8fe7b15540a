#include "core/brv_op.h"
#include "core/run_log.h"
#include "support/table_file.h"
#include "windows/FrmQuickSetUP.h"
#include "windows/FrmSelDate.h"
#include "windows/FrmSummaryExport.h"
#include "windows/SafeDialog.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/frmSM_DATAPATH2.h"
#include "windows/window_operator.h"

#include <map>
#include <memory>

namespace {

using testing_support::Played;
using testing_support::tableRows;

class ButtonStates : public testing_support::WindowOperator {
protected:
    /// Plays a script from a folder without a run log, or with one where the script begins so.
    Played playOn(ui::Form& window, std::string script) {
        std::filesystem::remove(folder() + "/QBLINK.LOG");
        if (script.starts_with("LOG\n")) {
            gpQBLink_Log_writing("a line");
            script.erase(0, 4);
        }
        return play(window, util::replaceAll(script, "COMPANY", companyFile()));
    }
};

// The buttons that are dead behind each action, and while it works. Behind an export the setup
// cannot be saved.
TEST_F(ButtonStates, followEveryActionOfTheMainWindow) {
    makeStore(0, 1);
    for (const auto& [given, script, dead, working] : tableRows<4>("windows/button_states.json")) {
        SCOPED_TRACE(given);
        frmSetup window;
        const Played played = playOn(window, script);
        EXPECT_EQ(played.dead, dead);
        EXPECT_EQ(played.working, working);
        EXPECT_EQ(played.printed.find("[refused]"), std::string::npos) << played.printed;
    }
}

/// A window of another kind; all of them stand on a store with a company file.
template <class Window>
std::unique_ptr<ui::Form> make() {
    return std::make_unique<Window>();
}

const std::map<std::string, std::unique_ptr<ui::Form> (*)()> kWindows = {
    {"FrmQuickSetUP", make<FrmQuickSetUP>},
    {"FrmSummaryExport", make<FrmSummaryExport>},
    {"FrmSelDate", make<FrmSelDate>},
    {"frmSMFILE_PATH", make<frmSMFILE_PATH>},
    {"frmSM_DATAPATH2", make<frmSM_DATAPATH2>},
    {"SafeDialog", make<SafeDialog>},
};

// The program may end in the window; `printed` is part of what the console said.
TEST_F(ButtonStates, followEveryActionOfTheOtherWindows) {
    makeStore(0, 1);
    gsQBFilePath = companyFile();
    gsFromDate = "1/5/2015";
    gsToDate = "1/5/2015";
    for (const auto& [given, name, script, dead, printed, ended] :
         tableRows<6>("windows/other_windows.json")) {
        SCOPED_TRACE(given);
        const std::unique_ptr<ui::Form> window = kWindows.at(name)();
        const Played played = playOn(*window, script);
        EXPECT_EQ(played.dead, dead);
        EXPECT_NE(played.printed.find(printed), std::string::npos) << played.printed;
        EXPECT_EQ(played.ended, ended == "yes");
        EXPECT_TRUE(window->isClosed());
    }
}

TEST_F(ButtonStates, theServerQuestionIsAnsweredByLetters) {
    for (const auto& [key, letter] : {std::pair{"r", "R"}, {"L", "L"}, {"x", "X"}}) {
        SafeDialog dialog;
        play(dialog, std::string("key ") + key);
        EXPECT_EQ(dialog.answer(), letter);
    }
}

}  // namespace
