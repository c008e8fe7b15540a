#include "platform/qt/text_viewer.h"

#include "platform/qt/qt_text.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace platform {

bool TextViewer::open(const QString& file, QWidget* parent) {
    auto* viewer = new TextViewer(file, parent);
    if (!viewer->file_.open(QIODevice::ReadOnly)) {
        delete viewer;
        return false;
    }
    viewer->setAttribute(Qt::WA_DeleteOnClose);
    viewer->size_ = viewer->file_.size();
    viewer->ends_.push_back(viewer->size_);
    viewer->showPage();
    viewer->show();
    return true;
}

TextViewer::TextViewer(const QString& file, QWidget* parent)
    : QDialog(parent),
      file_(file),
      place_(new QLabel(this)),
      text_(new QPlainTextEdit(this)),
      earlier_(new QPushButton("&Earlier", this)),
      later_(new QPushButton("&Later", this)) {
    setObjectName("textViewer");
    setWindowTitle(QFileInfo(file).fileName());
    text_->setReadOnly(true);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setAccessibleName("Text");
    place_->setAccessibleName("Part shown");
    constexpr int kColumns = 110;
    constexpr int kLines = 32;
    text_->setMinimumSize(
        text_->fontMetrics().averageCharWidth() * kColumns / 2, text_->fontMetrics().height() * 8
    );
    auto* column = new QVBoxLayout(this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(earlier_, QDialogButtonBox::ActionRole);
    buttons->addButton(later_, QDialogButtonBox::ActionRole);
    column->addWidget(text_);
    column->addWidget(place_);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    connect(earlier_, &QPushButton::clicked, this, [this] { goEarlier(); });
    connect(later_, &QPushButton::clicked, this, [this] { goLater(); });
    resize(fontMetrics().averageCharWidth() * kColumns, fontMetrics().height() * kLines);
}

/// Pages begin with a whole line, unless there is none in them.
void TextViewer::showPage() {
    const qint64 end = ends_.back();
    begin_ = std::max<qint64>(0, end - kPageBytes);
    file_.seek(begin_);
    QByteArray bytes = file_.read(end - begin_);
    bytesRead_ += bytes.size();
    const qsizetype lineEnd = begin_ == 0 ? -1 : bytes.indexOf('\n');
    if (lineEnd >= 0 && lineEnd + 1 < bytes.size()) {
        bytes.remove(0, lineEnd + 1);
        begin_ += lineEnd + 1;
    }
    text_->setPlainText(
        toQt(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())))
    );
    text_->moveCursor(QTextCursor::End);
    const QLocale locale;
    place_->setText(
        begin_ == 0 && end == size_
            ? QString("The whole file, %1").arg(locale.formattedDataSize(size_))
            : QString("%1 before, %2 behind this part of %3")
                  .arg(
                      locale.formattedDataSize(begin_),
                      locale.formattedDataSize(size_ - end),
                      locale.formattedDataSize(size_)
                  )
    );
    earlier_->setEnabled(begin_ > 0);
    later_->setEnabled(ends_.size() > 1);
}

void TextViewer::goEarlier() {
    ends_.push_back(begin_);
    showPage();
}

void TextViewer::goLater() {
    ends_.pop_back();
    showPage();
}

}  // namespace platform
