#pragma once

#include <QIcon>
#include <QWidget>

namespace platform {

/// The program's icon, drawn.
QIcon programIcon();

/// The picture that stands while the program starts: icon and title.
class SplashPicture : public QWidget {
public:
    SplashPicture(QString title, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString title_;
};

}  // namespace platform
