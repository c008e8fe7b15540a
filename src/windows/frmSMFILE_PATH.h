#pragma once

#include "ui/form.h"

#include <optional>
#include <string>

/// The browser for files and folders: drive, folder and file lists that follow each other, and a
/// field for a typed path. The list of folders holds the folder at hand, those around it and those
/// in it. The caller sets path, mask, title and file type, shows the window modal,
/// and reads the answer.
class frmSMFILE_PATH : public ui::Form {
public:
    frmSMFILE_PATH();
    [[nodiscard]] std::span<const ui::Key> keys() const override;

    /// What `cmdClear` leaves as the answer.
    static constexpr char kClearMarker[] = "#clear#";

    /// Where to begin: a folder, or a file in its folder; empty: "C:\".
    void setPath(const std::string& path);
    /// Which files are listed; empty: "*.*".
    void setMask(const std::string& mask);
    /// Extension, as ".qbw", that the window tells the operator about.
    void setFileType(const std::string& fileType);

    /// The path in the field when OK was pressed, or the marker; nothing when cancelled.
    [[nodiscard]] const std::optional<std::string>& answer() const { return answer_; }
    /// Drive, as "C:" (also for a path without one), folder without a backslash at its end but for
    /// "C:\", and file of the field.
    [[nodiscard]] std::string drive() const;
    [[nodiscard]] const std::string& folder() const { return folder_; }
    [[nodiscard]] const std::string& file() const { return file_; }

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;

private:
    /// A handler that needs nothing of the window.
    template <void (*Run)()>
    void perform() {
        Run();
    }

    void onLoad();
    void onDrive();
    void onFolder();
    void onFile();
    void onFileTwice();
    void onPath();
    void onMask();
    void onOkCancel();
    void onValidate();
    void onClear();

    void takePath(const std::string& path);
    void showFolder();
    void fillList(const char* name, std::vector<std::string> items, const std::string& picked);
    [[nodiscard]] std::string fullName() const;

    std::string folder_ = "C:\\";
    std::string file_;
    std::string mask_ = "*.*";
    std::string fileType_;
    std::optional<std::string> answer_;
};

namespace windows {

/// Lets the operator choose a company file, under the title "Select " and `label`, from
/// `startFolder` on. ".qbw" is added to a name of another kind.
/// @return nothing when cancelled; an empty text when the path is to be cleared.
std::optional<std::string>
chooseCompanyFile(const std::string& label, const std::string& startFolder);

}  // namespace windows
