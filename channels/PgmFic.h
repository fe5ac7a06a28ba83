#pragma once
// Numbered channels 1..CanMax() to files and serial ports. A channel is prepared as a file
// (CanFicPrp) or a serial port (CanPserPrp), then opened, written and closed by its number with the
// operations of its kind. Every open, close and write reports its own failure in the channel error
// box (CanErr) and returns normally; a channel number outside 1..CanMax() is silently ignored.
//
// Serial ports live on the host form GlbComFr; on Linux their receive events need a
// QCoreApplication.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "util/text/variant.h"

namespace lumbra {

class GlbComFr;

// One channel.
struct CanReg {
    std::string tip;           // "F" file, "PS" serial port, "" never prepared
    std::string modoAct;       // file: the mode it is open in, "" when closed
    std::string fic;           // file name, or the port designation as given ("COM2")
    std::int16_t num = 0;      // file: its file number while open; port: the port number 1..9
    std::int16_t modoNum = 0;  // the number after ':' in an open mode ("O:128" gives 128)
    Variant modo;              // file: the requested mode, trimmed and upper-cased
    std::string par;           // port: its settings text; file: the caller's free text
};

// The highest channel number: 0 before CanIni and after CanFim, 10 in between.
std::int16_t CanMax();
// The channel table, slots 0..upper bound (slot 0 unused); empty outside CanIni..CanFim.
const std::vector<CanReg>& CanTab();
// The host form held from CanIni to CanFim; nullptr outside.
GlbComFr* CanHostForm();

// Creates the table (slot 0 only) and the host form; does nothing when already done.
void CanIni();
// Closes the file channels and every open serial port, erases the table, destroys the host form.
// Ignores every error.
void CanFim();

// File channels. Modes (trimmed, upper-cased): "O" output, "O:n" output, "A" append, "A:n" append,
// "B" binary, "R:n" binary, anything else input.
void CanFicPrp(const std::int16_t& can, const std::string& modo, const std::string& fic,
               const std::string& par);
void CanFicAbr(const std::int16_t& can);
void CanFicFec(const std::int16_t& can);
// Writes tx, followed by CR LF when nl is exactly 1.
void CanFicGrv(const std::int16_t& can, const std::string& tx, const std::int16_t& nl);

// Serial channels. porta designates the port ("COM2", "2", or a number); par is the settings text
// "baud,parity,data,stop". A designation or settings text the port cannot take is reported when
// the channel is opened, and the channel stays unusable until it is prepared again.
void CanPserPrp(const std::int16_t& can, const Variant& porta, const std::string& par);
void CanPserAbr(const std::int16_t& can);
void CanPserFec(const std::int16_t& can);
// Sends tx unchanged; returns when its bytes have left the program.
void CanPserEsc(const std::int16_t& can, const std::string& tx);

// Grows the table to hold slot can, keeping its contents.
void CanDim(const std::int16_t& can);
// Makes sure the host form has a port control for channel can.
void CanPserCri(const std::int16_t& can);
// The port number of a designation: text by its last character before any ':' ("COM2" 2, "com3:"
// 3, "COM10" 1), a number as itself; below 1 gives 1.
std::int16_t CanPserNum(const Variant& porta);
// The number after the first ':' of an open mode; 0 when there is none or it does not fit.
std::int16_t CanModNum(const std::string& m);
// The channel error box: title "Erro no ficheiro: " + the channel's name, text "Funcao: " + fn +
// "|Erro:" + the description err. Nothing for can < 1.
void CanErr(const std::int16_t& can, const std::string& fn, const std::string& err);

// Told of every successful write: the channel and the bytes that left through it, line end
// included. The console tool lists them; one observer at a time, an empty one removes it.
using ChannelWriteObserver = std::function<void(const CanReg& channel, std::string_view bytes)>;
void SetChannelWriteObserver(ChannelWriteObserver observer);

}  // namespace lumbra
