#pragma once

#include "server/WindowLink.h"

#include <QImage>
#include <QRegion>

#include <memory>

namespace server {

// The only way to a window's pixels: a drawing lasts as long as this object. Its end shows what was
// included, and whatever the desktop asked for while the pixels were taken: nobody can forget to.
// Nests. The window's thread, with the window locked.
class Drawing {
public:
    explicit Drawing(std::shared_ptr<WindowLink> link);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    QImage& Image() { return fImage; }
    void Resize(int32 width, int32 height, float scale, QRgb background);
    // What was drawn, in device pixels.
    void Include(const QRegion& changed) { fChanged += changed; }

private:
    const std::shared_ptr<WindowLink> fLink;
    QImage& fImage;
    QRegion fChanged;
};

} // namespace server
