#pragma once

// The entry routine of the editor: makes the process-wide objects, settles the kind of run, runs the
// event loop and tears everything down in order. Returns the process's exit status.
int tavrelMain(int argc, char** argv);
