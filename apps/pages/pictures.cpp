// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/pictures.h>

#include <platform/widgets/refreshscheduler.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtGui/QPixmap>
#include <QtWidgets/QTabWidget>

namespace {

constexpr int Turns = 3;  // until all is fitted that depends on something else

/// Contents are shown at a limited rate, laid out after that, and fitted after that: a picture waits for
/// none of it.
void ShowWhatHolds() {
    RefreshScheduler::Instance().Flush();
    for (int turn = 0; turn < Turns; ++turn)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace

QString pictures::Save(QWidget& widget, const QString& directory, const QString& name) {
    if (!QDir().mkpath(directory)) return QStringLiteral("%1 cannot be made").arg(directory);
    ShowWhatHolds();
    const QString file = QDir(directory).filePath(name + QStringLiteral(".png"));
    return widget.grab().save(file) ? QString() : QStringLiteral("%1 cannot be written").arg(file);
}

QString pictures::SavePages(QWidget& window, QTabWidget& tabs, const QString& directory,
                            const QString& prefix) {
    for (int i = 0; i < tabs.count(); ++i) {
        tabs.setCurrentIndex(i);
        const QString error = Save(window, directory, prefix + tabs.widget(i)->objectName());
        if (!error.isEmpty()) return error;
    }
    return QString();
}
