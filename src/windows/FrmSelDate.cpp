#include "windows/FrmSelDate.h"

#include "core/brv_op.h"
#include "qb/request_cycle.h"

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr ui::Control kControls[] = {
    {Kind::label, "Label1", kNoIndex, "Quick Books Summary Export"},
    {Kind::label, "Label2", kNoIndex, "Date Range:"},
    {Kind::datePicker, "DTPicker1", 0, ""},
    {Kind::datePicker, "DTPicker1", 1, ""},
    {Kind::label, "Label4", kNoIndex, "Starting Invoice:"},
    {Kind::textBox, "TxtInvoice", kNoIndex, ""},
    {Kind::button, "cmdAccept", kNoIndex, "Accept"},
    {Kind::button, "cmdExit", kNoIndex, "Esc/Exit"},
};

constexpr ui::Key kKeys[] = {{"Esc", "cmdExit"}};

}  // namespace

FrmSelDate::FrmSelDate() : Form("FrmSelDate", core::kApplicationTitle, kControls) {}

std::span<const ui::Key> FrmSelDate::keys() const {
    return kKeys;
}

bool FrmSelDate::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<FrmSelDate> kHandlers[] = {
        {"FrmSelDate", Signal::load, &FrmSelDate::onLoad},
        {"DTPicker1", Signal::change, &FrmSelDate::onPickDate},
        {"cmdAccept", Signal::click, &FrmSelDate::onAccept},
        {"cmdExit", Signal::click, &FrmSelDate::onExit},
    };
    bool handled = true;
    qb::onLanguageError(
        [&] { handled = ui::runHandler(*this, kHandlers, name, signal); },
        [](std::int32_t, const std::string& description) { core::showMessage(description); }
    );
    return handled;
}

void FrmSelDate::onLoad() {
    days_.show();
}

void FrmSelDate::onPickDate() {
    days_.normalise();
}

void FrmSelDate::onAccept() {
    days_.accept();
    lastSale_ = windows::lastPostedSale();
    close();
}

void FrmSelDate::onExit() {
    close();
}
