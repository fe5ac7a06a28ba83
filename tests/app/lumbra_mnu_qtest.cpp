// The main window driven through its real controls, on Qt's offscreen platform.

#include <QAction>
#include <QFontInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "app/LumbraMnu.h"
#include "tests/app/key_text.h"

namespace lumbra {

class LumbraMnuTest : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<LumbraMnu> w_;

    QWidget* control(const QString& name) { return w_->findChild<QWidget*>(name); }

    void showWindowAt(const QWidget* c) {
        w_->show();
        QVERIFY(QTest::qWaitForWindowExposed(w_.get()));
        QTabWidget* tabs = w_->ui.tbOpc;
        for (int i = 0; i < tabs->count(); ++i) {
            if (!tabs->widget(i)->isAncestorOf(c)) continue;
            tabs->setTabVisible(i, true);
            tabs->setCurrentIndex(i);
        }
        QCoreApplication::processEvents();
    }

  private slots:
    void init() { w_ = std::make_unique<LumbraMnu>(); }
    void cleanup() { w_.reset(); }

    void captionsKeepTheirAccents_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        auto row = [](const char* name, const char* expected) {
            QTest::newRow(name) << QString::fromLatin1(name) << QString::fromUtf8(expected);
        };
        row("frOpcSai", "Ligação");
        row("txLigTst", "Teste de ligação");
        row("cmLigTst", "Teste de ligação");
        row("frCnv", "Conversão de base");
        row("spDisPor", "Porta de ligação");
        row("mnuLerCfg", "Ler configuração");
        row("mnuTbCfg", "Configuração");
    }

    void captionsKeepTheirAccents() {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        const QObject* c = w_->findChild<QObject*>(name);
        QString caption;
        if (auto* a = qobject_cast<const QAction*>(c)) caption = a->text();
        if (auto* f = qobject_cast<const QGroupBox*>(c)) caption = f->title();
        if (auto* l = qobject_cast<const QLabel*>(c)) caption = l->text();
        if (auto* t = qobject_cast<const QLineEdit*>(c)) caption = t->text();
        if (auto* b = qobject_cast<const QPushButton*>(c)) caption = b->text();
        QCOMPARE(caption, expected);
        QCOMPARE(w_->windowTitle(), QString::fromUtf8("Configuração para POS"));
        QCOMPARE(w_->ui.tbOpc->tabText(0), QString::fromUtf8("Opções"));
    }

    void fontsAreTheNearestInstalledFaces_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("family");
        QTest::addColumn<int>("pixels");
        QTest::addColumn<bool>("bold");
        auto row = [](const char* name, const char* family, int pixels, bool bold) {
            QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(family)
                                << pixels << bold;
        };
        row("laTit", "Liberation Sans", 13, true);
        row("frOpcSai", "Liberation Sans", 11, true);
        // A frame's bold caption must not make its controls bold.
        row("spLigPor", "Liberation Sans", 11, false);
        row("txLigTst", "Liberation Mono", 11, false);
        row("txCnvDec", "Liberation Mono", 12, false);
        row("lbRes", "Liberation Mono", 11, false);
        row("cmFim", "Liberation Sans", 11, true);
    }

    void fontsAreTheNearestInstalledFaces() {
        QFETCH(QString, name);
        QFETCH(QString, family);
        QFETCH(int, pixels);
        QFETCH(bool, bold);
        const QFontInfo info(control(name)->font());
        QCOMPARE(info.family(), family);
        QCOMPARE(info.pixelSize(), pixels);
        QCOMPARE(info.bold(), bold);
    }

    void onlyTheFirstThreePagesCanBeReached() {
        QCOMPARE(w_->ui.tbOpc->count(), 6);
        QCOMPARE(w_->ui.tbOpc->currentIndex(), 0);
        for (int i = 0; i < 6; ++i)
            QCOMPARE(w_->ui.tbOpc->isTabVisible(i), i < 3);
    }

    // A page places its controls relative to the whole tab control, strip included; none may
    // hide under the strip or stick out of its frame.
    void pageControlsKeepTheirPlaceInsideTheirPage_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QPoint>("onTabControl");
        QTest::newRow("frOpcSai") << QStringLiteral("frOpcSai") << QPoint(8, 42);
        QTest::newRow("frCnv") << QStringLiteral("frCnv") << QPoint(402, 42);
        QTest::newRow("grGav") << QStringLiteral("grGav") << QPoint(12, 30);
        QTest::newRow("frDis") << QStringLiteral("frDis") << QPoint(12, 30);
        QTest::newRow("lbRes") << QStringLiteral("lbRes") << QPoint(80, 74);
    }

    void pageControlsKeepTheirPlaceInsideTheirPage() {
        QFETCH(QString, name);
        QFETCH(QPoint, onTabControl);
        QWidget* c = control(name);
        showWindowAt(c);
        QCOMPARE(c->mapTo(w_->ui.tbOpc, QPoint(0, 0)), onTabControl);
        QWidget* page = w_->ui.tbOpc->currentWidget();
        QVERIFY(page->rect().contains(QRect(c->mapTo(page, QPoint(0, 0)), c->size())));
        for (const QWidget* child : c->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            QVERIFY2(c->rect().contains(child->geometry()), qPrintable(child->objectName()));
        }
    }

    void typingInOneBoxShowsTheConversionInTheOther_data() {
        QTest::addColumn<bool>("decimal");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("other");
        auto row = [](const char* name, bool decimal, const char* typed, const char* other) {
            QTest::newRow(name) << decimal << QString::fromUtf8(typed) << QString::fromUtf8(other);
        };
        row("dec 255", true, "255", "FF");
        row("dec -1", true, "-1", "FFFFFFFF");
        row("dec 2.5 to even", true, "2.5", "2");
        row("dec 3.5 to even", true, "3.5", "4");
        row("dec past 32 bits", true, "2147483648", "Erro");
        row("dec trailing letters", true, "12abc", "Erro");
        row("dec leading zero", true, "0255", "FF");
        row("dec minus sign outside the code page", true, "−1", "Erro");
        row("hex ff", false, "ff", "255");
        row("hex FFFF 16-bit", false, "FFFF", "-1");
        row("hex 8000 16-bit", false, "8000", "-32768");
        row("hex 10000 32-bit", false, "10000", "65536");
        row("hex past 32 bits", false, "100000000", "Erro");
        row("hex not hexadecimal", false, "xyz", "0");
        row("hex stops at G", false, "1G", "1");
        row("hex stops at accented letter", false, "1é", "1");
    }

    void typingInOneBoxShowsTheConversionInTheOther() {
        QFETCH(bool, decimal);
        QFETCH(QString, typed);
        QFETCH(QString, other);
        QLineEdit* box = decimal ? w_->ui.txCnvDec : w_->ui.txCnvHex;
        QLineEdit* target = decimal ? w_->ui.txCnvHex : w_->ui.txCnvDec;
        QSignalSpy edits(box, &QLineEdit::textChanged);
        testing::TypeText(box, typed);
        QCOMPARE(target->text(), other);
        // One change per key and exactly the typed text: no conversion came back into the box.
        QCOMPARE(box->text(), typed);
        QCOMPARE(edits.count(), typed.size());
        QCOMPARE(w_->frmAct, std::int16_t{0});
    }

    void whileTheProgramWritesTheBoxesDoNotConvert() {
        w_->frmAct = 1;
        w_->ui.txCnvDec->setText(QStringLiteral("255"));
        w_->ui.txCnvHex->setText(QStringLiteral("10"));
        QCOMPARE(w_->ui.txCnvDec->text(), QStringLiteral("255"));
    }

    void closingUnloadsTheWindowOnceWhicheverWayItIsClosed_data() {
        QTest::addColumn<int>("way");
        QTest::newRow("button Terminar") << 0;
        QTest::newRow("menu Terminar") << 1;
        QTest::newRow("window frame") << 2;
    }

    void closingUnloadsTheWindowOnceWhicheverWayItIsClosed() {
        QFETCH(int, way);
        showWindowAt(w_->ui.cmFim);
        QSignalSpy unloading(w_.get(), &LumbraMnu::unloading);
        if (way == 0) QTest::mouseClick(w_->ui.cmFim, Qt::LeftButton);
        if (way == 1) w_->ui.mnuFim->trigger();
        if (way == 2) w_->close();
        QVERIFY(!w_->isVisible());
        w_->close();
        QCOMPARE(unloading.count(), 1);
    }

    void theMessageListKeepsTheLastSixteenLinesInView_data() {
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("top");
        QTest::newRow("sixteen lines, view unmoved") << 16 << 0;
        QTest::newRow("seventeenth line scrolls the first out") << 17 << 1;
        QTest::newRow("forty lines") << 40 << 24;
    }

    void theMessageListKeepsTheLastSixteenLinesInView() {
        QFETCH(int, lines);
        QFETCH(int, top);
        showWindowAt(w_->ui.lbRes);
        for (int i = 0; i < lines; ++i)
            w_->LumbraMsgJun(Variant(std::int32_t{i}));
        QCOMPARE(w_->ui.lbRes->indexAt(QPoint(1, 1)).row(), top);
        w_->LumbraMsgLpz();
        QCOMPARE(w_->ui.lbRes->count(), 0);
    }

    void aMessageLineIsTheTextOrThePlainNumber() {
        const Variant msgs[] = {Variant(" a "), Variant("Liga\xE7\xE3o"), Variant(std::int16_t{-7}),
                                Variant(2.25), Variant()};
        const char* const lines[] = {" a ", "Ligação", "-7", "2.25", ""};
        for (const auto& m : msgs)
            w_->LumbraMsgJun(m);
        w_->LumbraMsgSep();  // without an argument, nothing
        w_->LumbraMsgSep(2);
        QCOMPARE(w_->ui.lbRes->count(), 7);
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(w_->ui.lbRes->item(i)->text(), QString::fromUtf8(lines[i]));
        }
        QCOMPARE(w_->ui.lbRes->item(6)->text(), QString());
    }

    void aMessageLineLetsPendingEventsRun() {
        bool ran = false;
        QMetaObject::invokeMethod(
            w_.get(), [&ran] { ran = true; }, Qt::QueuedConnection);
        w_->LumbraMsgJun(Variant("x"));
        QVERIFY(ran);
    }
};

}  // namespace lumbra

QTEST_MAIN(lumbra::LumbraMnuTest)
#include "lumbra_mnu_qtest.moc"
