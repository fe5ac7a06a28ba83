#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <functional>
#include <string>

#include "simulator/window/display_view.h"
#include "simulator/window/drawer_view.h"
#include "simulator/window/paper_view.h"
#include "simulator/window/simulator_window.h"

namespace lumbra::sim {
namespace {

// Writes bytes to a device's port as a sender would: open, write, close.
void Send(const VirtualDevice& device, const std::string& bytes) {
    const int fd = ::open(device.port().path().c_str(), O_WRONLY | O_NOCTTY);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ::close(fd);
}

// Runs the event loop until done() holds, for at most five seconds.
bool Within(const std::function<bool()>& done) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < 5000)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

TEST(SimulatorWindowTest, ShowsWhatTheSenderWroteToEachDevice) {
    auto printer = std::make_unique<VirtualDevice>(Device::Printer, LineSettings{});
    auto display = std::make_unique<VirtualDevice>(Device::Display, LineSettings{});
    const VirtualDevice& p = *printer;
    const VirtualDevice& d = *display;
    SimulatorWindow window(std::move(printer), 3, std::move(display), 4);
    EXPECT_EQ(window.portOptions().toStdString(),
              "-COM3 " + p.port().path() + " -COM4 " + d.port().path());
    ASSERT_NE(window.findChild<QLineEdit*>(), nullptr);
    EXPECT_EQ(window.findChild<QLineEdit*>()->text(), window.portOptions());
    EXPECT_EQ(window.displayView().screen().lines[1], std::string(20, ' '));

    Send(p,
         "\x1Bt\x10Ol\xE1\n\x1B\x99\x1DV1"
         "\x1Bp\x01\x64\x64\x1B!\x08N\n\x1DV0");
    ASSERT_TRUE(Within([&] { return window.drawerView().pulses() == 1; }));
    EXPECT_TRUE(window.drawerView().isOpen());  // for the 200 ms of the pulse
    EXPECT_TRUE(Within([&] { return !window.drawerView().isOpen(); }));
    EXPECT_EQ(window.paperView().printedLines(), 2);
    const QTextDocument& paper = *window.paperView().document();
    EXPECT_EQ(paper.toPlainText(), QStringLiteral("Olá\n✂ - - - - corte parcial - - - -\nN\n"
                                                  "✂ - - - - - - corte - - - - - -"));
    EXPECT_EQ(paper.findBlockByNumber(2).begin().fragment().charFormat().fontWeight(), QFont::Bold);
    EXPECT_NE(paper.findBlockByNumber(0).begin().fragment().charFormat().fontWeight(), QFont::Bold);
    ASSERT_EQ(window.messages().count(), 1);
    EXPECT_EQ(window.messages().item(0)->text().toStdString(),
              "impressora: comando desconhecido: 1B 99");

    Send(d,
         "\x0C"
         "Bem-vindo!\r\nObrigado pela visita");
    ASSERT_TRUE(
        Within([&] { return window.displayView().screen().lines[1] == "Obrigado pela visita"; }));
    EXPECT_EQ(window.displayView().screen().lines[0], "Bem-vindo!          ");
}

// A device fed without end keeps the newest lines on its paper and in its messages only.
TEST(SimulatorWindowTest, PaperAndMessagesKeepTheirLastLines) {
    auto printer = std::make_unique<VirtualDevice>(Device::Printer, LineSettings{});
    auto display = std::make_unique<VirtualDevice>(Device::Display, LineSettings{});
    const VirtualDevice& p = *printer;
    const VirtualDevice& d = *display;
    SimulatorWindow window(std::move(printer), 1, std::move(display), 2);
    const int sent = kHistoryLines + 100;
    std::string lines;
    std::string unknown;
    for (int i = 1; i <= sent; ++i) {
        lines += std::to_string(i) + "\n";
        unknown += "\x01Z";
    }
    Send(p, lines);
    Send(d, unknown + std::string(100, '\0'));
    ASSERT_TRUE(Within([&] {
        return window.paperView().printedLines() == sent &&
               window.messages().count() == kHistoryLines &&
               window.messages()
                   .item(kHistoryLines - 1)
                   ->text()
                   .startsWith(QStringLiteral("display: comando desconhecido: 00 00"));
    })) << window.paperView().printedLines()
        << " lines, " << window.messages().count() << " messages";
    EXPECT_EQ(window.paperView().document()->blockCount(), kPaperLines);
    EXPECT_TRUE(window.paperView().toPlainText().startsWith(QStringLiteral("101\n")));
    EXPECT_EQ(window.messages().item(0)->text().toStdString(), "display: comando desconhecido: 01");
    std::string zeros;
    for (int i = 0; i < 64; ++i)
        zeros += i == 0 ? "00" : " 00";
    EXPECT_EQ(window.messages().item(kHistoryLines - 1)->text().toStdString(),
              "display: comando desconhecido: " + zeros + " e mais 36 bytes");
    // A new line brings the newest ones into view, wherever the paper was scrolled to.
    QScrollBar& scroll = *window.paperView().verticalScrollBar();
    scroll.setValue(0);
    Send(p, "fim\n");
    ASSERT_TRUE(Within([&] { return window.paperView().printedLines() == sent + 1; }));
    EXPECT_GT(scroll.maximum(), 0);
    EXPECT_EQ(scroll.value(), scroll.maximum());
    EXPECT_TRUE(window.messages().wordWrap());  // long runs of unknown bytes stay readable
}

}  // namespace
}  // namespace lumbra::sim
