#include "app/FicEdi.h"

#include <vector>

#include "platform/host_text.h"
#include "platform/qt_start_program.h"

namespace lumbra {

void FicEdi(const std::string& fic, std::int16_t est) {
    (void)est;
#ifdef _WIN32
    // notepad opens with an empty document when it gets no file.
    std::vector<std::string> args;
    if (!fic.empty()) args.push_back(fic);
    (void)platform::StartDetached("notepad", args);
#else
    // The desktop's handler needs a file to choose an editor by; without one there is nothing to
    // open.
    if (fic.empty()) return;
    // The file as this system names it ("\" read as a separator), back in the program's text.
    (void)platform::StartDetached("xdg-open", {platform::FromHostText(platform::HostPath(fic))});
#endif
}

}  // namespace lumbra
