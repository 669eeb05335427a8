#pragma once

#include "views/PopUpLife.h"

#include <Message.h>
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

    struct PopUp {
        int32 id;
        BMessenger messenger;
        PopUpEnd end = PopUpEnd::kByPointer;
        bool hasLinks = false;
    };

    // The pop-ups above the opener are closed first.
    void Push(int32 opener, const PopUp& popUp);
    // How many stand below one that the opener opens.
    size_t DepthAbove(int32 opener) const;
    void CloseAbove(int32 id);
    // By the keyboard: the topmost one that the keyboard opened, else all.
    void CloseByKey();
    void CloseAll() { CloseAbove(kText); }
    // It has closed: so do those above it.
    void HasClosed(int32 id);
    // Of the first pop-up.
    void AnchorPointed(bool isOn);
    void Tell(int32 id, BMessage message) const;
    // Whose links the keyboard chooses: the topmost one's that has any, else the text's.
    int32 WithKeys() const;

private:
    void _CloseFrom(size_t index);
    size_t _IndexOf(int32 id) const; // the count of pop-ups without one

    std::vector<PopUp> fPopUps;
    int32 fLastId = kText;
};
