#include "windows/frmSMFILE_PATH.h"

#include "core/brv_op.h"
#include "core/sm_files.h"
#include "platform/ports/platform.h"
#include "qb/request_cycle.h"
#include "util/conversions.h"

#include <algorithm>

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr char kFirstDrive[] = "C:";
constexpr char kFirstFolder[] = "C:\\";
constexpr char kRoot[] = "/";  ///< stands among the drives of a machine without drive letters
constexpr int kOkButton = 0;

constexpr ui::Control kControls[] = {
    {Kind::label, "lblPath", kNoIndex, "Path"},
    {Kind::textBox, "TxtPath", kNoIndex, ""},
    {Kind::dropDown, "drvBrowse", kNoIndex, ""},
    {Kind::dropDown, "dirBrowse", kNoIndex, ""},
    {Kind::dropDown, "fileBrowse", kNoIndex, ""},
    {Kind::textBox, "txtFileSpec", kNoIndex, ""},
    {Kind::label, "lblToolTip", kNoIndex, ""},
    {Kind::button, "cmdOkCancel", 0, "OK"},
    {Kind::button, "cmdOkCancel", 1, "Cancel"},
    {Kind::button, "cmdValidate", kNoIndex, "Validate"},
    {Kind::button, "cmdClear", kNoIndex, "Clear"},
    {Kind::button, "cmdHelp", kNoIndex, "F1 Help"},
};

constexpr ui::Key kKeys[] = {
    {"F1", "cmdHelp"},
    {"F10", "cmdOkCancel", 0},
    {"Esc", "cmdOkCancel", 1},
};

bool hasDrive(const std::string& path) {
    return path.size() >= 2 && path[1] == ':';
}

/// A folder's name as the lists show it: no separator at the end but for that of a root.
std::string folderName(std::string path) {
    while (path.size() > 1 && (path.back() == '\\' || path.back() == '/') &&
           !(hasDrive(path) && path.size() == 3)) {
        path.pop_back();
    }
    return path;
}

/// The folder and those around it, outermost first.
std::vector<std::string> folderChain(const std::string& folder) {
    std::vector<std::string> chain;
    for (std::size_t at = 0; at < folder.size(); ++at) {
        if (folder[at] == '\\' || folder[at] == '/') {
            chain.push_back(folderName(folder.substr(0, at + 1)));
        }
    }
    if (chain.empty() || chain.back() != folder) {
        chain.push_back(folder);
    }
    return chain;
}

bool isFolder(const std::string& path) {
    bool result = false;
    platform::ignoringErrors([&] { result = platform::files().folderExists(path); });
    return result;
}

/// Name of an entry of a folder, with the separator of the folder's own kind.
std::string entryName(const std::string& folder, const std::string& entry) {
    if (folder.ends_with('\\') || folder.ends_with('/')) {
        return folder + entry;
    }
    const bool isPlain = folder.find('\\') == std::string::npos && folder.starts_with('/');
    return folder + (isPlain ? "/" : "\\") + entry;
}

/// The folder, those around it and those in it.
std::vector<std::string> folderList(const std::string& folder) {
    std::vector<std::string> list = folderChain(folder);
    platform::ignoringErrors([&] {
        for (const std::string& name : platform::files().folders(folder)) {
            list.push_back(entryName(folder, name));
        }
    });
    return list;
}

std::vector<std::string> driveList(const std::string& current) {
    std::vector<std::string> drives = {kFirstDrive};
    if (isFolder(kRoot) && !isFolder(kFirstFolder)) {
        drives.emplace_back(kRoot);
    }
    for (char letter = 'D'; letter <= 'Z'; ++letter) {
        bool isThere = false;
        platform::ignoringErrors([&] {
            isThere = platform::files().driveRemote(letter).has_value();
        });
        const std::string drive = std::string(1, letter) + ":";
        if (isThere || util::sameName(drive, current)) {
            drives.push_back(drive);
        }
    }
    return drives;
}

std::vector<std::string> filesIn(const std::string& folder, const std::string& mask) {
    std::vector<std::string> files;
    // The suite's mask for all files takes those without a point as well.
    const std::string pattern = mask == "*.*" ? "*" : mask;
    platform::ignoringErrors([&] { files = platform::files().list(folder, pattern); });
    return files;
}

void showHelp() {
    core::showMessage(
        "A path names a folder, as C:\\KV, and may end in the name of a file in it.\r\n"
        "Type it, or pick drive, folder and file from the lists."
    );
}

}  // namespace

frmSMFILE_PATH::frmSMFILE_PATH() : Form("frmSMFILE_PATH", "Select Path", kControls) {}

std::span<const ui::Key> frmSMFILE_PATH::keys() const {
    return kKeys;
}

bool frmSMFILE_PATH::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<frmSMFILE_PATH> kHandlers[] = {
        {"frmSMFILE_PATH", Signal::load, &frmSMFILE_PATH::onLoad},
        {"drvBrowse", Signal::select, &frmSMFILE_PATH::onDrive},
        {"dirBrowse", Signal::select, &frmSMFILE_PATH::onFolder},
        {"fileBrowse", Signal::select, &frmSMFILE_PATH::onFile},
        {"fileBrowse", Signal::click, &frmSMFILE_PATH::onFileTwice},
        {"TxtPath", Signal::leave, &frmSMFILE_PATH::onPath},
        {"txtFileSpec", Signal::leave, &frmSMFILE_PATH::onMask},
        {"cmdOkCancel", Signal::click, &frmSMFILE_PATH::onOkCancel},
        {"cmdValidate", Signal::click, &frmSMFILE_PATH::onValidate},
        {"cmdClear", Signal::click, &frmSMFILE_PATH::onClear},
        {"cmdHelp", Signal::click, &frmSMFILE_PATH::perform<showHelp>},
    };
    bool handled = true;
    qb::onLanguageError(
        [&] { handled = ui::runHandler(*this, kHandlers, name, signal); },
        [](std::int32_t, const std::string& description) { core::showMessage(description); }
    );
    return handled;
}

void frmSMFILE_PATH::setPath(const std::string& path) {
    takePath(path);
}

void frmSMFILE_PATH::setMask(const std::string& mask) {
    mask_ = util::trim(mask).empty() ? "*.*" : util::trim(mask);
}

void frmSMFILE_PATH::setFileType(const std::string& fileType) {
    fileType_ = fileType;
}

std::string frmSMFILE_PATH::drive() const {
    return hasDrive(folder_) ? folder_.substr(0, 2) : kFirstDrive;
}

/// Takes a path apart: a folder that is there has no file, of anything else the last part is one.
void frmSMFILE_PATH::takePath(const std::string& path) {
    const std::size_t slash = path.find_last_of("\\/");
    file_.clear();
    if (util::trim(path).empty()) {
        folder_ = kFirstFolder;
    } else if (isFolder(path) || slash == path.size() - 1 || path.size() == 2) {
        folder_ = folderName(path.size() == 2 && hasDrive(path) ? path + "\\" : path);
    } else if (slash == std::string::npos) {
        file_ = path;
    } else {
        folder_ = folderName(path.substr(0, slash + 1));
        file_ = path.substr(slash + 1);
    }
}

std::string frmSMFILE_PATH::fullName() const {
    return file_.empty() ? folder_ : entryName(folder_, file_);
}

void frmSMFILE_PATH::fillList(
    const char* name, std::vector<std::string> items, const std::string& picked
) {
    ui::ControlState& list = control(name);
    list.items = std::move(items);
    list.text = picked;
    notify(list);
}

/// Brings all lists and the path to the folder and file at hand.
void frmSMFILE_PATH::showFolder() {
    fillList("drvBrowse", driveList(drive()), folder_.starts_with('/') ? kRoot : drive());
    fillList("dirBrowse", folderList(folder_), folder_);
    fillList("fileBrowse", filesIn(folder_, mask_), file_);
    setText("TxtPath", fullName());
}

void frmSMFILE_PATH::onLoad() {
    answer_.reset();
    setText("txtFileSpec", mask_);
    setCaption("lblToolTip", fileType_.empty() ? "" : "File type " + fileType_);
    showFolder();
}

void frmSMFILE_PATH::onDrive() {
    const std::string& picked = text("drvBrowse");
    takePath(picked == kRoot ? picked : picked + "\\");
    showFolder();
}

void frmSMFILE_PATH::onFolder() {
    if (text("dirBrowse").empty()) {
        return;
    }
    folder_ = folderName(text("dirBrowse"));
    file_.clear();
    showFolder();
}

void frmSMFILE_PATH::onFile() {
    file_ = text("fileBrowse");
    setText("TxtPath", fullName());
}

void frmSMFILE_PATH::onFileTwice() {
    if (!text("fileBrowse").empty()) {
        onFile();
        onValidate();
    }
}

void frmSMFILE_PATH::onPath() {
    if (text("TxtPath") != kClearMarker) {
        takePath(text("TxtPath"));
        showFolder();
    }
}

void frmSMFILE_PATH::onMask() {
    setMask(text("txtFileSpec"));
    setText("txtFileSpec", mask_);
    showFolder();
}

void frmSMFILE_PATH::onOkCancel() {
    if (raisedIndex() == kOkButton) {
        answer_ = text("TxtPath");
        if (*answer_ != kClearMarker) {
            takePath(*answer_);
        }
    }
    close();
}

void frmSMFILE_PATH::onValidate() {
    if (gfbFile_Exists(text("TxtPath")) == kNo) {
        core::showMessage("File Not Found");
    }
}

void frmSMFILE_PATH::onClear() {
    setText("TxtPath", kClearMarker);
}

namespace windows {

std::optional<std::string>
chooseCompanyFile(const std::string& label, const std::string& startFolder) {
    frmSMFILE_PATH browser;
    browser.setTitle("Select " + label);
    browser.setPath(startFolder);
    browser.setMask("*.qbw");
    browser.setFileType(".qbw");
    platform::desktop().showModal(browser);
    std::optional<std::string> file = browser.answer();
    if (file == frmSMFILE_PATH::kClearMarker) {
        return std::string();
    }
    if (file && !util::upper(*file).ends_with(".QBW")) {
        *file += ".qbw";
    }
    return file;
}

}  // namespace windows
