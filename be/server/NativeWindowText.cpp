// The input method: its events become messages, its questions are answered with what was pushed
// ahead.
#include "server/NativeWindow.h"

#include <AppDefs.h>

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QTextFormat>

#include <utility>

namespace server {

namespace {

int32 ByteOffset(const QString& text, int unit) {
    return static_cast<int32>(text.left(qMax(0, unit)).toUtf8().size());
}

// The caret first; a range to convert, if there is one, is what the caret's length tells.
void AddSelection(const QInputMethodEvent* event, const QString& text, BMessage& message) {
    int from = static_cast<int>(text.size());
    int length = 0;
    for (const QInputMethodEvent::Attribute& attribute : event->attributes()) {
        if (attribute.type == QInputMethodEvent::Cursor) {
            from = attribute.start;
            length = 0;
        }
    }
    message.AddInt32("be:selection", ByteOffset(text, from));
    message.AddInt32("be:selection", ByteOffset(text, from + length));
}

void AddClauses(const QInputMethodEvent* event, const QString& text, BMessage& message) {
    for (const QInputMethodEvent::Attribute& attribute : event->attributes()) {
        if (attribute.type != QInputMethodEvent::TextFormat || attribute.length <= 0)
            continue;
        message.AddInt32("be:clause_start", ByteOffset(text, attribute.start));
        message.AddInt32("be:clause_end", ByteOffset(text, attribute.start + attribute.length));
        const QTextFormat format = qvariant_cast<QTextFormat>(attribute.value);
        message.AddBool("be:clause_selected", format.hasProperty(QTextFormat::BackgroundBrush));
    }
}

} // namespace

void NativeWindow::_InputMethod(const QInputMethodEvent* event) {
    if (_IsLateResult(event))
        return;
    const QString& text = event->preeditString();
    const bool hasResult = !event->commitString().isEmpty() || event->replacementLength() > 0;
    if (hasResult || (text.isEmpty() && fComposing))
        _StopComposing(event);
    fPreedit = text;
    if (text.isEmpty())
        return;
    if (!fComposing)
        _StartComposing();
    BMessage changed = _CompositionMessage(B_INPUT_METHOD_CHANGED);
    changed.AddString("be:string", text.toUtf8().constData());
    changed.AddBool("be:confirmed", false);
    AddSelection(event, text, changed);
    AddClauses(event, text, changed);
    _Send(changed);
}

BMessage NativeWindow::_CompositionMessage(int32 opcode) const {
    BMessage message(B_INPUT_METHOD_EVENT);
    message.AddInt32("be:opcode", opcode);
    message.AddInt32("be:composition", fComposition);
    return message;
}

void NativeWindow::_StartComposing() {
    fComposition++;
    fComposing = true;
    BMessage started = _CompositionMessage(B_INPUT_METHOD_STARTED);
    _Send(started);
}

// The composition ends with the event's result; an empty one takes it away.
void NativeWindow::_StopComposing(const QInputMethodEvent* event) {
    if (!fComposing)
        _StartComposing();
    BMessage changed = _CompositionMessage(B_INPUT_METHOD_CHANGED);
    const QByteArray bytes = event->commitString().toUtf8();
    changed.AddString("be:string", bytes.constData());
    changed.AddBool("be:confirmed", true);
    changed.AddInt32("be:selection", static_cast<int32>(bytes.size()));
    changed.AddInt32("be:selection", static_cast<int32>(bytes.size()));
    _AddReplaced(event, changed);
    _Send(changed);
    BMessage stopped = _CompositionMessage(B_INPUT_METHOD_STOPPED);
    _Send(stopped);
    fComposing = false;
}

// The part of the text around the caret that the result replaces, in bytes from the caret.
void NativeWindow::_AddReplaced(const QInputMethodEvent* event, BMessage& message) const {
    if (event->replacementLength() <= 0)
        return;
    const int size = static_cast<int>(fSurrounding.size());
    const int from = qBound(0, fCursor + event->replacementStart(), size);
    const int to =
        qBound(from, fCursor + event->replacementStart() + event->replacementLength(), size);
    const int32 caret = ByteOffset(fSurrounding, fCursor);
    message.AddInt32("be:replace_from", ByteOffset(fSurrounding, from) - caret);
    message.AddInt32("be:replace_to", ByteOffset(fSurrounding, to) - caret);
}

// A reset lets some input methods hand over what they had, at once or a moment later. The window
// has kept that text already, and another field may have the focus by now.
void NativeWindow::ResetInputMethod() {
    fGivenUp = fPreedit;
    QGuiApplication::inputMethod()->reset();
    fComposing = false;
    fPreedit.clear();
}

bool NativeWindow::_IsLateResult(const QInputMethodEvent* event) {
    const bool saysNothing = event->preeditString().isEmpty() && event->commitString().isEmpty();
    if (fGivenUp.isEmpty() || saysNothing)
        return false;
    return event->commitString() == std::exchange(fGivenUp, QString()) &&
           event->preeditString().isEmpty();
}

void NativeWindow::SetInputContext(const InputContext& context) {
    const bool wasEnabled = fInputEnabled;
    fInputEnabled = context.enabled;
    fCaret = QRect(static_cast<int>(context.caret.left), static_cast<int>(context.caret.top),
                   static_cast<int>(context.caret.Width()) + 1,
                   static_cast<int>(context.caret.Height()) + 1);
    const QByteArray bytes = QByteArray::fromStdString(context.surrounding);
    fSurrounding = QString::fromUtf8(bytes);
    fCursor = static_cast<int>(QString::fromUtf8(bytes.left(context.cursorByte)).size());
    fAnchor = static_cast<int>(QString::fromUtf8(bytes.left(context.anchorByte)).size());
    if (!fActive)
        return;
    Qt::InputMethodQueries changed =
        Qt::ImCursorRectangle | Qt::ImSurroundingText | Qt::ImCursorPosition | Qt::ImAnchorPosition;
    if (wasEnabled != fInputEnabled)
        changed |= Qt::ImEnabled;
    QGuiApplication::inputMethod()->update(changed);
}

void NativeWindow::_InputMethodQuery(QInputMethodQueryEvent* event) const {
    const Qt::InputMethodQueries queries = event->queries();
    if (queries & Qt::ImEnabled)
        event->setValue(Qt::ImEnabled, fInputEnabled);
    if (queries & Qt::ImHints)
        event->setValue(Qt::ImHints, static_cast<int>(Qt::ImhNone));
    if (queries & Qt::ImCursorRectangle)
        event->setValue(Qt::ImCursorRectangle, fCaret);
    if (queries & Qt::ImAnchorRectangle)
        event->setValue(Qt::ImAnchorRectangle, fCaret);
    if (queries & Qt::ImSurroundingText)
        event->setValue(Qt::ImSurroundingText, fSurrounding);
    if (queries & Qt::ImCursorPosition)
        event->setValue(Qt::ImCursorPosition, fCursor);
    if (queries & Qt::ImAnchorPosition)
        event->setValue(Qt::ImAnchorPosition, fAnchor);
    if (queries & Qt::ImCurrentSelection)
        event->setValue(Qt::ImCurrentSelection,
                        fSurrounding.mid(qMin(fCursor, fAnchor), qAbs(fCursor - fAnchor)));
    if (queries & Qt::ImInputItemClipRectangle)
        event->setValue(Qt::ImInputItemClipRectangle, QRectF(QPointF(0, 0), size()));
    event->accept();
}

} // namespace server
