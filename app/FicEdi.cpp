#include "app/FicEdi.h"

#include "platform/msg_box.h"
#include "platform/start_program.h"
#include "platform/text_editor.h"

namespace lumbra {

void FicEdi(const std::string& fic, std::int16_t est) {
    (void)est;
    platform::TextEditor editor;
    if (!platform::TextEditorFor(fic, editor)) return;
    // The technician can still open the file by hand: the box names it as the system does.
    platform::StartProgram(editor.program, editor.args, [editor] {
        platform::MsgBox(
            "Configura\xE7\xE3o",
            "N\xE3o foi poss\xEDvel abrir o ficheiro\n" + editor.file +
                "\n\nN\xE3o foi encontrado nenhum programa que abra ficheiros de texto" +
                editor.hint + ".",
            platform::MsgIcon::Exclamation);
    });
}

}  // namespace lumbra
