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
// A cycle stopped by Ctrl+C, as a shell reports a program ended by SIGINT.
inline constexpr int kExitInterrupted = 130;

// Writes "lumbractl: " + reason (Windows-1252) and the usage on standard error; kExitUsage.
int ReportUsageError(const std::string& reason);

}  // namespace lumbra::ctl
