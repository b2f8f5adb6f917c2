#pragma once

/// The whole program, from its arguments to its exit code: decides whether this is the primary instance, loads what was
/// saved, shows the window, runs the event loop and saves.
int RunZentara(int argc, char** argv);
