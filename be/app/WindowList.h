#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

#include <vector>

class BWindow;

// The program's windows, oldest first. Any thread; a window may go as soon as the call has
// returned, so lock it before using it.
namespace WindowList {

void Add(BWindow* window);
void Remove(BWindow* window);
std::vector<BWindow*> All();
// The same with a messenger each, through which a window that may have gone can be locked.
struct Listed {
    BWindow* window;
    BMessenger messenger;
};
std::vector<Listed> AllListed();
bool Contains(const BWindow* window);

} // namespace WindowList
