#pragma once
// The editor a text file is opened in: notepad on Windows, the desktop's handler for text files
// elsewhere. Texts are Windows-1252.

#include <string>
#include <vector>

namespace lumbra::platform {

struct TextEditor {
    std::string program;
    std::vector<std::string> args;
    // The file as the box that reports a failed start names it.
    std::string file;
    // Ends the box's sentence that no program opens text files: what the technician can do.
    std::string hint;
};

// How to open fic; false when there is nothing to start (the desktop's handler needs a file to
// choose an editor by, while notepad opens an empty document).
bool TextEditorFor(const std::string& fic, TextEditor& editor);

}  // namespace lumbra::platform
