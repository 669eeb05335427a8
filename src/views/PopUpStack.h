#pragma once

#include <Messenger.h>

#include <vector>

// The open pop-ups of an article's text: the first was opened from the text, each other one from a
// reference in the one before it, and never outlives it. They are windows of their own, so all that
// passes between them are messages. The window's thread.
class PopUpStack {
public:
    static constexpr int32 kText = 0; // the opener's id of a pop-up opened from the text itself

    bool IsEmpty() const { return fPopUps.empty(); }
    // Whether it is still there to open another.
    bool Holds(int32 id) const;
    int32 NextId() { return ++fLastId; }

    // The pop-ups above the opener are closed first.
    void Push(int32 opener, int32 id, const BMessenger& popUp);
    void CloseAbove(int32 id);
    void CloseAll() { CloseAbove(kText); }
    // It has closed: so do those above it.
    void HasClosed(int32 id);
    // Of the first pop-up.
    void AnchorPointed(bool isOn);

private:
    struct PopUp {
        int32 id;
        BMessenger messenger;
    };

    void _CloseFrom(size_t index);
    size_t _IndexOf(int32 id) const; // the count of pop-ups without one

    std::vector<PopUp> fPopUps;
    int32 fLastId = kText;
};
