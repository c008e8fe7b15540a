#include "windows/account_table.h"

#include "core/brvDBSM_Interface.h"
#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/NuvDBSM_TenderTypes.h"

#include <vector>

namespace windows {

void buildAccountTable() {
    std::vector<core::TenderRow> tenders;
    if (gfbTenderTypes_ReadAll() != kNo) {
        while (!db::atEnd(db::tableTenderTypes)) {
            db_pRecord_fromRow(db::tableTenderTypes);
            tenders.push_back(
                {static_cast<std::int16_t>(gTenderTypes.TenderID),
                 gTenderTypes.TenderType,
                 gTenderTypes.Description.str()}
            );
            db::moveNext(db::tableTenderTypes);
        }
    }
    core::buildAccountTable(tenders);
}

}  // namespace windows
