#pragma once

#include <string>

#include "server/Board.h"

// The pages that the server makes, all in cp932.

// The portal's board menu, /newbbsmenu.html.
std::string menuPage(const BoardSet& boards);

// The board's own page: links to its threads, for people with a browser.
std::string boardPage(const Board& board);

// read.cgi: the first post and those from `start` on. The markup is the one that readers of such
// servers count bytes in: one line a post, each part at its place.
std::string threadPage(const Thread& thread, int start);

// What a posting CGI answers: a page that leads back to the board, or one that says what is wrong.
std::string postedPage(const std::string& boardUrl);
std::string errorPage(const std::string& reason); // UTF-8
