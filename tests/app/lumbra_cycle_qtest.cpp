// The drawer cycle pressed in the real window: 338 sends to a pseudo-terminal, stopped by its own
// button, by closing the window, by a stop signal, or from the boxes a missing device raises.

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "platform/qt_msg_box.h"
#include "platform/stop_signals.h"
#include "platform/write_stall.h"
#include "tests/app/window_driver.h"
#include "tests/support/pty_pair.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra {
namespace {

constexpr int kSends = 338;
// Every send of the cycle command below is ESC p MO P1 P2.
constexpr std::size_t kSendBytes = 5;

const char* const kCycleCommand = "chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])";

// The first sends of the cycle in their order: P1 outside, P2 inside it, MO innermost.
std::string CycleBytes(int sends) {
    std::string out;
    int made = 0;
    for (int p1 = 10; p1 <= 250; p1 += 20) {
        for (int p2 = 10; p2 <= 250; p2 += 20) {
            for (int mo = 0; mo <= 1 && made < sends; ++mo, ++made)
                out += {'\x1B', 'p', static_cast<char>(mo), static_cast<char>(p1),
                        static_cast<char>(p2)};
        }
    }
    return out;
}

}  // namespace

class LumbraCycleTest : public QObject {
    Q_OBJECT

  private:
    enum Port { Printer = 0, Missing = 1, Terminal = 2 };

    std::unique_ptr<test::TempDir> dir_;
    std::unique_ptr<test::PtyPair> printer_;
    std::unique_ptr<test::RecordingMsgSink> boxes_;
    std::unique_ptr<LumbraMnu> w_;
    int shown_ = 0;
    QMetaObject::Connection shownHook_;

    std::string parFile(const std::string& gavZone) const {
        return test::ParFile({"#LIG Portas", "Impressora [SER]=COM1,9600,n,8,1",
                              "Sem dispositivo [SER]=COM3,9600,n,8,1",
                              "Terminal [FIC]=" + printer_->slavePath(), "##",
                              "#GAV Gaveta - Modos [CnvChr=0]", gavZone, "##"});
    }

    // Runs action from the window's events once the cycle shows its k-th command (1-based), that
    // is after k - 1 sends.
    void whenShown(int k, std::function<void()> action) {
        shown_ = 0;
        shownHook_ = connect(w_->ui.txGavAbr, &QLineEdit::textChanged, w_.get(), [this, k, action] {
            if (++shown_ == k) QTimer::singleShot(0, w_.get(), action);
        });
    }

    void clickCycle() { QTest::mouseClick(w_->ui.cmAbrCic, Qt::LeftButton); }

    std::string received(std::size_t count) {
        std::string got = printer_->readExactly(count, std::chrono::seconds(10));
        return got + printer_->readAvailable(std::chrono::milliseconds(100));
    }

    void verifyCycleIsOverAndTheRowIsItsOwn() {
        QCOMPARE(w_->cycleRunning(), false);
        QCOMPARE(w_->ui.cmAbrCic->text(), QStringLiteral("Ciclo"));
        QVERIFY(w_->ui.mnuLerCfg->isEnabled());
        QCOMPARE(Gb().gavTab.at(1).vtx, std::string(kCycleCommand));
    }

  private slots:
    void init() {
        dir_ = std::make_unique<test::TempDir>();
        printer_ = std::make_unique<test::PtyPair>();
        boxes_ = std::make_unique<test::RecordingMsgSink>();
        dir_->write("Lumbra.par", parFile(std::string("Ciclo [CIC]=") + kCycleCommand));
        test::SetCommandLine(dir_->file("Lumbra.par"),
                             {{1, printer_->slavePath()}, {3, dir_->file("no-such-tty")}});
        w_ = test::StartProgram();
        test::ShowPageOf(*w_, w_->ui.cmAbrCic);
    }

    void cleanup() {
        w_.reset();
        test::ResetProgram();
        boxes_.reset();
        printer_.reset();
        dir_.reset();
    }

    void theCycleSweepsAllCombinationsThenTheRowGetsItsCommandBack() {
        test::Click(*w_, w_->ui.cmAbrCic);
        const std::string bytes = received(kSends * kSendBytes);
        QCOMPARE(bytes.size(), kSends * kSendBytes);
        QCOMPARE(bytes.substr(0, 10), std::string("\x1Bp\x00\x0A\x0A\x1Bp\x01\x0A\x0A", 10));
        QCOMPARE(bytes.substr(bytes.size() - 5), std::string("\x1Bp\x01\xFA\xFA", 5));
        QVERIFY(bytes == CycleBytes(kSends));
        QVERIFY(boxes_->boxes().empty());
        verifyCycleIsOverAndTheRowIsItsOwn();

        // The box keeps the last command sent; choosing the mode again shows its own.
        QCOMPARE(w_->ui.txGavAbr->text(),
                 QStringLiteral("chr$(27)+\"p\"+chr$(1)+chr$(250)+chr$(250)"));
        test::Choose(*w_, w_->ui.cbGavAbr, 0);
        QCOMPARE(w_->ui.txGavAbr->text(), QString::fromLatin1(kCycleCommand));
    }

    void clickingTheButtonDuringTheCycleStopsItBeforeTheNextSend_data() {
        QTest::addColumn<int>("k");
        QTest::newRow("before the first send") << 1;
        QTest::newRow("after one send") << 2;
        QTest::newRow("before the last send") << kSends;
    }

    void clickingTheButtonDuringTheCycleStopsItBeforeTheNextSend() {
        QFETCH(int, k);
        QString caption;
        whenShown(k, [this, &caption] {
            caption = w_->ui.cmAbrCic->text();
            // A second click is the stop: it must not start a cycle inside the running one.
            clickCycle();
        });
        clickCycle();
        QCOMPARE(caption, QStringLiteral("Parar"));
        QVERIFY(received(kSends * kSendBytes) == CycleBytes(k - 1));
        verifyCycleIsOverAndTheRowIsItsOwn();

        // Stopped, the button starts a whole new cycle again.
        disconnect(shownHook_);
        clickCycle();
        QVERIFY(received(kSends * kSendBytes) == CycleBytes(kSends));
    }

    void closingTheWindowDuringTheCycleEndsItAndReleasesTheChannels() {
        QSignalSpy unloading(w_.get(), &LumbraMnu::unloading);
        whenShown(3, [this] { QTest::mouseClick(w_->ui.cmFim, Qt::LeftButton); });
        clickCycle();
        QCOMPARE(unloading.count(), 1);
        QVERIFY(!w_->isVisible());
        QVERIFY(received(kSends * kSendBytes) == CycleBytes(2));
        QCOMPARE(CanMax(), std::int16_t{0});
        QVERIFY(CanHostForm() == nullptr);
        QVERIFY(boxes_->boxes().empty());
        QCOMPARE(w_->cycleRunning(), false);
    }

    void readingTheConfigurationIsRefusedWhileTheCycleRuns() {
        bool enabled = true;
        whenShown(3, [this, &enabled] {
            dir_->write("Lumbra.par", parFile("Outro modo [ESC]=chr$(7)"));
            enabled = w_->ui.mnuLerCfg->isEnabled();
            w_->ui.mnuLerCfg->trigger();
            // Also when the entry's signal comes some other way than through the menu.
            emit w_->ui.mnuLerCfg->triggered();
        });
        clickCycle();
        QVERIFY(!enabled);
        QVERIFY(received(kSends * kSendBytes) == CycleBytes(kSends));
        QCOMPARE(test::Entries(w_->ui.cbGavAbr), QStringList{QStringLiteral("Ciclo")});
        verifyCycleIsOverAndTheRowIsItsOwn();

        w_->ui.mnuLerCfg->trigger();
        QCOMPARE(test::Entries(w_->ui.cbGavAbr), QStringList{QStringLiteral("Outro modo")});
    }

    // The terminal as a file port, its far side reading nothing: the first send waits for it. The
    // stop, pressed or closed while it waits, ends the cycle once that send has given up at the
    // stall limit; SIGTERM ends the wait itself and closes the window as "Terminar" does.
    void aSendThatWaitsForItsDeviceEndsTheCycleWhenStopped_data() {
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("withinMs");
        QTest::addColumn<QString>("box");
        QTest::newRow("Parar") << "Parar" << 2500 << "Device timeout: nothing taken for 1.";
        QTest::newRow("Terminar") << "Terminar" << 2500 << "Device timeout: nothing taken for 1.";
        QTest::newRow("SIGTERM") << "SIGTERM" << 1200 << "User interrupt occurred";
    }

    void aSendThatWaitsForItsDeviceEndsTheCycleWhenStopped() {
        QFETCH(QString, how);
        QFETCH(int, withinMs);
        QFETCH(QString, box);
        platform::SetWriteStallLimit(std::chrono::milliseconds(1000));
        const auto restore = qScopeGuard([] { platform::SetWriteStallLimit({}); });
        const platform::StopSignalCatcher stopSignals;
        w_->closeOnStopSignals();
        QSignalSpy unloading(w_.get(), &LumbraMnu::unloading);
        test::Choose(*w_, w_->ui.cbLigPor, Terminal);
        printer_->fillUntilBlocked();

        std::thread signaller;
        if (how == "SIGTERM") {
            signaller = std::thread([] {
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
                ::kill(::getpid(), SIGTERM);
            });
        } else {
            QAbstractButton* button = how == "Parar" ? w_->ui.cmAbrCic : w_->ui.cmFim;
            QTimer::singleShot(100, w_.get(),
                               [button] { QTest::mouseClick(button, Qt::LeftButton); });
        }
        const auto start = std::chrono::steady_clock::now();
        clickCycle();
        const auto took = std::chrono::steady_clock::now() - start;
        if (signaller.joinable()) signaller.join();

        QVERIFY(took < std::chrono::milliseconds(withinMs));
        QCOMPARE(boxes_->boxes().size(), std::size_t{1});
        QVERIFY(boxes_->boxes()[0].text.rfind("Funcao: Gravar TX|Erro:" + box.toStdString(), 0) ==
                0);
        QCOMPARE(w_->cycleRunning(), false);
        QTRY_COMPARE(unloading.count(), how == "Parar" ? 0 : 1);
    }

    void aMissingDeviceIsReportedAtEverySendAndTheCycleRunsToItsEnd() {
        test::Choose(*w_, w_->ui.cbLigPor, Missing);
        test::Click(*w_, w_->ui.cmAbrCic);
        int opens = 0;
        for (const test::RecordedBox& box : boxes_->boxes()) {
            QCOMPARE(box.title, std::string("Erro no ficheiro: COM3"));
            if (box.text.rfind("Funcao: Abrir|Erro:", 0) == 0) ++opens;
        }
        QCOMPARE(opens, kSends);
        QVERIFY(boxes_->endings().empty());
        verifyCycleIsOverAndTheRowIsItsOwn();
    }

    void everyBoxDuringTheCycleOffersItsStopAndChoosingItStopsTheCycle() {
        platform::QtMsgSink windowBoxes;
        platform::SetMsgSink(&windowBoxes);
        const auto restore = qScopeGuard([this] { platform::SetMsgSink(boxes_.get()); });
        QStringList seen;
        bool allOfferStop = true;
        // Answers each box the device failure raises with "Parar ciclo".
        QTimer answer;
        connect(&answer, &QTimer::timeout, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            seen << box->text();
            QAbstractButton* stop = nullptr;
            for (QAbstractButton* b : box->buttons()) {
                if (b->text() == QStringLiteral("Parar ciclo")) stop = b;
            }
            allOfferStop = allOfferStop && stop != nullptr;
            (stop != nullptr ? stop : box->button(QMessageBox::Ok))->click();
        });
        answer.start(5);

        test::Choose(*w_, w_->ui.cbLigPor, Missing);
        test::Click(*w_, w_->ui.cmAbrCic);
        verifyCycleIsOverAndTheRowIsItsOwn();
        QVERIFY(allOfferStop);
        QCOMPARE(seen.filter(QStringLiteral("Funcao: Abrir|")).size(), 1);

        // Outside a cycle there is nothing to stop: the box offers OK alone.
        seen.clear();
        bool extraButton = false;
        disconnect(&answer, nullptr, nullptr, nullptr);
        connect(&answer, &QTimer::timeout, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            seen << box->text();
            extraButton = extraButton || box->buttons().size() != 1;
            box->button(QMessageBox::Ok)->click();
        });
        test::Click(*w_, w_->ui.cmGavAbr);
        QVERIFY(!seen.isEmpty());
        QVERIFY(!extraButton);
    }
};

}  // namespace lumbra

QTEST_MAIN(lumbra::LumbraCycleTest)
#include "lumbra_cycle_qtest.moc"
