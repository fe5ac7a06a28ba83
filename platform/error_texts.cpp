#include <cstdint>
#include <string>

#include "platform/file_handles.h"

namespace lumbra::platform {

namespace {

// The host's texts for its error numbers, short enough for a box.
struct ErrText {
    std::int16_t err;
    const char* text;
};

constexpr ErrText kErrTexts[] = {
    {kErrUserInterrupt, "Interrompido pelo utilizador"},
    {kErrDeviceTimeout, "Tempo de espera do dispositivo esgotado"},
    {kErrBadFileNameOrNumber, "Nome ou n\xFAmero de ficheiro incorrecto"},
    {kErrFileNotFound, "Ficheiro n\xE3o encontrado"},
    {kErrFileAlreadyOpen, "Ficheiro j\xE1 aberto"},
    {kErrDeviceIo, "Erro de E/S no dispositivo"},
    {kErrDiskFull, "Disco cheio"},
    {kErrInputPastEnd, "Leitura para al\xE9m do fim do ficheiro"},
    {kErrDeviceUnavailable, "Dispositivo indispon\xEDvel"},
    {kErrPermissionDenied, "Permiss\xE3o negada"},
    {kErrPathFileAccess, "Erro de acesso ao caminho/ficheiro"},
    {kErrPathNotFound, "Caminho n\xE3o encontrado"},
};

}  // namespace

std::string ErrDescription(std::int16_t err) {
    for (const ErrText& e : kErrTexts) {
        if (e.err == err) return e.text;
    }
    return "Erro definido pela aplica\xE7\xE3o ou pelo objecto";
}

}  // namespace lumbra::platform
