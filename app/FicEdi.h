#pragma once
// Opens a text file in the system's editor and returns at once.

#include <cstdint>
#include <string>

namespace lumbra {

// Starts the editor on fic: "notepad" on Windows, elsewhere the desktop's handler for the file
// (xdg-open), with the file as its one argument. est is the window style (1: a normal window that
// takes the focus), which only Windows honours. When no editor can be started, or the handler
// gives up (it ends with a status other than 0), a box titled "Configuração" names the file and
// says that no program to open text files was found; the program goes on either way.
void FicEdi(const std::string& fic, std::int16_t est);

}  // namespace lumbra
