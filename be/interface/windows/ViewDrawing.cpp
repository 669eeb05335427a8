// The drawing calls: each finds the painter and hands the state over.
#include "interface/windows/DrawSession.h"

#include <Bitmap.h>
#include <String.h>

#include <cmath>
#include <cstring>

namespace {

int32 LengthOf(const char* string, int32 length) {
    return static_cast<int32>(strnlen(string, static_cast<size_t>(length)));
}

BRect AroundCenter(BPoint center, float xRadius, float yRadius) {
    return BRect(center.x - xRadius, center.y - yRadius, center.x + xRadius, center.y + yRadius);
}

} // namespace

void BView::StrokeLine(BPoint toPoint, ::pattern pattern) {
    StrokeLine(fPrivate->state.penLocation, toPoint, pattern);
}

void BView::StrokeLine(BPoint start, BPoint end, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->StrokeLine(fPrivate->state, start, end, pattern);
    fPrivate->state.penLocation = end;
}

void BView::StrokeRect(BRect rect, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->StrokeRect(fPrivate->state, rect, pattern);
}

void BView::FillRect(BRect rect, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->FillRect(fPrivate->state, rect, pattern);
}

void BView::FillRegion(BRegion* region, ::pattern pattern) {
    DrawSession session{*fPrivate};
    if (!session || region == nullptr)
        return;
    for (int32 i = 0; i < region->CountRects(); i++)
        session->FillRect(fPrivate->state, region->RectAt(i), pattern);
}

void BView::InvertRect(BRect rect) {
    if (DrawSession session{*fPrivate}) {
        DrawState state = fPrivate->state;
        state.mode = B_OP_INVERT;
        session->FillRect(state, rect, B_SOLID_HIGH);
    }
}

void BView::StrokeRoundRect(BRect rect, float xRadius, float yRadius, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->RoundRect(fPrivate->state, rect, xRadius, yRadius, false, pattern);
}

void BView::FillRoundRect(BRect rect, float xRadius, float yRadius, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->RoundRect(fPrivate->state, rect, xRadius, yRadius, true, pattern);
}

void BView::StrokeEllipse(BPoint center, float xRadius, float yRadius, ::pattern pattern) {
    StrokeArc(AroundCenter(center, xRadius, yRadius), 0, 360, pattern);
}

void BView::StrokeEllipse(BRect rect, ::pattern pattern) {
    StrokeArc(rect, 0, 360, pattern);
}

void BView::FillEllipse(BPoint center, float xRadius, float yRadius, ::pattern pattern) {
    FillArc(AroundCenter(center, xRadius, yRadius), 0, 360, pattern);
}

void BView::FillEllipse(BRect rect, ::pattern pattern) {
    FillArc(rect, 0, 360, pattern);
}

void BView::StrokeArc(BRect rect, float startAngle, float arcAngle, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->Arc(fPrivate->state, rect, startAngle, arcAngle, false, pattern);
}

void BView::FillArc(BRect rect, float startAngle, float arcAngle, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->Arc(fPrivate->state, rect, startAngle, arcAngle, true, pattern);
}

void BView::StrokeTriangle(BPoint point1, BPoint point2, BPoint point3, ::pattern pattern) {
    const BPoint points[] = {point1, point2, point3};
    StrokePolygon(points, 3, true, pattern);
}

void BView::FillTriangle(BPoint point1, BPoint point2, BPoint point3, ::pattern pattern) {
    const BPoint points[] = {point1, point2, point3};
    FillPolygon(points, 3, pattern);
}

void BView::StrokePolygon(const BPoint* points, int32 count, bool closed, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->Polygon(fPrivate->state, points, count, false, closed, pattern);
}

void BView::FillPolygon(const BPoint* points, int32 count, ::pattern pattern) {
    if (DrawSession session{*fPrivate})
        session->Polygon(fPrivate->state, points, count, true, true, pattern);
}

void BView::BeginLineArray(int32 count) {
    fPrivate->lines.clear();
    if (count > 0 && count < 65536)
        fPrivate->lines.reserve(static_cast<size_t>(count));
}

void BView::AddLine(BPoint start, BPoint end, rgb_color color) {
    fPrivate->lines.push_back({start, end, color});
}

void BView::EndLineArray() {
    if (DrawSession session{*fPrivate}) {
        for (const ArrayLine& line : fPrivate->lines)
            session->StrokeLine(fPrivate->state, line.start, line.end, line.color);
    }
    fPrivate->lines.clear();
}

void BView::DrawChar(char character) {
    DrawString(&character, 1);
}

void BView::DrawChar(char character, BPoint location) {
    DrawString(&character, 1, location);
}

void BView::DrawString(const char* string, escapement_delta* delta) {
    DrawString(string, PenLocation(), delta);
}

void BView::DrawString(const char* string, BPoint location, escapement_delta* delta) {
    if (string != nullptr)
        DrawString(string, static_cast<int32>(strlen(string)), location, delta);
}

void BView::DrawString(const char* string, int32 length, escapement_delta* delta) {
    DrawString(string, length, PenLocation(), delta);
}

void BView::DrawString(const char* string, int32 length, BPoint location, escapement_delta* delta) {
    if (string == nullptr || length <= 0)
        return;
    const int32 bytes = LengthOf(string, length);
    float width = 0;
    if (DrawSession session{*fPrivate})
        width = session->DrawString(fPrivate->state, string, bytes, location, delta);
    else
        width = fPrivate->state.font.StringWidth(string, bytes);
    fPrivate->state.penLocation = BPoint(location.x + width, location.y);
}

void BView::DrawBitmap(const BBitmap* bitmap) {
    DrawBitmap(bitmap, PenLocation());
}

void BView::DrawBitmap(const BBitmap* bitmap, BPoint where) {
    if (bitmap != nullptr)
        DrawBitmap(bitmap, bitmap->Bounds(), bitmap->Bounds().OffsetToCopy(where.x, where.y));
}

void BView::DrawBitmap(const BBitmap* bitmap, BRect viewRect) {
    if (bitmap != nullptr)
        DrawBitmap(bitmap, bitmap->Bounds(), viewRect);
}

void BView::DrawBitmap(const BBitmap* bitmap, BRect bitmapRect, BRect viewRect) {
    DrawSession session{*fPrivate};
    if (session && bitmap != nullptr)
        session->DrawBitmap(fPrivate->state, *bitmap, bitmapRect, viewRect);
}

void BView::DrawBitmapAsync(const BBitmap* bitmap) {
    DrawBitmap(bitmap);
}
void BView::DrawBitmapAsync(const BBitmap* bitmap, BPoint where) {
    DrawBitmap(bitmap, where);
}
void BView::DrawBitmapAsync(const BBitmap* bitmap, BRect viewRect) {
    DrawBitmap(bitmap, viewRect);
}
void BView::DrawBitmapAsync(const BBitmap* bitmap, BRect bitmapRect, BRect viewRect) {
    DrawBitmap(bitmap, bitmapRect, viewRect);
}

void BView::CopyBits(BRect source, BRect destination) {
    if (!fPrivate->IsVisible())
        return;
    // The part that shows before and after is moved; what has nothing to show is drawn again.
    const BPoint delta = destination.LeftTop() - source.LeftTop();
    BWindow::Private& window = BWindow::Private::Of(Window());
    const BRect visible = fPrivate->VisibleFrame();
    const BRect from = ConvertToWindow(source) & visible;
    const BRect to = ConvertToWindow(destination) & visible;
    const BRect moved = from.OffsetByCopy(delta) & to;
    if (to.IsValid())
        window.Copy(moved, to, delta);
}

void BView::Private::DrawNatively(BRect area, const std::function<void(QPainter&)>& draw) {
    if (DrawSession session{*this})
        session->DrawNatively(state, area, draw);
}
