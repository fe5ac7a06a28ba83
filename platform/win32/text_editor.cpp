#include "platform/text_editor.h"

namespace lumbra::platform {

bool TextEditorFor(const std::string& fic, TextEditor& editor) {
    editor.file = fic;
    editor.program = "notepad";
    editor.args.clear();
    if (!fic.empty()) editor.args.push_back(fic);
    editor.hint.clear();
    return true;
}

}  // namespace lumbra::platform
