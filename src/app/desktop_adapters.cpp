#include "desktop_adapters.h"

#include "db/nuvDBSM_Common.h"
#include "platform/system/file_names.h"

namespace app {

platform::QtHost desktopHost() {
    platform::QtHost result;
    result.nativeName = [](const std::string& name) { return platform::nativeName(name); };
    result.dayFirst = [] { return gCommon.USEurope.view() == "E"; };
    return result;
}

}  // namespace app
