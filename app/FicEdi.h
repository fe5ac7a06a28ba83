#pragma once
// Opens a text file in the system's editor and returns at once.

#include <cstdint>
#include <string>

namespace lumbra {

// Starts the editor on fic: "notepad" on Windows, elsewhere the desktop's handler for the file
// (xdg-open), with the file as its one argument. est is the window style (1: a normal window that
// takes the focus), which only Windows honours. Every failure is ignored: the program goes on as
// if nothing had been asked.
void FicEdi(const std::string& fic, std::int16_t est);

}  // namespace lumbra
