#include "app/configuration/frmDataConfiguration.h"

#include "platform/ports/platform.h"
#include "util/conversions.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/login_windows.h"

#include <algorithm>
#include <utility>

namespace app {

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr char kTitle[] = "NUV Data Configuration";
constexpr char kDefaultUser[] = "qz";
constexpr int kOkButton = 0;

constexpr ui::Control kControls[] = {
    {Kind::optionButton, "optStore", 0, "Sample store"},
    {Kind::optionButton, "optStore", 1, "Embedded store"},
    {Kind::optionButton, "optStore", 2, "Server"},
    {Kind::textBox, "txtFolder", kNoIndex, "Data Folder"},
    {Kind::button, "cmdBrowse", kNoIndex, "Browse"},
    {Kind::frame, "fraSample", kNoIndex, "Sample store", ui::kHidden},
    {Kind::label,
     "lblSample",
     kNoIndex,
     "OK makes the tables of a shop, a mapping and a company file in the data folder.",
     ui::kPlain,
     "fraSample"},
    {Kind::frame, "fraEmbedded", kNoIndex, "Embedded store"},
    {Kind::dropDown, "cboCatalog", kNoIndex, "Catalog", ui::kPlain, "fraEmbedded"},
    {Kind::frame, "fraServer", kNoIndex, "Server", ui::kHidden},
    {Kind::textBox, "txtServer", kNoIndex, "Host\\Instance", ui::kPlain, "fraServer"},
    {Kind::textBox, "txtPort", kNoIndex, "Port", ui::kPlain, "fraServer"},
    {Kind::textBox, "txtDriver", kNoIndex, "Driver", ui::kPlain, "fraServer"},
    {Kind::textBox, "txtCatalog", kNoIndex, "Catalog", ui::kPlain, "fraServer"},
    {Kind::textBox, "txtUser", kNoIndex, "User", ui::kPlain, "fraServer"},
    {Kind::passwordBox, "txtPassword", kNoIndex, "Password", ui::kPlain, "fraServer"},
    {Kind::button, "cmdTest", kNoIndex, "Test"},
    {Kind::button, "cmdHelp", kNoIndex, "F1 Help"},
    {Kind::button, "cmdOkCancel", 0, "OK"},
    {Kind::button, "cmdOkCancel", 1, "Cancel"},
    {Kind::label, "LblStatus", kNoIndex, ""},
};

constexpr ui::Key kKeys[] = {
    {"F1", "cmdHelp"},
    {"F5", "cmdTest"},
    {"F10", "cmdOkCancel", 0},
    {"Esc", "cmdOkCancel", 1},
};

/// Frame of each kind of store, in the order of StoreKind.
constexpr const char* kFrames[] = {"fraSample", "fraEmbedded", "fraServer"};

/// Fields that hold a text of the choice as it stands.
struct Field {
    const char* control;
    std::string StoreChoice::*text;
};
constexpr Field kFields[] = {
    {"txtFolder", &StoreChoice::folder},
    {"txtServer", &StoreChoice::server},
    {"txtPort", &StoreChoice::port},
    {"txtDriver", &StoreChoice::driver},
    {"txtCatalog", &StoreChoice::catalog},
    {"txtUser", &StoreChoice::user},
    {"txtPassword", &StoreChoice::password},
};

constexpr char kHelp[] =
    "Sample store: a shop with a week of sales, to try the program.\r\n"
    "Embedded store: the tables lie in a file of the data folder.\r\n"
    "Server: the tables lie on a database server; the data folder holds the link's own files.\r\n"
    "\r\n"
    "Test opens the store and says what it finds. OK tests once more and saves.";

platform::BoxAnswer
say(const std::string& text, platform::BoxButtons buttons, platform::BoxIcon icon) {
    return platform::desktop().messageBox(text, kTitle, buttons, icon);
}

void showHelp() {
    say(kHelp, platform::BoxButtons::ok, platform::BoxIcon::information);
}

/// The text up to its first line break.
std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\r'));
}

}  // namespace

frmDataConfiguration::frmDataConfiguration(ConfigurationStart start)
    : Form("frmDataConfiguration", kTitle, kControls),
      start_(std::move(start)) {}

std::span<const ui::Key> frmDataConfiguration::keys() const {
    return kKeys;
}

bool frmDataConfiguration::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<frmDataConfiguration> kHandlers[] = {
        {"frmDataConfiguration", Signal::load, &frmDataConfiguration::onLoad},
        {"frmDataConfiguration", Signal::unload, &frmDataConfiguration::onUnload},
        {"optStore", Signal::click, &frmDataConfiguration::onKind},
        {"txtFolder", Signal::leave, &frmDataConfiguration::onFolderLeft},
        {"cmdBrowse", Signal::click, &frmDataConfiguration::onBrowse},
        {"cmdTest", Signal::click, &frmDataConfiguration::onTest},
        {"cmdOkCancel", Signal::click, &frmDataConfiguration::onOkCancel},
        {"cmdHelp", Signal::click, &frmDataConfiguration::perform<showHelp>},
    };
    try {
        return ui::runHandler(*this, kHandlers, name, signal);
    } catch (const platform::PlatformError& error) {
        say(error.description(), platform::BoxButtons::ok, platform::BoxIcon::error);
        return true;
    }
}

void frmDataConfiguration::onLoad() {
    StoreChoice known = readChoice(platform::settings());
    const bool isFirst = known.server.empty() && known.catalog.empty();
    if (known.folder.empty()) {
        known.folder = start_.sampleFolder;
    }
    if (known.user.empty()) {
        known.user = kDefaultUser;
    }
    for (const Field& field : kFields) {
        setText(field.control, known.*field.text);
    }
    setLocked("txtFolder", start_.folderIsFixed);
    setEnabled("cmdBrowse", !start_.folderIsFixed);
    fillCatalogs(known.catalog);
    const bool isEmpty = isFirst && catalogsIn(known.folder).empty();
    showKind(isEmpty ? StoreKind::sample : known.kind);
    showStatus(
        start_.folderIsFixed ? "Brevane is starting with this data folder."
                             : "Where are the tables of the store?"
    );
}

/// What was typed does not outlive the window.
void frmDataConfiguration::onUnload() {
    windows::wipeField(*this, "txtPassword");
}

StoreKind frmDataConfiguration::kind() {
    for (int index = 0; index < static_cast<int>(std::size(kFrames)); ++index) {
        if (isOn("optStore", index)) {
            return static_cast<StoreKind>(index);
        }
    }
    return StoreKind::embedded;
}

void frmDataConfiguration::showKind(StoreKind kind) {
    for (int index = 0; index < static_cast<int>(std::size(kFrames)); ++index) {
        const bool isIt = index == static_cast<int>(kind);
        setOn("optStore", isIt, index);
        setVisible(kFrames[index], isIt);
    }
}

void frmDataConfiguration::onKind() {
    showKind(kind());
    showStatus("");
}

void frmDataConfiguration::onFolderLeft() {
    fillCatalogs(text("cboCatalog"));
}

/// The list of the catalogs in the data folder; the one that was picked stays, if it is there.
void frmDataConfiguration::fillCatalogs(const std::string& picked) {
    ui::ControlState& list = control("cboCatalog");
    list.items = catalogsIn(util::trim(text("txtFolder")));
    const auto found = std::find_if(list.items.begin(), list.items.end(), [&](const auto& name) {
        return util::sameName(name, picked);
    });
    list.text.clear();
    if (!list.items.empty()) {
        list.text = found == list.items.end() ? list.items.front() : *found;
    }
    notify(list);
}

void frmDataConfiguration::onBrowse() {
    frmSMFILE_PATH browser;
    browser.setTitle("Select Data Folder");
    browser.setPath(text("txtFolder"));
    platform::desktop().showModal(browser);
    if (browser.answer() && *browser.answer() != frmSMFILE_PATH::kClearMarker) {
        const std::string& picked = *browser.answer();  // may be a folder that is not there yet
        setText("txtFolder", platform::files().fileExists(picked) ? browser.folder() : picked);
        fillCatalogs(text("cboCatalog"));
    }
}

StoreChoice frmDataConfiguration::choice() {
    StoreChoice result;
    for (const Field& field : kFields) {
        result.*field.text = util::trim(text(field.control));
    }
    result.kind = kind();
    if (result.kind != StoreKind::server) {
        fillCatalogs(text("cboCatalog"));  // the folder may have been typed a moment ago
        result.catalog = text("cboCatalog");
    }
    return result;
}

void frmDataConfiguration::showStatus(const std::string& text) {
    setText("LblStatus", text);
    platform::desktop().pendingEvents();
}

Finding frmDataConfiguration::trial() {
    showStatus("Opening the store...");
    platform::desktop().setBusyCursor(true);
    Finding finding = tryStore(choice());
    platform::desktop().setBusyCursor(false);
    showStatus(firstLine(finding.text));
    return finding;
}

void frmDataConfiguration::onTest() {
    if (kind() == StoreKind::sample && choice().catalog.empty()) {
        showStatus("There is no store yet; OK makes it.");
        return;
    }
    const Finding finding = trial();
    say(finding.text,
        platform::BoxButtons::ok,
        finding.good ? platform::BoxIcon::information : platform::BoxIcon::exclamation);
}

void frmDataConfiguration::onOkCancel() {
    if (raisedIndex() == kOkButton) {
        accept();
    } else {
        close();
    }
}

/// Makes the sample store when there is none, opens the store, and saves. A store that does not
/// open is saved only when the operator wants it so: the server may be down today.
void frmDataConfiguration::accept() {
    if (kind() == StoreKind::sample && choice().catalog.empty()) {
        showStatus("Making the sample store...");
        platform::desktop().setBusyCursor(true);
        const Finding made = makeSample(choice().folder, start_.sample);
        platform::desktop().setBusyCursor(false);
        if (!made.good) {
            showStatus(firstLine(made.text));
            say(made.text, platform::BoxButtons::ok, platform::BoxIcon::exclamation);
            return;
        }
    }
    const Finding finding = trial();
    if (!finding.good && say(finding.text + "\r\n\r\nSave it all the same?",
                             platform::BoxButtons::yesNo,
                             platform::BoxIcon::question) != platform::BoxAnswer::yes) {
        return;
    }
    save(choice());
}

void frmDataConfiguration::save(const StoreChoice& choice) {
    writeChoice(choice, platform::settings());
    saved_ = true;
    close();
}

}  // namespace app
