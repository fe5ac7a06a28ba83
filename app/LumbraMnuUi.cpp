#include "app/LumbraMnuUi.h"

#include <QComboBox>
#include <QEvent>
#include <QFont>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <cmath>

#include "platform/qt/qt_codepage.h"
#include "platform/qt/qt_cp1252_validator.h"

namespace lumbra {
namespace {

// Positions and sizes of the layout are in twips; the window is laid out at 96 dots per inch.
constexpr int kTwipsPerPixel = 15;

QRect Twips(int left, int top, int width, int height) {
    return {left / kTwipsPerPixel, top / kTwipsPerPixel, width / kTwipsPerPixel,
            height / kTwipsPerPixel};
}

// Font sizes go in pixels, so that text keeps its proportion to the pixel positions whatever dpi
// the screen reports.
int Pixels(double points) {
    return static_cast<int>(std::lround(points * 96.0 / 72.0));
}

// Liberation Sans stands in for Arial and MS Sans Serif.
QFont Sans(double points, bool bold = false) {
    QFont f(QStringLiteral("Liberation Sans"));
    f.setStyleHint(QFont::SansSerif);
    f.setPixelSize(Pixels(points));
    f.setBold(bold);
    return f;
}

// Liberation Mono stands in for Courier New and Fixedsys.
QFont Mono(double points) {
    QFont f(QStringLiteral("Liberation Mono"));
    f.setStyleHint(QFont::Monospace);
    f.setFixedPitch(true);
    f.setPixelSize(Pixels(points));
    f.setBold(false);
    return f;
}

const QFont& Normal() {
    static const QFont f = Sans(8.25);
    return f;
}

const QFont& Bold() {
    static const QFont f = Sans(8.25, true);
    return f;
}

// The program's texts are Windows-1252 bytes; they become Qt strings here.
QString Tx(const char* cp1252) {
    return platform::FromCp1252(cp1252);
}

// Every control gets its own font, as in the layout, so nothing is inherited from its frame (whose
// caption is bold).
template <class W>
W* Place(W* w, const char* name, const QRect& rect, const QFont& font) {
    w->setObjectName(QString::fromLatin1(name));
    w->setGeometry(rect);
    w->setFont(font);
    return w;
}

QGroupBox* Frame(QWidget* parent, const char* name, const char* caption, const QRect& rect) {
    return Place(new QGroupBox(Tx(caption), parent), name, rect, Bold());
}

// The 3-D caption panel: raised bevel, caption centred.
QLabel* Panel(QWidget* parent, const char* name, const char* caption, const QRect& rect) {
    auto* panel = Place(new QLabel(Tx(caption), parent), name, rect, Normal());
    panel->setFrameStyle(QFrame::Panel | QFrame::Raised);
    panel->setLineWidth(1);
    panel->setAlignment(Qt::AlignCenter);
    return panel;
}

QLabel* Label(QWidget* parent, const char* name, const QRect& rect, const QFont& font) {
    return Place(new QLabel(parent), name, rect, font);
}

// A drop-down list: the user picks an entry and cannot type one.
QComboBox* DropDown(QWidget* parent, const char* name, const QRect& rect) {
    auto* list = Place(new QComboBox(parent), name, rect, Normal());
    list->setEditable(false);
    return list;
}

QLineEdit* TextBox(QWidget* parent, const char* name, const char* text, const QRect& rect,
                   const QFont& font) {
    return Place(new QLineEdit(Tx(text), parent), name, rect, font);
}

QPushButton* Button(QWidget* parent, const char* name, const char* caption, const QRect& rect,
                    const QFont& font) {
    auto* button = Place(new QPushButton(Tx(caption), parent), name, rect, font);
    button->setAutoDefault(false);
    return button;
}

// The layout places the controls of a page relative to the whole tab control, tab strip included,
// while Qt puts a page below the strip. The canvas spans the tab control and stays shifted by the
// page's offset, so the controls keep the layout's positions whatever height the strip takes.
class TabCanvas : public QWidget {
  public:
    TabCanvas(QWidget* page, QTabWidget* tabs) : QWidget(page), tabs_(tabs) {
        page->installEventFilter(this);
        if (page->parentWidget() != nullptr) page->parentWidget()->installEventFilter(this);
        follow();
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Move || event->type() == QEvent::Resize) follow();
        return QWidget::eventFilter(watched, event);
    }

  private:
    void follow() {
        setGeometry(QRect(-parentWidget()->mapTo(tabs_, QPoint(0, 0)), tabs_->size()));
    }

    QTabWidget* tabs_;
};

QWidget* AddPage(QTabWidget* tabs, const char* caption) {
    auto* page = new QWidget;
    tabs->addTab(page, Tx(caption));
    return new TabCanvas(page, tabs);
}

}  // namespace

void LumbraMnuUi::setupUi(QMainWindow* window) {
    window->setWindowTitle(Tx("Configura\xE7\xE3o para POS"));
    window->setFont(Normal());

    auto* client = new QWidget(window);
    client->setFixedSize(Twips(0, 0, 9510, 6120).size());
    window->setCentralWidget(client);

    laTit = Label(client, "laTit", Twips(0, 0, 9510, 300), Sans(9.75, true));

    tbOpc = Place(new QTabWidget(client), "tbOpc", Twips(0, 360, 9495, 4875), Normal());
    tbOpc->setUsesScrollButtons(false);
    QWidget* opc = AddPage(tbOpc,
                           "Op\xE7\xF5"
                           "es");
    QWidget* gav = AddPage(tbOpc, "Gaveta");
    QWidget* dis = AddPage(tbOpc, "Display");
    AddPage(tbOpc, "x");
    AddPage(tbOpc, "x");
    QWidget* spare = AddPage(tbOpc, "x");

    frOpcSai = Frame(opc, "frOpcSai", "Liga\xE7\xE3o", Twips(120, 630, 5865, 3495));
    spLigPor = Panel(frOpcSai, "spLigPor", "Porta", Twips(120, 420, 1125, 285));
    cbLigPor = DropDown(frOpcSai, "cbLigPor", Twips(1350, 420, 2505, 315));
    txLigTst = TextBox(frOpcSai, "txLigTst", "Teste de liga\xE7\xE3o", Twips(300, 2040, 3195, 285),
                       Mono(8.25));
    cmLigTst = Button(frOpcSai, "cmLigTst", "Teste de liga\xE7\xE3o", Twips(3870, 2025, 1635, 315),
                      Normal());
    laLigRes = Label(frOpcSai, "laLigRes", Twips(180, 3060, 5475, 315), Normal());

    frCnv = Frame(opc, "frCnv", "Convers\xE3o de base", Twips(6030, 630, 3345, 3495));
    spCnvDec = Panel(frCnv, "spCnvDec", "Decimal", Twips(120, 480, 1275, 330));
    txCnvDec = TextBox(frCnv, "txCnvDec", "", Twips(1410, 480, 1785, 330), Mono(9));
    SSPanel1 = Panel(frCnv, "SSPanel1", "Hexadecimal", Twips(120, 960, 1275, 330));
    txCnvHex = TextBox(frCnv, "txCnvHex", "", Twips(1410, 960, 1785, 330), Mono(9));

    grGav = Frame(gav, "grGav", "Abertura de gaveta", Twips(180, 450, 9075, 3945));
    spGav = Panel(grGav, "spGav", "Modo de abertura", Twips(210, 480, 1815, 285));
    cbGavAbr = DropDown(grGav, "cbGavAbr", Twips(2100, 480, 4185, 315));
    txGavAbr = TextBox(grGav, "txGavAbr", "", Twips(360, 1080, 5955, 315), Normal());
    cmAbrCic = Button(grGav, "cmAbrCic", "Ciclo", Twips(540, 1860, 1425, 375), Normal());
    cmGavAbr = Button(grGav, "cmGavAbr", "Abrir", Twips(7170, 3060, 1275, 315), Normal());

    frDis = Frame(dis, "frDis", "Comandos para display", Twips(180, 450, 9075, 3945));
    spDisPor = Panel(frDis, "spDisPor", "Porta de liga\xE7\xE3o", Twips(210, 480, 1815, 315));
    cbDisPor = DropDown(frDis, "cbDisPor", Twips(2040, 480, 4185, 315));
    spDisCmd = Panel(frDis, "spDisCmd", "Comando", Twips(210, 1260, 1815, 315));
    cbDisCmd = DropDown(frDis, "cbDisCmd", Twips(2040, 1260, 4185, 315));
    cmDisExe = Button(frDis, "cmDisExe", "Executar", Twips(2040, 1620, 1275, 315), Normal());
    spDisTxm = Panel(frDis, "spDisTxm", "Texto a mostrar", Twips(210, 2790, 1815, 315));
    txDisTxm =
        TextBox(frDis, "txDisTxm", "Texto para display", Twips(2040, 2790, 5955, 330), Mono(9));
    cmDisTxm = Button(frDis, "cmDisTxm", "Mostrar", Twips(2040, 3180, 1275, 315), Normal());

    // What is typed there goes out in Windows-1252: the boxes refuse what it cannot hold.
    txLigTst->setValidator(new platform::Cp1252Validator(txLigTst));
    txDisTxm->setValidator(new platform::Cp1252Validator(txDisTxm));

    lbRes = Place(new QListWidget(spare), "lbRes", Twips(1200, 1110, 4425, 1950), Mono(8.25));
    lbRes->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    lbRes->setUniformItemSizes(true);

    // The spare pages stay in the control (the message list lives on one) but are never shown.
    tbOpc->setCurrentIndex(0);
    for (int i = kFirstSparePage; i < tbOpc->count(); ++i)
        tbOpc->setTabVisible(i, false);

    frCmd = Frame(client, "frCmd", "", Twips(0, 5220, 9510, 600));
    cmFim = Button(frCmd, "cmFim", "Terminar", Twips(7950, 180, 1425, 360), Bold());

    sBar = Place(new QStatusBar(client), "sBar", Twips(0, 5820, 9510, 300), Normal());
    sBar->setSizeGripEnabled(false);

    QMenuBar* bar = window->menuBar();
    mnuFic = bar->addMenu(Tx("Ficheiro"));
    mnuFic->setObjectName(QStringLiteral("mnuFic"));
    mnuLerCfg = mnuFic->addAction(Tx("Ler configura\xE7\xE3o"));
    mnuLerCfg->setObjectName(QStringLiteral("mnuLerCfg"));
    mnuFim = mnuFic->addAction(Tx("Terminar"));
    mnuFim->setObjectName(QStringLiteral("mnuFim"));
    mnuTb = bar->addMenu(Tx("Tabelas"));
    mnuTb->setObjectName(QStringLiteral("mnuTb"));
    mnuTbCfg = mnuTb->addAction(Tx("Configura\xE7\xE3o"));
    mnuTbCfg->setObjectName(QStringLiteral("mnuTbCfg"));

    // The layout is absolute: the window keeps the size the layout gives it.
    window->layout()->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace lumbra
