// SPDX-License-Identifier: Apache-2.0
// form [HOST [PORT]]: a window that was laid out in Qt Designer. Which values it shows stands in form.ui.
#include "ui_form.h"

#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <cstdio>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const values::Tree tree;  // before all that uses it
    MultiChannelServerClient client;
    QWidget window;
    Ui::Form form;
    form.setupUi(&window);
    window.show();

    // For whoever does not see the window.
    QString said;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&form, &said] {
        if (form.mode->text().isEmpty() || form.mode->text() == said) return;
        said = form.mode->text();
        std::printf("the window shows %s\n", qPrintable(said));
        std::fflush(stdout);
    });
    timer.start(50);

    // Mirrored to the paths that the form names.
    if (!client.ConnectToServer(words.value(1, QStringLiteral("localhost")),
                                words.value(2, QStringLiteral("7450")).toInt()) ||
        !client.ConnectToMCSControlTree(QStringLiteral("/MultiChannelServer"), AllSegments))
        return 2;
    return QApplication::exec();
}
