#pragma once
// The device actions of the window's buttons, without the window: what bytes each one prepares and
// how it sends them through the selected rows (Gb().ligIdx, gavIdx, disIdx). The window refreshes
// the selected rows from its lists first; the console tool sets them from its arguments.
//
// An action whose port zone has no configured rows does nothing at all: with no port to choose
// there is nothing a technician could mean to send.

#include <cstdint>
#include <functional>
#include <string>

namespace lumbra {

// The texts the test boxes hold when the program starts (Windows-1252).
inline constexpr const char* kLigTstPreset = "Teste de liga\xE7\xE3o";
inline constexpr const char* kDisTxmPreset = "Texto para display";

// The connection-test line: the text followed by CR LF.
std::string ConnectionTestLine(const std::string& ligTx);

// A drawer command as it goes out: every "+" removed, the literal notation decoded, every double
// quote removed.
std::string PrepareDrawerCommand(const std::string& vtx);

// Sends the connection-test line of ligTx to the selected connection port (file ports add their
// own line end after it).
void SendConnectionTest(const std::string& ligTx);
// Sends the selected drawer mode's command, prepared, to the selected connection port.
void SendDrawerCommand();
// Sends tx exactly to the selected display port.
void SendDisplayText(const std::string& tx);
// The text of display command k (list position + 1); "" for a row the table does not have.
const std::string& DisplayCommand(std::int16_t k);

// The drawer cycle: 13 values of P1 (10..250 step 20) outside, 13 of P2 inside them, MO 0 and 1
// innermost.
inline constexpr int kCycleSends = 338;
struct CycleStep {
    int p1 = 0;
    int p2 = 0;
    int mo = 0;
};
// Step i of the cycle, 0 <= i < kCycleSends.
CycleStep CycleStepAt(int i);

// Replaces the leading placeholders [MO], [P1], [P2] of orig, one after another, by the step's
// values in decimal; substitution stops at the first bracketed text that is anything else.
std::string SubstituteCyclePlaceholders(const std::string& orig, const CycleStep& step);

// The button every box raised during a cycle offers; choosing it ends the cycle at once.
inline constexpr const char* kCycleStopCaption = "Parar ciclo";

// What the cycle asks of its caller at each step; a hook left out is not called.
struct CycleHooks {
    // The row holds the substituted command t now (the window shows it and lets events run).
    std::function<void(const std::string& t)> shown = {};
    // Asked before each step and after shown: true ends the cycle there.
    std::function<bool()> stopped = {};
    // Sends the selected mode's command.
    std::function<void()> send = {};
    // The cycle is over and the row holds its own command again: t is what the box of the command
    // keeps showing, the last command sent (the row's own when none was), whether the cycle ran
    // to its end or was stopped.
    std::function<void(const std::string& t)> over = {};
};

// Runs the cycle on gavTab row `row`: for each step the row takes the substituted command, then
// shown, stopped and send are called; the row gets its own command back at the end, also when the
// cycle was stopped, and over is told what to show. While it runs every box offers
// kCycleStopCaption (platform/msg_box.h): choosing it ends the cycle without another box or send.
// Returns the number of sends made.
int RunDrawerCycle(std::int16_t row, const CycleHooks& hooks);

}  // namespace lumbra
