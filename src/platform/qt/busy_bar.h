#pragma once

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;

namespace platform {

/// Shows that work is under way: a moving bar, the records done and the time since the start. What
/// the last run did stays readable until the next one.
class BusyBar : public QWidget {
public:
    explicit BusyBar(QWidget* parent);

    void start();
    /// Takes in a progress text; one that names a record counts.
    void status(const std::string& text);
    /// Shows the time as it is now.
    void tick();
    void stop();
    [[nodiscard]] bool isRunning() const { return running_; }
    [[nodiscard]] int records() const { return records_; }

private:
    void showNumbers();

    QProgressBar* bar_;
    QLabel* numbers_;
    QString before_;
    QElapsedTimer since_;
    qint64 shownSecond_ = -1;
    int records_ = 0;
    bool running_ = false;
};

/// False for the texts that tell of a run as a whole ("Importing Sales Files..."), true for those
/// that name the record under way.
bool namesRecord(const std::string& status);

}  // namespace platform
