#include "core/brv_op.h"
#include "platform/console/console_desktop.h"
#include "platform/ports/platform.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"
#include "windows/setup_fixture.h"

#include <sstream>

namespace {

/// The main window with an operator at the console.
class SetupOperator : public testing_support::SetupTest {
protected:
    /// Plays a script to the end of the program. @return what was printed, less the boxes, which
    /// are the company file's, and less customer and amount of each sale.
    std::string play(const std::string& script) {
        std::istringstream in(script);
        std::ostringstream out;
        platform::ConsoleDesktop console(in, out);
        platform::current().desktop = &console;
        frmSetup window;
        EXPECT_THROW(console.showModal(window), platform::ProgramEnd);
        platform::current().desktop = &desktop;
        return shortened(out.str());
    }

private:
    static std::string shortened(const std::string& printed) {
        std::string kept;
        for (const std::string& line : util::split(printed, '\n')) {
            if (line.starts_with("[box]") || line.empty()) {
                continue;
            }
            constexpr std::string_view kSale = "[status] 20150105 0001001";
            const bool isSale = line.starts_with(kSale.substr(0, 13));
            kept += (isSale ? line.substr(0, kSale.size()) : line) + "\n";
        }
        return kept;
    }
};

struct OperatorCase {
    const char* what;
    const char* script;
    const char* printed;
};

constexpr OperatorCase kScripts[] = {
    {"the end of the input leaves as by Exit", "", ""},
    {"Exit leaves at once", "click cmdAcceptCancel(1)\nshow LblStatus", ""},
    {"so does the menu", "menu mnuExit\nshow LblStatus", ""},
    {"Stop and the hidden pages cannot be reached before their time",
     "key F7\ncheck chkExport(0)\nclick CmdManual\nset txtLastPostedPO 20150101",
     "[refused] key F7: no control that is enabled and visible\n"
     "[refused] check chkExport(0): hidden\n[refused] click CmdManual: hidden\n"
     "[refused] set txtLastPostedPO: locked\n"},
    {"the setup is saved once",
     "key F10\nkey F10\nshow cmdAcceptCancel(0)",
     "[refused] key F10: no control that is enabled and visible\n"
     "[control] cmdAcceptCancel(0) button \"Save Setting\" disabled visible\n"},
    {"F8 runs the manual export while that button stands",
     "click cmdRun(2)\ncheck chkManual\nset txtDateManual never\nkey F8\nshow CmdManual",
     "[control] CmdManual button \"Manual Export\" enabled visible\n"},
    {"an account is picked in the grid",
     "cell fgrdList 1 1\nshow cboAcct\nselect cboAcct Petty Cash\nshow cboAcct",
     "[control] cboAcct dropDown \"\" enabled visible\n"
     "[control] cboAcct dropDown \"Petty Cash\" enabled hidden\n"},
    {"an export is stopped after its third text",
     "check chkExport(3)\nstop after 3\nkey F8\nshow cmdStop",
     "[status] Importing Sales Files...\n[status] 20150105 0001001\n"
     "[status] 20150105 0001002\n[status] Exporting Sales Cancelled\n"
     "[control] cmdStop button \"Stop\" disabled visible\n"},
};

}  // namespace

TEST_F(SetupOperator, worksTheWindow) {
    makeStore(5, 1);
    for (const OperatorCase& row : kScripts) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(
            play(row.script), "[window] frmSetup \"NUV Brevane\"\n" + std::string(row.printed)
        );
        EXPECT_EQ(gbQBReady, kNo);
    }
}
