#include "core/link_setup.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"
#include "windows/setup_fixture.h"

#include <filesystem>
#include <functional>

namespace {

namespace fs = std::filesystem;

/// Files of which the change with a given number, from 1, meets something.
class StoppedFiles : public platform::NativeFiles {
public:
    using NativeFiles::NativeFiles;

    int changes = 0;
    std::function<void(int)> onChange = [](int) {};

    void write(const std::string& name, const std::string& bytes) override {
        onChange(++changes);
        NativeFiles::write(name, bytes);
    }
    void remove(const std::string& name) override {
        onChange(++changes);
        NativeFiles::remove(name);
    }
};

class SetupSave : public testing_support::SetupTest {
protected:
    SetupSave() : files(folder() + "/program"), real_(platform::current().files) {
        platform::current().files = &files;
    }
    ~SetupSave() override { platform::current().files = real_; }

    void openWith(const std::string& net) {
        open();
        setup->setText("txtNet", net);
    }
    void save() {
        files.changes = 0;
        press("cmdAcceptCancel", 0);
    }
    [[nodiscard]] std::string setupText() const { return fileText("QBLINK.NUV"); }
    [[nodiscard]] bool isKept() const { return fs::exists(folder() + "/QBLINK.SAV"); }

    StoppedFiles files;

private:
    platform::FilePort* real_;
};

TEST_F(SetupSave, isWholeOrNothingWhereverItIsCutOff) {
    openWith("30");
    save();
    const int changes = files.changes;
    const std::string before = setupText();
    ASSERT_GT(changes, 20);
    for (int last = 1; last <= changes; ++last) {
        SCOPED_TRACE(last);
        restart();
        setup->setText("txtNet", "45");
        files.onChange = [last](int number) {
            if (number == last) {
                throw platform::ProgramEnd{};
            }
        };
        EXPECT_THROW(save(), platform::ProgramEnd);
        files.onChange = [](int) {};
        restart();
        EXPECT_EQ(setupText(), before);
        EXPECT_EQ(setup->text("txtNet"), "30");
        EXPECT_FALSE(isKept());
    }
    setup->setText("txtNet", "45");
    save();
    EXPECT_EQ(setupText(), util::replaceAll(before, "Net=30", "Net=45"));
    EXPECT_FALSE(isKept());
}

TEST_F(SetupSave, putsTheOldFileBackWhenAStepFails) {
    openWith("30");
    save();
    const int changes = files.changes;
    const std::string before = setupText();
    for (int failing = 1; failing <= changes; ++failing) {
        SCOPED_TRACE(failing);
        restart();
        desktop.boxes.clear();
        setup->setText("txtNet", "45");
        files.onChange = [failing](int number) {
            if (number == failing) {
                throw platform::PlatformError(61, "Disk full");
            }
        };
        save();
        files.onChange = [](int) {};
        EXPECT_TRUE(boxes().starts_with("Unable To Save Setup "));
        EXPECT_EQ(setupText(), before);
        EXPECT_FALSE(isKept());
    }
}

TEST_F(SetupSave, waitsForRoomToPutTheOldFileBack) {
    openWith("30");
    save();
    const std::string before = setupText();
    restart();
    setup->setText("txtNet", "45");
    files.onChange = [](int number) {
        if (number > 5) {
            throw platform::PlatformError(61, "Disk full");
        }
    };
    save();
    EXPECT_TRUE(isKept());
    files.onChange = [](int) {};
    // A mark that is stored later in the run goes into the whole file.
    ASSERT_TRUE(core::openLinkSetup());
    core::storeMark("Last Invoices Posted", "0000777");
    restart();
    EXPECT_EQ(setup->text("txtLastPostedInvoice"), "0000777");
    EXPECT_EQ(setup->text("txtNet"), "30");
    EXPECT_FALSE(isKept());
}

TEST_F(SetupSave, leavesAFileThatCannotBeWritten) {
    openWith("45");
    const std::string before = setupText();
    fs::permissions(folder() + "/QBLINK.NUV", fs::perms::owner_read);
    save();
    EXPECT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes.front().title, "NUV Brevane");
    EXPECT_EQ(
        boxes(), "Unable To Save Setup " + folder() + "\\QBLINK.NUV cannot be read or written"
    );
    EXPECT_EQ(setupText(), before);
    EXPECT_FALSE(isKept());
}

}  // namespace
