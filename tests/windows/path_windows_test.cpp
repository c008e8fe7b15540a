#include "config/clsDataPath.h"
#include "config/nuvDataPath_Ops.h"
#include "platform/ports/platform.h"
#include "windows/SafeDialog.h"
#include "windows/expected_controls.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/frmSM_DATAPATH2.h"
#include "windows/setup_fixture.h"

#include <algorithm>
#include <fstream>

namespace {

using testing_support::LinkFixture;
using Names = std::vector<std::string>;

class PathWindows : public LinkFixture {
protected:
    void SetUp() override {
        std::filesystem::create_directories(folder() + "/shop/books");
        for (const char* name : {"one.qbw", "two.qbw", "notes.txt", "plain"}) {
            std::ofstream(folder() + "/shop/" + name) << "x";
        }
        gDataPath.AppLabel = config::kAppLabel;
        gDataPath.DefaultStation = "1";
        gDataPath.StationNumberEnabled = kYes;
    }
    [[nodiscard]] std::string shop() const { return folder() + "/shop"; }
    static void press(ui::Form& window, const char* name, int index = ui::kNoIndex) {
        window.raise(name, ui::Signal::click, index);
    }
    /// Picks an entry that the list must hold.
    static void select(ui::Form& window, const char* name, const std::string& entry) {
        const Names& items = window.control(name).items;
        EXPECT_NE(std::find(items.begin(), items.end(), entry), items.end()) << entry;
        window.setText(name, entry);
        window.raise(name, ui::Signal::select);
    }
    void show(ui::Form& window, const std::function<void(ui::Form&)>& script) {
        desktop.boxes.clear();
        desktop.onForm[window.name()] = script;
        desktop.showModal(window);
    }
    [[nodiscard]] std::string box() const {
        return desktop.boxes.empty() ? "" : desktop.boxes.back().text;
    }
};

TEST_F(PathWindows, holdTheirControlsInTheirStartState) {
    frmSM_DATAPATH2 dataPath;
    frmSMFILE_PATH browser;
    SafeDialog safe;
    for (ui::Form* window : std::initializer_list<ui::Form*>{&dataPath, &browser, &safe}) {
        testing_support::expectControls(*window);
    }
}

TEST_F(PathWindows, aPathIsTakenApart) {
    struct PathCase {
        const char* given;
        std::string path;
        std::string drive;
        std::string folder;
        std::string file;
    };
    const PathCase kPaths[] = {
        {"nothing", "", "C:", "C:\\", ""},
        {"a drive", "D:", "D:", "D:\\", ""},
        {"a root", "D:\\", "D:", "D:\\", ""},
        {"a file in a root", "C:\\a.qbw", "C:", "C:\\", "a.qbw"},
        {"a file in a folder", "C:\\KV\\a.qbw", "C:", "C:\\KV", "a.qbw"},
        {"a folder by its last sign", "C:\\KV\\", "C:", "C:\\KV", ""},
        {"a folder that is there", shop(), "C:", shop(), ""},
        {"a file of this machine", shop() + "/one.qbw", "C:", shop(), "one.qbw"},
        {"a bare name", "a.qbw", "C:", "C:\\", "a.qbw"},
        {"a remote folder", "\\\\server\\share\\a.qbw", "C:", "\\\\server\\share", "a.qbw"},
    };
    for (const PathCase& row : kPaths) {
        SCOPED_TRACE(row.given);
        frmSMFILE_PATH browser;
        browser.setPath(row.path);
        EXPECT_EQ(browser.drive(), row.drive);
        EXPECT_EQ(browser.folder(), row.folder);
        EXPECT_EQ(browser.file(), row.file);
    }
}

TEST_F(PathWindows, theListsOfTheBrowserFollowEachOther) {
    frmSMFILE_PATH browser;
    browser.setPath(shop() + "/one.qbw");
    browser.setMask("*.qbw");
    show(browser, [&](ui::Form&) {
        EXPECT_EQ(browser.control("fileBrowse").items, (Names{"one.qbw", "two.qbw"}));
        EXPECT_EQ(browser.text("dirBrowse"), shop());
        EXPECT_EQ(browser.text("TxtPath"), shop() + "/one.qbw");

        select(browser, "fileBrowse", "two.qbw");
        EXPECT_EQ(browser.text("TxtPath"), shop() + "/two.qbw");

        browser.setText("txtFileSpec", " ");
        browser.raise("txtFileSpec", ui::Signal::leave);
        EXPECT_EQ(browser.text("txtFileSpec"), "*.*");
        EXPECT_EQ(
            browser.control("fileBrowse").items, (Names{"notes.txt", "one.qbw", "plain", "two.qbw"})
        );

        // The folders around the one at hand, that one, and those in it.
        const Names folders = browser.control("dirBrowse").items;
        ASSERT_GT(folders.size(), 3U);
        EXPECT_EQ(folders.front(), "/");
        const Names last(folders.end() - 3, folders.end());
        EXPECT_EQ(last, (Names{folder(), shop(), shop() + "/books"}));
        select(browser, "dirBrowse", folder());
        EXPECT_EQ(browser.text("TxtPath"), folder());
        select(browser, "dirBrowse", shop());
        select(browser, "dirBrowse", shop() + "/books");
        EXPECT_EQ(browser.text("TxtPath"), shop() + "/books");
        EXPECT_TRUE(browser.control("fileBrowse").items.empty());

        browser.setText("TxtPath", shop() + "/two.qbw");
        browser.raise("TxtPath", ui::Signal::leave);
        EXPECT_EQ(browser.text("dirBrowse"), shop());
        EXPECT_EQ(browser.text("fileBrowse"), "two.qbw");

        // A machine without drive letters offers its root beside the drive of the suite.
        EXPECT_EQ(browser.control("drvBrowse").items, (Names{"C:", "/"}));
        EXPECT_EQ(browser.text("drvBrowse"), "/");
        select(browser, "drvBrowse", "C:");
        EXPECT_EQ(browser.text("dirBrowse"), "C:\\");
        EXPECT_EQ(browser.text("TxtPath"), "C:\\");
        select(browser, "drvBrowse", "/");
        EXPECT_EQ(browser.text("TxtPath"), "/");
        EXPECT_GT(browser.control("dirBrowse").items.size(), 1U);
    });
}

TEST_F(PathWindows, theBrowserAnswers) {
    struct AnswerCase {
        const char* given;
        std::string typed;
        const char* button;
        int index;
        const char* box;
        std::optional<std::string> answer;
    };
    const AnswerCase kAnswers[] = {
        {"OK", shop() + "/new.qbw", "cmdOkCancel", 0, "", shop() + "/new.qbw"},
        {"Cancel", shop() + "/new.qbw", "cmdOkCancel", 1, "", std::nullopt},
        {"a file that is not there",
         shop() + "/new.qbw",
         "cmdValidate",
         ui::kNoIndex,
         "File Not Found",
         shop() + "/new.qbw"},
        {"a file that is there",
         shop() + "/two.qbw",
         "cmdValidate",
         ui::kNoIndex,
         "",
         shop() + "/two.qbw"},
        {"the marker", shop(), "cmdClear", ui::kNoIndex, "", "#clear#"},
    };
    for (const AnswerCase& row : kAnswers) {
        SCOPED_TRACE(row.given);
        frmSMFILE_PATH browser;
        show(browser, [&](ui::Form&) {
            browser.setText("TxtPath", row.typed);
            press(browser, row.button, row.index);
            EXPECT_EQ(box(), row.box);
            if (row.index == ui::kNoIndex) {
                EXPECT_FALSE(browser.isClosed());
                press(browser, "cmdOkCancel", 0);
            }
        });
        EXPECT_EQ(browser.answer(), row.answer);
    }
    // A double click tests the file as well.
    frmSMFILE_PATH browser;
    browser.setPath(shop() + "/one.qbw");
    show(browser, [&](ui::Form&) {
        press(browser, "fileBrowse");
        EXPECT_EQ(box(), "");
        std::filesystem::remove(shop() + "/one.qbw");
        press(browser, "fileBrowse");
        EXPECT_EQ(box(), "File Not Found");
    });
}

TEST_F(PathWindows, theDataPathIsStoredWhenItIsValid) {
    struct OkCase {
        const char* given;
        std::string path;
        const char* station;
        const char* checkFile;
        bool create;
        const char* box;
        ui::Focus focus;  ///< none: stored and closed
    };
    const OkCase kCases[] = {
        {"a folder", shop(), "2", "", false, "", {}},
        {"a folder that is not there",
         folder() + "/none",
         "2",
         "",
         false,
         "Data Path Not Found.\r\n\r\nUse the Browse method to find a valid path.",
         {"txtEdit", 1}},
        {"a folder that may be made",
         folder() + "/made",
         "2",
         "",
         true,
         "Data Path Does Not Exist\r\n\r\nDo you want to create it?",
         {}},
        {"a folder without the store's file",
         shop(),
         "2",
         "main.dat",
         false,
         "Primary Data File Not Found.\r\n\r\nThere is no 'main.dat' file in the specified data "
         "path.",
         {"txtEdit", 1}},
        {"a station that there is not",
         shop(),
         "77",
         "",
         false,
         "Station 77 Not Valid.\r\n\r\nSelect a Station from 1 to 50.",
         {"cboEdit"}},
    };
    for (const OkCase& row : kCases) {
        SCOPED_TRACE(row.given);
        gDataPath.DataPath = "stored before";
        gDataPath.AppLabel = config::kAppLabel;
        gDataPath.CheckFile = row.checkFile;
        gDataPath.CreatePath = legacyBool(row.create);
        gDataPath.Cancelled = kNo;
        platform::settings().save(config::kAppLabel, "DATABASE", "DATAPATH", "none");
        frmSM_DATAPATH2 window;
        show(window, [&](ui::Form&) {
            window.setText("cboEdit", row.station);
            window.setText("txtEdit", row.path, 1);
            window.setOn("chkNetwork", true);
            press(window, "cmdOkCancel", 0);
            EXPECT_EQ(box(), row.box);
            EXPECT_EQ(window.isClosed(), row.focus.name.empty());
            EXPECT_EQ(window.focus(), row.focus) << window.focus().index;
        });
        const bool isStored = row.focus.name.empty();
        EXPECT_EQ(gDataPath.Cancelled, legacyBool(!isStored));
        const auto stored = [](const char* key) {
            return platform::settings().get(config::kAppLabel, "DATABASE", key, "");
        };
        EXPECT_EQ(stored("DATAPATH"), isStored ? row.path : "none");
        if (isStored) {
            EXPECT_EQ(stored("STATION"), row.station);
            EXPECT_EQ(stored("NETWORK"), "True");
        }
    }
}

TEST_F(PathWindows, theDataPathWindowOffersAndBrowses) {
    frmSM_DATAPATH2 window;
    show(window, [&](ui::Form&) {
        EXPECT_EQ(window.text("txtEdit", 1), "C:\\KV");
        EXPECT_EQ(window.control("cboEdit").items.size(), 50U);
        EXPECT_EQ(window.text("cboEdit"), "1");
        EXPECT_TRUE(window.control("txtEdit", 0).locked);
        std::string before = "C:\\KV";
        for (const auto& [chosen, taken] :
             {std::pair{shop(), shop()},
              std::pair{shop() + "/notes.txt", shop()},
              std::pair{shop() + "/new", shop() + "/new"}}) {
            desktop.onForm["frmSMFILE_PATH"] = [&](ui::Form& browser) {
                EXPECT_EQ(browser.text("TxtPath"), before);
                browser.setText("TxtPath", chosen);
                press(browser, "cmdOkCancel", 0);
            };
            press(window, "cmdBrowsePath");
            EXPECT_EQ(window.text("txtEdit", 1), taken);
            before = taken;
        }
        desktop.onForm["frmSMFILE_PATH"] = [](ui::Form& browser) {
            press(browser, "cmdClear");
            press(browser, "cmdOkCancel", 0);
        };
        press(window, "cmdBrowsePath");
        EXPECT_EQ(window.text("txtEdit", 1), "");
        desktop.onForm["frmSMFILE_PATH"] = [](ui::Form&) {
            throw platform::PlatformError(76, "Path not found");
        };
        press(window, "cmdBrowsePath");
        EXPECT_EQ(box(), "Unexpected Error");
        press(window, "ckTest");
        EXPECT_EQ(desktop.boxes.back().title, "Caution");
        press(window, "cmdOkCancel", 1);
    });
    EXPECT_EQ(gDataPath.Cancelled, kYes);
    EXPECT_EQ(gDataPath.DataPath, "");
}

/// What the operator does with an undefined path, and whether the program has one then.
TEST_F(PathWindows, aStartWithoutADataPathAsksForOne) {
    struct AskCase {
        const char* given;
        platform::BoxAnswer answer;
        int button;
        LegacyBool defined;
    };
    constexpr AskCase kCases[] = {
        {"No", platform::BoxAnswer::no, 0, kNo},
        {"Yes, then Cancel", platform::BoxAnswer::yes, 1, kNo},
        {"Yes, then OK", platform::BoxAnswer::yes, 0, kYes},
    };
    windows::offerDataPathWindow();
    for (const AskCase& row : kCases) {
        SCOPED_TRACE(row.given);
        desktop.otherwise = row.answer;
        desktop.onForm["frmSM_DATAPATH2"] = [&](ui::Form& window) {
            window.setText("txtEdit", shop(), 1);
            press(window, "cmdOkCancel", row.button);
        };
        EXPECT_EQ(gfbNUV_DataPath_open(kYes, 0, ""), row.defined);
        EXPECT_EQ(gDataPath.DataPath, row.defined == kYes ? shop() : "");
    }
}

TEST_F(PathWindows, theServerQuestionGivesALetter) {
    for (const auto& [button, letter] :
         {std::pair{"CmdRetry", "R"}, std::pair{"CmdLocal", "L"}, std::pair{"cmdExit", "X"}}) {
        SafeDialog dialog;
        show(dialog, [name = button](ui::Form& form) { press(form, name); });
        EXPECT_TRUE(dialog.isClosed());
        EXPECT_EQ(dialog.answer(), letter);
    }
}

}  // namespace
