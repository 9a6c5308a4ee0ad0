// SPDX-License-Identifier: Apache-2.0
// Greets in the default locale, which it changes after the center came to be. The arguments are the directory
// and the name of the catalogue.
#include <platform/app/translationcenter.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QLocale::setDefault(QLocale::c());
    TranslationCenter& center = TranslationCenter::Instance();
    center.SetSearchDirectories({arguments.value(1)});
    center.Register(arguments.value(2));
    const QString before = QCoreApplication::translate("Greetings", "Good day");
    center.Unregister(arguments.value(2));
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    center.Register(arguments.value(2));
    const QString after = QCoreApplication::translate("Greetings", "Good day");
    std::printf("%s, %s", before.toUtf8().constData(), after.toUtf8().constData());
    return 0;
}
