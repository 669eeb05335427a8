#include "server/Drawing.h"

namespace server {

Drawing::Drawing(std::shared_ptr<WindowLink> link)
    : fLink(std::move(link)), fImage(fLink->Pixels()._BeginDrawing()) {}

Drawing::~Drawing() {
    if (fLink->Pixels()._EndDrawing(fChanged))
        fLink->Blit();
}

void Drawing::Resize(int32 width, int32 height, float scale, QRgb background) {
    fLink->Pixels()._Resize(width, height, scale, background);
}

} // namespace server
