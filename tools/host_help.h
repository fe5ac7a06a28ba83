#pragma once
// The parts of lumbractl's help that differ by host (posix/, win32/): how a device is named, how a
// command is stopped and with which exit status, how the ports are listed, and the virtual
// devices, which need pseudo-terminals. Windows-1252.

namespace lumbra::ctl {

struct HostHelp {
    // A device that -COMn can name, for the example in the general help.
    const char* deviceExample;
    // The paragraph on exit statuses that ends the general help.
    const char* exitStatuses;
    // What stops a cycle and the statuses it then ends with (the end of a sentence of ciclo's
    // help).
    const char* cycleStops;
    // "portas --help" and "simular --help", whole.
    const char* portas;
    const char* simular;
};

const HostHelp& ThisHostHelp();

}  // namespace lumbra::ctl
