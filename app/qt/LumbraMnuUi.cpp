#include "app/qt/LumbraMnuUi.h"

#include <QComboBox>
#include <QEvent>
#include <QFont>
#include <QGroupBox>
#include <QHash>
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
#include <stdexcept>

#include "app/window_layout.h"
#include "platform/qt/qt_codepage.h"
#include "platform/qt/qt_cp1252_validator.h"

namespace lumbra {
namespace {

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

const QFont& FontOf(CtlFont font) {
    static const QFont sans = Sans(8.25);
    static const QFont bold = Sans(8.25, true);
    static const QFont title = Sans(9.75, true);
    static const QFont courier = Mono(8.25);
    static const QFont fixedsys = Mono(9);
    switch (font) {
        case CtlFont::SansBold:
            return bold;
        case CtlFont::Title:
            return title;
        case CtlFont::Courier:
            return courier;
        case CtlFont::Fixedsys:
            return fixedsys;
        case CtlFont::Sans:
            break;
    }
    return sans;
}

// The program's texts are Windows-1252 bytes; they become Qt strings here.
QString Tx(const char* cp1252) {
    return platform::FromCp1252(cp1252);
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

// The widget of one kind with the control's caption; every control gets its own font, as in the
// layout, so nothing is inherited from its frame (whose caption is bold).
QWidget* Make(const CtlLayout& c, QWidget* parent) {
    QWidget* w = nullptr;
    switch (c.kind) {
        case CtlKind::Label:
            w = new QLabel(Tx(c.caption), parent);
            break;
        case CtlKind::Tabs: {
            auto* tabs = new QTabWidget(parent);
            tabs->setUsesScrollButtons(false);
            w = tabs;
            break;
        }
        case CtlKind::Frame:
            w = new QGroupBox(Tx(c.caption), parent);
            break;
        case CtlKind::Panel: {
            // The 3-D caption panel: raised bevel, caption centred.
            auto* panel = new QLabel(Tx(c.caption), parent);
            panel->setFrameStyle(QFrame::Panel | QFrame::Raised);
            panel->setLineWidth(1);
            panel->setAlignment(Qt::AlignCenter);
            w = panel;
            break;
        }
        case CtlKind::DropDown: {
            // The user picks an entry and cannot type one.
            auto* list = new QComboBox(parent);
            list->setEditable(false);
            w = list;
            break;
        }
        case CtlKind::TextBox: {
            // What is typed there goes out in Windows-1252: the box refuses what it cannot hold.
            auto* box = new QLineEdit(Tx(c.caption), parent);
            box->setValidator(new platform::Cp1252Validator(box));
            w = box;
            break;
        }
        case CtlKind::Button: {
            auto* button = new QPushButton(Tx(c.caption), parent);
            button->setAutoDefault(false);
            w = button;
            break;
        }
        case CtlKind::List: {
            auto* list = new QListWidget(parent);
            list->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
            list->setUniformItemSizes(true);
            w = list;
            break;
        }
        case CtlKind::StatusBar: {
            auto* bar = new QStatusBar(parent);
            bar->setSizeGripEnabled(false);
            w = bar;
            break;
        }
    }
    w->setObjectName(QString::fromLatin1(c.name));
    w->setGeometry(Twips(c.left, c.top, c.width, c.height));
    w->setFont(FontOf(c.font));
    return w;
}

template <class W>
W* Take(const QHash<QString, QWidget*>& made, const char* name) {
    auto* w = qobject_cast<W*>(made.value(QString::fromLatin1(name)));
    if (w == nullptr) throw std::logic_error(std::string("layout lacks ") + name);
    return w;
}

}  // namespace

void LumbraMnuUi::setupUi(QMainWindow* window) {
    window->setWindowTitle(Tx(kLumbraMnuCaption));
    window->setFont(FontOf(CtlFont::Sans));

    auto* client = new QWidget(window);
    client->setFixedSize(Twips(0, 0, kClientWidthTwips, kClientHeightTwips).size());
    window->setCentralWidget(client);

    QHash<QString, QWidget*> made;
    std::vector<QWidget*> pages;
    for (const CtlLayout& c : LumbraMnuControls()) {
        QWidget* parent = client;
        if (c.parent[0] == '#')
            parent = pages.at(static_cast<std::size_t>(std::atoi(c.parent + 1)));
        else if (c.parent[0] != '\0')
            parent = made.value(QString::fromLatin1(c.parent));
        QWidget* w = Make(c, parent);
        made.insert(w->objectName(), w);
        if (c.kind == CtlKind::Tabs) {
            for (const char* caption : LumbraMnuPages())
                pages.push_back(AddPage(static_cast<QTabWidget*>(w), caption));
        }
    }

    laTit = Take<QLabel>(made, "laTit");
    tbOpc = Take<QTabWidget>(made, "tbOpc");
    frOpcSai = Take<QGroupBox>(made, "frOpcSai");
    spLigPor = Take<QLabel>(made, "spLigPor");
    cbLigPor = Take<QComboBox>(made, "cbLigPor");
    txLigTst = Take<QLineEdit>(made, "txLigTst");
    cmLigTst = Take<QPushButton>(made, "cmLigTst");
    laLigRes = Take<QLabel>(made, "laLigRes");
    frCnv = Take<QGroupBox>(made, "frCnv");
    spCnvDec = Take<QLabel>(made, "spCnvDec");
    txCnvDec = Take<QLineEdit>(made, "txCnvDec");
    SSPanel1 = Take<QLabel>(made, "SSPanel1");
    txCnvHex = Take<QLineEdit>(made, "txCnvHex");
    grGav = Take<QGroupBox>(made, "grGav");
    spGav = Take<QLabel>(made, "spGav");
    cbGavAbr = Take<QComboBox>(made, "cbGavAbr");
    txGavAbr = Take<QLineEdit>(made, "txGavAbr");
    cmAbrCic = Take<QPushButton>(made, "cmAbrCic");
    cmGavAbr = Take<QPushButton>(made, "cmGavAbr");
    frDis = Take<QGroupBox>(made, "frDis");
    spDisPor = Take<QLabel>(made, "spDisPor");
    cbDisPor = Take<QComboBox>(made, "cbDisPor");
    spDisCmd = Take<QLabel>(made, "spDisCmd");
    cbDisCmd = Take<QComboBox>(made, "cbDisCmd");
    cmDisExe = Take<QPushButton>(made, "cmDisExe");
    spDisTxm = Take<QLabel>(made, "spDisTxm");
    txDisTxm = Take<QLineEdit>(made, "txDisTxm");
    cmDisTxm = Take<QPushButton>(made, "cmDisTxm");
    lbRes = Take<QListWidget>(made, "lbRes");
    frCmd = Take<QGroupBox>(made, "frCmd");
    cmFim = Take<QPushButton>(made, "cmFim");
    sBar = Take<QStatusBar>(made, "sBar");

    // The spare pages stay in the control (the message list lives on one) but are never shown.
    tbOpc->setCurrentIndex(0);
    for (int i = kFirstSparePage; i < tbOpc->count(); ++i)
        tbOpc->setTabVisible(i, false);

    QMenuBar* bar = window->menuBar();
    QHash<QString, QMenu*> menus;
    QHash<QString, QAction*> entries;
    for (const MenuLayout& m : LumbraMnuMenus()) {
        if (m.menu[0] == '\0') {
            QMenu* menu = bar->addMenu(Tx(m.caption));
            menu->setObjectName(QString::fromLatin1(m.name));
            menus.insert(menu->objectName(), menu);
        } else {
            QAction* entry = menus.value(QString::fromLatin1(m.menu))->addAction(Tx(m.caption));
            entry->setObjectName(QString::fromLatin1(m.name));
            entries.insert(entry->objectName(), entry);
        }
    }
    mnuFic = menus.value("mnuFic");
    mnuLerCfg = entries.value("mnuLerCfg");
    mnuFim = entries.value("mnuFim");
    mnuTb = menus.value("mnuTb");
    mnuTbCfg = entries.value("mnuTbCfg");

    // The layout is absolute: the window keeps the size the layout gives it.
    window->layout()->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace lumbra
