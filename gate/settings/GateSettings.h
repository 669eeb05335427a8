#pragma once

#include "settings/Marks.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

// How a family's servers are read.
enum class FamilyKind {
    kDat,     // dat files
    kRawmode, // rawmode.cgi, EUC-JP
    kOfflaw   // offlaw.cgi
};

// Where a thread may be found once its dat has gone. {host}, {board}, {key}, {key4} and {key5} (the
// key's first digits) stand for the thread's.
struct ArchivePlace {
    std::string address;
    bool isPage = false; // an HTML page; else a dat
};

// Boards that are run alike and share cookies.
struct Family {
    std::string name;
    FamilyKind kind = FamilyKind::kDat;
    Charset charset = Charset::kCp932; // UTF-8: dats may be in it; else they never are
    std::vector<std::string> hosts;    // "5ch.example", or "*.5ch.example" for all below it
    bool usesTls = true;
    std::string reach; // "address:port" that is connected to whatever the host; empty: look it up
    struct Renaming {
        std::string old, present; // ends of host names
    };
    std::vector<Renaming> renamed;
    std::vector<ArchivePlace> archives;
    std::vector<long> droppedStatuses{301, 302, 303, 307, 308, 403, 404, 410};
    int pauseMilliseconds = 0; // between two requests to one host
    std::vector<std::string> droppedErrors{"STORAGE IN", "NOT FOUND"}; // ends of rawmode's "ERROR"
    std::optional<PostKind> post;                          // none: what goes with the kind
    std::optional<FormShape> form;                         // none: the post's kind as it is shipped
    std::vector<std::string> droppedCookies{"BAN", "PON"}; // never kept
    std::vector<std::string> wantedCookies; // sent with a post in any case, empty if not there
    // Where rawmode and offlaw give a thread from its first post, and from number {first} on.
    std::string wholePath, restPath;

    bool Serves(std::string_view host) const; // by its present or an old name
    // The name that a host has today; all in lower case.
    std::string PresentHost(std::string_view host) const;
    PostKind Post() const;
};

// What the gate goes by: the shipped file, then the user's own over it, key by key. Constant once
// it has been read.
struct Settings {
    int port = 8080;
    int connections = 64;
    std::string userAgent = "Monazilla/1.00 Itamori/0.1.0";
    std::string certificates;                  // a file of authorities; empty: the system's
    std::string outerProxy;                    // empty: none
    std::vector<std::string> allowedAddresses; // of this machine or network, reached all the same
    long connectSeconds = 15;
    long transferSeconds = 60;
    long answerSeconds = 24; // until the program gets an answer, whatever the servers do
    long listSeconds = 5;    // a board's list is not asked for more often
    size_t mostBytes = 16 << 20;
    std::vector<std::string> challengeMarks; // texts of a page that asks whether one is human
    std::vector<std::string> challengeHeaders{"cf-mitigated"};
    PageMarks pageMarks;
    MenuMarks menuMarks;
    AnswerMarks answerMarks;
    std::map<PostKind, FormShape> forms = DefaultShapes();
    std::vector<std::string> portalHosts;
    std::vector<std::string> menus;
    std::vector<Family> families;
    std::vector<std::string> files; // that were read

    const Family* FindFamily(std::string_view host) const; // null: no known host
    const Family* FindFamilyByName(std::string_view name) const;
    bool IsPortal(std::string_view host) const;
};

// Reads a file over what the settings hold: what it does not name stays, a family of a known name
// is changed and another added. False with a text for the user, which names file and line, and
// unchanged settings, when it can't be read; a key that the gate does not know is put into
// `remarks` only.
bool ReadSettings(const std::string& path, Settings* settings, std::string* error,
                  std::vector<std::string>* remarks);

// Host names and addresses compare in lower case.
std::string LowerCase(std::string_view text);

} // namespace gate
