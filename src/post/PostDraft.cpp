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

bool PostDraft::Load(PostText* text) const {
    std::string content;
    if (ReadWholeFile(fPath.c_str(), &content) != B_OK)
        return false;
    text->name = TakeLine(&content);
    text->mail = TakeLine(&content);
    text->message = content;
    return true;
}

status_t PostDraft::Save(const PostText& text) const {
    if (text == PostText()) {
        Remove();
        return B_OK;
    }
    if (fPath.empty())
        return B_ERROR;
    return ReplaceFile(fPath.c_str(), OneLine(text.name) + OneLine(text.mail) + text.message);
}

void PostDraft::Remove() const {
    BEntry(fPath.c_str()).Remove();
}
