#pragma once

// When a pop-up closes: as soon as the pointer has left it, or when the pointer has left the
// reference that opened it and does not come to the pop-up in time. While another one stands open
// that was opened from it, it stays. The window's thread.
class PopUpLife {
public:
    // What has happened; each says whether the pop-up closes now.
    bool PointerIsOver(bool isOver);
    bool AnchorPointed(bool isOn);
    bool NextOpened();
    bool NextClosed();
    bool TimeIsUp() const;

    // For the pointer: the time runs.
    bool Waits() const { return fWaits; }

private:
    bool fIsPointed = false;
    bool fHasNext = false;
    bool fWaits = false;
};
