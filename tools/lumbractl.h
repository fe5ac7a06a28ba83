#pragma once
// lumbractl from its command line to its exit status.

namespace lumbra::ctl {

// Reads the command line, loads the configuration when the command needs it, runs the command and
// returns the exit status (see exit_status.h). platform::SetProgramArgs must have been given the
// same arguments first.
int RunLumbraCtl(int argc, char** argv);

}  // namespace lumbra::ctl
