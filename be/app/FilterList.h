#pragma once

#include <memory>

class BHandler;
class BList;
class BLooper;
class BMessage;
class BMessageFilter;

// Lists of BMessageFilter, which handlers and loopers own in the same way. The looper is locked.

void addFilter(std::unique_ptr<BList>& filters, BMessageFilter* filter, BLooper* looper);
// The filter goes back to the caller.
bool removeFilter(BList* filters, BMessageFilter* filter);
// Deletes the old filters and takes the new list with all that it holds.
void setFilterList(std::unique_ptr<BList>& filters, BList* newFilters, BLooper* looper);
void setFilterLooper(BList* filters, BLooper* looper);
void deleteFilters(BList* filters);
// What the filters make of the target; null when one of them stops the message.
BHandler* runFilters(BList* filters, BMessage* message, BHandler* target);
