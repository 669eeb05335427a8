#include "post/PostDraft.h"

#include "settings/ReplaceFile.h"

#include <Entry.h>
#include <FindDirectory.h>
#include <Path.h>

#include <algorithm>

namespace {

// The fields of one line hold none of their own line feeds.
std::string OneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text + "\n";
}

std::string TakeLine(std::string* text) {
    const size_t end = std::min(text->find('\n'), text->size());
    std::string line = text->substr(0, end);
    text->erase(0, end + 1);
    return line;
}

} // namespace

PostDraft::PostDraft(const PostTarget& target) {
    BPath path;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &path) != B_OK)
        return;
    for (const std::string& name :
         {std::string("2ch/Drafts"), target.host, target.board, target.key + ".txt"}) {
        if (path.Append(name.c_str()) != B_OK)
            return;
    }
    fPath = path.Path();
}

status_t PostDraft::Load(WrittenPost* text) {
    std::string content;
    const status_t status =
        fPath.empty() ? B_ENTRY_NOT_FOUND : ReadWholeFile(fPath.c_str(), &content);
    fIsUnread = status != B_OK && status != B_ENTRY_NOT_FOUND;
    if (status != B_OK)
        return status;
    text->name = TakeLine(&content);
    text->mail = TakeLine(&content);
    text->message = content;
    return B_OK;
}

status_t PostDraft::Save(const WrittenPost& text) {
    if (text == WrittenPost()) {
        Remove();
        return B_OK;
    }
    if (fPath.empty())
        return B_ERROR;
    status_t status = fIsUnread ? _SetUnreadAside() : B_OK;
    if (status == B_OK)
        status = ReplaceFile(fPath.c_str(), OneLine(text.name) + OneLine(text.mail) + text.message);
    return status;
}

status_t PostDraft::_SetUnreadAside() {
    std::string aside;
    BEntry entry(fPath.c_str());
    fIsUnread = entry.Exists(); // a folder on its way may have been what could not be read
    if (!fIsUnread)
        return B_OK;
    for (int number = 1; aside.empty() || BEntry(aside.c_str()).Exists(); number++)
        aside = fPath + ".unread" + (number > 1 ? std::to_string(number) : "");
    const status_t status = entry.Rename(aside.c_str(), false);
    fIsUnread = status != B_OK;
    return status;
}

void PostDraft::Remove() {
    if (!fIsUnread)
        BEntry(fPath.c_str()).Remove();
}
