#pragma once
// Text files under the host's file numbers: opening with a choice of how a failure is reported,
// reading and writing lines, testing, deleting, and preparing a file so that it can be written.
// Files hold Windows-1252 text; lines end with CR LF. Failures come back as the host's error
// numbers (platform/file_handles.h).

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace lumbra {

// Opens fic under num: mode "O" deletes the file and creates it empty, "A" appends (creating it
// when missing), any other mode reads. On entry err is the error mode; on failure it receives the
// error number, and the error mode decides what else happens:
//   0 nothing; 1 the program ends; 2 a box "Erro a abrir ficheiro" with the number, its
//   description, fic and orig; 3 the box, then the program ends; any other mode nothing.
// On success err is left as it came.
void FicAbr(std::int16_t num, const std::string& fic, const std::string& mo,
            const std::string& orig, std::int16_t& err);

// FicAbr with error mode 0: ok = 1, or minus the error number.
void FicAbrOk(std::int16_t num, const std::string& fic, const std::string& mo, std::int16_t& ok);

// Reads one line of file num without its terminator (CR LF, CR or LF). On failure (past the end,
// num not open) lin = "" and err = the error number; on success err is not touched, so a caller
// sets it to 0 before reading and stops at the first non-zero value.
void FicLerLin(std::int16_t num, std::string& lin, std::int16_t& err);

// Writes lin followed by CR LF to file num. Like FicLerLin, err is set only on failure (61 when
// the disk is full).
void FicGrvLin(std::int16_t num, const std::string& lin, std::int16_t& err);
void FicGrvLin(std::int16_t num, const std::string& lin);

// exi = 1 when fic can be opened for reading, 0 when it does not exist, otherwise minus the error
// number (-76 for a file in a missing folder).
void FicExi(const std::string& fic, std::int16_t& exi);

// Deletes fic; err = 0 or the error number.
void FicEli(const std::string& fic, std::int16_t& err);
void FicEli(const std::string& fic);

// Creates the one folder dir; err = 0 or the error number (75 when it exists already).
void DirCri(const std::string& dir, std::int16_t& err);

// Creates every folder along dir, from the top down; err = the result for the last one, so a
// folder that existed already gives 75. A folder that exists, or a root, is passed over.
void DirCriArv(const std::string& dir, std::int16_t& err);
void DirCriArv(const std::string& dir);

// No host names a folder longer than this (Linux's limit; Windows' is shorter).
inline constexpr std::size_t kLongestFolder = 4096;

// The folders DirCriArv tries for dir, in order: "C:\Dados\Cfg" gives "C:\", "C:\Dados",
// "C:\Dados\Cfg"; "\\srv\share" gives "\\srv", "\\srv\share"; "/tmp/a" gives "/", "/tmp",
// "/tmp/a". The list ends with the first folder longer than longest: every one after it is longer
// still. A dir of more than 32767 pieces gives none.
std::vector<std::string> FoldersAlong(const std::string& dir,
                                      std::size_t longest = std::string::npos);

// Makes sure fic exists, creating its missing folders and an empty file when needed; ok = 1 when
// it exists afterwards, else 0. Every error on the way is passed over.
void FicPrpGrv(const std::string& fic, std::int16_t& ok);

}  // namespace lumbra
