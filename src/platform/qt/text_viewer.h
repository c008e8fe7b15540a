#pragma once

#include <vector>

#include <QDialog>
#include <QFile>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace platform {

/// Shows a text file (code page 1252) page by page, the newest page first. One page is read at a
/// time, whatever the size of the file; the program does not wait for the window.
class TextViewer : public QDialog {
public:
    /// @return false when the file cannot be read.
    static bool open(const QString& file, QWidget* parent);

    /// The most that is read for one page.
    static constexpr qint64 kPageBytes = 262144;
    /// Bytes read since the window was opened.
    [[nodiscard]] qint64 bytesRead() const { return bytesRead_; }

private:
    TextViewer(const QString& file, QWidget* parent);
    void showPage();
    void goEarlier();
    void goLater();

    QFile file_;
    qint64 size_ = 0;
    qint64 begin_ = 0;          ///< of the page that is shown
    std::vector<qint64> ends_;  ///< of the pages gone through; the last one is shown
    qint64 bytesRead_ = 0;
    QLabel* place_;
    QPlainTextEdit* text_;
    QPushButton* earlier_;
    QPushButton* later_;
};

}  // namespace platform
