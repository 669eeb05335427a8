#pragma once

#include <SupportDefs.h>

#include <QImage>
#include <QRegion>

#include <mutex>

namespace server {

// A window's pixels, in device pixels. The window's thread draws (through a Drawing), the server
// shows. While the window draws, the server leaves the pixels alone and is told afterwards: it
// never waits for a drawing, and nobody ever sees half of one.
class Surface {
public:
    // The server's side: calls show with the image and what has changed since the last time, or not
    // at all while the window draws (then the window tells again).
    template <typename Show>
    void Take(const QRegion& exposed, Show show) {
        std::lock_guard lock(fLock);
        fChanged += exposed;
        fTold = false;
        if (fDrawing > 0 || fChanged.isEmpty())
            return;
        show(fImage, fChanged);
        fChanged = QRegion();
    }
    QImage Copy();

private:
    friend class Drawing;

    // The image stays valid until _EndDrawing, which is true if the server must be told.
    QImage& _BeginDrawing();
    bool _EndDrawing(const QRegion& changed);
    // Keeps what fits and fills the rest; between Begin and End only.
    void _Resize(int32 width, int32 height, float scale, QRgb background);

    std::mutex fLock; // last in every order
    QImage fImage;    // the drawing thread's between Begin and End, else guarded by fLock
    // Guarded by fLock
    QRegion fChanged;
    int fDrawing = 0;
    bool fTold = false;
};

} // namespace server
