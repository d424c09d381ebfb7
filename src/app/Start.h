#pragma once

namespace pontrel {

class MDI;

/// The entry point behind the program's entry: from the check for a second instance to the end of the event
/// loop. Returns the exit status.
int Main();

/// Gives the main window its size and its place on the screen, and makes it gMDI. It stays invisible.
void placeMainWindow(MDI& window);
/// Fetches the main window's system menu, keeps its words for Close and takes Maximise from menu and frame.
void trimSystemMenu();

} // namespace pontrel
