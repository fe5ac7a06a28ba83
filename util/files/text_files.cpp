#include "util/files/text_files.h"

#include <string>
#include <utility>

#include "platform/file_handles.h"
#include "platform/file_system.h"
#include "platform/msg_box.h"

namespace lumbra {
namespace {

using platform::FileMode;

// The exit status of a program ended because a file it needs could not be opened.
constexpr int kEndStatusFileError = 1;

FileMode ModeOf(const std::string& mo) {
    if (mo == "O") return FileMode::Output;
    if (mo == "A") return FileMode::Append;
    return FileMode::Input;
}

// The two lines of the box; CR LF between them, as the host's boxes break lines.
std::string OpenErrorText(std::int16_t err, const std::string& fic, const std::string& orig) {
    return "Erro : " + std::to_string(err) + "   " + platform::ErrDescription(err) + "\r\n" +
           "Ficheiro :" + fic + "   (" + orig + ")";
}

}  // namespace

void FicAbr(std::int16_t num, const std::string& fic, const std::string& mo,
            const std::string& orig, std::int16_t& err) {
    const std::int16_t errorMode = err;
    const FileMode mode = ModeOf(mo);
    if (mode == FileMode::Output) FicEli(fic);
    const std::int16_t rc = platform::FileOpen(num, fic, mode);
    if (rc == 0) return;
    err = rc;
    if (errorMode == 2 || errorMode == 3) {
        platform::MsgBox("Erro a abrir ficheiro", OpenErrorText(rc, fic, orig),
                         platform::MsgIcon::Critical);
    }
    if (errorMode == 1 || errorMode == 3) platform::EndProgram(kEndStatusFileError);
}

void FicAbrOk(std::int16_t num, const std::string& fic, const std::string& mo, std::int16_t& ok) {
    std::int16_t err = 0;
    FicAbr(num, fic, mo, "", err);
    ok = err == 0 ? std::int16_t{1} : static_cast<std::int16_t>(-err);
}

void FicLerLin(std::int16_t num, std::string& lin, std::int16_t& err) {
    std::string line;
    const std::int16_t rc = platform::FileReadLine(num, line);
    if (rc != 0) {
        lin.clear();
        err = rc;
        return;
    }
    lin = std::move(line);
}

void FicGrvLin(std::int16_t num, const std::string& lin, std::int16_t& err) {
    const std::int16_t rc = platform::FileWrite(num, lin, true);
    if (rc != 0) err = rc;
}

void FicGrvLin(std::int16_t num, const std::string& lin) {
    std::int16_t ignored = 0;
    FicGrvLin(num, lin, ignored);
}

void FicExi(const std::string& fic, std::int16_t& exi) {
    const std::int16_t num = platform::FreeFile();
    const std::int16_t rc = platform::FileOpen(num, fic, FileMode::Input);
    if (rc == 0) {
        platform::FileClose(num);
        exi = 1;
    } else {
        exi = rc == platform::kErrFileNotFound ? std::int16_t{0} : static_cast<std::int16_t>(-rc);
    }
}

void FicEli(const std::string& fic, std::int16_t& err) {
    err = platform::FileDelete(fic);
}

void FicEli(const std::string& fic) {
    platform::FileDelete(fic);
}

}  // namespace lumbra
