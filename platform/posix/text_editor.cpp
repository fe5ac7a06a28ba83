#include "platform/text_editor.h"

#include "platform/host_text.h"

namespace lumbra::platform {

bool TextEditorFor(const std::string& fic, TextEditor& editor) {
    if (fic.empty()) return false;
    // The file as this system names it ("\" read as a separator), back in the program's text.
    editor.file = FromHostText(HostPath(fic));
    editor.program = "xdg-open";
    editor.args = {editor.file};
    editor.hint = ": instale o pacote xdg-utils e um editor de texto";
    return true;
}

}  // namespace lumbra::platform
