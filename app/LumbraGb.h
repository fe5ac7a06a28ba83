#pragma once
// The program module: the configuration read from the parameter file, the selected rows, start and
// stop, and the operations that open, write and close the selected ports. Nothing here needs the
// window, so the window and the console tool run the same code.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lumbra {

class TdaOpc;

// One row of ligTab, gavTab or disTab.
struct LinReg {
    std::string rsv;  // always "", never read
    std::string txi;  // the line's name, shown in the selection lists
    std::string ide;  // the kind between "[" and "]", trimmed and upper-cased ("SER" is serial)
    std::string vtx;  // everything after the first "=", untouched
};

// One row of cmdTab.
struct CmdReg {
    std::string ide;  // the kind exactly as written
    std::string txi;
    std::string vtx;
};

// The program's state, one copy for the whole run.
struct LumbraGbState {
    // Created by the first load and reused by every later one.
    std::unique_ptr<TdaOpc> cfgOpc;
    // The parameter file the last load found ("" when none).
    std::string cfgFic;
    std::string DbgModo, DirBas, DirDiv, DirTmp, DirOpc;
    // Rows 0..n of their zone, row 0 empty; no rows at all until the zone is first read.
    std::vector<LinReg> ligTab, gavTab, disTab;
    std::vector<CmdReg> cmdTab;
    // Selected rows: list position + 1, so 0 is "nothing selected".
    std::int16_t ligIdx = 0, gavIdx = 0, disIdx = 0;

    LumbraGbState();
    ~LumbraGbState();
    LumbraGbState(LumbraGbState&&) noexcept;
    LumbraGbState& operator=(LumbraGbState&&) noexcept;
};

LumbraGbState& Gb();

// Row idx of a table; the empty row for a row the table does not have (a table never built
// behaves like one holding only its empty row 0).
template <typename Row>
const Row& TableRow(const std::vector<Row>& tab, std::int16_t idx) {
    static const Row empty{};
    return idx >= 0 && static_cast<std::size_t>(idx) < tab.size()
               ? tab[static_cast<std::size_t>(idx)]
               : empty;
}

// True when the table holds at least one configured row beyond the empty row 0.
template <typename Row>
bool HasRows(const std::vector<Row>& tab) {
    return tab.size() > 1;
}

// The channel table, then the configuration from "Lumbra.par" (or the file named by -FP).
void LumbraIni();
// Loads the configuration; nfp is the parameter file's default name. A file that cannot be opened
// ends the program through the engine's open-failure message.
void LumbraCfgLer(const std::string& nfp);
// Closes every channel and serial port and releases the channel table and the host form.
void LumbraFim();

// Channel 1 on the selected connection port (ligTab(ligIdx)) and on the selected display port
// (disTab(disIdx)): a row of kind "SER" is a serial port "COMn,settings", any other row a file or
// device written as output. Failures are reported by the channel operations and never stop the
// sequence open, write, close.
void LumbraLigAbr(std::int16_t& can);
void LumbraLigGrv(const std::int16_t& can, const std::string& tx, const std::int16_t& nl);
void LumbraLigFec(std::int16_t& can);
void LumbraDisAbr(std::int16_t& can);
void LumbraDisGrv(const std::int16_t& can, const std::string& tx, const std::int16_t& nl);
void LumbraDisFec(std::int16_t& can);

}  // namespace lumbra
