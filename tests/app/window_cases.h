#pragma once
// Cases both windows' tests run: the parameter file they start on, what each button sends where,
// and the base converter. Texts are Windows-1252.

#include <array>
#include <string>
#include <vector>

namespace lumbra::test {

// The drawer mode the cycle sweeps (its zone read without literal expansion).
inline const std::string kCycleCommand = "chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])";

// Zones of a window test: COM1 the printer, COM2 the display, COM3 a port with no device; file
// ports "lig.txt" and "dis.txt" in folder (joined by sep).
inline std::vector<std::string> WindowParLines(const std::string& folder, char sep) {
    return {"#LIG Portas - Liga\xE7\xE3o",
            "Impress\xE3o [ser]=COM1,9600,n,8,1",
            "Impress\xE3o [FIC]=" + folder + sep + "lig.txt",
            "Sem dispositivo [SER]=COM3,9600,n,8,1",
            "##",
            "#GAV Gaveta - Modos [CnvChr=0]",
            "ESC p [ESC]=chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)",
            "Texto [TXT]=\"A\"+chr$(13,10)",
            "Ciclo [CIC]=" + kCycleCommand,
            "##",
            "#DIS_OPC Display",
            "Display [SER]=COM2,9600,n,8,1",
            "Display [FIC]=" + folder + sep + "dis.txt",
            "##",
            "#DIS_CMD Comandos",
            "Limpar [CLR]=chr$(12)",
            "Cursor [HOME]=chr$(11)",
            "##"};
}

// One user action: a list entry chosen (or none), a box's text replaced (or none), a button
// pressed; then the bytes that reach a port ("COM1", "COM2") or a file of the folder. The rows run
// in order in one window, each on the choices and texts the rows before it left.
struct SendCase {
    const char* list;
    int position;
    const char* box;
    const char* typed;
    const char* button;
    const char* device;
    std::string bytes;
};

inline const std::array<SendCase, 7> kSendCases{{
    {nullptr, 0, nullptr, nullptr, "cmGavAbr", "COM1", std::string("\x1Bp\0\x19\xFA", 5)},
    {nullptr, 0, "txLigTst", "Pre\xE7o 5\x80", "cmLigTst", "COM1", "Pre\xE7o 5\x80\r\n"},
    {"cbGavAbr", 1, nullptr, nullptr, "cmGavAbr", "COM1", "A\r\n"},
    {"cbLigPor", 1, nullptr, nullptr, "cmLigTst", "lig.txt", "Pre\xE7o 5\x80\r\n\r\n"},
    {"cbDisCmd", 1, nullptr, nullptr, "cmDisExe", "COM2", "\x0B"},
    {nullptr, 0, nullptr, nullptr, "cmDisTxm", "COM2", "Texto para display"},
    // Typed notation is not decoded: chr$(12) arrives as its characters.
    {"cbDisPor", 1, "txDisTxm", "Ol\xE1 chr$(12)", "cmDisTxm", "dis.txt", "Ol\xE1 chr$(12)"},
}};

struct ConversionCase {
    const char* box;
    const char* typed;
    const char* other;
    const char* shown;
};

inline constexpr std::array<ConversionCase, 5> kConversionCases{{
    {"txCnvDec", "255", "txCnvHex", "FF"},
    {"txCnvDec", "12abc", "txCnvHex", "Erro"},
    {"txCnvDec", "-1", "txCnvHex", "FFFFFFFF"},
    {"txCnvHex", "8000", "txCnvDec", "-32768"},
    {"txCnvHex", "ff", "txCnvDec", "255"},
}};

}  // namespace lumbra::test
