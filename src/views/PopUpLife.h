#pragma once

// Whether the pointer closes a pop-up; one that was opened by the keyboard is closed by it.
enum class PopUpEnd { kByPointer, kByKey };

// When a pop-up closes: as soon as the pointer has left it, or when the pointer has left the
// reference that opened it and does not come to the pop-up in time. While another one, or a menu,
// stands open that was opened from it, it stays. The window's thread.
class PopUpLife {
public:
    explicit PopUpLife(PopUpEnd end = PopUpEnd::kByPointer) : fEnd(end) {}

    // What has happened; each says whether the pop-up closes now.
    bool PointerIsOver(bool isOver);
    bool AnchorPointed(bool isOn);
    bool NextOpened();
    bool NextClosed();
    bool MenuOpened();
    bool MenuClosed();
    bool TimeIsUp() const;

    // For the pointer: the time runs.
    bool Waits() const { return fWaits && fEnd == PopUpEnd::kByPointer; }

private:
    bool _MayClose() const { return fEnd == PopUpEnd::kByPointer && !fHasNext && !fHasMenu; }

    const PopUpEnd fEnd;
    bool fIsPointed = false;
    bool fHasNext = false;
    bool fHasMenu = false;
    bool fWaits = false;
};
