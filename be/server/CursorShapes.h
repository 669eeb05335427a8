#pragma once

class BCursor;
class QCursor;

namespace server {

// Server thread. The shape for a window; null is the application's.
QCursor CursorFor(const BCursor* cursor);

// Any thread. What windows without a cursor of their own show; null is the ordinary pointer.
void SetApplicationCursor(const BCursor* cursor);
void SetCursorHidden(bool hidden);

} // namespace server
