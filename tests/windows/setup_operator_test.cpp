#include "core/brv_op.h"
#include "qb/smQB_Utilities.h"
#include "support/table_file.h"
#include "util/conversions.h"
#include "windows/window_operator.h"

namespace {

/// The main window with an operator at the console.
class SetupOperator : public testing_support::WindowOperator {
protected:
    /// What was printed, less the boxes, which are the company file's, and less customer and
    /// amount of each sale.
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

}  // namespace

TEST_F(SetupOperator, worksTheWindow) {
    makeStore(5, 1);
    for (const auto& [what, script, printed] :
         testing_support::tableRows<3>("windows/operator_scripts.json")) {
        SCOPED_TRACE(what);
        frmSetup window;
        const testing_support::Played played = play(window, script);
        EXPECT_TRUE(played.ended);
        EXPECT_EQ(shortened(played.printed), printed);
        EXPECT_EQ(gbQBReady, kNo);
    }
}
