#pragma once

#include "app/configuration/store_choice.h"
#include "app/configuration/store_trial.h"
#include "ui/form.h"

namespace app {

/// What the window of the configuration begins with.
struct ConfigurationStart {
    std::string sampleFolder;    ///< offered for a sample store when no folder is known
    bool folderIsFixed = false;  ///< the program that asks has opened its data folder already
    SampleSize sample = {};
};

/// The window that asks for the store's connection: a sample store, an embedded store or a server.
/// Tries it, says what is wrong, writes the per-user settings.
class frmDataConfiguration : public ui::Form {
public:
    explicit frmDataConfiguration(ConfigurationStart start);

    [[nodiscard]] std::span<const ui::Key> keys() const override;
    /// The settings were written.
    [[nodiscard]] bool isSaved() const { return saved_; }

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;

private:
    void onLoad();
    void onUnload();
    void onKind();
    void onFolderLeft();
    void onBrowse();
    void onTest();
    void onOkCancel();
    template <void (*Action)()>
    void perform() {
        Action();
    }

    [[nodiscard]] StoreKind kind();
    [[nodiscard]] StoreChoice choice();
    void showKind(StoreKind kind);
    void fillCatalogs(const std::string& picked);
    void showStatus(const std::string& text);
    Finding trial();
    void accept();
    void save(const StoreChoice& choice);

    ConfigurationStart start_;
    bool saved_ = false;
};

}  // namespace app
