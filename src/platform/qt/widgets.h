#pragma once

#include <functional>
#include <vector>

#include <QComboBox>
#include <QLabel>
#include <QTimer>

class QLineEdit;
class QPushButton;

namespace platform {

/// A line of text that is cut with "..." where its place is too narrow; the whole text then stands
/// in its tool tip.
class ElidedLabel : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent);
    /// Lets the label shrink below its text.
    void setShrinks();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool shrinks_ = false;
};

/// The heading of a column of fields. Its letter goes to the first field, pressed again to the
/// next.
class ColumnHeading : public QLabel {
public:
    ColumnHeading(const QString& text, QWidget* parent) : QLabel(text, parent) {
        setTextFormat(Qt::PlainText);
    }
    void add(QWidget* field);
    /// Moves the focus to the field below the present one; to the first one from elsewhere.
    void goToNext();

protected:
    bool event(QEvent* event) override;

private:
    std::vector<QWidget*> fields_;
};

/// A drop-down list that says when its list was closed without a pick.
class PickList : public QComboBox {
public:
    explicit PickList(QWidget* parent);
    void onDropped(std::function<void()> dropped) { dropped_ = std::move(dropped); }
    void showPopup() override;
    void hidePopup() override;

private:
    void tellDropped();

    std::function<void()> dropped_;
    QTimer afterPopup_;
    bool open_ = false;
    bool picked_ = false;
};

/// A field that only shows gets the background of its window.
void showLocked(QLineEdit* field, bool locked);
/// The button of the page that is seen bears the colour of a selection.
void showPressed(QPushButton* button, bool pressed);

}  // namespace platform
