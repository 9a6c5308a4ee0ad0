// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <memory>

/// The plugin as it was built, and forms.
namespace plugin {

QString File();
/// The folder in which Qt looks for a folder "designer".
QString Folder();
/// A form with one widget of that class, called "widget", and those properties, in XML.
QByteArray Form(const char* className, const QByteArray& properties);
/// A property that is a path.
QByteArray PathProperty(const char* name, const char* path);
/// The form as a program loads it that knows the plugin alone; null where it cannot.
std::unique_ptr<QWidget> Load(const QByteArray& form);

}  // namespace plugin
