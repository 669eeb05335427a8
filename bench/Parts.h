#pragma once

#include <string>
#include <vector>

// The parts of the run. Each is this program once more, in a process of its own: what one part
// leaves behind (warm fonts, a grown heap) does not help or harm the next. It prints its results to
// standard output, "name value" a line.

using Arguments = std::vector<std::string>;

int RunCodec(const Arguments& arguments);
// "layout COUNT" and "document COUNT [cold]": that many posts in the text view, and in the
// yardstick.
int RunLayout(const Arguments& arguments);
int RunDocument(const Arguments& arguments);
// "serve FOLDER": the demo server, until its standard input ends.
int RunServer(const Arguments& arguments);
// "serve-today BOARDS FOLDER": the same boards as they are run today, with the settings of a gate
// that reaches them in FOLDER/gate.toml.
int RunTodayServer(const Arguments& arguments);
// "program": the whole program, which opens threads and boards from that server; "program PROCESS":
// threads from the server of today, by the gate that this process is, whose time counts too.
int RunProgram(const Arguments& arguments);

void PrintResult(const char* name, double value);
