#pragma once
// The option table: one object that reads parameter files line by line from a stack of open
// files, keeps what it read in a memory table, answers queries by name or number, and reads the
// program's command line. Its operations live in several files, one concern each:
//   TdaOpc.cpp     creation, destruction, initialise/release, the file stack
//   TdaOpcLin.cpp  the line syntax and the logical-line reader
//   TdaOpcMem.cpp  the memory table
//   TdaOpcLc.cpp   the command line
//   TdaOpcEsp.cpp  the special options of a zone header
//   TdaOpcZon.cpp  the zone walk
//   TdaOpcOpc.cpp  the options and the option table
//   TdaOpcCab.cpp  the header of a parameter file
//   TdaOpcReg.cpp  records: a parameter file edited line by line, zone blocks written
//   TdaOpcTbo.cpp  option-table files
// All text is Windows-1252 bytes. Procedures return nothing and hand their results back through
// reference arguments; an optional argument that is left out reads as "" or 0.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "options/keyed_list_index.h"
#include "util/text/variant.h"

namespace lumbra {

// One parameter: a logical line and what the line syntax splits out of it.
struct ParReg {
    std::string txp;       // the whole logical line, continuations joined
    std::string txi;       // the descriptive text before the identifier, trimmed
    std::string tpp;       // type mark: "", "'", "#", "##", "$", "$$", "=" or "?"
    std::string var;       // the bracketed identifier, trimmed, in capitals
    std::string vtx;       // everything after the first "=", blanks kept
    std::int16_t ptx = 0;  // position (from 1) in txp of the value's first character; 0 without
    double vl = 0.0;       // the leading number of vtx, 0 when there is none
    std::int16_t ok = 0;   // 1 when the line was read, 0 at end of file

    friend bool operator==(const ParReg&, const ParReg&) = default;
};

// One entry of an option-table file.
struct TboReg {
    std::string txi;  // the entry name
    std::string flg;  // the active flag, "1" when active
    std::string grp;  // the group
    std::string vtx;  // the value text, blanks kept
};

class TdaOpc {
  public:
    // Stamps DbgInf with the time of creation, then KvIni.
    TdaOpc();
    // KvFim: closes the files still on the stack.
    ~TdaOpc();
    TdaOpc(const TdaOpc&) = delete;
    TdaOpc& operator=(const TdaOpc&) = delete;

    // Public variables: plain field access.
    const std::string& DbgInf() const { return DbgInf_; }
    void setDbgInf(const std::string& v) { DbgInf_ = v; }
    const std::string& ficTbo() const { return ficTbo_; }
    void setficTbo(const std::string& v) { ficTbo_ = v; }
    const std::string& ficTip() const { return ficTip_; }
    void setficTip(const std::string& v) { ficTip_ = v; }
    const std::string& LcFpa() const { return LcFpa_; }
    void setLcFpa(const std::string& v) { LcFpa_ = v; }
    std::int16_t LcArgC() const { return LcArgC_; }
    void setLcArgC(std::int16_t v) { LcArgC_ = v; }

    // Empties every table and the file stack. Files read stay open; a file being written (CabCri)
    // is closed and takes its name, as any close of it does.
    void KvIni();
    // Closes every file on the stack, top first, and releases the tables.
    void KvFim();
    void tboFic(const std::string& fic);
    // Opens fic for reading on top of the file stack and consumes its five header lines, taking
    // ficTip from the second. A file that cannot be opened ends the program after a message.
    void tboPrp(const std::string& fic, const std::string& inf = "");
    // Closes the file on top of the stack; reading goes on in the file below.
    void tboFim();
    // The same; ok = 1, or minus the error number when a file being written could not be opened,
    // written or completed (its old file is then kept).
    void tboFim(std::int16_t& ok);

    // Line syntax.
    // Reads on to the next assignment of the top file: ide = its variable name; vp = its value
    // text when vp holds text, else its number. At end of file ide = "" and vp = "" or 0.
    void LerPar(Variant& vp);
    void LerPar(Variant& vp, std::string& ide);
    void ParTpp(const std::string& tx, std::string& tpp);
    void ParTpp(const std::string& tx, std::string& tpp, std::string& var);
    void ParTipVar(const std::string& txv, std::string& tip, std::string& var);
    void ParPrep(const std::string& txp, std::string& txi, std::string& ide, std::string& vtx,
                 std::int16_t& ptx);

    // Header of a parameter file.
    // Builds the five header lines for the file named in ficTbo: its name, type ("PAR" when none),
    // date (text only), version ("1.0" when none) and description.
    void CabPrp(const Variant& tip, const Variant& dt, const Variant& ver, const Variant& inf);
    // Starts file ficTbo on top of the file stack with the header and an empty line; closes it
    // when fec = 1, otherwise RegZon writes on and tboFim closes it. The file takes its name only
    // when it is closed whole; until then the old file stays as it was.
    // ok = 1, or minus the error number of the first step that failed: the open (-76 for a missing
    // folder, -70 without permission, -52 for an empty name), a write (-61 for a full disk), or
    // with fec = 1 the close. A failed file keeps its old content; RegZon and tboFim on it fail as
    // well, and a file that could not be opened is neither written nor closed.
    void CabCri(std::int16_t fec = 0);
    void CabCri(std::int16_t fec, std::int16_t& ok);
    // txi = header line idx, or with mo = "V" its label; trimmed.
    void CabCon(const std::string& mo, std::int16_t idx, std::string& txi);

    // Records: a parameter file edited line by line.
    // Loads the physical lines of fic as records 1..n (0 holds fic) and indexes their names. A file
    // that cannot be opened ends the program after a message.
    void RegPrp(const std::string& fic);
    // Writes the records to fic (the loaded file when fic is blank), one line each; with lpz = 1
    // without the eliminated ones; then releases them. The file is replaced whole or not at all.
    // ok = 1, or minus the error number when the file could not be written.
    void RegExe(const std::string& fic, std::int16_t lpz);
    void RegExe(const std::string& fic, std::int16_t lpz, std::int16_t& ok);
    // Replaces the value after the first ":" of record idx.
    void RegCabAlt(std::int16_t idx, const std::string& txn);
    // The value of var among the records into vp by its kind; a name not found gives "" or 0.
    void RegCon(const std::string& var, Variant& vp);
    void RegCon(const std::string& var, Variant& vp, std::int16_t& ok);
    void RegConIdx(std::int16_t idx, std::string& txi);
    // Sets the value of var; with Cri = 1 a var not found is appended as a new record.
    void RegVarAlt(const std::string& var, const Variant& vp, std::int16_t Cri = 0);
    // Marks the record of var as eliminated.
    void RegVarEli(const std::string& var);
    // Writes a zone block (head, txz(1..), "##", two empty lines) to the file on top of the stack.
    // ok = 1, or minus the error number of the first write that failed; on a file CabCri could not
    // open, nothing is written and ok is minus the error of that open.
    void RegZon(const std::string& zon, const std::vector<std::string>& txz,
                const std::string& txi);
    void RegZon(const std::string& zon, const std::vector<std::string>& txz, const std::string& txi,
                std::int16_t& ok);

    // Memory table.
    void MemFim();
    void MemLpz();
    // Registers the current parameter as entry cnt + 1 under its index name (the part of var after
    // the first ".", trimmed, in capitals); one without a name only when reg is not 0.
    void MemReg(std::int16_t& cnt, std::int16_t reg = 0);
    // The entry number of a name (-1 when absent) or of a number (rounded, halves to even).
    void MemIdxUsa(const Variant& op, std::int16_t& idx);
    void MemConTxp(const Variant& op, std::string& txp);
    void MemConTxp(const Variant& op, std::string& txp, std::int16_t& exi);
    void MemCon(const std::string& var, Variant& vp);
    void MemCon(const std::string& var, Variant& vp, std::int16_t& exi);
    void MemCon(const std::string& var, Variant& vp, std::int16_t& exi, std::string& tpp);
    void MemConIdx(std::int16_t idx, std::string& var, Variant& vp);
    void MemConIdx(std::int16_t idx, std::string& var, Variant& vp, std::string& tpp);
    void MemConIdx(std::int16_t idx, std::string& var, Variant& vp, std::string& tpp,
                   std::int16_t& exi);
    // Makes a line of text (literal notations decoded) the current parameter; exi becomes its ok.
    void MemOpcPrp(const std::string& txo, std::int16_t exi = 0);
    void MemOpcReg(const std::string& ide, const Variant& vop);

    // Command line.
    void LcIni(const std::string& nfp = "");
    void LcPrpArg(const std::string& cmd);
    void LcPrpFpa(const std::string& nfp = "");
    void LcCon(const Variant& arg, Variant& vl);
    void LcCon(const Variant& arg, Variant& vl, std::int16_t& ok);
    void LcExi(const std::string& chv, std::int16_t& exi);

    // Zones: ZonIni, ZonSeg until ide comes back "", then ZonFim.
    // Rows of ZonArr's "MUL" result: description, variable name, value text.
    using ZonMul = std::vector<std::array<std::string, 3>>;
    // Forgets the memory table's names and opens fic with its header read (tboPrp).
    void ZonIni(const std::string& fic, const std::string& inf = "");
    // ZonIni, then the first zone read and processed, its results dropped.
    void ZonIniLer(const std::string& fic, const std::string& inf = "");
    // Closes the file ZonIni opened.
    void ZonFim();
    // Reads the next zone: its identifier (in capitals), kind ("IDE" or "TX"), count of records or
    // lines and information text; ide = "" at the end of the file. A DEF zone also becomes the
    // option list and re-reads the command line, an OPC zone the option table.
    void ZonSeg(std::string& ide, std::string& tip, std::int16_t& cnt);
    void ZonSeg(std::string& ide, std::string& tip, std::int16_t& cnt, std::string& txi);
    void ZonDefPrp(std::int16_t cnt);
    void ZonOpcPrp(std::int16_t cnt);
    // The body of an IDE zone: its assignment lines with an identifier go to the memory table.
    void ZonSegIde(std::int16_t& cnt);
    // The body of a TX zone: every line that is not empty is kept as text.
    void ZonSegTx(std::int16_t& cnt);
    // The current zone as an array, by tip: "IDE" a new keyed list of the records (up to "IDEx":
    // added to the keyed list txz holds), "FIC" the values with references replaced, any other
    // kind but "MUL" the lines of a TX zone. Slot 0 stays empty; a cnt beyond the zone gives the
    // rows the zone has. "MUL" takes the three-column overload, which takes nothing else; the
    // wrong pairing throws std::invalid_argument.
    void ZonArr(const std::string& tip, std::int16_t cnt, std::vector<std::string>& txz);
    void ZonArr(const std::string& tip, std::int16_t cnt, ZonMul& txz);
    // Records and lines read past since ZonIni because their zone already held the 32 767 a
    // 16-bit count can name.
    std::int64_t DroppedRows() const { return droppedRows; }

    // Options.
    // Empties the option list: with mo = "A" an empty keyed list, ready for OpcAct.
    void OpcIni(const std::string& mo = "");
    // The option list becomes the keyed list of the current zone's cnt records.
    void OpcPrp(std::int16_t cnt);
    // tx(1..cnt): the values of the current zone's records, in order of first appearance.
    void OpcArr(std::int16_t cnt, std::vector<std::string>& tx);
    // The value of option chv ("APP:PATH", "LC:" + switch, or a key of the option list; "" when
    // absent) into vop: text stays text, anything else receives the number read from it.
    void OpcCon(const std::string& chv, Variant& vop);
    void OpcCon(const std::string& chv, std::string& vop);
    // Sets option chv to the text of vop; an existing key keeps its position.
    void OpcAct(const std::string& chv, const Variant& vop);
    // The value of chv with its [KEY] references replaced.
    void OpcPath(const std::string& chv, std::string& path);
    // Replaces up to 21 [KEY] references, in txo itself or into sai.
    void OpcSbr(std::string& txo);
    void OpcSbr(const std::string& txo, Variant& sai);
    void OpcSbr(const std::string& txo, std::string& sai);
    // The value text of memory-table variable var with its references replaced.
    void MemPath(const std::string& var, std::string& path);
    void MemPath(const std::string& var, std::string& path, std::int16_t& exi);
    void MemPath(const std::string& var, std::string& path, std::int16_t& exi, std::string& tpp);
    // The debug flag chv: on when the memory-table variable "DBG" + chv holds chv. With sn = 1,
    // vop = "S"/"N" or 1/0; otherwise vop = that variable's value, trimmed, in capitals.
    void OpcDbg(const Variant& chv, Variant& vop, const Variant& sn);
    // Marks the option-table entries whose name begins with a prefix of the comma list tpv ("*"
    // every one) and returns their number; OpcTabCon then hands them out one by one, txi = ""
    // after the last.
    std::int16_t OpcTabPrp(const std::string& tpv = "");
    void OpcTabCon(std::string& txi, std::string& vop);
    void OpcTabCon(std::string& txi, std::string& vop, std::string& tpo);

    // Option-table files.
    // Reads the entries of the "TBO" zones of fic whose group grv selects ("" every entry, "*"
    // every active one, else the active ones of the listed groups); nop = their number.
    void tbOpcPrp(const std::string& fic, const std::string& grv, const std::string& inf);
    void tbOpcPrp(const std::string& fic, const std::string& grv, const std::string& inf,
                  std::int16_t& nop);
    // The matrix of tbOpcPro, column first: Opc[column][row].
    using TboMat = std::array<std::vector<std::string>, 10>;
    // Rows 0..nop of the first min(entries, max) entries (row 0 empty), columns: flag, name,
    // group, value as written (trimmed), "", value with references replaced, its folder, its file
    // name, "", "".
    void tbOpcPro(TboMat& Opc, std::int16_t& nop, std::int16_t max);

    // Special options of a zone header.
    void OpcEspIni();
    void OpcEspUsa(std::string& txi, std::int16_t& usa);
    void OpcEspCon(const std::string& ide, Variant& vop);

  protected:
    // The file stack. FicNov only reserves a number: the caller opens the file under it.
    std::int16_t FicNov();
    // Closes the top file; the new top (0 when the stack became empty), or -1 on an empty stack.
    std::int16_t FicFec();
    // The same; err = 0, or for a file being written the error number of the first step that
    // failed: its open, a write, its close or its completion.
    std::int16_t FicFec(std::int16_t& err);
    // The top file number, -1 on an empty stack.
    std::int16_t FicAtu() const;
    // The top file becomes one being written, opened with the result ok (1, or minus the error).
    void FicGrvAbr(std::int16_t ok);
    // Notes a failed step of the file being written on top of the stack; the first one counts.
    void FicGrvErr(std::int16_t err);
    void tboFec();
    void tboAbr(const std::string& fic, const std::string& inf);

    // The logical-line reader: each fills parAct from the top file.
    void LerLin(std::int16_t& ok);
    // LerLin past empty lines.
    void LerLinCnt(std::string& tpp, std::int16_t& ok);
    // LerLinCnt up to the next assignment line.
    void LerLinAtr(std::int16_t& ok);
    // Splits a logical line into parAct.
    void SetCurrent(std::string text, std::int16_t ok);

    // Finds and parses the next zone header.
    void ZonCabLer(std::string& ide, std::string& tip, std::string& txi);
    // ZonArr's keyed-list kinds, with the positions of txz's names kept in `positions`.
    void ZonArrLst(const std::string& tip, std::int16_t cnt, std::vector<std::string>& txz,
                   KeyedListIndex& positions);
    // The value of option chv as text.
    std::string OptionValue(const std::string& chv);
    // t with up to 21 [KEY] references replaced.
    std::string Substituted(std::string t);

    // What the stack knows of a file it writes, beside its slot of ficNum.
    struct FicGrv {
        bool writing = false;  // opened for writing, not for reading
        bool opened = false;   // its number holds it: after a failed open the number is not ours
        std::int16_t err = 0;  // the first step that failed (its open, a write), 0 while none
    };

    // Public variables.
    std::string DbgInf_;
    std::string ficTbo_;
    std::string ficTip_;
    std::string LcFpa_;
    std::int16_t LcArgC_ = 0;

    ParReg parAct;                     // the logical line last read or prepared
    std::vector<ParReg> memTab;        // the memory table; element 0 stays the empty record
    std::vector<ParReg> opcTab;        // the options table
    std::vector<TboReg> tboTab;        // the entries of an option-table file
    std::int16_t ficQtd = 0;           // files on the stack
    std::vector<std::int16_t> ficNum;  // the stack, 0..ficQtd; element 0 holds 0, never a file
    std::vector<FicGrv> ficGrv;        // 0..ficQtd, beside ficNum: the files being written
    std::vector<std::string> lcArg;    // 0: the whole command line; 1..LcArgC: its words
    std::string idxNom;                // name index of the loaded table
    std::vector<std::string> cabLin;   // the five header lines, 1..5
    std::vector<std::string> regLin;   // the records of a file being edited; 0 is its name
    std::vector<std::string> opcLin;   // the option list, a keyed list
    KeyedListIndex optionPositions;    // opcLin's names; every change of opcLin goes through it
    std::string espLst;                // the special options in use
    std::int16_t espAct = 1;           // 1 while lines read go through the literal decoder
    std::int64_t droppedRows = 0;      // see DroppedRows
};

}  // namespace lumbra
