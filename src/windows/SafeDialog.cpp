#include "windows/SafeDialog.h"

#include "core/brv_op.h"

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr ui::Control kControls[] = {
    {Kind::label, "Label1", kNoIndex, "Server not found. Check Server and Network Connections."},
    {Kind::button, "CmdRetry", kNoIndex, "Retry"},
    {Kind::button, "CmdLocal", kNoIndex, "Local"},
    {Kind::button, "cmdExit", kNoIndex, "Exit"},
};

/// Letter case of a key does not matter; a key without a row does nothing.
constexpr ui::Key kKeys[] = {
    {"R", "CmdRetry"},
    {"L", "CmdLocal"},
    {"X", "cmdExit"},
};

}  // namespace

SafeDialog::SafeDialog() : Form("SafeDialog", core::kApplicationTitle, kControls) {}

std::span<const ui::Key> SafeDialog::keys() const {
    return kKeys;
}

bool SafeDialog::dispatch(std::string_view name, ui::Signal signal) {
    static constexpr ui::Handler<SafeDialog> kHandlers[] = {
        {"CmdRetry", ui::Signal::click, &SafeDialog::onButton<'R'>},
        {"CmdLocal", ui::Signal::click, &SafeDialog::onButton<'L'>},
        {"cmdExit", ui::Signal::click, &SafeDialog::onButton<'X'>},
    };
    return ui::runHandler(*this, kHandlers, name, signal);
}
