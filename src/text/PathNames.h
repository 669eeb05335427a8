#pragma once

// Hosts, board folders and dat names come from servers, and become paths. What fails here opens and
// creates nothing.

// Whether a name may stand as one component of a path: not empty, without "/", and not begun by a
// ".".
bool IsGoodComponent(const char* name);

// The same for a board folder, which may be several good components divided by "/".
bool IsGoodBoardFolder(const char* folder);
