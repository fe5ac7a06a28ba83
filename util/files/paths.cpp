#include "util/files/paths.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "util/text/chars.h"

namespace lumbra {
namespace {

constexpr std::string_view kSeparators = "\\/";
constexpr char kDriveRoot = '\\';

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

bool HasDrive(const std::string& path) {
    return path.size() >= 2 && path[1] == ':';
}

// The separator a join of dir and nome uses: the one dir already ends its folders with, a drive's
// "\", the first one nome holds, or the host's own.
char JoinSeparator(const std::string& dir, const std::string& nome) {
    const auto inDir = dir.find_last_of(kSeparators);
    if (inDir != std::string::npos) return dir[inDir];
    if (HasDrive(dir)) return kDriveRoot;
    const auto inNome = nome.find_first_of(kSeparators);
    if (inNome != std::string::npos) return nome[inNome];
    return SepDir.front();
}

// A position past the 16-bit range reads as 0, none: such a name is longer than a name can be.
std::int16_t ToPos(std::size_t index) {
    return index < INT16_MAX ? static_cast<std::int16_t>(index + 1) : std::int16_t{0};
}

}  // namespace

void PathJun(const std::string& dir, const std::string& nome, std::string& path) {
    const char sep = JoinSeparator(dir, nome);
    std::string r = dir;
    if (!r.empty() && !IsSeparator(r.back())) r += sep;
    if (!dir.empty() && !nome.empty() && IsSeparator(nome.front())) {
        r.append(nome, 1);
    } else {
        r += nome;
    }
    if (r.size() > 1 && IsSeparator(r.back())) r.pop_back();
    if (r.size() == 2 && r[1] == ':') r += kDriveRoot;
    path = std::move(r);
}

void PathSep(const std::string& path, std::string& dir, std::string& nome) {
    const std::string t(TrimBlanks(path));
    const auto i = t.find_last_of("\\/]");
    if (i == std::string::npos) {
        dir.clear();
        nome = t;
        return;
    }
    std::string d = t.substr(0, t[i] == ']' ? i + 1 : i);
    nome = t.substr(i + 1);
    dir = std::move(d);
}

void PathDrv(const std::string& dir, std::string& drv, std::string& dir2) {
    std::string d;
    std::string rest;
    if (HasDrive(dir)) {
        d = dir.substr(0, 1);
        rest = dir.substr(2);
    } else {
        rest = dir;
    }
    if (dir.starts_with("\\\\")) {
        const std::string s = dir.substr(2);
        const auto slash = s.find('\\');
        if (slash == std::string::npos) {
            d = "\\\\";
            rest = s;
        } else {
            d = "\\\\" + s.substr(0, slash);
            rest = s.substr(slash + 1);
        }
    }
    drv = std::move(d);
    dir2 = std::move(rest);
}

void PathPosExt(const std::string& nome, std::int16_t& pos) {
    const std::size_t len = nome.size();
    std::int16_t found = 0;
    for (std::size_t k = 0; k < 4 && k < len; ++k) {
        if (nome[len - 1 - k] == '.') {
            found = ToPos(len - 1 - k);
            break;
        }
    }
    pos = found;
}

void PathExt(const std::string& nome, std::string& base, std::string& ext, std::int16_t mo) {
    std::int16_t p = 0;
    PathPosExt(nome, p);
    std::size_t dot = p > 0 ? static_cast<std::size_t>(p - 1) : std::string::npos;
    if (mo == 1 && dot == std::string::npos) dot = nome.find(' ');
    if (dot == std::string::npos) dot = nome.size();
    const std::string b(TrimBlanks(std::string_view(nome).substr(0, dot)));
    const std::string e(dot < nome.size() ? TrimBlanks(std::string_view(nome).substr(dot + 1))
                                          : std::string_view());
    base = b;
    ext = e;
}

void PathNomExt(const std::string& base, const std::string& ext, std::string& nome) {
    nome = ext.empty() ? base : base + "." + ext;
}

void PathDec(const std::string& path, std::vector<std::string>& partes) {
    const std::string whole = path;
    std::string dir, nome, drv, dir2, base, ext;
    PathSep(whole, dir, nome);
    PathDrv(dir, drv, dir2);
    PathExt(nome, base, ext, 1);
    if (partes.size() < 6) partes.resize(6);
    partes[0] = whole;
    partes[1] = drv;
    partes[2] = dir2;
    partes[3] = nome;
    partes[4] = base;
    partes[5] = ext;
}

}  // namespace lumbra
