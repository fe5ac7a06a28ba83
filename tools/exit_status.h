#pragma once
// How lumbractl ends, for scripts that call it.

#include <string>

namespace lumbra::ctl {

// Every channel operation succeeded.
inline constexpr int kExitOk = 0;
// A channel operation failed; its box went to standard error.
inline constexpr int kExitChannelFailed = 1;
// The command line cannot be used: unknown command or option, unknown row, a text that cannot be
// encoded.
inline constexpr int kExitUsage = 2;
// The parameter file cannot be opened; the engine's message went to standard error.
inline constexpr int kExitNoParameterFile = 3;
// A command stopped by Ctrl+C, as a shell reports a program ended by SIGINT. SIGTERM and SIGHUP
// stop it the same way and end it with 128 + their number (143, 129).
inline constexpr int kExitInterrupted = 130;

// 128 + the stop signal caught (platform/stop_signals.h); kExitInterrupted when none was.
int StoppedBySignalStatus();

// Writes "lumbractl: " + reason (Windows-1252) and the usage on standard error; kExitUsage.
int ReportUsageError(const std::string& reason);

}  // namespace lumbra::ctl
