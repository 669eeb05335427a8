#include "server/CursorShapes.h"

#include "app/CursorPrivate.h"
#include "server/NativeWindow.h"
#include "server/Server.h"

#include <QBitmap>
#include <QCursor>

#include <memory>

namespace server {

namespace {

// Server thread only
std::unique_ptr<BCursor> sApplicationCursor;
bool sHidden = false;

struct ShapeEntry {
    BCursorID id;
    Qt::CursorShape shape;
};

const ShapeEntry kShapes[] = {
    {B_CURSOR_ID_SYSTEM_DEFAULT, Qt::ArrowCursor},
    {B_CURSOR_ID_CROSS_HAIR, Qt::CrossCursor},
    {B_CURSOR_ID_FOLLOW_LINK, Qt::PointingHandCursor},
    {B_CURSOR_ID_GRAB, Qt::OpenHandCursor},
    {B_CURSOR_ID_GRABBING, Qt::ClosedHandCursor},
    {B_CURSOR_ID_HELP, Qt::WhatsThisCursor},
    {B_CURSOR_ID_I_BEAM, Qt::IBeamCursor},
    {B_CURSOR_ID_MOVE, Qt::SizeAllCursor},
    {B_CURSOR_ID_NO_CURSOR, Qt::BlankCursor},
    {B_CURSOR_ID_NOT_ALLOWED, Qt::ForbiddenCursor},
    {B_CURSOR_ID_PROGRESS, Qt::BusyCursor},
    {B_CURSOR_ID_RESIZE_NORTH_SOUTH, Qt::SizeVerCursor},
    {B_CURSOR_ID_RESIZE_EAST_WEST, Qt::SizeHorCursor},
};

QCursor BuiltIn(BCursorID id) {
    for (const ShapeEntry& entry : kShapes) {
        if (entry.id == id)
            return QCursor(entry.shape);
    }
    return QCursor(Qt::ArrowCursor);
}

QCursor FromBits(const BCursor::Private& cursor) {
    const QSize size(kCursorSize, kCursorSize);
    const QBitmap ink = QBitmap::fromData(size, cursor.ink, QImage::Format_Mono);
    const QBitmap mask = QBitmap::fromData(size, cursor.mask, QImage::Format_Mono);
    return QCursor(ink, mask, cursor.hotX, cursor.hotY);
}

QCursor Translate(const BCursor& cursor) {
    const BCursor::Private& data = BCursor::Private::Of(cursor);
    return data.hasBits ? FromBits(data) : BuiltIn(data.id);
}

} // namespace

QCursor CursorFor(const BCursor* cursor) {
    if (sHidden)
        return QCursor(Qt::BlankCursor);
    const BCursor* shown = cursor != nullptr ? cursor : sApplicationCursor.get();
    return shown != nullptr ? Translate(*shown) : QCursor(Qt::ArrowCursor);
}

void SetApplicationCursor(const BCursor* cursor) {
    auto shape = cursor != nullptr ? std::make_shared<BCursor>(*cursor) : nullptr;
    Post([shape] {
        sApplicationCursor = shape != nullptr ? std::make_unique<BCursor>(*shape) : nullptr;
        NativeWindow::ApplicationCursorChanged();
    });
}

void SetCursorHidden(bool hidden) {
    Post([hidden] {
        sHidden = hidden;
        NativeWindow::ApplicationCursorChanged();
    });
}

} // namespace server
