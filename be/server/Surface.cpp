#include "server/Surface.h"

#include <QPainter>

namespace server {

QImage& Surface::_BeginDrawing() {
    std::lock_guard lock(fLock);
    fDrawing++;
    return fImage;
}

bool Surface::_EndDrawing(const QRegion& changed) {
    std::lock_guard lock(fLock);
    fDrawing--;
    fChanged += changed;
    if (fDrawing > 0 || fTold || fChanged.isEmpty())
        return false;
    fTold = true;
    return true;
}

void Surface::_Resize(int32 width, int32 height, float scale, QRgb background) {
    QImage fresh(qMax(1, width), qMax(1, height), QImage::Format_RGB32);
    fresh.fill(background);
    if (!fImage.isNull()) {
        QPainter painter(&fresh);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(0, 0, fImage);
    }
    fresh.setDotsPerMeterX(qRound(3780 * scale));
    fresh.setDotsPerMeterY(qRound(3780 * scale));
    fImage = fresh;
}

QImage Surface::Copy() {
    std::lock_guard lock(fLock);
    return fImage.copy();
}

} // namespace server
