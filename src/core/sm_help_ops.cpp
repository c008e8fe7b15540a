#include "core/sm_help_ops.h"

#include "platform/ports/platform.h"

namespace {

constexpr char kGuidesAddress[] = "https://guides.brevane.example/";

}  // namespace

void gpHelp_guides_open() {
    platform::ignoringErrors([] { platform::desktop().openDocument(kGuidesAddress); });
}
