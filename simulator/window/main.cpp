// lumbra-simulador: a receipt printer with its cash drawer and a customer pole display, virtual,
// in a window. The first line on standard output is the -COMn options that point Lumbra at them.
//
//     lumbra-simulador [--impressora N] [--display M] [--velocidade B] [--pagina-display P]
//
// Qt's own options work too: -qwindowgeometry 600x720+660+0 places the window.

#include <QApplication>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <system_error>

#include "simulator/device_options.h"
#include "simulator/window/simulator_window.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::map<std::string, std::string> values;
    // QApplication took its own options (-qwindowgeometry ...) out of argv.
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        const bool known = name == "--impressora" || name == "--display" ||
                           name == "--velocidade" || name == "--pagina-display";
        if (!known || i + 1 >= argc) {
            std::fprintf(stderr, "lumbra-simulador: argumento inesperado: %s\n", name.c_str());
            return 2;
        }
        values[name] = argv[++i];
    }
    lumbra::sim::DeviceOptions o;
    std::string why;
    if (!lumbra::sim::ReadDeviceOptions(values, o, why)) {
        std::fprintf(stderr, "lumbra-simulador: %s\n", why.c_str());
        return 2;
    }

    std::unique_ptr<lumbra::sim::VirtualDevice> printer;
    std::unique_ptr<lumbra::sim::VirtualDevice> display;
    try {
        printer =
            std::make_unique<lumbra::sim::VirtualDevice>(lumbra::sim::Device::Printer, o.expected);
        display = std::make_unique<lumbra::sim::VirtualDevice>(lumbra::sim::Device::Display,
                                                               o.expected, o.displayCharset);
    } catch (const std::system_error& e) {
        std::fprintf(stderr, "lumbra-simulador: sem pseudo-terminais: %s\n", e.what());
        return 1;
    }
    lumbra::sim::SimulatorWindow window(std::move(printer), o.printerPort, std::move(display),
                                        o.displayPort);
    std::printf("%s\n", window.portOptions().toStdString().c_str());
    std::fflush(stdout);
    window.show();
    return QApplication::exec();
}
