#include "platform/qt_start_program.h"

#include <QProcess>
#include <QString>
#include <QStringList>

#include "platform/host_text.h"

namespace lumbra::platform {

bool StartDetached(const std::string& program, const std::vector<std::string>& args) {
    QStringList list;
    for (const std::string& a : args)
        list << QString::fromStdString(ToHostText(a));
    return QProcess::startDetached(QString::fromStdString(ToHostText(program)), list);
}

}  // namespace lumbra::platform
