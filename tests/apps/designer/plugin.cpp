// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/designer/plugin.h>

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
#include <QtUiTools/QUiLoader>

QString plugin::File() {
    return QStringLiteral(PLUGIN);
}

QString plugin::Folder() {
    return QFileInfo(QFileInfo(File()).path()).path();
}

QByteArray plugin::Form(const char* className, const QByteArray& properties) {
    return QByteArray(
               "<ui version='4.0'><class>Form</class><widget class='QWidget' name='Form'>"
               "<layout class='QVBoxLayout' name='rows'><item><widget class='") +
           className + "' name='widget'>" + properties + "</widget></item></layout></widget></ui>";
}

QByteArray plugin::PathProperty(const char* name, const char* path) {
    return QByteArray("<property name='") + name + "' stdset='0'><cstring>" + path + "</cstring></property>";
}

std::unique_ptr<QWidget> plugin::Load(const QByteArray& form) {
    QBuffer buffer;
    buffer.setData(form);
    buffer.open(QIODevice::ReadOnly);
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(QFileInfo(File()).path());
    return std::unique_ptr<QWidget>(loader.load(&buffer));
}
