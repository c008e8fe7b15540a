#include "windows/frmSM_DATAPATH2.h"

#include "config/clsDataPath.h"
#include "core/brv_op.h"
#include "platform/ports/platform.h"
#include "qb/request_cycle.h"
#include "util/conversions.h"
#include "windows/frmSMFILE_PATH.h"

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr int kStationPath = 0;
constexpr int kDataPath = 1;
constexpr int kStationLabel = 2;
constexpr int kOkButton = 0;
constexpr char kDefaultDataPath[] = "C:\\KV";

constexpr ui::Control kControls[] = {
    {Kind::frame, "Frame1", kNoIndex, ""},
    {Kind::label, "lblEdit", kStationLabel, "Station", ui::kPlain, "Frame1"},
    {Kind::dropDown, "cboEdit", kNoIndex, "", ui::kPlain, "Frame1"},
    {Kind::label, "lblEdit", kStationPath, "Station Path", ui::kPlain, "Frame1"},
    {Kind::textBox, "txtEdit", kStationPath, "", ui::kLocked, "Frame1"},
    {Kind::button, "cmdBrowse", kNoIndex, ". . .", ui::kDisabled, "Frame1"},
    {Kind::label, "lblEdit", kDataPath, "Data Path", ui::kPlain, "Frame1"},
    {Kind::textBox, "txtEdit", kDataPath, "", ui::kPlain, "Frame1"},
    {Kind::button, "cmdBrowsePath", kNoIndex, ". . .", ui::kPlain, "Frame1"},
    {Kind::checkBox, "chkNetwork", kNoIndex, "Network", ui::kPlain, "Frame1"},
    {Kind::checkBox, "ckTest", kNoIndex, "Training", ui::kPlain, "Frame1"},
    {Kind::button, "cmdOkCancel", 0, "OK"},
    {Kind::button, "cmdOkCancel", 1, "Cancel"},
    {Kind::button, "cmdHelp", kNoIndex, "F1 Help"},
};

constexpr ui::Key kKeys[] = {
    {"F1", "cmdHelp"},
    {"F10", "cmdOkCancel", 0},
    {"Esc", "cmdOkCancel", 1},
};

/// The control that `Validate` blames.
struct BlamedField {
    const char* fieldKey;
    const char* control;
    int index;
};

constexpr BlamedField kBlamedFields[] = {
    {"STATION", "cboEdit", kNoIndex},
    {"STATIONPATH", "txtEdit", kStationPath},
    {"DATAPATH", "txtEdit", kDataPath},
};

/// The folder that the operator chose, which need not be there yet; of a file, the folder around.
std::string folderOf(const std::string& answer, const frmSMFILE_PATH& browser) {
    if (answer == frmSMFILE_PATH::kClearMarker) {
        return {};
    }
    return platform::files().fileExists(answer) ? browser.folder() : answer;
}

std::string orElse(const std::string& text, const std::string& otherwise) {
    return util::trim(text).empty() ? otherwise : text;
}

void explainTraining() {
    core::showMessage(
        "Checking this box does not set up a traning directory or change your data path \r\n"
        "It is a manual switch that turns on or off the training flag on the main screen ",
        "Caution"
    );
}

void showHelp() {
    core::showMessage(
        "The data path is the folder that holds the files of the store, as C:\\KV.\r\n"
        "Every station of the store has a number of its own."
    );
}

}  // namespace

frmSM_DATAPATH2::frmSM_DATAPATH2() : Form("frmSM_DATAPATH2", "Set Data Path", kControls) {}

std::span<const ui::Key> frmSM_DATAPATH2::keys() const {
    return kKeys;
}

bool frmSM_DATAPATH2::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<frmSM_DATAPATH2> kHandlers[] = {
        {"frmSM_DATAPATH2", Signal::load, &frmSM_DATAPATH2::onLoad},
        {"frmSM_DATAPATH2", Signal::unload, &frmSM_DATAPATH2::onUnload},
        {"ckTest", Signal::click, &frmSM_DATAPATH2::perform<explainTraining>},
        {"cmdOkCancel", Signal::click, &frmSM_DATAPATH2::onOkCancel},
        {"cmdBrowsePath", Signal::click, &frmSM_DATAPATH2::onBrowseData},
        {"cmdBrowse", Signal::click, &frmSM_DATAPATH2::onBrowseStation},
        {"cmdHelp", Signal::click, &frmSM_DATAPATH2::perform<showHelp>},
    };
    bool handled = true;
    qb::onLanguageError(
        [&] { handled = ui::runHandler(*this, kHandlers, name, signal); },
        [](std::int32_t, const std::string& description) { core::showMessage(description); }
    );
    return handled;
}

void frmSM_DATAPATH2::onLoad() {
    ui::ControlState& stations = control("cboEdit");
    stations.items.clear();
    for (std::int64_t station = 1; station <= gDataPath.MaxStations; ++station) {
        stations.items.push_back(util::textOf(station));
    }
    stations.text = orElse(gDataPath.Station, gDataPath.DefaultStation);
    notify(stations);
    setEnabled("cboEdit", gDataPath.StationNumberEnabled != kNo);
    setCaption("lblEdit", gDataPath.StationLabel(), kStationLabel);
    setText("txtEdit", orElse(gDataPath.StationPath, gDataPath.DefaultStationPath), kStationPath);
    setEnabled("cmdBrowse", gDataPath.StationPathEnabled != kNo);
    const std::string offered = orElse(gDataPath.DefaultDataPath, kDefaultDataPath);
    setText("txtEdit", orElse(gDataPath.DataPath, offered), kDataPath);
    setOn("chkNetwork", gDataPath.Network != kNo);
}

void frmSM_DATAPATH2::onUnload() {
    if (!accepted_) {
        gDataPath.Cancelled = kYes;
    }
}

void frmSM_DATAPATH2::onOkCancel() {
    if (raisedIndex() == kOkButton) {
        accept();
    } else {
        close();
    }
}

void frmSM_DATAPATH2::accept() {
    gDataPath.Station = text("cboEdit");
    gDataPath.StationPath = text("txtEdit", kStationPath);
    gDataPath.DataPath = text("txtEdit", kDataPath);
    gDataPath.Network = legacyBool(isOn("chkNetwork"));
    gDataPath.Validate();
    if (gDataPath.Valid() != kNo) {
        gDataPath.Save();
        accepted_ = true;
        close();
        return;
    }
    setText("cboEdit", gDataPath.Station);
    for (const BlamedField& field : kBlamedFields) {
        if (gDataPath.FieldKey() == field.fieldKey) {
            setFocus(field.control, field.index);
        }
    }
}

void frmSM_DATAPATH2::onBrowseData() {
    browse(kDataPath);
}

void frmSM_DATAPATH2::onBrowseStation() {
    browse(kStationPath);
}

void frmSM_DATAPATH2::browse(int field) {
    qb::onLanguageError(
        [&] {
            frmSMFILE_PATH browser;
            browser.setTitle("Select " + control("lblEdit", field).caption);
            browser.setPath(text("txtEdit", field));
            platform::desktop().showModal(browser);
            if (browser.answer()) {
                setText("txtEdit", folderOf(*browser.answer(), browser), field);
            }
        },
        [](std::int32_t, const std::string&) { core::showMessage("Unexpected Error"); }
    );
}

namespace windows {

void offerDataPathWindow() {
    config::dataPathWindow() = [] {
        frmSM_DATAPATH2 window;
        platform::desktop().showModal(window);
    };
}

}  // namespace windows
