#pragma once
// The program's only window on Qt: the device pages, the base converter and the message list. Its
// controls' events go to LumbraMnuForm, which decides what they do and tells the window what to
// show through the LumbraMnuView it implements.

#include <QMainWindow>
#include <string>
#include <vector>

#include "app/LumbraMnuForm.h"
#include "app/LumbraMnuView.h"
#include "app/qt/LumbraMnuUi.h"

class QCloseEvent;

namespace lumbra {

class LumbraMnu : public QMainWindow, public LumbraMnuView {
    Q_OBJECT

  public:
    explicit LumbraMnu(QWidget* parent = nullptr);

    LumbraMnuUi ui;
    LumbraMnuForm form{*this};

    // The start sequence (LumbraMnuForm::Form_Load); runs before the window is shown.
    void Form_Load() { form.Form_Load(); }
    bool cycleRunning() const { return form.cycleRunning(); }

    // From now on Ctrl+C, SIGTERM and SIGHUP close the window as "Terminar" does, once the event
    // loop hears of them: a box on the screen is dismissed first and the boxes that follow go to
    // standard error, so nothing waits for an answer. A platform::StopSignalCatcher must live.
    void closeOnStopSignals();

    // LumbraMnuView.
    std::string text(const char* ctl) const override;
    void setText(const char* ctl, const std::string& text) override;
    void fillList(const char* ctl, const std::vector<std::string>& entries) override;
    int selected(const char* ctl) const override;
    void setEnabled(const char* ctl, bool enabled) override;
    void showPage(int n) override;
    void retirePage(int n) override;
    void clearMessages() override;
    void addMessage(const std::string& line) override;
    void closeWindow() override;

  signals:
    // The window is closing, by "Terminar", the menu or the frame; the program's shutdown belongs
    // here. Emitted once; the close is never refused.
    void unloading();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void connectEvents();
    QObject* control(const char* ctl) const;

    bool unloaded_ = false;
};

}  // namespace lumbra
