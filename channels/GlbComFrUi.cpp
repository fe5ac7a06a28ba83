#include "channels/GlbComFrUi.h"

#include <QFont>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include "channels/GlbComFr.h"
#include "platform/msg_box.h"
#include "platform/qt/qt_codepage.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

const std::string kCaption =
    "Controlo de comunicac\xF5"
    "es";

QString Text(const std::string& bytes) {
    return platform::FromCp1252(bytes);
}

QPushButton* Button(const char* caption, QWidget* parent) {
    return new QPushButton(Text(caption), parent);
}

}  // namespace

GlbComFrUi::GlbComFrUi(GlbComFr& form, QWidget* parent) : QWidget(parent), form_(form) {
    buildControls();
    Form_Load();
}

void GlbComFrUi::buildControls() {
    setWindowTitle(Text(kCaption));
    // About 9510 by 6405 twips.
    resize(634, 427);

    lbRec = new QListWidget(this);
    lbRec->setFont(QFont(QStringLiteral("Courier New")));
    Command1 = Button("Command1", this);

    frPser = new QGroupBox(Text("Porta serie"), this);
    spPsrerNum = new QLabel(Text("Porta"), frPser);
    spPsrerNum->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    txPserNum = new QLineEdit(frPser);
    txPserOpc = new QLineEdit(frPser);
    cmPserAbr = Button("Abrir", frPser);
    cmPserFec = Button("Fechar", frPser);
    cmPserEnv = Button("Enviar", frPser);
    cmPserRec = Button("Receber", frPser);
    auto* panel = new QGridLayout(frPser);
    panel->addWidget(spPsrerNum, 0, 0);
    panel->addWidget(txPserNum, 0, 1);
    panel->addWidget(txPserOpc, 0, 2);
    panel->addWidget(cmPserAbr, 1, 0);
    panel->addWidget(cmPserFec, 1, 1);
    panel->addWidget(cmPserEnv, 1, 2);
    panel->addWidget(cmPserRec, 1, 3);

    txCom = new QLineEdit(this);

    rod = new QFrame(this);
    rod->setFrameStyle(QFrame::Panel | QFrame::Raised);
    cmFim = Button("Terminar", rod);
    lbsup = new QLabel(rod);
    auto* footer = new QHBoxLayout(rod);
    footer->addWidget(lbsup, 1);
    footer->addWidget(cmFim);

    StatusBar1 = new QStatusBar(this);

    auto* form = new QVBoxLayout(this);
    form->addWidget(lbRec, 1);
    form->addWidget(Command1, 0, Qt::AlignLeft);
    form->addWidget(frPser);
    form->addWidget(txCom);
    form->addWidget(rod);
    form->addWidget(StatusBar1);

    connect(cmPserAbr, &QPushButton::clicked, this, [this] { cmPserAbr_Click(); });
    connect(cmPserFec, &QPushButton::clicked, this, [this] { cmPserFec_Click(); });
    connect(cmPserEnv, &QPushButton::clicked, this, [this] { cmPserEnv_Click(); });
    connect(cmPserRec, &QPushButton::clicked, this, [this] { cmPserRec_Click(); });
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(cmFim, &QPushButton::clicked, this, [this] { cmFim_Click(); });
}

void GlbComFrUi::Form_Load() {
    txPserNum->setText(QStringLiteral("1"));
    txPserOpc->setText(QStringLiteral("9600,n,8,1"));
}

bool GlbComFrUi::panelStep(bool done, const SerialPortControl& control, const std::string& fn) {
    if (!done) {
        platform::MsgBox(kCaption, "Funcao: " + fn + "|Erro:" + control.errorText(),
                         platform::MsgIcon::Critical);
    }
    return done;
}

void GlbComFrUi::cmPserAbr_Click() {
    SerialPortControl& port = form_.pSer(1);
    std::int16_t number = 0;
    VlNum(Variant(platform::ToCp1252(txPserNum->text())), number);
    if (!panelStep(port.setCommPort(number), port, "Abrir")) return;
    if (!panelStep(port.setSettings(platform::ToCp1252(txPserOpc->text())), port, "Abrir")) return;
    port.setRThreshold(0);
    panelStep(port.setPortOpen(true), port, "Abrir");
}

void GlbComFrUi::cmPserFec_Click() {
    SerialPortControl& port = form_.pSer(1);
    panelStep(port.setPortOpen(false), port, "Fechar");
}

void GlbComFrUi::cmPserEnv_Click() {
    SerialPortControl& port = form_.pSer(1);
    panelStep(port.output(platform::ToCp1252(txCom->text()) + "\r\n"), port, "Enviar");
}

void GlbComFrUi::cmPserRec_Click() {
    form_.pSer(1).setRThreshold(1);
}

void GlbComFrUi::Command1_Click() {
    SerialPortControl& modem = form_.MSComm1();
    if (!panelStep(modem.setCommPort(1), modem, "Abrir")) return;
    if (!panelStep(modem.setSettings("9600,N,8,1"), modem, "Abrir")) return;
    modem.setInputLen(0);
    if (!panelStep(modem.setPortOpen(true), modem, "Abrir")) return;
    // The port is closed even when the command did not go out, so the test can be repeated.
    const bool sent = panelStep(modem.output("AT\r"), modem, "Enviar");
    if (sent) {
        panelStep(modem.setPortOpen(false), modem, "Fechar");
    } else {
        modem.setPortOpen(false);
    }
}

void GlbComFrUi::cmFim_Click() {
    close();
}

}  // namespace lumbra
