#include "app/FicEdi.h"

#include <vector>

#include "platform/host_text.h"
#include "platform/msg_box.h"
#include "platform/qt/qt_start_program.h"

namespace lumbra {
namespace {

// The technician can still open the file by hand: the box names it as the system does.
void ShowNoEditor(const std::string& file, const std::string& hint) {
    platform::MsgBox("Configura\xE7\xE3o",
                     "N\xE3o foi poss\xEDvel abrir o ficheiro\n" + file +
                         "\n\nN\xE3o foi encontrado nenhum programa que abra ficheiros de texto" +
                         hint + ".",
                     platform::MsgIcon::Exclamation);
}

}  // namespace

void FicEdi(const std::string& fic, std::int16_t est) {
    (void)est;
#ifdef _WIN32
    // notepad opens with an empty document when it gets no file.
    std::vector<std::string> args;
    if (!fic.empty()) args.push_back(fic);
    platform::StartProgram("notepad", args, [fic] { ShowNoEditor(fic, ""); });
#else
    // The desktop's handler needs a file to choose an editor by; without one there is nothing to
    // open.
    if (fic.empty()) return;
    // The file as this system names it ("\" read as a separator), back in the program's text.
    const std::string file = platform::FromHostText(platform::HostPath(fic));
    platform::StartProgram("xdg-open", {file}, [file] {
        ShowNoEditor(file, ": instale o pacote xdg-utils e um editor de texto");
    });
#endif
}

}  // namespace lumbra
