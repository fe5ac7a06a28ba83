#pragma once
// Path composition and decomposition. Paths in parameter files are usually written Windows-style:
// drive letters ("C:"), "\" between folders, network paths that begin with "\\" and bracketed
// folders such as "[CFG]LUMBRA.PAR". Paths of this host, with "/", work as well: "/"
// ends a folder wherever "\" does, and a join uses the separator the path already has.
// Outputs may be the same objects as inputs: every result is computed before it is stored.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumbra {

// The separator a join adds when neither part shows one: the host's own.
#ifdef _WIN32
inline constexpr std::string_view SepDir = "\\";
#else
inline constexpr std::string_view SepDir = "/";
#endif

// path = dir and nome with one separator between them: ("C:\a", "b.txt") gives "C:\a\b.txt",
// ("C:\a\", "\b") gives "C:\a\b", ("/tmp", "a.par") gives "/tmp/a.par". A trailing separator is
// dropped except from a root ("\" or "/"); a bare drive becomes its root ("" and "C:" give "C:\").
void PathJun(const std::string& dir, const std::string& nome, std::string& path);

// Splits the blank-trimmed path at its last separator or "]": "C:\a\b.txt" gives "C:\a" and
// "b.txt"; "[CFG]LUMBRA.PAR" gives "[CFG]" and "LUMBRA.PAR" (the bracket stays); "x" gives "" and
// "x".
void PathSep(const std::string& path, std::string& dir, std::string& nome);

// Splits off the drive: "C:\Cfg" gives "C" and "\Cfg"; "\\srv\share\Cfg" gives "\\srv" and
// "share\Cfg"; "Cfg" gives "" and "Cfg".
void PathDrv(const std::string& dir, std::string& drv, std::string& dir2);

// pos = the position (from 1) of the "." of an extension of at most three characters, or 0.
void PathPosExt(const std::string& nome, std::int16_t& pos);

// Splits nome into base and extension, both trimmed. With mo = 1 a name without a short extension
// is split at its first blank ("LUMBRA PAR").
void PathExt(const std::string& nome, std::string& base, std::string& ext, std::int16_t mo);

// nome = base "." ext, or base alone when ext is "".
void PathNomExt(const std::string& base, const std::string& ext, std::string& nome);

// partes 0 to 5 = the path, its drive, its folder without the drive, the file name, the base name
// and the extension. partes grows to six slots when it has fewer.
void PathDec(const std::string& path, std::vector<std::string>& partes);

}  // namespace lumbra
