#include "channels/GlbComFr.h"
#include "channels/GlbComFrUi.h"

#include <QCoreApplication>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>

#include "platform/qt_codepage.h"
#include "tests/channels/channel_fixture.h"
#include "tests/support/pty_pair.h"

namespace lumbra {
namespace {

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

}  // namespace
}  // namespace lumbra
