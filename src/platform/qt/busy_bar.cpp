#include "platform/qt/busy_bar.h"

#include "util/conversions.h"

#include <algorithm>
#include <iterator>

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

namespace platform {

namespace {

constexpr qint64 kMilliseconds = 1000;
constexpr qint64 kSeconds = 60;

/// Beginnings of the texts that tell of a run, or of a step within a record.
constexpr std::string_view kRunTexts[] = {
    "Cancelled",     "Done ",      "ERROR: ",     "Error: ",     "Export ",
    "Exporting ",    "Finished ",  "Importing ",  "Invalid ",    "Journal COGS",
    "Manual Sales ", "No ",        "Please wait", "QB is ready", "Ready",
    "Sales Files ",  "Setup and ", "The SL you ", "The export ",
};

QString elapsedText(qint64 seconds) {
    return QString("%1:%2").arg(seconds / kSeconds).arg(seconds % kSeconds, 2, 10, QChar('0'));
}

}  // namespace

bool namesRecord(const std::string& status) {
    return !util::trim(status).empty() &&
           std::none_of(std::begin(kRunTexts), std::end(kRunTexts), [&](std::string_view text) {
               return status.starts_with(text);
           });
}

BusyBar::BusyBar(QWidget* parent)
    : QWidget(parent),
      bar_(new QProgressBar(this)),
      numbers_(new QLabel(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(bar_);
    row->addWidget(numbers_);
    bar_->setRange(0, 0);
    bar_->setTextVisible(false);
    bar_->setFixedWidth(fontMetrics().averageCharWidth() * 24);
    bar_->setMaximumHeight(fontMetrics().height());
    bar_->setAccessibleName("Work under way");
    QSizePolicy policy = bar_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    bar_->setSizePolicy(policy);
    bar_->hide();
    numbers_->setAccessibleName("Records done and time");
}

void BusyBar::start() {
    before_ = numbers_->text();
    records_ = 0;
    running_ = true;
    since_.start();
    shownSecond_ = -1;
    bar_->show();
    showNumbers();
}

void BusyBar::status(const std::string& text) {
    if (running_ && namesRecord(text)) {
        ++records_;
        showNumbers();
    }
}

void BusyBar::tick() {
    if (running_ && since_.elapsed() / kMilliseconds != shownSecond_) {
        showNumbers();
    }
}

/// Work that was over at once leaves the numbers of the run before.
void BusyBar::stop() {
    showNumbers();
    if (records_ == 0 && shownSecond_ == 0) {
        numbers_->setText(before_);
    }
    running_ = false;
    bar_->hide();
}

void BusyBar::showNumbers() {
    shownSecond_ = since_.elapsed() / kMilliseconds;
    const QString records = records_ == 1 ? "1 record" : QString("%1 records").arg(records_);
    numbers_->setText((records_ == 0 ? QString() : records + ", ") + elapsedText(shownSecond_));
}

}  // namespace platform
