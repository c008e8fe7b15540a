#pragma once

#include "link_adapters.h"
#include "platform/qt/qt_desktop.h"

namespace app {

/// What the desktop asks of the link.
platform::QtHost desktopHost();

/// The adapters with the operator at the screen. A QApplication must exist.
class DesktopAdapters : public LinkAdapters<platform::QtDesktop> {
public:
    DesktopAdapters() : LinkAdapters(desktopHost()) {}
};

}  // namespace app
