#include "channels/GlbComFr.h"
#include "channels/GlbComFrUi.h"

#include <QCoreApplication>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <chrono>

#include "platform/qt_codepage.h"
#include "tests/channels/channel_fixture.h"
#include "tests/support/pty_pair.h"

namespace lumbra {
namespace {

// Lets the port deliver what arrived; gives up after a generous bound so a fault fails the test
// instead of hanging it.
template <typename Condition>
bool EventsUntil(Condition done) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done() && std::chrono::steady_clock::now() < deadline)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

class HostFormTest : public ::testing::Test {
  protected:
    void SetUp() override { test::MapPorts({{1, pty.slavePath()}}); }
    void TearDown() override { test::MapPorts({}); }
    test::RecordingMsgSink boxes;
    test::PtyPair pty;
    GlbComFr form;
    GlbComFrUi ui{form};
};

// A button left out of its frame's layout keeps a stray place over the other controls.
TEST_F(HostFormTest, EveryButtonIsLaidOutAndShownInsideItsFrame) {
    ui.show();
    QCoreApplication::processEvents();
    for (const QPushButton* button : ui.findChildren<QPushButton*>()) {
        SCOPED_TRACE(button->text().toStdString());
        const QWidget* frame = button->parentWidget();
        ASSERT_NE(frame->layout(), nullptr);
        EXPECT_GE(frame->layout()->indexOf(button), 0);
        EXPECT_TRUE(button->isVisible() && frame->rect().contains(button->geometry()));
    }
}

// The panel sends its text with CR LF on port 1 as it stands when the form loads; the modem test
// sends AT and closes its port.
TEST_F(HostFormTest, PanelAndModemTestSendOnTheirPorts) {
    ui.txCom->setText(platform::FromCp1252("ABC\xE7"));
    ui.cmPserAbr->click();
    ui.cmPserEnv->click();
    EXPECT_EQ(pty.readExactly(6), "ABC\xE7\r\n");
    ui.cmPserFec->click();
    EXPECT_FALSE(form.pSer(1).portOpen());
    ui.Command1->click();
    EXPECT_EQ(pty.readExactly(3), "AT\r");
    EXPECT_FALSE(form.MSComm1().portOpen());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(HostFormTest, ReceivedBytesWaitUntilReceiveIsPressedThenAreDropped) {
    ui.cmPserAbr->click();
    SerialPortControl& port = form.pSer(1);
    pty.send("xyz");
    ASSERT_TRUE(EventsUntil([&] { return port.inBufferCount() == 3; }));
    EXPECT_EQ(port.commEvent(), comEvNone);
    ui.cmPserRec->click();
    pty.send("!");
    EXPECT_TRUE(EventsUntil([&] { return port.commEvent() == comEvReceive; }));
    EXPECT_EQ(port.inBufferCount(), 0);
}

TEST_F(HostFormTest, PanelErrorsAreShownAndTheFormStays) {
    ui.txPserNum->setText(QStringLiteral("abc"));
    ui.cmPserAbr->click();
    ui.txPserNum->setText(QStringLiteral("1"));
    ui.cmPserFec->click();
    const std::string title =
        "Controlo de comunicac\xF5"
        "es";
    const std::vector<test::RecordedBox> want = {
        {title, "Funcao: Abrir|Erro:Port number 0 is outside 1..9"},
        {title, "Funcao: Fechar|Erro:Port 1 is not open"}};
    EXPECT_EQ(boxes.boxes(), want);
}

}  // namespace
}  // namespace lumbra
