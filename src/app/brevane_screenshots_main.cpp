#include "app/configuration/frmDataConfiguration.h"
#include "config/clsDataPath.h"
#include "config/nuvDataPath_Ops.h"
#include "core/brv_op.h"
#include "desktop_adapters.h"
#include "platform/ports/platform.h"
#include "platform/qt/busy_bar.h"
#include "platform/qt/form_window.h"
#include "security/clsUserLogin.h"
#include "windows/FrmSelDate.h"
#include "windows/SafeDialog.h"
#include "windows/frmPasswordEnter.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/frmSM_DATAPATH2.h"
#include "windows/frmSM_USER_LOGIN.h"
#include "windows/start_windows.h"

#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStyleFactory>
#include <QTableWidget>
#include <QTimer>

/// Draws the windows of the program at work into PNG files, on the store that the settings name.

namespace {

constexpr int kFailed = 3;
constexpr int kWrongCall = 64;
constexpr int kTickMs = 20;
constexpr int kRecordsBeforeThePicture = 40;
constexpr int kSlimmest = 0;  // the quality that packs a PNG best

constexpr char kUsage[] =
    "usage: brevane-screenshots FOLDER SUFFIX light|dark setup|summary|small\n"
    "Plays an operator and writes FOLDER/<window>-SUFFIX.png for each window that comes up.\n";

QPalette darkPalette() {
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor base(0x1e, 0x1f, 0x22);
    const QColor text(0xdf, 0xe1, 0xe5);
    const QColor faint(0x80, 0x84, 0x8a);
    QPalette palette(text, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x26, 0x29));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(0x3c, 0x3f, 0x44));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Highlight, QColor(0x2e, 0x6f, 0xb0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faint);
    }
    return palette;
}

/// The picture with at most 256 colours: as many of their bits are kept as fit.
QImage withFewColours(const QImage& picture) {
    constexpr int kMostColours = 256;
    constexpr QRgb kMasks[] = {0xffffffff, 0xfffefefe, 0xfffcfcfc, 0xfff8f8f8, 0xfff0f0f0};
    QImage plain = picture.convertToFormat(QImage::Format_RGB32);
    for (const QRgb mask : kMasks) {
        std::map<QRgb, QRgb> colours;  // what counts of a colour, and the colour
        for (int row = 0; row < plain.height(); ++row) {
            for (int column = 0; column < plain.width(); ++column) {
                const QRgb colour = plain.pixel(column, row);
                colours.emplace(colour & mask, colour);
            }
        }
        if (colours.size() <= kMostColours) {
            QList<QRgb> table;
            for (const auto& [key, colour] : colours) {
                table += colour;
            }
            return plain.convertToFormat(QImage::Format_Indexed8, table, Qt::AvoidDither);
        }
    }
    return plain;
}

/// The operator with the camera: acts at each tick, whatever loop is running.
class Photographer {
public:
    Photographer(QString folder, QString suffix)
        : folder_(std::move(folder)),
          suffix_(std::move(suffix)) {}

    using Step = bool (Photographer::*)();  // true: done, the next one follows

    void play(std::vector<Step> steps) {
        steps_ = std::move(steps);
        QObject::connect(&timer_, &QTimer::timeout, [this] { tick(); });
        timer_.start(kTickMs);
    }

    void save(const QImage& picture, const QString& name) {
        const QString file = folder_ + "/" + name + "-" + suffix_ + ".png";
        if (!withFewColours(picture).save(file, "PNG", kSlimmest)) {
            std::cerr << "brevane-screenshots: cannot write " << file.toStdString() << "\n";
        }
    }

    // Steps share one signature, whether they need the camera or not.
    // NOLINTBEGIN(readability-convert-member-functions-to-static)
    bool takeIdle() { return find("frmSetup") != nullptr; }
    bool beginExport() {
        button("chkExport(3)")->click();
        button("chkExport(4)")->click();
        return true;
    }
    bool pressExport() {
        button("Cmdexport")->click();
        return true;
    }
    bool takeRunning() {
        const auto* window = static_cast<platform::FormWindow*>(find("frmSetup"));
        if (!window->isFrozen() || window->busyBar()->records() < kRecordsBeforeThePicture) {
            return false;
        }
        save(find("frmSetup")->grab().toImage(), "export");
        button("cmdStop")->click();
        return true;
    }
    bool openManualPage() {
        if (!button("Cmdexport")->isEnabled()) {
            return false;
        }
        button("cmdRun(2)")->click();
        button("chkManual")->click();
        return true;
    }
    bool pickAccount() {
        auto* grid = find("frmSetup")->findChild<QTableWidget*>("fgrdList");
        Q_EMIT grid->cellClicked(2, 1);
        return true;
    }
    bool takeManualPage() {
        save(find("frmSetup")->grab().toImage(), "manual");
        return true;
    }
    bool leave() {
        QWidget* popup = QApplication::activePopupWidget();
        if (popup != nullptr) {
            popup->close();
            return false;
        }
        button("cmdAcceptCancel(1)")->click();
        return true;
    }
    // NOLINTEND(readability-convert-member-functions-to-static)
    bool takeQuickSetup() {
        QWidget* window = find("FrmQuickSetUP");
        if (window == nullptr) {
            return false;
        }
        window->findChild<QDateEdit*>("DTPicker1(1)")
            ->setDate(window->findChild<QDateEdit*>("DTPicker1(0)")->date());
        save(window->grab().toImage(), "summary");
        window->findChild<QAbstractButton*>("cmdAccept")->click();
        return true;
    }
    bool takeSummaryExport() {
        QWidget* window = find("FrmSummaryExport");
        if (window == nullptr ||
            window->findChild<QLabel*>("LblStatus")->text() != "Export Complete") {
            return false;
        }
        save(window->grab().toImage(), "summary-export");
        window->findChild<QAbstractButton*>("Cmdexport")->click();
        return true;
    }
    bool takeLog() {
        if (!button("CmdViewLog")->isEnabled()) {
            return false;
        }
        if (find("textViewer") == nullptr) {
            button("CmdViewLog")->click();
            return false;
        }
        save(find("textViewer")->grab().toImage(), "log");
        find("textViewer")->close();
        return true;
    }

private:
    static QWidget* find(const QString& name) {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == name && widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }
    static QAbstractButton* button(const QString& name) {
        return find("frmSetup")->findChild<QAbstractButton*>(name);
    }

    void tick() {
        const bool isSetup = find("frmSetup") != nullptr;
        if (QWidget* list = find("answeredMessages")) {
            if (isSetup) {
                save(list->grab().toImage(), "answered");
            }
            list->close();
        } else if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            if (box->checkBox() != nullptr && isSetup && !hasBox_) {
                hasBox_ = true;
                save(box->grab().toImage(), "message");
                box->checkBox()->setChecked(true);
            }
            box->defaultButton()->click();
        } else if (at_ < steps_.size() && (this->*steps_[at_])()) {
            ++at_;
        }
    }

    QString folder_;
    QString suffix_;
    QTimer timer_;
    std::vector<Step> steps_;
    std::size_t at_ = 0;
    bool hasBox_ = false;
};

/// What stands in a field.
struct Typed {
    const char* control;
    int index;
    std::string text;
};

/// The window of a form with what an operator has typed into its fields.
QImage pictureOf(
    ui::Form& form,
    const std::vector<Typed>& typed,
    const std::function<void(ui::Form&)>& before = [](ui::Form&) {}
) {
    platform::desktop().showModeless(form);
    before(form);
    for (const Typed& row : typed) {
        form.setText(row.control, row.text, row.index);
    }
    platform::desktop().pendingEvents();
    QImage picture;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName().toStdString() == form.name()) {
            picture = widget->grab().toImage();
        }
    }
    form.close();
    return picture;
}

/// The configuration of a server that refuses the login.
void takeServer(ui::Form& configuration, Photographer& photographer) {
    const auto choose = [](ui::Form& form) {
        form.setOn("optStore", false, 1);
        form.setOn("optStore", true, 2);
        form.raise("optStore", ui::Signal::click, 2);
    };
    const std::vector<Typed> typed = {
        {"txtServer", ui::kNoIndex, "TILL\\NUVSERVER"},
        {"txtCatalog", ui::kNoIndex, "NUVDATA1"},
        {"txtPassword", ui::kNoIndex, "secret7"},
        {"LblStatus", ui::kNoIndex, "The server refuses the login: check user and password."},
    };
    photographer.save(pictureOf(configuration, typed, choose), "configuration-server");
}

void takeSmallWindows(Photographer& photographer) {
    gpDataPathRead();
    const std::string folder = gDataPath.DataPath;
    frmBRVSplash splash;
    FrmLoading loading;
    clsUserLogin login;
    login.Application = core::kApplicationTitle;
    frmSM_USER_LOGIN loginWindow(login);
    frmPasswordEnter passwordWindow(login);
    frmSM_DATAPATH2 dataPath;
    frmSMFILE_PATH browser;
    browser.setPath(folder + "/company.qbw");
    browser.setMask("*.qbw");
    browser.setFileType(".qbw");
    FrmSelDate dates;
    SafeDialog safe;
    app::frmDataConfiguration configuration({});
    const struct {
        const char* name;
        ui::Form& form;
        std::vector<Typed> typed;
    } kRows[] = {
        {"splash", splash, {}},
        {"loading", loading, {}},
        {"login",
         loginWindow,
         {{"txtUserID", ui::kNoIndex, "ANNA"}, {"txtPassword", ui::kNoIndex, "secret7"}}},
        {"password",
         passwordWindow,
         {{"txtNewPassword", ui::kNoIndex, "secret8"},
          {"txtRepeatPassword", ui::kNoIndex, "secret8"}}},
        {"data-path", dataPath, {}},
        {"browser", browser, {}},
        {"dates", dates, {{"TxtInvoice", ui::kNoIndex, "0001001"}}},
        {"server-check", safe, {}},
        {"configuration",
         configuration,
         {{"LblStatus", ui::kNoIndex, "The store opens: catalog NUVDATA1, store 1, Setup mode."}}},
    };
    for (const auto& row : kRows) {
        photographer.save(pictureOf(row.form, row.typed), row.name);
    }
    takeServer(configuration, photographer);
}

int run(const QString& what, Photographer& photographer) {
    if (what == "small") {
        takeSmallWindows(photographer);
        return 0;
    }
    if (what == "summary") {
        photographer.play({&Photographer::takeQuickSetup, &Photographer::takeSummaryExport});
    } else {
        photographer.play(
            {&Photographer::takeIdle,
             &Photographer::beginExport,
             &Photographer::pressExport,
             &Photographer::takeRunning,
             &Photographer::takeLog,
             &Photographer::openManualPage,
             &Photographer::pickAccount,
             &Photographer::takeManualPage,
             &Photographer::leave}
        );
    }
    return app::runLink();
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int kArguments = 5;
    if (argc != kArguments) {
        std::cerr << kUsage;
        return kWrongCall;
    }
    const QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (QString(argv[3]) == "dark") {
        QApplication::setPalette(darkPalette());
    }
    try {
        const app::DesktopAdapters adapters;
        Photographer photographer(argv[1], argv[2]);
        return run(argv[4], photographer);
    } catch (const std::exception& error) {
        std::cerr << "brevane-screenshots: " << error.what() << "\n";
        return kFailed;
    }
}
