#pragma once
// Runs the whole program in a test the way a technician does: a parameter file written to a real
// folder, a command line with "-FP" and "-COMn", the window started by Form_Load and shown
// offscreen, then driven through its real tabs, lists, boxes and buttons.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/LumbraGb.h"
#include "app/LumbraMnu.h"
#include "channels/PgmFic.h"
#include "platform/program.h"
#include "tests/app/key_text.h"
#include "tests/app/par_file.h"

namespace lumbra::test {

// The command line the program reads: "-FP parFile" (left out when empty), then "-COMn device".
inline void SetCommandLine(const std::string& parFile,
                           const std::vector<std::pair<int, std::string>>& ports = {}) {
    std::vector<std::string> words;
    if (!parFile.empty()) words.insert(words.end(), {"-FP", parFile});
    for (const auto& [number, device] : ports)
        words.insert(words.end(), {"-COM" + std::to_string(number), device});
    SetCommandLine(words);
}

// Forgets what an earlier run in this process left: configuration, selections, channels.
inline void ForgetProgramState() {
    CanFim();
    Gb() = LumbraGbState{};
}

// Also gives the command line and the program's folder back.
inline void ResetProgram() {
    ForgetProgramState();
    platform::OverrideProgramFolder("");
    SetCommandLine("");
}

// The program's start as main does it, on the command line and folder set before: a fresh state,
// the window, Form_Load, then shown. A parameter file that cannot be opened ends the program inside
// Form_Load (ProgramEnded under the recording sink) and no window is shown.
inline std::unique_ptr<LumbraMnu> StartProgram() {
    ForgetProgramState();
    auto window = std::make_unique<LumbraMnu>();
    window->Form_Load();
    window->show();
    return window;
}

// Brings the page holding control to the front by clicking its tab.
inline void ShowPageOf(LumbraMnu& w, const QWidget* control) {
    QTabWidget* tabs = w.ui.tbOpc;
    for (int i = 0; i < tabs->count(); ++i) {
        if (!tabs->widget(i)->isAncestorOf(control)) continue;
        QTabBar* bar = tabs->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(i).center());
    }
}

// A click of the mouse on a button, on its page.
inline void Click(LumbraMnu& w, QAbstractButton* button) {
    ShowPageOf(w, button);
    QTest::mouseClick(button, Qt::LeftButton);
}

// Chooses entry position of a drop-down list as a user does: opens the list, moves to the entry
// and confirms it with Return. Confirming the entry already selected chooses it again.
inline void Choose(LumbraMnu& w, QComboBox* list, int position) {
    ShowPageOf(w, list);
    list->showPopup();
    QAbstractItemView* view = list->view();
    view->setCurrentIndex(view->model()->index(position, 0));
    QTest::keyClick(view, Qt::Key_Return);
}

// Replaces the text of a box by typing: select all, then one key event per character.
inline void Retype(LumbraMnu& w, QLineEdit* box, const QString& text) {
    ShowPageOf(w, box);
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    testing::TypeText(box, text);
}

// The display text of every entry of a list.
inline QStringList Entries(const QComboBox* list) {
    QStringList names;
    for (int i = 0; i < list->count(); ++i)
        names << list->itemText(i);
    return names;
}

}  // namespace lumbra::test
