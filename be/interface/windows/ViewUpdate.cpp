// Invalid parts and the session that draws.
#include "interface/windows/DrawSession.h"

void BView::Invalidate() {
    fPrivate->InvalidateInWindow(fPrivate->VisibleFrame());
}

void BView::Invalidate(BRect rect) {
    if (fPrivate->window != nullptr)
        fPrivate->InvalidateInWindow(ConvertToWindow(rect) & fPrivate->VisibleFrame());
}

void BView::Invalidate(const BRegion* region) {
    for (int32 i = 0; region != nullptr && i < region->CountRects(); i++)
        Invalidate(region->RectAt(i));
}

void BView::DelayedInvalidate(bigtime_t delay) {
    fPrivate->CallLater(delay, [this] { Invalidate(); });
}

void BView::DelayedInvalidate(bigtime_t delay, BRect rect) {
    fPrivate->CallLater(delay, [this, rect] { Invalidate(rect); });
}

void BView::Private::InvalidateInWindow(BRect inWindow) {
    if (inWindow.IsValid() && IsVisible())
        BWindow::Private::Of(window).Invalidate(inWindow);
}

void BView::Flush() const {}

void BView::Sync() const {
    if (Window() != nullptr)
        Window()->Sync();
}

DrawSession::DrawSession(BView::Private& view) {
    if (view.window == nullptr)
        return;
    BWindow::Private& window = BWindow::Private::Of(view.window);
    if (window.painter != nullptr) {
        window.FocusPainterOn(view.view);
        fPainter = window.painter;
        return;
    }
    if (!window.CanUpdate() || !view.IsVisible())
        return;
    window.PrepareSurface();
    fDrawing.emplace(window.link);
    fOwn.emplace(fDrawing->Image(), window.surfaceScale);
    fOwn->SetView(view.WindowOrigin(), view.VisibleRegion());
    fPainter = &*fOwn;
}

DrawSession::~DrawSession() {
    if (fOwn)
        fDrawing->Include(fOwn->Changed());
}
