#include "platform/qt/splash.h"

#include <QPainter>

namespace platform {

namespace {

const QColor kDeep(0x1f, 0x4e, 0x79);
const QColor kBright(0x2e, 0x86, 0xab);

/// A ledger page with an arrow into it, in a square of `side`.
void drawIcon(QPainter& painter, const QRectF& square) {
    const qreal side = square.width();
    const auto at = [&](qreal x, qreal y) {
        return square.topLeft() + QPointF(x * side, y * side);
    };
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kDeep);
    painter.drawRoundedRect(square, side * 0.18, side * 0.18);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(at(0.42, 0.2), at(0.84, 0.8)), side * 0.04, side * 0.04);
    painter.setPen(QPen(kBright, side * 0.045));
    for (const qreal y : {0.35, 0.5, 0.65}) {
        painter.drawLine(at(0.52, y), at(0.74, y));
    }
    painter.setPen(QPen(kBright.lighter(150), side * 0.08, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(at(0.14, 0.5), at(0.34, 0.5));
    painter.drawLine(at(0.34, 0.5), at(0.26, 0.41));
    painter.drawLine(at(0.34, 0.5), at(0.26, 0.59));
}

}  // namespace

QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 32, 64, 128}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawIcon(painter, QRectF(0, 0, side, side));
        icon.addPixmap(pixmap);
    }
    return icon;
}

SplashPicture::SplashPicture(QString title, QWidget* parent)
    : QWidget(parent),
      title_(std::move(title)) {
    setFixedSize(fontMetrics().height() * 24, fontMetrics().height() * 10);
}

void SplashPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), kDeep.darker(115));
    const int strip = height() / 24;
    painter.fillRect(0, height() - strip, width(), strip, kBright);
    const qreal side = height() * 0.46;
    drawIcon(painter, QRectF(height() * 0.27, height() * 0.27, side, side));
    QFont font = painter.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(
        QRectF(height() * 0.9, 0, width() - height() * 0.9, height()),
        Qt::AlignLeft | Qt::AlignVCenter,
        title_
    );
}

}  // namespace platform
