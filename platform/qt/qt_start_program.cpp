#include "platform/start_program.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <utility>

#include "platform/host_text.h"

namespace lumbra::platform {

void StartProgram(const std::string& program, const std::vector<std::string>& args,
                  std::function<void()> failed) {
    QCoreApplication* app = QCoreApplication::instance();
    if (app == nullptr) {
        if (failed) failed();
        return;
    }
    QStringList list;
    for (const std::string& a : args)
        list << QString::fromStdString(ToHostText(a));
    // A child rather than a detached process, so that its end is heard of; it lives no longer than
    // the application, which owns it.
    auto* process = new QProcess(app);
    process->setProgram(QString::fromStdString(ToHostText(program)));
    process->setArguments(list);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setChildProcessModifier([] { ::setsid(); });
    auto report = [failed = std::move(failed)] {
        if (failed && !QCoreApplication::closingDown()) failed();
    };
    QObject::connect(process, &QProcess::errorOccurred, process,
                     [process, report](QProcess::ProcessError error) {
                         if (error != QProcess::FailedToStart) return;
                         report();
                         process->deleteLater();
                     });
    QObject::connect(process, &QProcess::finished, process,
                     [process, report](int status, QProcess::ExitStatus how) {
                         if (how != QProcess::NormalExit || status != 0) report();
                         process->deleteLater();
                     });
    // The application is ending: the program goes with it (a child cannot outlive its owner here)
    // without a word, while whatever it started, such as the editor, is a process of its own and
    // stays.
    QObject::connect(app, &QCoreApplication::aboutToQuit, process, [process] {
        process->disconnect();
        process->kill();
        process->waitForFinished();
    });
    process->start();
}

}  // namespace lumbra::platform
