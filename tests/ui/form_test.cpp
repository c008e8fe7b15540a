#include "ui/form.h"

#include <gtest/gtest.h>

namespace {

constexpr ui::Control kControls[] = {
    {ui::Kind::frame, "Page", ui::kNoIndex, "Page", ui::kHidden},
    {ui::Kind::checkBox, "chkExport", 0, "Inventory", ui::kPlain, "Page"},
    {ui::Kind::checkBox, "chkExport", 3, "Sales", ui::kChecked, "Page"},
    {ui::Kind::button, "cmdStop", ui::kNoIndex, "Stop", ui::kDisabled},
    {ui::Kind::label, "LblStatus", ui::kNoIndex, "Status"},
};

class SmallForm : public ui::Form {
public:
    SmallForm() : Form("frmSmall", "Small", kControls) {}
    int clicked = ui::kNoIndex;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override {
        static constexpr ui::Handler<SmallForm> kHandlers[] = {
            {"chkExport", ui::Signal::click, &SmallForm::onExport}};
        return ui::runHandler(*this, kHandlers, name, signal);
    }

private:
    void onExport() {
        clicked = raisedIndex();
        setText("LblStatus", "clicked");
    }
};

class Observer : public ui::FormObserver {
public:
    void controlChanged(ui::Form& /*form*/, const ui::ControlState& control) override {
        last = control.name + "=" + control.caption;
    }
    void formClosed(ui::Form& /*form*/) override { closed = true; }
    std::string last;
    bool closed = false;
};

}  // namespace

TEST(Form, startsAsItsTableSays) {
    SmallForm form;
    EXPECT_TRUE(form.isOn("chkExport", 3));
    EXPECT_FALSE(form.isOn("chkExport", 0));
    EXPECT_FALSE(form.control("cmdStop").enabled);
    EXPECT_FALSE(form.isShown(form.control("chkExport", 3)));
    form.setVisible("Page", true);
    EXPECT_TRUE(form.isShown(form.control("chkExport", 3)));
    EXPECT_EQ(form.findControl("nothing"), nullptr);
    EXPECT_NE(form.findControl("CHKEXPORT", 0), nullptr);
}

TEST(Form, runsTheHandlerOfAControlArrayAndTellsTheObserver) {
    SmallForm form;
    Observer observer;
    form.setObserver(&observer);
    EXPECT_TRUE(form.raise("chkExport", ui::Signal::click, 3));
    EXPECT_EQ(form.clicked, 3);
    EXPECT_EQ(observer.last, "LblStatus=clicked");
    EXPECT_FALSE(form.raise("cmdStop", ui::Signal::click));
    form.close();
    EXPECT_TRUE(observer.closed);
}

TEST(Form, isFoundByNameWhileItExists) {
    {
        const SmallForm form;
        ui::setFormText("FRMSMALL", "LblStatus", "Ready");
        EXPECT_EQ(ui::formText("frmSmall", "LblStatus"), "Ready");
    }
    EXPECT_EQ(ui::findForm("frmSmall"), nullptr);
    EXPECT_EQ(ui::formText("frmSmall", "LblStatus"), "");
}

TEST(Form, textsReplaceEachOtherWhereTheyStand) {
    std::string held = "a password that is long";
    const char* const place = held.data();
    ui::replaceText(held, "short");
    EXPECT_EQ(held, "short");
    EXPECT_EQ(std::string_view(place, 23), std::string("short") + std::string(18, '\0'));
    ui::replaceText(held, std::string_view(held).substr(2));  // a part of itself
    EXPECT_EQ(held, "ort");
    held.assign(held.capacity(), 'x');
    const std::string longer = held + "y";
    ui::replaceText(held, longer);
    EXPECT_EQ(held, longer);
}

TEST(Form, knowsWhichOfAnArrayHasTheFocus) {
    SmallForm form;
    form.setFocus("chkExport", 3);
    EXPECT_EQ(form.focus(), (ui::Focus{"chkExport", 3}));
    form.setFocus("cmdStop");
    EXPECT_EQ(form.focus(), (ui::Focus{"cmdStop", ui::kNoIndex}));
}
