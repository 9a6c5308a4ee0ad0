// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/pictures.h>

#include <QtCore/QDir>
#include <QtGui/QPixmap>
#include <QtWidgets/QTabWidget>

QString pictures::Save(QWidget& widget, const QString& directory, const QString& name) {
    if (!QDir().mkpath(directory)) return QStringLiteral("%1 cannot be made").arg(directory);
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
