#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "platform/file_handles.h"
#include "platform/file_system.h"
#include "util/files/paths.h"
#include "util/files/text_files.h"
#include "util/text/split.h"

namespace lumbra {

void DirCri(const std::string& dir, std::int16_t& err) {
    err = platform::DirCreate(dir);
}

std::vector<std::string> FoldersAlong(const std::string& dir, std::size_t longest) {
    std::string d = dir;
    // A path written with "\" is split at "\" (any "/" in it counts as one); a path of this host
    // that has only "/" is split at "/".
    char sep = '\\';
    if (d.find('\\') != std::string::npos) {
        std::replace(d.begin(), d.end(), '/', '\\');
    } else if (d.find('/') != std::string::npos) {
        sep = '/';
    }
    // The two leading separators of a network path would split into two empty pieces.
    const bool network = d.starts_with("\\\\");
    if (network) d.replace(0, 2, "||");

    std::vector<std::string> pieces;
    std::int16_t n = 0;
    TxArr(d, std::string(1, sep), pieces, n);

    std::vector<std::string> steps;
    std::string acc;
    // TxArr refuses a path of more pieces than its count can hold (n = 0); the walk never reads
    // past the pieces it was given.
    const std::size_t count = n > 0 ? std::min(static_cast<std::size_t>(n), pieces.size() - 1) : 0;
    for (std::size_t i = 1; i <= count; ++i) {
        std::string p;
        if (i == 1 && pieces[i].empty()) {
            // A path that starts at the root goes on from the root, not from the current folder.
            p = std::string(1, sep);
        } else {
            // Joined with the path's own separator, also while the folder so far shows none.
            std::string base = acc;
            if (!base.empty() && base.back() != '\\' && base.back() != '/') base += sep;
            PathJun(base, pieces[i], p);
        }
        if (i == 1 && network && p.starts_with("||")) p.replace(0, 2, "\\\\");
        steps.push_back(p);
        if (p.size() > longest) break;
        acc = p;
    }
    return steps;
}

void DirCriArv(const std::string& dir, std::int16_t& err) {
    std::int16_t last = 0;
    // Past the longest folder a host can name every mkdir fails alike: one try says so.
    for (const std::string& folder : FoldersAlong(dir, kLongestFolder)) {
        DirCri(folder, last);
    }
    err = last;
}

void DirCriArv(const std::string& dir) {
    std::int16_t ignored = 0;
    DirCriArv(dir, ignored);
}

void FicPrpGrv(const std::string& fic, std::int16_t& ok) {
    std::int16_t e = 0;
    FicExi(fic, e);
    if (e == 1) {
        ok = 1;
        return;
    }
    std::string dir, nome;
    PathSep(fic, dir, nome);
    DirCriArv(dir);
    const std::int16_t num = platform::FreeFile();
    if (platform::FileOpen(num, fic, platform::FileMode::Binary) == 0) platform::FileClose(num);
    FicExi(fic, e);
    ok = e == 1 ? std::int16_t{1} : std::int16_t{0};
}

}  // namespace lumbra
